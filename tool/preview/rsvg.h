#ifndef TOOL_PREVIEW_RSVG_H
#define TOOL_PREVIEW_RSVG_H

#include <string>

namespace ttr {

/// The SVG document `svg` as a PNG image, by librsvg's program rsvg-convert.
/// \throws CToolError when there is no such program, or it does not succeed
std::string pngFromSvg(const std::string& svg);

}  // namespace ttr

#endif  // TOOL_PREVIEW_RSVG_H
