#include "page/page_host.h"

#include <algorithm>
#include <cstddef>

#include "TokenTemplateResolver/json_text.h"
#include "page/page_variables.h"

namespace ttr {

CPageHost::CPageHost(const Json::Value& values, CScreenSize size) {
  m_resolver.SetScreenSize(size.height, size.width);
  m_tokens.Set("context", &m_context);
  for (const std::string& name : values.getMemberNames()) {
    const auto nameParts = static_cast<std::size_t>(1 + std::count(name.begin(), name.end(), '.'));
    m_values.push_back(std::make_unique<CJsonHandler>(values[name], nameParts));
    m_tokens.Set(name, m_values.back().get());
  }
}

void CPageHost::ServeVariablesOf(const std::string& page) {
  std::string errors;
  const Json::Value document = jsoncpp_string::toJsonObject(page, &errors);
  ServeVariables(pageVariables(document, m_tokens));
}

void CPageHost::ServeVariables(const std::set<std::string>& names) {
  for (const std::string& name : names) {
    if (m_tokens.handlers().count(name) == 0) m_tokens.Set(name, &m_variables);
  }
}

std::optional<std::size_t> CPageHost::FrameOf(const std::string& name,
                                              const CTokenParts& path) const {
  const auto handler = m_tokens.handlers().find(name);
  if (handler == m_tokens.handlers().end()) return std::nullopt;
  for (const CContextHandler* bound : {&m_context, &m_variables}) {
    if (handler->second == bound) return bound->FindFrame(path);
  }
  return std::nullopt;
}

void CPageHost::SkipPasses(unsigned passes) {
  for (; passes > 0; --passes) Resolve(R"({"Contents": []})");
}

void CPageHost::Resolve(const std::string& page) {
  m_resolver.Input(page);
  m_resolver.Process();
}

std::string CPageHost::Pass(const std::string& page) {
  Resolve(page);
  return m_resolver.Output();
}

}  // namespace ttr
