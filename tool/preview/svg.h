#ifndef TOOL_PREVIEW_SVG_H
#define TOOL_PREVIEW_SVG_H

#include <cstdint>
#include <string>

#include "preview/box.h"

namespace ttr {

/// ` name="value"`; `value` is no text of a page.
std::string attribute(const char* name, const std::string& value);
std::string attribute(const char* name, std::int64_t value);

/// The attributes x, y, width and height.
std::string geometry(const CBox& box);

/// A colour word without its alpha: "#1e5aa8".
std::string rgbText(std::uint32_t colour);
inline std::uint32_t alphaOf(std::uint32_t colour) { return colour >> 24U; }
/// How bright a colour looks, 0 to 255.
int brightness(std::uint32_t colour);

/// Thousandths as SVG writes them: 502 is "0.502", and whatever is above 999 is "1".
std::string fraction(std::uint32_t thousandths);

/// One line of text whose letters stand on `y`. `text` may be anything.
std::string textElement(std::int64_t x, std::int64_t y, std::int64_t fontSize,
                        const std::string& fill, const std::string& text,
                        const std::string& attributes = "");

}  // namespace ttr

#endif  // TOOL_PREVIEW_SVG_H
