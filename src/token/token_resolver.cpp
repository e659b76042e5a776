// The registry of handlers, and the road from one token body to one value: parse, find the
// handler, index or plain value, count, arithmetic.
#include "TokenTemplateResolver/token_resolver.h"

#include <cstddef>
#include <string_view>

#include "util/report.h"
#include "util/text_view.h"
#include "util/trace_point.h"

namespace {

/// True when both "[" and "]" were met.
bool hasClosedIndex(const CParsedToken& token) {
  constexpr std::int32_t closed = sectionIndex | sectionIndexEnd;
  return (token.sectionsSeen & closed) == closed;
}

void tellPathBegin(const CTokenParts& parts) {
  ttr::tellTokenBegin(CTokenParts::rebuildToken(parts, static_cast<unsigned int>(parts.size())));
}

/// `name` is that of the handler, empty when there is none.
void traceTokenEnd(std::string_view name, const Json::Value& value) {
  if (ttr::isTraced()) ttr::tellEnd(ttr::tracedToken, &value, name);
}

}  // namespace

CTokenResolver::CTokenResolver() = default;

void CTokenResolver::Set(const std::string& name, const ITokenHandler* handler) {
  m_handlers[name] = handler;
}

CTokenResolver::CHandlers::const_iterator CTokenResolver::find(const CTokenParts& parts) const {
  // The whole path first, then without its last part, and so on: the longest prefix wins.
  std::string key = CTokenParts::rebuildToken(parts, static_cast<unsigned int>(parts.size()));
  for (std::size_t count = parts.size(); count > 0; --count) {
    const auto handler = m_handlers.find(key);
    if (handler != m_handlers.end()) return handler;
    if (count > 1) key.resize(key.size() - parts[count - 1].size() - 1);
  }
  return m_handlers.end();
}

Json::Value CTokenResolver::getTokenElement(const CTokenParts& parts) const {
  Json::Value element;
  if (parts.empty()) return element;
  if (parts.size() == 1) {
    element = parts[0];  // a literal, deliberately never looked up
  } else {
    if (ttr::isTraced()) tellPathBegin(parts);
    const auto handler = find(parts);
    if (handler == m_handlers.end()) {
      traceTokenEnd({}, element);
      return element;
    }
    element = handler->second->GetPartsValue(parts);
    traceTokenEnd(handler->first, element);
  }
  CoerceToInt(element);
  return element;
}

Json::Value CTokenResolver::GetTokenValue(const std::string& body) const {
  if (ttr::isTraced()) ttr::tellTokenBegin(body);
  Json::Value result;
  const CParsedToken token(body);
  const auto handler = find(token.nameParts);
  if (handler == m_handlers.end()) {
    ttr::report("CTokenResolver::GetTokenValue: no token handler for: ", body, ".");
    traceTokenEnd({}, result);
    return result;
  }
  if (hasClosedIndex(token) && !token.indexParts.empty()) {
    const Json::Value index = getTokenElement(token.indexParts);
    if (!index.isInt()) {
      ttr::report("CTokenResolver::GetTokenValue: index must be integer in: ", body, ".");
      traceTokenEnd(handler->first, result);
      return result;
    }
    result = handler->second->GetIndexedValue(token, index);
  } else {
    result = handler->second->GetValue(token);
    if (hasClosedIndex(token)) ConvertToArray(result);
  }
  if ((token.sectionsSeen & sectionCount) != 0) {
    ConvertToArray(result);
    result = Json::Value(result.size());
  }
  if (token.operation != '\0' && !token.operandParts.empty()) {
    const Json::Value operand = getTokenElement(token.operandParts);
    if (operand.isInt()) {
      evaluateExpression(result, token.operation, operand);
    } else {
      // Unlike a bad index, a bad operand deliberately keeps the value.
      ttr::report("CTokenResolver::GetTokenValue: expression operand must be integer in: ", body,
                  ".");
    }
  }
  traceTokenEnd(handler->first, result);
  return result;
}

bool CTokenResolver::IsResolvable(const Json::Value& value) const {
  if (!value.isString()) return false;
  return find(CParsedToken(value.asString()).nameParts) != m_handlers.end();
}

bool CTokenResolver::ContainsTokenSubstrings(const Json::Value& value) const {
  if (!value.isString()) return false;
  const std::string_view text = ttr::textView(value);
  const std::size_t start = text.find("$(");
  return start != std::string_view::npos && text.find(')', start) != std::string_view::npos;
}
