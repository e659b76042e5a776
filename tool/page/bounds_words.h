#ifndef TOOL_PAGE_BOUNDS_WORDS_H
#define TOOL_PAGE_BOUNDS_WORDS_H

#include <json/value.h>

#include <array>
#include <cstddef>
#include <string>

#include "page/pass_record.h"

namespace ttr {

/// "x", "width", ...: what the entry at `index` of a "Bounds" is; empty behind the sixth.
std::string boundsEntryName(std::size_t index);

/// How the entry at `index` came to its value: "10% of 400 = 40, 40 + 100 = 140"; or why it stays.
std::string boundsSum(const CBoundsEntryFact& entry, std::size_t index);

/// x, y, width and height that an element is measured against: -1 stands for an edge that is
/// missing, 0 for a size.
std::array<int, 4> enclosingNumbers(const Json::Value& enclosing);

}  // namespace ttr

#endif  // TOOL_PAGE_BOUNDS_WORDS_H
