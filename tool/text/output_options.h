#ifndef TOOL_TEXT_OUTPUT_OPTIONS_H
#define TOOL_TEXT_OUTPUT_OPTIONS_H

#include <string>
#include <vector>

#include "command.h"

namespace ttr {

/// How a command reports: with colours or without, and how much of it.
struct COutputOptions {
  std::string colour = "auto";  ///< "auto", "always", "never"
  bool quiet = false;           ///< nothing but errors
};

/// --color and -q, --quiet.
std::vector<COption> outputOptions(COutputOptions& options);

/// True when text on `descriptor` is to be coloured: asked for, or "auto" on a terminal while the
/// environment has no NO_COLOR.
bool useColour(const COutputOptions& options, int descriptor);

/// `text`, printable, in bold, red, green, yellow or cyan when `colour` says so.
enum eTextStyle { styleBold = 1, styleRed = 31, styleGreen = 32, styleYellow = 33, styleCyan = 36 };
std::string styled(const std::string& text, eTextStyle style, bool colour);

}  // namespace ttr

#endif  // TOOL_TEXT_OUTPUT_OPTIONS_H
