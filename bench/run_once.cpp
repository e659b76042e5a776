// Runs one side of a workload once, to see from outside what memory it needs.
//
//     run_once files WORKLOAD SCRATCH EXAMPLES   writes SCRATCH/template.json and .../resolved.json
//     run_once road  WORKLOAD SCRATCH EXAMPLES   resolves the template
//     run_once floor WORKLOAD SCRATCH EXAMPLES   parses the template, copies and writes the result
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "workload_host.h"
#include "workloads.h"

namespace {

std::string resolvedFile(const std::string& folder) { return folder + "/resolved.json"; }

void writeFiles(const bench::CWorkload& workload, const std::string& folder) {
  std::ofstream(folder + "/template.json") << workload.page;
  std::ofstream(resolvedFile(folder)) << bench::CWorkloadHost(workload).Road();
}

void runFloor(const bench::CWorkload& workload, const std::string& folder) {
  std::ostringstream resolved;
  resolved << std::ifstream(resolvedFile(folder)).rdbuf();
  bench::CFloor(workload, resolved.str()).Run();
}

void run(const std::string& side, const bench::CWorkload& workload, const std::string& folder) {
  if (side == "files") {
    writeFiles(workload, folder);
  } else if (side == "road") {
    bench::keep(bench::CWorkloadHost(workload).Road());
  } else if (side == "floor") {
    runFloor(workload, folder);
  } else {
    throw std::invalid_argument("no side " + side);
  }
}

bench::CWorkload workloadNamed(const std::string& name, const std::string& folder,
                               const std::string& examples) {
  for (const bench::CWorkload& workload : bench::allWorkloads(folder, examples)) {
    if (workload.name == name) return workload;
  }
  throw std::invalid_argument("no workload " + name);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 5) {
    std::cerr << "usage: run_once files|road|floor WORKLOAD SCRATCH EXAMPLES\n";
    return 2;
  }
  const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
  try {
    run(words[0], workloadNamed(words[1], words[2], words[3]), words[2]);
  } catch (const std::exception& error) {
    std::cerr << "run_once: " << error.what() << '\n';
    return 1;
  }
}
