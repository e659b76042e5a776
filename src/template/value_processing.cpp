// Single values: substitute the tokens of a value, of a member's copy, of one level of a list;
// lowercase the names of image and font files.
// Test: tests/template/value_processing_test.cpp
#include <cctype>

#include "TokenTemplateResolver/regex_match.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "util/report.h"

namespace {

constexpr char imageOrFontFile[] = R"((.+\.(png|jpg|jpeg|ttf|otf|bmp))$)";

}  // namespace

void CTemplateResolver::processValue(Json::Value& value) const {
  m_tokenResolver->SubstituteTokenValues(value);
}

Json::Value CTemplateResolver::getValueProcessed(const Json::Value& object, const char* key) const {
  Json::Value result;
  if (object.isMember(key)) {
    result = object[key];
    processValue(result);
  }
  return result;
}

std::string CTemplateResolver::getVarNameAsString(const Json::Value& object,
                                                  const char* key) const {
  const Json::Value& name = object[key];
  return name.isString() ? name.asString() : "";
}

void CTemplateResolver::processList(Json::Value& list) const {
  if (!list.isArray() && !list.isObject()) {
    ttr::report("CTemplateResolver::processList: element must be an array or object.");
    return;
  }
  for (Json::Value& entry : list) processValue(entry);
}

void CTemplateResolver::lowercaseContentsValue(Json::Value& value) {
  if (!value.isString()) return;
  std::string text = value.asString();
  if (!regexMatch(text.c_str(), imageOrFontFile)) return;
  for (char& character : text) {
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  }
  value = text;
}
