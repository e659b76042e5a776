#include "text/xml_text.h"

#include <cstddef>
#include <cstdint>

#include "text/utf8.h"

namespace ttr {
namespace {

constexpr char replacement[] = "\xEF\xBF\xBD";

bool isXmlCharacter(std::uint32_t value) {
  if (value < 0x20) return value == '\t' || value == '\n' || value == '\r';
  return value < 0xD800 || (value >= 0xE000 && value < 0xFFFE) ||
         (value >= 0x10000 && value < 0x110000);
}

/// The entity for a character with a meaning in XML; nothing for others.
const char* entityFor(char character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\r':
      return "&#13;";
    default:
      return nullptr;
  }
}

}  // namespace

std::string xmlText(const std::string& text) {
  std::string escaped;
  for (std::size_t at = 0; at < text.size();) {
    const CCodePoint point = codePointAt(text, at);
    if (const char* entity = entityFor(text[at])) {
      escaped += entity;
    } else if (point.length > 0 && isXmlCharacter(point.value)) {
      escaped.append(text, at, point.length);
    } else {
      escaped += replacement;
    }
    at += point.length > 0 ? point.length : 1;
  }
  return escaped;
}

}  // namespace ttr
