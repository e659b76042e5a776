#include "preview/svg.h"

#include "text/xml_text.h"

namespace ttr {

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + '"';
}

std::string attribute(const char* name, std::int64_t value) {
  return attribute(name, std::to_string(value));
}

std::string geometry(const CBox& box) {
  return attribute("x", box.x) + attribute("y", box.y) + attribute("width", box.width) +
         attribute("height", box.height);
}

std::string rgbText(std::uint32_t colour) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string text = "#";
  for (unsigned shift = 24; shift > 0; shift -= 4) text += digits[colour >> (shift - 4) & 15U];
  return text;
}

int brightness(std::uint32_t colour) {
  const std::uint32_t sum =
      (colour >> 16U & 255U) * 299 + (colour >> 8U & 255U) * 587 + (colour & 255U) * 114;
  return static_cast<int>(sum / 1000);
}

std::string fraction(std::uint32_t thousandths) {
  if (thousandths > 999) return "1";
  const std::string digits = std::to_string(thousandths);
  return "0." + std::string(3 - digits.size(), '0') + digits;
}

std::string textElement(std::int64_t x, std::int64_t y, std::int64_t fontSize,
                        const std::string& fill, const std::string& text,
                        const std::string& attributes) {
  return "<text" + attribute("x", x) + attribute("y", y) + attribute("font-size", fontSize) +
         attribute("fill", fill) + attributes + '>' + xmlText(text) + "</text>";
}

}  // namespace ttr
