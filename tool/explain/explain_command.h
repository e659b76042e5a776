#ifndef TOOL_EXPLAIN_EXPLAIN_COMMAND_H
#define TOOL_EXPLAIN_EXPLAIN_COMMAND_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr explain` to `app`; its exit code goes to `*exitCode` when the command has run.
void addExplainCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_EXPLAIN_COMMAND_H
