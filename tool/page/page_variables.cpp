#include "page/page_variables.h"

#include <exception>
#include <vector>

#include "TokenTemplateResolver/included_file.h"
#include "TokenTemplateResolver/json_text.h"

namespace ttr {
namespace {

class CVariableCollector {
 public:
  explicit CVariableCollector(const CTokenResolver& tokens) : m_tokens(tokens) {}

  /// File after file, not file within file: a long chain of includes must not exhaust the stack.
  void collectDocument(const Json::Value& document) {
    collect(document);
    while (!m_pending.empty()) {
      const std::string file = m_pending.back();
      m_pending.pop_back();
      collectFile(file);
    }
  }

  std::set<std::string> names;

 private:
  void collectFile(const std::string& file) {
    try {
      std::string errors;
      collect(jsoncpp_string::toJsonObject(readIncludedFile(file), &errors));
    } catch (const Json::RuntimeError&) {
      // A file that is nested too deep is reported if the page comes to it.
    }
  }

  void collect(const Json::Value& value) {
    if (value.isObject()) {
      collectContext(value["Context"]);
      collectLoop(value["Loop"]);
      collectInclude(value["Include"]);
    }
    if (!value.isObject() && !value.isArray()) return;
    for (const Json::Value& entry : value) collect(entry);
  }

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
    if (!file.empty() && m_files.insert(file).second) m_pending.push_back(file);
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
  std::vector<std::string> m_pending;  ///< of m_files, those still to be read
};

}  // namespace

std::set<std::string> pageVariables(const Json::Value& page, const CTokenResolver& tokens) {
  CVariableCollector collector(tokens);
  collector.collectDocument(page);
  collector.names.erase("");
  return collector.names;
}

}  // namespace ttr
