#include "page/page_variables.h"

#include <exception>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/included_file.h"
#include "TokenTemplateResolver/json_text.h"

namespace ttr {
namespace {

class CVariableCollector {
 public:
  /// Without `tokens`, which are borrowed, Includes are left aside.
  explicit CVariableCollector(const CTokenResolver* tokens) : m_tokens(tokens) {}

  /// File after file, not file within file: a long chain of includes must not exhaust the stack.
  void CollectDocument(const Json::Value& document) {
    Collect(document);
    while (!m_pending.empty()) {
      const std::string file = m_pending.back();
      m_pending.pop_back();
      collectFile(file);
    }
  }

  void Collect(const Json::Value& value) {
    if (value.isObject()) {
      collectContext(value["Context"]);
      collectLoop(value["Loop"]);
      if (m_tokens != nullptr) collectInclude(value["Include"]);
    } else if (!value.isArray()) {
      return;
    }
    for (auto part = value.begin(); part != value.end(); ++part) {
      m_way.push_back(part);
      Collect(*part);
      m_way.pop_back();
    }
  }

  CBoundNames names;

 private:
  void collectFile(const std::string& file) {
    try {
      std::string errors;
      Collect(jsoncpp_string::toJsonObject(readIncludedFile(file), &errors));
    } catch (const Json::RuntimeError&) {
      // A file that is nested too deep is reported if the page comes to it.
    }
  }

  void collectContext(const Json::Value& context) {
    if (!context.isObject()) return;
    for (const std::string& name : context.getMemberNames()) add(name, "Context", name);
  }

  void collectLoop(const Json::Value& loop) {
    if (!loop.isObject()) return;
    for (const char* variable : {"Var", "Key", "Value", "Count"}) {
      if (loop[variable].isString()) add(loop[variable].asString(), "Loop", variable);
    }
  }

  /// The first place counts. Its pointer is made for it alone, as pages may be deep.
  void add(const std::string& name, const char* holder, const std::string& member) {
    const auto [known, added] = names.try_emplace(name);
    if (!added) return;
    for (const auto& part : m_way) {
      const Json::Value key = part.key();
      known->second = std::move(known->second) /
                      (key.isString() ? key.asString() : std::to_string(key.asUInt()));
    }
    known->second = std::move(known->second) / holder / member;
  }

  void collectInclude(const Json::Value& include) {
    if (!include.isObject()) return;
    const std::string file = resolvedName(include["Filename"]);
    if (!file.empty() && m_files.insert(file).second) m_pending.push_back(file);
  }

  std::string resolvedName(Json::Value name) const {
    try {
      m_tokens->SubstituteTokenValues(name);
    } catch (const std::exception&) {
      // Arithmetic that fails is reported when the page is resolved.
    }
    return name.isString() ? name.asString() : "";
  }

  const CTokenResolver* m_tokens;
  std::vector<Json::Value::const_iterator> m_way;  ///< from the document to what is looked at
  std::set<std::string> m_files;
  std::vector<std::string> m_pending;  ///< of m_files, those still to be read
};

}  // namespace

std::set<std::string> pageVariables(const Json::Value& page, const CTokenResolver& tokens) {
  CVariableCollector collector(&tokens);
  collector.CollectDocument(page);
  std::set<std::string> names;
  for (const auto& [name, place] : collector.names) names.insert(name);
  names.erase("");
  return names;
}

CBoundNames boundNames(const Json::Value& document) {
  CVariableCollector collector(nullptr);
  collector.Collect(document);
  return std::move(collector.names);
}

}  // namespace ttr
