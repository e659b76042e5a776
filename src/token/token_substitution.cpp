// Tokens in a string value: "$(" body ")" is replaced by the value of the body.
// A string in, a value of any type out when the string is one token, else a string.
// Test: tests/token/token_substitution_test.cpp
#include <cstddef>
#include <string>
#include <string_view>

#include "TokenTemplateResolver/token_resolver.h"
#include "util/report.h"

namespace {

constexpr char tokenStart[] = "$(";
constexpr char tokenEnd = ')';
constexpr std::size_t tokenStartLength = 2;

/// True for a string with "$(" in it. Most strings have none; they are not even copied.
bool hasTokenStart(const Json::Value& value) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (!value.isString() || !value.getString(&begin, &end)) return false;
  const std::string_view text(begin, static_cast<std::size_t>(end - begin));
  return text.find(tokenStart) != std::string_view::npos;
}

}  // namespace

void CTokenResolver::SubstituteTokenValues(Json::Value& value) const {
  if (!hasTokenStart(value)) return;
  const std::string text = value.asString();
  std::size_t start = text.find(tokenStart);

  const bool wholeValue = start == 0 && text.find(tokenEnd) == text.size() - 1;
  if (wholeValue) {
    value = GetTokenValue(text.substr(tokenStartLength, text.size() - tokenStartLength - 1));
    return;
  }

  // The result grows piece by piece, so that the cost stays linear in the text and what a handler
  // delivers is never scanned for tokens.
  std::string result;
  std::size_t copied = 0;
  for (; start != std::string::npos; start = text.find(tokenStart, copied)) {
    const std::size_t end = text.find(tokenEnd, start);
    if (end == std::string::npos) {
      ttr::report("CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.");
      if (copied == 0) return;
      break;
    }
    const std::size_t bodyStart = start + tokenStartLength;
    Json::Value tokenValue = GetTokenValue(text.substr(bodyStart, end - bodyStart));
    ConvertToString(tokenValue);
    result.append(text, copied, start - copied).append(tokenValue.asString());
    copied = end + 1;
  }
  value = result.append(text, copied, std::string::npos);
}
