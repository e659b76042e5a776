#ifndef TOOL_CHECK_RUN_MESSAGES_H
#define TOOL_CHECK_RUN_MESSAGES_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "page/page_run.h"

namespace ttr {

/// What a run of a page wrote, without its order: each message with the number of times, and the
/// exception that ended the run.
struct CRunMessages {
  std::map<std::string, std::size_t> counts;
  std::optional<std::string> exception;

  CRunMessages() = default;
  explicit CRunMessages(const CPageRun& run);

  bool empty() const { return counts.empty() && !exception; }
  std::size_t Count(const std::string& message) const;
  void Add(const std::string& message, std::size_t count);
};

/// What `run` wrote beyond `other`. An exception stays.
CRunMessages operator-(CRunMessages run, const CRunMessages& other);

}  // namespace ttr

#endif  // TOOL_CHECK_RUN_MESSAGES_H
