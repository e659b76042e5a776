#ifndef TESTS_SUPPORT_TABLE_HANDLER_H
#define TESTS_SUPPORT_TABLE_HANDLER_H

#include <json/value.h>

#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/token_handler.h"

/// Answers from a JSON value and records its calls. The parts after the first step into objects,
/// an index selects an entry of an array; what is not there is null.
class CTableHandler : public ITokenHandler {
 public:
  explicit CTableHandler(Json::Value value) : m_value(std::move(value)) {}

  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override {
    m_calls.push_back("GetIndexedValue " + join(token.nameParts) + " [" + index.asString() + "]");
    const Json::Value list = lookUp(token.nameParts);
    return list.isArray() && index.asInt() >= 0 ? list.get(index.asUInt(), Json::Value())
                                                : Json::Value();
  }

  Json::Value GetValue(const CParsedToken& token) const override {
    m_calls.push_back("GetValue " + join(token.nameParts) +
                      (token.argument.empty() ? "" : " :" + token.argument));
    return lookUp(token.nameParts);
  }

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    m_calls.push_back("GetPartsValue " + join(parts));
    return lookUp(parts);
  }

  /// The calls so far, such as "GetValue List", "GetIndexedValue List [2]", "GetPartsValue
  /// Sel.row".
  const std::vector<std::string>& calls() const { return m_calls; }

 private:
  static std::string join(const CTokenParts& parts) {
    return CTokenParts::rebuildToken(parts, static_cast<unsigned int>(parts.size()));
  }

  Json::Value lookUp(const CTokenParts& parts) const {
    Json::Value value = m_value;
    for (std::size_t i = 1; i < parts.size(); ++i) {
      if (!value.isObject()) return Json::Value();
      value = value.get(parts[i], Json::Value());
    }
    return value;
  }

  Json::Value m_value;
  mutable std::vector<std::string> m_calls;
};

#endif  // TESTS_SUPPORT_TABLE_HANDLER_H
