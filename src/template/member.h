#ifndef SRC_TEMPLATE_MEMBER_H
#define SRC_TEMPLATE_MEMBER_H

#include <json/value.h>

#include <string_view>
#include <utility>

namespace ttr {

/// The member `name` of an object, a null pointer when it has none (a null value has none either):
/// test and access in one look-up.
/// \throws Json::LogicError for an array or a scalar, as every member test does
inline const Json::Value* findMember(const Json::Value& object, std::string_view name) {
  return object.find(name.data(), name.data() + name.size());
}

inline Json::Value* findMember(Json::Value& object, std::string_view name) {
  return const_cast<Json::Value*>(findMember(std::as_const(object), name));
}

}  // namespace ttr

#endif  // SRC_TEMPLATE_MEMBER_H
