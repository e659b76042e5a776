#ifndef SRC_UTIL_REPORT_H
#define SRC_UTIL_REPORT_H

#include <iostream>

namespace ttr {

/// Writes one diagnostic line, made of `parts`, to standard error. Callers write the text out in
/// full, so that a search for a message finds the place that reports it.
template <typename... Parts>
void report(const Parts&... parts) {
  (std::cerr << ... << parts) << std::endl;
}

}  // namespace ttr

#endif  // SRC_UTIL_REPORT_H
