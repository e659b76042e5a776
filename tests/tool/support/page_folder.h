#ifndef TESTS_TOOL_SUPPORT_PAGE_FOLDER_H
#define TESTS_TOOL_SUPPORT_PAGE_FOLDER_H

#include <initializer_list>
#include <string>
#include <utility>

#include "page/page_options.h"

namespace ttr {

/// A folder of files for one test, removed with it.
class CPageFolder {
 public:
  /// `files`: names and texts.
  explicit CPageFolder(std::initializer_list<std::pair<std::string, std::string>> files);
  ~CPageFolder();
  CPageFolder(const CPageFolder&) = delete;
  CPageFolder& operator=(const CPageFolder&) = delete;

  const std::string& path() const { return m_path; }
  void Write(const std::string& name, const std::string& text) const;

  /// The options of a command that works on the page `name`, with includes relative to the folder.
  CPageOptions Options(const std::string& name) const;

 private:
  std::string m_path;
};

}  // namespace ttr

#endif  // TESTS_TOOL_SUPPORT_PAGE_FOLDER_H
