// `ttr preview`: a page and the values of its tokens in, pictures of the resolved page out.
#include "preview/preview_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "files.h"
#include "output_options.h"
#include "page/page_run.h"
#include "preview/fault_output.h"
#include "preview/output_name.h"
#include "preview/preview.h"
#include "preview/watch.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CPreviewCommand {
  CPreviewOptions preview;
  COutputOptions output;
  CWatchOptions watch;
  bool isWatched = false;
};

/// Makes the pictures once.
int writePreview(const CPreviewOptions& options, const COutputOptions& output) {
  CPreviewModel model;
  try {
    model = makePreview(options);
  } catch (const CFaultyPage& page) {
    printFaults(page.faults(), output);
    return 2;
  }
  for (const CPreviewFile& file : renderPreview(model, options, "", false)) {
    if (file.name == "-") {
      writeStandardOutput(file.content);
    } else {
      writeFile(file.name, file.content);
    }
  }
  const std::vector<CFault> faults = allFaults(model);
  printFaults(faults, output);
  return faults.empty() ? 0 : 1;
}

int runPreview(CPreviewCommand& command) {
  CPreviewOptions& options = command.preview;
  if (options.sizes.empty()) options.sizes.push_back(options.page.size);
  const bool isWatched = command.isWatched || command.watch.serve;
  if (options.outputs.empty() && !command.watch.serve) {
    throw CToolError("-o", "say what to write: a name that ends in .svg, .png or .html");
  }
  checkOutputs(options);
  if (!isWatched) return writePreview(options, command.output);
  command.watch.output = command.output;
  watchPreview(options, command.watch);
  return 0;
}

constexpr char examples[] = R"(Examples:
  ttr preview lobby.json -o lobby.html
  ttr preview lobby.json -o lobby.png --assets images
  ttr preview lobby.json --size 1280x720 --size 800x480 -o 'lobby-{size}.png' -o lobby.html
  ttr preview lobby.json --pass 2 --format svg -o - > second.svg
  ttr preview lobby.json --serve

A box stands for each element that has bounds, filled with its first Display colour; behind a text
it is a tint of that colour. A colour without alpha, which a device does not show, is hatched; all
colours of an element are small squares in its corner. Containers bear their ids, and the cells of
grids are dotted. What lies off the screen is in a hatched margin. A list below the picture names
the elements that became null, and those that cannot be drawn.

With --watch and --serve the preview follows its files until it is ended with Ctrl-C: the page, what
it includes, its values and images. A faulty page, or an included file that is missing or no JSON,
leaves the last good pictures, marked OUTDATED.

An HTML file holds all sizes and passes, and needs no other file. PNG needs rsvg-convert (Debian:
librsvg2-bin).

Exit code: 0 clean, 1 when the page has faults (they are printed as 'ttr check' does), 2 when the
page could not be resolved, or the command not be carried out.)";

/// `--size`, which the options of a page have once, as often as one likes.
void addSizes(CLI::App& command, std::vector<std::string>& sizes) {
  command.remove_option(command.get_option("--size"));
  command.add_option("--size", sizes, "Screen size, by default 1280x720; may be repeated")
      ->type_name("WIDTHxHEIGHT")
      ->expected(1)
      ->take_all();
}

void addPreviewOptions(CLI::App& command, CPreviewOptions& options) {
  addPageOptions(command, options.page);
  addSizes(command, options.sizes);
  command
      .add_option("--passes", options.passes,
                  "How many passes from --pass on; by default one, and\n"
                  "for HTML and names with {pass} all until they repeat")
      ->type_name("N")
      ->check(CLI::Range(1U, CPageRunner::defaultPasses));
  command
      .add_option("-o,--output", options.outputs,
                  "Write to this file, SVG, PNG or HTML by its ending; {size}\n"
                  "and {pass} stand for the picture's; - for standard output;\n"
                  "may be repeated")
      ->type_name("FILE")
      ->expected(1)
      ->take_all();
  command.add_option("--format", options.format, "Format of an output whose name does not tell it")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"svg", "png", "html"}));
  command
      .add_option("--assets", options.assets,
                  "Show the PNG and JPEG images that the page names from this\n"
                  "directory")
      ->type_name("DIR");
}

void addWatchOptions(CLI::App& command, CPreviewCommand& options) {
  command.add_flag("--watch", options.isWatched, "Go on, and write anew whenever a file changes");
  CLI::Option* serve = command.add_flag("--serve", options.watch.serve,
                                        "Watch, and show the preview to browsers on this machine:\n"
                                        "prints the address, the browser follows by itself");
  command.add_option("--port", options.watch.port, "Port to serve on, by default any that is free")
      ->type_name("N")
      ->check(CLI::Range(0, 65535))
      ->needs(serve);
}

}  // namespace

void addPreviewCommand(CLI::App& app, int* exitCode) {
  auto options = std::make_shared<CPreviewCommand>();
  CLI::App* command = app.add_subcommand("preview", "Draw the resolved page as SVG, PNG or HTML");
  addPreviewOptions(*command, options->preview);
  addWatchOptions(*command, *options);
  addOutputOptions(*command, options->output);
  command->footer(examples);
  command->callback([options, exitCode] { *exitCode = runPreview(*options); });
}

}  // namespace ttr
