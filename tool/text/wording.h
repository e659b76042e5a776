#ifndef TOOL_TEXT_WORDING_H
#define TOOL_TEXT_WORDING_H

#include <json/value.h>

#include <cstddef>
#include <string>

namespace ttr {

/// "1 error", "2 errors".
std::string counted(std::size_t count, const std::string& noun);

/// `value` as compact JSON, printable, cut to a length that is easy to read.
std::string brief(const Json::Value& value);

/// `type` with its article.
std::string withArticle(const std::string& type);

/// `value` as JSON text for people too: indented, with a line end.
std::string indentedText(const Json::Value& value);

}  // namespace ttr

#endif  // TOOL_TEXT_WORDING_H
