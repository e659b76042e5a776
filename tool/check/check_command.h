#ifndef TOOL_CHECK_CHECK_COMMAND_H
#define TOOL_CHECK_CHECK_COMMAND_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr check` to `app`; its exit code goes to `*exitCode` when the command has run.
void addCheckCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_CHECK_CHECK_COMMAND_H
