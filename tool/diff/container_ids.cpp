#include "diff/container_ids.h"

#include <set>
#include <string>

namespace ttr {
namespace {

/// The number of a container; null when `element` is none.
const Json::Value* idOf(const Json::Value& element) {
  const Json::Value* id = (CJsonPointer() / "Frame" / "Id").Find(element);
  return id != nullptr && id->isInt() ? id : nullptr;
}

bool isNumberOfContainer(const CDifference& difference) {
  static const std::set<std::string> members = {"Container", "Frame/Container", "Frame/Id"};
  return difference.kind == CDifference::kindMember && members.count(difference.member) > 0 &&
         difference.from && difference.from->isInt() && difference.to && difference.to->isInt();
}

bool leadsTo(const std::map<int, int>& numbers, int from, int to) {
  const auto found = numbers.find(from);
  return found != numbers.end() && found->second == to;
}

}  // namespace

void CContainerIds::Add(const Json::Value& before, const Json::Value& after) {
  const Json::Value* left = idOf(before);
  const Json::Value* right = idOf(after);
  if (left == nullptr || right == nullptr) return;
  m_after.emplace(left->asInt(), right->asInt());
  m_before.emplace(right->asInt(), left->asInt());
}

bool CContainerIds::Explain(const CDifference& difference) const {
  if (!isNumberOfContainer(difference)) return false;
  const int from = difference.from->asInt();
  const int to = difference.to->asInt();
  return leadsTo(m_after, from, to) && leadsTo(m_before, to, from);
}

}  // namespace ttr
