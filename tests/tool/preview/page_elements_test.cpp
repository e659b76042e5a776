#include "preview/page_elements.h"

#include <gtest/gtest.h>

#include "tool/support/page_folder.h"

namespace {

using ttr::CBox;
using ttr::CPreviewElement;
using ttr::CShape;

/// The elements of the page p.json.
ttr::CPageElements ElementsOf(const ttr::CPageFolder& folder) {
  ttr::CPageRunner page(folder.Options("p.json"));
  ttr::CElementIds ids;
  ttr::CAssets assets("");
  return pageElements(page, page.Record(1), "values.json", ids, assets);
}

ttr::CPageElements ElementsOf(const std::string& page) {
  return ElementsOf(ttr::CPageFolder({{"p.json", page}}));
}

const CPreviewElement& At(const ttr::CPageElements& page, const std::string& pointer) {
  for (const CPreviewElement& element : page.elements) {
    if (element.pointer == pointer) return element;
  }
  ADD_FAILURE() << pointer;
  return page.elements.front();
}

/// What the explanation says about `label`.
std::string Line(const CPreviewElement& element, const std::string& label) {
  for (const ttr::CExplanationLine& line : element.explanation) {
    if (line.label == label) return line.text;
  }
  return "";
}

/// The lines of the note with this heading.
std::vector<std::string> Note(const ttr::CPageElements& page, const std::string& heading) {
  for (const ttr::CNotes& notes : page.scene.notes) {
    if (notes.heading == heading) return notes.lines;
  }
  return {};
}

TEST(PageElements, DescribesAnElement) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
  {"Bounds": [40, 20, "50%", 80], "RenderType": 2, "Display": ["#112233FF"],
   "Contents": ["Welcome"]}]})j");
  const CPreviewElement& element = At(page, "/Contents/0");
  EXPECT_EQ(element.id, 1U);
  EXPECT_EQ(element.parent, 0U);
  EXPECT_EQ(element.kind, "element");
  EXPECT_EQ(element.label, "RenderType 2 \"Welcome\"");
  EXPECT_EQ(element.place.substr(element.place.rfind("p.json")), "p.json:2:3");
  EXPECT_EQ(element.templatePointer, "/Contents/0");

  EXPECT_EQ(element.bounds[2].asInt(), 640);
  EXPECT_EQ(Line(element, "width"), "640 from \"50%\": 50% of 1280 = 640");
  EXPECT_FALSE(element.members.isMember("Contents"));
  EXPECT_EQ(element.members["RenderType"].asInt(), 2);
  const CShape& shape = page.scene.shapes.at(0);
  EXPECT_EQ(shape.box, (CBox{40, 20, 640, 80}));
  EXPECT_EQ(shape.colours, std::vector<std::uint32_t>{0xFF112233});
  EXPECT_EQ(shape.texts, std::vector<std::string>{"Welcome"});
  EXPECT_EQ(At(page, "/Contents/0/Contents/0").kind, "text");
}

TEST(PageElements, ElementsAreExplained) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
      {"If": {"Condition": "$(gate)", "Equals": "B7", "Contents": ["A"]}},
      {"Loop": {"List": "a,b", "Value": "v", "CellWidth": 9, "CellHeight": 9,
                "Layout": [[[0, 0], [9, 0]]], "Contents": ["$(v)"]}}]})j");
  const CPreviewElement& condition = At(page, "/Contents/0");
  EXPECT_EQ(Line(condition, "If"), "");
  EXPECT_NE(Line(condition, "verdict").find("does not hold"), std::string::npos);
  EXPECT_NE(Line(condition, "Equals").find("B7"), std::string::npos);
  EXPECT_NE(Line(condition, "token").find("$(gate) in If/Condition"), std::string::npos);
  EXPECT_TRUE(At(page, "/Contents/0/Contents/0").explanation.empty());
  EXPECT_NE(Line(At(page, "/Contents/1"), "range"), "");
  EXPECT_NE(Line(At(page, "/Contents/1/Contents/1"), "token").find("Value of the Loop"),
            std::string::npos);
}

TEST(PageElements, NullsAreListedOnceAndNotDrawn) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
      {"Bounds": [0, 0, 9, 9], "If": {"Condition": 0, "Contents": ["A", {"Bounds": [0, 0, 5, 5]}]}},
      null]})j");
  EXPECT_TRUE(page.scene.shapes.empty());
  EXPECT_TRUE(At(page, "/Contents/0").isNull);
  const std::vector<std::string> lines = Note(page, "Null in the result");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].rfind("/Contents/0 · If 0 · ", 0), 0U) << lines[0];
}

TEST(PageElements, PartsOfPixelsAreCutOff) {
  const ttr::CPageElements page =
      ElementsOf(R"j({"Contents": [{"Bounds": [-10.7, 10.2, 100.9, 50.5]}]})j");
  ASSERT_EQ(page.scene.shapes.size(), 1U);
  EXPECT_EQ(page.scene.shapes[0].box, (CBox{-10, 10, 100, 50}));
  EXPECT_TRUE(Note(page, "Bounds that cannot be drawn").empty());
  EXPECT_EQ(At(page, "/Contents/0").bounds[2], 100);
}

TEST(PageElements, BoundsThatAreNoNumbersOfPixelsAreListedAndNotDrawn) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
      {"Bounds": [3e9, 0, 9, 9]}, {"Bounds": [1, 2, 3]}, {"Bounds": []}, {"Bounds": [0, 0, -1, 5]},
      {"Bounds": "wide"}, {"Bounds": [0, 0, 0, 5]}]})j");
  ASSERT_EQ(page.scene.shapes.size(), 1U);
  EXPECT_EQ(page.scene.shapes[0].box, (CBox{0, 0, 0, 5}));
  EXPECT_EQ(Note(page, "Bounds that cannot be drawn").size(), 5U);
  EXPECT_EQ(Note(page, "Without width or height").size(), 1U);
  EXPECT_TRUE(At(page, "/Contents/0").bounds.isNull());
}

TEST(PageElements, OffScreenElementsAreMarkedAndListed) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
      {"Bounds": [-1, 0, 9, 9]}, {"Bounds": [1200, 0, 80, 720]}, {"Bounds": [1200, 0, 81, 9]}]})j");
  EXPECT_TRUE(At(page, "/Contents/0").offScreen);
  EXPECT_FALSE(At(page, "/Contents/1").offScreen);
  EXPECT_TRUE(At(page, "/Contents/2").offScreen);
  EXPECT_EQ(Note(page, "Off the screen").size(), 2U);
}

TEST(PageElements, LoopInAContainerIsAContainerWithCells) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
      {"RenderType": 1024, "Bounds": [100, 50, 400, 300], "Contents": [
        {"Loop": {"List": "Ely,Diss", "Value": "town", "CellWidth": 80, "CellHeight": 20,
                  "Layout": [[[0, 0], [0, 25]]], "Contents": ["$(town)", "x.png"]}}]}]})j");
  std::vector<CShape> shapes = page.scene.shapes;
  ASSERT_EQ(shapes.size(), 6U);
  EXPECT_EQ(shapes[0].container, "container 1");
  EXPECT_EQ(shapes[1].container, "container 2 in 1");
  EXPECT_EQ(shapes[1].box, (CBox{100, 50, 80, 45}));
  EXPECT_EQ(shapes[1].depth, 1U);
  EXPECT_EQ(shapes[2].kind, CShape::kindText);
  EXPECT_EQ(shapes[2].box, (CBox{100, 50, 80, 20}));
  EXPECT_EQ(shapes[2].texts, std::vector<std::string>{"Ely"});
  ASSERT_EQ(shapes[2].images.size(), 1U);
  EXPECT_EQ(shapes[3].texts, std::vector<std::string>{"Diss"});
  EXPECT_EQ(shapes[5].kind, CShape::kindCell);
  EXPECT_EQ(shapes[5].box, (CBox{100, 75, 80, 20}));
  EXPECT_EQ(At(page, "/Contents/0/Contents/0").label, "Loop \"Ely,Diss\"");
}

TEST(PageElements, ReplacedElementWithBoundsIsAFrame) {
  const ttr::CPageFolder folder(
      {{"p.json", R"({"Contents": [{"Bounds": [5, 6, 7, 8], "Include": {"Filename": "i.json"}}]})"},
       {"i.json", R"({"Contents": [{"Bounds": [1, 1, "100%", 1]}]})"}});
  const ttr::CPageElements page = ElementsOf(folder);
  ASSERT_EQ(page.scene.shapes.size(), 2U);
  EXPECT_EQ(page.scene.shapes[0].kind, CShape::kindFrame);
  EXPECT_EQ(page.scene.shapes[0].box, (CBox{5, 6, 7, 8}));
  const CPreviewElement& inner = At(page, "/Contents/0/Contents/0");
  EXPECT_EQ(Line(inner, "width"), "7 from \"100%\": 100% of 7 = 7");
  EXPECT_EQ(inner.place.substr(inner.place.rfind("i.json")), "i.json:1:15");
}

TEST(PageElements, MembersOfWrongKindsDoNoHarm) {
  const ttr::CPageElements page = ElementsOf(R"j({"Contents": [
      {"Bounds": [0, 0, 5, 5], "Display": {"a": 1}, "RenderType": [1], "Contents": {"b": 2}},
      {"Bounds": [0, 0, 5, 5], "Frame": 7, "Contents": [[1], {"c": 3}, true, 1.5, "$(none)"]}]})j");
  ASSERT_EQ(page.scene.shapes.size(), 2U);
  EXPECT_TRUE(page.scene.shapes[0].colours.empty());
  EXPECT_EQ(page.scene.shapes[1].texts, (std::vector<std::string>{"true", "1.5"}));
}

}  // namespace
