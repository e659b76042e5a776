#include "explain/target.h"

#include <algorithm>
#include <cstddef>

#include "tool_error.h"

namespace ttr {
namespace {

/// The way ends at the first node that shows nothing of what is below it.
void cutAtNull(CExplainTarget& target) {
  const auto shown = [](const CElementNode* node) { return !node->IsNull(); };
  const auto found = std::find_if_not(target.way.begin(), target.way.end(), shown);
  if (found == target.way.end() || found + 1 == target.way.end()) return;
  target.way.erase(found + 1, target.way.end());
  target.hidden = true;
}

/// An included document is explained with the Include that it takes the place of.
void endAtElement(CExplainTarget& target) {
  if (target.way.size() > 1 && target.way.back()->kind == CElementNode::kindDocument) {
    target.way.pop_back();
  }
}

/// The way to the node at `pointer`, or to the nearest one around it.
CNodeWay nearestWay(const CElementNode& root, CJsonPointer pointer) {
  CNodeWay way = wayTo(root, pointer);
  while (way.empty()) {
    pointer = pointer.Parent();
    way = wayTo(root, pointer);
  }
  return way;
}

/// The first way to the node made from the innermost value around `pointer` in the file `file`.
void findOrigin(const CElementNode& node, const std::string& file, const CJsonPointer& pointer,
                CNodeWay& way, CNodeWay& best) {
  way.push_back(&node);
  const CJsonPointer& origin = node.origin.pointer;
  if (node.origin.file == file && pointer.IsBelow(origin) &&
      (best.empty() || origin.steps().size() > best.back()->origin.pointer.steps().size())) {
    best = way;
  }
  for (const CElementNode& child : node.children) findOrigin(child, file, pointer, way, best);
  way.pop_back();
}

/// True when `pointer` leads into the contents of a loop that makes no copies.
bool isInEmptyLoop(const CElementNode& node, const CJsonPointer& pointer) {
  return node.kind == CElementNode::kindLoop && node.children.empty() &&
         pointer.IsBelow(node.origin.pointer / "Loop" / "Contents") &&
         pointer.steps().size() > node.origin.pointer.steps().size() + 2;
}

std::string list(const std::vector<std::string>& names) {
  constexpr std::size_t most = 8;
  std::string text;
  for (std::size_t i = 0; i < names.size() && i < most; ++i) {
    text += (i == 0 ? "" : ", ") + names[i];
  }
  return text + (names.size() > most ? ", ..." : "");
}

std::string whatIsIn(const Json::Value& value) {
  if (value.isArray() && !value.empty()) {
    return "has the entries 0.." + std::to_string(value.size() - 1);
  }
  if (value.isObject() && !value.empty()) return "has " + list(value.getMemberNames());
  if (value.isArray() || value.isObject()) return "is empty";
  return value.isNull() ? "is null" : "has nothing inside";
}

/// The reason why `pointer` leads nowhere in `document`: what there is at its longest part.
std::string whereItEnds(const CJsonPointer& pointer, const Json::Value& document) {
  CJsonPointer longest = pointer;
  while (longest.Find(document) == nullptr) longest = longest.Parent();
  const std::string there = longest.empty() ? "the top" : longest.Text();
  return there + ' ' + whatIsIn(*longest.Find(document));
}

}  // namespace

CExplainTarget findTarget(const CPageRunner& page, const CElementNode& root,
                          const CJsonPointer& pointer) {
  CExplainTarget target;
  const bool resolved = root.result != nullptr && pointer.Find(*root.result) != nullptr;
  const Json::Value& document = page.pageFile().document();
  const bool isInTemplate = !resolved && pointer.Find(document) != nullptr;
  if (isInTemplate) {
    CNodeWay way;
    findOrigin(root, CPageRunner::pageKey, pointer, way, target.way);
    target.hidden = isInEmptyLoop(*target.way.back(), pointer);
  } else {
    target.way = nearestWay(root, pointer);
    target.hidden = !resolved && target.way.back()->IsNull();
  }
  endAtElement(target);
  cutAtNull(target);
  if (!resolved && !isInTemplate && !target.hidden) {
    const Json::Value nothing;
    const Json::Value& result = root.result == nullptr ? nothing : *root.result;
    const std::string here = whereItEnds(pointer, result);
    const std::string there = whereItEnds(pointer, document);
    throw CToolError(pointer.Text(), here == there ? "leads nowhere: " + here
                                                   : "leads nowhere: in the resolved page " + here +
                                                         ", in the template " + there);
  }
  return target;
}

}  // namespace ttr
