// The grid page, made by turns by the resolver, by JsonCpp alone (the floor) and, when the compiler
// finds its header, by inja.
//
//     time_cells times  INJA_TEMPLATE   prints "ENGINE|MEASURED|CELLS|MICROSECONDS", for one cell
//     time_cells misses INJA_TEMPLATE   makes each page once for callgrind, a dump for each, named
//                                       "ENGINE|MEASURED|CELLS"
#include <valgrind/callgrind.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "../workload_host.h"
#include "../workloads.h"
#include "TokenTemplateResolver/json_text.h"

#if __has_include(<inja.hpp>)
#define WITH_INJA
#include <inja.hpp>
#endif

namespace {

using Clock = std::chrono::steady_clock;

/// A way to make the page.
struct CEngine {
  std::string name;
  std::string measured;
  std::function<std::string()> pass;      ///< returns the page; the floor keeps it
  std::function<void()> prepare = [] {};  ///< before each pass, not measured
  std::vector<double> rounds{};           ///< nanoseconds of a pass in each round
};

std::vector<CEngine> ourEngines(const bench::CWorkload& grid) {
  const auto fresh = std::make_shared<std::unique_ptr<bench::CWorkloadHost>>();
  const auto steady = std::make_shared<bench::CWorkloadHost>(grid);
  const auto floor = std::make_shared<bench::CFloor>(grid, bench::firstResult(grid));
  steady->Start();
  for (int pass = 1; pass < 3; ++pass) bench::keep(steady->Pass(grid.page));
  return {{"this resolver", "steady pass", [=] { return steady->Pass(grid.page); }},
          {"this resolver", "first pass",
           [=] {
             (*fresh)->Start();
             return (*fresh)->Pass(grid.page);
           },
           [=] { *fresh = std::make_unique<bench::CWorkloadHost>(grid); }},
          {"JsonCpp alone", "parse + copy + write", [=] {
             floor->Run();
             return std::string();
           }}};
}

#ifdef WITH_INJA

/// inja with the functions that its template calls, and its values.
struct CInja {
  inja::Environment environment;
  inja::json values;
  inja::Template parsed;
};

void addFunctions(inja::Environment& environment) {
  environment.add_callback("floor", 1, [](const inja::Arguments& arguments) {
    return static_cast<int>(arguments[0]->get<double>());
  });
  environment.add_callback("percent", 2, [](const inja::Arguments& arguments) {
    return std::stoi(arguments[0]->get_ref<const std::string&>()) * arguments[1]->get<int>() / 100;
  });
  environment.add_callback("colour", 1, [](const inja::Arguments& arguments) {
    const auto& text = arguments[0]->get_ref<const std::string&>();
    return std::stoul(text.substr(7) + text.substr(1, 6), nullptr, 16);
  });
  environment.add_callback("joined", 3, [](const inja::Arguments& arguments) {
    return arguments[0]->get_ref<const std::string&>() + std::to_string(arguments[1]->get<int>()) +
           arguments[2]->get_ref<const std::string&>();
  });
}

/// The text that a template makes is parsed too: it is inja's way to a document.
std::string injaPage(CInja& inja, const inja::Template& parsed) {
  std::string page = inja.environment.render(parsed, inja.values);
  bench::keep(inja::json::parse(page));
  return page;
}

std::vector<CEngine> injaEngines(int cells, const std::string& text) {
  const auto inja = std::make_shared<CInja>();
  addFunctions(inja->environment);
  inja->values = {{"title", "Dish"}, {"count", cells}};
  inja->parsed = inja->environment.parse(text);
  const std::string name = "inja";
  return {{name, "parse + render + parse result",
           [=] { return injaPage(*inja, inja->environment.parse(text)); }},
          {name, "render + parse result", [=] { return injaPage(*inja, inja->parsed); }}};
}

#else

std::vector<CEngine> injaEngines(int /*cells*/, const std::string& /*text*/) { return {}; }

#endif

/// An engine that makes another document is an error.
void check(const CEngine& engine, const bench::CWorkload& grid) {
  const std::string page = engine.pass();
  std::string errors;
  const Json::Value expected = jsoncpp_string::toJsonObject(bench::firstResult(grid), &errors);
  if (jsoncpp_string::toJsonObject(page, &errors) == expected) return;
  throw std::runtime_error(engine.name + " makes another page of " + grid.name);
}

std::vector<CEngine> enginesFor(const bench::CWorkload& grid, const std::string& text) {
  std::vector<CEngine> engines = ourEngines(grid);
  for (const CEngine& engine : injaEngines(grid.units, text)) {
    check(engine, grid);
    engines.push_back(engine);
  }
  return engines;
}

/// Nanoseconds of a pass, over about a tenth of a second.
double timeOf(const CEngine& engine) {
  constexpr double enough = 1e8;
  double nanoseconds = 0;
  int passes = 0;
  for (; nanoseconds < enough; ++passes) {
    engine.prepare();
    const Clock::time_point start = Clock::now();
    bench::keep(engine.pass());
    nanoseconds += std::chrono::duration<double, std::nano>(Clock::now() - start).count();
  }
  return nanoseconds / passes;
}

std::string label(const CEngine& engine, const bench::CWorkload& grid) {
  return engine.name + "|" + engine.measured + "|" + std::to_string(grid.units);
}

void printTimes(std::vector<CEngine> engines, const bench::CWorkload& grid) {
  constexpr std::size_t rounds = 15;
  for (CEngine& engine : engines) timeOf(engine);  // a warm-up
  for (std::size_t round = 0; round < rounds; ++round) {
    for (CEngine& engine : engines) engine.rounds.push_back(timeOf(engine));
  }
  for (CEngine& engine : engines) {
    std::sort(engine.rounds.begin(), engine.rounds.end());
    const double median = engine.rounds[rounds / 2];
    std::cout << label(engine, grid) << '|' << median / 1000 / grid.units << '\n';
  }
}

void countMisses(const std::vector<CEngine>& engines, const bench::CWorkload& grid) {
  for (const CEngine& engine : engines) {
    CALLGRIND_START_INSTRUMENTATION;
    engine.prepare();
    bench::keep(engine.pass());  // fills the caches
    engine.prepare();
    CALLGRIND_ZERO_STATS;
    bench::keep(engine.pass());
    CALLGRIND_STOP_INSTRUMENTATION;
    const std::string name = label(engine, grid);
    CALLGRIND_DUMP_STATS_AT(name.c_str());
  }
}

void run(bool misses, const std::string& text) {
  for (const int cells : {100, 1000}) {
    const bench::CWorkload grid = bench::grid(cells);
    const std::vector<CEngine> engines = enginesFor(grid, text);
    if (misses) {
      countMisses(engines, grid);
    } else {
      printTimes(engines, grid);
    }
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const std::string side = argumentCount == 3 ? arguments[1] : "";
  if (side != "times" && side != "misses") {
    std::cerr << "usage: time_cells times|misses INJA_TEMPLATE\n";
    return 2;
  }
  std::ostringstream text;
  text << std::ifstream(arguments[2]).rdbuf();
  try {
    run(side == "misses", text.str());
  } catch (const std::exception& error) {
    std::cerr << "time_cells: " << error.what() << '\n';
    return 1;
  }
}
