#ifndef TOOL_PREVIEW_BOUNDS_PROBE_H
#define TOOL_PREVIEW_BOUNDS_PROBE_H

#include <json/value.h>

#include <map>

#include "page/element_tree.h"
#include "page/page_run.h"

namespace ttr {

/// What the result of a page does not show about the bounds of one of its elements.
struct CBoundsFacts {
  Json::Value enclosing;  ///< [x, y, width, height] it is measured against; an entry without a
                          ///< whole number is null
  Json::Value bounds;     ///< its own, resolved, also of an If, a Loop or an Include; null without
  Json::Value replaced;   ///< its own as written, but with tokens replaced
};

using CBoundsFactsOf = std::map<const CElementNode*, CBoundsFacts>;

/// The facts about all nodes of `root`, the tree of pass `pass` of `page`. They come from one more
/// run of the page, in which every element with bounds has a twin before it that shows them, and
/// every cell of a grid an element that fills it. Nothing when that run ends in an exception.
CBoundsFactsOf probeBounds(CPageRunner& page, const CElementNode& root, unsigned pass);

}  // namespace ttr

#endif  // TOOL_PREVIEW_BOUNDS_PROBE_H
