// How the search goes about: the number of its runs, and that nothing which the library writes is
// lost or counted twice, on any page.
#include "check/fault_search.h"

#include <gtest/gtest.h>
#include <json/writer.h>

#include <map>
#include <string>

#include "check/fault_codes.h"
#include "support/page_generator.h"
#include "text/printable.h"
#include "tool/support/page_folder.h"

namespace {

std::string Text(const Json::Value& value) {
  return Json::writeString(Json::StreamWriterBuilder(), value);
}

std::size_t RunsOf(const std::string& page) {
  const ttr::CPageFolder folder({{"page.json", page}});
  ttr::CPageRunner runner(folder.Options("page.json"));
  ttr::CFaultList faults;
  ttr::CFaultSearch search(runner, 1, faults);
  search.Search();
  return search.runs();
}

/// Contents of `width` elements, nested `depth` deep at the entry `at` of each level, with
/// `deepest` as the innermost one.
Json::Value Nested(int depth, Json::ArrayIndex width, Json::ArrayIndex at,
                   const Json::Value& deepest) {
  if (depth == 0) return deepest;
  Json::Value element;
  for (Json::ArrayIndex i = 0; i < width; ++i) element["Contents"][i] = "text";
  element["Contents"][at] = Nested(depth - 1, width, at, deepest);
  return element;
}

TEST(FaultSearch, ACleanPageTakesOneRun) { EXPECT_EQ(RunsOf(Text(Nested(3, 20, 7, "clean"))), 1U); }

TEST(FaultSearch, OneFaultTakesRunsByDepthAndTheLogarithmOfWidth) {
  // Each level: the element without entries, twice; all entries; and two runs for each halving.
  constexpr std::size_t perLevel = 2 + 1 + 2 * 6;
  for (const int depth : {1, 2, 3, 4}) {
    const std::size_t runs = RunsOf(Text(Nested(depth, 64, 41, "$(none")));
    EXPECT_LE(runs, 1 + static_cast<std::size_t>(depth) * perLevel) << depth;
    EXPECT_GE(runs, static_cast<std::size_t>(depth) * 6) << depth;
  }
}

TEST(FaultSearch, ManyFaultsTakeTwoRunsEach) {
  Json::Value page;
  for (Json::ArrayIndex i = 0; i < 64; ++i) page["Contents"][i] = "$(none)";
  EXPECT_LE(RunsOf(Text(page)), 3U + 2 * 64);
}

TEST(FaultSearch, TokensThatOneTextEachHasTakeNoRunsOfTheirOwn) {
  Json::Value page;
  for (Json::ArrayIndex i = 0; i < 64; ++i) {
    page["Contents"][i] = "a $(none" + std::to_string(i) + ") b";
  }
  EXPECT_LE(RunsOf(Text(page)), 4U);
  page["Contents"][64] = "$(none1)";
  EXPECT_LE(RunsOf(Text(page)), 30U) << "two runs for each halving on the way to the two";
}

/// What one random page and its files wrote, and what the search made of it.
struct CRandomCase {
  std::map<std::string, std::size_t> written;
  std::map<std::string, std::size_t> found;
  std::optional<std::string> exception;
};

/// True for lines that the search tells in words of its own, or once for many.
bool IsRetold(const std::string& message) {
  const std::string code = ttr::kindOfMessage(message).code;
  return code == "not-an-object" || code == "no-page-or-contents" || code == "include-depth";
}

/// A page with values for its tokens; with `included`, the files that it and they include.
class CRandomPage {
 public:
  CRandomPage(std::uint32_t seed, bool included) : m_folder({}) {
    ttr::CPageGenerator generator(seed);
    Json::Value values;
    for (const char* name : {"n", "flights", "text", "area.left"}) {
      values[name] = generator.HandlerValue();
    }
    values["n"] = static_cast<int>(seed % 5);
    m_folder.Write("page.json", Text(generator.Document()));
    m_folder.Write("values.json", Text(values));
    if (!included) return;
    m_folder.Write("a.json", Text(generator.Document()));
    m_folder.Write("b.json", Text(generator.Document()));
  }

  CRandomCase Case() const {
    ttr::CPageRunner runner(m_folder.Options("page.json"));
    const ttr::CPageRun run = runner.Run({}, 1);
    CRandomCase result;
    result.exception = run.exception;
    for (const std::string& message : run.messages) {
      if (!IsRetold(message)) ++result.written[ttr::oneLine(message)];
    }
    for (const ttr::CFault& fault : Faults(runner)) result.found[fault.message] += fault.count;
    return result;
  }

  std::vector<ttr::CFault> Faults() const {
    ttr::CPageRunner runner(m_folder.Options("page.json"));
    return Faults(runner);
  }

 private:
  static std::vector<ttr::CFault> Faults(ttr::CPageRunner& runner) {
    ttr::CFaultList faults;
    ttr::CFaultSearch(runner, 1, faults).Search();
    return faults.Sorted();
  }

  ttr::CPageFolder m_folder;
};

void ExpectNothingLost(const CRandomCase& one) {
  for (const auto& [message, count] : one.written) {
    const auto found = one.found.find(message);
    const std::size_t times = found == one.found.end() ? 0 : found->second;
    if (one.exception) {
      EXPECT_GE(times, count) << message;  // the search also looks behind the exception
    } else {
      EXPECT_EQ(times, count) << message;
    }
  }
  if (one.exception) {
    EXPECT_EQ(one.found.count(ttr::oneLine(*one.exception)), 1U) << *one.exception;
  }
}

TEST(FaultSearch, WhatRandomPagesWriteIsFoundAsOften) {
  std::size_t messages = 0;
  std::size_t exceptions = 0;
  for (std::uint32_t seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE(seed);
    const CRandomCase one = CRandomPage(seed, seed % 2 == 0).Case();
    ExpectNothingLost(one);
    messages += one.written.size();
    if (one.exception) ++exceptions;
  }
  EXPECT_GT(messages, 200U);
  EXPECT_GT(exceptions, 10U);
}

TEST(FaultSearch, MessagesAboutTextsAreFoundAtTexts) {
  for (std::uint32_t seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE(seed);
    const CRandomPage page(seed, false);
    for (const ttr::CFault& fault : page.Faults()) {
      const ttr::CFaultKind& kind = ttr::faultKind(fault.code);
      if (!kind.members.empty() || kind.beginning == nullptr) continue;
      EXPECT_FALSE(fault.pointer.empty()) << fault.message;
    }
  }
}

}  // namespace
