#ifndef SRC_UTIL_TEXT_VIEW_H
#define SRC_UTIL_TEXT_VIEW_H

#include <json/value.h>

#include <cstddef>
#include <string_view>

namespace ttr {

/// The text of the string `value`, not copied: good until the value is assigned to or destroyed.
/// Empty for a value of another type.
inline std::string_view textView(const Json::Value& value) {
  const char* begin = nullptr;
  const char* end = nullptr;
  value.getString(&begin, &end);
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace ttr

#endif  // SRC_UTIL_TEXT_VIEW_H
