#include "files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "tool_error.h"

namespace ttr {
namespace {

struct CFileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using CFile = std::unique_ptr<std::FILE, CFileCloser>;

std::string systemReason() { return std::strerror(errno); }

std::string readAll(std::FILE* file, const std::string& name) {
  std::string text;
  char buffer[65536];
  std::size_t count = 0;
  while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0) text.append(buffer, count);
  if (std::ferror(file) != 0) throw CToolError(name, systemReason());
  return text;
}

/// Writes and flushes; true on success, else errno tells.
bool writeAll(std::FILE* file, const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

/// The permissions that `path` has, or that a new file gets.
mode_t permissionsFor(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return status.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

void writeInPlace(const std::string& path, const std::string& text) {
  const CFile file(std::fopen(path.c_str(), "wb"));
  if (!file || !writeAll(file.get(), text)) throw CToolError(path, systemReason());
}

/// Writes a new file beside `target` and renames it to `target`; errors name it `path`.
void replaceFile(const std::string& target, const std::string& text, const std::string& path) {
  std::string temporary = (std::filesystem::path(target).parent_path() / ".ttr-XXXXXX").string();
  const int descriptor = ::mkstemp(temporary.data());
  if (descriptor < 0) throw CToolError(path, systemReason());
  bool written = false;
  {
    const CFile file(::fdopen(descriptor, "wb"));
    written = file && writeAll(file.get(), text) &&
              ::fchmod(descriptor, permissionsFor(target)) == 0 && ::fsync(descriptor) == 0;
  }
  if (!written || std::rename(temporary.c_str(), target.c_str()) != 0) {
    const std::string reason = systemReason();
    ::unlink(temporary.c_str());
    throw CToolError(path, reason);
  }
}

}  // namespace

std::string readText(const std::string& path) {
  if (path == "-") return readAll(stdin, "standard input");
  const CFile file(std::fopen(path.c_str(), "rb"));
  if (!file) throw CToolError(path, systemReason());
  return readAll(file.get(), path);
}

void writeStandardOutput(const std::string& text) {
  if (!writeAll(stdout, text)) throw CToolError("standard output", systemReason());
}

void writeFile(const std::string& path, const std::string& text) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    writeInPlace(path, text);
    return;
  }
  const std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
  replaceFile(error ? path : target.string(), text, path);
}

}  // namespace ttr
