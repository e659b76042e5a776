#include "resources/nested_page.h"

#include <algorithm>

namespace {

constexpr int jsonCppLimit = 1000;
constexpr int pageLevels = 2;  // {"Contents":[

}  // namespace

std::string repeated(const std::string& piece, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

std::string nestedPage(const CNesting& nesting, int levels, const std::string& innermost) {
  return R"({"Contents":[)" + repeated(nesting.open, levels) + innermost +
         repeated(nesting.close, levels) + "]}";
}

std::string nestedResult(int levels, const std::string& innermost) {
  return nestedPage(nestings[0], levels, innermost);
}

int mostLevels(const CNesting& nesting, int innermostLevels) {
  return (jsonCppLimit - pageLevels - std::max(innermostLevels, nesting.asideLevels)) /
         nesting.jsonLevels;
}
