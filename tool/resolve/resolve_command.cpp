// `ttr resolve`: a page and the values of its tokens in, the resolved page out.
#include <json/value.h>
#include <json/writer.h>

#include <cstddef>
#include <memory>
#include <string>

#include "TokenTemplateResolver/json_text.h"
#include "commands.h"
#include "files.h"
#include "page/page_run.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CResolveOptions {
  CPageOptions page;
  bool pretty = false;
  std::string output;
};

/// The page as the library writes it. Its diagnostics go to standard error, and are counted.
std::string resolvedText(const CPageOptions& options, std::size_t* messages) {
  const CPageRunner::COutput output = CPageRunner(options).Output(options.pass);
  for (const std::string& line : output.lines) writeStandardError(printableMessage(line) + '\n');
  if (output.exception) throw CToolError(options.page, *output.exception);
  *messages = output.lines.size();
  return output.text;
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
  std::size_t messages = 0;
  const std::string resolved = resolvedText(options.page, &messages);
  const std::string text =
      (options.pretty ? prettyText(resolved, options.page.page) : resolved) + '\n';
  const bool nothing = resolved == "null";
  if (options.output.empty()) {
    writeStandardOutput(text);
  } else if (nothing) {
    tell(options.output + ": not written, as the result is null");
  } else {
    writeFile(options.output, text);
  }
  return messages > 0 || nothing ? 1 : 0;
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
