#include "diff/difference_report.h"

#include <gtest/gtest.h>

#include <string>

#include "support/json.h"

namespace ttr {
namespace {

CComparedPage PageOf(const std::string& name, const std::string& json) {
  return {name, Parse(json), [name](const CJsonPointer&) { return CPlace{name, 3, 7}; }, {}};
}

CComparedPages PagesOf(const std::string& before, const std::string& after) {
  CComparedPages pages{PageOf("a.json", before), PageOf("b.json", after), {}};
  pages.differences = pageDifferences({pages.before.document, pages.before.templates},
                                      {pages.after.document, pages.after.templates});
  return pages;
}

TEST(DifferenceReport, AsTextHasAPlaceInThePageThatHasTheEntry) {
  EXPECT_EQ(
      textReport(PagesOf(R"({"Contents": ["A", "B"]})", R"({"Contents": ["B", "C"]})"), false),
      "a.json:3:7: /Contents/0 \"A\": removed\nb.json:3:7: /Contents/1 \"C\": added\n");
}

TEST(DifferenceReport, AsTextIsEmptyForEqualPages) {
  EXPECT_EQ(textReport(PagesOf("{}", "{}"), true), "");
}

TEST(DifferenceReport, AsTextCanBeColoured) {
  EXPECT_EQ(textReport(PagesOf(R"({"Contents": []})", R"({"Contents": ["C"]})"), true),
            "\033[1mb.json:3:7:\033[0m /Contents/0 \"C\": \033[32madded\033[0m\n");
}

TEST(DifferenceReport, AsJsonHoldsAllThatIsKnown) {
  const Json::Value report =
      Parse(jsonReport(PagesOf(R"({"Contents": ["A", {"Display": [1], "Contents": ["Label"]}]})",
                               R"({"Contents": [{"Display": [2], "Contents": ["Label"]}]})")));
  EXPECT_EQ(report["before"], "a.json");
  EXPECT_EQ(report["after"], "b.json");
  ASSERT_EQ(report["differences"].size(), 2U);
  EXPECT_EQ(report["differences"][0],
            Parse(R"({"kind": "removed", "before": "/Contents/0", "label": "A", "from": "A",
                      "place": {"file": "a.json", "line": 3, "column": 7}})"));
  EXPECT_EQ(report["differences"][1],
            Parse(R"({"kind": "colour", "before": "/Contents/1", "after": "/Contents/0",
                      "label": "Label", "member": "Display/0", "from": "#00000100",
                      "to": "#00000200",
                      "place": {"file": "b.json", "line": 3, "column": 7}})"));
}

TEST(DifferenceReport, AsJsonIsADocumentForEqualPages) {
  EXPECT_EQ(Parse(jsonReport(PagesOf("{}", "{}"))),
            Parse(R"({"before": "a.json", "after": "b.json", "differences": []})"));
}

TEST(DifferenceReport, AsHtmlEscapesWhatPagesHold) {
  const std::string html =
      htmlReport(PagesOf(R"({"Contents": ["A"]})", R"({"Contents": ["<script>&\u0001"]})"));
  EXPECT_EQ(html.find("<script"), std::string::npos);
  EXPECT_NE(html.find("&lt;script&gt;&amp;"), std::string::npos);
  EXPECT_NE(html.find("<p>1 difference</p>"), std::string::npos);
}

TEST(DifferenceReport, AsHtmlShowsColours) {
  const std::string html = htmlReport(PagesOf(R"({"Contents": [{"Display": [4294901760]}]})",
                                              R"({"Contents": [{"Display": [4278255360]}]})"));
  EXPECT_NE(html.find("style=\"background: #FF0000FF\""), std::string::npos);
  EXPECT_NE(html.find("style=\"background: #00FF00FF\""), std::string::npos);
  const std::string added =
      htmlReport(PagesOf(R"({"Contents": [{}]})", R"({"Contents": [{"Display": [4278255360]}]})"));
  EXPECT_NE(added.find("(Display/0) <span class=\"swatch\" style=\"background: #00FF00FF\""),
            std::string::npos);
}

}  // namespace
}  // namespace ttr
