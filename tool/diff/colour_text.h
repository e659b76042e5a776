#ifndef TOOL_DIFF_COLOUR_TEXT_H
#define TOOL_DIFF_COLOUR_TEXT_H

#include <cstdint>
#include <string>

namespace ttr {

/// The colour of a resolved page as templates write it, "#RRGGBBAA". In the word the opacity is the
/// highest byte.
std::string colourText(std::uint32_t word);

}  // namespace ttr

#endif  // TOOL_DIFF_COLOUR_TEXT_H
