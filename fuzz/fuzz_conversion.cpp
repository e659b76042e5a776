// The conversions between JSON types, token arithmetic, and the string functions behind them,
// each against a second account by the C library and 64-bit integers.
// Input: a value; a right operand; an operator; a text to match; a pattern; pieces of a list.

#include <json/writer.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "TokenTemplateResolver/regex_match.h"
#include "TokenTemplateResolver/token_resolver.h"
#include "fuzz_input.h"
#include "fuzz_support.h"
#include "util/string_utils.h"

namespace {

using ttr::require;
using ttr::same;

constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t highestUnsigned = std::numeric_limits<std::uint32_t>::max();

/// The int that 64-bit arithmetic wraps to.
int wrapped(std::int64_t number) {
  return static_cast<int>(static_cast<std::uint32_t>(number & 0xFFFFFFFF));
}

/// A step that gives a value, or nothing when it ends in Json::LogicError, the only exception that
/// conversions may throw.
template <typename Step>
std::optional<Json::Value> converted(const Json::Value& before, const Step& step) {
  Json::Value value = before;
  const bool done = ttr::finishes<Json::LogicError>([&] { step(value); });
  if (!done) require(same(value, before), "unchanged after an exception");
  Json::Value again = before;
  const bool doneAgain = ttr::finishes<Json::LogicError>([&] { step(again); });
  require(done == doneAgain && same(value, again), "the same result twice");
  if (!done) return std::nullopt;
  return value;
}

/// Newer C libraries take the prefix 0b, which the library under test never does.
bool hasBinaryPrefix(const std::string& text) {
  return text.find("0b") != std::string::npos || text.find("0B") != std::string::npos;
}

/// The number that the whole text is, in 64 bits that saturate; nothing when it is none.
std::optional<std::int64_t> wholeNumber(const std::string& text) {
  if (hasBinaryPrefix(text)) return std::nullopt;
  char* end = nullptr;
  const std::int64_t number = std::strtoll(text.c_str(), &end, 0);
  if (end != text.c_str() + text.size()) return std::nullopt;
  return number;
}

/// A number as 32 bits, signed or not, or nothing when it lies outside. Null is 0.
std::optional<std::int64_t> numberWithin(const Json::Value& value, std::int64_t least,
                                         std::int64_t greatest) {
  if (value.isBool()) return value.asBool() ? 1 : 0;
  if (value.isNull()) return 0;
  if (value.type() == Json::realValue) {
    const double real = value.asDouble();
    const bool within = real >= static_cast<double>(least) && real <= static_cast<double>(greatest);
    if (!within) return std::nullopt;  // no number, too
    return static_cast<std::int64_t>(real);
  }
  if (!value.isInt64()) return std::nullopt;
  const std::int64_t number = value.asInt64();
  if (number < least || number > greatest) return std::nullopt;
  return number;
}

bool isScalarNumber(const Json::Value& value) { return value.isNumeric() || value.isBool(); }

void checkInt(const Json::Value& before) {
  const auto number = converted(before, CTokenResolver::ConvertToInt);
  const auto coerced = converted(before, CTokenResolver::CoerceToInt);
  if (before.isString()) {
    const std::string text = before.asString();
    const auto expected = wholeNumber(text);
    if (hasBinaryPrefix(text)) return;
    const Json::Value whole = static_cast<int>(std::clamp(expected.value_or(0), lowest, highest));
    require(number && same(*number, expected ? whole : before), "text to int");
    require(coerced && same(*coerced, whole), "text coerced to int");
  } else if (isScalarNumber(before)) {
    const auto expected = numberWithin(before, lowest, highest);
    require(number.has_value() == expected.has_value(), "numbers outside 32 bits throw");
    require(coerced.has_value() == expected.has_value(), "they throw when coerced, too");
    if (!expected) return;
    require(same(*number, static_cast<int>(*expected)), "number to int");
    require(same(*coerced, *number), "number coerced to int");
  } else {
    require(number && same(*number, before), "null, arrays and objects stay");
    require(coerced && same(*coerced, 0), "null, arrays and objects are coerced to 0");
  }
}

/// The colour word of a text without "#": unsigned, saturating, negative numbers modulo 2^32.
std::uint32_t expectedUnsigned(const std::string& text) {
  const auto number = wholeNumber(text);
  if (!number) return 0;
  if (*number > highestUnsigned || *number < -highestUnsigned) return 0xFFFFFFFF;
  return static_cast<std::uint32_t>(*number & 0xFFFFFFFF);
}

std::uint32_t expectedColour(const std::string& text) {
  const std::size_t hash = text.find('#');
  if (hash == std::string::npos) return expectedUnsigned(text);
  unsigned red = 0, green = 0, blue = 0, alpha = 0;
  const int fields =
      std::sscanf(text.c_str() + hash, "#%02X%02X%02X%02X", &red, &green, &blue, &alpha);
  return fields < 3 ? 0 : alpha << 24 | red << 16 | green << 8 | blue;
}

void checkColour(const Json::Value& before) {
  const auto colour = converted(before, CTokenResolver::CoerceToColour);
  if (before.isString()) {
    const std::string text = before.asString();
    if (hasBinaryPrefix(text)) return;
    require(colour && same(*colour, Json::Value::UInt{expectedColour(text)}), "text to colour");
  } else if (isScalarNumber(before)) {
    const auto expected = numberWithin(before, 0, highestUnsigned);
    require(colour.has_value() == expected.has_value(), "numbers outside 32 bits throw");
    if (colour) require(same(*colour, static_cast<Json::UInt>(*expected)), "number to colour");
  } else {
    require(colour && same(*colour, 0), "null, arrays and objects are no colour");
  }
}

void checkTruth(const Json::Value& before) {
  const auto truth = converted(before, CTokenResolver::ConvertToTruthValue);
  if (isScalarNumber(before)) {
    const auto number = numberWithin(before, lowest, highest);
    require(truth.has_value() == number.has_value(), "numbers outside 32 bits throw");
    if (truth) require(same(*truth, *number != 0), "number to truth");
    return;
  }
  bool expected = before.isObject() || (before.isArray() && before.size() > 0);
  if (before.isString()) expected = before.asString() != "0" && before.asString() != "";
  require(truth && same(*truth, expected), "truth");
}

void checkString(const Json::Value& before) {
  const auto text = converted(before, CTokenResolver::ConvertToString);
  require(text && text->isString(), "everything has a text form");
  if (before.isString()) require(same(*text, before), "text stays");
  if (before.isNull()) require(*text == "", "null has no text");
  if (before.isString() || before.isNull()) return;
  std::ostringstream stream;
  stream << before;
  std::string expected = stream.str();
  const auto isBlank = [](char character) { return std::isspace(character & 0xFF) != 0; };
  while (!expected.empty() && isBlank(expected.back())) expected.pop_back();
  while (!expected.empty() && isBlank(expected.front())) expected.erase(0, 1);
  require(text->asString() == expected, "the text form is what JsonCpp writes");
  require(ttr::trim(stream.str()) == expected, "trimmed");
}

void checkArray(const Json::Value& before) {
  const auto array = converted(before, CTokenResolver::ConvertToArray);
  require(array.has_value(), "nothing throws");
  if (!before.isString()) {
    require(same(*array, before), "what is no text stays");
    return;
  }
  const std::string text = before.asString();
  require(array->isArray() && array->empty() == text.empty(), "only empty text has no pieces");
  std::string joined;
  for (const Json::Value& piece : *array) joined += (joined.empty() ? "" : ",") + piece.asString();
  // A leading empty piece joins without its comma.
  const std::size_t commas = text.size() - std::min(text.find_first_not_of(','), text.size());
  const bool plain = text.find('"') == std::string::npos;
  if (plain) require(joined == text.substr(text.size() - commas), "the pieces are the text");
}

/// Pieces written in quotes come back as they were.
void checkQuotedPieces(const std::vector<std::string>& pieces) {
  std::string text;
  for (const std::string& piece : pieces) {
    text += text.empty() ? "\"" : ",\"";
    for (const char character : piece)
      text += character == '"' ? "\"\"" : std::string(1, character);
    text += '"';
  }
  require(ttr::CSVsplit(text, ",") == pieces, "quoted pieces come back");
}

void checkArithmetic(const Json::Value& before, char operation, const Json::Value& right) {
  const CTokenResolver tokens;
  const auto convertedLeft = converted(before, CTokenResolver::ConvertToInt);
  const Json::Value left = convertedLeft.value_or(before);
  const auto l = left.isNull() || left.isInt() ? numberWithin(left, lowest, highest) : std::nullopt;
  const bool isNumber = right.isNull() || isScalarNumber(right);
  const auto r = isNumber ? numberWithin(right, lowest, highest) : std::nullopt;

  Json::Value result = before;
  const bool done = ttr::finishes<std::runtime_error, Json::LogicError>(
      [&] { tokens.evaluateExpression(result, operation, right); });
  const auto x = l.value_or(0);
  const auto y = r.value_or(0);
  const bool possible = l && r && (operation != '/' || y != 0);
  require(done == possible, "arithmetic on numbers, and no division by zero");
  Json::Value expected = left;
  if (possible && operation == '+') expected = wrapped(x + y);
  if (possible && operation == '-') expected = wrapped(x - y);
  if (possible && operation == '*') expected = wrapped(x * y);
  if (possible && operation == '/') expected = wrapped(x / y);
  require(same(result, expected), "the result of arithmetic, or the converted left operand");
}

/// Lower case of the letters A to Z.
std::string lower(std::string text) {
  for (char& character : text) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
  }
  return text;
}

void checkMatching(std::string text, std::string pattern) {
  // The C library's matcher is not under test. Counts, repeated repetitions ("a++++") and back
  // references take it time and memory that grow exponentially with the pattern.
  std::replace_if(
      pattern.begin(), pattern.end(), [](char sign) { return sign == '{' || sign == '\\'; }, '.');
  const std::size_t plus = pattern.find('+');
  if (plus != std::string::npos)
    std::replace(&pattern[plus + 1], &pattern[pattern.size()], '+', '.');
  text = text.substr(0, 64).c_str();
  pattern = pattern.substr(0, 24).c_str();
  const bool matches = regexMatch(text.c_str(), pattern.c_str());
  require(matches == regexMatch(text.c_str(), pattern.c_str()), "the same match twice");
  const bool literal = std::all_of(pattern.begin(), pattern.end(), [](char character) {
    return std::isalnum(character & 0xFF) != 0 || character == ' ';
  });
  if (literal && !pattern.empty()) {
    const bool found = lower(text).find(lower(pattern)) != std::string::npos;
    require(matches == found, "letters match themselves without regard to case");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ttr::CSilence silence;
  ttr::CFuzzInput input(data, size);
  const Json::Value value = input.value();
  const Json::Value right = input.value();
  const std::string operation = input.line();
  const std::string text = input.line();
  const std::string pattern = input.line();
  std::vector<std::string> pieces;
  while (!input.ended()) pieces.push_back(input.line());

  for (const Json::Value& operand : {value, right}) {
    checkInt(operand);
    checkColour(operand);
    checkTruth(operand);
    checkString(operand);
    checkArray(operand);
  }
  checkArithmetic(value, operation.empty() ? '\0' : operation[0], right);
  checkQuotedPieces(pieces);
  checkMatching(text, pattern);
  return 0;
}
