#include "preview/element_label.h"

#include <cstddef>

#include "TokenTemplateResolver/json_text.h"
#include "preview/text_layout.h"

namespace ttr {
namespace {

constexpr std::size_t longestText = 40;

std::string quoted(const std::string& text) { return '"' + shortened(text, longestText) + '"'; }

/// The member `name` of the member `outer` of a template element.
Json::Value memberOf(const Json::Value* element, const char* outer, const char* name) {
  if (element == nullptr || !element->isObject()) return Json::Value();
  const Json::Value& value = (*element)[outer];
  return value.isObject() ? value[name] : Json::Value();
}

/// The member as written in the template, behind the kind of the element.
std::string described(const CElementNode& node, const char* outer, const char* name) {
  const Json::Value value = memberOf(node.origin.value, outer, name);
  if (value.isNull()) return outer;
  if (value.isString()) return std::string(outer) + ' ' + quoted(value.asString());
  return std::string(outer) + ' ' + shortened(jsoncpp_string::toString(value), longestText);
}

std::string plainLabel(const CElementNode& node) {
  if (node.IsNull() || !node.result->isObject()) return "element";
  const Json::Value& type = (*node.result)["RenderType"];
  std::string label;
  if (type.isNumeric() || type.isString()) label = "RenderType " + type.asString();
  for (const CElementNode& child : node.children) {
    const std::string text = child.result == nullptr ? "" : shownText(*child.result);
    if (text.empty()) continue;
    label += (label.empty() ? "" : " ") + quoted(text);
    break;
  }
  return label.empty() ? "element" : label;
}

}  // namespace

std::string shownText(const Json::Value& entry) {
  if (entry.isString()) return entry.asString();
  return entry.isNumeric() || entry.isBool() ? jsoncpp_string::toString(entry) : "";
}

std::string elementLabel(const CElementNode& node) {
  switch (node.kind) {
    case CElementNode::kindDocument:
      return shortened(node.origin.file, longestText);
    case CElementNode::kindElement:
      return plainLabel(node);
    case CElementNode::kindInclude:
      return described(node, "Include", "Filename");
    case CElementNode::kindIf:
      return described(node, "If", "Condition");
    case CElementNode::kindLoop:
      return described(node, "Loop", "List");
    default:
      break;
  }
  if (node.IsNull()) return "null";
  const std::string text = shownText(*node.result);
  return node.result->isString() ? quoted(text)
                                 : shortened(jsoncpp_string::toString(*node.result), longestText);
}

}  // namespace ttr
