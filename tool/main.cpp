// ttr, the workbench for people who write templates: one subcommand for each job.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <string>

#include "command_line.h"
#include "commands.h"
#include "text/printable.h"

namespace {

constexpr int cannotBeDone = 2;

int fail(const std::string& reason) {
  ttr::tell(reason);
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
  const std::string version = TTR_VERSION;
  try {
    return ttr::runCommandLine(
        {ttr::resolveCommand(), ttr::checkCommand(version), ttr::diffCommand(), ttr::testCommand(),
         ttr::schemaCommand(), ttr::explainCommand(), ttr::previewCommand()},
        version, argc, argv);
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}
