// Test: tests/tool/diff/entry_matching_test.cpp
#include "diff/entry_matching.h"

#include <string>

#include "diff/page_difference.h"

namespace ttr {
namespace {

/// An entry of Contents, and what it is recognised by.
struct CEntry {
  const Json::Value* value;
  std::string label;
  std::vector<std::string> members;
};

std::vector<CEntry> entriesOf(const Json::Value& contents) {
  std::vector<CEntry> entries;
  for (const Json::Value& value : contents) {
    entries.push_back({&value, labelOf(value), {}});
    if (value.isObject()) entries.back().members = value.getMemberNames();
  }
  return entries;
}

bool haveSame(const char* member, const Json::Value& left, const Json::Value& right) {
  return left.isMember(member) && right.isMember(member) && left[member] == right[member];
}

/// Two elements can always be the same one, changed: then all scores are above 0. A text says most
/// about what an element is.
int likenessOfElements(const CEntry& left, const CEntry& right) {
  int score = 5;
  if (!left.label.empty() && left.label == right.label) score += 40;
  if (haveSame("Bounds", *left.value, *right.value)) score += 20;
  if (left.members == right.members) score += 15;
  if (haveSame("RenderType", *left.value, *right.value)) score += 5;
  if (haveSame("Display", *left.value, *right.value)) score += 5;
  return score;
}

/// Null says nothing about what was to be there.
int likenessOf(const CEntry& left, const CEntry& right) {
  if (left.value->isNull() && right.value->isNull()) return 2;
  if (left.value->isNull() || right.value->isNull()) return 1;
  if (*left.value == *right.value) return scoreOfSame;
  if (left.value->isObject() && right.value->isObject()) return likenessOfElements(left, right);
  return left.value->isObject() || right.value->isObject() ? 0 : 5;
}

}  // namespace

std::vector<CAlignedPair> matchEntries(const Json::Value& before, const Json::Value& after) {
  const std::vector<CEntry> left = entriesOf(before);
  const std::vector<CEntry> right = entriesOf(after);
  return align(left.size(), right.size(), [&](std::size_t leftEntry, std::size_t rightEntry) {
    return likenessOf(left[leftEntry], right[rightEntry]);
  });
}

}  // namespace ttr
