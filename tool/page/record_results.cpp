// A resolved page has its entries in the order of the walk, so that the tree of a record and the
// result are gone through side by side.
#include "page/record_results.h"

#include <cstddef>
#include <utility>

namespace ttr {
namespace {

CElementNode::eKind hiddenKind(const Json::Value& value) {
  if (value.isString()) return CElementNode::kindText;
  if (memberOf(&value, "Include") != nullptr) return CElementNode::kindInclude;
  if (memberOf(&value, "If") != nullptr) return CElementNode::kindIf;
  if (memberOf(&value, "Loop") != nullptr) return CElementNode::kindLoop;
  return value.isObject() ? CElementNode::kindElement : CElementNode::kindOther;
}

/// Adds the entries of `holder`, the value at `pointer` from the value of `node`, which no pass
/// came to, and the entries inside of them.
void addHidden(CElementNode& node, const Json::Value* holder, const CJsonPointer& pointer) {
  const Json::Value* contents = memberOf(holder, "Contents");
  if (contents == nullptr || !contents->isArray()) return;
  for (Json::ArrayIndex i = 0; i < contents->size(); ++i) {
    CElementNode child;
    const Json::Value& value = (*contents)[i];
    child.kind = hiddenKind(value);
    child.origin = {node.origin.file, pointer / "Contents" / std::size_t{i}, &value};
    child.pointer = node.pointer / "Contents" / std::size_t{i};
    if (child.kind == CElementNode::kindElement) addHidden(child, &value, child.origin.pointer);
    if (child.kind == CElementNode::kindIf) {
      addHidden(child, memberOf(&value, "If"), child.origin.pointer / "If");
    }
    node.children.push_back(std::move(child));
  }
}

class CResultFinder {
 public:
  explicit CResultFinder(const CSources& sources) : m_sources(sources) {}

  void Find(CElementNode& node, const Json::Value* result) {
    node.result = result;
    const CSourceFile* source = m_sources(node.origin.file);
    node.origin.value = source == nullptr ? nullptr : node.origin.pointer.Find(source->document());
    FindInside(node, result);
    if (node.test && !node.test->holds) {
      addHidden(node, memberOf(node.origin.value, "If"), node.origin.pointer / "If");
    }
  }

 private:
  /// The entries of "Contents", or of the page's.
  void FindInside(CElementNode& node, const Json::Value* result) {
    if (node.children.empty()) return;
    CElementNode& first = node.children.front();
    if (first.kind == CElementNode::kindDocument) return Find(first, result);
    const bool isPage =
        node.kind == CElementNode::kindDocument && first.origin.pointer.steps().front() == "Page";
    const Json::Value* contents = memberOf(isPage ? memberOf(result, "Page") : result, "Contents");
    for (std::size_t i = 0; i < node.children.size(); ++i) {
      Find(node.children[i], entryOf(contents, i));
    }
  }

  const CSources& m_sources;
};

}  // namespace

void findResults(CPassRecord& record, const CSources& sources) {
  CResultFinder(sources).Find(record.root, record.result.get());
  for (CPassEnd& end : record.ends) {
    CTemplateValue& origin = end.element.origin;
    const CSourceFile* source = sources(origin.file);
    origin.value = source == nullptr ? nullptr : origin.pointer.Find(source->document());
  }
}

}  // namespace ttr
