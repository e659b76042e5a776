// The example in docs/embedding.md is the one in examples/, which a test runs.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

std::string textOf(const char* path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(TraceDocument, QuotesTheExample) {
  const std::string example = textOf(TTR_SOURCE_DIR "/examples/tracing_host.cpp");
  const std::size_t start = example.find("struct CPlace");
  ASSERT_NE(start, std::string::npos);
  const std::string quoted = example.substr(start, example.find("\n\nint main") - start);
  const std::string document = textOf(TTR_SOURCE_DIR "/docs/embedding.md");
  EXPECT_NE(document.find("```cpp\n" + quoted + "\n```\n"), std::string::npos) << quoted;
}

}  // namespace
