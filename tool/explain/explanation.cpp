// The explanation of one element: its parts, and the answer in one sentence.
#include "explain/explanation.h"

#include <algorithm>
#include <utility>

#include "explain/pass_tree.h"
#include "text/printable.h"
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
      explanation.copies.push_back({*way[depth]->copy + 1, count, placeOf(loop), {}});
      const Json::Value* written = findMember(loop.origin.value, "Loop");
      if (findMember(written, "Bounds") != nullptr) addRotation(depth, explanation.copies.back());
    }
  }

  /// The loop is the node before `depth`.
  void addRotation(std::size_t depth, CCopy& copy) const {
    CNodeWay way = m_probe.way();
    way.resize(depth);
    const CLoopExplanation loop = explainLoop(CProbe(m_page, m_probe.pass(), way), {});
    copy.index = loop.shown;
    if (!loop.position) return;
    copy.number = *loop.position + 1;
    copy.of = loop.indices;
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

/// The member of the page's "Context" that `pointer` leads to or into; empty for other places.
CJsonPointer variableAt(const CExplainTarget& target, const CJsonPointer& pointer) {
  const bool isPage = target.way.back()->kind == CElementNode::kindDocument;
  const CJsonPointer context = at("Page") / "Context";
  if (!isPage || !pointer.IsBelow(context) || pointer == context) return {};
  return context / pointer.steps()[2];
}

/// Narrows the explanation of the page to that of a variable which it binds.
void narrowToVariable(const CProbe& probe, const CJsonPointer& variable,
                      CExplanation& explanation) {
  const CSourceFile& file = probe.page().pageFile();
  const Json::Value* written = variable.Find(file.document());
  if (written == nullptr) return;
  explanation.kind = "variable";
  explanation.pointer = variable.Text();
  explanation.origin = variable;
  explanation.place = file.PlaceOf(variable);
  explanation.value = probe.Value(*written, false).value;
  explanation.messages = probe.Value(*written, false).messages;
  const auto other = [&](const CTokenExplanation& token) {
    return '/' + token.member != variable.Text();
  };
  CTokens& tokens = explanation.tokens;
  tokens.erase(std::remove_if(tokens.begin(), tokens.end(), other), tokens.end());
  const bool isText = written->isString() && written->asString().find("$(") != std::string::npos;
  explanation.answer = explanation.pointer + " is " + brief(explanation.value) +
                       (isText ? ": from " + brief(*written) : ": it is written so");
}

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
  const auto null = [](const CTokenExplanation& token) {
    return token.part.empty() && !token.why.empty();
  };
  const auto token = std::find_if(explanation.tokens.begin(), explanation.tokens.end(), null);
  if (token != explanation.tokens.end()) return token->token + " is null: " + token->why;
  std::string answer = "it is written so";
  if (!explanation.tokens.empty()) answer = "from " + brief(*node.origin.value);
  return explanation.lowercased ? answer + ", lowercased as it names a file" : answer;
}

std::string elementAnswer(const CExplanation& explanation, const CElementNode& node) {
  const Json::Value* written = findMember(node.origin.value, "Bounds");
  if (written == nullptr) return "it has no Bounds of its own";
  if (!written->isArray()) return "its Bounds are no array";
  if (written->empty()) return "its Bounds are empty";
  return "it stands at " + brief(explanation.bounds->result);
}

std::string documentAnswer(const CExplanation& explanation, const CElementNode& node) {
  const std::size_t count = node.children.size();
  if (count > 0) return "it shows " + std::to_string(count) + (count == 1 ? " entry" : " entries");
  std::string answer = "it shows nothing";
  for (const std::string& message : explanation.messages) answer += ": " + oneLine(message);
  return answer;
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
      return elementAnswer(explanation, node);
    case CElementNode::kindDocument:
      return documentAnswer(explanation, node);
    case CElementNode::kindOther:
      if (explanation.value.isArray()) return "left as it is, arrays are not walked";
      break;
  }
  return "it is written so";
}

std::string answerTo(const CExplainTarget& target, const CJsonPointer& pointer,
                     const CExplanation& explanation) {
  const CElementNode& node = *target.way.back();
  const std::string name = explanation.pointer.empty() ? "the page" : explanation.pointer;
  const bool scalar = !explanation.value.isObject() && !explanation.value.isArray();
  std::string value = scalar ? brief(explanation.value) : withArticle(explanation.kind);
  if (node.kind == CElementNode::kindOther && !scalar) {
    value = withArticle(typeName(explanation.value));
  }
  if (node.kind == CElementNode::kindText && !scalar) {
    value = withArticle(typeName(explanation.value)) + ", from a token";
  }
  std::string answer = name + " is " + value + ": " + reason(explanation, node);
  if (target.hidden) answer = pointer.Text() + " is not there, as " + answer;
  return answer;
}

/// Of what ends a pass only the tokens can be told.
void dropWhatEnds(CExplanation& explanation) {
  explanation.value = Json::Value();
  explanation.ifElement.reset();
  explanation.include.reset();
  explanation.loop.reset();
  explanation.bounds.reset();
}

std::string endAnswer(const CExplanation& explanation, bool first, const CPlace& place) {
  const std::string name = explanation.pointer.empty() ? "the page" : explanation.pointer;
  const std::string verb = first ? " ends here, at " : " would end here too, at ";
  return name + ": the pass" + verb + place.Text() + ": " + *explanation.exception;
}

}  // namespace

CExplanation explain(CPageRunner& page, unsigned pass, const std::string& valuesFile,
                     const CJsonPointer& pointer) {
  const CSourceFile& file = page.pageFile();
  if (!file.errors().empty()) {
    throw CToolError(file.errors()[0].place.Text(), file.errors()[0].reason);
  }
  const CPassTree tree(page, pass);
  CExplainTarget target = findTarget(page, tree.root(), pointer);
  const CFault* end = tree.EndIn(*target.way.back());
  const CElementNode written = tree.Written(*target.way.back());
  if (tree.OwnEnd(written) != nullptr) target.way.back() = &written;
  CExplanation explanation = CExplainer(page, pass, valuesFile, target.way).Explain();
  if (end != nullptr) {
    explanation.exception = end->message;
    dropWhatEnds(explanation);
  } else if (tree.end() == nullptr && tree.exception()) {
    explanation.exception = tree.exception();
  }
  if (tree.end() != nullptr) explanation.end = tree.end()->place.Text() + ": " + *tree.exception();
  const bool endsHere = end != nullptr;
  explanation.answer = endsHere ? endAnswer(explanation, end == tree.end(), end->place)
                                : answerTo(target, pointer, explanation);
  const CJsonPointer variable = variableAt(target, pointer);
  if (!endsHere && !variable.empty()) {
    narrowToVariable(CProbe(page, pass, target.way), variable, explanation);
  }
  return explanation;
}

}  // namespace ttr
