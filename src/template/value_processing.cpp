// Single values: substitute the tokens of a value, of a member's copy, of one level of a list;
// lowercase the names of image and font files.
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

#include "TokenTemplateResolver/regex_match.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "template/member.h"
#include "util/report.h"
#include "util/text_view.h"
#include "util/trace_point.h"

namespace {

/// True when `text` ends in a dot and the extension of an image or font file, in any case, with at
/// least one byte before the dot.
bool endsInFileExtension(std::string_view text) {
  const std::size_t dot = text.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return false;
  const std::string_view extension = text.substr(dot + 1);
  for (const std::string_view known : {"png", "jpg", "jpeg", "ttf", "otf", "bmp"}) {
    if (std::equal(extension.begin(), extension.end(), known.begin(), known.end(),
                   [](char written, char lower) { return (written | 0x20) == lower; })) {
      return true;
    }
  }
  return false;
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

/// True when `text`, up to its first NUL, matches "(.+\.(png|jpg|jpeg|ttf|otf|bmp))$" without
/// regard to case. The C library judges text that is not ASCII, in the character set of the
/// locale, by an expression that accepts the same texts in linear time; the rest needs none.
bool namesImageOrFont(std::string_view text) {
  const std::string_view name = text.substr(0, text.find('\0'));
  if (!endsInFileExtension(name)) return false;
  return isAscii(name) ||
         regexMatch(std::string(name).c_str(), R"(.\.(png|jpg|jpeg|ttf|otf|bmp)$)");
}

}  // namespace

void CTemplateResolver::processValue(Json::Value& value) const {
  m_tokenResolver->SubstituteTokenValues(value);
}

Json::Value CTemplateResolver::getValueProcessed(const Json::Value& object, const char* key) const {
  Json::Value result;
  if (const Json::Value* member = ttr::findMember(object, key)) {
    ttr::traceMemberBegin(key, *member);
    result = *member;
    processValue(result);
    ttr::traceMemberEnd(result);
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
  for (Json::Value& entry : list) {
    ttr::traceEntryBegin(entry);
    processValue(entry);
    ttr::traceEntryEnd(entry);
  }
}

void CTemplateResolver::lowercaseContentsValue(Json::Value& value) const {
  if (!value.isString() || !namesImageOrFont(ttr::textView(value))) return;
  std::string text = value.asString();
  for (char& character : text) {
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  }
  value = text;
  if (ttr::isTraced()) ttr::tellLowercased(value);
}
