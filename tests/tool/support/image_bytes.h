#ifndef TESTS_TOOL_SUPPORT_IMAGE_BYTES_H
#define TESTS_TOOL_SUPPORT_IMAGE_BYTES_H

#include <string>

namespace ttr {

/// A chunk of a PNG file, whose checksum is wrong.
inline std::string PngChunk(const std::string& name, const std::string& data) {
  return std::string("\0\0\0", 3) + static_cast<char>(data.size()) + name + data + "-crc";
}

/// A PNG file as far as its chunks go: `width` times 1 pixel.
inline std::string PngOf(char width) {
  const std::string size = std::string("\0\0\0", 3) + width + std::string("\0\0\0\1", 4);
  return "\x89PNG\r\n\x1A\n" + PngChunk("IHDR", size + std::string("\x08\2\0\0\0", 5)) +
         PngChunk("IDAT", "rest") + PngChunk("IEND", "");
}

/// A JPEG file as far as its segments go: a frame of `width` times 1 pixel, and the beginning of
/// its pixels.
inline std::string JpegOf(char width) {
  return std::string("\xFF\xD8\xFF\xC0\0\x08\x08\0\1\0", 10) + width +
         std::string("\0\xFF\xDA\0\2", 5);
}

}  // namespace ttr

#endif  // TESTS_TOOL_SUPPORT_IMAGE_BYTES_H
