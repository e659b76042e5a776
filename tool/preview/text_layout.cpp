// Where texts break, without knowing the font: letters count as 0.58 of their size wide, which is
// a little more than those of common sans serif fonts are on average.
#include "preview/text_layout.h"

#include <algorithm>
#include <utility>

namespace ttr {
namespace {

/// Longer texts are cut off: they cannot be read in a picture.
constexpr std::size_t longestText = 1000;

std::size_t sequenceLength(unsigned char lead) {
  if (lead >= 0xF0) return 4;
  if (lead >= 0xE0) return 3;
  return lead >= 0xC0 ? 2 : 1;
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

bool isControl(unsigned char byte) { return byte < 0x20 || byte == 0x7F; }

std::string joined(const std::vector<std::string>& pieces, std::size_t begin, std::size_t end) {
  std::string text;
  for (std::size_t at = begin; at < end; ++at) text += pieces[at];
  return text;
}

/// `texts` in letters of `fontSize`, cut off where the box ends.
CFittedText laidOut(const std::vector<std::string>& texts, std::int64_t width, std::int64_t height,
                    std::int64_t fontSize) {
  CFittedText fit{fontSize, {}};
  const std::size_t length = charactersIn(width, fontSize);
  const std::int64_t most = height / std::max<std::int64_t>(fit.LineHeight(), 1) + 1;
  for (const std::string& text : texts) {
    for (std::string& line : wrapped(text, length)) {
      if (static_cast<std::int64_t>(fit.lines.size()) > most) return fit;
      fit.lines.push_back(std::move(line));
    }
  }
  return fit;
}

/// The number of characters of the longest word, which should not be broken.
std::size_t longestWord(const std::vector<std::string>& texts) {
  std::size_t longest = 0;
  for (const std::string& text : texts) {
    std::size_t length = 0;
    for (const std::string& character : characters(text)) {
      length = character == " " ? 0 : length + 1;
      longest = std::max(longest, length);
    }
  }
  return longest;
}

}  // namespace

std::vector<std::string> characters(const std::string& text) {
  std::vector<std::string> pieces;
  for (std::size_t at = 0; at < text.size();) {
    const auto lead = static_cast<unsigned char>(text[at]);
    std::size_t length = 1;
    while (length < sequenceLength(lead) && at + length < text.size() &&
           isContinuation(text[at + length])) {
      ++length;
    }
    pieces.push_back(isControl(lead) ? " " : text.substr(at, length));
    at += length;
  }
  return pieces;
}

std::string shortened(const std::string& text, std::size_t length) {
  const std::vector<std::string> pieces = characters(text);
  if (pieces.size() <= length) return joined(pieces, 0, pieces.size());
  return joined(pieces, 0, length - 1) + "…";
}

std::vector<std::string> wrapped(const std::string& text, std::size_t length) {
  const std::vector<std::string> pieces = characters(text);
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < pieces.size();) {
    std::size_t end = std::min(pieces.size(), begin + length);
    std::size_t next = end;
    if (end < pieces.size()) {
      std::size_t blank = end;  // the last one that the line can end before
      while (blank > begin && pieces[blank] != " ") --blank;
      if (blank > begin) {
        end = blank;
        next = blank + 1;
      }
    }
    lines.push_back(joined(pieces, begin, end));
    begin = next;
  }
  return lines;
}

std::size_t charactersIn(std::int64_t width, std::int64_t fontSize) {
  const std::int64_t count = width * 100 / (58 * std::max<std::int64_t>(fontSize, 1));
  return static_cast<std::size_t>(std::clamp<std::int64_t>(count, 1, 10000));
}

CFittedText fitted(const std::vector<std::string>& texts, std::int64_t width, std::int64_t height,
                   std::int64_t smallest, std::int64_t largest) {
  std::vector<std::string> cut;
  cut.reserve(texts.size());
  for (const std::string& text : texts) cut.push_back(shortened(text, longestText));
  const std::size_t word = longestWord(cut);
  std::int64_t fontSize = std::clamp(height * 62 / 100, smallest, largest);
  CFittedText fit = laidOut(cut, width, height, fontSize);
  const auto fits = [&] {
    const auto count = static_cast<std::int64_t>(fit.lines.size());
    return word <= charactersIn(width, fontSize) &&
           (count <= 1 || count * fit.LineHeight() <= height);
  };
  while (fontSize > smallest && !fits()) fit = laidOut(cut, width, height, --fontSize);
  return fit;
}

}  // namespace ttr
