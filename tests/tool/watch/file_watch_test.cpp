#include "preview/file_watch.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <utime.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ios>
#include <sstream>
#include <string>
#include <vector>

namespace ttr {
namespace {

namespace fs = std::filesystem;

/// The system queues an event before the call that causes it returns: nothing here has to wait.
class FileWatch : public ::testing::Test {
 protected:
  FileWatch() {
    std::string name = (fs::temp_directory_path() / "ttr-watch-XXXXXX").string();
    m_folder = fs::canonical(::mkdtemp(name.data()));
    fs::create_directories(m_folder / "a/b");
    write("a/b/page.json", "1");
  }
  ~FileWatch() override { fs::remove_all(m_folder); }

  std::string path(const std::string& name) const { return (m_folder / name).string(); }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name)) << text;
  }
  void rename(const std::string& from, const std::string& to) const {
    fs::rename(path(from), path(to));
  }
  void watch(const std::vector<std::string>& names) {
    std::vector<std::string> files;
    for (const std::string& name : names) files.push_back(path(name));
    m_watch.Watch(files, fileTime());
    m_watch.ReadEvents();
  }
  bool changed() { return m_watch.ReadEvents(); }
  bool isReadable() const {
    pollfd events{m_watch.descriptor(), POLLIN, 0};
    return ::poll(&events, 1, 0) > 0;
  }
  /// As the system tells. No event is no sign: others write to the folders above at any time.
  bool isWatched(const std::string& folder) const {
    struct stat status {};
    EXPECT_EQ(::stat(path(folder).c_str(), &status), 0);
    std::ostringstream inode;
    inode << " ino:" << std::hex << status.st_ino << ' ';
    std::ifstream file("/proc/self/fdinfo/" + std::to_string(m_watch.descriptor()));
    std::ostringstream watches;
    watches << file.rdbuf();
    return watches.str().find(inode.str()) != std::string::npos;
  }

  fs::path m_folder;
  CFileWatch m_watch;
};

TEST_F(FileWatch, NothingHappensByItself) {
  watch({"a/b/page.json"});
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, SaveInPlace) {
  watch({"a/b/page.json"});
  write("a/b/page.json", "2");
  EXPECT_TRUE(isReadable());
  EXPECT_TRUE(changed());
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, HalfAFileIsNoChange) {
  watch({"a/b/page.json"});
  std::ofstream file(path("a/b/page.json"), std::ios::trunc);
  file << "half";
  file.flush();
  EXPECT_FALSE(changed());
  file << "whole";
  file.close();
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, SaveByRename) {
  watch({"a/b/page.json"});
  write("a/b/.page.json.swp", "2");
  EXPECT_FALSE(changed());
  rename("a/b/.page.json.swp", "a/b/page.json");
  EXPECT_TRUE(changed());
  write("a/b/page.json", "3");  // the new file
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, SaveToNewFileAfterBackup) {
  watch({"a/b/page.json"});
  rename("a/b/page.json", "a/b/page.json~");
  EXPECT_TRUE(changed());
  write("a/b/page.json", "2");
  EXPECT_TRUE(changed());
  fs::remove(path("a/b/page.json~"));
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, DeleteAndCreate) {
  watch({"a/b/page.json"});
  fs::remove(path("a/b/page.json"));
  EXPECT_TRUE(changed());
  write("a/b/page.json", "2");
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, PermissionsAndTimes) {
  watch({"a/b/page.json"});
  ::chmod(path("a/b/page.json").c_str(), 0600);
  EXPECT_TRUE(changed());
  ::utime(path("a/b/page.json").c_str(), nullptr);
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, ReadingIsNoChange) {
  watch({"a/b/page.json"});
  std::string text;
  std::ifstream(path("a/b/page.json")) >> text;
  EXPECT_EQ(text, "1");
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, OtherFilesDoNotCount) {
  watch({"a/b/page.json"});
  write("a/b/page.html", "");
  rename("a/b/page.html", "a/b/other.html");
  fs::create_directory(path("a/c"));
  fs::remove(path("a/b/other.html"));
  EXPECT_TRUE(isReadable());
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, FileThatDoesNotExistYet) {
  watch({"a/b/page.json", "a/b/new.json"});
  write("a/b/new.json", "1");
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, FileInFoldersThatDoNotExistYet) {
  watch({"x/y/z/new.json"});
  fs::create_directory(path("x"));
  EXPECT_TRUE(changed());
  fs::create_directories(path("x/y/z"));
  EXPECT_TRUE(changed());
  write("x/y/z/new.json", "1");
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, FolderThatIsRemovedAndComesBack) {
  watch({"a/b/page.json"});
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    fs::remove_all(path("a"));
    EXPECT_TRUE(changed());
    fs::create_directories(path("a/b"));
    EXPECT_TRUE(changed());
    write("a/b/page.json", "2");
    EXPECT_TRUE(changed());
    write("a/b/page.json", "3");
    EXPECT_TRUE(changed());
  }
}

TEST_F(FileWatch, FolderThatIsReplacedByAnother) {
  fs::create_directories(path("new/b"));
  write("new/b/page.json", "2");
  watch({"a/b/page.json"});
  rename("a", "old");
  rename("new", "a");
  EXPECT_TRUE(changed());
  write("a/b/page.json", "3");
  EXPECT_TRUE(changed());
  write("old/b/page.json", "3");
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, SymbolicLinks) {
  fs::create_directory(path("links"));
  fs::create_symlink("../a/b", path("links/folder"));
  fs::create_symlink("page.json", path("a/b/middle.json"));
  fs::create_symlink("folder/middle.json", path("links/page.json"));
  watch({"links/page.json"});
  write("a/b/page.json", "2");
  EXPECT_TRUE(changed());
  write("a/b/other.json", "3");
  fs::create_symlink("other.json", path("a/b/next"));
  EXPECT_FALSE(changed());
  rename("a/b/next", "a/b/middle.json");
  EXPECT_TRUE(changed());
  write("a/b/page.json", "3");
  EXPECT_FALSE(changed());
  write("a/b/other.json", "4");
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, LinksInACircle) {
  fs::create_symlink("two", path("one"));
  fs::create_symlink("one", path("two"));
  watch({"one"});
  fs::remove(path("two"));
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, FilesAreRenewed) {
  write("a/one.json", "1");
  watch({"a/b/page.json", "a/one.json"});
  watch({"a/b/page.json", "a/two.json"});
  write("a/one.json", "2");
  EXPECT_FALSE(changed());
  write("a/two.json", "2");
  EXPECT_TRUE(changed());
  EXPECT_TRUE(isWatched("a/b"));
  watch({"a/two.json"});
  EXPECT_FALSE(isWatched("a/b"));
  write("a/b/page.json", "2");
  EXPECT_FALSE(changed());
}

TEST_F(FileWatch, EventsBeforeTheFilesAreRenewedAreNotLost) {
  watch({"a/b/page.json"});
  write("a/b/page.json", "2");
  m_watch.Watch({path("a/b/page.json"), path("a/new.json")}, fileTime());
  EXPECT_TRUE(changed());
}

TEST_F(FileWatch, NewFileThatHasChangedMeanwhile) {
  const timespec before = fileTime();
  write("a/new.json", "1");
  EXPECT_TRUE(m_watch.Watch({path("a/new.json")}, before));
  EXPECT_FALSE(m_watch.Watch({path("a/new.json")}, before)) << "watched before";
  EXPECT_FALSE(m_watch.Watch({path("a/missing.json")}, before));
  timespec later = fileTime();
  later.tv_sec += 60;
  EXPECT_FALSE(m_watch.Watch({path("a/new.json")}, later));
}

TEST_F(FileWatch, TooManyEventsAtOnceCountAsAChange) {
  int most = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> most;
  ASSERT_GT(most, 0);
  write("a/b/one", "1");
  watch({"a/b/page.json"});
  for (int i = 0; i <= most; i += 2) {  // different names, or the events would be one
    rename("a/b/one", "a/b/two");
    rename("a/b/two", "a/b/one");
  }
  EXPECT_TRUE(changed());
}

constexpr std::chrono::milliseconds operator""_ms(unsigned long long count) {
  return std::chrono::milliseconds(count);
}

TEST(Debounce, WithoutEventsNothingIsDue) {
  const CDebounce changes;
  EXPECT_FALSE(changes.IsDue(CDebounce::Clock::time_point::max()));
  EXPECT_EQ(changes.MillisecondsLeft(CDebounce::Clock::now()), -1);
}

TEST(Debounce, DueEightyMillisecondsAfterTheLastEvent) {
  CDebounce changes;
  const CDebounce::Clock::time_point start = CDebounce::Clock::now();
  changes.Note(start);
  EXPECT_FALSE(changes.IsDue(start + 79_ms));
  EXPECT_EQ(changes.MillisecondsLeft(start + 79_ms), 1);
  changes.Note(start + 79_ms);
  EXPECT_FALSE(changes.IsDue(start + 80_ms));
  EXPECT_EQ(changes.MillisecondsLeft(start + 80_ms), 79);
  EXPECT_FALSE(changes.IsDue(start + 158_ms));
  EXPECT_TRUE(changes.IsDue(start + 159_ms));
  EXPECT_EQ(changes.MillisecondsLeft(start + 159_ms), 0);
  EXPECT_EQ(changes.MillisecondsLeft(start + 500_ms), 0);
}

TEST(Debounce, PartOfAMillisecondIsWaitedForToo) {
  CDebounce changes;
  const CDebounce::Clock::time_point start = CDebounce::Clock::now();
  changes.Note(start);
  EXPECT_EQ(changes.MillisecondsLeft(start + std::chrono::microseconds(79500)), 1);
}

TEST(Debounce, NoLongerThanASecond) {
  CDebounce changes;
  const CDebounce::Clock::time_point start = CDebounce::Clock::now();
  for (auto time = 0_ms; time < 1000_ms; time += 50_ms) {
    changes.Note(start + time);
    EXPECT_FALSE(changes.IsDue(start + time));
  }
  EXPECT_EQ(changes.MillisecondsLeft(start + 990_ms), 10);
  EXPECT_TRUE(changes.IsDue(start + 1000_ms));
}

TEST(Debounce, ClearBeginsAnew) {
  CDebounce changes;
  const CDebounce::Clock::time_point start = CDebounce::Clock::now();
  changes.Note(start);
  changes.Clear();
  EXPECT_FALSE(changes.IsDue(start + 5000_ms));
  changes.Note(start + 5000_ms);
  EXPECT_FALSE(changes.IsDue(start + 5079_ms));
  EXPECT_TRUE(changes.IsDue(start + 5080_ms));
}

}  // namespace
}  // namespace ttr
