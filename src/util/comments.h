#ifndef SRC_UTIL_COMMENTS_H
#define SRC_UTIL_COMMENTS_H

#include <json/value.h>

namespace ttr {

/// True when `value` carries comments from the text that it was parsed from: JsonCpp writes them.
inline bool hasComments(const Json::Value& value) {
  return value.hasComment(Json::commentBefore) || value.hasComment(Json::commentAfterOnSameLine) ||
         value.hasComment(Json::commentAfter);
}

}  // namespace ttr

#endif  // SRC_UTIL_COMMENTS_H
