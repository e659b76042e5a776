#ifndef TOOL_DIFF_ENTRY_MATCHING_H
#define TOOL_DIFF_ENTRY_MATCHING_H

#include <json/value.h>

#include <vector>

#include "diff/template_entry.h"
#include "page/json_pointer.h"
#include "text/alignment.h"

namespace ttr {

/// The Contents of an element, where they are in their page, and what the page was made from.
struct CContents {
  const Json::Value& entries;
  CJsonPointer pointer;
  const CTemplateEntries& templates;  ///< empty when nothing is known about them
};

/// Pairs the entries of two Contents arrays: what is equal first, then what was made from the same
/// template entry, elements with the same text, place or members, in the end what stands in the
/// same position.
std::vector<CAlignedPair> matchEntries(const CContents& before, const CContents& after);

}  // namespace ttr

#endif  // TOOL_DIFF_ENTRY_MATCHING_H
