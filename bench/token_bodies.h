#ifndef BENCH_TOKEN_BODIES_H
#define BENCH_TOKEN_BODIES_H

#include <json/value.h>

#include "TokenTemplateResolver/token_resolver.h"

namespace bench {

/// A kind of token, as it stands between "$(" and ")".
struct CTokenBody {
  const char* name;
  const char* body;
};

inline constexpr CTokenBody tokenBodies[] = {
    {"plain", "menu"},
    {"path", "menu.a.b.c.d.e"},
    {"index", "menu[menu.row]"},
    {"arithmetic", "menu*menu.row"},
};

inline constexpr int handlerCounts[] = {1, 10, 1000};

/// A registry of `handlers` handlers, one of which serves "menu". They answer every token with the
/// same number at once, so that what is measured is the library.
class CTokenHost {
 public:
  explicit CTokenHost(int handlers);
  CTokenHost(const CTokenHost&) = delete;
  CTokenHost& operator=(const CTokenHost&) = delete;

  Json::Value Resolve(const CTokenBody& body) const { return m_tokens.GetTokenValue(body.body); }

 private:
  class CHandler : public ITokenHandler {
   public:
    Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override;
    Json::Value GetPartsValue(const CTokenParts& parts) const override;
  };

  CTokenResolver m_tokens;
  CHandler m_handler;
};

}  // namespace bench

#endif  // BENCH_TOKEN_BODIES_H
