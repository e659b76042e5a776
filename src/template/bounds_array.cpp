#include "template/bounds_array.h"

namespace ttr {

Json::Value makeBoundsArray(int x, int y, int width, int height) {
  Json::Value bounds(Json::arrayValue);
  for (const int number : {x, y, width, height}) {
    bounds.append(number < 0 ? Json::Value() : Json::Value(number));
  }
  bounds.append(Json::Value());
  bounds.append(Json::Value());
  return bounds;
}

int boundsEntry(const Json::Value& bounds, Json::ArrayIndex index) {
  const Json::Value& entry = bounds[index];
  return entry.isInt() ? entry.asInt() : absentBound;
}

}  // namespace ttr
