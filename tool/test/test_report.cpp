#include "test/test_report.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iomanip>
#include <locale>
#include <sstream>

#include "text/output_options.h"
#include "text/printable.h"
#include "text/xml_text.h"

namespace ttr {
namespace {

/// Lines of a unified diff in the colours that they usually have.
std::string coloured(const std::string& diff, bool colour) {
  std::string text;
  std::istringstream lines(diff);
  for (std::string line; std::getline(lines, line);) {
    const char mark = line.empty() ? ' ' : line[0];
    const eTextStyle style = mark == '-' ? styleRed : mark == '+' ? styleGreen : styleCyan;
    text += styled(line, style, colour && (mark == '-' || mark == '+' || mark == '@')) + '\n';
  }
  return text;
}

bool failed(const CCaseResult& result) { return !result.failure.empty(); }

std::size_t failures(const std::vector<CCaseResult>& results) {
  return static_cast<std::size_t>(std::count_if(results.begin(), results.end(), failed));
}

std::size_t updates(const std::vector<CCaseResult>& results) {
  return static_cast<std::size_t>(
      std::count_if(results.begin(), results.end(),
                    [](const CCaseResult& result) { return !result.updated.empty(); }));
}

/// Seconds as a decimal fraction, whatever the locale.
std::string secondsText(double seconds) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << std::fixed << std::setprecision(3) << seconds;
  return text.str();
}

std::string attribute(const char* name, const std::string& value) {
  return ' ' + std::string(name) + "=\"" + xmlText(value) + '"';
}

std::string totals(const std::vector<CCaseResult>& results) {
  double seconds = 0;
  for (const CCaseResult& result : results) seconds += result.seconds;
  return attribute("tests", std::to_string(results.size())) +
         attribute("failures", std::to_string(failures(results))) + attribute("errors", "0") +
         attribute("time", secondsText(seconds));
}

std::string testcase(const std::string& directory, const CCaseResult& result) {
  const std::string name =
      std::filesystem::path(result.folder).lexically_relative(directory).generic_string();
  const std::string start = "    <testcase" + attribute("classname", directory) +
                            attribute("name", name) +
                            attribute("time", secondsText(result.seconds));
  if (!failed(result)) return start + "/>\n";
  return start + ">\n      <failure" + attribute("message", result.failure) + '>' +
         xmlText(result.diff) + "</failure>\n    </testcase>\n";
}

}  // namespace

std::string caseReport(const CCaseResult& result, bool colour) {
  std::string text;
  if (failed(result)) {
    text = styled("FAILED", styleRed, colour) + ' ' +
           printable(result.folder + ": " + result.failure) + '\n';
  }
  for (const std::string& file : result.updated) {
    text += styled("updated", styleYellow, colour) + ' ' + printable(file) + '\n';
  }
  return text + coloured(result.diff, colour);
}

std::string summary(const std::vector<CCaseResult>& results, bool colour) {
  const std::size_t bad = failures(results);
  const std::size_t updated = updates(results);
  const std::string text = (updated == 0 ? "" : std::to_string(updated) + " updated, ") +
                           std::to_string(results.size() - updated - bad) + " passed, " +
                           std::to_string(bad) + " failed";
  return styled(text, bad == 0 ? styleGreen : styleRed, colour) + '\n';
}

std::string junitReport(const std::string& directory, const std::vector<CCaseResult>& results) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + totals(results) +
                     ">\n  <testsuite" + attribute("name", directory) + totals(results) + ">\n";
  for (const CCaseResult& result : results) text += testcase(directory, result);
  return text + "  </testsuite>\n</testsuites>\n";
}

}  // namespace ttr
