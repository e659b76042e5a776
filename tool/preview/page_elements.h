#ifndef TOOL_PREVIEW_PAGE_ELEMENTS_H
#define TOOL_PREVIEW_PAGE_ELEMENTS_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "page/page_run.h"
#include "page/pass_record.h"
#include "preview/assets.h"
#include "preview/picture.h"
#include "preview/preview.h"

namespace ttr {

/// A resolved page as the viewer lists it, and as a picture shows it.
struct CPageElements {
  std::vector<CPreviewElement> elements;  ///< parents first
  CScene scene;                           ///< without a name; borrows images from the assets
};

/// Numbers the elements of all pictures of a page: what is of the same kind at the same place of
/// the result has the same number, and so can be the same element.
class CElementIds {
 public:
  std::size_t Of(const CElementNode& node) {
    const std::string place = kindName(node.kind) + node.pointer.Text();
    return m_ids.try_emplace(place, m_ids.size()).first->second;
  }

 private:
  std::map<std::string, std::size_t> m_ids;
};

/// The elements of a pass of `page` that came to its end.
/// `valuesFile` is the name of the file with the values.
CPageElements pageElements(CPageRunner& page, const CPassRecord& record,
                           const std::string& valuesFile, CElementIds& ids, CAssets& assets);

}  // namespace ttr

#endif  // TOOL_PREVIEW_PAGE_ELEMENTS_H
