#include "workload_host.h"

#include <stdexcept>

#include "TokenTemplateResolver/json_text.h"

namespace bench {
namespace {

Json::Value parsed(const std::string& text) {
  std::string errors;
  Json::Value document = jsoncpp_string::toJsonObject(text, &errors);
  if (!document.isObject()) throw std::runtime_error("no JSON object: " + errors);
  return document;
}

}  // namespace

CWorkloadHost::CWorkloadHost(const CWorkload& workload) {
  m_tokens.Set("context", &m_context);
  Serve(workload);
}

void CWorkloadHost::Serve(const CWorkload& workload) {
  for (const std::string& name : workload.variables) m_tokens.Set(name, &m_variables);
  for (const std::string& name : workload.values.getMemberNames()) {
    m_values.push_back(std::make_unique<CJsonHandler>(workload.values[name]));
    m_tokens.Set(name, m_values.back().get());
  }
}

void CWorkloadHost::Start() {
  m_resolver.emplace(&m_tokens, &m_stack);
  m_resolver->SetScreenSize(720, 1280);
}

std::string CWorkloadHost::Pass(const std::string& page) {
  Input(page);
  Process();
  return Output();
}

std::string firstResult(const CWorkload& workload) {
  CWorkloadHost host(workload);
  host.Start();
  return host.Pass(workload.page);
}

CFloor::CFloor(const CWorkload& workload, const std::string& resolved)
    : m_templates(workload.includes), m_resolved(parsed(resolved)) {
  m_templates.push_back(workload.page);
}

void CFloor::Parse() const {
  for (const std::string& text : m_templates) keep(parsed(text));
}

void CFloor::Copy() const { keep(Json::Value(m_resolved)); }

void CFloor::Write() const {
  static const jsoncpp_string::CJsonWriter jsonWriter;
  keep(Json::writeString(jsonWriter, m_resolved));
}

void CFloor::Run() const {
  Parse();
  Copy();
  Write();
}

}  // namespace bench
