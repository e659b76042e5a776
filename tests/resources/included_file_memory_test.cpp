// The library's own reading of included files when memory runs out, which no other program tests
// that lets allocations fail: they keep their files in memory.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "TokenTemplateResolver/included_file.h"
#include "exceptions/thrown.h"
#include "resources/memory_meter.h"

namespace {

TEST(IncludedFileMemory, ThatRunsOutIsBadAlloc) {
  if (!memoryIsMetered) GTEST_SKIP() << "the sanitizer's allocator cannot be made to fail";
  const std::string path = ::testing::TempDir() + "/ttr-included-" + std::to_string(getpid());
  const std::string whole(100000, 'x');
  std::ofstream(path) << whole;
  for (long long number = 1;; ++number) {
    std::string text = "none read";
    const std::string thrown = Thrown([&] {
      const CMallocFailure failure(number);
      text = ttr::readIncludedFile(path);
    });
    EXPECT_EQ(ttr::readIncludedFile(path), whole) << number;
    if (!MallocHasFailed()) {
      EXPECT_GT(number, 5);
      break;
    }
    // The first is fopen's: without memory for it, the C++ library takes the file for missing.
    EXPECT_EQ(thrown, number == 1 ? "nothing" : "std::bad_alloc") << number;
    EXPECT_EQ(text.substr(0, 9), number == 1 ? "" : "none read") << number;
  }
  std::filesystem::remove(path);
}

}  // namespace
