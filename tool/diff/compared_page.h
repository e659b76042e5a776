#ifndef TOOL_DIFF_COMPARED_PAGE_H
#define TOOL_DIFF_COMPARED_PAGE_H

#include <json/value.h>

#include <functional>
#include <string>

#include "diff/template_entry.h"
#include "page/json_pointer.h"
#include "page/page_options.h"
#include "page/source_file.h"

namespace ttr {

/// A resolved page, and where its entries were written.
struct CComparedPage {
  std::string name;
  Json::Value document;
  /// Where the entry of the resolved page comes from: a template or the file with the result.
  std::function<CPlace(const CJsonPointer&)> placeOf;
  CTemplateEntries templates;  ///< none for a page that was resolved before
};

/// Resolves the page that the options name.
/// \throws CToolError when that ends in an exception or in null
CComparedPage resolvedPage(const CPageOptions& options);

/// Reads a page that has been resolved before.
/// \throws CToolError when the file cannot be read or is no JSON object
CComparedPage readResolvedPage(const std::string& file);

}  // namespace ttr

#endif  // TOOL_DIFF_COMPARED_PAGE_H
