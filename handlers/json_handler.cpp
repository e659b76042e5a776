#include "TokenTemplateHandlers/json_handler.h"

#include <utility>

#include "value_path.h"

CJsonHandler::CJsonHandler(Json::Value value, std::size_t nameParts)
    : m_value(std::move(value)), m_nameParts(nameParts) {}

void CJsonHandler::SetValue(Json::Value value) { m_value = std::move(value); }

Json::Value CJsonHandler::GetIndexedValue(const CParsedToken& token,
                                          const Json::Value& index) const {
  return ttr::entryAt(ttr::memberAt(m_value, token.nameParts, m_nameParts), index);
}

Json::Value CJsonHandler::GetPartsValue(const CTokenParts& parts) const {
  return ttr::memberAt(m_value, parts, m_nameParts);
}
