#include "preview/image_format.h"

#include <cstddef>
#include <cstdint>

namespace ttr {
namespace {

constexpr std::size_t signatureSize = 8;  ///< of a PNG file

unsigned byteAt(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

/// The big-endian number in the `count` bytes from `at` on, which must be there.
std::uint32_t numberAt(const std::string& bytes, std::size_t at, std::size_t count) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < count; ++i) number = number << 8U | byteAt(bytes, at + i);
  return number;
}

/// A chunk is its length, a name of four letters, its data, and a checksum.
bool isWellFormedPng(const std::string& bytes) {
  bool hasPixels = false;
  std::size_t at = signatureSize;
  while (bytes.size() - at >= 12) {
    const std::size_t length = numberAt(bytes, at, 4);
    const std::string name = bytes.substr(at + 4, 4);
    if (length > bytes.size() - at - 12) return false;
    const bool isFirst = at == signatureSize;
    if (isFirst != (name == "IHDR")) return false;
    if (isFirst &&
        (length != 13 || numberAt(bytes, at + 8, 4) == 0 || numberAt(bytes, at + 12, 4) == 0)) {
      return false;
    }
    if (name == "IEND") return hasPixels;
    hasPixels = hasPixels || name == "IDAT";
    at += length + 12;
  }
  return false;
}

/// The markers of frames, which tell the size of the image; those in between are of tables.
bool isFrame(unsigned marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// A segment is 0xFF, any number of times, a marker, the length of the rest, and that. The pixels
/// begin behind the marker 0xDA.
bool isWellFormedJpeg(const std::string& bytes) {
  bool hasFrame = false;
  std::size_t at = 2;
  while (bytes.size() - at >= 4) {
    if (byteAt(bytes, at) != 0xFF) return false;
    const unsigned marker = byteAt(bytes, at + 1);
    if (marker == 0xFF) {
      ++at;
      continue;
    }
    const std::size_t length = numberAt(bytes, at + 2, 2);
    if (length < 2 || length > bytes.size() - at - 2) return false;
    if (marker == 0xDA) return hasFrame;
    if (isFrame(marker) && (length < 8 || numberAt(bytes, at + 7, 2) == 0)) return false;
    hasFrame = hasFrame || isFrame(marker);
    at += 2 + length;
  }
  return false;
}

}  // namespace

std::string mediaType(const std::string& bytes) {
  if (bytes.compare(0, signatureSize, "\x89PNG\r\n\x1A\n") == 0) return "image/png";
  return bytes.compare(0, 3, "\xFF\xD8\xFF") == 0 ? "image/jpeg" : "";
}

bool isWellFormedImage(const std::string& bytes) {
  const std::string type = mediaType(bytes);
  if (type == "image/png") return isWellFormedPng(bytes);
  return type == "image/jpeg" && isWellFormedJpeg(bytes);
}

}  // namespace ttr
