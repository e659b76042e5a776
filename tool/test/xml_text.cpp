#include "test/xml_text.h"

#include <cstddef>
#include <cstdint>

namespace ttr {
namespace {

constexpr char replacement[] = "\xEF\xBF\xBD";

struct CCodePoint {
  std::uint32_t value = 0;
  std::size_t length = 0;  ///< in bytes; 0 when there is no UTF-8
};

std::size_t sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// The code point at `begin`, unless it is cut off or longer than it need be.
CCodePoint codePointAt(const std::string& text, std::size_t begin) {
  const auto lead = static_cast<unsigned char>(text[begin]);
  const std::size_t length = sequenceLength(lead);
  if (length == 0 || length > text.size() - begin) return {};
  std::uint32_t value = length == 1 ? lead : lead & (0x7FU >> length);
  for (std::size_t at = begin + 1; at < begin + length; ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if ((byte & 0xC0U) != 0x80U) return {};
    value = (value << 6U) | (byte & 0x3FU);
  }
  const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
  return overlong ? CCodePoint{} : CCodePoint{value, length};
}

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
