#ifndef SRC_TEMPLATE_BOUNDS_ARRAY_H
#define SRC_TEMPLATE_BOUNDS_ARRAY_H

#include <json/value.h>

#include <array>

namespace ttr {

/// Stands for an entry that a bounds array does not have.
inline constexpr int absentBound = -1;

/// An entry of the bounds that screen and grid cells have: a negative number becomes null.
Json::Value boundsNumber(int number);

/// The bounds [x, y, width, height, null, null] of the screen or of a grid cell.
Json::Value makeBoundsArray(int x, int y, int width, int height);

/// The int that `entry` of a bounds array holds, else absentBound.
inline int boundsInt(const Json::Value& entry) {
  // isInt() has checked the range, which asInt() would do once more.
  return entry.isInt() ? static_cast<int>(entry.asLargestInt()) : absentBound;
}

/// The ints of a bounds array, from which it can be made again.
class CBoundsNumbers {
 public:
  /// `bounds` is an array, without gaps.
  explicit CBoundsNumbers(const Json::Value& bounds);

  /// True when the array has nothing but ints, one to six.
  bool areAll() const { return m_areAll; }

  /// True when `value` is the array itself, moved perhaps, and no copy.
  bool areOf(const Json::Value& value) const {
    return value.size() != 0 && &*value.begin() == m_first;
  }

  Json::Value array() const;

 private:
  std::array<int, 6> m_numbers;
  Json::ArrayIndex m_count = 0;
  const Json::Value* m_first = nullptr;
  bool m_areAll = false;
};

/// Entry `index` of `bounds`; absentBound when it is missing or not an int. `bounds` is an array
/// or null.
int boundsEntry(const Json::Value& bounds, Json::ArrayIndex index);

/// An edge given as an int, measured from `origin`; without one (it is then negative) the edge
/// stays.
int absoluteEdge(int edge, int origin);

}  // namespace ttr

#endif  // SRC_TEMPLATE_BOUNDS_ARRAY_H
