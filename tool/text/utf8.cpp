#include "text/utf8.h"

namespace ttr {
namespace {

std::size_t sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

}  // namespace

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

}  // namespace ttr
