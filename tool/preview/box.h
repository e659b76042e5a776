#ifndef TOOL_PREVIEW_BOX_H
#define TOOL_PREVIEW_BOX_H

#include <algorithm>
#include <cstdint>

namespace ttr {

/// A rectangle in screen units. 64 bits hold every sum of two 32-bit bounds.
struct CBox {
  std::int64_t x = 0;
  std::int64_t y = 0;
  std::int64_t width = 0;
  std::int64_t height = 0;

  std::int64_t Right() const { return x + width; }
  std::int64_t Bottom() const { return y + height; }
  bool Contains(std::int64_t pointX, std::int64_t pointY) const {
    return pointX >= x && pointX < Right() && pointY >= y && pointY < Bottom();
  }
  bool IsInside(const CBox& outer) const {
    return x >= outer.x && y >= outer.y && Right() <= outer.Right() && Bottom() <= outer.Bottom();
  }
  CBox Grown(std::int64_t by) const { return {x - by, y - by, width + 2 * by, height + 2 * by}; }
  bool operator==(const CBox& other) const {
    return x == other.x && y == other.y && width == other.width && height == other.height;
  }
};

/// The part of `box` inside of `limits`. What lies wholly outside becomes an empty box at the
/// nearest place of the edge.
inline CBox clipped(const CBox& box, const CBox& limits) {
  const std::int64_t left = std::clamp(box.x, limits.x, limits.Right());
  const std::int64_t top = std::clamp(box.y, limits.y, limits.Bottom());
  const std::int64_t right = std::clamp(box.Right(), limits.x, limits.Right());
  const std::int64_t bottom = std::clamp(box.Bottom(), limits.y, limits.Bottom());
  return {left, top, right - left, bottom - top};
}

}  // namespace ttr

#endif  // TOOL_PREVIEW_BOX_H
