#include "page/suggestions.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "TokenTemplateResolver/parsed_token.h"
#include "page/fault_codes.h"
#include "page/template_names.h"

namespace ttr {
namespace {

using CNames = std::vector<std::string>;

/// True for a member that holds an object with members of its own.
bool isObject(const std::string& member) {
  return std::any_of(templateObjects().begin(), templateObjects().end(),
                     [&member](const CTemplateObject& object) { return object.name == member; });
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char character) {
    return static_cast<char>(std::tolower(character));
  });
  return text;
}

/// True when one of the two is the beginning of the other.
bool beginsAlike(const std::string& a, const std::string& b) {
  const std::size_t length = std::min(a.size(), b.size());
  return a.compare(0, length, b, 0, length) == 0;
}

std::string quoted(const std::string& name) { return "did you mean \"" + name + "\"?"; }

/// The path in `body`, the body of a token, that no handler knows.
CTokenParts unknownPath(const std::string& code, const std::string& body) {
  const CParsedToken token(body);
  if (code == "index-not-integer") return token.indexParts;
  return code == "operand-not-integer" ? token.operandParts : token.nameParts;
}

/// Adds the misspelt ones among the members of `object`; `known` are those that the library reads.
void addMisspelt(const Json::Value& object, const CJsonPointer& pointer, const CNames& known,
                 std::vector<CMisspeltMember>& found) {
  if (!object.isObject()) return;
  CNames names;  // those that are missing first
  for (const std::string& name : object.getMemberNames()) {
    if (std::find(known.begin(), known.end(), name) != known.end()) continue;
    if (names.empty()) {
      names = known;
      std::stable_partition(names.begin(), names.end(),
                            [&object](const std::string& each) { return !object.isMember(each); });
    }
    const std::size_t limit = std::min<std::size_t>(name.size() / 4, 2);
    const std::optional<std::string> meant = likelyName(name, names, limit);
    if (meant && !object.isMember(*meant)) found.push_back({pointer / name, *meant});
  }
}

void searchElements(const Json::Value& contents, const CJsonPointer& pointer,
                    std::vector<CMisspeltMember>& found);

/// Adds those of `object`, the one that the format calls `name`, and of what is inside of it.
void searchObject(const Json::Value& object, const CJsonPointer& pointer, const std::string& name,
                  std::vector<CMisspeltMember>& found) {
  if (!object.isObject()) return;
  addMisspelt(object, pointer, membersOf(name), found);
  // What takes the place of an element, or of a document, takes that of its contents too.
  for (const std::string& member : membersOf(name)) {
    if (!isObject(member) || !object.isMember(member)) continue;
    return searchObject(object[member], pointer / member, member, found);
  }
  if (object.isMember("Contents")) searchElements(object["Contents"], pointer / "Contents", found);
}

void searchElements(const Json::Value& contents, const CJsonPointer& pointer,
                    std::vector<CMisspeltMember>& found) {
  if (!contents.isArray()) return;
  for (Json::ArrayIndex i = 0; i < contents.size(); ++i) {
    searchObject(contents[i], pointer / std::size_t{i}, "element", found);
  }
}

}  // namespace

std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        steps[i][j] = i + j;
        continue;
      }
      const std::size_t replaced = steps[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      steps[i][j] = std::min({replaced, steps[i - 1][j] + 1, steps[i][j - 1] + 1});
      const bool exchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (exchanged) steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
    }
  }
  return steps[a.size()][b.size()];
}

std::optional<std::string> likelyName(const std::string& word, const CNames& names,
                                      std::size_t limit) {
  std::optional<std::string> likely;
  std::pair<std::size_t, bool> least;
  for (const std::string& name : names) {
    if (name == word) return std::nullopt;
    const std::size_t distance = lowerCase(name) == lowerCase(word) ? 0 : editDistance(word, name);
    const auto rank = std::make_pair(distance, !beginsAlike(name, word));
    if (distance > limit || (likely && rank >= least)) continue;
    likely = name;
    least = rank;
  }
  return likely;
}

std::string tokenSuggestion(const std::string& message, const CNames& names) {
  const std::string code = kindOfMessage(message).code;
  if (message.find("GetTokenValue") == std::string::npos) return "";
  const CTokenParts path = unknownPath(code, quotedText(message));
  std::string word;
  std::string best;
  std::size_t parts = 0;
  for (const std::string& part : path) {
    word += (word.empty() ? "" : ".") + part;
    ++parts;
    CNames sameDepth;
    std::copy_if(names.begin(), names.end(), std::back_inserter(sameDepth),
                 [parts](const std::string& name) {
                   return 1 + static_cast<std::size_t>(std::count(name.begin(), name.end(), '.')) ==
                          parts;
                 });
    const auto likely = likelyName(word, sameDepth, std::min<std::size_t>(word.size() / 3, 3));
    if (likely) best = quoted(*likely);
  }
  return best;
}

std::vector<CMisspeltMember> misspeltMembers(const Json::Value& document) {
  std::vector<CMisspeltMember> found;
  searchObject(document, {}, "document", found);
  return found;
}

}  // namespace ttr
