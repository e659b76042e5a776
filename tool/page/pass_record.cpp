#include "page/pass_record.h"

namespace ttr {

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

CNodeWay wayTo(const CElementNode& root, const CJsonPointer& pointer) {
  CNodeWay way;
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
