// The explanation for people: one line for each fact, the answer first, and never more than
// `mostLines`.
#include <algorithm>
#include <utility>

#include "explain/explanation.h"
#include "text/output_options.h"
#include "text/printable.h"

namespace ttr {
namespace {

using CLines = std::vector<std::string>;

std::string line(const std::string& label, const std::string& text) {
  constexpr std::size_t width = 10;
  return "  " + label + std::string(label.size() < width ? width - label.size() : 1, ' ') + text;
}

void addPlace(const CExplanation& explanation, CLines& lines) {
  std::string text = explanation.place.Text();
  if (!explanation.origin.empty()) text += ", " + explanation.origin.Text();
  text += "; pass " + std::to_string(explanation.pass);
  for (const CCopy& copy : explanation.copies) {
    text += copy.index ? "; index " + std::to_string(*copy.index) + ", position " : "; copy ";
    text += std::to_string(copy.number) + " of " + std::to_string(copy.of);
  }
  lines.push_back(line(explanation.kind, text));
}

void addIf(const CIfExplanation& test, CLines& lines) {
  lines.push_back(line("Condition", test.condition ? brief(*test.condition) : "missing"));
  if (!test.comparison.empty()) lines.push_back(line(test.comparison, brief(test.operand)));
  lines.push_back(line("verdict", (test.holds ? "holds: " : "does not hold: ") + test.why));
}

std::string rangeText(const CLoopExplanation& loop) {
  if (loop.indices == 0) return loop.rotating ? "no indices, so index 0" : "no indices";
  std::string text = std::to_string(loop.indices) + (loop.indices == 1 ? " index" : " indices");
  if (loop.indices >= CLoopExplanation::mostIndices) text = "at least " + text;
  if (!loop.first) return text;
  return text + ", " + std::to_string(*loop.first) + ".." +
         (loop.last ? std::to_string(*loop.last) : "");
}

std::string membersText(const CLoopExplanation& loop) {
  std::string text;
  for (const auto& [name, typed] : loop.members) {
    const bool isArray = typed.value.isArray();
    text += (text.empty() ? "" : ", ") + name + ' ' +
            (isArray ? "of " + std::to_string(typed.value.size()) + " entries" : brief(typed));
  }
  return text.empty() ? "no List and no Start" : text;
}

void addLoop(const CLoopExplanation& loop, CLines& lines) {
  lines.push_back(line("range", rangeText(loop) + ": " + membersText(loop)));
  if (loop.rotating) {
    std::string text = "one copy in each pass";
    if (loop.shown) text += ", this one of index " + std::to_string(*loop.shown);
    if (loop.position) {
      text += ", position " + std::to_string(*loop.position + 1) + " of " +
              std::to_string(loop.indices);
    }
    lines.push_back(line("rotating", text));
    return;
  }
  std::string text = std::to_string(loop.copies) + (loop.copies == 1 ? " copy" : " copies");
  if (loop.layout) {
    text +=
        " in layout " + std::to_string(*loop.layout + 1) + " of " + std::to_string(loop.layouts);
  }
  lines.push_back(line("grid", text));
  constexpr Json::ArrayIndex most = 4;
  std::string cells;
  for (Json::ArrayIndex i = 0; i < std::min(loop.cells.size(), most); ++i) {
    cells += (i == 0 ? "" : ", ") + brief(loop.cells[i]);
  }
  if (loop.cells.size() > most) cells += ", ...";
  if (!cells.empty()) lines.push_back(line("cells", cells));
}

void addBounds(const CBoundsExplanation& bounds, CLines& lines) {
  const CEnclosing& around = bounds.enclosing;
  const std::string enclosing = std::to_string(around.x) + ',' + std::to_string(around.y) + ' ' +
                                std::to_string(around.width) + 'x' + std::to_string(around.height) +
                                " of " + around.source;
  const bool own = !bounds.result.isNull();
  lines.push_back(line("Bounds", (own ? brief(bounds.result) : "none; measured") +
                                     (own ? ", within " : " within ") + enclosing));
  for (const CBoundsEntry& entry : bounds.entries) {
    lines.push_back(line("  " + entry.name, brief(entry.result) + " from " + brief(entry.written) +
                                                ": " + entry.arithmetic));
  }
}

std::string tokenText(const CTokenExplanation& token) {
  std::string text = token.token;
  if (!token.part.empty()) text += ", " + token.part;
  if (!token.member.empty()) text += " in " + token.member;
  text += ": " + brief(CTypedValue{token.value, token.type});
  if (!token.why.empty()) text += ": " + token.why;
  if (!token.source.empty()) text += ", by " + token.handler + " from " + token.source;
  return text;
}

/// As many of `texts` as there is room for, at least one line when there are any.
void addLimited(const std::string& label, const CLines& texts, std::size_t room, CLines& lines) {
  if (texts.size() <= room) room = texts.size();
  const bool cut = room < texts.size();
  const std::size_t count = cut && room > 0 ? room - 1 : room;
  for (std::size_t i = 0; i < count; ++i) lines.push_back(line(label, texts[i]));
  if (!cut) return;
  const std::size_t rest = texts.size() - count;
  lines.push_back(line("...", std::to_string(rest) + (count > 0 ? " more " : " ") + label +
                                  (rest == 1 ? "" : "s") + ": --json has all"));
}

/// The label of each line in cyan.
std::string coloured(const std::string& text, bool colour) {
  const std::size_t begin = text.find_first_not_of(' ');
  const std::size_t end = std::min(text.find(' ', begin), text.size());
  return text.substr(0, begin) + styled(text.substr(begin, end - begin), styleCyan, colour) +
         printable(text.substr(end));
}

}  // namespace

std::string explanationText(const CExplanation& explanation, bool colour) {
  CLines lines;
  addPlace(explanation, lines);
  if (!explanation.end.empty() && !explanation.exception) {
    lines.push_back(line("pass", "ends early at " + explanation.end));
  }
  if (explanation.ifElement) addIf(*explanation.ifElement, lines);
  if (explanation.include) {
    lines.push_back(line("Filename", brief(explanation.include->filename)));
  }
  if (explanation.loop) addLoop(*explanation.loop, lines);
  if (explanation.bounds) addBounds(*explanation.bounds, lines);
  CLines messages;
  for (const std::string& message : explanation.messages) messages.push_back(oneLine(message));
  CLines tokens;
  for (const CTokenExplanation& token : explanation.tokens) tokens.push_back(tokenText(token));
  const std::size_t room = mostLines - 1 - lines.size();
  const std::size_t forMessages = std::min(messages.size(), std::max<std::size_t>(room / 2, 1));
  addLimited("token", tokens, room - forMessages, lines);
  addLimited("message", messages, mostLines - 1 - lines.size(), lines);
  std::string text = styled(explanation.answer, styleBold, colour) + '\n';
  for (const std::string& each : lines) text += coloured(each, colour) + '\n';
  return text;
}

}  // namespace ttr
