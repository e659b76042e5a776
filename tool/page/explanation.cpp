// The facts about one element, from the record of a pass.
#include "page/explanation.h"

#include <algorithm>
#include <utility>

#include "page/condition_words.h"
#include "page/loop_words.h"
#include "page/record_faults.h"
#include "page/token_words.h"
#include "text/wording.h"

namespace ttr {
namespace {

bool isSameOrigin(const CTemplateValue& a, const CTemplateValue& b) {
  return a.file == b.file && a.pointer == b.pointer;
}

/// True when `end` is at `node` or inside of what it is made from.
bool isIn(const CElementNode& node, const CPassEnd& end) {
  const auto isBelow = [&node](const std::string& file, const CJsonPointer& pointer) {
    return node.origin.file == file && pointer.IsBelow(node.origin.pointer);
  };
  const CMessageFact& exception = end.exception;
  return isBelow(exception.object.file, exception.pointer) ||
         std::any_of(exception.way.begin(), exception.way.end(), [&](const CIncludeStep& step) {
           return isBelow(step.element.file, step.element.pointer);
         });
}

class CExplainer {
 public:
  CExplainer(CPageRunner& page, const CPassRecord& record, const CNodeWay& way,
             const std::string& valuesFile)
      : m_page(page), m_record(record), m_way(way), m_valuesFile(valuesFile), m_node(way.back()) {}

  CExplanation Explain() {
    addEnd();
    m_told.node = m_node;
    m_told.kind = kindName(m_node->kind);
    m_told.pointer = m_way.back()->pointer;
    m_told.origin = m_node->origin.pointer;
    m_told.place = placeOf(*m_node);
    m_told.pass = m_record.pass;
    addCopies();
    addMessages();
    const bool hasBounds = m_node->origin.value != nullptr && m_node->origin.value->isObject() &&
                           m_node->kind != CElementNode::kindDocument;
    if (hasBounds) m_told.enclosing = enclosing();
    addTokens(*m_node, {});
    for (const CElementNode& child : m_node->children) addChild(asItEnded(child));
    if (m_told.ended) return std::move(m_told);
    m_told.value = m_node->result;
    if (m_node->test) m_told.why = whyHolds(*m_node->test);
    if (m_node->include && m_node->IsNull()) m_told.why = whyNotIncluded();
    if (m_node->loop) m_told.why = whyNoCopies(*m_node, m_told.messages);
    return std::move(m_told);
  }

 private:
  void addEnd() {
    if (m_record.ends.empty()) return;
    const CFault first = faultOfEnd(m_page, m_record.ends.front());
    m_told.end = first.place.Text() + ": " + first.message;
    for (const CPassEnd& end : m_record.ends) {
      if (!isIn(*m_node, end)) continue;
      const CFault fault = faultOfEnd(m_page, end);
      m_told.ended = CEndExplanation{fault.message, fault.place, &end == &m_record.ends.front()};
      m_node = &asItEnded(*m_node);
      return;
    }
  }

  /// An element that an exception left is as far as it came then; what took its place afterwards
  /// tells nothing.
  const CElementNode& asItEnded(const CElementNode& node) const {
    for (const CPassEnd& end : m_record.ends) {
      if (isSameOrigin(end.element.origin, node.origin)) return end.element;
    }
    return node;
  }

  CPlace placeOf(const CElementNode& node) const {
    const CSourceFile* file = m_page.File(node.origin.file);
    return file == nullptr ? CPlace{node.origin.file, 1, 1} : file->PlaceOf(node.origin.pointer);
  }

  void addCopies() {
    for (std::size_t depth = 1; depth < m_way.size(); ++depth) {
      const CElementNode& loop = *m_way[depth - 1];
      if (!m_way[depth]->copy || !loop.loop) continue;
      const std::size_t copy = *m_way[depth]->copy;
      CCopyPlace place{copy + 1, loop.loop->copies.size(), placeOf(loop), std::nullopt};
      if (loop.loop->isRotating) {
        const CCopyFact& fact = loop.loop->copies[copy];
        place.index = fact.index;
        place.number = static_cast<std::size_t>(fact.position) + 1;
        place.of = static_cast<std::size_t>(std::max(loop.loop->count, 1));
      }
      m_told.copies.push_back(std::move(place));
    }
  }

  /// Those of an included document are told with its Include.
  void addMessages() {
    const CElementNode& node = *m_way.back();
    std::vector<std::size_t> indices = node.messages;
    for (const CElementNode& child : node.children) {
      if (child.kind != CElementNode::kindDocument) continue;
      indices.insert(indices.end(), child.messages.begin(), child.messages.end());
    }
    std::sort(indices.begin(), indices.end());
    for (const std::size_t index : indices) {
      const CMessageFact& message = m_record.messages[index];
      if (!message.isAside) m_told.messages.push_back(message.text);
    }
    for (const CMessageFact& message : m_record.lostMessages) {
      if (isSameOrigin(message.object, node.origin)) m_told.messages.push_back(message.text);
    }
  }

  /// What the enclosing bounds of the node are.
  std::string enclosing() const {
    for (std::size_t depth = m_way.size() - 1; depth-- > 0;) {
      const CElementNode& node = *m_way[depth];
      const auto& copy = m_way[depth + 1]->copy;
      if (node.loop && !node.loop->isRotating && copy) {
        return "cell " + std::to_string(*copy + 1) + " of the Loop at " + placeOf(node).Text();
      }
      if (node.bounds && node.bounds->result.isArray() && !node.bounds->result.empty()) {
        return "the " + std::string(kindName(node.kind)) + " at " + placeOf(node).Text();
      }
    }
    return "the screen";
  }

  /// Texts that stand directly in the contents; of a loop's, those of the first copy.
  void addChild(const CElementNode& child) {
    const bool isText = child.kind == CElementNode::kindText && child.copy.value_or(0) == 0;
    const bool isShown = isText && !m_node->IsNull();
    const bool isOfDocument = m_node->kind == CElementNode::kindDocument;
    if (child.kind == CElementNode::kindDocument) addTokens(child, {});
    if (!isShown || isOfDocument) return;
    CJsonPointer below;
    const auto& steps = child.origin.pointer.steps();
    for (std::size_t i = m_node->origin.pointer.steps().size(); i < steps.size(); ++i) {
      below = std::move(below) / steps[i];
    }
    addTokens(child, below);
  }

  /// The tokens of `node`, which is the one that is explained, or `below` it.
  void addTokens(const CElementNode& node, const CJsonPointer& below) {
    for (std::size_t i = 0; i < node.tokens.size(); ++i) {
      const CTokenFact& fact = node.tokens[i];
      const std::string name = (below / fact.text).Text();
      CTokenExplanation token;
      token.member = name.empty() ? "" : name.substr(1);
      token.part = partOfToken(node.tokens, i);
      token.fact = &fact;
      token.place = placeOfToken(node, wholeToken(node.tokens, i));
      token.source = sourceOf(fact);
      token.why = whyNull(m_page, node, i);
      if (!fact.answered && m_told.ended) token.why = m_told.ended->text;
      m_told.tokens.push_back(std::move(token));
    }
  }

  CPlace placeOfToken(const CElementNode& node, std::size_t index) const {
    const CTokenFact& token = node.tokens[index];
    const auto before = std::count_if(
        node.tokens.begin(), node.tokens.begin() + static_cast<std::ptrdiff_t>(index),
        [&](const CTokenFact& other) {
          return !other.isPath && other.body == token.body && other.text == token.text;
        });
    return m_page.File(node.origin.file)
        ->PlaceOfPart(node.origin.pointer / token.text, "$(" + token.body + ')',
                      static_cast<std::size_t>(before));
  }

  std::string sourceOf(const CTokenFact& token) const {
    if (m_page.values().isMember(token.handler)) return m_valuesFile;
    if (!token.binding) return "";
    const CTemplateValue& place = token.binding->place;
    const CSourceFile& file = *m_page.File(place.file);
    const std::string& member = token.binding->member;
    if (member == "Context") return "Context at " + file.PlaceOfName(place.pointer).Text();
    return member + " of the Loop at " + file.PlaceOf(place.pointer).Text();
  }

  std::string whyNotIncluded() const {
    for (const std::string& message : m_told.messages) {
      const bool isOfInclude = message.find("processContentsIncludeElement") != std::string::npos;
      if (isOfInclude) return withoutFunction(message);
    }
    const std::string name = m_node->include->filename.value_or("").asString();
    const CSourceFile* file = m_page.IncludedFile(name);
    if (file == nullptr) return name + ": " + m_page.ReasonNotIncluded(name);
    if (file->errors().empty()) return name + " holds null";
    return file->errors()[0].place.Text() + ": " + file->errors()[0].reason;
  }

  CPageRunner& m_page;
  const CPassRecord& m_record;
  const CNodeWay& m_way;
  const std::string& m_valuesFile;
  const CElementNode* m_node;
  CExplanation m_told;
};

}  // namespace

CExplanation explainNode(CPageRunner& page, const CPassRecord& record, const CNodeWay& way,
                         const std::string& valuesFile) {
  return CExplainer(page, record, way, valuesFile).Explain();
}

}  // namespace ttr
