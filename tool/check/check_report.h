#ifndef TOOL_CHECK_CHECK_REPORT_H
#define TOOL_CHECK_CHECK_REPORT_H

#include <map>
#include <string>
#include <vector>

#include "page/fault.h"

namespace ttr {

/// What a run of `ttr check` found.
struct CCheckReport {
  std::vector<std::string> pages;
  std::vector<CFault> faults;
  std::vector<std::string> failures;         ///< pages that could not be checked, and why
  std::map<std::string, std::string> texts;  ///< of the files, by the names that places have
};

std::string jsonReport(const CCheckReport& report);

/// A log in SARIF 2.1.0, the form in which services show what checkers found.
std::string sarifReport(const CCheckReport& report, const std::string& version, int exitCode);

}  // namespace ttr

#endif  // TOOL_CHECK_CHECK_REPORT_H
