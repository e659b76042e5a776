#ifndef SRC_TEMPLATE_BOUNDS_ARRAY_H
#define SRC_TEMPLATE_BOUNDS_ARRAY_H

#include <json/value.h>

namespace ttr {

/// Stands for an entry that a bounds array does not have.
inline constexpr int absentBound = -1;

/// An entry of the bounds that screen and grid cells have: a negative number becomes null.
Json::Value boundsNumber(int number);

/// The bounds [x, y, width, height, null, null] of the screen or of a grid cell.
Json::Value makeBoundsArray(int x, int y, int width, int height);

/// The int that `entry` of a bounds array holds, else absentBound.
int boundsInt(const Json::Value& entry);

/// Entry `index` of `bounds`; absentBound when it is missing or not an int. `bounds` is an array
/// or null.
int boundsEntry(const Json::Value& bounds, Json::ArrayIndex index);

/// An edge given as an int, measured from `origin`; without one (it is then negative) the edge
/// stays.
int absoluteEdge(int edge, int origin);

}  // namespace ttr

#endif  // SRC_TEMPLATE_BOUNDS_ARRAY_H
