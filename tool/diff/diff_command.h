#ifndef TOOL_DIFF_DIFF_COMMAND_H
#define TOOL_DIFF_DIFF_COMMAND_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr diff` to `app`; its exit code goes to `*exitCode` when the command has run.
void addDiffCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_DIFF_DIFF_COMMAND_H
