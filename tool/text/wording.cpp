// Test: tests/tool/explain/explanation_test.cpp
#include "text/wording.h"

#include <json/writer.h>

#include "TokenTemplateResolver/json_text.h"
#include "text/printable.h"

namespace ttr {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

std::string textOf(const Json::Value& value, int precision, bool utf8) {
  jsoncpp_string::CJsonWriter writer;
  writer["precision"] = precision;
  writer["emitUTF8"] = utf8;
  return Json::writeString(writer, value);
}

/// Compact JSON, with numbers as short as they read back the same; with escapes for all characters
/// when some bytes are no UTF-8, which do not read back from them.
std::string shortText(const Json::Value& value) {
  const auto readsBack = [&value](const std::string& text) {
    std::string errors;
    return jsoncpp_string::toJsonObject(text, &errors) == value;
  };
  constexpr int exact = 17;
  const bool utf8 = readsBack(textOf(value, exact, false));
  for (const int precision : {15, 16}) {
    const std::string text = textOf(value, precision, utf8);
    if (utf8 && readsBack(text)) return printable(text);
  }
  return printable(textOf(value, exact, utf8));
}

}  // namespace

std::string counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

std::string brief(const Json::Value& value) {
  constexpr std::size_t most = 48;
  std::string text = shortText(value);
  if (text.size() <= most) return text;
  std::size_t end = most - 3;
  while (end > 0 && isContinuation(text[end])) --end;
  return text.substr(0, end) + "...";
}

std::string withArticle(const std::string& type) {
  if (type == "null" || type == "text") return type;
  const bool vowel = std::string("aeiouI").find(type[0]) != std::string::npos;
  return (vowel ? "an " : "a ") + type;
}

std::string indentedText(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "  ";
  return Json::writeString(writer, value) + '\n';
}

}  // namespace ttr
