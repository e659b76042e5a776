// ttr, the workbench for people who write templates: one subcommand for each job.
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>

#include "check/check_command.h"
#include "diff/diff_command.h"
#include "explain/explain_command.h"
#include "preview/preview_command.h"
#include "resolve.h"
#include "schema/schema_command.h"
#include "test/test_command.h"
#include "tool_error.h"

namespace {

constexpr int cannotBeDone = 2;

int fail(const std::string& reason) {
  std::cerr << "ttr: " << ttr::oneLine(reason) << std::endl;
  return cannotBeDone;
}

/// Lets no file that the tool opens later become a standard stream that is closed now. Standard
/// input and output then still fail when they are used; what goes to standard error is lost.
void occupyStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) >= 0) continue;
    ::open("/dev/null", descriptor == STDOUT_FILENO ? O_RDONLY : O_WRONLY);
  }
}

}  // namespace

int main(int argc, char** argv) {
  occupyStandardDescriptors();
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is an error like any other
  try {
    int exitCode = 0;
    CLI::App app("Resolves page templates as the device does.", "ttr");
    app.set_version_flag("--version", "ttr " TTR_VERSION);
    app.require_subcommand(1);
    app.footer("Run 'ttr COMMAND --help' for the options and examples of a command.");
    ttr::addResolveCommand(app, &exitCode);
    ttr::addCheckCommand(app, &exitCode);
    ttr::addDiffCommand(app, &exitCode);
    ttr::addTestCommand(app, &exitCode);
    ttr::addSchemaCommand(app, &exitCode);
    ttr::addExplainCommand(app, &exitCode);
    ttr::addPreviewCommand(app, &exitCode);
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      const bool asked = error.get_exit_code() == 0;  // --help or --version
      if (!asked) return fail(error.what() + std::string(" (see ttr --help)"));
      app.exit(error);
      return std::cout.flush() ? 0 : fail("standard output: cannot be written");
    }
    return exitCode;
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}
