#include "template/loop_variables.h"

#include <utility>

#include "template/member.h"
#include "util/trace_point.h"

namespace ttr {

CLoopVariables loopVariables(const CTemplateResolver& resolver, const Json::Value& loop) {
  return {resolver.getVarNameAsString(loop, "Var"), resolver.getVarNameAsString(loop, "Key"),
          resolver.getVarNameAsString(loop, "Value")};
}

Json::Value* loopContents(Json::Value& loop) {
  Json::Value* contents = findMember(loop, "Contents");
  return contents != nullptr && contents->isArray() ? contents : nullptr;
}

Json::Value CLoopList::entry(int index) const {
  const auto position = static_cast<Json::ArrayIndex>(index);
  if (!m_list.isArray() || index < 0 || !m_list.isValidIndex(position)) return Json::Value();
  if (m_own != nullptr) return std::move((*m_own)[position]);
  return m_list[position];
}

void bindVariable(Json::Value& context, const char* member, const std::string& name,
                  Json::Value value) {
  Json::Value& variable = context[name];
  variable = std::move(value);
  if (isTraced()) tellVariable(member, name, variable);
}

void bindIndex(Json::Value& context, const CLoopVariables& variables, const CLoopList& list,
               int index) {
  if (!variables.var.empty()) bindVariable(context, "Var", variables.var, index);
  if (!variables.key.empty()) bindVariable(context, "Key", variables.key, index);
  if (!variables.value.empty()) {
    bindVariable(context, "Value", variables.value, list.entry(index));
  }
}

}  // namespace ttr
