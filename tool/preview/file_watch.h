#ifndef TOOL_PREVIEW_FILE_WATCH_H
#define TOOL_PREVIEW_FILE_WATCH_H

#include <chrono>
#include <ctime>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ttr {

/// The time that the file system would stamp a file with that is written now.
timespec fileTime();

/// Tells of changes to files, whatever way a program saves them: in place, or as another file that
/// takes the name. The files need not exist, nor need the folders that they are to be in.
///
/// The folders are watched, from the root down, and only events on the names of the files and of
/// their folders count. Files behind symbolic links are watched where they are, and the links too.
class CFileWatch {
 public:
  /// \throws CToolError when the system has no watches left
  CFileWatch();
  ~CFileWatch();
  CFileWatch(const CFileWatch&) = delete;
  CFileWatch& operator=(const CFileWatch&) = delete;

  /// Watches `files`, absolute paths, instead of those before. True when one that was not watched
  /// before has changed since `since`: no event tells of that.
  /// \throws CToolError when the system has no watches left
  bool Watch(const std::vector<std::string>& files, timespec since);

  /// Readable when there are events.
  int descriptor() const { return m_inotify; }

  /// Takes all events that there are; true when one concerns a watched file.
  /// \throws CToolError when the system has no watches left
  bool ReadEvents();

 private:
  void watchFolders();
  bool concerns(int watch, unsigned what, const std::string& name) const;

  int m_inotify;
  std::set<std::string> m_files;
  std::map<int, std::set<std::string>> m_names;  ///< by watch, what counts in its folder
};

/// Lets a burst of events pass before something is done about it: until no event has come for 80
/// milliseconds, but no longer than a second.
class CDebounce {
 public:
  using Clock = std::chrono::steady_clock;

  void Note(Clock::time_point now);
  void Clear() { m_first.reset(); }
  /// True when there were events and it is time to do something about them.
  bool IsDue(Clock::time_point now) const { return m_first && now >= end(); }
  /// How many milliseconds it is until then, as poll() takes it: -1 when there were no events.
  int MillisecondsLeft(Clock::time_point now) const;

 private:
  Clock::time_point end() const;

  std::optional<Clock::time_point> m_first;
  Clock::time_point m_last;
};

}  // namespace ttr

#endif  // TOOL_PREVIEW_FILE_WATCH_H
