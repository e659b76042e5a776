#ifndef TOOL_TEST_CASE_FOLDER_H
#define TOOL_TEST_CASE_FOLDER_H

#include <string>
#include <vector>

namespace ttr {

/// What the page of a case folder gives, as the expectations hold it.
struct CCaseOutput {
  std::string json;    ///< indented; empty when the pass ended in an exception
  std::string errors;  ///< the library's messages, and at the end the exception
};

struct CCaseResult {
  std::string folder;
  std::string failure;  ///< one line; empty when the case passed or was updated
  std::string diff;     ///< from what is expected to what is now, of all files that differ
  std::vector<std::string> updated;  ///< the files that were written or removed
  double seconds = 0;
};

/// The folders below `directory`, or it itself, that hold a template.json, in alphabetical order.
/// \throws CToolError when it is no directory, or cannot be read
std::vector<std::string> findCases(const std::string& directory);

/// Resolves template.json in `folder`, with its values.json and options.
/// \throws CToolError when one of the files cannot be read or understood
CCaseOutput caseOutput(const std::string& folder);

/// Compares what the case gives with what its expected.json and expected.err hold.
CCaseResult checkCase(const std::string& folder);

/// As `checkCase`, but makes the expectations hold what the case gives now.
/// \throws CToolError when they cannot be written
CCaseResult updateCase(const std::string& folder);

}  // namespace ttr

#endif  // TOOL_TEST_CASE_FOLDER_H
