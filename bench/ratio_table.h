#ifndef BENCH_RATIO_TABLE_H
#define BENCH_RATIO_TABLE_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

// The counters of a benchmark that has a floor: the ratio, the others for one unit of the workload.
inline constexpr char resolverTime[] = "resolver_ns";
inline constexpr char floorTime[] = "floor_ns";
inline constexpr char timeRatio[] = "ratio";
inline constexpr char resolverAllocations[] = "resolver_allocations";
inline constexpr char floorAllocations[] = "floor_allocations";

/// Prints one line for each benchmark: the resolver, its floor and the ratio. With repetitions it
/// shows their medians.
class CRatioTable : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Prints how the cost of a unit grows with the size of the page.
  void Finalize() override;

 private:
  void reportRatio(const std::string& name, const benchmark::UserCounters& counters);
  void reportGrowth(const std::string& from, const std::string& to) const;

  std::map<std::string, benchmark::UserCounters> m_reported;
};

}  // namespace bench

#endif  // BENCH_RATIO_TABLE_H
