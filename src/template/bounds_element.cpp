// "Bounds" and "Layout": relative numbers and percentages become absolute screen units, measured
// against the nearest enclosing bounds on the stack.
// Goes in: [x, y, width, height, two integers], or an array of points; comes out: the same,
// resolved in place; bounds are recorded as those of the element.
#include <optional>
#include <string_view>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/array_head.h"
#include "template/bounds_array.h"
#include "util/integer_text.h"
#include "util/text_view.h"
#include "util/trace_point.h"
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
  const ttr::CArrayHead<const Json::Value, 4> bounds(stack.boundsFind());
  return {ttr::boundsInt(bounds[0]), ttr::boundsInt(bounds[1]), ttr::boundsInt(bounds[2]),
          ttr::boundsInt(bounds[3])};
}

/// A string whose first "%" stands after its first digit: "50%", "50 %" and "x5%", not "%50".
bool isPercentage(const Json::Value& value) {
  if (!value.isString()) return false;
  bool digitSeen = false;
  for (const char character : ttr::textView(value)) {
    if (character == '%') return digitSeen;
    digitSeen = digitSeen || (character >= '0' && character <= '9');
  }
  return false;
}

int percentageOf(const Json::Value& value) { return ttr::leadingInt32(ttr::textView(value)); }

/// Tells of the edge or size `value`, its tokens replaced. The origin of a size is 0.
void traceMeasurement(const Json::Value& value, int origin, int extent) {
  if (!ttr::isTraced()) return;
  std::optional<int> percentage;
  if (isPercentage(value)) percentage = percentageOf(value);
  ttr::tellMeasure(value, origin, extent, percentage);
}

int shareOf(int extent, int percentage) { return ttr::wrapMultiply(percentage, extent) / 100; }

/// The percentage of the string `value` as people write it: up to eight digits, "%", nothing else.
/// Such a text holds no token.
std::optional<int> plainPercentage(const Json::Value& value) {
  const std::string_view text = ttr::textView(value);
  if (text.size() < 2 || text.size() > 9 || text.back() != '%') return std::nullopt;
  int number = 0;
  for (const char character : text.substr(0, text.size() - 1)) {
    if (character < '0' || character > '9') return std::nullopt;
    number = number * 10 + (character - '0');
  }
  return number;
}

/// Replaces the tokens of the string `value`, and gives the share of `extent` that it then asks
/// for: none when it is no percentage, or when there is no origin (below 0) or no extent (below 1)
/// to take it of.
std::optional<int> processShare(const CTemplateResolver& resolver, Json::Value& value, int origin,
                                int extent) {
  const bool measurable = origin >= 0 && extent > 0;
  if (measurable) {
    if (const std::optional<int> plain = plainPercentage(value)) {
      traceMeasurement(value, origin, extent);
      return shareOf(extent, *plain);
    }
  }
  resolver.processValue(value);
  traceMeasurement(value, origin, extent);
  if (!measurable || !isPercentage(value)) return std::nullopt;
  return shareOf(extent, percentageOf(value));
}

void makeAbsolute(const CTemplateResolver& resolver, Json::Value& edge, int origin, int extent) {
  if (edge.isInt()) {
    // Without an origin the edge also keeps its JSON type: it may be a uint or a real.
    if (origin < 0) return;
    traceMeasurement(edge, origin, extent);
    edge = ttr::absoluteEdge(edge.asInt(), origin);
    return;
  }
  if (!edge.isString()) return;
  // Without an origin no percentage can be taken.
  if (const std::optional<int> share = processShare(resolver, edge, origin, extent)) {
    edge = ttr::wrapAdd(*share, origin);
    return;
  }
  // Unlike an int, text gets the origin whatever its sign: without enclosing bounds it loses one.
  CTokenResolver::CoerceToInt(edge);
  edge = ttr::wrapAdd(edge.asInt(), origin);
}

void makeNumber(const CTemplateResolver& resolver, Json::Value& size, int extent) {
  if (!size.isString()) return;
  if (const std::optional<int> share = processShare(resolver, size, 0, extent)) {
    size = *share;
  } else {
    CTokenResolver::CoerceToInt(size);
  }
}

void resolveEdge(const CTemplateResolver& resolver, Json::Value& edge, int origin, int extent) {
  ttr::traceEntryBegin(edge);
  makeAbsolute(resolver, edge, origin, extent);
  ttr::traceEntryEnd(edge);
}

void resolveSize(const CTemplateResolver& resolver, Json::Value& size, int extent) {
  ttr::traceEntryBegin(size);
  makeNumber(resolver, size, extent);
  ttr::traceEntryEnd(size);
}

/// Makes the first two entries of a point absolute; a point with fewer is extended with nulls.
void processPoint(const CTemplateResolver& resolver, Json::Value& point,
                  const CEnclosingBounds& enclosing) {
  if (!point.isArray()) return;
  ttr::traceEntryBegin(point);
  const ttr::CArrayHead<Json::Value, 2> edges(point);
  resolveEdge(resolver, edges[0], enclosing.x, enclosing.width);
  resolveEdge(resolver, edges[1], enclosing.y, enclosing.height);
  ttr::traceEntryEnd(point);
}

}  // namespace

void CTemplateResolver::processContentsBoundsElement(Json::Value& bounds) {
  ttr::traceMemberBegin("Bounds", bounds);
  resolveBounds(bounds);
  m_stack->BoundsSet(bounds);
  ttr::traceMemberEnd(bounds);
}

void CTemplateResolver::resolveBounds(Json::Value& bounds) {
  const CEnclosingBounds enclosing = enclosingBounds(*m_stack);
  const Json::ArrayIndex size = bounds.size();
  const ttr::CArrayHead<Json::Value, 6> entries(bounds);
  if (size > 0) resolveEdge(*this, entries[0], enclosing.x, enclosing.width);
  if (size > 1) resolveEdge(*this, entries[1], enclosing.y, enclosing.height);
  if (size > 2) resolveSize(*this, entries[2], enclosing.width);
  if (size > 3) resolveSize(*this, entries[3], enclosing.height);
  for (Json::ArrayIndex index = 4; index <= 5 && index < size; ++index) {
    ttr::traceEntryBegin(entries[index]);
    processValue(entries[index]);
    CTokenResolver::CoerceToInt(entries[index]);
    ttr::traceEntryEnd(entries[index]);
  }
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
  resolveEdge(*this, edge, origin, extent);
}

void CTemplateResolver::processBoundsSize(Json::Value& size, int /*origin*/, int extent) const {
  resolveSize(*this, size, extent);
}
