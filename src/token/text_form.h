#ifndef SRC_TOKEN_TEXT_FORM_H
#define SRC_TOKEN_TEXT_FORM_H

#include <json/value.h>

#include <string>

namespace ttr {

/// The text that CTokenResolver::ConvertToString makes of a value that is no string.
std::string textForm(const Json::Value& value);

}  // namespace ttr

#endif  // SRC_TOKEN_TEXT_FORM_H
