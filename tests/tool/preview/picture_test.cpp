#include "preview/picture.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using ttr::CBox;
using ttr::CPicture;
using ttr::CScene;
using ttr::CShape;

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++found;
  }
  return found;
}

CShape Element(std::size_t id, const CBox& box) {
  CShape shape;
  shape.id = id;
  shape.box = box;
  return shape;
}

CScene Scene(std::vector<CShape> shapes) {
  CScene scene;
  scene.size = {1280, 720};
  scene.name = "test";
  scene.shapes = std::move(shapes);
  return scene;
}

std::string SvgOf(std::vector<CShape> shapes) { return drawPicture(Scene(std::move(shapes))).svg; }

TEST(Picture, IsAsLargeAsTheScreen) {
  const CPicture picture = drawPicture(Scene({Element(1, {0, 0, 1280, 720})}));
  EXPECT_EQ(picture.canvas, (CBox{0, 0, 1280, 720}));
  EXPECT_TRUE(Contains(picture.svg, R"(width="1280" height="720" viewBox="0 0 1280 720")"));
}

TEST(Picture, BoxStandsAtItsPlace) {
  EXPECT_TRUE(
      Contains(SvgOf({Element(7, {40, 20, 640, 80})}),
               R"(<g class="element" data-id="7"><rect x="40" y="20" width="640" height="80")"));
}

TEST(Picture, DeeperBoxHasAnotherOutline) {
  CShape inner = Element(2, {10, 10, 50, 50});
  inner.depth = 1;
  const std::string svg = SvgOf({Element(1, {0, 0, 100, 100}), inner});
  EXPECT_TRUE(Contains(svg, R"(stroke="#8fa3bf")"));
  EXPECT_TRUE(Contains(svg, R"(stroke="#6ea8fe")"));
}

TEST(Picture, FirstColourFillsAndAllAreSwatches) {
  CShape shape = Element(1, {0, 0, 100, 100});
  shape.colours = {0xFF1E5AA8, 0x80FF0000};
  const std::string svg = SvgOf({shape});
  EXPECT_TRUE(Contains(svg, R"(width="100" height="100" fill="#1e5aa8" stroke=)"));
  EXPECT_EQ(Count(svg, "class=\"swatch\""), 2U);
  EXPECT_TRUE(Contains(svg, R"(fill="#ff0000" fill-opacity="0.501")"));
}

TEST(Picture, ColourWithoutAlphaIsHatched) {
  CShape shape = Element(1, {0, 0, 100, 100});
  shape.colours = {0x001E5AA8};
  const std::string svg = SvgOf({shape});
  EXPECT_TRUE(Contains(svg, R"j(height="100" fill="url(#test-hatch-1e5aa8)")j"));
  EXPECT_TRUE(Contains(svg, R"(<pattern id="test-hatch-1e5aa8")"));
}

TEST(Picture, TextIsWrittenInTheFirstColourOnATintOfIt) {
  CShape shape = Element(1, {0, 0, 400, 50});
  shape.colours = {0xFFFFCC00};
  shape.texts = {"Gate B7"};
  const std::string svg = SvgOf({shape});
  EXPECT_TRUE(Contains(svg, R"(height="50" fill="#ffcc00" fill-opacity="0.130")"));
  EXPECT_TRUE(Contains(svg, R"(<svg x="0" y="0" width="400" height="50"><text )"));
  EXPECT_TRUE(Contains(svg, R"(font-size="31" fill="#ffcc00">Gate B7</text>)"));
}

TEST(Picture, TextIsHarmless) {
  CShape shape = Element(1, {0, 0, 900, 50});
  shape.texts = {"<script>&\"\x01\xFF\n"};
  shape.title = "]]><x>";
  shape.container = "<c>";
  const std::string svg = SvgOf({shape});
  EXPECT_TRUE(Contains(svg, ">&lt;script&gt;&amp;&quot; \xEF\xBF\xBD </text>")) << svg;
  EXPECT_TRUE(Contains(svg, "<title>]]&gt;&lt;x&gt;</title>"));
  EXPECT_TRUE(Contains(svg, ">&lt;c&gt;</text>"));
  EXPECT_FALSE(Contains(svg, "<script"));
}

TEST(Picture, ImageOrPlaceholderTakesThePlaceOfItsName) {
  const ttr::CImage shown{"a.png", "data:image/png;base64,AAAA", ""};
  const ttr::CImage missing{"b.png", "", "not found"};
  CShape first = Element(1, {10, 20, 300, 200});
  first.images = {&shown};
  CShape second = Element(2, {400, 20, 300, 200});
  second.images = {&missing};
  const std::string svg = SvgOf({first, first, second});
  EXPECT_EQ(Count(svg, "data:image/png;base64,AAAA"), 1U);
  EXPECT_EQ(
      Count(svg,
            R"(<svg x="10" y="20" width="300" height="200"><use href="#test-image-0"/></svg>)"),
      2U);
  EXPECT_TRUE(Contains(svg, ">b.png: not found</text>"));
}

TEST(Picture, ContainerBearsItsId) {
  CShape shape = Element(1, {100, 100, 300, 200});
  shape.container = "container 3";
  EXPECT_TRUE(Contains(SvgOf({shape}), ">container 3</text>"));
}

TEST(Picture, CellsAndFramesAreDotted) {
  CShape cell = Element(0, {5, 6, 70, 80});
  cell.kind = CShape::kindCell;
  CShape frame = Element(4, {9, 9, 90, 90});
  frame.kind = CShape::kindFrame;
  const std::string svg = SvgOf({cell, frame});
  EXPECT_TRUE(Contains(svg, R"(<rect class="cell" x="5" y="6" width="70" height="80")"));
  EXPECT_TRUE(Contains(svg, R"(stroke-dasharray="2 4")"));
  EXPECT_TRUE(Contains(svg, R"(stroke-dasharray="2 3")"));
}

TEST(Picture, MarksWhatLiesOffTheScreen) {
  const CPicture picture = drawPicture(Scene({Element(1, {-50, 10, 100, 100})}));
  EXPECT_EQ(picture.canvas, (CBox{-90, 0, 1370, 720}));
  EXPECT_TRUE(
      Contains(picture.svg, R"(data-id="1"><rect x="-50" y="10" width="100" height="100")"));
  EXPECT_TRUE(Contains(picture.svg, R"(class="off-screen" x="-50" y="10")"));
  EXPECT_TRUE(Contains(picture.svg, "class=\"outside\""));
}

TEST(Picture, TextCanBeReadOnTheMarginToo) {
  CShape on = Element(1, {0, 0, 100, 30});
  on.texts = {"on"};
  CShape off = Element(2, {0, 800, 100, 30});
  off.texts = {"off"};
  const std::string svg = SvgOf({on, off});
  EXPECT_TRUE(Contains(svg, "fill=\"#e8ebf0\">on</text>"));
  EXPECT_TRUE(Contains(svg, "fill=\"#20242a\">off</text>"));
}

TEST(Picture, MarginIsHalfAScreenAtMost) {
  constexpr int lowest = std::numeric_limits<int>::min();
  constexpr int highest = std::numeric_limits<int>::max();
  const CPicture picture = drawPicture(
      Scene({Element(1, {lowest, 0, 10, 10}), Element(2, {0, highest, highest, highest}),
             Element(3, {lowest, lowest, highest, highest})}));
  EXPECT_EQ(picture.canvas, (CBox{-648, -368, 1280 + 648 + 648, 720 + 368 + 368}));
  // The first one is a small box at the edge, as it is too far away.
  EXPECT_TRUE(Contains(picture.svg, R"(data-id="1"><rect x="-648" y="0" width="10" height="10")"));
  EXPECT_FALSE(Contains(picture.svg, "2147483647"));
  EXPECT_FALSE(Contains(picture.svg, "2147483648"));
}

TEST(Picture, HugeScreenIsScaledDown) {
  CScene huge = Scene({});
  huge.size = {std::numeric_limits<int>::max(), 1};
  EXPECT_TRUE(
      Contains(drawPicture(huge).svg, R"(width="4096" height="1" viewBox="0 0 2147483647 1")"));
}

TEST(Picture, NotesStandBelow) {
  CScene noted = Scene({});
  noted.notes = {{"Null in the result", {"/Contents/3 <x>"}}, {"More", {}}};
  for (int line = 0; line < 50; ++line) noted.notes[1].lines.push_back("line");
  const CPicture picture = drawPicture(noted);
  EXPECT_TRUE(Contains(picture.svg, ">Null in the result</text>"));
  EXPECT_TRUE(Contains(picture.svg, ">/Contents/3 &lt;x&gt;</text>"));
  EXPECT_TRUE(Contains(picture.svg, ">and 20 more</text>"));
  EXPECT_EQ(Count(picture.svg, ">line</text>"), 30U);
  EXPECT_GT(picture.canvas.height, 720);
}

TEST(Picture, BannerTellsWhyItIsOutdated) {
  const CPicture picture = drawPicture(Scene({}));
  const std::string svg = withBanner(picture, "page.json:3:4: <missing> ','");
  EXPECT_TRUE(Contains(svg, ">OUTDATED</text>"));
  EXPECT_TRUE(Contains(svg, ">page.json:3:4: &lt;missing&gt; ','</text>"));
  EXPECT_GT(svg.find("OUTDATED"), svg.find("class=\"screen\""));
  EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST(Picture, IsTheSameEachTime) {
  CShape shape = Element(1, {0, 0, 100, 100});
  shape.colours = {0x00112233, 0x00332211};
  shape.texts = {"A", "B"};
  EXPECT_EQ(SvgOf({shape}), SvgOf({shape}));
}

}  // namespace
