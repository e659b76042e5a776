// Runs each workload once under callgrind, which writes one dump for each part: the instructions
// between two marks. The name of a dump holds the workload, the part, and the number of units.
//
//     valgrind --tool=callgrind --instr-atstart=no count_instructions SCRATCH EXAMPLES
#include <valgrind/callgrind.h>

#include <iostream>
#include <string>

#include "token_bodies.h"
#include "workload_host.h"
#include "workloads.h"

namespace {

/// Counts the instructions of `step`, the `part` of the workload `name`.
template <typename Step>
void count(const std::string& name, const std::string& part, int units, Step step) {
  const std::string mark = name + " " + part + " " + std::to_string(units);
  CALLGRIND_START_INSTRUMENTATION;
  step();
  CALLGRIND_STOP_INSTRUMENTATION;
  CALLGRIND_DUMP_STATS_AT(mark.c_str());
}

void countWorkload(const bench::CWorkload& workload) {
  bench::CWorkloadHost host(workload);
  const std::string resolved = host.Road();
  const bench::CFloor floor(workload, resolved);
  // The floor's copy frees what it made; the document that Process made is freed by Input.
  count(workload.name, "input", workload.units, [&] { host.Input(); });
  count(workload.name, "process", workload.units, [&] { host.Process(); });
  count(workload.name, "output", workload.units, [&] { bench::keep(host.Output()); });
  count(workload.name, "parse", workload.units, [&] { floor.Parse(); });
  count(workload.name, "copy", workload.units, [&] { floor.Copy(); });
  count(workload.name, "write", workload.units, [&] { floor.Write(); });
  if (workload.unit == "cell") {
    bench::CGridSteps grid(workload, resolved);
    count(workload.name, "steps", workload.units, [&] { grid.Run(); });
  }
}

void countTokens(int handlers) {
  const bench::CTokenHost host(handlers);
  for (const bench::CTokenBody& body : bench::tokenBodies) {
    bench::keep(host.Resolve(body));
    count("tokens/" + std::string(body.name) + "/" + std::to_string(handlers), "value", 1,
          [&] { bench::keep(host.Resolve(body)); });
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    std::cerr << "usage: count_instructions SCRATCH EXAMPLES\n";
    return 2;
  }
  for (const bench::CWorkload& workload : bench::allWorkloads(arguments[1], arguments[2])) {
    countWorkload(workload);
  }
  for (const int handlers : bench::handlerCounts) countTokens(handlers);
}
