#include "tool_error.h"

#include <algorithm>

namespace ttr {

std::string oneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace ttr
