// The index range of a loop: "Start", "Stop", "Offset" and "Size" against the length of the list.
// Goes in: the loop description and its list; comes out: a CLoopRange, invalid after any fault.
#include <algorithm>
#include <optional>

#include "TokenTemplateResolver/template_resolver.h"
#include "util/report.h"
#include "util/trace_point.h"
#include "util/wrapping.h"

namespace {

using CLoopRange = CTemplateResolver::CLoopRange;

/// The range members that are present, as ints.
struct CRangeMembers {
  std::optional<int> start;
  std::optional<int> stop;
  std::optional<int> offset;
  std::optional<int> size;
};

/// The start moved by `offset` and kept within the list, if there is one. A start of exactly
/// `length` is deliberately left: a later rule rejects it.
int offsetStart(int start, int offset, unsigned length) {
  const int moved = ttr::wrapAdd(start, offset);
  if (moved < 0) return 0;
  const bool beyond = length != 0 && static_cast<unsigned>(moved) > length;
  return beyond ? static_cast<int>(length - 1) : moved;
}

/// The number of steps that "Stop" asks for, both ends included; negative when it descends.
int countToStop(int start, int stop) {
  const int distance = ttr::wrapSubtract(stop, start);
  return start <= stop ? ttr::wrapAdd(distance, 1) : ttr::wrapSubtract(distance, 1);
}

/// The range of `count` steps, descending when it is negative.
CLoopRange signedRange(int start, int count) {
  if (count == 0) return CLoopRange();
  return {true, start, count > 0 ? count : ttr::wrapNegate(count), count > 0 ? 1 : -1};
}

bool isOutside(int index, unsigned length) {
  return index < 0 || static_cast<unsigned>(index) >= length;
}

/// `range` when it lies within a list of `length` entries; `count` is its signed count.
CLoopRange checkedRange(const CLoopRange& range, int count, unsigned length) {
  if (isOutside(range.start, length)) {
    ttr::report("CTemplateResolver::processContentsLoop: 'Start' value: ", range.start,
                " must be within range of 'List': 0..", length - 1, ".");
    return CLoopRange();
  }
  const int last = ttr::wrapSubtract(ttr::wrapAdd(range.start, count), range.step);
  if (isOutside(last, length)) {
    ttr::report("CTemplateResolver::processContentsLoop: 'Size' value: ", count,
                " must result in an index within range of 'List': 0..", length - 1, ".");
    return CLoopRange();
  }
  return range;
}

/// The range from `start` on by "Size", else by "Stop", else to the end of the list.
CLoopRange countedRange(const CRangeMembers& members, int start, unsigned length) {
  const int rest = ttr::wrapSubtract(static_cast<int>(length), start);
  int count = rest;
  if (members.size) {
    const int lowest = ttr::wrapNegate(ttr::wrapAdd(start, 1));  // descending down to index 0
    if (*members.size < lowest) {
      count = lowest;
    } else if (length == 0) {
      return signedRange(start, *members.size);
    } else {
      count = std::min(rest, *members.size);
    }
  } else if (members.stop) {
    count = countToStop(start, *members.stop);
  } else if (length == 0) {
    ttr::report("CTemplateResolver::loopElementGetRange: Unable to determine stop value.");
    return CLoopRange();
  }
  const CLoopRange range = signedRange(start, count);
  return range.valid && length != 0 ? checkedRange(range, count, length) : range;
}

}  // namespace

CTemplateResolver::CLoopRange CTemplateResolver::loopElementGetRange(
    const Json::Value& element, const Json::Value& list) const {
  const auto member = [this, &element](const char* name) -> std::optional<int> {
    Json::Value value = getValueProcessed(element, name);
    ttr::traceMemberBegin(name, value);
    CTokenResolver::ConvertToInt(value);
    ttr::traceMemberEnd(value);
    if (!value.isInt()) return std::nullopt;
    return value.asInt();
  };
  CRangeMembers members;  // all four are read, in this order, whichever are used
  members.start = member("Start");
  members.stop = member("Stop");
  members.offset = member("Offset");
  members.size = member("Size");

  const unsigned length = list.isArray() ? list.size() : 0;
  if (list.isArray() && length == 0) return CLoopRange();
  if (!members.start && length == 0) {
    ttr::report("CTemplateResolver::loopElementGetRange: Unable to determine start value.");
    return CLoopRange();
  }
  const int start = members.start.value_or(0);
  return countedRange(members, members.offset ? offsetStart(start, *members.offset, length) : start,
                      length);
}
