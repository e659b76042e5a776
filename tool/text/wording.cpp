#include "text/wording.h"

#include <json/writer.h>

#include <algorithm>
#include <optional>

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

/// The JSON text of a value that has but one: words, integers, plain ASCII, and arrays of them;
/// nothing for others. Most values of pages are so, and no writer has to be made for them.
std::optional<std::string> plainText(const Json::Value& value) {
  if (value.isNull()) return "null";
  if (value.isBool()) return value.asBool() ? "true" : "false";
  if (value.type() == Json::intValue || value.type() == Json::uintValue) return value.asString();
  if (value.isString()) {
    const std::string text = value.asString();
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char character) {
      return character >= ' ' && character <= '~' && character != '"' && character != '\\';
    });
    return isPlain ? std::optional<std::string>('"' + text + '"') : std::nullopt;
  }
  if (!value.isArray()) return std::nullopt;
  std::string all;
  for (const Json::Value& entry : value) {
    const std::optional<std::string> text = plainText(entry);
    if (!text) return std::nullopt;
    all += (all.empty() ? "" : ",") + *text;
  }
  return '[' + all + ']';
}

/// Compact JSON, with numbers as short as they read back the same; with escapes for all characters
/// when some bytes are no UTF-8, which do not read back from them.
std::string shortText(const Json::Value& value) {
  if (const std::optional<std::string> text = plainText(value)) return *text;
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

std::string typeName(const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      return "null";
    case Json::intValue:
      return "integer";
    case Json::uintValue:
      return "unsigned count";
    case Json::realValue:
      return "real";
    case Json::stringValue:
      return "text";
    case Json::booleanValue:
      return "boolean";
    case Json::arrayValue:
      return "array";
    case Json::objectValue:
      break;
  }
  return "object";
}

std::string typed(const Json::Value& value) {
  return value.isNull() ? "null" : brief(value) + " (" + typeName(value) + ')';
}

std::string withArticle(const std::string& type) {
  if (type == "null" || type == "text") return type;
  const bool vowel = std::string("aeiouI").find(type[0]) != std::string::npos;
  return (vowel ? "an " : "a ") + type;
}

std::string withoutFunction(const std::string& message) {
  const std::size_t colon = message.find(": ");
  std::string text = oneLine(colon == std::string::npos ? message : message.substr(colon + 2));
  if (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}

std::string indentedText(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "  ";
  return Json::writeString(writer, value) + '\n';
}

}  // namespace ttr
