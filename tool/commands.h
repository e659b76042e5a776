#ifndef TOOL_COMMANDS_H
#define TOOL_COMMANDS_H

#include <string>

#include "command.h"

namespace ttr {

// Each is described and run in its own folder; `ttr COMMAND --help` says what it does.

CCommand resolveCommand();
/// `version` is the tool's, for the reports that name it.
CCommand checkCommand(const std::string& version);
CCommand diffCommand();
CCommand testCommand();
CCommand schemaCommand();
CCommand explainCommand();
CCommand previewCommand();

}  // namespace ttr

#endif  // TOOL_COMMANDS_H
