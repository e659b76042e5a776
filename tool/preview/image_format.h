#ifndef TOOL_PREVIEW_IMAGE_FORMAT_H
#define TOOL_PREVIEW_IMAGE_FORMAT_H

#include <string>

namespace ttr {

/// The media type of an image that browsers and librsvg show, told from its first bytes: PNG or
/// JPEG; empty for anything else.
std::string mediaType(const std::string& bytes);

/// True when the PNG or JPEG file is put together as its format wants it. Its pixels are not looked
/// at.
bool isWellFormedImage(const std::string& bytes);

}  // namespace ttr

#endif  // TOOL_PREVIEW_IMAGE_FORMAT_H
