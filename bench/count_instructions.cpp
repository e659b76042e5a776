// Runs each workload and has the instructions counted. A count is named after the workload, the
// pass or the floor, the step, and the number of units.
//
//     count_instructions EXAMPLES           the example pages
//     count_instructions EXAMPLES SCRATCH   all workloads and the tokens; SCRATCH takes files
#include <iostream>
#include <stdexcept>
#include <string>

#include "instruction_mark.h"
#include "token_bodies.h"
#include "workload_host.h"
#include "workloads.h"

namespace {

/// The pass that is counted as steady. The rotating loops of the examples have come round by then,
/// so that it makes the same document as the first.
constexpr int steadyPass = 7;

template <typename Step>
void count(const std::string& name, int units, Step step) {
  const std::string mark = name + " " + std::to_string(units);
  bench::beginCount(mark);
  step();
  bench::endCount(mark);
}

/// Counts a pass, which `start` is a part of, step by step.
template <typename Start>
void countPass(const bench::CWorkload& workload, const std::string& pass,
               bench::CWorkloadHost& host, const std::string& expected, Start start) {
  const std::string name = workload.name + " " + pass;
  std::string result;
  count(name + " input", workload.units, [&] {
    start();
    host.Input(workload.page);
  });
  count(name + " process", workload.units, [&] { host.Process(); });
  count(name + " output", workload.units, [&] { result = host.Output(); });
  if (result != expected) throw std::runtime_error("another document: " + name);
}

void countWorkload(const bench::CWorkload& workload) {
  // What a program does but once, such as binding symbols, is done here and not counted.
  const std::string resolved = bench::firstResult(workload);
  bench::CWorkloadHost host(workload);
  countPass(workload, "first", host, resolved, [&] { host.Start(); });
  for (int pass = 2; pass < steadyPass; ++pass) bench::keep(host.Pass(workload.page));
  countPass(workload, "steady", host, resolved, [] {});

  const bench::CFloor floor(workload, resolved);
  count(workload.name + " floor parse", workload.units, [&] { floor.Parse(); });
  count(workload.name + " floor copy", workload.units, [&] { floor.Copy(); });
  count(workload.name + " floor write", workload.units, [&] { floor.Write(); });
}

void countTokens(int handlers) {
  const bench::CTokenHost host(handlers);
  for (const bench::CTokenBody& body : bench::tokenBodies) {
    bench::keep(host.Resolve(body));
    const std::string name = "tokens/" + std::string(body.name) + "/" + std::to_string(handlers);
    count(name + " token value", 1, [&] { bench::keep(host.Resolve(body)); });
  }
}

void countAll(const std::string& examples, const std::string& scratch) {
  for (const bench::CWorkload& workload : bench::allWorkloads(scratch, examples)) {
    countWorkload(workload);
  }
  for (const int handlers : bench::handlerCounts) countTokens(handlers);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2 && argumentCount != 3) {
    std::cerr << "usage: count_instructions EXAMPLES [SCRATCH]\n";
    return 2;
  }
  try {
    if (argumentCount == 3) {
      countAll(arguments[1], arguments[2]);
    } else {
      for (const bench::CWorkload& page : bench::examplePages(arguments[1])) countWorkload(page);
    }
  } catch (const std::exception& error) {
    std::cerr << "count_instructions: " << error.what() << '\n';
    return 1;
  }
}
