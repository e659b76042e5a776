// Each token of a text by itself: its value comes from the library, the reason for a null from a
// look at the values and bindings along the token's path.
#include "explain/token_explanation.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/parsed_token.h"
#include "check/suggestions.h"
#include "explain/replacement_explanation.h"

namespace ttr {
namespace {

const CJsonHandler& anyHandler() {
  static const CJsonHandler handler{Json::Value()};
  return handler;
}

/// The bodies of the tokens in `text`, found as the library finds them.
std::vector<std::string> tokenBodies(const std::string& text) {
  std::vector<std::string> bodies;
  std::size_t start = text.find("$(");
  while (start != std::string::npos) {
    const std::size_t end = text.find(')', start);
    if (end == std::string::npos) break;
    bodies.push_back(text.substr(start + 2, end - start - 2));
    start = text.find("$(", end);
  }
  return bodies;
}

std::string names(const Json::Value& object) {
  constexpr std::size_t most = 6;
  std::string text;
  std::size_t count = 0;
  for (const std::string& name : object.getMemberNames()) {
    if (count++ == most) return text + ", ...";
    text += (text.empty() ? "" : ", ") + name;
  }
  return text.empty() ? "no members" : text;
}

/// The path that a token takes through a value, one step after the other.
class CPath {
 public:
  CPath(const Json::Value& root, std::string name) : m_value(&root), m_name(std::move(name)) {}

  /// Steps into a member; false, and a reason, when there is none.
  bool Step(const std::string& member) {
    if (!m_value->isObject()) {
      m_why = m_name + " is " + withArticle(typeName(*m_value)) + ", without members";
      return false;
    }
    if (!m_value->isMember(member)) {
      m_why = m_name + " has no member '" + member + "'; it has " + names(*m_value);
      return false;
    }
    m_value = &(*m_value)[member];
    m_name += '.' + member;
    return true;
  }

  bool Enter(int index) {
    if (!m_value->isArray()) {
      m_why = m_name + " is " + withArticle(typeName(*m_value)) + "; only an array has entries";
      return false;
    }
    if (index < 0 || static_cast<Json::ArrayIndex>(index) >= m_value->size()) {
      m_why = "index " + std::to_string(index) + " is outside of " + m_name + ", which " +
              (m_value->empty() ? "is empty"
                                : "has the entries 0.." + std::to_string(m_value->size() - 1));
      return false;
    }
    m_value = &(*m_value)[static_cast<Json::ArrayIndex>(index)];
    m_name += '[' + std::to_string(index) + ']';
    return true;
  }

  std::string why() const { return m_why.empty() ? m_name + " is null there" : m_why; }

 private:
  const Json::Value* m_value;
  std::string m_name;
  std::string m_why;
};

bool hasIndex(const CParsedToken& token) {
  constexpr std::int32_t closed = sectionIndex | sectionIndexEnd;
  return (token.sectionsSeen & closed) == closed && !token.indexParts.empty();
}

std::string joined(const CTokenParts& parts, std::size_t count) {
  return CTokenParts::rebuildToken(parts, static_cast<unsigned>(count));
}

/// True when `path`, as a token of its own, is a path of as many parts.
bool isPath(const std::string& path, std::size_t parts) {
  const CParsedToken token(path);
  return token.sectionsSeen == sectionName && token.nameParts.size() == parts;
}

/// Why the path of `token`, from part `first` on, and its index end at null in `root`.
std::string whyNullIn(const Json::Value& root, const CParsedToken& token, std::size_t first,
                      const CProbe& probe, bool inside) {
  CPath path(root, joined(token.nameParts, first));
  for (std::size_t part = first; part < token.nameParts.size(); ++part) {
    if (!path.Step(token.nameParts[part])) return path.why();
  }
  if (!hasIndex(token)) return path.why();
  // One part is a literal, more are a path to look up: as in the library.
  const std::string text = joined(token.indexParts, token.indexParts.size());
  const std::string index = token.indexParts.size() == 1 ? text : "$(" + text + ')';
  path.Enter(probe.Integer(index, inside));
  return path.why();
}

/// The first place in `value` that binds `name`: a member of a "Context" or a variable of a "Loop".
std::optional<CJsonPointer> findBinding(const Json::Value& value, const CJsonPointer& pointer,
                                        const std::string& name) {
  if (value.isObject()) {
    const Json::Value* context = findMember(&value, "Context");
    if (context != nullptr && context->isObject() && context->isMember(name)) {
      return pointer / "Context" / name;
    }
    const Json::Value* loop = findMember(&value, "Loop");
    for (const char* variable : {"Var", "Key", "Value", "Count"}) {
      const Json::Value* bound = findMember(loop, variable);
      if (bound != nullptr && *bound == name) return pointer / "Loop" / variable;
    }
    for (const std::string& member : value.getMemberNames()) {
      if (auto found = findBinding(value[member], pointer / member, name)) return found;
    }
  } else if (value.isArray()) {
    for (Json::ArrayIndex i = 0; i < value.size(); ++i) {
      if (auto found = findBinding(value[i], pointer / std::size_t{i}, name)) return found;
    }
  }
  return std::nullopt;
}

/// The member of a loop that binds `name` in its copies; of several the last one bound.
const char* loopVariable(const Json::Value* loop, const std::string& name) {
  const bool isGrid = findMember(loop, "Bounds") == nullptr;
  for (const char* variable : {"Count", "Value", "Key", "Var"}) {
    const Json::Value* bound = findMember(loop, variable);
    const bool binds = isGrid || std::string(variable) != "Count";
    if (binds && bound != nullptr && bound->isString() && bound->asString() == name) {
      return variable;
    }
  }
  return nullptr;
}

}  // namespace

/// What binds a name, and where.
struct CTokenExplainer::CBinding {
  std::string what;  ///< "Context", "Value of the Loop"
  CPlace place;
};

CTokenExplainer::CTokenExplainer(CPageRunner& page, std::string valuesFile)
    : m_page(page), m_valuesFile(std::move(valuesFile)) {
  for (const std::string& name : page.TokenNames()) m_registry.Set(name, &anyHandler());
}

std::vector<CTokenExplanation> CTokenExplainer::Explain(const CProbe& probe,
                                                        const CJsonPointer& text,
                                                        bool inside) const {
  std::vector<CTokenExplanation> explanations;
  const CSourceFile* file = m_page.File(probe.node().origin.file);
  const Json::Value* value = file == nullptr ? nullptr : text.Find(file->document());
  if (value == nullptr || !value->isString()) return explanations;
  for (const std::string& body : tokenBodies(value->asString())) {
    explanations.push_back(explainToken(probe, text, body, inside));
    addParts(probe, text, body, inside, explanations);
  }
  return explanations;
}

/// The paths inside of a token, which the library looks up as it does tokens.
void CTokenExplainer::addParts(const CProbe& probe, const CJsonPointer& text,
                               const std::string& body, bool inside,
                               std::vector<CTokenExplanation>& explanations) const {
  const CParsedToken token(body);
  const auto add = [&](const char* part, const CTokenParts& parts) {
    const std::string path = joined(parts, parts.size());
    if (parts.size() < 2 || !isPath(path, parts.size())) return;
    CTokenExplanation explanation = explainToken(probe, text, path, inside);
    explanation.part = std::string(part) + " of $(" + body + ')';
    explanation.place = explanations.back().place;
    explanations.push_back(std::move(explanation));
  };
  if (hasIndex(token)) add("index", token.indexParts);
  if (token.operation != '\0') add("operand", token.operandParts);
}

CTokenExplanation CTokenExplainer::explainToken(const CProbe& probe, const CJsonPointer& text,
                                                const std::string& body, bool inside) const {
  CTokenExplanation explanation;
  explanation.token = "$(" + body + ')';
  explanation.place = m_page.File(probe.node().origin.file)->PlaceOfPart(text, explanation.token);
  const CProbe::CAnswer answer = probe.Value(explanation.token, inside);
  explanation.value = answer.value;
  explanation.type = probe.TypeOf(explanation.token, answer.value, inside);
  const CParsedToken token(body);
  const auto handler = m_registry.find(token.nameParts);
  if (handler == m_registry.handlers().end()) {
    explanation.why = whyNoHandler(token.nameParts);
    return explanation;
  }
  explanation.handler = handler->first;
  if (m_page.values().isMember(handler->first)) {
    explanation.source = m_valuesFile;
    const auto nameParts =
        static_cast<std::size_t>(1 + std::count(handler->first.begin(), handler->first.end(), '.'));
    explanation.why = whyNullIn(m_page.values()[handler->first], token, nameParts, probe, inside);
  } else {
    explainBound(probe, token, inside, explanation);
  }
  if (hasIndex(token) && token.indexParts.size() > 1 &&
      m_registry.find(token.indexParts) == m_registry.handlers().end()) {
    explanation.why = "the index: " + whyNoHandler(token.indexParts);
  }
  if (!explanation.value.isNull()) explanation.why.clear();
  if (answer.exception) explanation.why = *answer.exception;
  return explanation;
}

void CTokenExplainer::explainBound(const CProbe& probe, const CParsedToken& token, bool inside,
                                   CTokenExplanation& explanation) const {
  // $(context.NAME) and $(NAME): the handler's own name is a part, or it is the variable's.
  const std::size_t first = explanation.handler == "context" ? 1 : 0;
  if (token.nameParts.size() <= first) {
    explanation.why = "a name is missing: $(context.NAME)";
    return;
  }
  const std::string& name = token.nameParts[first];
  const std::optional<CBinding> bound = binding(probe.way(), name, inside);
  if (!bound) {
    explanation.why = whyNotBound(probe, name, inside);
    return;
  }
  explanation.source = bound->what + " at " + bound->place.Text();
  if (!explanation.value.isNull()) return;
  const Json::Value root =
      probe.Value("$(" + joined(token.nameParts, first + 1) + ')', inside).value;
  explanation.why = whyNullIn(root, token, first + 1, probe, inside);
}

std::optional<CTokenExplainer::CBinding> CTokenExplainer::binding(const CNodeWay& way,
                                                                  const std::string& name,
                                                                  bool inside) const {
  bool replaced = false;  // the page context of an included file replaces that of the Include
  for (std::size_t depth = way.size(); depth-- > 0;) {
    const CElementNode& node = *way[depth];
    const bool isPlace = depth + 1 == way.size();
    const CSourceFile* file = m_page.File(node.origin.file);
    if (file == nullptr) continue;
    const bool isDocument = node.kind == CElementNode::kindDocument;
    const CJsonPointer pointer = isDocument ? node.origin.pointer / "Page" : node.origin.pointer;
    const Json::Value* value = pointer.Find(file->document());
    const char* variable = isPlace || node.kind != CElementNode::kindLoop
                               ? nullptr
                               : loopVariable(findMember(value, "Loop"), name);
    if (variable != nullptr) {
      return CBinding{variable + std::string(" of the Loop"),
                      file->PlaceOf(pointer / "Loop" / variable)};
    }
    const Json::Value* context = findMember(value, "Context");
    const bool inForce = context != nullptr && context->isObject() && (!isPlace || inside);
    if (inForce && !replaced && context->isMember(name)) {
      return CBinding{"Context", file->PlaceOfName(pointer / "Context" / name)};
    }
    replaced = isDocument && inForce;
  }
  return std::nullopt;
}

std::string CTokenExplainer::whyNoHandler(const CTokenParts& parts) const {
  std::vector<std::string> names;
  for (const auto& [name, handler] : m_registry.handlers()) names.push_back(name);
  const std::string path = joined(parts, parts.size());
  const std::string message = "CTokenResolver::GetTokenValue: no token handler for: " + path + '.';
  const std::string suggestion = tokenSuggestion(message, names);
  const std::string why = "no handler is named '" + (parts.empty() ? path : parts[0]) + "'";
  return suggestion.empty() ? why : why + ", " + suggestion;
}

std::string CTokenExplainer::whyNotBound(const CProbe& probe, const std::string& name,
                                         bool inside) const {
  const bool isDocument = probe.node().kind == CElementNode::kindDocument;
  const Json::Value* value = probe.node().origin.value;
  const Json::Value* context =
      findMember(isDocument ? findMember(value, "Page") : value, "Context");
  if (!inside && context != nullptr && context->isObject() && context->isMember(name)) {
    return "'" + name + "' is not in force yet: the members of a Context do not see each other";
  }
  const std::string elsewhere = placeElsewhere(name);
  if (elsewhere.empty()) return "nothing binds '" + name + "'";
  return "'" + name + "' is not in force here; it is bound at " + elsewhere;
}

std::string CTokenExplainer::placeElsewhere(const std::string& name) const {
  std::vector<const CSourceFile*> files = {&m_page.pageFile()};
  for (const std::string& included : m_page.includedFiles()) {
    files.push_back(m_page.IncludedFile(included));
  }
  for (const CSourceFile* file : files) {
    if (file == nullptr) continue;
    if (const auto found = findBinding(file->document(), {}, name)) {
      return file->PlaceOfName(*found).Text();
    }
  }
  return "";
}

}  // namespace ttr
