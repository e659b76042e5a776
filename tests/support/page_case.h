#ifndef TESTS_SUPPORT_PAGE_CASE_H
#define TESTS_SUPPORT_PAGE_CASE_H

#include <filesystem>
#include <string>

/// A page, the surroundings in which it is resolved, and what comes out.
struct CPageCase {
  std::string page;
  std::string values = "{}";
  std::filesystem::path directory = ".";  ///< where relative includes start
  std::string options;                    ///< such as "size=800x480 pass=2"
};

struct CPageResult {
  std::string json;    ///< the resolved page, compact
  std::string errors;  ///< what the last pass wrote to standard error
};

/// Resolves the page as `ttr resolve` does. An exception that leaves the library is the last line
/// of the errors: "exception: " and its text.
CPageResult ResolvePage(const CPageCase& page);

/// The text of a file; throws when it cannot be read.
std::string FileText(const std::filesystem::path& path);

/// `json` with one entry a line, as expected results are kept.
std::string PrettyJson(const std::string& json);

#endif  // TESTS_SUPPORT_PAGE_CASE_H
