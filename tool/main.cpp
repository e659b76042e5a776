// ttr, the workbench for people who write templates: one subcommand for each job.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <iostream>
#include <string>

#include "resolve.h"

namespace {

constexpr int cannotBeDone = 2;

/// Prints `reason` as one line, whatever lines it has.
int fail(std::string reason) {
  std::replace(reason.begin(), reason.end(), '\n', ' ');
  while (!reason.empty() && reason.back() == ' ') reason.pop_back();
  std::cerr << "ttr: " << reason << std::endl;
  return cannotBeDone;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    int exitCode = 0;
    CLI::App app("Resolves page templates as the device does.", "ttr");
    app.set_version_flag("--version", "ttr " TTR_VERSION);
    app.require_subcommand(1);
    app.footer("Run 'ttr COMMAND --help' for the options and examples of a command.");
    ttr::addResolveCommand(app, &exitCode);
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      const bool asked = error.get_exit_code() == 0;  // --help or --version
      return asked ? app.exit(error) : fail(error.what() + std::string(" (see ttr --help)"));
    }
    return exitCode;
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}
