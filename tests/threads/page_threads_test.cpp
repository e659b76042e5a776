// Several resolvers in several threads, in the ways that a host may use them. These tests are for
// ThreadSanitizer: in other builds they tell only whether the results are right.
#include <gtest/gtest.h>
#include <json/value.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "TokenTemplateHandlers/clock_handler.h"
#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "TokenTemplateResolver/time_format.h"
#include "files.h"
#include "page/page_host.h"
#include "support/json.h"

namespace {

constexpr int threadCount = 8;
constexpr int rounds = 20;

/// Runs `work` in eight threads, which are given their numbers and start at the same time.
void InThreads(const std::function<void(int)>& work) {
  std::atomic<int> waiting{threadCount};
  std::vector<std::thread> threads;
  for (int number = 0; number < threadCount; ++number) {
    threads.emplace_back([&waiting, &work, number] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      work(number);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

/// A page with every kind of element; the empty members take the library's constants, the bounds
/// outside of any others its null value.
constexpr char everyElement[] = R"j({"Contents":[
    {"Context":{"unit":"C"},"Display":[],"Prec":[],"Play":[],"Contents":["Icons/A.PNG"]},
    {"Bounds":["5%",1,"50%",7,"8","9"],"Display":["#FFCC00FF","#1,2","#1 2 3"],"Prec":["4"],
      "Play":[1],"RenderType":1024,"Contents":["$(volume)","$(volume+1) Ä.PNG",
        {"Loop":{"List":"$(rows)","Value":"row","Var":"i","CellWidth":9,"CellHeight":9,
          "Layout":[[[0,0],["50%",0],[9,9]]],"Contents":["$(rows[2])","$(rows#)","$(real)"]}}]},
    {"Loop":{"List":"a,b,c","Value":"letter","Bounds":[1,2,3,4],"Contents":["$(volume*2)"]}},
    {"If":{"Condition":"$(volume)",">":6,"Contents":["loud"]}},
    {"Include":{"Filename":"$(file)"}}]})j";

const Json::Value values = Parse(R"({"volume": 7, "rows": [1, 2, "x"], "real": 1.5, "file":
    ")" TTR_SOURCE_DIR R"(/examples/volume.json"})");

/// The handlers of `values`, registered.
class CValues {
 public:
  CValues() {
    for (const std::string& name : values.getMemberNames()) {
      m_handlers.push_back(std::make_unique<CJsonHandler>(values[name]));
      tokens.Set(name, m_handlers.back().get());
    }
  }

  CTokenResolver tokens;

 private:
  std::vector<std::unique_ptr<CJsonHandler>> m_handlers;
};

/// What the passes of a resolver of its own give, one a line.
std::string Passes(const CTokenResolver& tokens, const std::string& page, int count) {
  CTemplateStack stack;
  CTemplateResolver resolver(&tokens, &stack);
  std::string results;
  for (int pass = 0; pass < count; ++pass) {
    resolver.Input(page);
    resolver.Process();
    results += resolver.Output() + "\n";
  }
  return results;
}

/// The same with registry and handlers of its own too.
std::string PassesAlone(const std::string& page, int count) {
  return Passes(CValues().tokens, page, count);
}

// Stands first and resolves nothing before: it is the first use in its process of what is built on
// first use. ctest runs each test in a process of its own.
TEST(Threads, RaceForTheFirstUseOfTheConstants) {
  std::vector<std::string> results(threadCount);
  InThreads([&](int number) {
    results[static_cast<std::size_t>(number)] = PassesAlone(everyElement, 1);
  });
  for (const std::string& result : results) EXPECT_EQ(result, PassesAlone(everyElement, 1));
}

TEST(Threads, HaveResolversOfTheirOwn) {
  const std::string folder = TTR_SOURCE_DIR "/examples/lobby/";
  const std::string page = ttr::readText(folder + "template.json");
  Json::Value lobby = Parse(ttr::readText(folder + "values.json"));
  lobby["theme"]["dir"] = folder;
  const auto resolve = [&] {
    ttr::CPageHost host(lobby, {1280, 720});
    host.ServeVariablesOf(page);
    std::string results;
    for (int round = 0; round < rounds; ++round) results += host.Pass(page) + "\n";
    return results + PassesAlone(everyElement, rounds);
  };
  const std::string expected = resolve();
  std::vector<std::string> results(threadCount);
  InThreads([&](int number) { results[static_cast<std::size_t>(number)] = resolve(); });
  for (const std::string& result : results) EXPECT_EQ(result, expected);
}

TEST(Threads, ShareARegistry) {
  const CValues shared;
  const std::string expected = PassesAlone(everyElement, rounds);
  std::vector<std::string> results(threadCount);
  InThreads([&](int number) {
    results[static_cast<std::size_t>(number)] = Passes(shared.tokens, everyElement, rounds);
  });
  for (const std::string& result : results) EXPECT_EQ(result, expected);
}

TEST(Threads, SerialiseClocksWithALockForEachProcess) {
  const std::string page = R"j({"Contents":["$(clock:%A %d %B %Y)","Icons/Ä.PNG"]})j";
  const auto resolve = [&](std::mutex& lock) {
    CClockHandler clock("de_DE");
    clock.SetTime(4102488000);
    CTokenResolver tokens;
    tokens.Set("clock", &clock);
    std::string results;
    for (int round = 0; round < rounds; ++round) {
      const std::lock_guard<std::mutex> guard(lock);
      results += Passes(tokens, page, 1) + tf::formatTimeUTC(round, "de_DE", "%A %X") +
                 tf::formatTimeLocal(round, "", "%c") + tf::formatTimeRemaining(round, "%H:%M");
    }
    return results;
  };
  std::mutex lock;
  const std::string expected = resolve(lock);
  EXPECT_NE(expected.find("Freitag 01 Januar 2100"), std::string::npos) << expected;
  std::vector<std::string> results(threadCount);
  InThreads([&](int number) { results[static_cast<std::size_t>(number)] = resolve(lock); });
  for (const std::string& result : results) EXPECT_EQ(result, expected);
}

TEST(Threads, WriteMessagesAtTheSameTime) {
  const std::string page = R"j({"Contents":["$(unknown)","$(volume",{"Include":{}}]})j";
  const std::string expected = PassesAlone(page, rounds);
  std::vector<std::string> results(threadCount);
  InThreads(
      [&](int number) { results[static_cast<std::size_t>(number)] = PassesAlone(page, rounds); });
  for (const std::string& result : results) EXPECT_EQ(result, expected);
}

}  // namespace
