// The facts about one element in words.
#include "page/bounds_words.h"
#include "page/explanation.h"
#include "page/loop_words.h"
#include "text/printable.h"
#include "text/wording.h"

namespace ttr {
namespace {

using CLines = std::vector<CExplanationLine>;

void addPlace(const CExplanation& explanation, CLines& lines) {
  std::string text = explanation.place.Text();
  if (!explanation.origin.empty()) text += ", " + explanation.origin.Text();
  text += "; pass " + std::to_string(explanation.pass);
  for (const CCopyPlace& copy : explanation.copies) {
    text += copy.index ? "; index " + std::to_string(*copy.index) + ", position " : "; copy ";
    text += std::to_string(copy.number) + " of " + std::to_string(copy.of);
  }
  lines.push_back({explanation.kind, text});
}

void addIf(const CIfFact& test, const std::string& why, CLines& lines) {
  lines.push_back({"Condition", test.condition ? typed(*test.condition) : "missing"});
  if (!test.comparison.empty()) lines.push_back({test.comparison, typed(test.operand)});
  lines.push_back({"verdict", (test.holds ? "holds: " : "does not hold: ") + why});
}

void addLoop(const CElementNode& node, CLines& lines) {
  const CLoopFact& loop = *node.loop;
  lines.push_back({"range", rangeText(loop)});
  if (loop.isRotating) {
    lines.push_back({"rotating", rotationText(loop)});
    return;
  }
  const Json::Value* layouts = CJsonPointer::Parse("/Loop/Layout").Find(*node.origin.value);
  lines.push_back({"grid", gridText(loop, layouts == nullptr ? 0 : layouts->size())});
  if (!loop.copies.empty()) lines.push_back({"cells", cellsText(loop)});
}

void addBounds(const CExplanation& explanation, CLines& lines) {
  const auto [x, y, width, height] = enclosingNumbers(explanation.node->enclosing);
  const std::string enclosing = std::to_string(x) + ',' + std::to_string(y) + ' ' +
                                std::to_string(width) + 'x' + std::to_string(height) + " of " +
                                explanation.enclosing;
  const std::optional<CBoundsFact>& bounds = explanation.node->bounds;
  lines.push_back(
      {"Bounds",
       (bounds ? brief(bounds->result) + ", within " : "none; measured within ") + enclosing});
  for (std::size_t i = 0; bounds && i < bounds->entries.size(); ++i) {
    const CBoundsEntryFact& entry = bounds->entries[i];
    lines.push_back(
        {boundsEntryName(i),
         brief(entry.result) + " from " + brief(entry.written) + ": " + boundsSum(entry, i), true});
  }
}

std::string tokenText(const CTokenExplanation& token) {
  std::string text = "$(" + token.fact->body + ')';
  if (!token.part.empty()) text += ", " + token.part;
  if (!token.member.empty()) text += " in " + token.member;
  text += ": " + typed(token.fact->value);
  if (!token.why.empty()) text += ": " + token.why;
  if (!token.source.empty()) text += ", by " + token.fact->handler + " from " + token.source;
  return text;
}

}  // namespace

CLines explanationLines(const CExplanation& explanation) {
  CLines lines;
  addPlace(explanation, lines);
  if (!explanation.ended) {
    const CElementNode& node = *explanation.node;
    if (!explanation.end.empty()) lines.push_back({"pass", "ends early at " + explanation.end});
    if (node.test) addIf(*node.test, explanation.why, lines);
    if (node.include) {
      lines.push_back({"Filename", brief(node.include->filename.value_or(Json::Value()))});
    }
    if (node.loop) addLoop(node, lines);
    if (explanation.HasBounds()) addBounds(explanation, lines);
  }
  for (const CTokenExplanation& token : explanation.tokens) {
    lines.push_back({"token", tokenText(token)});
  }
  for (const std::string& message : explanation.messages) {
    lines.push_back({"message", oneLine(message)});
  }
  return lines;
}

}  // namespace ttr
