#include "util/comments.h"

#include <gtest/gtest.h>

#include "support/json.h"

namespace {

TEST(Comments, AreThoseOfTheValueItself) {
  const struct {
    const char* text;
    bool found;
  } cases[] = {
      {"[1, 2]", false},
      {"// before\n[1, 2]", true},
      {"/* before */ [1, 2]", true},
      {"[1, 2] // on the same line\n", true},
      {"[1, 2]\n// after", true},
      {"[1,\n// of an entry\n2]", false},
      {R"({"a": 1})", false},
      {R"("// text")", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ttr::hasComments(Parse(c.text)), c.found);
  }
  EXPECT_TRUE(ttr::hasComments(Parse("[1,\n// of an entry\n2]")[1]));
  EXPECT_FALSE(ttr::hasComments(Json::Value()));
}

}  // namespace
