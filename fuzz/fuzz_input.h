#ifndef TTR_FUZZ_INPUT_H
#define TTR_FUZZ_INPUT_H

#include <json/value.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "TokenTemplateResolver/json_text.h"

namespace ttr {

/// Reads an input as lines, so that inputs are texts which people can read and write. A backslash
/// takes the character behind it into the line as it stands, a newline too. Behind the end of the
/// input every line is empty.
class CFuzzInput {
 public:
  CFuzzInput(const std::uint8_t* data, std::size_t size)
      : m_rest(reinterpret_cast<const char*>(data), size) {}

  bool ended() const { return m_rest.empty(); }

  std::string line() {
    std::string text;
    while (!m_rest.empty()) {
      char character = take();
      if (character == '\n') break;
      if (character == '\\' && !m_rest.empty()) character = take();
      text += character;
    }
    return text;
  }

  /// All that is left, as it stands.
  std::string rest() {
    const std::string text(m_rest);
    m_rest = {};
    return text;
  }

  /// A line as a decimal number; saturates.
  std::int64_t number() { return std::strtoll(line().c_str(), nullptr, 10); }

  /// A line as a value, as valueOf reads it.
  Json::Value value() { return valueOf(line()); }

  /// 'text, u1 (unsigned), r1e400 (real, "rnan" and "rinf" too), or JSON, comments included. Empty
  /// text, and JSON that is none or nests too deep, is null.
  static Json::Value valueOf(const std::string& text) {
    if (text.empty()) return Json::Value();
    if (text[0] == '\'') return text.substr(1);
    if (text[0] == 'u') return Json::Value::UInt64{std::strtoull(&text[1], nullptr, 10)};
    if (text[0] == 'r') return std::strtod(&text[1], nullptr);
    try {
      std::string errors;
      return jsoncpp_string::toJsonObject(text, &errors);
    } catch (const Json::RuntimeError&) {
      return Json::Value();
    }
  }

 private:
  char take() {
    const char character = m_rest.front();
    m_rest.remove_prefix(1);
    return character;
  }

  std::string_view m_rest;
};

/// Equal in type and value; unlike JsonCpp's ==, a real that is no number equals itself.
inline bool same(const Json::Value& left, const Json::Value& right) {
  if (left.type() == Json::realValue && right.type() == Json::realValue) {
    if (std::isnan(left.asDouble()) && std::isnan(right.asDouble())) return true;
  }
  return left == right;
}

}  // namespace ttr

#endif  // TTR_FUZZ_INPUT_H
