#ifndef TOOL_DIFF_LEAF_CHANGES_H
#define TOOL_DIFF_LEAF_CHANGES_H

#include <json/value.h>

#include <optional>
#include <vector>

#include "page/json_pointer.h"

namespace ttr {

/// A value inside a JSON value that differs between two versions of it.
struct CLeafChange {
  CJsonPointer pointer;
  std::optional<Json::Value> from;  ///< nothing when there was none
  std::optional<Json::Value> to;    ///< nothing when there is none any more
};

/// What differs between two JSON values, as deep inside as possible; entries of arrays are compared
/// by position.
std::vector<CLeafChange> leafChanges(const Json::Value& before, const Json::Value& after);

}  // namespace ttr

#endif  // TOOL_DIFF_LEAF_CHANGES_H
