#ifndef TOOL_EXPLAIN_TARGET_H
#define TOOL_EXPLAIN_TARGET_H

#include "page/page_run.h"
#include "page/pass_record.h"

namespace ttr {

/// What a JSON pointer on the command line leads to.
struct CExplainTarget {
  CNodeWay way;         ///< its last node is explained; all others are shown
  bool hidden = false;  ///< the pointer leads to what the last node would have shown
};

/// The target of `pointer`: a place in the resolved page or, when it is not there, in the template
/// file of the page. A place inside an element means the element, and one that a null element
/// would have shown means that element. Of the copies of a loop it is the first.
/// \throws CToolError when it is in neither; the reason tells what there is
CExplainTarget findTarget(const CPageRunner& page, const CElementNode& root,
                          const CJsonPointer& pointer);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_TARGET_H
