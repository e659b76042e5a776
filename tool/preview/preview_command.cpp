// `ttr preview`: a page and the values of its tokens in, pictures of the resolved page out.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "files.h"
#include "page/page_run.h"
#include "preview/fault_output.h"
#include "preview/output_name.h"
#include "preview/preview.h"
#include "preview/watch.h"
#include "text/output_options.h"
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
  const std::vector<CFault> faults = model.faults.Sorted();
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

/// PAGE and how it is run, with `--size` as often as one likes.
std::vector<COption> pagesOptions(CPreviewOptions& options) {
  std::vector<COption> all = pageOptions(options.page);
  const auto isSize = [](const COption& option) { return option.names == "--size"; };
  all.erase(std::find_if(all.begin(), all.end(), isSize));
  all.push_back({"--size", &options.sizes, "Screen size, by default 1280x720; may be repeated",
                 "WIDTHxHEIGHT"});
  return all;
}

std::vector<COption> pictureOptions(CPreviewOptions& options) {
  return {
      {"--passes", &options.passes,
       "How many passes from --pass on; by default one, and\n"
       "for HTML and names with {pass} all until they repeat",
       "N", CRange<unsigned>{1, CPageRunner::defaultPasses}},
      {"-o,--output", &options.outputs,
       "Write to this file, SVG, PNG or HTML by its ending; {size}\n"
       "and {pass} stand for the picture's; - for standard output;\n"
       "may be repeated",
       "FILE"},
      {"--format", &options.format, "Format of an output whose name does not tell it", "FORMAT",
       CChoices{"svg", "png", "html"}},
      {"--assets", &options.assets,
       "Show the PNG and JPEG images that the page names from this\n"
       "directory",
       "DIR"},
  };
}

std::vector<COption> watchOptions(CPreviewCommand& options) {
  return {
      {"--watch", &options.isWatched, "Go on, and write anew whenever a file changes"},
      {"--serve", &options.watch.serve,
       "Watch, and show the preview to browsers on this machine:\n"
       "prints the address, the browser follows by itself"},
      {"--port", &options.watch.port, "Port to serve on, by default any that is free", "N",
       CRange<int>{0, 65535}, "--serve"},
  };
}

}  // namespace

CCommand previewCommand() {
  const auto options = std::make_shared<CPreviewCommand>();
  CCommand command{"preview", "Draw the resolved page as SVG, PNG or HTML", examples,
                   [options] { return runPreview(*options); }, pagesOptions(options->preview)};
  command.Add(pictureOptions(options->preview));
  command.Add(watchOptions(*options));
  command.Add(outputOptions(options->output));
  return command;
}

}  // namespace ttr
