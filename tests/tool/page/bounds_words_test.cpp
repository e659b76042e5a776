#include "page/bounds_words.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/json.h"

namespace {

using ttr::CMeasureFact;

TEST(BoundsWords, SumsAreEquationsThatHold) {
  const struct {
    CMeasureFact measure;
    std::size_t index;
    int result;
    const char* sum;
  } cases[] = {
      {{"10%", 100, 400, 10, true}, 0, 140, "10% of 400 = 40, 40 + 100 = 140"},
      {{"50%", 0, 640, 50, true}, 2, 320, "50% of 640 = 320"},
      {{7, 10, 400, {}, true}, 0, 17, "7 + 10 = 17"},
      {{"0x10", 0, 400, {}, true}, 3, 16, "16"},
      {{"5", -20, 400, {}, true}, 1, -15, "5 - 20 = -15"},
      {{"x", 10, 400, {}, false}, 0, 10, "0 (\"x\" is no integer) + 10 = 10"},
      {{Json::Value(), 0, 400, {}, false}, 2, 0, "0 (null is no integer)"},
      {{"10%", -1, 400, 10, false},
       0,
       -1,
       "0 (no percentage, as the enclosing edge is missing or negative) - 1 = -1"},
      {{"10%", 0, 0, 10, false}, 2, 0, "0 (nothing to take a percentage of)"},
      {{"2000000000%", 0, 1280, 2000000000, true},
       2,
       1994915,
       "2000000000% of 1280 = 1994915 (the product wraps in 32 bits)"},
      {{2147483647, 1, 400, {}, true}, 0, -2147483648, "2147483647 + 1 = -2147483648"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ttr::boundsSum({each.measure.replaced, each.measure, each.result}, each.index),
              each.sum);
  }
}

TEST(BoundsWords, EntriesThatStaySayWhy) {
  EXPECT_EQ(ttr::boundsSum({5, {}, 5}, 0), "stays: the enclosing edge is missing or negative");
  EXPECT_EQ(ttr::boundsSum({2.5, {}, 2.5}, 1), "stays: no integer and no text");
  EXPECT_EQ(ttr::boundsSum({5, {}, 5}, 2), "stays: as written");
  EXPECT_EQ(ttr::boundsSum({"3", {}, 3}, 4), "as an integer");
}

TEST(BoundsWords, WhatIsMissingAroundIsNoEdgeAndNoExtent) {
  EXPECT_EQ(ttr::enclosingNumbers(Parse("[1, -2, 3, 4, null, null]")),
            (std::array<int, 4>{1, -2, 3, 4}));
  EXPECT_EQ(ttr::enclosingNumbers(Parse("[null, 2.5]")), (std::array<int, 4>{-1, -1, 0, 0}));
  EXPECT_EQ(ttr::enclosingNumbers(Json::Value()), (std::array<int, 4>{-1, -1, 0, 0}));
}

}  // namespace
