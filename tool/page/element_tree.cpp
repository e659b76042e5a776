// Which template value each entry of a resolved page was made from. Contents keep their number and
// order when they are resolved, and a loop repeats its contents as a whole: so template and result
// are walked side by side.
#include "page/element_tree.h"

#include <utility>

namespace ttr {
namespace {

/// The member `name` of an object, null for anything else.
const Json::Value* member(const Json::Value* value, const char* name) {
  if (value == nullptr || !value->isObject() || !value->isMember(name)) return nullptr;
  return &(*value)[name];
}

CElementNode::eKind kindOf(const Json::Value& value) {
  if (value.isString()) return CElementNode::kindText;
  if (!value.isObject()) return CElementNode::kindOther;
  if (value.isMember("Include")) return CElementNode::kindInclude;
  if (value.isMember("If")) return CElementNode::kindIf;
  if (value.isMember("Loop")) return CElementNode::kindLoop;
  return CElementNode::kindElement;
}

class CTreeBuilder {
 public:
  explicit CTreeBuilder(CPageRunner& page) : m_page(page) {}

  /// The document `origin`, resolved to `result`.
  CElementNode document(CTemplateValue origin, CJsonPointer pointer, const Json::Value* result) {
    CElementNode node = nodeFor(std::move(origin), std::move(pointer), result);
    node.kind = CElementNode::kindDocument;
    const Json::Value* page = member(node.origin.value, "Page");
    if (page != nullptr) {
      addContents(node, step(node.origin, "Page"), node.pointer / "Page", member(result, "Page"));
    } else {
      addContents(node, node.origin, node.pointer, result);
    }
    return node;
  }

 private:
  static CElementNode nodeFor(CTemplateValue origin, CJsonPointer pointer,
                              const Json::Value* result) {
    CElementNode node;
    node.origin = std::move(origin);
    node.pointer = std::move(pointer);
    node.result = result;
    return node;
  }

  static CTemplateValue step(const CTemplateValue& from, const char* name) {
    return {from.file, from.pointer / name, member(from.value, name)};
  }

  CElementNode entry(CTemplateValue origin, CJsonPointer pointer, const Json::Value* result) {
    CElementNode node = nodeFor(std::move(origin), std::move(pointer), result);
    node.kind = kindOf(*node.origin.value);
    switch (node.kind) {
      case CElementNode::kindInclude:
        addIncluded(node);
        break;
      case CElementNode::kindIf:
        addContents(node, step(node.origin, "If"), node.pointer, result);
        break;
      case CElementNode::kindLoop:
        addContents(node, step(node.origin, "Loop"), node.pointer, result);
        break;
      case CElementNode::kindElement:
        addContents(node, node.origin, node.pointer, result);
        break;
      default:
        break;
    }
    return node;
  }

  void addIncluded(CElementNode& node) {
    const Json::Value* name = member(node.result, includedFileMember);
    if (name == nullptr || !name->isString()) return;
    const CSourceFile* file = m_page.IncludedFile(name->asString());
    if (file == nullptr) return;
    CTemplateValue origin{name->asString(), {}, &file->document()};
    node.children.push_back(document(std::move(origin), node.pointer, node.result));
  }

  /// The entries of the "Contents" in `from`; those of the resolved object `result` at `pointer`.
  /// A loop has them once for each copy.
  void addContents(CElementNode& node, const CTemplateValue& from, const CJsonPointer& pointer,
                   const Json::Value* result) {
    const Json::Value* entries = member(from.value, "Contents");
    const Json::Value* results = member(result, "Contents");
    if (entries == nullptr || !entries->isArray() || entries->empty()) return;
    const bool repeats = node.kind == CElementNode::kindLoop;
    const bool shown = results != nullptr && results->isArray();
    const Json::ArrayIndex count = repeats ? (shown ? results->size() : 0) : entries->size();
    for (Json::ArrayIndex index = 0; index < count; ++index) {
      const Json::ArrayIndex position = index % entries->size();
      CTemplateValue origin{from.file, from.pointer / "Contents" / std::size_t{position},
                            &(*entries)[position]};
      const Json::Value* shownEntry =
          shown && results->isValidIndex(index) ? &(*results)[index] : nullptr;
      CElementNode child =
          entry(std::move(origin), pointer / "Contents" / std::size_t{index}, shownEntry);
      if (repeats) child.copy = index / entries->size();
      node.children.push_back(std::move(child));
    }
  }

  CPageRunner& m_page;
};

}  // namespace

const char* kindName(CElementNode::eKind kind) {
  switch (kind) {
    case CElementNode::kindDocument:
      return "document";
    case CElementNode::kindElement:
      return "element";
    case CElementNode::kindInclude:
      return "Include";
    case CElementNode::kindIf:
      return "If";
    case CElementNode::kindLoop:
      return "Loop";
    case CElementNode::kindText:
      return "text";
    case CElementNode::kindOther:
      break;
  }
  return "other";
}

CElementNode elementTree(CPageRunner& page, const CPageRun& run) {
  const CSourceFile& file = page.pageFile();
  return CTreeBuilder(page).document({file.name(), {}, &file.document()}, {}, &run.result);
}

std::vector<const CElementNode*> wayTo(const CElementNode& root, const CJsonPointer& pointer) {
  std::vector<const CElementNode*> way;
  const CElementNode* node = pointer.IsBelow(root.pointer) ? &root : nullptr;
  while (node != nullptr) {
    way.push_back(node);
    const CElementNode* next = nullptr;
    for (const CElementNode& child : node->children) {
      if (pointer.IsBelow(child.pointer)) next = &child;
    }
    node = next;
  }
  if (!way.empty() && !(way.back()->pointer == pointer)) way.clear();
  return way;
}

}  // namespace ttr
