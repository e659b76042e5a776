#include "util/wrapping.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

struct CCase {
  std::int32_t left;
  std::int32_t right;
  std::int32_t expected;
};

void ExpectResults(std::int32_t (*operation)(std::int32_t, std::int32_t), const CCase& testCase) {
  SCOPED_TRACE(std::to_string(testCase.left) + ", " + std::to_string(testCase.right));
  EXPECT_EQ(operation(testCase.left, testCase.right), testCase.expected);
}

TEST(Wrapping, Sum) {
  const CCase cases[] = {{2, 3, 5},
                         {-2, 3, 1},
                         {largest, 0, largest},
                         {largest, 1, smallest},
                         {1, largest, smallest},
                         {largest, largest, -2},
                         {smallest, -1, largest},
                         {smallest, smallest, 0},
                         {smallest, largest, -1}};
  for (const CCase& testCase : cases) ExpectResults(ttr::wrapAdd, testCase);
}

TEST(Wrapping, Difference) {
  const CCase cases[] = {{2, 3, -1},
                         {-2, -3, 1},
                         {largest, -1, smallest},
                         {smallest, 1, largest},
                         {0, smallest, smallest},
                         {smallest, smallest, 0},
                         {largest, smallest, -1},
                         {smallest, largest, 1}};
  for (const CCase& testCase : cases) ExpectResults(ttr::wrapSubtract, testCase);
}

TEST(Wrapping, Product) {
  const CCase cases[] = {{2, 3, 6},
                         {-2, 3, -6},
                         {0, smallest, 0},
                         {smallest, -1, smallest},
                         {smallest, 2, 0},
                         {largest, 2, -2},
                         {largest, largest, 1},
                         {65536, 65536, 0},
                         {65536, 32768, smallest},
                         {46341, 46341, -2147479015},
                         {smallest, smallest, 0}};
  for (const CCase& testCase : cases) ExpectResults(ttr::wrapMultiply, testCase);
}

TEST(Wrapping, Negation) {
  EXPECT_EQ(ttr::wrapNegate(0), 0);
  EXPECT_EQ(ttr::wrapNegate(5), -5);
  EXPECT_EQ(ttr::wrapNegate(-5), 5);
  EXPECT_EQ(ttr::wrapNegate(largest), -largest);
  EXPECT_EQ(ttr::wrapNegate(smallest), smallest);
}

}  // namespace
