#include "diff/entry_matching.h"

#include <gtest/gtest.h>

#include <string>

#include "support/json.h"

namespace ttr {
namespace {

CTemplateEntries TemplatesOf(const Json::Value& entries) {
  CTemplateEntries templates;
  for (const Json::Value& entry : entries) {
    const CJsonPointer pointer = CJsonPointer() / templates.size();
    templates.emplace(pointer, CTemplateEntry{"", pointer, entry});
  }
  return templates;
}

/// The pairs as "0-0 1-2"; the templates are those that the entries were made from.
std::string Matches(const std::string& before, const std::string& after,
                    const std::string& templatesBefore = "[]",
                    const std::string& templatesAfter = "[]") {
  const CTemplateEntries leftTemplates = TemplatesOf(Parse(templatesBefore));
  const CTemplateEntries rightTemplates = TemplatesOf(Parse(templatesAfter));
  std::string text;
  const Json::Value left = Parse(before);
  const Json::Value right = Parse(after);
  for (const CAlignedPair& pair :
       matchEntries({left, {}, leftTemplates}, {right, {}, rightTemplates})) {
    text +=
        (text.empty() ? "" : " ") + std::to_string(pair.left) + '-' + std::to_string(pair.right);
  }
  return text;
}

TEST(EntryMatching, SeesThatAnEntryWasInserted) {
  EXPECT_EQ(Matches(R"([{"a": 1}, {"b": 2}])", R"([{"a": 1}, {"x": 0}, {"b": 2}])"), "0-0 1-2");
  EXPECT_EQ(Matches(R"(["A", "B"])", R"(["X", "A", "B"])"), "0-1 1-2");
}

TEST(EntryMatching, KnowsElementsThatMovedByTheirText) {
  EXPECT_EQ(Matches(R"([{"Bounds": [0, 0, 9, 9], "Contents": ["Ely"]},
                        {"Bounds": [0, 9, 9, 9], "Contents": ["Diss"]}])",
                    R"([{"Bounds": [0, 0, 9, 9], "Contents": ["Bury"]},
                        {"Bounds": [0, 9, 9, 9], "Contents": ["Ely"]},
                        {"Bounds": [0, 18, 9, 9], "Contents": ["Diss"]}])"),
            "0-1 1-2");
}

TEST(EntryMatching, KnowsElementsWithoutTextByTheirPlace) {
  EXPECT_EQ(Matches(R"([{"Bounds": [0, 0, 9, 9], "Display": [1]}])",
                    R"([{"Bounds": [5, 5, 5, 5], "Display": [1]},
                        {"Bounds": [0, 0, 9, 9], "Display": [2]}])"),
            "0-1");
}

TEST(EntryMatching, PairsTheRestByPosition) {
  EXPECT_EQ(Matches(R"(["A", {"a": 1}, "Z"])", R"(["B", {"b": 1}, "Y"])"), "0-0 1-1 2-2");
}

TEST(EntryMatching, LetsNullTakeTheSameEntrysPlace) {
  EXPECT_EQ(Matches(R"(["A", null, "C"])", R"(["A", {"a": 1}, "C"])"), "0-0 1-1 2-2");
  EXPECT_EQ(Matches(R"([null, "C"])", R"(["B", null, "C"])"), "0-1 1-2");
}

TEST(EntryMatching, KnowsNullsByTheirTemplates) {
  EXPECT_EQ(Matches(R"([null, {"Contents": ["b"]}])", R"([{"Contents": ["a"]}, null])",
                    R"([{"If": {"Condition": 0, "Contents": ["a"]}},
                        {"If": {"Condition": 1, "Contents": ["b"]}}])",
                    R"([{"If": {"Condition": 1, "Contents": ["a"]}},
                        {"If": {"Condition": 0, "Contents": ["b"]}}])"),
            "0-0 1-1");
  EXPECT_EQ(Matches(R"([null, {"Contents": ["b"]}])", R"([{"Contents": ["a"]}, null])",
                    R"([{"If": {"Condition": 0, "Contents": [{}]}},
                        {"If": {"Condition": 1, "Contents": ["b"]}}])",
                    R"([{"If": {"Condition": 1, "Contents": [{}]}},
                        {"If": {"Condition": 0, "Contents": ["c"]}}])"),
            "0-0 1-1");
}

TEST(EntryMatching, KnowsNullsByTheTextInTheirTemplates) {
  EXPECT_EQ(Matches(R"([null, {"Contents": ["b"]}])", R"([{"X": 0}, {"Contents": ["a"]}, null])",
                    R"([{"If": {"Condition": 0, "Contents": ["a"]}},
                        {"If": {"Condition": 1, "Contents": ["b"]}}])",
                    R"([{"X": 0}, {"If": {"Condition": 1, "Contents": ["a"]}},
                        {"If": {"Condition": 0, "Contents": ["b"]}}])"),
            "0-1 1-2");
  EXPECT_EQ(Matches("[null]", R"([{"X": 0}, {"Contents": ["In"]}])",
                    R"([{"Include": {"Filename": "part.json"}}])",
                    R"([{"X": 0}, {"Include": {"Filename": "part.json", "Y": 1}}])"),
            "0-1");
}

TEST(EntryMatching, KnowsNullsThatShift) {
  const std::string one = R"({"If": {"Condition": 0, "Contents": [{"RenderType": 1}]}})";
  const std::string two = R"({"If": {"Condition": 0, "Contents": [{"RenderType": 2}]}})";
  EXPECT_EQ(Matches("[null, null]", "[null]", '[' + one + ',' + two + ']', '[' + two + ']'), "1-0");
  EXPECT_EQ(Matches("[null]", R"([{"RenderType": 7}, {"Contents": ["b"]}])", '[' + two + ']',
                    '[' + one + ',' + two + ']'),
            "0-1");
}

TEST(EntryMatching, KnowsElementsByTheirTemplates) {
  EXPECT_EQ(Matches(R"([{"Contents": ["A"]}])", R"([{"Contents": ["A"]}, {"Contents": ["B"]}])",
                    R"j([{"Contents": ["$(x)"]}])j",
                    R"j([{"Contents": ["A"]}, {"Contents": ["$(x)"]}])j"),
            "0-0");
  EXPECT_EQ(Matches(R"([{"Contents": ["A"]}])", R"([{"Contents": ["C"]}, {"Contents": ["B"]}])",
                    R"j([{"Contents": ["$(x)"]}])j",
                    R"j([{"Contents": ["C"]}, {"Contents": ["$(x)"]}])j"),
            "0-1");
}

TEST(EntryMatching, PairsManyChangedElementsInOrder) {
  constexpr int count = 1500;
  Json::Value before(Json::arrayValue);
  Json::Value after(Json::arrayValue);
  for (int index = 0; index < count; ++index) {
    for (Json::Value* entries : {&before, &after}) {
      Json::Value& bounds = (*entries)[static_cast<Json::ArrayIndex>(index)]["Bounds"];
      for (const int bound : {entries == &after ? 4 : 0, index, 1, 1}) bounds.append(bound);
    }
  }
  const std::vector<CAlignedPair> pairs = matchEntries({before, {}, {}}, {after, {}, {}});
  ASSERT_EQ(pairs.size(), static_cast<std::size_t>(count));
  EXPECT_EQ(pairs[700], (CAlignedPair{700, 700}));
}

TEST(EntryMatching, NeverPairsAnElementWithAText) {
  EXPECT_EQ(Matches(R"(["A"])", R"([{"Contents": ["A"]}])"), "");
}

}  // namespace
}  // namespace ttr
