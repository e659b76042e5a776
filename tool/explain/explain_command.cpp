// `ttr explain`: a page and a pointer in, the reasons for what stands there out.
#include <unistd.h>

#include <memory>
#include <string>

#include "TokenTemplateResolver/json_text.h"
#include "commands.h"
#include "explain/answer.h"
#include "files.h"
#include "page/page_run.h"
#include "text/output_options.h"

namespace ttr {
namespace {

struct CExplainOptions {
  CPageOptions page;
  COutputOptions output;
  std::string pointer;
  bool json = false;
};

int runExplain(const CExplainOptions& options) {
  const CJsonPointer pointer = CJsonPointer::Parse(options.pointer);
  const std::string values = valuesFile(options.page);
  CPageRunner page(options.page);
  const CPassRecord record = page.Record(options.page.pass);
  const CAnswer answer = explain(page, record, values, pointer);
  const int code = answer.explanation.HasFaults() ? 1 : 0;
  if (options.output.quiet) return code;
  if (options.json) {
    writeStandardOutput(jsoncpp_string::toString(answerJson(answer)) + '\n');
  } else {
    writeStandardOutput(answerText(answer, useColour(options.output, STDOUT_FILENO)));
  }
  return code;
}

constexpr char examples[] = R"(Examples:
  ttr explain lobby.json /Page/Contents/3
  ttr explain lobby.json /Page/Contents/3/If/Contents/0 --pass 2
  ttr explain lobby.json /Page/Contents/3 --json

The answer comes first: why the element is what it is, or why it is null. What follows tells where
it stands in its template, what became of each token, of the operands of an If, of the range of a
Loop and of the Bounds, and what the library wrote about it. POINTER is looked up in the resolved
page, as `ttr resolve` prints it; when it is not there, in PAGE itself, and then the first copy of
what a loop repeats is explained.

Exit code: 0 explained, 1 when the library found a fault in the element, 2 when the command could
not be carried out.)";

}  // namespace

CCommand explainCommand() {
  const auto options = std::make_shared<CExplainOptions>();
  CCommand command{"explain", "Tell why an element is what it is, or is null", examples,
                   [options] { return runExplain(*options); }, pageOptions(options->page)};
  command.Add({
      {"POINTER", &options->pointer, "JSON pointer to the element, such as /Contents/2"},
      {"--json", &options->json, "Print all of it as one JSON object"},
  });
  command.Add(outputOptions(options->output));
  return command;
}

}  // namespace ttr
