// How the tool reads the files that pages include, in place of the library's own way.
#include "page/included_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "TokenTemplateResolver/included_file.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

/// The directory that includes are confined to, as an absolute path without links; empty for none.
std::string& includeRoot() {
  static std::string root;
  return root;
}

CIncludeReader::CReader& includeReader() {
  static CIncludeReader::CReader reader;
  return reader;
}

class CDescriptor {
 public:
  /// \throws CToolError, which calls the file `name`
  CDescriptor(const std::string& path, int flags, const std::string& name)
      : m_number(::open(path.c_str(), flags | O_CLOEXEC)) {
    if (m_number < 0) throw CToolError(name, std::strerror(errno));
  }
  ~CDescriptor() { ::close(m_number); }
  CDescriptor(const CDescriptor&) = delete;
  CDescriptor& operator=(const CDescriptor&) = delete;

  int number() const { return m_number; }
  /// The name under which the file that is open can be opened again, whatever happens to its path.
  std::string link() const { return "/proc/self/fd/" + std::to_string(m_number); }

 private:
  int m_number;
};

bool isRegular(const CDescriptor& file) {
  struct stat status {};
  return ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
}

/// True when the file that is open lies below `root`.
bool liesBelow(const std::string& root, const CDescriptor& file) {
  const std::string path = std::filesystem::read_symlink(file.link()).string();
  const std::string directory = root == "/" ? root : root + '/';
  return path.compare(0, directory.size(), directory) == 0;
}

std::string readAll(const CDescriptor& file, const std::string& name) {
  std::string text;
  char buffer[65536];
  while (true) {
    const ssize_t count = ::read(file.number(), buffer, sizeof buffer);
    if (count < 0) throw CToolError(name, std::strerror(errno));
    if (count == 0) return text;
    text.append(buffer, static_cast<std::size_t>(count));
  }
}

}  // namespace

void confineIncludes(const std::string& root) {
  std::error_code error;
  const std::filesystem::path canonical = std::filesystem::canonical(root, error);
  if (error) throw CToolError(root, error.message());
  if (!std::filesystem::is_directory(canonical)) throw CToolError(root, "not a directory");
  includeRoot() = canonical.string();
}

/// Looks at the file before it opens it for reading, which alone can make a device act. Some files
/// of the kernel call themselves regular and would keep the reader waiting: O_NONBLOCK is for them.
std::string readRegularFile(const std::string& name) {
  const CDescriptor file(name, O_PATH, name);
  if (::access(file.link().c_str(), F_OK) != 0) throw CToolError(name, "needs a /proc to be read");
  if (!includeRoot().empty() && !liesBelow(includeRoot(), file)) {
    throw CToolError(name, "outside of " + includeRoot());
  }
  if (!isRegular(file)) throw CToolError(name, "not a regular file");
  return readAll(CDescriptor(file.link(), O_RDONLY | O_NONBLOCK, name), name);
}

CIncludeReader::CIncludeReader(CReader reader) : m_previous(std::move(includeReader())) {
  includeReader() = std::move(reader);
}

CIncludeReader::~CIncludeReader() { includeReader() = std::move(m_previous); }

std::string readIncludedFile(const std::string& name) {
  if (includeReader()) return includeReader()(name);
  try {
    return readRegularFile(name);
  } catch (const CToolError& error) {
    tell(std::string("not included: ") + error.what());
    return "";
  }
}

}  // namespace ttr
