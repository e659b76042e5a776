// `ttr check`: everything that is wrong with pages, each fault with its place.
#include <unistd.h>

#include <cstddef>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "check/check_report.h"
#include "check/page_search.h"
#include "commands.h"
#include "files.h"
#include "page/fault_finder.h"
#include "page/fault_list.h"
#include "page/fault_text.h"
#include "page/page_options.h"
#include "text/output_options.h"
#include "text/printable.h"
#include "text/wording.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CCheckOptions {
  std::vector<std::string> paths;
  CPageOptions page;
  std::string passes = "1";
  std::string format = "text";
  std::size_t maxWarnings = 0;
  std::string outputFile;
  COutputOptions output;
};

/// For --pass all: the passes of a page that does not repeat itself.
constexpr unsigned mostPasses = 1000;

CPageOptions optionsFor(const CCheckOptions& options, const std::string& page) {
  CPageOptions ofPage = options.page;
  ofPage.page = page;
  return ofPage;
}

CPasses passesOf(const CCheckOptions& options, CPageRunner& page) {
  if (options.passes != "all") {
    const auto pass = static_cast<unsigned>(std::stoul(options.passes));
    return {pass, pass};
  }
  const unsigned last = page.PassesUntilRepeat(mostPasses);
  if (last == mostPasses) {
    tell(page.pageFile().name() + ": is not seen to repeat itself within " +
         std::to_string(mostPasses) + " passes; only these were checked");
  }
  return {1, last};
}

/// The files that the page includes, as the user would name them. A page that cannot be run is told
/// of when it is checked.
std::vector<std::string> includesOf(const CPageOptions& options) {
  std::vector<std::string> files;
  try {
    CPageRunner page(options);
    page.Record(1);
    for (const std::string& name : page.includedFiles()) {
      if (const CSourceFile* source = page.IncludedFile(name)) files.push_back(source->name());
    }
  } catch (const CToolError&) {
    return {};
  }
  return files;
}

std::vector<CFoundPage> pagesToCheck(const CCheckOptions& options) {
  std::vector<CFoundPage> pages = findPages(options.paths);
  if (options.page.values == "-" && pages.size() != 1) {
    throw CToolError("standard input", "can be the values of one page only");
  }
  if (pages.size() == 1) return pages;
  std::vector<CPageIncludes> includes;
  for (const CFoundPage& page : pages) {
    const bool readable = page.path != "-";  // only once
    includes.push_back(
        {page, readable ? includesOf(optionsFor(options, page.path)) : std::vector<std::string>()});
  }
  return withoutIncluded(includes);
}

/// `fault`, with the way out when a relative name leads to no file.
CFault withHint(CFault fault, const CPageOptions& options) {
  const std::string beginning = "not included: ";
  if (fault.code != "not-included" || !options.directory.empty()) return fault;
  const bool absolute = fault.message.compare(beginning.size(), 1, "/") == 0;
  const std::string missing = std::make_error_code(std::errc::no_such_file_or_directory).message();
  const bool isMissing = fault.message.size() > missing.size() &&
                         fault.message.substr(fault.message.size() - missing.size()) == missing;
  if (!absolute && isMissing) {
    fault.suggestion = "relative names start from the working directory; --chdir changes it";
  }
  return fault;
}

void addPage(const CCheckOptions& options, const std::string& path, CCheckReport& report,
             CFaultList& faults) {
  try {
    CPageRunner page(optionsFor(options, path));
    for (const CFault& fault : findFaults(page, passesOf(options, page))) {
      faults.Add(withHint(fault, options.page));
    }
    report.texts[page.pageFile().name()] = page.pageFile().text();
    for (const std::string& name : page.includedFiles()) {
      const CSourceFile* source = page.IncludedFile(name);
      if (source != nullptr) report.texts[source->name()] = source->text();
    }
  } catch (const CToolError& error) {
    report.failures.push_back(error.what());
  }
}

CCheckReport checkPages(const CCheckOptions& options) {
  CCheckReport report;
  CFaultList faults;
  for (const CFoundPage& page : pagesToCheck(options)) {
    report.pages.push_back(page.path);
    addPage(options, page.path, report, faults);
  }
  report.faults = faults.Sorted();
  return report;
}

int exitCodeOf(const CCheckReport& report, std::size_t maxWarnings) {
  if (!report.failures.empty()) return 2;
  const bool tolerated = countOf(report.faults, CFault::levelError) == 0 &&
                         countOf(report.faults, CFault::levelWarning) <= maxWarnings;
  return tolerated ? 0 : 1;
}

void writeSummary(const CCheckReport& report) {
  tell(counted(report.pages.size(), "page") +
       " checked: " + counted(countOf(report.faults, CFault::levelError), "error") + ", " +
       counted(countOf(report.faults, CFault::levelWarning), "warning"));
}

bool writesFile(const CCheckOptions& options) {
  return !options.outputFile.empty() && options.outputFile != "-";
}

std::string reportText(const CCheckOptions& options, const CCheckReport& report,
                       const std::string& version, int exitCode) {
  if (options.format == "json") return jsonReport(report);
  if (options.format == "sarif") return sarifReport(report, version, exitCode);
  const bool colour = useColour(options.output, STDOUT_FILENO) &&
                      (!writesFile(options) || options.output.colour == "always");
  return faultLines(options.output.quiet ? onlyErrors(report.faults) : report.faults, colour);
}

/// A command that fails leaves the output file as it was.
int runCheck(const CCheckOptions& options, const std::string& version) {
  const CCheckReport report = checkPages(options);
  const int exitCode = exitCodeOf(report, options.maxWarnings);
  const bool failed = !report.failures.empty();
  const std::string text = reportText(options, report, version, exitCode);
  if (!writesFile(options)) {
    writeStandardOutput(text);
  } else if (!failed) {
    writeFile(options.outputFile, text);
  }
  for (const std::string& failure : report.failures) tell(failure);
  if (!options.output.quiet && !failed) writeSummary(report);
  return exitCode;
}

/// A number, and none below 0, which would be taken for a very large one.
std::string countFault(const std::string& text) {
  const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
  return digits && !text.empty() && text.size() < 10 ? "" : text + " is no number of at least 0";
}

/// "all", or a number of at least 1.
std::string passesFault(const std::string& text) {
  const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
  if (text == "all" || (digits && !text.empty() && text.size() < 10 && std::stoul(text) > 0)) {
    return "";
  }
  return text + " is neither a number of at least 1 nor all";
}

constexpr char footer[] = R"(Examples:
  ttr check lobby.json --values lobby.values.json
  ttr check pages --chdir pages --pass all
  ttr check pages --format sarif -o faults.sarif
  ttr check - --max-warnings 3 < lobby.json

PATH is a page or a folder. The pages of a folder, and of the folders in it, are its *.json files
with "Page" or "Contents", or with a JSON error, but not the results that 'ttr test' expects. Files
that another page includes are checked as part of it. Each fault is told once, with the times that
the library meets it; columns count from 1 in bytes, in SARIF in UTF-16 units. An error keeps the
page, an element or its contents from being shown; all else is a warning.

Exit code: 0 when nothing is wrong, or no more than the warnings of --max-warnings; 1 for faults;
2 when the command could not be carried out.)";

}  // namespace

CCommand checkCommand(const std::string& version) {
  const auto options = std::make_shared<CCheckOptions>();
  CCommand command{"check",
                   "Tell what is wrong with pages, and where",
                   footer,
                   [options, version] { return runCheck(*options, version); },
                   {{"PATH", &options->paths, "Pages and folders, - for standard input"}}};
  command.Add(sharedPageOptions(options->page));
  command.Add({
      {"--pass", &options->passes, "Check the Nth pass, or all until they repeat", "N|all",
       passesFault},
      {"--format", &options->format, "Form of the report: text (default), json, sarif", "FORMAT",
       CChoices{"text", "json", "sarif"}},
      {"--max-warnings", &options->maxWarnings, "Tolerate this many warnings", "N", countFault},
      {"-o,--output", &options->outputFile, "Write the report to this file", "FILE"},
  });
  command.Add(outputOptions(options->output));
  return command;
}

}  // namespace ttr
