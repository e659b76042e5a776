#include "ratio_table.h"

#include <cstdio>

namespace bench {
namespace {

/// The greatest ratio allowed to a benchmark, told by the start and the end of its name.
struct CTarget {
  const char* kind;
  const char* part;
  double ratio;
};

constexpr CTarget targets[] = {
    {"grid/", "/process", 2.5},
    {"grid/", "/road", 1.35},
    {"static/", "/road", 1.35},
    {"rotate/", "/road", 1.5},
};

bool startsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

bool endsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// "target met" or "target missed", nothing for a benchmark without a target.
std::string verdict(const std::string& name, double ratio) {
  for (const CTarget& target : targets) {
    if (!startsWith(name, target.kind) || !endsWith(name, target.part)) continue;
    char text[40];
    std::snprintf(text, sizeof text, "%.2f %s", target.ratio,
                  ratio <= target.ratio ? "met" : "MISSED");
    return text;
  }
  return "";
}

}  // namespace

bool CRatioTable::ReportContext(const Context& /*context*/) {
  std::printf("%-22s %12s %12s %7s %9s %9s  %s\n", "benchmark", "resolver ns", "floor ns", "ratio",
              "mallocs", "floor's", "target");
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
      std::printf("%-22s %12.1f\n", name.c_str(), run.GetAdjustedRealTime());
    }
  }
  std::fflush(stdout);
}

void CRatioTable::reportRatio(const std::string& name, const benchmark::UserCounters& counters) {
  const double ratio = counters.at(timeRatio);
  std::printf("%-22s %12.1f %12.1f %7.2f %9.1f %9.1f  %s\n", name.c_str(),
              counters.at(resolverTime).value, counters.at(floorTime).value, ratio,
              counters.at(resolverAllocations).value, counters.at(floorAllocations).value,
              verdict(name, ratio).c_str());
  m_reported[name] = counters;
}

void CRatioTable::Finalize() {
  reportGrowth("grid/10/road", "grid/10000/road");
  reportGrowth("text/1000/road", "text/100000/road");
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
