// The benchmarks: each part of a workload runs by turns with its floor, in the same process, so
// that what disturbs one disturbs the other; the ratio is the figure. Prints one table.
//
//     time_workloads SCRATCH EXAMPLES [--benchmark_filter=... and Google Benchmark's other flags]
#include <benchmark/benchmark.h>

#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include "allocation_count.h"
#include "ratio_table.h"
#include "token_bodies.h"
#include "workload_host.h"
#include "workloads.h"

namespace {

using Clock = std::chrono::steady_clock;

/// Time and allocations of one step, summed over the iterations.
struct CCost {
  double nanoseconds = 0;
  double allocations = 0;

  template <typename Step>
  void add(Step step) {
    const long allocationsBefore = bench::allocationCount();
    const Clock::time_point start = Clock::now();
    step();
    nanoseconds += std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    allocations += static_cast<double>(bench::allocationCount() - allocationsBefore);
  }
};

/// Reports both costs for one unit of the workload; their ratio is taken from the sums.
void report(benchmark::State& state, int units, const CCost& resolver, const CCost& floor) {
  const double perUnit = 1.0 / (static_cast<double>(state.iterations()) * units);
  state.counters[bench::resolverTime] = resolver.nanoseconds * perUnit;
  state.counters[bench::floorTime] = floor.nanoseconds * perUnit;
  state.counters[bench::timeRatio] = resolver.nanoseconds / floor.nanoseconds;
  state.counters[bench::resolverAllocations] = resolver.allocations * perUnit;
  state.counters[bench::floorAllocations] = floor.allocations * perUnit;
}

/// Process beside a copy-and-free of the resolved document.
void timeProcess(benchmark::State& state, const bench::CWorkload& workload) {
  bench::CWorkloadHost host(workload);
  const bench::CFloor floor(workload, host.Road());
  CCost process;
  CCost copy;
  while (state.KeepRunning()) {
    host.Input();
    process.add([&] { host.Process(); });
    copy.add([&] { floor.Copy(); });
  }
  report(state, workload.units, process, copy);
}

/// What the design of a grid fixes, beside the same copy-and-free.
void timeGridSteps(benchmark::State& state, const bench::CWorkload& workload) {
  const std::string resolved = bench::CWorkloadHost(workload).Road();
  const bench::CFloor floor(workload, resolved);
  bench::CGridSteps grid(workload, resolved);
  CCost steps;
  CCost copy;
  while (state.KeepRunning()) {
    grid.Clear();
    steps.add([&] { grid.Run(); });
    copy.add([&] { floor.Copy(); });
  }
  report(state, workload.units, steps, copy);
}

/// The whole road beside its floor.
void timeRoad(benchmark::State& state, const bench::CWorkload& workload) {
  bench::CWorkloadHost host(workload);
  const bench::CFloor floor(workload, host.Road());
  CCost road;
  CCost least;
  while (state.KeepRunning()) {
    road.add([&] { bench::keep(host.Road()); });
    least.add([&] { floor.Run(); });
  }
  report(state, workload.units, road, least);
}

/// One token, asked of a registry alone. It has no floor.
void timeToken(benchmark::State& state, const bench::CTokenBody& body, int handlers) {
  const bench::CTokenHost host(handlers);
  while (state.KeepRunning()) bench::keep(host.Resolve(body));
}

void registerWorkload(const bench::CWorkload& workload, const char* part,
                      void (*measure)(benchmark::State&, const bench::CWorkload&)) {
  benchmark::RegisterBenchmark(
      (workload.name + part).c_str(),
      [&workload, measure](benchmark::State& state) { measure(state, workload); });
}

void registerWorkloads(const std::vector<bench::CWorkload>& workloads) {
  for (const bench::CWorkload& workload : workloads) {
    if (workload.unit == "cell") registerWorkload(workload, "/steps", timeGridSteps);
    registerWorkload(workload, "/process", timeProcess);
    registerWorkload(workload, "/road", timeRoad);
  }
}

void registerTokens() {
  for (const int handlers : bench::handlerCounts) {
    for (const bench::CTokenBody& body : bench::tokenBodies) {
      const std::string name = "tokens/" + std::string(body.name) + "/" + std::to_string(handlers);
      benchmark::RegisterBenchmark(name.c_str(), [body, handlers](benchmark::State& state) {
        timeToken(state, body, handlers);
      });
    }
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  benchmark::Initialize(&argumentCount, arguments);
  if (argumentCount != 3) {
    std::cerr << "usage: time_workloads SCRATCH EXAMPLES [--benchmark_...]\n";
    return 2;
  }
  const std::vector<bench::CWorkload> workloads = bench::allWorkloads(arguments[1], arguments[2]);
  registerWorkloads(workloads);
  registerTokens();
  bench::CRatioTable table;
  benchmark::RunSpecifiedBenchmarks(&table);
}
