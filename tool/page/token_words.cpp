// The reason for a null is found by a look along the token's path, at the values or at the variable
// that it was answered from.
#include "page/token_words.h"

#include <algorithm>
#include <utility>

#include "TokenTemplateResolver/parsed_token.h"
#include "page/message_recorder.h"
#include "page/suggestions.h"
#include "text/wording.h"

namespace ttr {
namespace {

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
    } else if (!m_value->isMember(member)) {
      m_why = m_name + " has no member '" + member + "'; it has " + names(*m_value);
    } else {
      m_value = &(*m_value)[member];
      m_name += '.' + member;
    }
    return m_why.empty();
  }

  void Enter(int index) {
    if (!m_value->isArray()) {
      m_why = m_name + " is " + withArticle(typeName(*m_value)) + "; only an array has entries";
    } else if (index < 0 || static_cast<Json::ArrayIndex>(index) >= m_value->size()) {
      m_why = "index " + std::to_string(index) + " is outside of " + m_name + ", which " +
              (m_value->empty() ? "is empty"
                                : "has the entries 0.." + std::to_string(m_value->size() - 1));
    } else {
      m_name += '[' + std::to_string(index) + ']';
    }
  }

  std::string why() const { return m_why.empty() ? m_name + " is null there" : m_why; }

 private:
  const Json::Value* m_value;
  std::string m_name;
  std::string m_why;
};

std::string joined(const CTokenParts& parts, std::size_t count) {
  return CTokenParts::rebuildToken(parts, static_cast<unsigned>(count));
}

std::string joined(const CTokenParts& parts) { return joined(parts, parts.size()); }

std::string whyNoHandler(const CPageRunner& page, const CTokenParts& parts) {
  const std::string path = joined(parts);
  const std::string message = "CTokenResolver::GetTokenValue: no token handler for: " + path + '.';
  const std::string suggestion = tokenSuggestion(message, page.TokenNames());
  const std::string why = "no handler is named '" + (parts.empty() ? path : parts[0]) + "'";
  return suggestion.empty() ? why : why + ", " + suggestion;
}

std::string whyNotBound(CPageRunner& page, const CElementNode& node, const CTokenFact& token,
                        const std::string& name) {
  const auto& steps = token.text.steps();
  const auto context = std::find(steps.begin(), steps.end(), "Context");
  const auto depth = context - steps.begin();
  if (context != steps.end() && depth <= 1) {
    const CJsonPointer pointer = depth == 0 ? CJsonPointer() : CJsonPointer() / steps[0];
    if ((pointer / "Context" / name).Find(*node.origin.value) != nullptr) {
      return "'" + name + "' is not in force yet: the members of a Context do not see each other";
    }
  }
  const std::optional<CPlace> elsewhere = page.PlaceOfVariable(name);
  if (!elsewhere) return "nothing binds '" + name + "'";
  return "'" + name + "' is not in force here; it is bound at " + elsewhere->Text();
}

/// The index that `token` asks for; `path` is the answer to the one that is looked up, or null.
int indexOf(const CParsedToken& token, const CTokenFact* path) {
  const CMessageRecorder silence;  // the library has said in the pass what does not convert
  Json::Value index = path == nullptr ? Json::Value(joined(token.indexParts)) : path->value;
  CTokenResolver::CoerceToInt(index);
  return index.asInt();
}

/// Why the path of `token`, from part `first` on, and its index end at null in `root`.
std::string whyNullIn(const Json::Value& root, const CParsedToken& token, std::size_t first,
                      const CTokenFact* indexPath) {
  CPath path(root, joined(token.nameParts, first));
  for (std::size_t part = first; part < token.nameParts.size(); ++part) {
    if (!path.Step(token.nameParts[part])) return path.why();
  }
  const bool hasIndex = (token.sectionsSeen & sectionIndexEnd) != 0 && !token.indexParts.empty();
  if (hasIndex) path.Enter(indexOf(token, indexPath));
  return path.why();
}

std::string whyNullVariable(CPageRunner& page, const CElementNode& node, const CTokenFact& token,
                            const CTokenFact* indexPath) {
  const CParsedToken parsed(token.body);
  // $(context.NAME) and $(NAME): the handler's own name is a part, or it is the variable's.
  const std::size_t first = token.handler == "context" ? 1 : 0;
  if (parsed.nameParts.size() <= first) return "a name is missing: $(context.NAME)";
  if (!token.binding) return whyNotBound(page, node, token, parsed.nameParts[first]);
  return whyNullIn(token.binding->value, parsed, first + 1, indexPath);
}

}  // namespace

std::size_t wholeToken(const std::vector<CTokenFact>& tokens, std::size_t index) {
  while (tokens[index].isPath) --index;
  return index;
}

std::string partOfToken(const std::vector<CTokenFact>& tokens, std::size_t index) {
  if (!tokens[index].isPath) return "";
  const CTokenFact& whole = tokens[wholeToken(tokens, index)];
  const bool isFirst = !tokens[index - 1].isPath;
  const bool isIndex = isFirst && joined(CParsedToken(whole.body).indexParts) == tokens[index].body;
  return (isIndex ? "index of $(" : "operand of $(") + whole.body + ')';
}

std::string whyNull(CPageRunner& page, const CElementNode& node, std::size_t index) {
  const CTokenFact& token = node.tokens[index];
  if (!token.answered || !token.value.isNull()) return "";
  const CParsedToken parsed(token.body);
  if (token.handler.empty()) return whyNoHandler(page, parsed.nameParts);
  const CTokenFact* indexPath = nullptr;
  if (index + 1 < node.tokens.size() &&
      partOfToken(node.tokens, index + 1).rfind("index", 0) == 0) {
    indexPath = &node.tokens[index + 1];
    if (indexPath->handler.empty()) {
      return "the index: " + whyNoHandler(page, parsed.indexParts);
    }
  }
  if (!page.values().isMember(token.handler)) {
    return whyNullVariable(page, node, token, indexPath);
  }
  const auto nameParts =
      static_cast<std::size_t>(1 + std::count(token.handler.begin(), token.handler.end(), '.'));
  return whyNullIn(page.values()[token.handler], parsed, nameParts, indexPath);
}

}  // namespace ttr
