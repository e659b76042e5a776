#ifndef TOOL_PAGE_PAGE_OPTIONS_H
#define TOOL_PAGE_PAGE_OPTIONS_H

#include <json/value.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "command.h"
#include "page/page_host.h"

namespace ttr {

/// The options that say which page a command works on, and in which surroundings.
struct CPageOptions {
  std::string page;    ///< file, "-" for standard input
  std::string values;  ///< file, "-" for standard input; empty for what lies beside the page
  std::string size = "1280x720";
  std::string directory;  ///< where relative includes start; empty for the working directory
  std::optional<std::string> root;  ///< where included files must lie; anywhere without it
  unsigned pass = 1;
};

/// PAGE, and how it is run.
std::vector<COption> pageOptions(CPageOptions& options);

/// The same without PAGE and --pass, for a command that takes several pages.
std::vector<COption> sharedPageOptions(CPageOptions& options);

/// The text of the page.
/// \throws CToolError when it cannot be read
std::string readPage(const CPageOptions& options);

/// The file with the values of the page's tokens: the one that the options name, else the page's
/// neighbour `NAME.values.json`, else `values.json` beside it. Empty when there is none.
std::string valuesFile(const CPageOptions& options);

/// The JSON object in the file `path`; an empty object when `path` is empty.
/// \throws CToolError when it cannot be read or is no object
Json::Value readValues(const std::string& path);

/// "1280x720" as width and height, both at least 1.
/// \throws CToolError when it is anything else
CScreenSize parseScreenSize(const std::string& text);

/// Changes the working directory for its lifetime, unless `directory` is empty.
class CWorkingDirectory {
 public:
  /// \throws CToolError when the directory cannot be changed
  explicit CWorkingDirectory(const std::string& directory);
  ~CWorkingDirectory();
  CWorkingDirectory(const CWorkingDirectory&) = delete;
  CWorkingDirectory& operator=(const CWorkingDirectory&) = delete;

 private:
  std::filesystem::path m_previous;  ///< empty when nothing was changed
};

}  // namespace ttr

#endif  // TOOL_PAGE_PAGE_OPTIONS_H
