#include "preview/bounds_arithmetic.h"

#include <gtest/gtest.h>

#include "TokenTemplateResolver/json_text.h"
#include "page/element_tree.h"
#include "page/page_run.h"
#include "preview/bounds_probe.h"
#include "support/json.h"
#include "support/page_generator.h"
#include "tool/support/page_folder.h"

namespace {

using Lines = std::vector<std::string>;

/// The lines for bounds without tokens.
Lines Arithmetic(const std::string& written, const std::string& enclosing,
                 const std::string& result) {
  return ttr::boundsArithmetic(Parse(written), Parse(written), Parse(enclosing), Parse(result));
}

TEST(BoundsArithmetic, AddsEdgesAndKeepsSizes) {
  EXPECT_EQ(Arithmetic("[16, 8, 200, 40, 1, 2]", "[32, 10, 640, 480]", "[48, 18, 200, 40, 1, 2]"),
            (Lines{"x: 32 + 16 = 48", "y: 10 + 8 = 18", "width: 200", "height: 40"}));
}

TEST(BoundsArithmetic, TakesSharesOfTheEnclosingSize) {
  EXPECT_EQ(
      Arithmetic(R"(["5%", "0%", "50%", "12.9%"])", "[32, 10, 640, 480]", "[64, 10, 320, 57]"),
      (Lines{"x: 32 + 5% of 640 = 32 + 32 = 64", "y: 10 + 0% of 480 = 10 + 0 = 10",
             "width: 50% of 640 = 320", "height: 12.9% of 480 = 57"}));
}

TEST(BoundsArithmetic, ShowsTheTokensOfTheTemplate) {
  EXPECT_EQ(
      ttr::boundsArithmetic(Parse(R"j(["$(left)", "$(half)", "$(half)", "$(left)"])j"),
                            Parse(R"([30, "50%", "50%", 30])"), Parse("[10, 20, 640, 100]"),
                            Parse("[40, 70, 320, 30]")),
      (Lines{"x: 10 + $(left) = 10 + 30 = 40", "y: 20 + $(half) = 20 + 50% of 100 = 20 + 50 = 70",
             "width: $(half) = 50% of 640 = 320", "height: $(left) = 30"}));
}

TEST(BoundsArithmetic, ConvertsTextAsTheLibraryDoes) {
  EXPECT_EQ(
      Arithmetic(R"(["5", "0x10", "010", ""])", "[10, 20, 640, 100]", "[15, 36, 8, 0]"),
      (Lines{"x: 10 + 5 = 15", "y: 20 + 0x10 = 20 + 16 = 36", "width: 010 = 8", "height: 0"}));
}

TEST(BoundsArithmetic, SaysWhatIsNoInteger) {
  EXPECT_EQ(
      Arithmetic(R"(["left", "%50", "wide"])", "[10, 20, 640, 100]", "[10, 20, 0]"),
      (Lines{"x: 10 + \"left\" = 10 + 0 = 10 (no integer)",
             "y: 20 + \"%50\" = 20 + 0 = 20 (no integer)", "width: \"wide\" = 0 (no integer)"}));
}

TEST(BoundsArithmetic, ShareOfNothingIsNothing) {
  EXPECT_EQ(Arithmetic(R"(["50%", 0, "50%", "50%"])", "[10, 20, 0, null]", "[10, 20, 0, 0]"),
            (Lines{"x: 10 + 50% of nothing = 10 + 0 = 10", "y: 20 + 0 = 20",
                   "width: 50% of nothing = 0", "height: 50% of nothing = 0"}));
}

TEST(BoundsArithmetic, AddsTextButNoIntegerToANegativeEdge) {
  EXPECT_EQ(Arithmetic(R"([5, "5", 1, 1])", "[-30, -20, 640, 100]", "[5, -15, 1, 1]"),
            (Lines{"x: 5 (not added to the enclosing edge -30)", "y: -20 + 5 = -15", "width: 1",
                   "height: 1"}));
}

TEST(BoundsArithmetic, MissingEdgeCountsAsMinusOneForText) {
  EXPECT_EQ(Arithmetic(R"([5, "5", "10%"])", "[null, null, null, null]", "[5, 4, 0]"),
            (Lines{"x: 5 (no enclosing edge)", "y: -1 + 5 = 4 (no enclosing edge counts as -1)",
                   "width: 10% of nothing = 0"}));
}

TEST(BoundsArithmetic, OtherValuesAreTheResultAlone) {
  EXPECT_EQ(Arithmetic("[2.5, null, true, [1]]", "[10, 20, 640, 100]", "[2.5, null, true, [1]]"),
            (Lines{"x: 2.5", "y: null", "width: true", "height: [1]"}));
}

TEST(BoundsArithmetic, NeverContradictsTheResult) {
  EXPECT_EQ(Arithmetic(R"([16, "16", 200, "50%"])", "[32, 10, 640, 480]", "[1, 2, 3, 4]"),
            (Lines{"x: 1", "y: 2", "width: 3", "height: 4"}));
  // Sums and shares wrap in the library.
  EXPECT_EQ(
      Arithmetic(R"([2147483647, 0, "100%"])", "[1, 0, 2147483647, 0]", "[-2147483648, 0, -1]"),
      (Lines{"x: -2147483648", "y: 0 + 0 = 0", "width: -1"}));
}

TEST(BoundsArithmetic, FewerEntriesHaveFewerLines) {
  EXPECT_EQ(Arithmetic("[1]", "[0, 0, 9, 9]", "[1]"), Lines{"x: 0 + 1 = 1"});
  EXPECT_EQ(Arithmetic("[]", "[0, 0, 9, 9]", "[]"), Lines{});
  EXPECT_EQ(Arithmetic("5", "[0, 0, 9, 9]", "5"), Lines{});
}

/// The number that a line ends in, without the remark behind it.
std::string Conclusion(const std::string& line) {
  const std::string calculation = line.substr(0, line.rfind(" (no"));
  const std::size_t equals = calculation.rfind("= ");
  return calculation.substr(equals == std::string::npos ? calculation.find(": ") + 2 : equals + 2);
}

/// Counts the lines of all elements, and those that calculate.
struct CCounts {
  std::size_t lines = 0;
  std::size_t calculations = 0;
};

void Compare(const ttr::CElementNode& node, const ttr::CBoundsFactsOf& facts, CCounts& counts) {
  for (const ttr::CElementNode& child : node.children) Compare(child, facts, counts);
  const auto found = facts.find(&node);
  if (found == facts.end() || node.kind != ttr::CElementNode::kindElement || node.IsNull()) return;
  const Json::Value& result = (*node.result)["Bounds"];
  if (!result.isArray()) return;
  EXPECT_EQ(found->second.bounds, result);
  const Lines lines = ttr::boundsArithmetic((*node.origin.value)["Bounds"], found->second.replaced,
                                            found->second.enclosing, result);
  ASSERT_EQ(lines.size(), std::min(result.size(), 4U));
  for (Json::ArrayIndex index = 0; index < lines.size(); ++index) {
    ++counts.lines;
    if (lines[index].find(" + ") != std::string::npos) ++counts.calculations;
    if (!result[index].isInt()) continue;
    EXPECT_EQ(Conclusion(lines[index]), std::to_string(result[index].asInt())) << lines[index];
  }
}

TEST(BoundsArithmetic, AgreesWithTheResultsOfRandomPages) {
  const ttr::CPageFolder folder({{"p.json", "{}"}, {"v.json", R"({"n": 7, "text": "40%"})"}});
  CCounts counts;
  for (std::uint32_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(seed);
    ttr::CPageGenerator generator(seed);
    folder.Write("p.json", jsoncpp_string::toString(generator.Document()));
    folder.Write("a.json", jsoncpp_string::toString(generator.Document()));
    ttr::CPageOptions options = folder.Options("p.json");
    options.values = folder.path() + "/v.json";
    ttr::CPageRunner page(options);
    const ttr::CPageRun run = page.Run({}, 1);
    if (run.exception) continue;
    const ttr::CElementNode root = elementTree(page, run);
    Compare(root, ttr::probeBounds(page, root, 1), counts);
  }
  EXPECT_GT(counts.lines, 400U);
  EXPECT_GT(counts.calculations, 100U);
}

}  // namespace
