#include "tool_error.h"

#include <algorithm>

namespace ttr {

std::string oneLine(std::string text) {
  const auto isControl = [](unsigned char byte) { return byte < ' ' || byte == 0x7f; };
  std::replace_if(text.begin(), text.end(), isControl, ' ');
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace ttr
