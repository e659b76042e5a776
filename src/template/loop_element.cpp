// "Loop": the element is replaced by copies of the loop's contents, all of them in a grid or one
// of them, rotating from pass to pass; inside a container the copies are wrapped as a container.
// Goes in: the Loop member; comes out: {"Contents": [...]}, perhaps with Bounds, Frame, RenderType.
#include <utility>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/bounds_array.h"
#include "template/loop_variables.h"
#include "template/member.h"
#include "template/render_type.h"
#include "util/flag_scope.h"
#include "util/trace_point.h"
#include "util/wrapping.h"

namespace {

/// Makes the expansion `result` a container with `id` inside the container `enclosing`.
void wrapAsContainer(Json::Value& result, Json::Value bounds, int id, int enclosing) {
  ttr::memberOf(result, "Bounds") = std::move(bounds);
  Json::Value& frame = ttr::memberOf(result, "Frame");
  ttr::memberOf(frame, "Id") = id;
  ttr::memberOf(frame, "Container") = enclosing;
  ttr::memberOf(frame, "Align") = "None";
  ttr::memberOf(frame, "Flow") = "None";
  ttr::memberOf(frame, "Padding") = 0;
  ttr::memberOf(result, "RenderType") = ttr::containerRenderType;
}

/// Bounds of a container: the last two entries are 0, and negative numbers stay.
Json::Value containerBounds(int x, int y, int width, int height) {
  Json::Value bounds(Json::arrayValue);
  for (const int number : {x, y, width, height, 0, 0}) bounds.append(number);
  return bounds;
}

int intAt(const Json::Value& bounds, Json::ArrayIndex index) {
  const Json::Value& entry = bounds[index];
  ttr::traceEntryBegin(entry);
  const int number = entry.asInt();
  ttr::traceEntryEnd(entry);
  return number;
}

/// The position in its range that a rotating loop shows in pass `pass`; an invalid range shows 0.
int rotatingPosition(const CTemplateResolver::CLoopRange& range, unsigned int pass) {
  return range.count < 1 ? 0 : static_cast<int>(pass % static_cast<unsigned int>(range.count));
}

/// The index at `position`. A descending range shows the indices of the ascending one backwards,
/// start + count - 1 down to start: deliberately unlike the grid.
int rotatingIndex(const CTemplateResolver::CLoopRange& range, int position) {
  if (range.count < 1) return 0;  // an invalid range shows index 0
  const int forward = range.step == -1 ? range.count - 1 - position : position;
  return ttr::wrapAdd(range.start, forward);
}

}  // namespace

Json::Value CTemplateResolver::processContentsLoopElement(Json::Value& loop, int container) {
  const ttr::CFlagScope own(m_isOwnValue.isRaised, false);  // the loop is the caller's
  return expandLoop(loop, container);
}

Json::Value CTemplateResolver::expandLoop(Json::Value& loop, int container) {
  ttr::traceMemberBegin("Loop", loop);
  // As in the walk, deliberately no scope guard around the frame.
  m_stack->PushFresh();
  Json::Value list = getValueProcessed(loop, "List");
  CTokenResolver::ConvertToArray(list);
  const CLoopRange range = loopElementGetRange(loop, list);
  if (ttr::isTraced()) ttr::tellRange(range.start, range.count, range.step);
  Json::Value result = loop.isMember("Bounds") ? expandRotatingLoop(loop, list, range, container)
                                               : expandGridLoop(loop, list, range, container);
  m_stack->Pop();
  ttr::traceMemberEnd(result);
  return result;
}

Json::Value CTemplateResolver::expandGridLoop(Json::Value& loop, Json::Value& list,
                                              const CLoopRange& range, int container) {
  const int id = container > 0 ? nextContainerID() : 0;
  const Json::Value& enclosing = m_stack->boundsFind();
  const int x = ttr::boundsEntry(enclosing, 0);
  const int y = ttr::boundsEntry(enclosing, 1);
  int right = 0;
  int bottom = 0;
  Json::Value result;
  if (range.valid) result = fillGrid(loop, ttr::CLoopList(&list), range, id, &right, &bottom);
  if (container > 0) {
    // Deliberately also without copies: an invalid range gives an empty container.
    wrapAsContainer(
        result, containerBounds(x, y, ttr::wrapSubtract(right, x), ttr::wrapSubtract(bottom, y)),
        id, container);
  }
  return result;
}

Json::Value CTemplateResolver::expandRotatingLoop(Json::Value& loop, Json::Value& list,
                                                  const CLoopRange& range, int container) {
  const ttr::CLoopVariables variables = ttr::loopVariables(*this, loop);
  Json::Value bounds = loop["Bounds"];
  ttr::traceMemberBegin("Bounds", bounds);
  processLayoutElement(bounds);
  ttr::traceMemberEnd(bounds);
  const int id = container > 0 ? nextContainerID() : 0;
  Json::Value result;
  Json::Value& copies = ttr::memberOf(result, "Contents") = Json::Value(Json::arrayValue);

  const int position = rotatingPosition(range, m_processCount);
  const int index = rotatingIndex(range, position);
  ttr::traceCopyBegin(index, position, *m_stack);
  Json::Value context(Json::objectValue);
  ttr::bindIndex(context, variables, ttr::CLoopList(&list), index);
  m_stack->ContextSwap(context);
  // Unlike a grid's copies, these are members of the enclosing container.
  appendLoopContents(copies, ttr::loopContents(loop), container, true);
  ttr::traceCopyEnd();

  if (container > 0) {
    ttr::traceMemberBegin("Bounds", bounds);
    const Json::Value& enclosing = m_stack->boundsFind();
    const int x = ttr::wrapAdd(intAt(bounds, 0), ttr::boundsEntry(enclosing, 0));
    const int y = ttr::wrapAdd(intAt(bounds, 1), ttr::boundsEntry(enclosing, 1));
    const int width = intAt(bounds, 2);
    const int height = intAt(bounds, 3);
    wrapAsContainer(result, containerBounds(x, y, width, height), id, container);
    ttr::traceMemberEnd(bounds);
  }
  return result;
}

void CTemplateResolver::appendLoopContents(Json::Value& copies, Json::Value* contents,
                                           int container, bool isLast) {
  if (contents == nullptr) return;
  // Loops in each other would cost the square of their number if each copied what is in it. Nobody
  // sees what the last copy takes from a loop that is a copy itself: it is about to be replaced,
  // and an exception ends it.
  const bool isGivenAway = isLast && m_isOwnValue.isRaised;
  const ttr::CFlagScope own(m_isOwnValue.isRaised, true);
  for (Json::Value& element : *contents) {
    // Not lowercased, as entries of other contents are: deliberate.
    processContentsValue(isGivenAway ? copies.append(std::move(element)) : copies.append(element),
                         container);
  }
}
