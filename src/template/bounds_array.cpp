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

CBoundsNumbers::CBoundsNumbers(const Json::Value& bounds) {
  auto entry = bounds.begin();
  const auto end = bounds.end();
  if (entry == end) return;
  m_first = &*entry;
  for (; entry != end; ++entry) {
    if (m_count == m_numbers.size() || entry->type() != Json::intValue) return;
    const Json::LargestInt number = entry->asLargestInt();
    if (number < Json::Value::minInt || number > Json::Value::maxInt) return;
    m_numbers[m_count++] = static_cast<int>(number);
  }
  m_areAll = true;
}

Json::Value CBoundsNumbers::array() const {
  Json::Value bounds(Json::arrayValue);
  for (Json::ArrayIndex index = 0; index < m_count; ++index) bounds.append(m_numbers[index]);
  return bounds;
}

int boundsEntry(const Json::Value& bounds, Json::ArrayIndex index) {
  return boundsInt(bounds[index]);
}

int absoluteEdge(int edge, int origin) { return origin < 0 ? edge : wrapAdd(edge, origin); }

}  // namespace ttr
