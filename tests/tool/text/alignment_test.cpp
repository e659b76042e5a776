#include "text/alignment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>
#include <utility>

namespace ttr {

void PrintTo(const CAlignedPair& pair, std::ostream* out) {
  *out << pair.left << '-' << pair.right;
}

namespace {

using CPairs = std::vector<CAlignedPair>;

/// Equal characters are the same; a small and a capital letter are similar.
int LikenessOf(char left, char right) {
  if (left == right) return scoreOfSame;
  return (left ^ right) == ('a' ^ 'A') ? 30 : 0;
}

CPairs AlignTexts(const std::string& left, const std::string& right) {
  return align(left.size(), right.size(), [&](std::size_t leftAt, std::size_t rightAt) {
    return LikenessOf(left[leftAt], right[rightAt]);
  });
}

TEST(Alignment, PairsWhatIsTheSame) {
  EXPECT_EQ(AlignTexts("abc", "abc"), (CPairs{{0, 0}, {1, 1}, {2, 2}}));
  EXPECT_EQ(AlignTexts("abc", "xabc"), (CPairs{{0, 1}, {1, 2}, {2, 3}}));
  EXPECT_EQ(AlignTexts("abc", "ac"), (CPairs{{0, 0}, {2, 1}}));
  EXPECT_EQ(AlignTexts("abcd", "axyd"), (CPairs{{0, 0}, {3, 3}}));
}

TEST(Alignment, PairsWhatIsSimilarWhereNothingIsTheSame) {
  EXPECT_EQ(AlignTexts("aBc", "xabc"), (CPairs{{0, 1}, {1, 2}, {2, 3}}));
  EXPECT_EQ(AlignTexts("Ab", "ab"), (CPairs{{0, 0}, {1, 1}}));
  EXPECT_EQ(AlignTexts("A", "xay"), (CPairs{{0, 1}}));
  EXPECT_EQ(AlignTexts("A", "xaay"), (CPairs{{0, 1}}));
}

TEST(Alignment, OfNothingIsEmpty) {
  EXPECT_EQ(AlignTexts("", ""), CPairs());
  EXPECT_EQ(AlignTexts("abc", ""), CPairs());
  EXPECT_EQ(AlignTexts("", "abc"), CPairs());
  EXPECT_EQ(AlignTexts("abc", "xyz"), CPairs());
}

int ScoreOf(const CPairs& pairs, const std::string& left, const std::string& right) {
  int score = 0;
  for (const CAlignedPair& pair : pairs) score += LikenessOf(left[pair.left], right[pair.right]);
  return score;
}

/// The best score, found by trying everything.
int BestScore(const std::string& left, const std::string& right) {
  std::vector<std::vector<int>> best(left.size() + 1, std::vector<int>(right.size() + 1, 0));
  for (std::size_t row = 1; row <= left.size(); ++row) {
    for (std::size_t column = 1; column <= right.size(); ++column) {
      best[row][column] =
          std::max({best[row - 1][column], best[row][column - 1],
                    best[row - 1][column - 1] + LikenessOf(left[row - 1], right[column - 1])});
    }
  }
  return best.back().back();
}

std::string RandomText(std::mt19937& random) {
  std::string text(random() % 12, ' ');
  for (char& character : text) character = "abcdABCD"[random() % 8];
  return text;
}

TEST(Alignment, IsInOrderAndTheBest) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    const std::string left = RandomText(random);
    const std::string right = RandomText(random);
    SCOPED_TRACE(left + " / " + right);
    const CPairs pairs = AlignTexts(left, right);
    for (std::size_t at = 1; at < pairs.size(); ++at) {
      ASSERT_LT(pairs[at - 1].left, pairs[at].left);
      ASSERT_LT(pairs[at - 1].right, pairs[at].right);
    }
    ASSERT_EQ(ScoreOf(pairs, left, right), BestScore(left, right));
  }
}

TEST(Alignment, OfTooMuchIsByPosition) {
  constexpr std::size_t length = 20000;
  std::size_t comparisons = 0;
  const CPairs pairs = align(length, length + 1, [&](std::size_t left, std::size_t right) {
    ++comparisons;
    return left == right && left % 2 == 1 ? 50 : 0;
  });
  ASSERT_EQ(pairs.size(), length / 2);
  EXPECT_EQ(pairs.front(), (CAlignedPair{1, 1}));
  EXPECT_EQ(pairs.back(), (CAlignedPair{length - 1, length - 1}));
  EXPECT_LT(comparisons, 3 * length);
}

}  // namespace
}  // namespace ttr
