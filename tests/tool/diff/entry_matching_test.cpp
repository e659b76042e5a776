#include "diff/entry_matching.h"

#include <gtest/gtest.h>

#include <string>

#include "support/json.h"

namespace ttr {
namespace {

/// The pairs as "0-0 1-2".
std::string matches(const std::string& before, const std::string& after) {
  std::string text;
  for (const CAlignedPair& pair : matchEntries(Parse(before), Parse(after))) {
    text +=
        (text.empty() ? "" : " ") + std::to_string(pair.left) + '-' + std::to_string(pair.right);
  }
  return text;
}

TEST(EntryMatching, SeesThatAnEntryWasInserted) {
  EXPECT_EQ(matches(R"([{"a": 1}, {"b": 2}])", R"([{"a": 1}, {"x": 0}, {"b": 2}])"), "0-0 1-2");
  EXPECT_EQ(matches(R"(["A", "B"])", R"(["X", "A", "B"])"), "0-1 1-2");
}

TEST(EntryMatching, KnowsElementsThatMovedByTheirText) {
  EXPECT_EQ(matches(R"([{"Bounds": [0, 0, 9, 9], "Contents": ["Ely"]},
                        {"Bounds": [0, 9, 9, 9], "Contents": ["Diss"]}])",
                    R"([{"Bounds": [0, 0, 9, 9], "Contents": ["Bury"]},
                        {"Bounds": [0, 9, 9, 9], "Contents": ["Ely"]},
                        {"Bounds": [0, 18, 9, 9], "Contents": ["Diss"]}])"),
            "0-1 1-2");
}

TEST(EntryMatching, KnowsElementsWithoutTextByTheirPlace) {
  EXPECT_EQ(matches(R"([{"Bounds": [0, 0, 9, 9], "Display": [1]}])",
                    R"([{"Bounds": [5, 5, 5, 5], "Display": [1]},
                        {"Bounds": [0, 0, 9, 9], "Display": [2]}])"),
            "0-1");
}

TEST(EntryMatching, PairsTheRestByPosition) {
  EXPECT_EQ(matches(R"(["A", {"a": 1}, "Z"])", R"(["B", {"b": 1}, "Y"])"), "0-0 1-1 2-2");
}

TEST(EntryMatching, LetsNullTakeTheSameEntrysPlace) {
  EXPECT_EQ(matches(R"(["A", null, "C"])", R"(["A", {"a": 1}, "C"])"), "0-0 1-1 2-2");
  EXPECT_EQ(matches(R"([null, "C"])", R"(["B", null, "C"])"), "0-1 1-2");
}

TEST(EntryMatching, NeverPairsAnElementWithAText) {
  EXPECT_EQ(matches(R"(["A"])", R"([{"Contents": ["A"]}])"), "");
}

}  // namespace
}  // namespace ttr
