#include "diff/page_difference.h"

#include <gtest/gtest.h>

#include <string>

#include "diff/difference_text.h"
#include "support/json.h"

namespace ttr {
namespace {

/// The differences as lines "ENTRY: CHANGE".
std::string Differences(const std::string& before, const std::string& after) {
  std::string lines;
  const Json::Value left = Parse(before);
  const Json::Value right = Parse(after);
  for (const CDifference& difference : pageDifferences({left, {}}, {right, {}})) {
    lines += entryText(difference) + ": " + changeText(difference) + '\n';
  }
  return lines;
}

/// The differences between two pages of one element.
std::string ElementDifferences(const std::string& before, const std::string& after) {
  return Differences(R"({"Contents": [)" + before + "]}", R"({"Contents": [)" + after + "]}");
}

TEST(PageDifference, IsNoneBetweenEqualPages) {
  const std::string page = R"({"Page": {"Contents": [{"Bounds": [1, 2, 3, 4]}, null, "Text"]}})";
  EXPECT_EQ(Differences(page, page), "");
}

TEST(PageDifference, TellsHowAnElementMovedAndWasResized) {
  EXPECT_EQ(
      ElementDifferences(R"({"Bounds": [10, 20, 100, 40]})", R"({"Bounds": [14, 18, 100, 40]})"),
      "/Contents/0: moved by (4, -2)\n");
  EXPECT_EQ(
      ElementDifferences(R"({"Bounds": [10, 20, 100, 40]})", R"({"Bounds": [10, 20, 120, 40]})"),
      "/Contents/0: resized from 100x40 to 120x40\n");
  EXPECT_EQ(ElementDifferences(R"({"Bounds": [0, 0, 1, 1, 5]})", R"({"Bounds": [0, 1, 1, 2, 6]})"),
            "/Contents/0: moved by (0, 1)\n/Contents/0: resized from 1x1 to 1x2\n"
            "/Contents/0: Bounds/4 changed from 5 to 6\n");
}

TEST(PageDifference, TellsTheFurthestMoveThereIs) {
  EXPECT_EQ(ElementDifferences(R"({"Bounds": [-2147483648, 2147483647, 1, 1]})",
                               R"({"Bounds": [2147483647, -2147483648, 1, 1]})"),
            "/Contents/0: moved by (4294967295, -4294967295)\n");
}

TEST(PageDifference, TellsOfBoundsThatAreNoIntegersAsMembers) {
  EXPECT_EQ(ElementDifferences(R"({"Bounds": [1.5, 0, 1, 1]})", R"({"Bounds": [2, 0, 1, null]})"),
            "/Contents/0: Bounds/0 changed from 1.5 to 2\n"
            "/Contents/0: Bounds/3 changed from 1 to null\n");
  EXPECT_EQ(ElementDifferences(R"({"Bounds": [0, 0]})", R"({"Bounds": [3000000000, 0]})"),
            "/Contents/0: Bounds/0 changed from 0 to 3000000000\n");
  EXPECT_EQ(ElementDifferences(R"({"Bounds": []})", R"({"Bounds": {"x": 1}})"),
            "/Contents/0: Bounds changed from [] to {\"x\":1}\n");
  EXPECT_EQ(ElementDifferences(R"({"a": 1})", R"({"a": 1, "Bounds": [1]})"),
            "/Contents/0: Bounds added: [1]\n");
}

TEST(PageDifference, CountsWhatMovedAlongInside) {
  EXPECT_EQ(ElementDifferences(R"({"Bounds": [0, 0, 9, 9], "Contents": [
                                    {"Bounds": [1, 1, 2, 2], "Contents": [{"Bounds": [1, 1, 1, 1]}]},
                                    {"Contents": [{"Bounds": [5, 5, 1, 1], "RenderType": 1}]},
                                    {"Bounds": [8, 8, 1, 1], "RenderType": 2}]})",
                               R"({"Bounds": [0, 7, 9, 9], "Contents": [
                                    {"Bounds": [1, 8, 2, 2], "Contents": [{"Bounds": [1, 8, 1, 1]}]},
                                    {"Contents": [{"Bounds": [5, 12, 1, 1], "RenderType": 1}]},
                                    {"Bounds": [9, 15, 1, 1], "RenderType": 2}]})"),
            "/Contents/0: moved by (0, 7), with 3 elements inside\n"
            "/Contents/0/Contents/2: moved by (1, 7)\n");
}

TEST(PageDifference, TellsOfAMoveInsideWhatStayed) {
  EXPECT_EQ(
      ElementDifferences(R"({"Bounds": [0, 0, 9, 9], "Contents": [{"Bounds": [1, 1, 2, 2]}]})",
                         R"({"Bounds": [0, 0, 9, 9], "Contents": [{"Bounds": [2, 1, 2, 2]}]})"),
      "/Contents/0/Contents/0: moved by (1, 0)\n");
}

TEST(PageDifference, TellsColoursAsTemplatesWriteThem) {
  EXPECT_EQ(
      ElementDifferences(R"({"Display": [4294901760, 7]})", R"({"Display": [4278255360, 7]})"),
      "/Contents/0: colour changed from #FF0000FF to #00FF00FF (Display/0)\n");
  EXPECT_EQ(ElementDifferences(R"({"Display": [1, "red", -1]})", R"({"Display": [1, 2, -2, 3]})"),
            "/Contents/0: colour added: #00000300 (Display/3)\n"
            "/Contents/0: Display/1 changed from \"red\" to 2\n"
            "/Contents/0: Display/2 changed from -1 to -2\n");
}

TEST(PageDifference, TellsColoursOfOnePageOnly) {
  EXPECT_EQ(ElementDifferences(R"({"Display": [4294901760]})", "{}"),
            "/Contents/0: colour removed: #FF0000FF (Display/0)\n");
  EXPECT_EQ(ElementDifferences("{}", R"({"Display": [4294901760, 1]})"),
            "/Contents/0: colour added: #FF0000FF (Display/0)\n"
            "/Contents/0: colour added: #00000100 (Display/1)\n");
  EXPECT_EQ(ElementDifferences(R"({"Display": [1]})", R"({"Display": [1, "red", 2]})"),
            "/Contents/0: Display/1 added: \"red\"\n/Contents/0: Display/2 added: 2\n");
  EXPECT_EQ(ElementDifferences("{}", R"({"Display": []})"), "/Contents/0: Display added: []\n");
  EXPECT_EQ(ElementDifferences(R"({"Display": [1]})", R"({"Display": "red"})"),
            "/Contents/0: Display changed from [1] to \"red\"\n");
}

TEST(PageDifference, TellsTexts) {
  EXPECT_EQ(ElementDifferences(R"("Gate B7")", R"("Gate \u00e9")"),
            "/Contents/0: text changed from \"Gate B7\" to \"Gate \xC3\xA9\"\n");
  EXPECT_EQ(ElementDifferences("7", R"("7")"), "/Contents/0: text changed from 7 to \"7\"\n");
}

TEST(PageDifference, TellsOtherMembers) {
  EXPECT_EQ(ElementDifferences(R"({"RenderType": 1, "Old": [], "Context": {"a": {"b": 1}}})",
                               R"({"RenderType": 2, "New": 5, "Context": {"a": {"b": 2}}})"),
            "/Contents/0: Context/a/b changed from 1 to 2\n/Contents/0: New added: 5\n"
            "/Contents/0: Old removed: []\n/Contents/0: RenderType changed from 1 to 2\n");
  EXPECT_EQ(ElementDifferences(R"({"Contents": ["A"]})", R"({"Contents": "A"})"),
            "/Contents/0: Contents changed from [\"A\"] to \"A\"\n");
}

TEST(PageDifference, TellsOfEntriesOfOnePageOnly) {
  EXPECT_EQ(Differences(R"({"Contents": ["A", "B"]})",
                        R"({"Contents": ["A", {"Contents": ["X"]}, "B"]})"),
            "/Contents/1 \"X\": added\n");
  EXPECT_EQ(Differences(R"({"Contents": ["A", "B", "C"]})", R"({"Contents": ["A", "C"]})"),
            "/Contents/1 \"B\": removed\n");
}

TEST(PageDifference, TellsOfNull) {
  EXPECT_EQ(ElementDifferences(R"({"Contents": ["Delayed"]})", "null"),
            "/Contents/0 \"Delayed\": became null\n");
  EXPECT_EQ(ElementDifferences("null", R"("On time")"),
            "/Contents/0 \"On time\": no longer null\n");
}

TEST(PageDifference, LooksIntoPages) {
  EXPECT_EQ(Differences(R"({"Page": {"Context": {"a": 1}, "Contents": ["A"]}, "Contents": ["B"]})",
                        R"({"Page": {"Context": {"a": 2}, "Contents": ["C"]}, "Contents": ["D"]})"),
            "/Page: Context/a changed from 1 to 2\n"
            "/Page/Contents/0: text changed from \"A\" to \"C\"\n"
            "/Contents/0: text changed from \"B\" to \"D\"\n");
  EXPECT_EQ(Differences(R"({"Page": {"Contents": []}})", R"({"Page": null})"),
            "document: Page changed from {\"Contents\":[]} to null\n");
}

TEST(PageDifference, LooksIntoThePageThatOnlyOneOfThemHas) {
  const std::string bare = R"({"Contents": ["A", {"Bounds": [0, 0, 1, 1]}]})";
  const std::string page = R"({"Page": {"Contents": ["B", {"Bounds": [0, 5, 1, 1]}]}})";
  EXPECT_EQ(Differences(bare, page),
            "document: Page added: {}\n/Page/Contents/0: text changed from \"A\" to \"B\"\n"
            "/Page/Contents/1: moved by (0, 5)\n");
  EXPECT_EQ(Differences(page, bare),
            "document: Page removed: {}\n/Contents/0: text changed from \"B\" to \"A\"\n"
            "/Contents/1: moved by (0, -5)\n");
  EXPECT_EQ(Differences(R"({"Contents": ["A"]})", R"({"Page": 5})"),
            "document: Contents removed: [\"A\"]\ndocument: Page added: 5\n");
}

TEST(PageDifference, KnowsEntriesByNumbers) {
  EXPECT_EQ(Differences(R"({"Contents": [{"Bounds": [0, 0, 5, 5], "Contents": [0]},
                                         {"Bounds": [0, 10, 5, 5], "Contents": [1]},
                                         {"Bounds": [0, 20, 5, 5], "Contents": [2]}]})",
                        R"({"Contents": [{"Bounds": [0, 0, 5, 5], "Contents": [0]},
                                         {"Bounds": [7, 10, 5, 5], "Contents": [1]}]})"),
            "/Contents/1 \"1\": moved by (7, 0)\n/Contents/2 \"2\": removed\n");
}

TEST(PageDifference, TellsOnceThatContainersHaveOtherNumbers) {
  EXPECT_EQ(Differences(R"({"Contents": [
                             {"RenderType": 1024, "Frame": {"Id": 1}, "Contents": [{"Container": 1}]},
                             {"RenderType": 1024, "Frame": {"Id": 2, "Container": 1}}]})",
                        R"({"Contents": [{"RenderType": 7},
                             {"RenderType": 1024, "Frame": {"Id": 4}, "Contents": [{"Container": 4}]},
                             {"RenderType": 1024, "Frame": {"Id": 5, "Container": 4}}]})"),
            "/Contents/0: added\ndocument: containers have other numbers\n");
}

TEST(PageDifference, TellsOfAnotherContainer) {
  EXPECT_EQ(Differences(
                R"({"Contents": [{"Frame": {"Id": 1}}, {"Frame": {"Id": 2}}, {"Container": 1}]})",
                R"({"Contents": [{"Frame": {"Id": 1}}, {"Frame": {"Id": 2}}, {"Container": 2}]})"),
            "/Contents/2: Container changed from 1 to 2\n");
  EXPECT_EQ(
      Differences(R"({"Contents": [{"Frame": {"Id": 1}, "a": 1}, {"Frame": {"Id": 2}, "b": 1}]})",
                  R"({"Contents": [{"Frame": {"Id": 1}, "a": 1}, {"Frame": {"Id": 1}, "b": 1}]})"),
      "/Contents/1: Frame/Id changed from 2 to 1\n");
}

TEST(PageDifference, KnowsEntriesByTheirFirstText) {
  EXPECT_EQ(
      labelOf(Parse(R"({"Contents": [null, true, {"Contents": []}, {"Contents": ["A", "B"]}]})")),
      "A");
  EXPECT_EQ(labelOf(Parse(R"({"Contents": [5, "A"]})")), "5");
  EXPECT_EQ(labelOf(Parse(R"({"Page": {"Contents": ["P"]}})")), "P");
  EXPECT_EQ(labelOf(Parse(R"({"Contents": {"Contents": ["A"]}})")), "");
  EXPECT_EQ(labelOf(Parse("null")), "");
}

}  // namespace
}  // namespace ttr
