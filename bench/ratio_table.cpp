#include "ratio_table.h"

#include <cstdio>

namespace bench {

bool CRatioTable::ReportContext(const Context& /*context*/) {
  std::printf("%-25s %12s %12s %7s %9s %9s\n", "benchmark", "resolver ns", "floor ns", "ratio",
              "mallocs", "floor's");
  return true;
}

void CRatioTable::ReportRuns(const std::vector<Run>& runs) {
  const bool repeated = runs.front().repetitions > 1;
  for (const Run& run : runs) {
    if (repeated && run.aggregate_name != "median") continue;
    const std::string& name = run.run_name.function_name;
    if (run.counters.count(timeRatio) > 0) {
      reportRatio(name, run.counters);
    } else {
      std::printf("%-25s %12.1f\n", name.c_str(), run.GetAdjustedRealTime());
    }
  }
  std::fflush(stdout);
}

void CRatioTable::reportRatio(const std::string& name, const benchmark::UserCounters& counters) {
  std::printf("%-25s %12.1f %12.1f %7.2f %9.1f %9.1f\n", name.c_str(),
              counters.at(resolverTime).value, counters.at(floorTime).value,
              counters.at(timeRatio).value, counters.at(resolverAllocations).value,
              counters.at(floorAllocations).value);
  m_reported[name] = counters;
}

void CRatioTable::Finalize() {
  for (const std::string pass : {"/first", "/steady"}) {
    reportGrowth("grid/10" + pass, "grid/10000" + pass);
    reportGrowth("text/1000" + pass, "text/100000" + pass);
  }
}

void CRatioTable::reportGrowth(const std::string& from, const std::string& to) const {
  const auto small = m_reported.find(from);
  const auto large = m_reported.find(to);
  if (small == m_reported.end() || large == m_reported.end()) return;
  const auto growth = [&](const char* counter) {
    return large->second.at(counter).value / small->second.at(counter).value;
  };
  std::printf("A unit of %s costs %.2f times one of %s; the floor's %.2f times.\n", to.c_str(),
              growth(resolverTime), from.c_str(), growth(floorTime));
}

}  // namespace bench
