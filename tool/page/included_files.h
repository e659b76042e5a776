#ifndef TOOL_PAGE_INCLUDED_FILES_H
#define TOOL_PAGE_INCLUDED_FILES_H

#include <functional>
#include <string>

namespace ttr {

/// From now on no include may read a file outside of the directory `root`, whatever symbolic links
/// lie on the way.
///
/// With or without a root, the tool reads only regular files for includes: a pipe would keep it
/// waiting, and a device can do anything. It writes a line for each file that it does not read, and
/// the library then goes on as for an empty file.
/// \throws CToolError when there is no such directory
void confineIncludes(const std::string& root);

/// The text of the file `name`, as includes read it.
/// \throws CToolError when it cannot be read, or must not
std::string readRegularFile(const std::string& name);

/// Answers the includes of the library while it lives: `reader` is asked for the text of each file
/// in place of the file system, and says itself what is wrong with one.
class CIncludeReader {
 public:
  using CReader = std::function<std::string(const std::string& name)>;

  explicit CIncludeReader(CReader reader);
  ~CIncludeReader();
  CIncludeReader(const CIncludeReader&) = delete;
  CIncludeReader& operator=(const CIncludeReader&) = delete;

 private:
  CReader m_previous;
};

}  // namespace ttr

#endif  // TOOL_PAGE_INCLUDED_FILES_H
