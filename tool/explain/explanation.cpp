// The explanation of one element: its parts, and the answer in one sentence.
#include "explain/explanation.h"

#include <algorithm>
#include <utility>

#include "tool_error.h"

namespace ttr {
namespace {

using CTokens = std::vector<CTokenExplanation>;

/// A text of an element in which the library replaces tokens.
struct CText {
  CJsonPointer pointer;  ///< below the element
  bool inside = true;    ///< its own "Context" is in force
};

/// Collects the places of an element that may hold tokens, as the library resolves them.
class CTextCollector {
 public:
  explicit CTextCollector(const Json::Value& element) : m_element(element) {}

  void Add(const CJsonPointer& pointer, bool inside = true) {
    const Json::Value* value = pointer.Find(m_element);
    if (value != nullptr && value->isString()) m_texts.push_back({pointer, inside});
  }

  void AddEntries(const CJsonPointer& pointer, bool inside = true) {
    const Json::Value* value = pointer.Find(m_element);
    if (value == nullptr) return;
    if (value->isObject()) {
      for (const std::string& name : value->getMemberNames()) Add(pointer / name, inside);
    }
    if (value->isArray()) AddFirst(pointer, value->size(), inside);
  }

  void AddFirst(const CJsonPointer& pointer, std::size_t count, bool inside = true) {
    for (std::size_t i = 0; i < count; ++i) Add(pointer / i, inside);
  }

  /// The edges of the points of a layout.
  void AddPoints(const CJsonPointer& pointer) {
    const Json::Value* points = pointer.Find(m_element);
    if (points == nullptr || !points->isArray()) return;
    for (std::size_t i = 0; i < points->size(); ++i) AddFirst(pointer / i, 2);
  }

  const std::vector<CText>& texts() const { return m_texts; }

 private:
  const Json::Value& m_element;
  std::vector<CText> m_texts;
};

CJsonPointer at(const char* member) { return CJsonPointer() / member; }

void addLoopTexts(const std::optional<CLoopExplanation>& loop, CTextCollector& texts) {
  for (const char* name : {"List", "Start", "Stop", "Offset", "Size"}) texts.Add(at("Loop") / name);
  if (!loop || loop->rotating) return;
  for (const char* name : {"CellWidth", "CellHeight"}) texts.Add(at("Loop") / name);
  if (loop->layout) texts.AddPoints(at("Loop") / "Layout" / *loop->layout);
}

std::vector<CText> textsOf(const CElementNode& node, const CExplanation& explanation) {
  CTextCollector texts(*node.origin.value);
  if (node.kind == CElementNode::kindText) texts.Add({}, false);
  texts.AddEntries(at("Context"), false);
  texts.AddFirst(at("Bounds"), 6);
  if (node.kind == CElementNode::kindInclude) texts.Add(at("Include") / "Filename");
  if (node.kind == CElementNode::kindLoop) addLoopTexts(explanation.loop, texts);
  if (node.kind == CElementNode::kindIf && explanation.ifElement) {
    texts.Add(at("If") / "Condition");
    texts.Add(at("If") / explanation.ifElement->comparison);
  }
  if (node.kind != CElementNode::kindElement) return texts.texts();
  texts.AddPoints(at("Layout"));
  for (const char* name : {"Display", "Play", "Prec"}) texts.AddEntries(at(name));
  texts.Add(at("RenderType"));
  return texts.texts();
}

class CExplainer {
 public:
  CExplainer(CPageRunner& page, unsigned pass, const std::string& valuesFile, CNodeWay way)
      : m_page(page), m_probe(page, pass, std::move(way)), m_tokens(page, valuesFile) {}

  CExplanation Explain() {
    const CElementNode& node = m_probe.node();
    CExplanation explanation;
    explanation.pointer = node.pointer.Text();
    explanation.kind = kindName(node.kind);
    explanation.origin = node.origin.pointer;
    explanation.place = placeOf(node);
    explanation.pass = m_probe.pass();
    if (node.result != nullptr) explanation.value = withoutFileNames(*node.result);
    CProbe::CAnswer alone = m_probe.Alone();
    explanation.messages = std::move(alone.messages);
    explanation.exception = std::move(alone.exception);
    if (node.kind == CElementNode::kindText && explanation.value.isString()) {
      explanation.lowercased = m_probe.Value(*node.origin.value, false).value != explanation.value;
    }
    addCopies(explanation);
    addReplacement(explanation);
    addBounds(explanation);
    addTokens(explanation);
    return explanation;
  }

 private:
  CPlace placeOf(const CElementNode& node) const {
    const CSourceFile* file = m_page.File(node.origin.file);
    return file == nullptr ? CPlace{node.origin.file, 1, 1} : file->PlaceOf(node.origin.pointer);
  }

  void addCopies(CExplanation& explanation) const {
    const CNodeWay& way = m_probe.way();
    for (std::size_t depth = 1; depth < way.size(); ++depth) {
      if (!way[depth]->copy) continue;
      const CElementNode& loop = *way[depth - 1];
      const std::size_t count = loop.children.back().copy.value_or(0) + 1;
      explanation.copies.push_back({*way[depth]->copy + 1, count, placeOf(loop)});
    }
  }

  void addReplacement(CExplanation& explanation) const {
    switch (m_probe.node().kind) {
      case CElementNode::kindIf:
        explanation.ifElement = explainIf(m_probe);
        break;
      case CElementNode::kindInclude:
        explanation.include = explainInclude(m_probe, explanation.messages);
        break;
      case CElementNode::kindLoop:
        explanation.loop = explainLoop(m_probe, explanation.messages);
        break;
      default:
        break;
    }
  }

  void addBounds(CExplanation& explanation) const {
    const bool isElement = m_probe.node().origin.value->isObject() &&
                           m_probe.node().kind != CElementNode::kindDocument;
    if (isElement) explanation.bounds = explainBounds(m_probe);
  }

  void addTokens(CExplanation& explanation) const {
    const CElementNode& node = m_probe.node();
    if (node.kind == CElementNode::kindDocument) {
      addPageContext(m_probe, explanation.tokens);
      return;
    }
    for (const CText& text : textsOf(node, explanation)) {
      addTokensOf(m_probe, text, text.pointer, explanation.tokens);
    }
    for (const CElementNode& child : node.children) addChild(child, explanation.tokens);
  }

  void addTokensOf(const CProbe& probe, const CText& text, const CJsonPointer& member,
                   CTokens& tokens) const {
    CJsonPointer pointer = probe.node().origin.pointer;
    for (const std::string& step : text.pointer.steps()) pointer = pointer / step;
    for (CTokenExplanation& token : m_tokens.Explain(probe, pointer, text.inside)) {
      const std::string name = member.Text();
      token.member = name.empty() ? "" : name.substr(1);
      tokens.push_back(std::move(token));
    }
  }

  /// Texts that stand directly in the contents; of a loop's, those of the first copy.
  void addChild(const CElementNode& child, CTokens& tokens) const {
    const CElementNode& node = m_probe.node();
    CNodeWay way = m_probe.way();
    way.push_back(&child);
    if (child.kind == CElementNode::kindDocument) {
      addPageContext(CProbe(m_page, m_probe.pass(), way), tokens);
    }
    const bool shown = child.kind == CElementNode::kindText && !node.IsNull();
    const bool hasTokens = shown && child.origin.value->asString().find("$(") != std::string::npos;
    if (!hasTokens || child.copy.value_or(0) > 0) return;
    const CProbe probe(m_page, m_probe.pass(), way);
    CJsonPointer member;
    for (std::size_t i = node.origin.pointer.steps().size();
         i < child.origin.pointer.steps().size(); ++i) {
      member = member / child.origin.pointer.steps()[i];
    }
    addTokensOf(probe, {{}, false}, member, tokens);
  }

  void addPageContext(const CProbe& probe, CTokens& tokens) const {
    CTextCollector texts(*probe.node().origin.value);
    texts.AddEntries(at("Page") / "Context", false);
    for (const CText& text : texts.texts()) addTokensOf(probe, text, text.pointer, tokens);
  }

  CPageRunner& m_page;
  CProbe m_probe;
  CTokenExplainer m_tokens;
};

// --- The answer ---

std::string ifAnswer(const CIfExplanation& test, bool isNull) {
  std::string why = ": ";
  if (!test.comparison.empty()) {
    why += brief(*test.condition) + ' ' + test.comparison + ' ' + brief(test.operand) + ": ";
  }
  why += test.why;
  if (!test.holds) return "its If does not hold" + why;
  return isNull ? "its If holds, but has no Contents" : "its If holds" + why;
}

std::string loopAnswer(const CExplanation& explanation) {
  const CLoopExplanation& loop = *explanation.loop;
  if (!loop.why.empty()) return "its Loop makes no copies: " + loop.why;
  if (!loop.rotating) {
    return "its Loop makes " + std::to_string(loop.copies) +
           (loop.copies == 1 ? " copy" : " copies");
  }
  std::string answer = "its Loop shows one copy in each pass";
  if (loop.shown) answer += ", now that of index " + std::to_string(*loop.shown);
  return answer;
}

std::string textAnswer(const CExplanation& explanation, const CElementNode& node) {
  const auto null = [](const CTokenExplanation& token) { return !token.why.empty(); };
  const auto token = std::find_if(explanation.tokens.begin(), explanation.tokens.end(), null);
  if (token != explanation.tokens.end()) return token->token + " is null: " + token->why;
  std::string answer = "it is written so";
  if (!explanation.tokens.empty()) answer = "from " + brief(*node.origin.value);
  return explanation.lowercased ? answer + ", lowercased as it names a file" : answer;
}

std::string elementAnswer(const CExplanation& explanation) {
  if (explanation.bounds && explanation.bounds->result.isArray()) {
    return "it stands at " + brief(explanation.bounds->result);
  }
  return "it has no Bounds of its own";
}

std::string reason(const CExplanation& explanation, const CElementNode& node) {
  if (explanation.exception) return "the pass ended early: " + *explanation.exception;
  switch (node.kind) {
    case CElementNode::kindIf:
      return ifAnswer(*explanation.ifElement, node.IsNull());
    case CElementNode::kindLoop:
      return loopAnswer(explanation);
    case CElementNode::kindInclude:
      if (node.IsNull()) return "its Include failed: " + explanation.include->why;
      return "it is the document in " + brief(explanation.include->filename);
    case CElementNode::kindText:
      return textAnswer(explanation, node);
    case CElementNode::kindElement:
      return elementAnswer(explanation);
    case CElementNode::kindDocument:
      return "it is the page";
    case CElementNode::kindOther:
      break;
  }
  return "it is written so";
}

std::string answerTo(const CExplainTarget& target, const CJsonPointer& pointer,
                     const CExplanation& explanation) {
  const CElementNode& node = *target.way.back();
  const std::string name = explanation.pointer.empty() ? "the page" : explanation.pointer;
  const bool scalar = !explanation.value.isObject() && !explanation.value.isArray();
  const std::string value = scalar ? brief(explanation.value) : withArticle(explanation.kind);
  std::string answer = name + " is " + value + ": " + reason(explanation, node);
  if (target.hidden) answer = pointer.Text() + " is not there, as " + answer;
  return answer;
}

}  // namespace

CExplanation explain(CPageRunner& page, unsigned pass, const std::string& valuesFile,
                     const CJsonPointer& pointer) {
  const CSourceFile& file = page.pageFile();
  if (!file.errors().empty()) {
    throw CToolError(file.errors()[0].place.Text(), file.errors()[0].reason);
  }
  const CPageRun run = page.Run({}, pass);
  const CElementNode root = elementTree(page, run);
  const CExplainTarget target = findTarget(page, root, pointer);
  CExplanation explanation = CExplainer(page, pass, valuesFile, target.way).Explain();
  if (run.exception) explanation.exception = run.exception;
  explanation.answer = answerTo(target, pointer, explanation);
  return explanation;
}

}  // namespace ttr
