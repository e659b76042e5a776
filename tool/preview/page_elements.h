#ifndef TOOL_PREVIEW_PAGE_ELEMENTS_H
#define TOOL_PREVIEW_PAGE_ELEMENTS_H

#include <vector>

#include "page/element_tree.h"
#include "page/page_run.h"
#include "preview/assets.h"
#include "preview/bounds_probe.h"
#include "preview/picture.h"
#include "preview/preview.h"

namespace ttr {

/// A resolved page as the viewer lists it, and as a picture shows it.
struct CPageElements {
  std::vector<CPreviewElement> elements;  ///< parents first; ids are indices
  CScene scene;                           ///< without a name; borrows images from the assets
};

/// The elements of `root`, the tree of a run of `page`.
CPageElements pageElements(CPageRunner& page, const CElementNode& root, const CBoundsFactsOf& facts,
                           CAssets& assets);

}  // namespace ttr

#endif  // TOOL_PREVIEW_PAGE_ELEMENTS_H
