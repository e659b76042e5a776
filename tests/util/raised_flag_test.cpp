#include "util/raised_flag.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(RaisedFlag, IsRaisedForAsLongAsItLives) {
  bool flag = false;
  {
    const ttr::CRaisedFlag raised(flag);
    EXPECT_TRUE(flag);
    {
      const ttr::CRaisedFlag again(flag);
      EXPECT_TRUE(flag);
    }
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(RaisedFlag, IsAsBeforeAfterAnException) {
  bool flag = false;
  EXPECT_THROW(
      {
        const ttr::CRaisedFlag raised(flag);
        throw std::runtime_error("");
      },
      std::runtime_error);
  EXPECT_FALSE(flag);
}

}  // namespace
