#ifndef TOOL_SCHEMA_SCHEMA_COMMAND_H
#define TOOL_SCHEMA_SCHEMA_COMMAND_H

namespace CLI {
class App;
}

namespace ttr {

/// Adds `ttr schema` to `app`; its exit code goes to `*exitCode` when the command has run.
void addSchemaCommand(CLI::App& app, int* exitCode);

}  // namespace ttr

#endif  // TOOL_SCHEMA_SCHEMA_COMMAND_H
