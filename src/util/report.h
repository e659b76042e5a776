#ifndef SRC_UTIL_REPORT_H
#define SRC_UTIL_REPORT_H

#include <iostream>
#include <sstream>

#include "util/trace_point.h"

namespace ttr {

/// Tells the program's trace, if it has one, of the line that `parts` make on standard error.
template <typename... Parts>
[[gnu::cold]] void tellReport(const Parts&... parts) {
  std::ostringstream text;
  (text << ... << parts);
  tellMessage(text.str());
}

/// Writes one diagnostic line, made of `parts`, to standard error. Callers write the text out in
/// full, so that a search for a message finds the place that reports it.
template <typename... Parts>
void report(const Parts&... parts) {
  if (isTraced()) tellReport(parts...);
  (std::cerr << ... << parts) << std::endl;
}

}  // namespace ttr

#endif  // SRC_UTIL_REPORT_H
