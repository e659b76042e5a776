#ifndef SRC_TEMPLATE_MEMBER_H
#define SRC_TEMPLATE_MEMBER_H

#include <json/value.h>

#include <string_view>
#include <utility>

namespace ttr {

/// The member `name` of an object, a null pointer when it has none (a null value has none either):
/// test and access in one look-up.
/// \throws Json::LogicError for an array or a scalar, as every member test does
inline Json::Value* findMember(Json::Value& object, std::string_view name) {
  return const_cast<Json::Value*>(
      std::as_const(object).find(name.data(), name.data() + name.size()));
}

}  // namespace ttr

#endif  // SRC_TEMPLATE_MEMBER_H
