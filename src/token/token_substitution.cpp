// Tokens in a string value: "$(" body ")" is replaced by the value of the body.
// A string in, a value of any type out when the string is one token, else a string.
#include <cstddef>
#include <string>
#include <string_view>

#include "TokenTemplateResolver/token_resolver.h"
#include "token/text_form.h"
#include "util/report.h"
#include "util/text_view.h"

namespace {

constexpr char tokenStart[] = "$(";
constexpr char tokenEnd = ')';
constexpr std::size_t tokenStartLength = 2;

/// The body of the token in `text` from "$(" at `start` to ")" at `end`.
std::string tokenBody(std::string_view text, std::size_t start, std::size_t end) {
  start += tokenStartLength;
  return std::string(text.substr(start, end - start));
}

/// Appends the text form of a token's value.
void append(std::string& text, const Json::Value& value) {
  if (value.isString()) {
    text += ttr::textView(value);
  } else {
    text += ttr::textForm(value);
  }
}

}  // namespace

void CTokenResolver::SubstituteTokenValues(Json::Value& value) const {
  if (!value.isString()) return;
  const std::string_view seen = ttr::textView(value);
  std::size_t start = seen.find(tokenStart);
  if (start == std::string_view::npos) return;
  if (start == 0 && seen.find(tokenEnd) == seen.size() - 1) {  // the whole value is one token
    value = GetTokenValue(tokenBody(seen, 0, seen.size() - 1));
    return;
  }

  const std::string text(seen);  // stays as it is, whatever the handlers do
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
    result.append(text, copied, start - copied);
    append(result, GetTokenValue(tokenBody(text, start, end)));
    copied = end + 1;
  }
  value = result.append(text, copied, std::string::npos);
}
