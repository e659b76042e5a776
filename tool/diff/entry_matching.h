#ifndef TOOL_DIFF_ENTRY_MATCHING_H
#define TOOL_DIFF_ENTRY_MATCHING_H

#include <json/value.h>

#include <vector>

#include "diff/alignment.h"

namespace ttr {

/// Pairs the entries of two Contents arrays: what is equal first, then elements with the same text,
/// place or members, in the end what stands in the same position.
std::vector<CAlignedPair> matchEntries(const Json::Value& before, const Json::Value& after);

}  // namespace ttr

#endif  // TOOL_DIFF_ENTRY_MATCHING_H
