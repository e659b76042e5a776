#include "diff/leaf_changes.h"

#include <algorithm>
#include <set>
#include <string>

namespace ttr {
namespace {

using CChanges = std::vector<CLeafChange>;

void compare(const CJsonPointer& pointer, const Json::Value& before, const Json::Value& after,
             CChanges& changes);

void compareObjects(const CJsonPointer& pointer, const Json::Value& before,
                    const Json::Value& after, CChanges& changes) {
  std::set<std::string> names;
  for (const Json::Value* object : {&before, &after}) {
    for (const std::string& name : object->getMemberNames()) names.insert(name);
  }
  for (const std::string& name : names) {
    if (!after.isMember(name)) {
      changes.push_back({pointer / name, before[name], std::nullopt});
    } else if (!before.isMember(name)) {
      changes.push_back({pointer / name, std::nullopt, after[name]});
    } else {
      compare(pointer / name, before[name], after[name], changes);
    }
  }
}

void compareArrays(const CJsonPointer& pointer, const Json::Value& before, const Json::Value& after,
                   CChanges& changes) {
  for (Json::ArrayIndex index = 0; index < std::max(before.size(), after.size()); ++index) {
    const CJsonPointer entry = pointer / std::size_t{index};
    if (index >= after.size()) {
      changes.push_back({entry, before[index], std::nullopt});
    } else if (index >= before.size()) {
      changes.push_back({entry, std::nullopt, after[index]});
    } else {
      compare(entry, before[index], after[index], changes);
    }
  }
}

void compare(const CJsonPointer& pointer, const Json::Value& before, const Json::Value& after,
             CChanges& changes) {
  if (before == after) return;
  if (before.isObject() && after.isObject()) {
    compareObjects(pointer, before, after, changes);
  } else if (before.isArray() && after.isArray()) {
    compareArrays(pointer, before, after, changes);
  } else {
    changes.push_back({pointer, before, after});
  }
}

}  // namespace

std::vector<CLeafChange> leafChanges(const Json::Value& before, const Json::Value& after) {
  CChanges changes;
  compare({}, before, after, changes);
  return changes;
}

}  // namespace ttr
