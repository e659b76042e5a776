#ifndef TOOL_RESOLVE_H
#define TOOL_RESOLVE_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr resolve` to `app`; its exit code goes to `*exitCode` when the command has run.
void addResolveCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_RESOLVE_H
