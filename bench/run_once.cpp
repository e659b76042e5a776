// Runs one side of a workload, to see from outside what memory it needs.
//
//     run_once files  WORKLOAD SCRATCH EXAMPLES  writes SCRATCH/template.json and .../resolved.json
//     run_once first  WORKLOAD SCRATCH EXAMPLES  resolves the template
//     run_once steady WORKLOAD SCRATCH EXAMPLES  resolves it three times, with one resolver
//     run_once floor  WORKLOAD SCRATCH EXAMPLES  parses the template, copies and writes the result
//     run_once pages ROUNDS EXAMPLES             resolves the example pages by turns, each ROUNDS
//                                                times, with one resolver
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
  std::ofstream(resolvedFile(folder)) << bench::firstResult(workload);
}

void runFloor(const bench::CWorkload& workload, const std::string& folder) {
  std::ostringstream resolved;
  resolved << std::ifstream(resolvedFile(folder)).rdbuf();
  bench::CFloor(workload, resolved.str()).Run();
}

void runRounds(const std::vector<bench::CWorkload>& workloads, int rounds) {
  bench::CWorkloadHost host(workloads.back());
  // Two pages may name a value. The first has the fuller one: the clock of the lobby has a date.
  for (auto each = workloads.rbegin(); each != workloads.rend(); ++each) host.Serve(*each);
  host.Start();
  for (int round = 0; round < rounds; ++round) {
    for (const bench::CWorkload& workload : workloads) bench::keep(host.Pass(workload.page));
  }
}

void run(const std::string& side, const bench::CWorkload& workload, const std::string& folder) {
  if (side == "files") {
    writeFiles(workload, folder);
  } else if (side == "first") {
    runRounds({workload}, 1);
  } else if (side == "steady") {
    runRounds({workload}, 3);
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
  const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
  const bool pages = words.size() == 3 && words[0] == "pages";
  if (!pages && words.size() != 4) {
    std::cerr << "usage: run_once files|first|steady|floor WORKLOAD SCRATCH EXAMPLES\n"
                 "       run_once pages ROUNDS EXAMPLES\n";
    return 2;
  }
  try {
    if (pages) {
      runRounds(bench::examplePages(words[2]), std::stoi(words[1]));
    } else {
      run(words[0], workloadNamed(words[1], words[2], words[3]), words[2]);
    }
  } catch (const std::exception& error) {
    std::cerr << "run_once: " << error.what() << '\n';
    return 1;
  }
}
