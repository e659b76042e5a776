#include "diff/leaf_changes.h"

#include <gtest/gtest.h>

#include <string>

#include "diff/difference_text.h"
#include "support/json.h"

namespace ttr {
namespace {

/// The changes as lines "POINTER: FROM -> TO".
std::string Changes(const std::string& before, const std::string& after) {
  std::string lines;
  for (const CLeafChange& change : leafChanges(Parse(before), Parse(after))) {
    lines += change.pointer.Text() + ": " + (change.from ? jsonText(*change.from) : "nothing") +
             " -> " + (change.to ? jsonText(*change.to) : "nothing") + '\n';
  }
  return lines;
}

TEST(LeafChanges, AreNoneBetweenEqualValues) {
  EXPECT_EQ(Changes(R"({"a": [1, {"b": null}]})", R"({"a": [1, {"b": null}]})"), "");
}

TEST(LeafChanges, AreAsDeepInsideAsPossible) {
  EXPECT_EQ(Changes(R"({"a": {"b": 1, "c": [1, 2]}})", R"({"a": {"b": 2, "c": [1, 3]}})"),
            "/a/b: 1 -> 2\n/a/c/1: 2 -> 3\n");
}

TEST(LeafChanges, TellWhatIsOnlyInOneOfThem) {
  EXPECT_EQ(Changes(R"({"a": null, "c": 1})", R"({"b": {"x": 1}, "c": 1})"),
            "/a: null -> nothing\n/b: nothing -> {\"x\":1}\n");
  EXPECT_EQ(Changes("[1, 2]", "[1]"), "/1: 2 -> nothing\n");
  EXPECT_EQ(Changes("[]", "[[]]"), "/0: nothing -> []\n");
}

TEST(LeafChanges, OfAnotherTypeAreWhole) {
  EXPECT_EQ(Changes(R"({"a": {"b": 1}})", R"({"a": [1]})"), "/a: {\"b\":1} -> [1]\n");
  EXPECT_EQ(Changes("5", "5.0"), ": 5 -> 5.0\n");
  EXPECT_EQ(Changes("null", "{}"), ": null -> {}\n");
}

}  // namespace
}  // namespace ttr
