// Written here rather than left to `diff`: the alignment is that of `ttr diff`, and a machine
// without diffutils can run the cases too.
#include "test/unified_diff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "text/alignment.h"
#include "text/printable.h"

namespace ttr {
namespace {

constexpr std::ptrdiff_t contextLines = 3;

/// The lines of `text` with their line ends; the last one may lack it.
std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
    lines.push_back(text.substr(begin, end - begin));
    begin = end;
  }
  return lines;
}

/// One line of a diff, and how many lines of either text stand before it.
struct CEdit {
  char mark = ' ';  ///< ' ', '-' or '+'
  std::string line;
  CAlignedPair before;
};

std::vector<CEdit> editsBetween(const std::vector<std::string>& left,
                                const std::vector<std::string>& right) {
  std::vector<CAlignedPair> pairs =
      align(left.size(), right.size(), [&](std::size_t leftLine, std::size_t rightLine) {
        return left[leftLine] == right[rightLine] ? scoreOfSame : 0;
      });
  pairs.push_back({left.size(), right.size()});
  std::vector<CEdit> edits;
  CAlignedPair at;
  for (const CAlignedPair& pair : pairs) {
    for (; at.left < pair.left; ++at.left) edits.push_back({'-', left[at.left], at});
    for (; at.right < pair.right; ++at.right) edits.push_back({'+', right[at.right], at});
    if (pair.left == left.size()) break;
    edits.push_back({' ', left[at.left], at});
    at = {pair.left + 1, pair.right + 1};
  }
  return edits;
}

/// "3,4", as hunks tell first line and number of lines. An empty range stands after a line.
std::string rangeText(std::size_t linesBefore, std::size_t count) {
  const std::size_t first = count == 0 ? linesBefore : linesBefore + 1;
  return std::to_string(first) + (count == 1 ? "" : ',' + std::to_string(count));
}

std::string hunkText(const CEdit* begin, const CEdit* end) {
  const auto linesWithout = [&](char mark) {
    return static_cast<std::size_t>(
        std::count_if(begin, end, [&](const CEdit& edit) { return edit.mark != mark; }));
  };
  std::string text = "@@ -" + rangeText(begin->before.left, linesWithout('+')) + " +" +
                     rangeText(begin->before.right, linesWithout('-')) + " @@\n";
  for (const CEdit* edit = begin; edit != end; ++edit) {
    text += edit->mark + edit->line;
    if (edit->line.back() != '\n') text += "\n\\ No newline at end of file\n";
  }
  return text;
}

}  // namespace

std::string unifiedDiff(const CNamedText& before, const CNamedText& after) {
  const std::vector<CEdit> edits = editsBetween(linesOf(before.text), linesOf(after.text));
  std::string hunks;
  const auto isChange = [](const CEdit& edit) { return edit.mark != ' '; };
  for (auto at = edits.begin(); at != edits.end();) {
    const auto first = std::find_if(at, edits.end(), isChange);
    if (first == edits.end()) break;
    // Changes with up to two contexts between them share a hunk.
    auto last = first;
    for (auto next = first; next != edits.end() && next - last <= 2 * contextLines + 1;
         next = std::find_if(last + 1, edits.end(), isChange)) {
      last = next;
    }
    const auto begin = first - std::min(contextLines, first - at);
    const auto end = last + 1 + std::min(contextLines, edits.end() - (last + 1));
    hunks += hunkText(&*begin, &*begin + (end - begin));
    at = end;
  }
  if (hunks.empty()) return "";
  return "--- " + printable(before.name) + "\n+++ " + printable(after.name) + '\n' + hunks;
}

}  // namespace ttr
