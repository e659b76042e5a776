#include "TokenTemplateResolver/token_parts.h"

#include <stdexcept>

std::string CTokenParts::rebuildToken(const std::vector<std::string>& parts, unsigned int count) {
  static constexpr char tokenPartDelimiter = '.';
  if (count > parts.size())
    throw std::invalid_argument("CTokenParts::rebuildToken: bad element count");
  std::string token;
  for (unsigned int i = 0; i < count; ++i) {
    if (i > 0) token += tokenPartDelimiter;
    token += parts[i];
  }
  return token;
}
