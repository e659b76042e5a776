// The anchors of a patience diff: they cut a long comparison into short ones.
#include "diff/unique_anchors.h"

#include <algorithm>
#include <cstddef>
#include <map>

namespace ttr {
namespace {

using CPairs = std::vector<CAlignedPair>;
constexpr std::size_t none = static_cast<std::size_t>(-1);

/// Where an entry is in the two sequences, and how often.
struct COccurrences {
  std::size_t lefts = 0;
  std::size_t rights = 0;
  CAlignedPair last;
};

/// The entries that occur once in `left` and in `right` from `begin` on and before the two ends, in
/// the order of `left`.
CPairs uniquePairs(const std::vector<int>& left, const std::vector<int>& right, std::size_t begin,
                   CAlignedPair end) {
  std::map<int, COccurrences> entries;
  for (std::size_t at = begin; at < end.left; ++at) {
    COccurrences& entry = entries[left[at]];
    ++entry.lefts;
    entry.last.left = at;
  }
  for (std::size_t at = begin; at < end.right; ++at) {
    COccurrences& entry = entries[right[at]];
    ++entry.rights;
    entry.last.right = at;
  }
  CPairs pairs;
  for (const auto& [number, entry] : entries) {
    if (number >= 0 && entry.lefts == 1 && entry.rights == 1) pairs.push_back(entry.last);
  }
  std::sort(pairs.begin(), pairs.end(),
            [](const CAlignedPair& one, const CAlignedPair& two) { return one.left < two.left; });
  return pairs;
}

/// As many of `pairs` as are in order on the right side, too.
CPairs longestInOrder(const CPairs& pairs) {
  std::vector<std::size_t> ends;  // of the chains of each length, the pair that is furthest left
  std::vector<std::size_t> previous(pairs.size(), none);
  for (std::size_t at = 0; at < pairs.size(); ++at) {
    const auto end = std::lower_bound(
        ends.begin(), ends.end(), at,
        [&](std::size_t one, std::size_t two) { return pairs[one].right < pairs[two].right; });
    if (end != ends.begin()) previous[at] = *(end - 1);
    if (end == ends.end()) {
      ends.push_back(at);
    } else {
      *end = at;
    }
  }
  CPairs chain;
  for (std::size_t at = ends.empty() ? none : ends.back(); at != none; at = previous[at]) {
    chain.push_back(pairs[at]);
  }
  std::reverse(chain.begin(), chain.end());
  return chain;
}

}  // namespace

CPairs uniqueAnchors(const std::vector<int>& left, const std::vector<int>& right) {
  const auto same = [&](std::size_t leftAt, std::size_t rightAt) {
    return left[leftAt] >= 0 && left[leftAt] == right[rightAt];
  };
  CPairs anchors;
  std::size_t begin = 0;
  CAlignedPair end{left.size(), right.size()};
  for (; begin < end.left && begin < end.right && same(begin, begin); ++begin) {
    anchors.push_back({begin, begin});
  }
  CPairs back;
  while (end.left > begin && end.right > begin && same(end.left - 1, end.right - 1)) {
    back.push_back({--end.left, --end.right});
  }
  const CPairs inside = longestInOrder(uniquePairs(left, right, begin, end));
  anchors.insert(anchors.end(), inside.begin(), inside.end());
  anchors.insert(anchors.end(), back.rbegin(), back.rend());
  return anchors;
}

}  // namespace ttr
