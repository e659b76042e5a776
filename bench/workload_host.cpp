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

CWorkloadHost::CWorkloadHost(const CWorkload& workload) : m_page(workload.page) {
  m_resolver.SetScreenSize(720, 1280);
  m_tokens.Set("context", &m_context);
  for (const std::string& name : workload.variables) m_tokens.Set(name, &m_variables);
  for (const std::string& name : workload.values.getMemberNames()) {
    m_values.push_back(std::make_unique<CJsonHandler>(workload.values[name]));
    m_tokens.Set(name, m_values.back().get());
  }
}

std::string CWorkloadHost::Road() {
  Input();
  Process();
  return Output();
}

CFloor::CFloor(const CWorkload& workload, const std::string& resolved)
    : m_templates(workload.includes), m_resolved(parsed(resolved)) {
  m_templates.push_back(workload.page);
}

void CFloor::Parse() const {
  for (const std::string& text : m_templates) keep(parsed(text));
}

void CFloor::Copy() const { keep(Json::Value(m_resolved)); }

void CFloor::Write() const { keep(jsoncpp_string::toString(m_resolved)); }

void CFloor::Run() const {
  Parse();
  Copy();
  Write();
}

CGridSteps::CGridSteps(const CWorkload& grid, const std::string& resolved)
    : m_cells(grid.units),
      m_elements(parsed(grid.page)["Contents"][0]["Loop"]["Contents"]),
      m_resolved(parsed(resolved)["Contents"][0]["Contents"]) {
  m_context["i"] = 0;
}

void CGridSteps::Run() {
  m_stack.PushFresh();
  for (int cell = 0; cell < m_cells; ++cell) {
    m_stack.BoundsSet(m_resolved[0]["Bounds"]);
    m_stack.ContextSet(m_context);
    for (Json::ArrayIndex i = 0; i < m_elements.size(); ++i) {
      m_copies.append(m_elements[i]);
      m_stack.PushFresh();
      m_stack.BoundsSet(m_resolved[i]["Bounds"]);
      m_stack.Pop();
    }
  }
  m_stack.Pop();
}

}  // namespace bench
