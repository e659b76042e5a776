#ifndef SRC_TEMPLATE_BOUNDS_ARRAY_H
#define SRC_TEMPLATE_BOUNDS_ARRAY_H

#include <json/value.h>

namespace ttr {

/// Stands for an entry that a bounds array does not have.
inline constexpr int absentBound = -1;

/// The bounds [x, y, width, height, null, null] of the screen or of a grid cell. A negative number
/// becomes null.
Json::Value makeBoundsArray(int x, int y, int width, int height);

/// Entry `index` of `bounds`; absentBound when it is missing or not an int. `bounds` is an array
/// or null.
int boundsEntry(const Json::Value& bounds, Json::ArrayIndex index);

}  // namespace ttr

#endif  // SRC_TEMPLATE_BOUNDS_ARRAY_H
