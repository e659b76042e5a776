#include "template/bounds_array.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/cerr_capture.h"
#include "support/json.h"

namespace {

constexpr int smallest = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

TEST(BoundsArray, HoldsFourNumbersAndTwoNulls) {
  const struct {
    int x, y, width, height;
    const char* bounds;
  } cases[] = {
      {0, 0, 1280, 720, "[0, 0, 1280, 720, null, null]"},
      {0, 0, 0, 0, "[0, 0, 0, 0, null, null]"},
      {1, 2, 3, 4, "[1, 2, 3, 4, null, null]"},
      {greatest, 0, 1, greatest, "[2147483647, 0, 1, 2147483647, null, null]"},
      {-1, 2, 3, 4, "[null, 2, 3, 4, null, null]"},
      {1, -1, 3, 4, "[1, null, 3, 4, null, null]"},
      {1, 2, -1, 4, "[1, 2, null, 4, null, null]"},
      {1, 2, 3, smallest, "[1, 2, 3, null, null, null]"},
      {-1, -20, -300, smallest, "[null, null, null, null, null, null]"},
  };
  CCerrCapture errors;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bounds);
    EXPECT_EQ(ttr::makeBoundsArray(c.x, c.y, c.width, c.height), Parse(c.bounds));
  }
  EXPECT_EQ(errors.Take(), "");
}

TEST(BoundsArray, EntryIsReadByIndex) {
  CCerrCapture errors;
  const Json::Value bounds = Parse("[10, 20, 200, 100, 5, 6]");
  EXPECT_EQ(ttr::boundsEntry(bounds, 0), 10);
  EXPECT_EQ(ttr::boundsEntry(bounds, 1), 20);
  EXPECT_EQ(ttr::boundsEntry(bounds, 2), 200);
  EXPECT_EQ(ttr::boundsEntry(bounds, 3), 100);
  EXPECT_EQ(errors.Take(), "");
}

TEST(BoundsArray, EntryThatIsNoIntIsAbsent) {
  const struct {
    Json::Value entry;
    int number;
  } cases[] = {
      {0, 0},
      {-3, -3},
      {smallest, smallest},
      {greatest, greatest},
      {7U, 7},
      {10.0, 10},
      {10.5, -1},
      {3000000000U, -1},
      {Json::Value(Json::Int64{2147483648}), -1},
      {3e9, -1},
      {"10", -1},
      {"50%", -1},
      {true, -1},
      {Json::Value(), -1},
      {Json::Value(Json::arrayValue), -1},
      {Json::Value(Json::objectValue), -1},
  };
  CCerrCapture errors;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.entry.toStyledString());
    Json::Value bounds(Json::arrayValue);
    bounds.append(99);
    bounds.append(c.entry);
    EXPECT_EQ(ttr::boundsEntry(bounds, 1), c.number);
  }
  EXPECT_EQ(errors.Take(), "");
}

TEST(BoundsArray, MissingEntryIsAbsent) {
  CCerrCapture errors;
  EXPECT_EQ(ttr::absentBound, -1);
  EXPECT_EQ(ttr::boundsEntry(Parse("[1, 2]"), 2), -1);
  EXPECT_EQ(ttr::boundsEntry(Parse("[]"), 0), -1);
  EXPECT_EQ(ttr::boundsEntry(Json::Value(), 3), -1);
  EXPECT_EQ(errors.Take(), "");
}

TEST(BoundsNumbers, AreThoseOfAnArrayOfOneToSixInts) {
  for (const char* text : {"[1]", "[1, -2, 2147483647, -2147483648]", "[1, 2, 3, 4, 5, 6]"}) {
    SCOPED_TRACE(text);
    const Json::Value bounds = Parse(text);
    const ttr::CBoundsNumbers numbers(bounds);
    EXPECT_TRUE(numbers.areAll());
    EXPECT_EQ(numbers.array(), bounds);
  }
  for (const char* text :
       {"[]", "[1, 2, 3, 4, 5, 6, 7]", "[1, 2.0]", "[null]", R"(["1"])", "[2147483648]",
        "[-2147483649]", "[1, [2]]", "[true]", "[9223372036854775808]"}) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(ttr::CBoundsNumbers(Parse(text)).areAll());
  }
}

TEST(BoundsNumbers, AreOfTheArrayThatWasLookedAtOnly) {
  Json::Value bounds = Parse("[1, 2]");
  const ttr::CBoundsNumbers numbers(bounds);
  EXPECT_TRUE(numbers.areOf(bounds));
  EXPECT_FALSE(numbers.areOf(Json::Value(bounds)));
  Json::Value other = Parse("[]");
  other.swap(bounds);
  EXPECT_TRUE(numbers.areOf(other));
  for (const char* text : {"[]", "[1, 2]", "null", "5", R"("text")", "{}", R"({"a": 1})"}) {
    EXPECT_FALSE(numbers.areOf(Parse(text))) << text;
  }
}

}  // namespace
