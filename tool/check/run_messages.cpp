#include "check/run_messages.h"

#include <algorithm>

namespace ttr {

CRunMessages::CRunMessages(const CPageRun& run) : exception(run.exception) {
  for (const std::string& message : run.messages) ++counts[message];
}

std::size_t CRunMessages::Count(const std::string& message) const {
  const auto found = counts.find(message);
  return found == counts.end() ? 0 : found->second;
}

void CRunMessages::Add(const std::string& message, std::size_t count) {
  if (count > 0) counts[message] += count;
}

CRunMessages operator-(CRunMessages run, const CRunMessages& other) {
  for (const auto& [message, count] : other.counts) {
    const auto found = run.counts.find(message);
    if (found == run.counts.end()) continue;
    found->second -= std::min(found->second, count);
    if (found->second == 0) run.counts.erase(found);
  }
  return run;
}

}  // namespace ttr
