#include "page/condition_words.h"

#include <gtest/gtest.h>

#include "support/json.h"

namespace {

TEST(ConditionWords, TellWhyAnIfHolds) {
  const Json::Value count(3U);
  const struct {
    ttr::CIfFact test;
    const char* why;
  } cases[] = {
      {{{}, "", {}, false, {}, {}}, "it has no Condition"},
      {{"0", "", {}, false, false, {}}, "\"0\" (text) counts as false"},
      {{"5", "Equals", 5, false, "5", 5}, "text never equals integer: use == to compare integers"},
      {{count, "Equals", 3, false, count, 3},
       "a count is unsigned and equals no number of a page: use ==, or write #+0 for #"},
      {{5, "NotEquals", 5, false, 5, 5}, "both are the same"},
      {{5, "NotEquals", 6, true, 5, 6}, "they differ"},
      {{true, "Equals", "x", false, true, "x"}, "boolean never equals text"},
      {{"a", "Equals", Parse(R"(["a"])"), true, {}, {}}, "it is one of the entries"},
      {{"a", "Equals", Parse("[1]"), false, {}, {}},
       "it is none of the entries, as none of them is of type text"},
      {{"a", "Equals", Parse(R"j(["$(a)"])j"), false, {}, {}},
       "it is none of the entries; tokens inside an array are not replaced"},
      {{"0x10", "<", 16, false, 16, 16}, "16 < 16 is false"},
      {{"late", "!=", {}, false, "late", {}},
       "\"late\" (text) is no integer, and null is no integer"},
      {{1, ">", "x", false, 1, "x"}, "\"x\" (text) is no integer"},
  };
  for (const auto& each : cases) EXPECT_EQ(whyHolds(each.test), each.why);
}

}  // namespace
