#include "value_path.h"

namespace ttr {

const Json::Value& memberAt(const Json::Value& value, const CTokenParts& parts, std::size_t first) {
  const Json::Value* member = &value;
  for (std::size_t i = first; i < parts.size(); ++i) {
    if (!member->isObject()) return Json::Value::nullSingleton();
    member = &(*member)[parts[i]];
  }
  return *member;
}

const Json::Value& entryAt(const Json::Value& list, const Json::Value& index) {
  if (!list.isArray() || index.asInt() < 0) return Json::Value::nullSingleton();
  return list[index.asUInt()];
}

}  // namespace ttr
