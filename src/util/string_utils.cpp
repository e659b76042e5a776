#include "util/string_utils.h"

#include <algorithm>
#include <cstddef>

namespace ttr {
namespace {

/// Reads the quoted part of a piece into `piece`; `start` is the position of the opening quote.
/// Returns the position after the closing quote, npos when there is none.
std::size_t readQuoted(const std::string& text, std::size_t start, std::string& piece) {
  for (std::size_t pos = start + 1; pos < text.size(); ++pos) {
    if (text[pos] == '"') {
      const bool doubled = pos + 1 < text.size() && text[pos + 1] == '"';
      if (!doubled) return pos + 1;
      ++pos;
    }
    piece += text[pos];
  }
  return std::string::npos;
}

}  // namespace

std::string trim(const std::string& text) {
  const std::size_t first = text.find_first_not_of(whiteSpace);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::vector<std::string> CSVsplit(const std::string& text, const std::string& delimiter) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (;;) {
    std::string piece;
    std::size_t plain = start;
    if (start < text.size() && text[start] == '"') {
      plain = readQuoted(text, start, piece);
      if (plain == std::string::npos) {
        pieces.push_back(text.substr(start));
        return pieces;
      }
    }
    const std::size_t end = std::min(text.find_first_of(delimiter, plain), text.size());
    pieces.push_back(piece.append(text, plain, end - plain));
    if (end == text.size()) return pieces;
    start = end + 1;
  }
}

}  // namespace ttr
