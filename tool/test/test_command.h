#ifndef TOOL_TEST_TEST_COMMAND_H
#define TOOL_TEST_TEST_COMMAND_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr test` to `app`; its exit code goes to `*exitCode` when the command has run.
void addTestCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_TEST_TEST_COMMAND_H
