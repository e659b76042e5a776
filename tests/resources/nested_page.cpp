#include "resources/nested_page.h"

#include <algorithm>

namespace {

constexpr int jsonCppLimit = 1000;
constexpr int pageLevels = 2;  // {"Contents":[

}  // namespace

std::string Repeated(const std::string& piece, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

std::string NestedPage(const CNesting& nesting, int levels, const std::string& innermost) {
  return R"({"Contents":[)" + Repeated(nesting.open, levels) + innermost +
         Repeated(nesting.close, levels) + "]}";
}

std::string NestedResult(int levels, const std::string& innermost) {
  return NestedPage(nestings[0], levels, innermost);
}

int MostLevels(const CNesting& nesting, int innermostLevels) {
  return (jsonCppLimit - pageLevels - std::max(innermostLevels, nesting.asideLevels)) /
         nesting.jsonLevels;
}
