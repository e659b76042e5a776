#ifndef TOOL_FILES_H
#define TOOL_FILES_H

#include <string>

namespace ttr {

/// The whole text of the file `path`, or of standard input for "-".
/// \throws CToolError when it cannot be read
std::string readText(const std::string& path);

/// Writes `text` to standard output.
/// \throws CToolError when it cannot be written, a full disk behind a redirection included
void writeStandardOutput(const std::string& text);

/// Makes `path` hold `text`: written beside, then renamed, so that the file is the old or the new
/// one and never half. A symbolic link stays and its target is replaced; a device or pipe is
/// written to as it is.
/// \throws CToolError when it cannot be written; the old file is then untouched
void writeFile(const std::string& path, const std::string& text);

}  // namespace ttr

#endif  // TOOL_FILES_H
