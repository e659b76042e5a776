#include "output_options.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>

namespace ttr {

void addOutputOptions(CLI::App& command, COutputOptions& options) {
  command.add_option("--color", options.colour, "Colour the report: auto (default), always, never")
      ->type_name("WHEN")
      ->check(CLI::IsMember({"auto", "always", "never"}));
  command.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
}

bool useColour(const COutputOptions& options, int descriptor) {
  if (options.colour != "auto") return options.colour == "always";
  const char* noColour = std::getenv("NO_COLOR");
  const bool refused = noColour != nullptr && *noColour != '\0';
  return !refused && ::isatty(descriptor) == 1;
}

std::string styled(const std::string& text, eTextStyle style, bool colour) {
  if (!colour) return text;
  return "\033[" + std::to_string(static_cast<int>(style)) + 'm' + text + "\033[0m";
}

}  // namespace ttr
