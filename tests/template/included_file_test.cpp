#include "TokenTemplateResolver/included_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

/// Has a directory of its own, which holds the files to read.
class IncludedFile : public testing::Test {
 protected:
  IncludedFile() {
    std::string name = (std::filesystem::temp_directory_path() / "included_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no directory " + name);
    m_directory = name;
  }

  ~IncludedFile() override { std::filesystem::remove_all(m_directory); }

  std::string Path(const std::string& name) const { return (m_directory / name).string(); }

  std::string File(const std::string& name, const std::string& text) const {
    std::ofstream(Path(name), std::ios::binary) << text;
    return Path(name);
  }

 private:
  std::filesystem::path m_directory;
};

TEST_F(IncludedFile, IsReadWholeWhateverItsBytes) {
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 8192U, 100000U}) {
    SCOPED_TRACE(size);
    std::string text;
    for (std::size_t i = 0; i < size; ++i) text += static_cast<char>(i * 7);
    EXPECT_EQ(ttr::readIncludedFile(File("bytes", text)), text);
  }
  const std::string text("\xEF\xBB\xBF a\r\n\0b\r\n", 11);
  EXPECT_EQ(ttr::readIncludedFile(File("lines", text)), text);
}

TEST_F(IncludedFile, ThatIsMissingIsEmpty) {
  EXPECT_EQ(ttr::readIncludedFile(Path("missing")), "");
  EXPECT_EQ(ttr::readIncludedFile(""), "");
  EXPECT_EQ(ttr::readIncludedFile(Path(std::string(100000, 'n'))), "");
}

TEST_F(IncludedFile, ThatIsADirectoryIsEmpty) {
  std::filesystem::create_directory(Path("directory"));
  EXPECT_EQ(ttr::readIncludedFile(Path("directory")), "");
}

TEST_F(IncludedFile, ThatIsADanglingOrEndlessLinkIsEmpty) {
  std::filesystem::create_symlink("missing", Path("dangling"));
  std::filesystem::create_symlink("endless", Path("endless"));
  EXPECT_EQ(ttr::readIncludedFile(Path("dangling")), "");
  EXPECT_EQ(ttr::readIncludedFile(Path("endless")), "");
}

// Hosts that want otherwise put a function of their own in place of the library's.
TEST_F(IncludedFile, ThatIsAPipeIsReadToItsEnd) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  std::thread writer([this] { File("pipe", "written"); });
  EXPECT_EQ(ttr::readIncludedFile(Path("pipe")), "written");
  writer.join();
}

}  // namespace
