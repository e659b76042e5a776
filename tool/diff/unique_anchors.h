#ifndef TOOL_DIFF_UNIQUE_ANCHORS_H
#define TOOL_DIFF_UNIQUE_ANCHORS_H

#include <vector>

#include "text/alignment.h"

namespace ttr {

/// Entries of two sequences that are beyond doubt the same: those at both ends as far as the
/// sequences are equal, and of the others those that occur once in each, as many as are in the same
/// order. Numbers stand for the entries; those below 0 are equal to nothing.
std::vector<CAlignedPair> uniqueAnchors(const std::vector<int>& left,
                                        const std::vector<int>& right);

}  // namespace ttr

#endif  // TOOL_DIFF_UNIQUE_ANCHORS_H
