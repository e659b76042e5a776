#ifndef HANDLERS_VALUE_PATH_H
#define HANDLERS_VALUE_PATH_H

#include <json/value.h>

#include <cstddef>

#include "TokenTemplateResolver/token_parts.h"

namespace ttr {

/// What `parts`, from `first` on, reach in `value` by stepping into objects; null when nothing.
const Json::Value& memberAt(const Json::Value& value, const CTokenParts& parts, std::size_t first);

/// The entry of the array `list` at the int `index`; null when there is none.
const Json::Value& entryAt(const Json::Value& list, const Json::Value& index);

}  // namespace ttr

#endif  // HANDLERS_VALUE_PATH_H
