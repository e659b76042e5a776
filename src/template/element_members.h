#ifndef SRC_TEMPLATE_ELEMENT_MEMBERS_H
#define SRC_TEMPLATE_ELEMENT_MEMBERS_H

#include <json/value.h>

namespace ttr {

/// The members of an element that the walk knows, found in one pass before any of them is resolved;
/// null pointers for those that are absent. Good while none of them is removed.
struct CElementMembers {
  /// `element` is an object.
  explicit CElementMembers(Json::Value& element);

  /// True for an element that gives way to an included file, a choice or copies.
  bool isReplaced() const { return include != nullptr || ifValue != nullptr || loop != nullptr; }

  Json::Value* context = nullptr;
  Json::Value* bounds = nullptr;
  Json::Value* include = nullptr;
  Json::Value* ifValue = nullptr;
  Json::Value* loop = nullptr;
  Json::Value* layout = nullptr;
  Json::Value* display = nullptr;
  Json::Value* play = nullptr;
  Json::Value* prec = nullptr;
  Json::Value* renderType = nullptr;
  Json::Value* contents = nullptr;
};

}  // namespace ttr

#endif  // SRC_TEMPLATE_ELEMENT_MEMBERS_H
