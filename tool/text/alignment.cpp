// Hirschberg's method: the best alignment of two sequences in linear space. It finds where the best
// way crosses the middle of the left one, and does the same with both halves.
#include "text/alignment.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace ttr {
namespace {

/// More comparisons than that would keep the user waiting.
constexpr std::uint64_t maximumComparisons = 10000000;

struct CRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  std::size_t size() const { return end - begin; }
};

class CAligner {
 public:
  explicit CAligner(const CLikeness& likeness) : m_likeness(likeness) {}

  std::vector<CAlignedPair> Align(CRange left, CRange right) {
    trimFront(left, right);
    const std::vector<CAlignedPair> back = trimBack(left, right);
    if (std::uint64_t{left.size()} * right.size() > maximumComparisons) {
      pairByPosition(left, right);
    } else {
      divide(left, right);
    }
    m_pairs.insert(m_pairs.end(), back.rbegin(), back.rend());
    return m_pairs;
  }

 private:
  bool same(std::size_t left, std::size_t right) const {
    return m_likeness(left, right) == scoreOfSame;
  }

  void trimFront(CRange& left, CRange& right) {
    while (left.size() > 0 && right.size() > 0 && same(left.begin, right.begin)) {
      m_pairs.push_back({left.begin++, right.begin++});
    }
  }

  /// The pairs from the back to the front.
  std::vector<CAlignedPair> trimBack(CRange& left, CRange& right) const {
    std::vector<CAlignedPair> pairs;
    while (left.size() > 0 && right.size() > 0 && same(left.end - 1, right.end - 1)) {
      pairs.push_back({--left.end, --right.end});
    }
    return pairs;
  }

  void pairByPosition(CRange left, CRange right) {
    for (; left.size() > 0 && right.size() > 0; ++left.begin, ++right.begin) {
      if (m_likeness(left.begin, right.begin) > 0) m_pairs.push_back({left.begin, right.begin});
    }
  }

  void divide(CRange left, CRange right) {
    if (left.size() == 0 || right.size() == 0) return;
    if (left.size() == 1) {
      pairOne(left.begin, right);
      return;
    }
    const std::size_t middle = left.begin + left.size() / 2;
    const std::vector<int> before = scoresForward({left.begin, middle}, right);
    const std::vector<int> after = scoresBackward({middle, left.end}, right);
    std::size_t best = 0;
    for (std::size_t split = 1; split < before.size(); ++split) {
      if (before[split] + after[split] > before[best] + after[best]) best = split;
    }
    const std::size_t crossing = right.begin + best;
    divide({left.begin, middle}, {right.begin, crossing});
    divide({middle, left.end}, {crossing, right.end});
  }

  void pairOne(std::size_t left, CRange right) {
    std::size_t best = right.begin;
    int bestScore = 0;
    for (std::size_t at = right.begin; at < right.end; ++at) {
      const int score = m_likeness(left, at);
      if (score <= bestScore) continue;
      best = at;
      bestScore = score;
    }
    if (bestScore > 0) m_pairs.push_back({left, best});
  }

  /// The best sums for all of `left` with the first 0, 1, 2, ... entries of `right`.
  std::vector<int> scoresForward(CRange left, CRange right) const {
    std::vector<int> scores(right.size() + 1, 0);
    for (std::size_t row = left.begin; row < left.end; ++row) {
      int diagonal = scores[0];
      for (std::size_t column = 1; column < scores.size(); ++column) {
        const int paired = diagonal + m_likeness(row, right.begin + column - 1);
        diagonal = scores[column];
        scores[column] = std::max({paired, scores[column], scores[column - 1]});
      }
    }
    return scores;
  }

  /// The best sums for all of `left` with the entries of `right` from number 0, 1, 2, ... on.
  std::vector<int> scoresBackward(CRange left, CRange right) const {
    std::vector<int> scores(right.size() + 1, 0);
    for (std::size_t row = left.end; row-- > left.begin;) {
      int diagonal = scores[right.size()];
      for (std::size_t column = right.size(); column-- > 0;) {
        const int paired = diagonal + m_likeness(row, right.begin + column);
        diagonal = scores[column];
        scores[column] = std::max({paired, scores[column], scores[column + 1]});
      }
    }
    return scores;
  }

  const CLikeness& m_likeness;
  std::vector<CAlignedPair> m_pairs;
};

}  // namespace

std::vector<CAlignedPair> align(std::size_t lefts, std::size_t rights, const CLikeness& likeness) {
  return CAligner(likeness).Align({0, lefts}, {0, rights});
}

}  // namespace ttr
