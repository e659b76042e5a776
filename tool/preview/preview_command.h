#ifndef TOOL_PREVIEW_PREVIEW_COMMAND_H
#define TOOL_PREVIEW_PREVIEW_COMMAND_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr preview` to `app`; its exit code goes to `*exitCode` when the command has run.
void addPreviewCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_PREVIEW_PREVIEW_COMMAND_H
