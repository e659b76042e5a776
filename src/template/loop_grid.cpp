// A grid loop: one copy of the loop's contents in each cell of the layout that fits best.
// Goes in: the loop description, its list and range; comes out: {"Contents": [...]}, or null when
// the description does not allow it.
// Test: tests/template/loop_grid_test.cpp
#include <algorithm>
#include <utility>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/bounds_array.h"
#include "template/loop_variables.h"
#include "template/member.h"
#include "util/report.h"
#include "util/wrapping.h"

namespace {

/// The index of the layout whose number of cells fits `count` copies best: the first exact fit,
/// else the smallest larger one with fewer than twice the cells, else the largest smaller one.
/// Deliberate: a larger layout shuts out the smaller ones that follow it, even one too large to be
/// chosen itself.
Json::ArrayIndex chooseLayout(const Json::Value& layouts, unsigned count) {
  Json::ArrayIndex chosen = 0;
  unsigned bestExcess = count;
  unsigned largestSmaller = 0;
  bool largerSeen = false;
  for (Json::ArrayIndex i = 0; i < layouts.size(); ++i) {
    const unsigned cells = layouts[i].size();
    if (cells == count) return i;
    if (cells > count) {
      largerSeen = true;
      if (cells - count < bestExcess) {
        bestExcess = cells - count;
        chosen = i;
      }
    } else if (!largerSeen && cells > largestSmaller) {
      largestSmaller = cells;
      chosen = i;
    }
  }
  return chosen;
}

/// The cell that is being filled.
struct CCell {
  int x = 0;
  int y = 0;
  int width;
  int height;
};

/// Moves `cell` to the cell `entry` of a layout: [x, y] in the common size, or [x, y, width,
/// height]. An entry that is no array changes nothing.
void moveCell(CCell& cell, const Json::Value& entry, int commonWidth, int commonHeight) {
  if (!entry.isArray()) return;
  const bool sized = entry.size() == 4;
  cell.x = entry[0U].asInt();
  cell.y = entry[1U].asInt();
  cell.width = sized ? entry[2U].asInt() : commonWidth;
  cell.height = sized ? entry[3U].asInt() : commonHeight;
}

void raise(int* greatest, int edge) {
  if (greatest != nullptr) *greatest = std::max(*greatest, edge);
}

/// Makes `cell` the bounds of the frame on top, and lets the greatest edges grow with it.
void placeCell(CTemplateStack& stack, const CCell& cell, int* right, int* bottom) {
  stack.BoundsSet(ttr::makeBoundsArray(cell.x, cell.y, cell.width, cell.height));
  raise(right, ttr::wrapAdd(cell.x, cell.width));
  raise(bottom, ttr::wrapAdd(cell.y, cell.height));
}

/// True when the description can be expanded; else one message. The missing full stop in two of
/// them is deliberate.
bool canExpand(const Json::Value& loop, const Json::Value& list,
               const ttr::CLoopVariables& variables) {
  if (!variables.value.empty() && (!list.isArray() || list.empty())) {
    ttr::report(
        "CTemplateResolver::loopElementIterate: 'Value' variable requires 'List' value as array.");
    return false;
  }
  const Json::Value* layouts = ttr::findMember(loop, "Layout");
  if (layouts == nullptr) {
    ttr::report("CTemplateResolver::loopElementIterate: Layout array must be present");
    return false;
  }
  if (!layouts->isArray()) {
    ttr::report("CTemplateResolver::loopElementIterate: Layout must be an array");
    return false;
  }
  return true;
}

}  // namespace

Json::Value CTemplateResolver::loopElementIterate(Json::Value& loop, const Json::Value& list,
                                                  const CLoopRange& range, int container,
                                                  int* right, int* bottom) {
  const Json::Value& description = loop;
  // "RowVar" and "ColVar" are members of the format that deliberately bind nothing.
  const ttr::CLoopVariables variables = ttr::loopVariables(*this, description);
  const std::string countName = getVarNameAsString(description, "Count");
  const int width = getValueProcessed(description, "CellWidth").asInt();
  const int height = getValueProcessed(description, "CellHeight").asInt();
  if (!canExpand(description, list, variables)) return Json::Value();

  const Json::Value& layouts = description["Layout"];
  Json::Value layout = layouts[chooseLayout(layouts, static_cast<unsigned>(range.count))];
  processLayoutElement(layout);

  Json::Value result;
  result["Contents"] = Json::Value(Json::arrayValue);
  CCell cell{0, 0, width, height};
  for (int k = 0; k < range.count; ++k) {
    const auto cellIndex = static_cast<Json::ArrayIndex>(k);
    if (cellIndex >= layout.size()) {
      ttr::report(
          "CTemplateResolver::loopElementIterate: too many elements for grid. Remainder "
          "discarded.");
      break;
    }
    moveCell(cell, layout[cellIndex], width, height);
    placeCell(*m_stack, cell, right, bottom);
    const int index = ttr::wrapAdd(range.start, ttr::wrapMultiply(k, range.step));
    Json::Value context(Json::objectValue);
    ttr::bindIndex(context, variables, list, index);
    if (!countName.empty()) context[countName] = k;
    m_stack->ContextSet(std::move(context));
    appendLoopContents(result, description, container);
  }
  return result;
}
