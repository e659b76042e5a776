#ifndef SRC_TEMPLATE_SHARED_NAMES_H
#define SRC_TEMPLATE_SHARED_NAMES_H

#include <json/value.h>

namespace ttr {

/// Lets all members of `document` that have a name of the format, at any depth, share that name's
/// text with the library: a copy of such a member, the most frequent there are, then makes no copy
/// of its name. Nothing else tells such a document from others.
void shareNames(Json::Value& document);

}  // namespace ttr

#endif  // SRC_TEMPLATE_SHARED_NAMES_H
