// `ttr resolve`: a page and the values of its tokens in, the resolved page out.
#include <json/value.h>
#include <json/writer.h>

#include <exception>
#include <memory>
#include <string>

#include "TokenTemplateResolver/json_text.h"
#include "commands.h"
#include "diagnostic_meter.h"
#include "files.h"
#include "page/included_files.h"
#include "page/page_host.h"
#include "page/page_options.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CResolveOptions {
  CPageOptions page;
  bool pretty = false;
  std::string output;
};

/// What one run of the command found.
struct CResolved {
  std::string text;
  bool faults = false;
};

/// Resolves the page pass after pass; only the last one's diagnostics are shown and counted.
CResolved resolvePage(const CPageOptions& options, const std::string& page, CPageHost& host) {
  const CWorkingDirectory directory(options.directory);
  CDiagnosticMeter diagnostics;
  CResolved resolved;
  try {
    diagnostics.Mute(true);
    host.ServeVariablesOf(page);
    for (unsigned passesLeft = options.pass; passesLeft > 0; --passesLeft) {
      diagnostics.Mute(passesLeft > 1);
      resolved.text = host.Pass(page);
    }
  } catch (const std::exception& error) {
    throw CToolError(options.page, error.what());
  }
  resolved.faults = diagnostics.lines() > 0;
  return resolved;
}

/// `compact` with indentation. A // comment of the page hides what follows it in the one line that
/// the library writes, which then is no JSON any more; included files can make a page deeper than
/// JsonCpp reads.
/// \throws CToolError in these cases
std::string prettyText(const std::string& compact, const std::string& page) {
  std::string errors;
  Json::Value value;
  try {
    value = jsoncpp_string::toJsonObject(compact, &errors);
  } catch (const Json::RuntimeError&) {
    throw CToolError(page, "the result is nested too deep to be indented");
  }
  if (!errors.empty()) {
    throw CToolError(page,
                     "the result is no JSON, because the page has a comment that starts with //");
  }
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "  ";
  return Json::writeString(writer, value);
}

int runResolve(const CResolveOptions& options) {
  if (options.page.root) confineIncludes(*options.page.root);
  const std::string page = readPage(options.page);
  CPageHost host(readValues(valuesFile(options.page)), parseScreenSize(options.page.size));
  const CResolved resolved = resolvePage(options.page, page, host);
  const std::string text =
      (options.pretty ? prettyText(resolved.text, options.page.page) : resolved.text) + '\n';
  const bool nothing = resolved.text == "null";
  if (options.output.empty()) {
    writeStandardOutput(text);
  } else if (nothing) {
    tell(options.output + ": not written, as the result is null");
  } else {
    writeFile(options.output, text);
  }
  return resolved.faults || nothing ? 1 : 0;
}

constexpr char examples[] = R"(Examples:
  ttr resolve lobby.json --values lobby.values.json
  ttr resolve lobby.json --values lobby.values.json --size 1920x1080 --pass 3 --pretty
  ttr resolve - --chdir pages -o resolved.json < pages/lobby.json

VALUES is a JSON object. Each of its members is a token handler of that name: with
{"clock": {"time": "12:00"}}, $(clock.time) is 12:00. What the page binds itself, members of
"Context" and loop variables, is served as $(context.NAME) and as $(NAME).

Exit code: 0 clean, 1 when the library reported faults or the result is null, 2 when the
command could not be carried out.)";

}  // namespace

CCommand resolveCommand() {
  const auto options = std::make_shared<CResolveOptions>();
  CCommand command{"resolve", "Resolve a page and print the result as JSON", examples,
                   [options] { return runResolve(*options); }, pageOptions(options->page)};
  command.Add({
      {"--pretty", &options->pretty, "Indent the result"},
      {"-o,--output", &options->output, "Write the result to this file", "FILE"},
  });
  return command;
}

}  // namespace ttr
