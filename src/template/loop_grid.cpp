// A grid loop: one copy of the loop's contents in each cell of the layout that fits best.
// Goes in: the loop description, its list and range; comes out: {"Contents": [...]}, or null when
// the description does not allow it.
#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/array_head.h"
#include "template/bounds_array.h"
#include "template/loop_variables.h"
#include "template/member.h"
#include "util/comments.h"
#include "util/flag_scope.h"
#include "util/report.h"
#include "util/trace_point.h"
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

/// True when every point of `layout` is a pair of ints: making it absolute is then an addition that
/// asks no handler and reports nothing.
bool isPlain(const Json::Value& layout) {
  return layout.isArray() &&
         std::all_of(layout.begin(), layout.end(), [](const Json::Value& point) {
           if (!point.isArray()) return true;  // no cell of its own
           const ttr::CArrayHead<const Json::Value, 2> edges(point);
           return edges[0].isInt() && edges[1].isInt();
         });
}

/// The cells of the layout that fits `count` copies best, absolute. A plain layout is read where it
/// stands, any other is copied and the copy processed.
class CCells {
 public:
  CCells(CTemplateResolver& resolver, const CTemplateStack& stack, const Json::Value& layouts,
         unsigned count)
      : m_layouts(layouts), m_chosen(chooseLayout(layouts, count)), m_layout(layouts[m_chosen]) {
    ttr::traceMemberBegin("Layout", layouts);
    if (ttr::isTraced()) ttr::tellLayout(static_cast<int>(m_chosen), m_layout);
    ttr::traceEntryBegin(m_layout);
    if (isPlain(m_layout)) {
      m_originX = ttr::boundsEntry(stack.boundsFind(), 0);
      m_originY = ttr::boundsEntry(stack.boundsFind(), 1);
    } else {
      m_processed = m_layout;
      resolver.processLayoutElement(m_processed);
    }
    traceEnd();
  }

  /// The work on a cell is work on its layout.
  void traceBegin() const {
    ttr::traceMemberBegin("Layout", m_layouts);
    ttr::traceEntryBegin(m_layout);
  }
  void traceEnd() const {
    ttr::traceEntryEnd(m_layout);
    ttr::traceMemberEnd(m_layouts);
  }

  Json::ArrayIndex size() const { return m_layout.size(); }
  const Json::Value& operator[](Json::ArrayIndex index) {
    return m_processed.isNull() ? m_layout[index] : m_processed[index];
  }
  int absoluteX(int x) const { return ttr::absoluteEdge(x, m_originX); }
  int absoluteY(int y) const { return ttr::absoluteEdge(y, m_originY); }

 private:
  const Json::Value& m_layouts;
  Json::ArrayIndex m_chosen;
  const Json::Value& m_layout;
  Json::Value m_processed;  ///< null where m_layout is read as it stands
  int m_originX = ttr::absentBound;
  int m_originY = ttr::absentBound;
};

/// The cell that is being filled.
struct CCell {
  int x = 0;
  int y = 0;
  int width;
  int height;
};

/// Moves `cell` to the cell `index`: [x, y] in the common size, or [x, y, width, height]. An entry
/// that is no array changes nothing.
void moveCell(CCell& cell, CCells& cells, Json::ArrayIndex index, int commonWidth,
              int commonHeight) {
  const Json::Value& entry = cells[index];
  if (!entry.isArray()) return;
  ttr::traceEntryBegin(entry);
  const ttr::CArrayHead<const Json::Value, 4> numbers(entry);
  const bool sized = entry.size() == 4;
  cell.x = cells.absoluteX(numbers[0].asInt());
  cell.y = cells.absoluteY(numbers[1].asInt());
  cell.width = sized ? numbers[2].asInt() : commonWidth;
  cell.height = sized ? numbers[3].asInt() : commonHeight;
  ttr::traceEntryEnd(entry);
}

void raise(int* greatest, int edge) {
  if (greatest != nullptr) *greatest = std::max(*greatest, edge);
}

/// Makes `bounds`, whatever it was, those of `cell`. An array of as many entries is changed, which
/// costs less than making one.
void setBounds(Json::Value& bounds, const CCell& cell) {
  if (!bounds.isArray() || bounds.size() != 6 || ttr::hasComments(bounds)) {
    bounds = ttr::makeBoundsArray(cell.x, cell.y, cell.width, cell.height);
    return;
  }
  const ttr::CArrayHead<Json::Value, 6> entries(bounds);
  entries[0] = ttr::boundsNumber(cell.x);
  entries[1] = ttr::boundsNumber(cell.y);
  entries[2] = ttr::boundsNumber(cell.width);
  entries[3] = ttr::boundsNumber(cell.height);
  entries[4] = Json::Value();
  entries[5] = Json::Value();
}

/// Makes `cell` the bounds of the frame on top, and lets the greatest edges grow with it. `spare`
/// is a value to use for it; what the frame had before comes back in it, to be used for the next
/// cell.
void placeCell(CTemplateStack& stack, Json::Value& spare, const CCell& cell, int* right,
               int* bottom) {
  setBounds(spare, cell);
  stack.BoundsSwap(spare);
  raise(right, ttr::wrapAdd(cell.x, cell.width));
  raise(bottom, ttr::wrapAdd(cell.y, cell.height));
}

/// The context of the copies. It is made once or twice, and changes hands as the bounds of the
/// cells do: binding the same members again costs less than making a context.
class CCopyContext {
 public:
  CCopyContext(const CTemplateResolver& resolver, const Json::Value& loop)
      : m_variables(ttr::loopVariables(resolver, loop)),
        m_count(resolver.getVarNameAsString(loop, "Count")),
        m_names{m_variables.var, m_variables.key, m_variables.value, m_count} {
    m_names.erase("");  // binds nothing
  }

  const ttr::CLoopVariables& variables() const { return m_variables; }

  /// Makes the context of the copy for `index`, at `position`, that of the frame on top.
  void bind(CTemplateStack& stack, const ttr::CLoopList& list, int index, int position) {
    if (!isOurs()) m_context = Json::Value(Json::objectValue);
    ttr::bindIndex(m_context, m_variables, list, index);
    if (!m_count.empty()) ttr::bindVariable(m_context, "Count", m_count, position);
    stack.ContextSwap(m_context);
  }

 private:
  /// False for what the frame had before, and for what a handler may have put there.
  bool isOurs() const {
    return m_context.isObject() && m_context.size() == m_names.size() &&
           m_context.getOffsetLimit() == 0 && !ttr::hasComments(m_context) &&
           std::all_of(m_names.begin(), m_names.end(),
                       [this](const std::string& name) { return m_context.isMember(name); });
  }

  ttr::CLoopVariables m_variables;
  std::string m_count;
  std::set<std::string> m_names;
  Json::Value m_context{Json::objectValue};
};

int cellExtent(const CTemplateResolver& resolver, const Json::Value& loop, const char* member) {
  const Json::Value value = resolver.getValueProcessed(loop, member);
  ttr::traceMemberBegin(member, value);
  const int extent = value.asInt();
  ttr::traceMemberEnd(value);
  return extent;
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
  const ttr::CFlagScope own(m_isOwnValue.isRaised, false);  // the loop is the caller's
  return fillGrid(loop, ttr::CLoopList(list), range, container, right, bottom);
}

Json::Value CTemplateResolver::fillGrid(Json::Value& loop, const ttr::CLoopList& list,
                                        const CLoopRange& range, int container, int* right,
                                        int* bottom) {
  // "RowVar" and "ColVar" are members of the format that deliberately bind nothing.
  // Not on the stack, of which loops in each other take the most.
  const auto context = std::make_unique<CCopyContext>(*this, loop);
  const int width = cellExtent(*this, loop, "CellWidth");
  const int height = cellExtent(*this, loop, "CellHeight");
  if (!canExpand(loop, list.list(), context->variables())) return Json::Value();

  CCells cells(*this, *m_stack, std::as_const(loop)["Layout"], static_cast<unsigned>(range.count));
  Json::Value result;
  Json::Value& copies = ttr::memberOf(result, "Contents") = Json::Value(Json::arrayValue);
  Json::Value* const contents = ttr::loopContents(loop);
  CCell cell{0, 0, width, height};
  Json::Value spareBounds(Json::arrayValue);
  const int copyCount = std::min(range.count, static_cast<int>(cells.size()));
  for (int k = 0; k < copyCount; ++k) {
    cells.traceBegin();
    moveCell(cell, cells, static_cast<Json::ArrayIndex>(k), width, height);
    cells.traceEnd();
    placeCell(*m_stack, spareBounds, cell, right, bottom);
    const int index = ttr::wrapAdd(range.start, ttr::wrapMultiply(k, range.step));
    ttr::traceCopyBegin(index, k, *m_stack);
    context->bind(*m_stack, list, index, k);
    appendLoopContents(copies, contents, container, k + 1 == copyCount);
    ttr::traceCopyEnd();
  }
  if (copyCount < range.count) {
    ttr::report(
        "CTemplateResolver::loopElementIterate: too many elements for grid. Remainder discarded.");
  }
  return result;
}
