#include "template/loop_variables.h"

namespace ttr {

CLoopVariables loopVariables(const CTemplateResolver& resolver, const Json::Value& loop) {
  return {resolver.getVarNameAsString(loop, "Var"), resolver.getVarNameAsString(loop, "Key"),
          resolver.getVarNameAsString(loop, "Value")};
}

const Json::Value& listEntry(const Json::Value& list, int index) {
  if (!list.isArray() || index < 0) return Json::Value::nullSingleton();
  return list[static_cast<Json::ArrayIndex>(index)];
}

void bindIndex(Json::Value& context, const CLoopVariables& variables, const Json::Value& list,
               int index) {
  if (!variables.var.empty()) context[variables.var] = index;
  if (!variables.key.empty()) context[variables.key] = index;
  if (!variables.value.empty()) context[variables.value] = listEntry(list, index);
}

}  // namespace ttr
