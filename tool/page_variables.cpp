#include "page_variables.h"

#include <stdexcept>

#include "TokenTemplateResolver/json_text.h"
#include "files.h"
#include "tool_error.h"

namespace ttr {
namespace {

class CVariableCollector {
 public:
  explicit CVariableCollector(const CTokenResolver& tokens) : m_tokens(tokens) {}

  void collect(const Json::Value& value) {
    if (value.isObject()) {
      collectContext(value["Context"]);
      collectLoop(value["Loop"]);
      collectInclude(value["Include"]);
    }
    if (!value.isObject() && !value.isArray()) return;
    for (const Json::Value& entry : value) collect(entry);
  }

  std::set<std::string> names;

 private:
  void collectContext(const Json::Value& context) {
    if (!context.isObject()) return;
    for (const std::string& name : context.getMemberNames()) names.insert(name);
  }

  void collectLoop(const Json::Value& loop) {
    if (!loop.isObject()) return;
    for (const char* variable : {"Var", "Key", "Value", "Count"}) {
      if (loop[variable].isString()) names.insert(loop[variable].asString());
    }
  }

  void collectInclude(const Json::Value& include) {
    if (!include.isObject()) return;
    const std::string file = resolvedName(include["Filename"]);
    if (file.empty() || !m_files.insert(file).second) return;
    try {
      std::string errors;
      collect(jsoncpp_string::toJsonObject(readText(file), &errors));
    } catch (const CToolError&) {
      // A missing file is reported when the page is resolved.
    }
  }

  std::string resolvedName(Json::Value name) const {
    try {
      m_tokens.SubstituteTokenValues(name);
    } catch (const std::exception&) {
      // Arithmetic that fails is reported when the page is resolved.
    }
    return name.isString() ? name.asString() : "";
  }

  const CTokenResolver& m_tokens;
  std::set<std::string> m_files;
};

}  // namespace

std::set<std::string> pageVariables(const Json::Value& page, const CTokenResolver& tokens) {
  CVariableCollector collector(tokens);
  collector.collect(page);
  collector.names.erase("");
  return collector.names;
}

}  // namespace ttr
