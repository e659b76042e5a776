#include "template/bounds_array.h"

#include "util/wrapping.h"

namespace ttr {

Json::Value boundsNumber(int number) { return number < 0 ? Json::Value() : Json::Value(number); }

Json::Value makeBoundsArray(int x, int y, int width, int height) {
  Json::Value bounds(Json::arrayValue);
  for (const int number : {x, y, width, height}) bounds.append(boundsNumber(number));
  bounds.append(Json::Value());
  bounds.append(Json::Value());
  return bounds;
}

int boundsInt(const Json::Value& entry) {
  // isInt() has checked the range, which asInt() would do once more.
  return entry.isInt() ? static_cast<int>(entry.asLargestInt()) : absentBound;
}

int boundsEntry(const Json::Value& bounds, Json::ArrayIndex index) {
  return boundsInt(bounds[index]);
}

int absoluteEdge(int edge, int origin) { return origin < 0 ? edge : wrapAdd(edge, origin); }

}  // namespace ttr
