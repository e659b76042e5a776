// The benchmarks: passes of each workload run by turns with the floor, in the same process, so that
// what disturbs one disturbs the other; the ratio is the figure. Prints one table.
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

/// The pass of a resolver that has seen nothing yet. What the pass leaves behind is freed with the
/// host, which is not measured.
void timeFirstPass(benchmark::State& state, const bench::CWorkload& workload) {
  const bench::CFloor floor(workload, bench::firstResult(workload));
  CCost pass;
  CCost least;
  while (state.KeepRunning()) {
    bench::CWorkloadHost host(workload);
    pass.add([&] {
      host.Start();
      bench::keep(host.Pass(workload.page));
    });
    least.add([&] { floor.Run(); });
  }
  report(state, workload.units, pass, least);
}

/// The third pass of the same text and those after it. Each frees what the one before left behind.
void timeSteadyPass(benchmark::State& state, const bench::CWorkload& workload) {
  bench::CWorkloadHost host(workload);
  host.Start();
  const bench::CFloor floor(workload, host.Pass(workload.page));
  bench::keep(host.Pass(workload.page));
  CCost pass;
  CCost least;
  while (state.KeepRunning()) {
    pass.add([&] { bench::keep(host.Pass(workload.page)); });
    least.add([&] { floor.Run(); });
  }
  report(state, workload.units, pass, least);
}

/// One token, asked of a registry alone. It has no floor.
void timeToken(benchmark::State& state, const bench::CTokenBody& body, int handlers) {
  const bench::CTokenHost host(handlers);
  while (state.KeepRunning()) bench::keep(host.Resolve(body));
}

void registerWorkload(const bench::CWorkload& workload, const char* pass,
                      void (*measure)(benchmark::State&, const bench::CWorkload&)) {
  benchmark::RegisterBenchmark(
      (workload.name + pass).c_str(),
      [&workload, measure](benchmark::State& state) { measure(state, workload); });
}

void registerWorkloads(const std::vector<bench::CWorkload>& workloads) {
  for (const bench::CWorkload& workload : workloads) {
    registerWorkload(workload, "/first", timeFirstPass);
    registerWorkload(workload, "/steady", timeSteadyPass);
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
