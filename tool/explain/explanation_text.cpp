// The answer for people: one line for each fact, and never more than `mostLines`.
#include <algorithm>

#include "explain/answer.h"
#include "text/output_options.h"
#include "text/printable.h"

namespace ttr {
namespace {

using CLines = std::vector<CExplanationLine>;

/// A line with its label in cyan.
std::string lineText(const CExplanationLine& line, bool colour) {
  constexpr std::size_t width = 10;
  const std::string indent = line.isDetail ? "    " : "  ";
  const std::size_t used = line.label.size() + indent.size() - 2;
  return indent + styled(line.label, styleCyan, colour) +
         std::string(used < width ? width - used : 1, ' ') + printable(line.text) + '\n';
}

/// As many of `lines` as there is room for, at least one line when there are any.
void addLimited(const CLines& lines, std::size_t room, CLines& shown) {
  const bool isCut = room < lines.size();
  const std::size_t count = !isCut ? lines.size() : room > 0 ? room - 1 : 0;
  shown.insert(shown.end(), lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count));
  if (!isCut) return;
  const std::size_t rest = lines.size() - count;
  shown.push_back({"...", std::to_string(rest) + (count > 0 ? " more " : " ") + lines[0].label +
                              (rest == 1 ? "" : "s") + ": --json has all"});
}

}  // namespace

std::string answerText(const CAnswer& answer, bool colour) {
  CLines lines;
  CLines tokens;
  CLines messages;
  for (CExplanationLine& line : explanationLines(answer.explanation)) {
    CLines& group = line.label == "token" ? tokens : line.label == "message" ? messages : lines;
    group.push_back(std::move(line));
  }
  const std::size_t room = mostLines - 1 - lines.size();
  const std::size_t forMessages = std::min(messages.size(), std::max<std::size_t>(room / 2, 1));
  addLimited(tokens, room - forMessages, lines);
  addLimited(messages, mostLines - 1 - lines.size(), lines);
  std::string text = styled(answer.sentence, styleBold, colour) + '\n';
  for (const CExplanationLine& line : lines) text += lineText(line, colour);
  return text;
}

}  // namespace ttr
