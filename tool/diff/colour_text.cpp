#include "diff/colour_text.h"

namespace ttr {

std::string colourText(std::uint32_t word) {
  static constexpr char digits[] = "0123456789ABCDEF";
  const std::uint32_t rotated = (word << 8U) | (word >> 24U);
  std::string text = "#";
  for (unsigned shift = 32; shift > 0; shift -= 4) text += digits[(rotated >> (shift - 4)) & 0xFU];
  return text;
}

}  // namespace ttr
