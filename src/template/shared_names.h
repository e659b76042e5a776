#ifndef SRC_TEMPLATE_SHARED_NAMES_H
#define SRC_TEMPLATE_SHARED_NAMES_H

#include <json/value.h>

namespace ttr {

/// A copy of `document`, which was parsed from a text, whose members share the text of their name
/// with the library where the format has that name. A copy of the copy then makes none of these
/// names. Nothing else tells the two from each other.
Json::Value copyWithSharedNames(const Json::Value& document);

}  // namespace ttr

#endif  // SRC_TEMPLATE_SHARED_NAMES_H
