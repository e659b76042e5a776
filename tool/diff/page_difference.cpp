// Walks two resolved pages side by side. Entries of Contents are compared as elements, with words
// for what authors look for: places, sizes, colours, texts. All other members are compared as JSON.
#include "diff/page_difference.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "diff/colour_text.h"
#include "diff/container_ids.h"
#include "diff/entry_matching.h"
#include "diff/leaf_changes.h"

namespace ttr {
namespace {

/// Two values that are the same one in both pages.
struct CMatch {
  const Json::Value& before;
  const Json::Value& after;
  CJsonPointer beforeAt;
  CJsonPointer afterAt;

  /// The members of this name, which both have.
  CMatch Member(const char* name) const {
    return {before[name], after[name], beforeAt / name, afterAt / name};
  }
  bool BothHave(const char* name, Json::ValueType type) const {
    return before.isMember(name) && before[name].type() == type && after.isMember(name) &&
           after[name].type() == type;
  }
};

/// `element` but for the members `names`.
Json::Value membersWithout(const std::set<std::string>& names, const Json::Value& element) {
  Json::Value rest(Json::objectValue);
  for (const std::string& name : element.getMemberNames()) {
    if (names.count(name) == 0) rest[name] = element[name];
  }
  return rest;
}

/// The Contents of two documents of which only one has a Page: there, they are inside of it.
std::optional<CMatch> contentsAcrossPage(const CMatch& match) {
  if (match.before.isMember("Page") == match.after.isMember("Page")) return {};
  const bool pageBefore = match.before.isMember("Page");
  const char* inside = "/Page/Contents";
  const CJsonPointer left = CJsonPointer::Parse(pageBefore ? inside : "/Contents");
  const CJsonPointer right = CJsonPointer::Parse(pageBefore ? "/Contents" : inside);
  const Json::Value* before = left.Find(match.before);
  const Json::Value* after = right.Find(match.after);
  if (before == nullptr || !before->isArray() || after == nullptr || !after->isArray()) return {};
  const auto below = [](CJsonPointer pointer, const CJsonPointer& further) {
    for (const std::string& step : further.steps()) pointer = pointer / step;
    return pointer;
  };
  return CMatch{*before, *after, below(match.beforeAt, left), below(match.afterAt, right)};
}

/// Takes the Contents out of two documents of which one has them in its Page.
void removeContents(Json::Value& before, Json::Value& after) {
  for (Json::Value* document : {&before, &after}) {
    Json::Value& holder = document->isMember("Page") ? (*document)["Page"] : *document;
    holder.removeMember("Contents");
  }
}

/// True for an entry of Contents, which unlike the page can be known by a text.
bool isEntry(const CJsonPointer& pointer) {
  const std::vector<std::string>& steps = pointer.steps();
  return steps.size() >= 2 && steps[steps.size() - 2] == "Contents";
}

/// The two integers from `index` on, in an array of their own.
std::optional<Json::Value> twoIntegers(const Json::Value& array, Json::ArrayIndex index) {
  if (array.size() < index + 2 || !array[index].isInt() || !array[index + 1].isInt()) return {};
  Json::Value two(Json::arrayValue);
  two.append(array[index]);
  two.append(array[index + 1]);
  return two;
}

/// The colour at `index` of a Display, as text.
std::optional<Json::Value> colourAt(const Json::Value& display, Json::ArrayIndex index) {
  if (!display.isValidIndex(index) || !display[index].isUInt()) return {};
  return colourText(display[index].asUInt());
}

bool goesAlong(const CDifference& move, const CDifference& other) {
  return movedBy(move, 0) == movedBy(other, 0) && movedBy(move, 1) == movedBy(other, 1);
}

class CComparison {
 public:
  CComparison(const CResolvedPage& before, const CResolvedPage& after)
      : m_before(before), m_after(after) {}

  std::vector<CDifference> Compare() {
    compareEntries({m_before.document, m_after.document, {}, {}}, none);
    setRenumberedAside();
    return std::move(m_differences);
  }

 private:
  /// The position in m_differences of what tells how the enclosing element moved.
  using CMovePosition = std::size_t;
  static constexpr CMovePosition none = static_cast<CMovePosition>(-1);

  void add(CDifference::eKind kind, const CMatch& match, std::optional<Json::Value> from = {},
           std::optional<Json::Value> to = {}, const CJsonPointer& member = {}) {
    CDifference difference;
    difference.kind = kind;
    difference.before = match.beforeAt;
    difference.after = match.afterAt;
    if (isEntry(match.afterAt) && kind != CDifference::kindText) {
      difference.label = labelOf(match.after.isNull() ? match.before : match.after);
    }
    if (!member.empty()) difference.member = member.Text().substr(1);
    difference.from = std::move(from);
    difference.to = std::move(to);
    m_differences.push_back(std::move(difference));
  }

  void compareEntries(const CMatch& match, CMovePosition enclosing) {
    if (match.before.isObject() && match.after.isObject()) {
      compareElements(match, enclosing);
    } else if (match.before == match.after) {
      return;
    } else if (match.before.isNull()) {
      add(CDifference::kindNoLongerNull, match);
    } else if (match.after.isNull()) {
      add(CDifference::kindBecameNull, match);
    } else {
      add(CDifference::kindText, match, match.before, match.after);
    }
  }

  void compareElements(const CMatch& match, CMovePosition enclosing) {
    m_ids.Add(match.before, match.after);
    const bool bothPages = match.BothHave("Page", Json::objectValue);
    const bool bothContents = match.BothHave("Contents", Json::arrayValue);
    std::set<std::string> apart;
    if (bothPages) apart.insert("Page");
    if (bothContents) apart.insert("Contents");
    const std::optional<CMatch> acrossPage =
        bothContents ? std::nullopt : contentsAcrossPage(match);
    Json::Value before = membersWithout(apart, match.before);
    Json::Value after = membersWithout(apart, match.after);
    if (acrossPage) removeContents(before, after);
    const CMovePosition move = compareBounds(match, before, after, enclosing);
    compareColours(match, before, after);
    for (const CLeafChange& change : leafChanges(before, after)) {
      add(CDifference::kindMember, match, change.from, change.to, change.pointer);
    }
    if (bothPages) compareElements(match.Member("Page"), move);
    if (bothContents) compareContentsOf(match.Member("Contents"), move);
    if (acrossPage) compareContentsOf(*acrossPage, move);
  }

  /// Takes what it tells of out of `before` and `after`. The position of what tells how the
  /// contents are expected to have moved.
  CMovePosition compareBounds(const CMatch& match, Json::Value& before, Json::Value& after,
                              CMovePosition enclosing) {
    if (!match.BothHave("Bounds", Json::arrayValue)) return enclosing;
    Json::Value& left = before["Bounds"];
    Json::Value& right = after["Bounds"];
    const bool moved = comparePair(CDifference::kindMoved, match, left, right, 0);
    const CMovePosition move = moved ? settleMove(enclosing) : none;
    comparePair(CDifference::kindResized, match, left, right, 2);
    return move;
  }

  /// Compares the pairs of integers at `index`; true when they differ.
  bool comparePair(CDifference::eKind kind, const CMatch& match, Json::Value& left,
                   Json::Value& right, Json::ArrayIndex index) {
    const std::optional<Json::Value> from = twoIntegers(left, index);
    const std::optional<Json::Value> to = twoIntegers(right, index);
    if (!from || !to || *from == *to) return false;
    add(kind, match, from, to);
    left[index] = right[index];
    left[index + 1] = right[index + 1];
    return true;
  }

  /// The last difference is a move. When the enclosing element moved the same way, it is counted
  /// there instead of told again.
  CMovePosition settleMove(CMovePosition enclosing) {
    if (enclosing == none || !goesAlong(m_differences.back(), m_differences[enclosing])) {
      return m_differences.size() - 1;
    }
    m_differences.pop_back();
    ++m_differences[enclosing].along;
    return enclosing;
  }

  /// Takes the colours that differ out of `before` and `after`. No Display is one without colours.
  void compareColours(const CMatch& match, Json::Value& before, Json::Value& after) {
    const Json::Value noColours(Json::arrayValue);
    const Json::Value left = before.get("Display", noColours);
    const Json::Value right = after.get("Display", noColours);
    if (!left.isArray() || !right.isArray()) return;
    for (Json::ArrayIndex index = 0; index < std::max(left.size(), right.size()); ++index) {
      const std::optional<Json::Value> from = colourAt(left, index);
      const std::optional<Json::Value> to = colourAt(right, index);
      const bool lone = index >= std::min(left.size(), right.size());
      if (lone && !from && !to) break;  // what is behind it cannot be taken out without it
      if (!lone && (!from || !to || *from == *to)) continue;
      add(CDifference::kindColour, match, from, to,
          CJsonPointer() / "Display" / std::size_t{index});
      Json::Value& side = to ? before : after;
      side["Display"][index] = (to ? right : left)[index];
    }
  }

  void compareContentsOf(const CMatch& match, CMovePosition enclosing) {
    std::vector<CAlignedPair> pairs =
        matchEntries({match.before, match.beforeAt, m_before.templates},
                     {match.after, match.afterAt, m_after.templates});
    pairs.push_back({match.before.size(), match.after.size()});
    CAlignedPair at;
    for (const CAlignedPair& pair : pairs) {
      for (; at.left < pair.left; ++at.left) addLone(CDifference::kindRemoved, match, at.left);
      for (; at.right < pair.right; ++at.right) addLone(CDifference::kindAdded, match, at.right);
      if (at.left == match.before.size() || at.right == match.after.size()) continue;
      compareEntries({match.before[static_cast<Json::ArrayIndex>(at.left)],
                      match.after[static_cast<Json::ArrayIndex>(at.right)],
                      match.beforeAt / at.left, match.afterAt / at.right},
                     enclosing);
      at = {pair.left + 1, pair.right + 1};
    }
  }

  /// An entry that only one page has.
  void addLone(CDifference::eKind kind, const CMatch& contents, std::size_t index) {
    const bool added = kind == CDifference::kindAdded;
    const Json::Value& entry =
        (added ? contents.after : contents.before)[static_cast<Json::ArrayIndex>(index)];
    CDifference difference;
    difference.kind = kind;
    (added ? difference.after : difference.before) =
        (added ? contents.afterAt : contents.beforeAt) / index;
    difference.label = labelOf(entry);
    (added ? difference.to : difference.from) = entry;
    m_differences.push_back(std::move(difference));
  }

  /// One line for all containers that only have another number.
  void setRenumberedAside() {
    const auto rest =
        std::remove_if(m_differences.begin(), m_differences.end(),
                       [&](const CDifference& difference) { return m_ids.Explain(difference); });
    if (rest == m_differences.end()) return;
    m_differences.erase(rest, m_differences.end());
    const Json::Value nothing;
    add(CDifference::kindRenumbered, {nothing, nothing, {}, {}});
  }

  const CResolvedPage& m_before;
  const CResolvedPage& m_after;
  CContainerIds m_ids;
  std::vector<CDifference> m_differences;
};

}  // namespace

std::int64_t movedBy(const CDifference& move, Json::ArrayIndex axis) {
  return std::int64_t{(*move.to)[axis].asInt()} - (*move.from)[axis].asInt();
}

std::vector<CDifference> pageDifferences(const CResolvedPage& before, const CResolvedPage& after) {
  return CComparison(before, after).Compare();
}

std::string labelOf(const Json::Value& entry) {
  if (entry.isString() || entry.isNumeric()) return entry.asString();
  const Json::Value* contents = (CJsonPointer() / "Contents").Find(entry);
  if (contents == nullptr) contents = (CJsonPointer() / "Page" / "Contents").Find(entry);
  if (contents == nullptr || !contents->isArray()) return "";
  for (const Json::Value& inner : *contents) {
    std::string label = labelOf(inner);
    if (!label.empty()) return label;
  }
  return "";
}

}  // namespace ttr
