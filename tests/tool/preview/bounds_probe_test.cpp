#include "preview/bounds_probe.h"

#include <gtest/gtest.h>

#include "TokenTemplateResolver/json_text.h"
#include "tool/support/page_folder.h"

namespace {

using ttr::CBoundsFacts;
using ttr::CElementNode;

/// The facts about the nodes of a page, as text by pointers into its result.
class CFacts {
 public:
  explicit CFacts(const ttr::CPageFolder& folder, unsigned pass = 1)
      : m_page(folder.Options("p.json")),
        m_run(m_page.Run({}, pass)),
        m_root(elementTree(m_page, m_run)),
        m_facts(probeBounds(m_page, m_root, pass)) {}

  std::string Enclosing(const std::string& pointer) { return text(At(pointer).enclosing); }
  std::string Bounds(const std::string& pointer) { return text(At(pointer).bounds); }
  std::string Replaced(const std::string& pointer) { return text(At(pointer).replaced); }

 private:
  static std::string text(const Json::Value& value) { return jsoncpp_string::toString(value); }

  CBoundsFacts At(const std::string& pointer) {
    const auto way = wayTo(m_root, ttr::CJsonPointer::Parse(pointer));
    return way.empty() ? CBoundsFacts() : m_facts.at(way.back());
  }

  ttr::CPageRunner m_page;
  ttr::CPageRun m_run;
  CElementNode m_root;
  ttr::CBoundsFactsOf m_facts;
};

TEST(BoundsProbe, ScreenEnclosesThePage) {
  CFacts facts(ttr::CPageFolder({{"p.json", R"({"Contents": [{"Bounds": [1, 2, "50%", 4]}]})"}}));
  EXPECT_EQ(facts.Enclosing("/Contents/0"), "[0,0,1280,720]");
  EXPECT_EQ(facts.Bounds("/Contents/0"), "[1,2,640,4]");
}

TEST(BoundsProbe, KnowsTheBoundsOfReplacedElements) {
  CFacts facts(
      ttr::CPageFolder({{"p.json", R"({"Contents": [
          {"Bounds": [10, 20, "50%", 40], "If": {"Condition": 1, "Contents": [{"Bounds": [1, 1]}]}},
          {"Bounds": [5, 6, 7, 8], "Include": {"Filename": "i.json"}}]})"},
                        {"i.json", R"({"Page": {"Contents": [{"Bounds": [1, 1, 1, 1]}]}})"}}));
  EXPECT_EQ(facts.Bounds("/Contents/0"), "[10,20,640,40]");
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/0"), "[10,20,640,40]");
  EXPECT_EQ(facts.Enclosing("/Contents/1/Page/Contents/0"), "[5,6,7,8]");
}

TEST(BoundsProbe, KnowsTheCellsOfGrids) {
  CFacts facts(ttr::CPageFolder({{"p.json", R"({"Contents": [{"Bounds": [100, 50, 400, 300],
      "Loop": {"Start": 0, "Size": 2, "CellWidth": 80, "CellHeight": 20,
               "Layout": [[[0, 0], ["50%", 5, 33, 44]]],
               "Contents": ["A", {"Bounds": [1, 1, "50%", "50%"]}]}}]})"}}));
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/1"), "[100,50,80,20]");
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/2"), "[300,55,33,44]");
  EXPECT_EQ(facts.Bounds("/Contents/0/Contents/3"), "[301,56,16,22]");
}

TEST(BoundsProbe, CellWithNegativeEdgeHasNone) {
  CFacts facts(ttr::CPageFolder({{"p.json", R"({"Contents": [{"Loop": {"Start": 0, "Size": 1,
      "Layout": [[[-5, 3, 10, 10]]], "Contents": [{"Bounds": [1, "1"]}]}}]})"}}));
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/0"), "[null,3,10,10]");
}

TEST(BoundsProbe, RotatingLoopIsNoCell) {
  CFacts facts(ttr::CPageFolder({{"p.json", R"({"Contents": [{"Bounds": [10, 20, 30, 40],
      "Loop": {"List": "a,b", "Bounds": [1, 2, 3, 4], "Contents": [{"Bounds": [1, 1]}]}}]})"}}));
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/0"), "[10,20,30,40]");
}

TEST(BoundsProbe, ReplacesTokensByTheContextOfTheElement) {
  CFacts facts(ttr::CPageFolder({{"p.json", R"j({"Contents": [
      {"Context": {"half": "50%"}, "Bounds": ["$(half)", "$(n)", "$(half)", 9]}]})j"},
                                 {"values.json", R"({"n": 7})"}}));
  EXPECT_EQ(facts.Replaced("/Contents/0"), R"(["50%",7,"50%",9])");
}

TEST(BoundsProbe, EmptyBoundsEncloseNothing) {
  CFacts facts(ttr::CPageFolder(
      {{"p.json", R"({"Contents": [{"Bounds": [], "Contents": [{"Bounds": [1, "1"]}]}]})"}}));
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/0"), "[null,null,null,null]");
}

TEST(BoundsProbe, BoundsThatAreNoArrayAreNotRecorded) {
  CFacts facts(ttr::CPageFolder(
      {{"p.json", R"({"Contents": [{"Bounds": "wide", "Contents": [{"Bounds": [1, 1]}]}]})"}}));
  EXPECT_EQ(facts.Enclosing("/Contents/0/Contents/0"), "[0,0,1280,720]");
}

}  // namespace
