#include "check/page_search.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

#include "files.h"
#include "page/source_file.h"
#include "tool_error.h"

namespace ttr {
namespace {

namespace fs = std::filesystem;

/// The one name of a file that has several.
std::string identity(const std::string& path) {
  std::error_code error;
  const fs::path canonical =
      path == "-" ? fs::path() : fs::weakly_canonical(fs::absolute(path), error);
  return error || canonical.empty() ? path : canonical.string();
}

/// A result that `ttr test` compares its neighbour with: resolved already, and no template.
bool isExpectation(const fs::path& path) {
  std::error_code ignored;
  return path.filename() == "expected.json" &&
         fs::exists(path.parent_path() / "template.json", ignored);
}

bool isPage(const fs::directory_entry& entry) {
  if (entry.path().extension() != ".json" || !entry.is_regular_file()) return false;
  if (isExpectation(entry.path())) return false;
  const CSourceFile file(entry.path().string(), readText(entry.path().string()));
  if (!file.errors().empty()) return true;
  const Json::Value& document = file.document();
  return document.isObject() && (document.isMember("Page") || document.isMember("Contents"));
}

std::vector<std::string> pagesInFolder(const std::string& folder) {
  std::vector<std::string> pages;
  try {
    fs::recursive_directory_iterator entry(folder);
    for (; entry != fs::recursive_directory_iterator(); ++entry) {
      const bool hidden = entry->path().filename().string().front() == '.';
      if (hidden) {
        entry.disable_recursion_pending();
      } else if (isPage(*entry)) {
        pages.push_back(entry->path().lexically_normal().string());
      }
    }
  } catch (const fs::filesystem_error& error) {
    throw CToolError(error.path1().string(), error.code().message());
  }
  if (pages.empty()) throw CToolError(folder, "no page in this folder");
  std::sort(pages.begin(), pages.end());
  return pages;
}

}  // namespace

std::vector<CFoundPage> findPages(const std::vector<std::string>& paths) {
  std::vector<CFoundPage> pages;
  std::set<std::string> named;
  for (const std::string& path : paths) {
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) {
      for (const std::string& page : pagesInFolder(path)) pages.push_back({page, false});
    } else {
      pages.push_back({path, true});
      named.insert(identity(path));
    }
  }
  std::vector<CFoundPage> once;
  std::set<std::string> known;
  for (const CFoundPage& page : pages) {
    const std::string file = identity(page.path);
    if (known.insert(file).second) once.push_back({page.path, named.count(file) > 0});
  }
  return once;
}

/// From the last to the first, so that of two pages that include each other the first stays.
std::vector<CFoundPage> withoutIncluded(const std::vector<CPageIncludes>& pages) {
  std::vector<std::set<std::string>> included(pages.size());
  for (std::size_t i = 0; i < pages.size(); ++i) {
    for (const std::string& file : pages[i].files) included[i].insert(identity(file));
  }
  std::vector<bool> stays(pages.size(), true);
  for (std::size_t i = pages.size(); i-- > 0;) {
    const std::string file = identity(pages[i].page.path);
    for (std::size_t other = 0; other < pages.size() && !pages[i].page.named; ++other) {
      if (other != i && stays[other] && included[other].count(file) > 0) stays[i] = false;
    }
  }
  std::vector<CFoundPage> rest;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (stays[i]) rest.push_back(pages[i].page);
  }
  return rest;
}

}  // namespace ttr
