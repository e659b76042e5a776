// `ttr test`: case folders in, and out which of them do not give what they are expected to.
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "files.h"
#include "test/case_folder.h"
#include "test/test_report.h"
#include "text/output_options.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CTestOptions {
  std::string directory;
  bool update = false;
  std::string junit;
  COutputOptions output;
};

int runTest(const CTestOptions& options) {
  const std::vector<std::string> folders = findCases(options.directory);
  if (folders.empty()) throw CToolError(options.directory, "no folder with a template.json in it");
  const bool colour = useColour(options.output, STDOUT_FILENO);
  const bool silent = options.junit == "-";
  std::vector<CCaseResult> results;
  for (const std::string& folder : folders) {
    results.push_back(options.update ? updateCase(folder) : checkCase(folder));
    const bool error = !results.back().failure.empty();
    if (!silent && (error || !options.output.quiet)) {
      writeStandardOutput(caseReport(results.back(), colour));
    }
  }
  if (!silent && !options.output.quiet) writeStandardOutput(summary(results, colour));
  const std::string report = junitReport(options.directory, results);
  if (options.junit == "-") {
    writeStandardOutput(report);
  } else if (!options.junit.empty()) {
    writeFile(options.junit, report);
  }
  const bool failed = std::any_of(results.begin(), results.end(), [](const CCaseResult& result) {
    return !result.failure.empty();
  });
  return failed ? 1 : 0;
}

constexpr char footer[] = R"(A case is a folder below DIR, or DIR itself, with these files:
  template.json   the page; its relative includes start from the folder
  values.json     the values of its tokens; none without it
  options         size=WIDTHxHEIGHT and pass=N, as for 'ttr resolve'; size=0x0 for no screen
  expected.json   the resolved page, however indented; empty for a page that ends in an exception
  expected.err    the library's lines on standard error; none without it. A page that ends in an
                  exception has the last line 'exception: ' and its text.

Examples:
  ttr test pages
  ttr test pages --update          # first write, or bring up to date, what is expected
  ttr test pages --junit report.xml

With -q only the cases that fail are reported: no updated file, and no summary.

Exit code: 0 when all cases pass or were updated, 1 when one fails, 2 when the command could not be
carried out, as for a DIR without any case.)";

}  // namespace

CCommand testCommand() {
  const auto options = std::make_shared<CTestOptions>();
  CCommand command{
      "test",
      "Compare pages with their expected results",
      footer,
      [options] { return runTest(*options); },
      {
          {"DIR", &options->directory, "Directory with the case folders"},
          {"--update", &options->update, "Write what pages give now where it differs"},
          {"--junit", &options->junit, "Write a JUnit report too, - for it alone", "FILE"},
      }};
  command.Add(outputOptions(options->output));
  return command;
}

}  // namespace ttr
