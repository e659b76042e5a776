#include "text/output_options.h"

#include <unistd.h>

#include <cstdlib>

#include "text/printable.h"

namespace ttr {

std::vector<COption> outputOptions(COutputOptions& options) {
  return {{"--color", &options.colour, "Colour the report: auto (default), always, never", "WHEN",
           CChoices{"auto", "always", "never"}},
          {"-q,--quiet", &options.quiet, "Print nothing but errors"}};
}

bool useColour(const COutputOptions& options, int descriptor) {
  if (options.colour != "auto") return options.colour == "always";
  const char* noColour = std::getenv("NO_COLOR");
  const bool refused = noColour != nullptr && *noColour != '\0';
  return !refused && ::isatty(descriptor) == 1;
}

std::string styled(const std::string& text, eTextStyle style, bool colour) {
  if (!colour) return printable(text);
  return "\033[" + std::to_string(static_cast<int>(style)) + 'm' + printable(text) + "\033[0m";
}

}  // namespace ttr
