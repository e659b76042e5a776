#include "diff/unique_anchors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ttr {
namespace {

/// The anchors as "0-0 1-2".
std::string Anchors(const std::vector<int>& left, const std::vector<int>& right) {
  std::string text;
  for (const CAlignedPair& pair : uniqueAnchors(left, right)) {
    text +=
        (text.empty() ? "" : " ") + std::to_string(pair.left) + '-' + std::to_string(pair.right);
  }
  return text;
}

TEST(UniqueAnchors, AreTheCommonEnds) {
  EXPECT_EQ(Anchors({1, 1, 2}, {1, 1, 2}), "0-0 1-1 2-2");
  EXPECT_EQ(Anchors({1, 1, 5, 3, 3}, {1, 1, 3, 3}), "0-0 1-1 3-2 4-3");
  EXPECT_EQ(Anchors({1, 1, 1}, {1, 1}), "0-0 1-1");
}

TEST(UniqueAnchors, AreWhatOccursOnceInEach) {
  EXPECT_EQ(Anchors({8, 1, 2, 2, 3, 9}, {7, 7, 1, 2, 3, 6}), "1-2 4-4");
  EXPECT_EQ(Anchors({8, 1, 9}, {7, 1, 1, 6}), "");
}

TEST(UniqueAnchors, AreInTheSameOrder) {
  EXPECT_EQ(Anchors({4, 1, 2, 3, 9}, {1, 2, 3, 4, 8}), "1-0 2-1 3-2");
  EXPECT_EQ(Anchors({1, 2}, {2, 1}).size(), 3U);
}

TEST(UniqueAnchors, AreNeverNegative) {
  EXPECT_EQ(Anchors({-1, 1, -1}, {-1, 1, -1}), "1-1");
  EXPECT_EQ(Anchors({-1, 1}, {1}), "1-0");
  EXPECT_EQ(Anchors({5, -1}, {-1, 6}), "");
  EXPECT_EQ(Anchors({}, {1}), "");
}

}  // namespace
}  // namespace ttr
