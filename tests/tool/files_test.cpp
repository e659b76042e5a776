#include "files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tool_error.h"

namespace {

class Files : public ::testing::Test {
 protected:
  Files() {
    std::string name = (std::filesystem::temp_directory_path() / "ttr-files-XXXXXX").string();
    folder = ::mkdtemp(name.data());
  }
  ~Files() override { std::filesystem::remove_all(folder); }

  std::string Path(const std::string& name) const { return (folder / name).string(); }

  std::filesystem::path folder;
};

TEST_F(Files, WrittenTextIsReadBack) {
  const std::string text("line\n\0 and \xff\n", 13);
  ttr::writeFile(Path("a"), text);
  EXPECT_EQ(ttr::readText(Path("a")), text);
}

TEST_F(Files, NothingIsLeftBesideTheFile) {
  ttr::writeFile(Path("a"), "1");
  ttr::writeFile(Path("a"), "2");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  EXPECT_EQ(ttr::readText(Path("a")), "2");
}

TEST_F(Files, ReplacedFileKeepsItsPermissions) {
  ttr::writeFile(Path("a"), "1");
  ASSERT_EQ(::chmod(Path("a").c_str(), 0640), 0);
  ttr::writeFile(Path("a"), "2");
  struct stat status {};
  ASSERT_EQ(::stat(Path("a").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(Files, NewFileFollowsTheUmask) {
  const mode_t before = ::umask(027);
  ttr::writeFile(Path("a"), "1");
  ::umask(before);
  struct stat status {};
  ASSERT_EQ(::stat(Path("a").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(Files, SymbolicLinkStaysAndItsTargetIsReplaced) {
  ttr::writeFile(Path("target"), "1");
  std::filesystem::create_symlink("target", Path("link"));
  ttr::writeFile(Path("link"), "2");
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link")));
  EXPECT_EQ(ttr::readText(Path("target")), "2");
}

TEST_F(Files, ErrorsNameTheFileAndTheReason) {
  const auto messageOf = [](const auto& action) -> std::string {
    try {
      action();
    } catch (const ttr::CToolError& error) {
      return error.what();
    }
    return "no error";
  };
  EXPECT_EQ(messageOf([&] { ttr::readText(Path("none")); }),
            Path("none") + ": No such file or directory");
  EXPECT_EQ(messageOf([&] { ttr::readText(folder.string()); }),
            folder.string() + ": Is a directory");
  EXPECT_EQ(messageOf([&] { ttr::writeFile(Path("none/a"), "1"); }),
            Path("none/a") + ": No such file or directory");
}

}  // namespace
