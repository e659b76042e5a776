// A device shows the same pages for months: nothing may grow from pass to pass.
#include <gtest/gtest.h>
#include <json/value.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "files.h"
#include "page/page_host.h"
#include "resources/memory_meter.h"
#include "support/build_kind.h"
#include "support/cerr_capture.h"
#include "support/json.h"

namespace {

const std::string folder = TTR_SOURCE_DIR "/examples/lobby/";

/// TTR_ROUNDS, which scripts/check-memory sets to 100000. By default a number that every build has
/// time for.
int Rounds() {
  const char* text = std::getenv("TTR_ROUNDS");
  return text == nullptr ? 600 : std::atoi(text);
}

TEST(Rounds, KeepMemoryFlat) {
  Json::Value values = Parse(ttr::readText(folder + "values.json"));
  values["theme"]["dir"] = folder;
  const std::string page = ttr::readText(folder + "template.json");
  ttr::CPageHost host(values, {1280, 720});
  host.ServeVariablesOf(page);
  const int notices = 3;  // rotate, and have texts of different lengths

  CCerrCapture errors;
  for (int warmUp = 0; warmUp < 50 * notices; ++warmUp) host.Pass(page);
  const std::string first = host.Pass(page);
  const long long residentBefore = ResidentMemory();
  ASSERT_GT(residentBefore, 0);
  const int count = (Rounds() + notices - 1) / notices * notices;
  std::string last;
  const CMemoryUse use = MemoryUsedBy([&] {
    for (int round = 1; round < count; ++round) host.Pass(page);
    last = host.Pass(page);
  });
  const long long residentGrowth = ResidentMemory() - residentBefore;

  EXPECT_EQ(last, first);
  EXPECT_EQ(errors.Take(), "");
  std::cout << "memory: " << count << " rounds, " << use.calls << " allocations, " << use.kept
            << " kept, resident memory grown by " << residentGrowth << " bytes\n";
  EXPECT_EQ(use.calls > 0, memoryIsMetered);
  EXPECT_LE(use.kept, 1);  // the result that `last` keeps
  // AddressSanitizer keeps what was freed, to tell who uses it; it looks for leaks itself.
  if (!ttr::addressSanitized) {
    EXPECT_LE(residentGrowth, 512 * 1024);
  }
}

}  // namespace
