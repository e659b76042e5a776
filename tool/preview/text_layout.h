#ifndef TOOL_PREVIEW_TEXT_LAYOUT_H
#define TOOL_PREVIEW_TEXT_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ttr {

/// The characters of `text`, UTF-8 sequences as they stand there; control characters are blanks.
std::vector<std::string> characters(const std::string& text);

/// `text` in at most `length` characters, the last one "…" when something was cut off.
std::string shortened(const std::string& text, std::size_t length);

/// `text` in lines of at most `length` (at least 1) characters, broken at blanks where there are.
std::vector<std::string> wrapped(const std::string& text, std::size_t length);

/// About how many characters of the size `fontSize` fit into `width`; at least 1.
std::size_t charactersIn(std::int64_t width, std::int64_t fontSize);

/// Lines of text, and the size of their letters.
struct CFittedText {
  std::int64_t fontSize = 0;
  std::vector<std::string> lines;

  std::int64_t LineHeight() const { return fontSize * 5 / 4; }
};

/// `texts`, one below the other, as large as a box of this size holds them, but within these sizes.
CFittedText fitted(const std::vector<std::string>& texts, std::int64_t width, std::int64_t height,
                   std::int64_t smallest, std::int64_t largest);

}  // namespace ttr

#endif  // TOOL_PREVIEW_TEXT_LAYOUT_H
