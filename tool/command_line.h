#ifndef TOOL_COMMAND_LINE_H
#define TOOL_COMMAND_LINE_H

#include <string>
#include <vector>

#include "command.h"

namespace ttr {

/// Runs the command that the arguments of main() ask for, or prints the help or the version, and
/// gives the exit code.
/// \throws CToolError and others when the arguments are wrong, or as the command does
int runCommandLine(const std::vector<CCommand>& commands, const std::string& version, int argc,
                   const char* const* argv);

}  // namespace ttr

#endif  // TOOL_COMMAND_LINE_H
