#ifndef TOOL_PAGE_ELEMENT_TREE_H
#define TOOL_PAGE_ELEMENT_TREE_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "page/json_pointer.h"
#include "page/page_run.h"

namespace ttr {

/// A value of a template: the file it stands in, and where.
struct CTemplateValue {
  std::string file;
  CJsonPointer pointer;
  const Json::Value* value = nullptr;  ///< borrowed from the runner's source file
};

/// One entry of a resolved page with the template value that it was made from. The tree mirrors the
/// nesting of the result: each copy of a loop's contents has nodes of its own.
struct CElementNode {
  enum eKind {
    kindDocument,  ///< the page, or an included file inside its Include
    kindElement,   ///< an object that is resolved in place
    kindInclude,   ///< replaced by the document that is its only child
    kindIf,        ///< replaced by its contents or null
    kindLoop,      ///< replaced by copies of its contents
    kindText,      ///< a string, whatever its token made of it
    kindOther,     ///< anything else, left as it is
  };

  eKind kind = kindOther;
  CTemplateValue origin;
  CJsonPointer pointer;                 ///< in the resolved page
  const Json::Value* result = nullptr;  ///< borrowed from the run; null when it is missing there
  std::optional<std::size_t> copy;      ///< for a direct child of a loop, which copy, from 0
  std::vector<CElementNode> children;   ///< entries of "Contents", in order

  /// True when the element was to be shown but is null in the result.
  bool IsNull() const { return result == nullptr || result->isNull(); }
};

/// The name of a kind in reports: "element", "Include", ...
const char* kindName(CElementNode::eKind kind);

/// The tree of `run`, a run of `page` without changes. It borrows from both.
CElementNode elementTree(CPageRunner& page, const CPageRun& run);

/// The nodes from the root to the one at `pointer` in the resolved page; empty when there is none.
std::vector<const CElementNode*> wayTo(const CElementNode& root, const CJsonPointer& pointer);

}  // namespace ttr

#endif  // TOOL_PAGE_ELEMENT_TREE_H
