#ifndef SRC_TEMPLATE_MEMBER_H
#define SRC_TEMPLATE_MEMBER_H

#include <json/value.h>

#include <cstddef>
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

/// As `object[name]`: the member of an object, added as null when it has none. The object keeps the
/// address of the name, where the index operator copies it, twice: `name` must be a literal.
template <std::size_t Size>
Json::Value& memberOf(Json::Value& object, const char (&name)[Size]) {
  if (!object.isObject() && !object.isNull()) return object[name];  // throws, with the usual text
  return object[Json::StaticString(name)];
}

}  // namespace ttr

#endif  // SRC_TEMPLATE_MEMBER_H
