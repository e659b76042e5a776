// `ttr diff`: two pages in, and out what differs on the screen.
#include <unistd.h>

#include <memory>
#include <string>
#include <utility>

#include "commands.h"
#include "diff/compared_page.h"
#include "diff/difference_report.h"
#include "files.h"
#include "page/page_options.h"
#include "text/output_options.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CDiffOptions {
  CPageOptions page;
  std::string other;
  bool resolved = false;
  std::string format = "text";
  std::string outputFile;
  COutputOptions output;
};

CComparedPages comparePages(const CDiffOptions& options) {
  if (options.page.page == "-" && options.other == "-") {
    throw CToolError("standard input", "cannot be both pages");
  }
  CPageOptions other = options.page;
  other.page = options.other;
  CComparedPages pages;
  pages.before =
      options.resolved ? readResolvedPage(options.page.page) : resolvedPage(options.page);
  pages.after = options.resolved ? readResolvedPage(options.other) : resolvedPage(other);
  pages.differences = pageDifferences({pages.before.document, pages.before.templates},
                                      {pages.after.document, pages.after.templates});
  return pages;
}

std::string reportText(const CComparedPages& pages, const std::string& format, bool colour) {
  if (format == "json") return jsonReport(pages);
  return format == "html" ? htmlReport(pages) : textReport(pages, colour);
}

int runDiff(const CDiffOptions& options) {
  const CComparedPages pages = comparePages(options);
  const bool toFile = !options.outputFile.empty() && options.outputFile != "-";
  const bool colour =
      useColour(options.output, STDOUT_FILENO) && (!toFile || options.output.colour == "always");
  const std::string report = reportText(pages, options.format, colour);
  if (toFile) {
    writeFile(options.outputFile, report);
  } else if (!options.output.quiet) {
    writeStandardOutput(report);
  }
  return pages.differences.empty() ? 0 : 1;
}

constexpr char footer[] = R"(Examples:
  ttr diff old.json new.json --values values.json
  ttr diff old.json new.json --format html -o difference.html
  git show HEAD:lobby.json | ttr diff - lobby.json --values values.json
  ttr diff --resolved lobby.resolved.json lobby.resolved.new.json

PAGE and OTHER are templates, and are resolved with the same options; without --values each with
the values beside it. With --resolved they are results of 'ttr resolve', compared as they are. A
difference is told with the entry's place in OTHER, or in PAGE when only that has it, and its
pointer in the resolved page. Entries are matched by their likeness. What moved along with the
element around it is counted there. As text, equal pages print nothing.

Exit code: 0 when the resolved pages are equal, 1 when they differ, 2 when the command could not be
carried out.)";

}  // namespace

CCommand diffCommand() {
  const auto options = std::make_shared<CDiffOptions>();
  CCommand command{"diff", "Tell what differs between two pages on screen", footer,
                   [options] { return runDiff(*options); }, pageOptions(options->page)};
  for (COption& option : command.options) {  // what has been resolved depends on none of them
    if (option.names != "PAGE") option.meaninglessWith = "--resolved";
  }
  command.Add({
      {"OTHER", &options->other, "The page to compare it with, - for standard input"},
      {"--resolved", &options->resolved, "Both pages have been resolved already"},
      {"--format", &options->format, "Form of the report: text (default), json, html", "FORMAT",
       CChoices{"text", "json", "html"}},
      {"-o,--output", &options->outputFile, "Write the report to this file", "FILE"},
  });
  command.Add(outputOptions(options->output));
  return command;
}

}  // namespace ttr
