#include "page/loop_words.h"

#include <algorithm>

#include "text/wording.h"

namespace ttr {

std::vector<std::pair<std::string, Json::Value>> rangeMembers(const CLoopFact& loop) {
  std::vector<std::pair<std::string, Json::Value>> members;
  for (const char* name : {"List", "Start", "Stop", "Offset", "Size"}) {
    const auto found = std::find_if(loop.members.begin(), loop.members.end(),
                                    [&](const auto& member) { return member.first == name; });
    if (found != loop.members.end()) members.push_back(*found);
  }
  return members;
}

/// Backwards a rotating loop begins elsewhere than a grid: a copy tells both of them.
std::optional<std::pair<std::int64_t, std::int64_t>> rangeEnds(const CLoopFact& loop) {
  if (loop.count == 0) return std::nullopt;
  const CCopyFact copy = loop.copies.empty() ? CCopyFact{loop.start, 0, {}} : loop.copies.front();
  const std::int64_t first = copy.index - std::int64_t{loop.step} * copy.position;
  return std::make_pair(first, first + std::int64_t{loop.step} * (loop.count - 1));
}

std::string rangeText(const CLoopFact& loop) {
  std::string members;
  for (const auto& [name, value] : rangeMembers(loop)) {
    members += (members.empty() ? "" : ", ") + name + ' ';
    members += value.isArray() ? "of " + std::to_string(value.size()) + " entries" : typed(value);
  }
  if (members.empty()) members = "no List and no Start";
  const auto ends = rangeEnds(loop);
  if (!ends) return (loop.isRotating ? "no indices, so index 0: " : "no indices: ") + members;
  return std::to_string(loop.count) + (loop.count == 1 ? " index, " : " indices, ") +
         std::to_string(ends->first) + ".." + std::to_string(ends->second) + ": " + members;
}

std::string rotationText(const CLoopFact& loop) {
  std::string text = "one copy in each pass";
  if (loop.copies.empty()) return text;
  const CCopyFact& copy = loop.copies.front();
  text += ", this one of index " + std::to_string(copy.index);
  if (loop.count == 0) return text;
  return text + ", position " + std::to_string(copy.position + 1) + " of " +
         std::to_string(loop.count);
}

std::string gridText(const CLoopFact& loop, std::size_t layouts) {
  const std::size_t count = loop.copies.size();
  std::string text = std::to_string(count) + (count == 1 ? " copy" : " copies");
  if (!loop.layout) return text;
  return text + " in layout " + std::to_string(*loop.layout + 1) + " of " + std::to_string(layouts);
}

std::string cellsText(const CLoopFact& loop) {
  constexpr std::size_t most = 4;
  std::string text;
  for (std::size_t i = 0; i < std::min(loop.copies.size(), most); ++i) {
    text += (i == 0 ? "" : ", ") + brief(cellOf(loop.copies[i]));
  }
  return loop.copies.size() > most ? text + ", ..." : text;
}

Json::Value cellOf(const CCopyFact& copy) {
  Json::Value cell(Json::arrayValue);
  for (Json::ArrayIndex i = 0; copy.bounds.isArray() && i < 4; ++i) cell.append(copy.bounds[i]);
  return cell;
}

std::string whyNoCopies(const CElementNode& node, const std::vector<std::string>& messages) {
  if (!node.children.empty()) return "";
  std::string hint;
  bool isSizeZero = false;
  for (const auto& [name, value] : rangeMembers(*node.loop)) {
    const bool isEmpty = (value.isArray() && value.empty()) || value == "";
    if (name == "List" && isEmpty) return "its List is empty";
    if (name == "List" && value.isNull()) hint = "; its List is null";
    if (name == "Size") isSizeZero = value == 0 || value == "0";
  }
  const auto isOfLoop = [](const std::string& message) {
    return message.rfind("CTemplateResolver::loop", 0) == 0 ||
           message.rfind("CTemplateResolver::processContentsLoop", 0) == 0;
  };
  const auto message = std::find_if(messages.begin(), messages.end(), isOfLoop);
  if (message != messages.end()) return withoutFunction(*message) + hint;
  if (node.loop->count == 0)
    return isSizeZero ? "its Size is 0" : "its range has no indices" + hint;
  const Json::Value* contents = CJsonPointer::Parse("/Loop/Contents").Find(*node.origin.value);
  const bool hasContents = contents != nullptr && contents->isArray() && !contents->empty();
  return hasContents ? "its layout has no cells" : "it has no Contents";
}

}  // namespace ttr
