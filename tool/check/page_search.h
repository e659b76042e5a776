#ifndef TOOL_CHECK_PAGE_SEARCH_H
#define TOOL_CHECK_PAGE_SEARCH_H

#include <string>
#include <vector>

namespace ttr {

/// A page to check.
struct CFoundPage {
  std::string path;    ///< "-" for standard input
  bool named = false;  ///< by the user; others lay in a folder
};

/// The pages that `paths` name, each once: files as they are, and the pages in folders and in the
/// folders inside of them, sorted. A file of a folder is a page when its name ends in ".json" and
/// it holds an object with "Page" or "Contents", or no JSON at all. What is hidden is left out, and
/// the expected results of `ttr test`.
/// \throws CToolError when a path cannot be read, or a folder has no page
std::vector<CFoundPage> findPages(const std::vector<std::string>& paths);

/// A page with the files that it includes.
struct CPageIncludes {
  CFoundPage page;
  std::vector<std::string> files;
};

/// `pages` without those that were not named and are included by one that stays.
std::vector<CFoundPage> withoutIncluded(const std::vector<CPageIncludes>& pages);

}  // namespace ttr

#endif  // TOOL_CHECK_PAGE_SEARCH_H
