#ifndef TOOL_TEXT_ALIGNMENT_H
#define TOOL_TEXT_ALIGNMENT_H

#include <cstddef>
#include <functional>
#include <vector>

namespace ttr {

/// An entry of one sequence and the entry of the other that it corresponds to.
struct CAlignedPair {
  std::size_t left = 0;
  std::size_t right = 0;

  bool operator==(const CAlignedPair& other) const {
    return left == other.left && right == other.right;
  }
};

/// How alike two entries are: `scoreOfSame` when they are equal, less when they are only similar, 0
/// when they have nothing to do with each other.
using CLikeness = std::function<int(std::size_t left, std::size_t right)>;
constexpr int scoreOfSame = 200;

/// Pairs the entries of two sequences of these lengths, in order, so that the sum of the scores is
/// the highest. Where too much differs for that, entries are paired by position.
std::vector<CAlignedPair> align(std::size_t lefts, std::size_t rights, const CLikeness& likeness);

}  // namespace ttr

#endif  // TOOL_TEXT_ALIGNMENT_H
