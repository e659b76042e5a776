// Token and template values to the types that elements and operators need, in place.
// Every conversion either assigns a new value or leaves the old one exactly as it was.
#include <json/writer.h>

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include "TokenTemplateResolver/token_resolver.h"
#include "token/text_form.h"
#include "util/comments.h"
#include "util/integer_text.h"
#include "util/report.h"
#include "util/string_utils.h"
#include "util/text_view.h"

namespace {

constexpr Json::UInt wordOf(Json::UInt red, Json::UInt green, Json::UInt blue, Json::UInt alpha) {
  return alpha << 24 | red << 16 | green << 8 | blue;
}

/// The colour of a text as people write them, "#RRGGBB" or "#RRGGBBAA" and nothing else.
std::optional<Json::UInt> plainColour(std::string_view text) {
  Json::UInt digits = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + 1, end, digits, 16);
  if (error != std::errc() || stop != end) return std::nullopt;
  if (text.size() == 7) return digits;
  if (text.size() == 9)
    return wordOf(digits >> 24, digits >> 16 & 0xFF, digits >> 8 & 0xFF, digits & 0xFF);
  return std::nullopt;
}

/// The colour that `text`, which starts with "#", gives; 0 after a message when it has fewer than
/// three fields. Without a fourth field alpha is deliberately 0, no opaque default. The C library
/// scans what is not plain: it takes short fields, blanks, signs, and any text behind the fields.
Json::UInt htmlColour(std::string_view text) {
  if (const std::optional<Json::UInt> colour = plainColour(text)) return *colour;
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  unsigned alpha = 0;
  const int fields =
      std::sscanf(std::string(text).c_str(), "#%02X%02X%02X%02X", &red, &green, &blue, &alpha);
  if (fields < 3) {
    ttr::report("CTokenResolver::HTMLtoInt: cannot convert value to colour: ", text, ".");
    return 0;
  }
  return wordOf(red, green, blue, alpha);
}

Json::UInt unsignedNumber(std::string_view text) {
  const std::optional<std::uint32_t> number = ttr::wholeUInt32(text);
  if (!number) {
    ttr::report("CTokenResolver::stringToUInt: cannot convert value to unsigned integer: ", text,
                ".");
  }
  return number.value_or(0);
}

/// What JsonCpp's stream operator writes, trimmed. The operator builds a writer for each call, so
/// numbers and booleans go straight to the functions that the writer uses.
std::string jsonText(const Json::Value& value) {
  if (!ttr::hasComments(value)) {
    if (value.isBool()) return Json::valueToString(value.asBool());
    if (value.type() == Json::intValue) return Json::valueToString(value.asLargestInt());
    if (value.type() == Json::uintValue) return Json::valueToString(value.asLargestUInt());
    if (value.type() == Json::realValue) return Json::valueToString(value.asDouble());
  }
  std::ostringstream stream;
  stream.exceptions(std::ios::badbit);  // else it ends early when memory runs out
  stream << value;
  return ttr::trim(stream.str());
}

}  // namespace

std::string ttr::textForm(const Json::Value& value) {
  return value.isNull() ? "" : jsonText(value);
}

void CTokenResolver::ConvertToTruthValue(Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      value = false;
      return;
    case Json::stringValue: {
      const std::string_view text = ttr::textView(value);
      value = !text.empty() && text != "0";  // so "false" and "no" are true
      return;
    }
    case Json::arrayValue:
      value = !value.empty();
      return;
    case Json::objectValue:
      value = true;
      return;
    default:
      value = value.asInt() != 0;
  }
}

void CTokenResolver::ConvertToInt(Json::Value& value) {
  if (value.isString()) {
    const std::string_view text = ttr::textView(value);
    const std::optional<std::int32_t> number = ttr::wholeInt32(text);
    if (!number) {
      ttr::report("CTokenResolver::stringToInt: cannot convert value to signed integer: ", text,
                  ".");
      return;
    }
    value = *number;
  } else if (value.isNumeric() || value.isBool()) {
    value = value.asInt();
  }
}

void CTokenResolver::CoerceToInt(Json::Value& value) {
  ConvertToInt(value);
  if (!value.isInt()) value = 0;
}

void CTokenResolver::CoerceToColour(Json::Value& value) {
  if (value.isString()) {
    const std::string_view text = ttr::textView(value);
    const std::size_t hash = text.empty() || text.front() != '#' ? text.find('#') : 0;
    value = hash == std::string_view::npos ? unsignedNumber(text) : htmlColour(text.substr(hash));
  } else if (value.isNumeric() || value.isBool()) {
    value = value.asUInt();
  } else {
    value = 0;  // int here, uint above: deliberate, and the same in JSON text
  }
}

void CTokenResolver::ConvertToString(Json::Value& value) {
  if (!value.isString()) value = ttr::textForm(value);
}

void CTokenResolver::ConvertToArray(Json::Value& value) {
  if (!value.isString()) return;
  const std::string text = value.asString();
  value = Json::Value(Json::arrayValue);
  for (const std::string& piece : ttr::CSVsplit(text, ",")) value.append(piece);
}
