// What the host drives: template text in, resolved text out.
#include "TokenTemplateResolver/template_resolver.h"

#include "TokenTemplateResolver/json_text.h"
#include "template/bounds_array.h"
#include "util/report.h"
#include "util/trace_point.h"

CTemplateResolver::CTemplateResolver(const CTokenResolver* tokenResolver, CTemplateStack* stack)
    : m_tokenResolver(tokenResolver), m_stack(stack) {}

void CTemplateResolver::SetScreenSize(int height, int width) {
  m_screenHeight = height;
  m_screenWidth = width;
}

void CTemplateResolver::Input(const std::string& text) {
  m_document.clear();
  m_stack->Clear();
  pushScreenSize();
  read(m_document, text);
}

void CTemplateResolver::Process() {
  m_includeDepth = 0;
  m_containerId = 0;
  m_processCount += 1;
  if (ttr::isTraced()) ttr::tellBegin(ttr::tracedDocument, &m_document, {});
  process(m_document);
  if (ttr::isTraced()) ttr::tellEnd(ttr::tracedDocument, &m_document, {});
}

std::string CTemplateResolver::Output() const { return jsoncpp_string::toString(m_document); }

void CTemplateResolver::read(Json::Value& out, const std::string& text) {
  if (const Json::Value* document = parsedBefore(text)) {
    out = *document;
    return;
  }
  std::string errors;
  out = jsoncpp_string::toJsonObject(text, &errors);
  if (out.isObject()) {
    keepParsed(text, out);
  } else {
    ttr::report("CTemplateResolver::read:", errors, ".");
  }
}

void CTemplateResolver::pushScreenSize() {
  if (m_screenHeight < 1 || m_screenWidth < 1) return;
  m_stack->PushFresh();
  m_stack->BoundsSet(ttr::makeBoundsArray(0, 0, m_screenWidth, m_screenHeight));
}
