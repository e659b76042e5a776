// Runs the cases in tests/trace/cases: a page, and each step of it that is told. Lines of a case:
//   # what it shows
//   page JSON            over several lines, when the others begin with a blank
//   handler NAME JSON    what the handler NAME serves
//   file NAME JSON       a file that the page can include
//   screen HEIGHT WIDTH  of 720 1280 otherwise
//   passes COUNT         the last of which is told; 1 otherwise
// Then, after an empty line, the events of the pass, indented by the parts around them, and the
// class of the exception if there is one. A part ends with as many frames on the stack as it began.
//
// With TTR_RENEW_GOLDEN set, the events are written anew instead, and the tests fail so that a
// renewal is never taken for a pass.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "exceptions/memory_files.h"
#include "exceptions/thrown.h"
#include "support/resolver_fixture.h"
#include "trace/trace_listener.h"

namespace {

using CPath = std::filesystem::path;

std::vector<CPath> caseFiles() {
  std::vector<CPath> files;
  for (const auto& entry : std::filesystem::directory_iterator(TTR_SOURCE_DIR "/tests/trace/cases"))
    files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

class Trace : public ResolverTest, public ::testing::WithParamInterface<CPath> {
 protected:
  ~Trace() override { MemoryFiles() = {}; }

  /// Reads the case up to the events, and returns that text.
  std::string ReadHead(std::istream& lines) {
    std::string head;
    std::string entry;
    for (std::string line; std::getline(lines, line) && !line.empty();) {
      head += line + "\n";
      if (line[0] != ' ') {
        readEntry(entry);
        entry.clear();
      }
      entry += line;
    }
    readEntry(entry);
    return head;
  }

  /// The events of the last pass.
  std::string Events() {
    for (unsigned pass = 1; pass < m_passes; ++pass) Resolve(m_page);
    std::string events;
    std::vector<std::size_t> frames;  // on the stack when each part was begun
    const CTraceListener listener([&](const ttr::CTraceEvent& event) {
      if (event.event == ttr::traceEnd) {
        EXPECT_EQ(stack.frames().size(), frames.back()) << events;
        frames.pop_back();
      }
      events += std::string(frames.size(), ' ') + traceText(event) + "\n";
      if (event.event == ttr::traceBegin) frames.push_back(stack.frames().size());
    });
    const std::string thrown = Thrown([&] { Resolve(m_page); });
    return thrown == "nothing" ? events : events + "thrown " + thrown + "\n";
  }

 private:
  void readEntry(const std::string& entry) {
    std::istringstream words(entry);
    std::string kind;
    std::string name;
    words >> kind;
    if (kind == "handler" || kind == "file") words >> name;
    std::string rest;
    std::getline(words >> std::ws, rest);
    std::istringstream numbers(rest);
    if (kind == "handler") {
      Handle(name, rest);
    } else if (kind == "file") {
      MemoryFiles().texts[name] = rest;
    } else if (kind == "page") {
      m_page = rest;
    } else if (kind == "screen") {
      int height = 0;
      int width = 0;
      numbers >> height >> width;
      resolver.SetScreenSize(height, width);
    } else if (kind == "passes") {
      numbers >> m_passes;
    } else {
      EXPECT_TRUE(kind.empty() || kind[0] == '#') << entry;
    }
  }

  std::string m_page;
  unsigned m_passes = 1;
};

TEST_P(Trace, TellsTheSteps) {
  std::ifstream file(GetParam());
  const std::string head = ReadHead(file);
  std::ostringstream expected;
  expected << file.rdbuf();
  const std::string events = Events();
  if (std::getenv("TTR_RENEW_GOLDEN") != nullptr) {
    std::ofstream(GetParam()) << head << "\n" << events;
    FAIL() << "renewed; run again without TTR_RENEW_GOLDEN";
  }
  EXPECT_EQ(events, expected.str());
}

std::string caseName(const ::testing::TestParamInfo<CPath>& info) {
  return info.param.stem().string();
}

INSTANTIATE_TEST_SUITE_P(Cases, Trace, ::testing::ValuesIn(caseFiles()), caseName);

}  // namespace
