// The answer in one sentence.
#include "explain/answer.h"

#include <algorithm>

#include "explain/target.h"
#include "text/printable.h"
#include "text/wording.h"
#include "tool_error.h"

namespace ttr {
namespace {

std::string ifAnswer(const CExplanation& explanation) {
  const CIfFact& test = *explanation.node->test;
  std::string why = ": ";
  if (!test.comparison.empty()) {
    why += typed(*test.condition) + ' ' + test.comparison + ' ' + typed(test.operand) + ": ";
  }
  why += explanation.why;
  if (!test.holds) return "its If does not hold" + why;
  return explanation.node->IsNull() ? "its If holds, but has no Contents" : "its If holds" + why;
}

std::string loopAnswer(const CExplanation& explanation) {
  const CLoopFact& loop = *explanation.node->loop;
  if (!explanation.why.empty()) return "its Loop makes no copies: " + explanation.why;
  if (!loop.isRotating) {
    const std::size_t count = loop.copies.size();
    return "its Loop makes " + std::to_string(count) + (count == 1 ? " copy" : " copies");
  }
  const std::string index = std::to_string(loop.copies.front().index);
  return "its Loop shows one copy in each pass, now that of index " + index;
}

std::string textAnswer(const CExplanation& explanation) {
  const CElementNode& node = *explanation.node;
  for (const CTokenExplanation& token : explanation.tokens) {
    const bool isNull = token.part.empty() && !token.why.empty();
    if (isNull) return "$(" + token.fact->body + ") is null: " + token.why;
  }
  const std::string from = "from " + brief(*node.origin.value);
  const std::string answer = explanation.tokens.empty() ? "it is written so" : from;
  return node.isLowercased ? answer + ", lowercased as it names a file" : answer;
}

std::string elementAnswer(const CElementNode& node) {
  const Json::Value* written = (CJsonPointer() / "Bounds").Find(*node.origin.value);
  if (written == nullptr) return "it has no Bounds of its own";
  if (!written->isArray()) return "its Bounds are no array";
  if (written->empty()) return "its Bounds are empty";
  return "it stands at " + brief(node.bounds->result);
}

std::string documentAnswer(const CExplanation& explanation) {
  const std::size_t count = explanation.node->children.size();
  if (count > 0) return "it shows " + std::to_string(count) + (count == 1 ? " entry" : " entries");
  std::string answer = "it shows nothing";
  for (const std::string& message : explanation.messages) answer += ": " + oneLine(message);
  return answer;
}

std::string reason(const CExplanation& explanation) {
  const CElementNode& node = *explanation.node;
  switch (node.kind) {
    case CElementNode::kindIf:
      return ifAnswer(explanation);
    case CElementNode::kindLoop:
      return loopAnswer(explanation);
    case CElementNode::kindInclude:
      if (node.IsNull()) return "its Include failed: " + explanation.why;
      return "it is the document in " + brief(*node.include->filename);
    case CElementNode::kindText:
      return textAnswer(explanation);
    case CElementNode::kindElement:
      return elementAnswer(node);
    case CElementNode::kindDocument:
      return documentAnswer(explanation);
    case CElementNode::kindOther:
      break;
  }
  const bool isArray = explanation.value != nullptr && explanation.value->isArray();
  return isArray ? "left as it is, arrays are not walked" : "it is written so";
}

/// What the element became.
std::string valueText(const CExplanation& explanation) {
  const Json::Value& value =
      explanation.value == nullptr ? Json::Value::nullSingleton() : *explanation.value;
  if (!value.isObject() && !value.isArray()) return brief(value);
  const CElementNode::eKind kind = explanation.node->kind;
  if (kind == CElementNode::kindOther) return withArticle(typeName(value));
  if (kind == CElementNode::kindText) return withArticle(typeName(value)) + ", from a token";
  return withArticle(explanation.kind);
}

std::string sentenceFor(const CExplanation& explanation) {
  const std::string pointer = explanation.pointer.Text();
  const std::string name = pointer.empty() ? "the page" : pointer;
  if (!explanation.ended)
    return name + " is " + valueText(explanation) + ": " + reason(explanation);
  const std::string verb =
      explanation.ended->isFirst ? " ends here, at " : " would end here too, at ";
  return name + ": the pass" + verb + explanation.ended->place.Text() + ": " +
         explanation.ended->text;
}

/// The member of the page's "Context" that `pointer` leads to or into; empty for other places.
CJsonPointer variableAt(const CElementNode& node, const CJsonPointer& pointer) {
  const CJsonPointer context = CJsonPointer() / "Page" / "Context";
  const bool isInside = pointer.IsBelow(context) && !(pointer == context);
  const bool isPage = node.kind == CElementNode::kindDocument;
  return isPage && isInside ? context / pointer.steps()[2] : CJsonPointer();
}

/// Narrows the explanation of the page to that of a variable which it binds.
void narrowToVariable(const CSourceFile& file, const CPassRecord& record,
                      const CJsonPointer& variable, CAnswer& answer) {
  const Json::Value* written = variable.Find(file.document());
  if (written == nullptr) return;
  CExplanation& explanation = answer.explanation;
  explanation.kind = "variable";
  explanation.pointer = variable;
  explanation.origin = variable;
  explanation.place = file.PlaceOf(variable);
  explanation.value = variable.Find(*record.result);
  explanation.messages.clear();
  for (const CMessageFact& message : record.messages) {
    const bool isAbout = message.object.file == file.name() && message.pointer.IsBelow(variable);
    if (isAbout) explanation.messages.push_back(message.text);
  }
  const auto isOther = [&](const CTokenExplanation& token) {
    return !CJsonPointer::Parse('/' + token.member).IsBelow(variable);
  };
  auto& tokens = explanation.tokens;
  tokens.erase(std::remove_if(tokens.begin(), tokens.end(), isOther), tokens.end());
  const Json::Value value = explanation.value == nullptr ? Json::Value() : *explanation.value;
  answer.sentence = variable.Text() + " is " + brief(value) +
                    (tokens.empty() ? ": it is written so" : ": from " + brief(*written));
}

}  // namespace

CAnswer explain(CPageRunner& page, const CPassRecord& record, const std::string& valuesFile,
                const CJsonPointer& pointer) {
  const CSourceFile& file = page.pageFile();
  if (!file.errors().empty()) {
    throw CToolError(file.errors()[0].place.Text(), file.errors()[0].reason);
  }
  const CExplainTarget target = findTarget(page, record.root, pointer);
  CAnswer answer;
  answer.explanation = explainNode(page, record, target.way, valuesFile);
  const CExplanation& explanation = answer.explanation;
  answer.sentence = sentenceFor(explanation);
  if (explanation.ended) return answer;
  if (target.hidden) answer.sentence = pointer.Text() + " is not there, as " + answer.sentence;
  const CJsonPointer variable = variableAt(*explanation.node, pointer);
  if (!variable.empty()) narrowToVariable(file, record, variable, answer);
  return answer;
}

}  // namespace ttr
