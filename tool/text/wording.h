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

/// The JSON type of `value` as people name it; "unsigned count" for the number that a token counts,
/// which equals no number of a page.
std::string typeName(const Json::Value& value);

/// `brief` with its type, where that is not plain from the JSON.
std::string typed(const Json::Value& value);

/// `type` with its article.
std::string withArticle(const std::string& type);

/// A message of the library without the name of the function and the full stop.
std::string withoutFunction(const std::string& message);

/// `value` as JSON text for people too: indented, with a line end.
std::string indentedText(const Json::Value& value);

}  // namespace ttr

#endif  // TOOL_TEXT_WORDING_H
