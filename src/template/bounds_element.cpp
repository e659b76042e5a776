// "Bounds" and "Layout": relative numbers and percentages become absolute screen units, measured
// against the nearest enclosing bounds on the stack.
// Goes in: [x, y, width, height, two integers], or an array of points; comes out: the same,
// resolved in place; bounds are recorded as those of the element.
// Test: tests/template/bounds_element_test.cpp
#include "TokenTemplateResolver/template_resolver.h"
#include "template/bounds_array.h"
#include "util/integer_text.h"
#include "util/wrapping.h"

namespace {

/// The bounds that an element is measured against; absentBound where there is none.
struct CEnclosingBounds {
  int x;
  int y;
  int width;
  int height;
};

CEnclosingBounds enclosingBounds(const CTemplateStack& stack) {
  const Json::Value& bounds = stack.boundsFind();
  return {ttr::boundsEntry(bounds, 0), ttr::boundsEntry(bounds, 1), ttr::boundsEntry(bounds, 2),
          ttr::boundsEntry(bounds, 3)};
}

/// A string whose first "%" stands after its first digit: "50%", "50 %" and "x5%", not "%50".
bool isPercentage(const Json::Value& value) {
  if (!value.isString()) return false;
  const std::string text = value.asString();
  const std::size_t percent = text.find('%');
  return percent != std::string::npos && text.find_first_of("0123456789") < percent;
}

int percentageOf(const Json::Value& value) { return ttr::leadingInt32(value.asString()); }

/// Makes the first two entries of a point absolute; a point with fewer is extended with nulls.
void processPoint(const CTemplateResolver& resolver, Json::Value& point,
                  const CEnclosingBounds& enclosing) {
  if (!point.isArray()) return;
  resolver.processBoundsEdge(point[0U], enclosing.x, enclosing.width);
  resolver.processBoundsEdge(point[1U], enclosing.y, enclosing.height);
}

int shareOf(int extent, const Json::Value& percentage) {
  return ttr::wrapMultiply(percentageOf(percentage), extent) / 100;
}

}  // namespace

void CTemplateResolver::processContentsBoundsElement(Json::Value& bounds) {
  const CEnclosingBounds enclosing = enclosingBounds(*m_stack);
  if (bounds.isValidIndex(0)) processBoundsEdge(bounds[0U], enclosing.x, enclosing.width);
  if (bounds.isValidIndex(1)) processBoundsEdge(bounds[1U], enclosing.y, enclosing.height);
  if (bounds.isValidIndex(2)) processBoundsSize(bounds[2U], enclosing.x, enclosing.width);
  if (bounds.isValidIndex(3)) processBoundsSize(bounds[3U], enclosing.y, enclosing.height);
  for (Json::ArrayIndex index = 4; index <= 5; ++index) {
    if (!bounds.isValidIndex(index)) continue;
    processValue(bounds[index]);
    CTokenResolver::CoerceToInt(bounds[index]);
  }
  m_stack->BoundsSet(bounds);
}

void CTemplateResolver::processLayoutElement(Json::Value& layout) {
  if (!layout.isArray()) return;
  const CEnclosingBounds enclosing = enclosingBounds(*m_stack);
  for (Json::Value& point : layout) processPoint(*this, point, enclosing);
}

void CTemplateResolver::processArrayBoundsEdge(Json::Value& point) const {
  processPoint(*this, point, enclosingBounds(*m_stack));
}

void CTemplateResolver::processBoundsEdge(Json::Value& edge, int origin, int extent) const {
  if (edge.isInt()) {
    if (origin >= 0) edge = ttr::wrapAdd(edge.asInt(), origin);
    return;
  }
  if (!edge.isString()) return;
  processValue(edge);
  if (origin >= 0 && extent > 0 && isPercentage(edge)) {
    edge = ttr::wrapAdd(shareOf(extent, edge), origin);
    return;
  }
  // Unlike an int, text gets the origin whatever its sign: without enclosing bounds it loses one.
  CTokenResolver::CoerceToInt(edge);
  edge = ttr::wrapAdd(edge.asInt(), origin);
}

void CTemplateResolver::processBoundsSize(Json::Value& size, int /*origin*/, int extent) const {
  if (!size.isString()) return;
  processValue(size);
  if (extent >= 1 && isPercentage(size)) {
    size = shareOf(extent, size);
  } else {
    CTokenResolver::CoerceToInt(size);
  }
}
