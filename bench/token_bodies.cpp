#include "token_bodies.h"

#include <string>

namespace bench {

Json::Value CTokenHost::CHandler::GetIndexedValue(const CParsedToken& /*token*/,
                                                  const Json::Value& /*index*/) const {
  return 2;
}

Json::Value CTokenHost::CHandler::GetPartsValue(const CTokenParts& /*parts*/) const { return 2; }

CTokenHost::CTokenHost(int handlers) {
  m_tokens.Set("menu", &m_handler);
  for (int i = 1; i < handlers; ++i) m_tokens.Set("other" + std::to_string(i), &m_handler);
}

}  // namespace bench
