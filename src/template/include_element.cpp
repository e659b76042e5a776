// "Include": the element is replaced by the resolved contents of another template file.
// Goes in: the Include member; comes out: the included document, null when it cannot be included.
#include "TokenTemplateResolver/included_file.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "util/flag_scope.h"
#include "util/report.h"
#include "util/trace_point.h"

namespace {

constexpr unsigned int maxIncludeDepth = 10;

}  // namespace

Json::Value CTemplateResolver::processContentsIncludeElement(Json::Value& include) {
  ttr::traceMemberBegin("Include", include);
  Json::Value result = includedDocument(include);
  ttr::traceMemberEnd(result);
  return result;
}

Json::Value CTemplateResolver::includedDocument(const Json::Value& include) {
  Json::Value result;
  // The test is "greater than", so that eleven files nest and the twelfth is refused: deliberate.
  if (m_includeDepth > maxIncludeDepth) {
    ttr::report("CTemplateResolver::processContentsIncludeElement: include depth of ",
                m_includeDepth, " exceeds maximum of ", maxIncludeDepth);
    return result;
  }
  const Json::Value name = getValueProcessed(include, "Filename");
  if (!name.isString()) {
    ttr::report(
        "CTemplateResolver::processContentsIncludeElement: 'Filename' element must be present and "
        "must be string type.");
    return result;
  }
  const std::string file = name.asString();
  if (ttr::isTraced()) ttr::tellBegin(ttr::tracedDocument, nullptr, file);
  read(result, ttr::readIncludedFile(file));
  // Not undone when an exception passes: the next Process starts from 0.
  m_includeDepth += 1;
  {
    const ttr::CFlagScope own(m_isOwnValue.isRaised, true);
    process(result);
  }
  m_includeDepth -= 1;
  if (ttr::isTraced()) ttr::tellEnd(ttr::tracedDocument, &result, {});
  return result;
}
