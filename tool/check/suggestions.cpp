#include "check/suggestions.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "TokenTemplateResolver/parsed_token.h"
#include "check/fault_codes.h"
#include "check/reduced_page.h"

namespace ttr {
namespace {

using CNames = std::vector<std::string>;

const CNames documentMembers = {"Page", "Contents"};
const CNames pageMembers = {"Context", "Contents"};
const CNames elementMembers = {"Context",  "Bounds",    "Include", "If",   "Loop",
                               "Layout",   "Display",   "Play",    "Prec", "RenderType",
                               "Contents", "Container", "Frame"};
const CNames includeMembers = {"Filename"};
const CNames ifMembers = {"Condition", "Equals", "NotEquals", "==", "!=", "<", ">", "Contents"};
const CNames loopMembers = {"List",       "Start",  "Stop",   "Offset",  "Size",   "Var",
                            "Key",        "Value",  "Count",  "RowVar",  "ColVar", "CellWidth",
                            "CellHeight", "Layout", "Bounds", "Contents"};

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
  CNames names = known;
  std::stable_partition(names.begin(), names.end(),
                        [&object](const std::string& name) { return !object.isMember(name); });
  for (const std::string& name : object.getMemberNames()) {
    const std::size_t limit = std::min<std::size_t>(name.size() / 4, 2);
    const std::optional<std::string> meant = likelyName(name, names, limit);
    if (meant && !object.isMember(*meant)) found.push_back({pointer / name, *meant});
  }
}

/// Adds those of a document or element, and of the elements inside of it.
void searchMembers(const Json::Value& object, const CJsonPointer& pointer, eTemplatePart part,
                   std::vector<CMisspeltMember>& found) {
  if (!object.isObject()) return;
  addMisspelt(object, pointer, part == partDocument ? documentMembers : elementMembers, found);
  const std::pair<const char*, const CNames&> inner[] = {
      {"Page", pageMembers}, {"Include", includeMembers}, {"If", ifMembers}, {"Loop", loopMembers}};
  for (const auto& [name, known] : inner) {
    if ((name == std::string("Page")) != (part == partDocument)) continue;
    if (object.isMember(name)) addMisspelt(object[name], pointer / name, known, found);
  }
  const std::optional<CJsonPointer> way = wayToContents(object, part);
  const Json::Value* contents = way ? way->Find(object) : nullptr;
  if (contents == nullptr || !contents->isArray()) return;
  CJsonPointer entries = pointer;
  for (const std::string& step : way->steps()) entries = std::move(entries) / step;
  for (Json::ArrayIndex i = 0; i < contents->size(); ++i) {
    searchMembers((*contents)[i], entries / static_cast<std::size_t>(i), partElement, found);
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
  searchMembers(document, {}, partDocument, found);
  return found;
}

}  // namespace ttr
