#ifndef TOOL_DIFF_PAGE_DIFFERENCE_H
#define TOOL_DIFF_PAGE_DIFFERENCE_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "diff/template_entry.h"
#include "page/json_pointer.h"

namespace ttr {

/// One thing that differs between two resolved pages.
struct CDifference {
  enum eKind {
    kindMoved,         ///< from and to are [x, y]
    kindResized,       ///< from and to are [width, height]
    kindColour,        ///< from and to are "#RRGGBBAA"; absent for a colour of one page only
    kindText,          ///< an entry of Contents that is no element
    kindMember,        ///< any other member of an element; from or to is absent when it is
    kindAdded,         ///< an entry of Contents
    kindRemoved,       ///< likewise
    kindBecameNull,    ///< likewise
    kindNoLongerNull,  ///< likewise
    kindRenumbered,    ///< the library counted the containers differently
  };

  eKind kind = kindMember;
  std::optional<CJsonPointer> before;  ///< the entry in the first page; absent when it was added
  std::optional<CJsonPointer> after;   ///< the entry in the second page; absent when it was removed
  std::string label;                   ///< the first text inside the entry; often empty
  std::string member;                  ///< "Display/0", for a colour or another member
  std::optional<Json::Value> from;
  std::optional<Json::Value> to;
  std::size_t along = 0;  ///< of an element that moved: elements inside that moved the same way
};

/// How far an element moved along an axis, 0 for x and 1 for y; wide enough for any two bounds.
std::int64_t movedBy(const CDifference& move, Json::ArrayIndex axis);

/// A resolved page and, as far as known, what its entries were made from.
struct CResolvedPage {
  const Json::Value& document;
  const CTemplateEntries& templates;
};

/// What differs between two resolved pages, in the order of the second one. Entries of Contents are
/// matched by likeness, not by position.
std::vector<CDifference> pageDifferences(const CResolvedPage& before, const CResolvedPage& after);

/// The first text below an entry of Contents, or number, which is shown as one; empty when there is
/// none.
std::string labelOf(const Json::Value& entry);

}  // namespace ttr

#endif  // TOOL_DIFF_PAGE_DIFFERENCE_H
