// Runs rsvg-convert without a shell. Its standard streams are files without a name, so that neither
// side ever waits for the other.
#include "preview/rsvg.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

constexpr char program[] = "rsvg-convert";

struct CFileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using CFile = std::unique_ptr<std::FILE, CFileCloser>;

CFile temporaryFile() {
  CFile file(std::tmpfile());
  if (!file) throw CToolError(program, std::string("no temporary file: ") + std::strerror(errno));
  return file;
}

void fill(std::FILE* file, const std::string& text) {
  const bool written =
      std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
  if (!written) throw CToolError(program, std::strerror(errno));
  std::rewind(file);
}

std::string contents(std::FILE* file) {
  std::rewind(file);
  std::string text;
  char buffer[65536];
  std::size_t count = 0;
  while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0) text.append(buffer, count);
  return text;
}

/// What a child tells by its exit code that could not become the program: POSIX lets posix_spawn
/// report it so, and an emulator that has no vfork does.
constexpr int notStarted = 127;

[[noreturn]] void failAsMissing() {
  throw CToolError(program, "not found; PNG pictures need it (Debian: apt install librsvg2-bin)");
}

/// Runs the program with these standard streams; its status as waitpid tells it.
int run(std::FILE* input, std::FILE* output, std::FILE* errors) {
  posix_spawn_file_actions_t streams;
  ::posix_spawn_file_actions_init(&streams);
  ::posix_spawn_file_actions_adddup2(&streams, ::fileno(input), STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&streams, ::fileno(output), STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&streams, ::fileno(errors), STDERR_FILENO);
  std::string name = program;
  std::string format = "--format=png";
  std::string unlimited = "--unlimited";  // else images of more than a few megabytes are refused
  char* arguments[] = {name.data(), format.data(), unlimited.data(), nullptr};
  pid_t child = 0;
  const int error = ::posix_spawnp(&child, program, &streams, nullptr, arguments, ::environ);
  ::posix_spawn_file_actions_destroy(&streams);
  if (error == ENOENT) failAsMissing();
  if (error != 0) throw CToolError(program, std::strerror(error));
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) throw CToolError(program, std::strerror(errno));
  }
  return status;
}

}  // namespace

std::string pngFromSvg(const std::string& svg) {
  const CFile input = temporaryFile();
  const CFile output = temporaryFile();
  const CFile errors = temporaryFile();
  fill(input.get(), svg);
  const int status = run(input.get(), output.get(), errors.get());
  std::string png = contents(output.get());
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && !png.empty()) return png;
  if (WIFEXITED(status) && WEXITSTATUS(status) == notStarted) failAsMissing();
  const std::string reason = contents(errors.get());
  throw CToolError(program, reason.empty() ? "it ended without a picture" : joinedLines(reason));
}

}  // namespace ttr
