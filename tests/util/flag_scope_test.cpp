#include "util/flag_scope.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(FlagScope, SetsTheFlagForAsLongAsItLives) {
  bool flag = false;
  {
    const ttr::CFlagScope raised(flag, true);
    EXPECT_TRUE(flag);
    {
      const ttr::CFlagScope lowered(flag, false);
      EXPECT_FALSE(flag);
    }
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(FlagScope, LeavesItAsBeforeAfterAnException) {
  bool flag = false;
  EXPECT_THROW(
      {
        const ttr::CFlagScope raised(flag, true);
        throw std::runtime_error("");
      },
      std::runtime_error);
  EXPECT_FALSE(flag);
}

}  // namespace
