#ifndef TOOL_CHECK_CHECK_REPORT_H
#define TOOL_CHECK_CHECK_REPORT_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "check/fault.h"

namespace ttr {

/// What a run of `ttr check` found.
struct CCheckReport {
  std::vector<std::string> pages;
  std::vector<CFault> faults;
  std::vector<std::string> failures;         ///< pages that could not be checked, and why
  std::map<std::string, std::string> texts;  ///< of the files, by the names that places have

  std::size_t Count(CFault::eLevel level) const;
  /// The same without warnings.
  CCheckReport OnlyErrors() const;
};

/// "error", "warning".
const char* levelName(CFault::eLevel level);

/// What is wrong, with suggestion and count, in one line.
std::string faultText(const CFault& fault);

/// A line for each fault, and one for each Include on the way to it, as compilers write them.
std::string textReport(const CCheckReport& report, bool colour);

std::string jsonReport(const CCheckReport& report);

/// A log in SARIF 2.1.0, the form in which services show what checkers found.
std::string sarifReport(const CCheckReport& report, const std::string& version, int exitCode);

}  // namespace ttr

#endif  // TOOL_CHECK_CHECK_REPORT_H
