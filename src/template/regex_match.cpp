#include "TokenTemplateResolver/regex_match.h"

#include <regex.h>

bool regexMatch(const char* text, const char* pattern) {
  regex_t expression;
  if (regcomp(&expression, pattern, REG_EXTENDED | REG_ICASE | REG_NOSUB) != 0) return false;
  const bool matches = regexec(&expression, text, 0, nullptr, 0) == 0;
  regfree(&expression);
  return matches;
}
