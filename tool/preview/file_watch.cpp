// Changes to files, as inotify tells of them for their folders. A watch on a file itself would be
// lost when an editor puts a new file in its place. Tests: tests/tool/watch/file_watch_test.cpp.
#include "preview/file_watch.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "tool_error.h"

namespace ttr {
namespace {

using CFolders = std::map<std::string, std::set<std::string>>;  // names that count, by folder

/// A file counts as changed once the program that writes it is done. Without IN_MODIFY, which would
/// tell of each half of a file.
constexpr unsigned changes = IN_CLOSE_WRITE | IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVE;

constexpr std::chrono::milliseconds quietTime{80};
constexpr std::chrono::milliseconds longestDelay{1000};

/// `path` and its folders up to the root: each is a name in the folder above it.
void addPath(const std::filesystem::path& path, CFolders& folders) {
  std::filesystem::path folder;
  for (const std::filesystem::path& name : path) {
    if (!folder.empty()) folders[folder.string()].insert(name.string());
    folder /= name;
  }
}

/// `file`, and where it is if it is a symbolic link.
void addFile(std::filesystem::path file, CFolders& folders) {
  constexpr int mostLinks = 40;  // as in the system
  for (int links = 0; links <= mostLinks; ++links) {
    addPath(file, folders);
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(file, error);
    if (error) return;
    file = file.parent_path() / target;
  }
}

bool isBefore(const timespec& left, const timespec& right) {
  return std::make_pair(left.tv_sec, left.tv_nsec) < std::make_pair(right.tv_sec, right.tv_nsec);
}

/// The time of the status tells of new content and of a new file under the name, too.
bool hasChangedSince(const std::string& file, const timespec& since) {
  struct stat status {};
  return ::stat(file.c_str(), &status) == 0 && !isBefore(status.st_ctim, since);
}

}  // namespace

timespec fileTime() {
  timespec time{};
  ::clock_gettime(CLOCK_REALTIME_COARSE, &time);
  return time;
}

CFileWatch::CFileWatch() : m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (m_inotify < 0) throw CToolError("watch", std::strerror(errno));
}

CFileWatch::~CFileWatch() { ::close(m_inotify); }

bool CFileWatch::Watch(const std::vector<std::string>& files, timespec since) {
  std::set<std::string> before(files.begin(), files.end());
  m_files.swap(before);
  watchFolders();
  return std::any_of(m_files.begin(), m_files.end(), [&](const std::string& file) {
    return before.count(file) == 0 && hasChangedSince(file, since);
  });
}

bool CFileWatch::ReadEvents() {
  bool changed = false;
  char buffer[16384];
  ssize_t count = 0;
  while ((count = ::read(m_inotify, buffer, sizeof buffer)) > 0) {
    const char* const end = buffer + count;
    for (const char* next = buffer; next < end;) {
      inotify_event event{};
      std::memcpy(&event, next, sizeof event);
      const std::string name(event.len > 0 ? next + sizeof event : "");
      if (concerns(event.wd, event.mask, name)) changed = true;
      next += sizeof event + event.len;
    }
  }
  if (changed) watchFolders();  // folders may have gone, or come
  return changed;
}

/// The folders in order, each before those in it: one that appears meanwhile is told of.
void CFileWatch::watchFolders() {
  CFolders folders;
  for (const std::string& file : m_files) addFile(file, folders);
  std::map<int, std::set<std::string>> names;
  for (const auto& [folder, namesInFolder] : folders) {
    const int watch =
        ::inotify_add_watch(m_inotify, folder.c_str(), changes | IN_ONLYDIR | IN_MASK_ADD);
    if (watch >= 0) {
      names[watch].insert(namesInFolder.begin(), namesInFolder.end());
    } else if (errno == ENOSPC || errno == ENOMEM) {
      throw CToolError(folder, "cannot be watched, as too many folders are watched already");
    }
  }
  m_names.swap(names);
  for (const auto& [watch, unused] : names) {
    if (m_names.count(watch) == 0) ::inotify_rm_watch(m_inotify, watch);
  }
}

bool CFileWatch::concerns(int watch, unsigned what, const std::string& name) const {
  if ((what & (IN_Q_OVERFLOW | IN_UNMOUNT)) != 0) return true;
  const auto folder = m_names.find(watch);
  return folder != m_names.end() && folder->second.count(name) > 0;
}

void CDebounce::Note(Clock::time_point now) {
  if (!m_first) m_first = now;
  m_last = now;
}

int CDebounce::MillisecondsLeft(Clock::time_point now) const {
  if (!m_first) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end() - now).count();
  return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left, 0));
}

CDebounce::Clock::time_point CDebounce::end() const {
  return std::min(m_last + quietTime, *m_first + longestDelay);
}

}  // namespace ttr
