#ifndef TOOL_INCLUDED_FILES_H
#define TOOL_INCLUDED_FILES_H

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

}  // namespace ttr

#endif  // TOOL_INCLUDED_FILES_H
