#ifndef TOOL_TEST_TEST_REPORT_H
#define TOOL_TEST_TEST_REPORT_H

#include <string>
#include <vector>

#include "test/case_folder.h"

namespace ttr {

/// What happened to a case, for people: nothing when it passed.
std::string caseReport(const CCaseResult& result, bool colour);

/// "7 passed, 1 failed" as a line.
std::string summary(const std::vector<CCaseResult>& results, bool colour);

/// The results as a JUnit report, the cases of `directory` as one suite.
std::string junitReport(const std::string& directory, const std::vector<CCaseResult>& results);

}  // namespace ttr

#endif  // TOOL_TEST_TEST_REPORT_H
