#include <gtest/gtest.h>
#include <json/value.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "support/frame_handler.h"
#include "support/resolver_fixture.h"

namespace {

constexpr int smallest = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

/// Answers `$(stack.bounds)`: the bounds in force.
class CStackHandler : public ITokenHandler {
 public:
  explicit CStackHandler(const CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts&) const override { return m_stack->boundsFind(); }

 private:
  const CTemplateStack* m_stack;
};

class BoundsElement : public ResolverTest {
 protected:
  Json::Value Edge(Json::Value edge, int origin, int extent) const {
    resolver.processBoundsEdge(edge, origin, extent);
    return edge;
  }

  Json::Value Size(Json::Value size, int origin, int extent) const {
    resolver.processBoundsSize(size, origin, extent);
    return size;
  }

  Json::Value Point(Json::Value point) const {
    resolver.processArrayBoundsEdge(point);
    return point;
  }

  Json::Value Layout(Json::Value layout) {
    resolver.processLayoutElement(layout);
    return layout;
  }

  Json::Value Bounds(Json::Value bounds) {
    resolver.processContentsBoundsElement(bounds);
    return bounds;
  }

  /// An element inside one with the bounds `bounds`: its own frame is on top, still empty.
  void Enclose(const std::string& bounds) {
    stack.Clear();
    stack.Push(CTemplateStack::CStackFrame());
    stack.BoundsSet(Parse(bounds));
    stack.Push(CTemplateStack::CStackFrame());
  }

  /// The resolved form of `entry`, standing alone in a top-level "Contents".
  std::string ResolveEntry(const std::string& entry) {
    const std::string page = Resolve(R"({"Contents":[)" + entry + "]}");
    return page.substr(13, page.size() - 15);
  }
};

// --- Edges and sizes that are no text ---

TEST_F(BoundsElement, IntEdgeGetsAnOriginThatIsNotNegative) {
  const struct {
    Json::Value edge;
    int origin;
    int extent;
    Json::Value result;
  } cases[] = {
      {5, 10, 200, 15},
      {5, 0, 200, 5},
      {5, 10, 0, 15},
      {5, 10, -1, 15},
      {-5, 10, 200, 5},
      {5, -1, 200, 5},
      {5, -7, 200, 5},
      {0, -1, -1, 0},
      // In 32 bits.
      {greatest, 1, 200, smallest},
      {greatest, greatest, 200, -2},
      {smallest, greatest, 200, -1},
      // Ints of other JSON types.
      {7U, 10, 200, 17},
      {7U, 0, 200, 7},
      {7U, -1, 200, 7U},
      {10.0, 10, 200, 20},
      {10.0, 0, 200, 10},
      {10.0, -1, 200, 10.0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.edge.toStyledString() + "at " + std::to_string(c.origin));
    EXPECT_EQ(Edge(c.edge, c.origin, c.extent), c.result);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, EdgeThatIsNeitherIntNorTextStays) {
  const CTableHandler& handler = Handle("n", "7");
  const Json::Value edges[] = {10.5,
                               -0.5,
                               3e9,
                               3000000000U,
                               Json::Value(Json::Int64{2147483648}),
                               true,
                               false,
                               Json::Value(),
                               Parse("[]"),
                               Parse("[5]"),
                               Parse(R"j(["$(n)"])j"),
                               Parse("{}"),
                               Parse(R"j({"a": "$(n)"})j")};
  for (const Json::Value& edge : edges) {
    SCOPED_TRACE(edge.toStyledString());
    EXPECT_EQ(Edge(edge, 10, 200), edge);
    EXPECT_EQ(Edge(edge, -1, -1), edge);
    EXPECT_EQ(handler.calls(), std::vector<std::string>{});
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, SizeThatIsNoTextStays) {
  const CTableHandler& handler = Handle("n", "7");
  const Json::Value sizes[] = {5,
                               -5,
                               0,
                               greatest,
                               7U,
                               10.0,
                               10.5,
                               3000000000U,
                               true,
                               Json::Value(),
                               Parse("[]"),
                               Parse(R"j(["$(n)"])j"),
                               Parse(R"j({"a": "$(n)"})j")};
  for (const Json::Value& size : sizes) {
    SCOPED_TRACE(size.toStyledString());
    EXPECT_EQ(Size(size, 10, 200), size);
    EXPECT_EQ(Size(size, -1, -1), size);
    EXPECT_EQ(handler.calls(), std::vector<std::string>{});
    EXPECT_EQ(Errors(), "");
  }
}

// --- Percentages ---

TEST_F(BoundsElement, PercentageIsTakenOfTheExtent) {
  const struct {
    const char* text;
    int extent;
    int share;
  } cases[] = {
      {"50%", 200, 100},
      {"50 %", 200, 100},
      {" 50%", 200, 100},
      {"+50%", 200, 100},
      {"0%", 200, 0},
      {"100%", 200, 200},
      {"250%", 200, 500},
      {"50%%", 200, 100},
      {"50%x", 200, 100},
      {"5%0", 200, 10},
      {"5%5%", 200, 10},
      // Decimal digits up to the first other character.
      {"x5%", 200, 0},
      {"- 50%", 200, 0},
      {"5 0%", 200, 10},
      {"12.5%", 200, 24},
      {"1e2%", 200, 2},
      {"010%", 200, 20},
      {"0x10%", 200, 0},
      // Truncated toward zero.
      {"50%", 101, 50},
      {"-50%", 101, -50},
      {"-1%", 99, 0},
      {"50%", 1, 0},
      {"99%", 1, 0},
      {"100%", 1, 1},
      // The number saturates, the product wraps.
      {"2147483647%", 1, 21474836},
      {"9999999999%", 1, 21474836},
      {"99999999999999999999999999%", 1, 21474836},
      {"-9999999999%", 1, -21474836},
      {"9999999999%", 200, -2},
      {"-9999999999%", 200, 0},
      {"-9999999999%", 101, -21474836},
      {"30000000%", 100, -12949672},
      {"100%", greatest, -1},
      {"2%", greatest, 0},
      {"3%", greatest, 21474836},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " of " + std::to_string(c.extent));
    EXPECT_EQ(Edge(c.text, 0, c.extent), Json::Value(c.share));
    EXPECT_EQ(Edge(c.text, 10, c.extent), Json::Value(c.share + 10));
    EXPECT_EQ(Size(c.text, 10, c.extent), Json::Value(c.share));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, SumOfPercentageAndOriginWraps) {
  EXPECT_EQ(Edge("100%", greatest, 1), Json::Value(smallest));
  EXPECT_EQ(Edge("1%", greatest, greatest), Json::Value(-2126008813));
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, PercentSignBeforeTheFirstDigitMakesNoPercentage) {
  for (const std::string text : {"%", "%50", "% 50", "%5%", "x%5", "abc%", " %"}) {
    SCOPED_TRACE(text);
    const std::string message =
        "CTokenResolver::stringToInt: cannot convert value to signed integer: " + text + ".\n";
    EXPECT_EQ(Edge(text, 10, 200), Json::Value(10));
    EXPECT_EQ(Errors(), message);
    EXPECT_EQ(Size(text, 10, 200), Json::Value(0));
    EXPECT_EQ(Errors(), message);
  }
}

// The text is judged in one pass; two searches decide what is right.
TEST_F(BoundsElement, RandomTextIsAPercentageWhenADigitPrecedesTheFirstPercentSign) {
  const std::string alphabet = "059%-+x. ";
  std::mt19937 random(1);
  int percentages = 0;
  int signsWithoutDigit = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (auto n = random() % 9; n > 0; --n) text += alphabet[random() % alphabet.size()];
    SCOPED_TRACE(text);
    const std::size_t percent = text.find('%');
    const std::size_t digit = text.find_first_of("0123456789");
    Json::Value expected = text;
    if (percent != std::string::npos && digit != std::string::npos && digit < percent) {
      expected = std::atoi(text.c_str());
      ++percentages;
    } else {
      CTokenResolver::CoerceToInt(expected);
      if (percent != std::string::npos) ++signsWithoutDigit;
    }
    const std::string errors = Errors();
    ASSERT_EQ(Size(text, 0, 100), expected);
    ASSERT_EQ(Errors(), errors);
  }
  EXPECT_GT(percentages, 3000);
  EXPECT_GT(signsWithoutDigit, 3000);
}

TEST_F(BoundsElement, OnlyDigitsAndThePercentSignMakeAPercentage) {
  for (int code = 1; code < 256; ++code) {
    const std::string character(1, static_cast<char>(code));
    SCOPED_TRACE(code);
    const std::string between = "5" + character + "%";
    EXPECT_EQ(Size(between, 0, 100), Json::Value(std::atoi(between.c_str())));
    EXPECT_EQ(Errors(), "");
    if (character >= "0" && character <= "9") continue;
    for (const std::string& text : {character + "%", character == "%" ? "%" : "50" + character}) {
      EXPECT_EQ(Size(text, 0, 100), Json::Value(0));
      EXPECT_EQ(Errors(), "CTokenResolver::stringToInt: cannot convert value to signed integer: " +
                              text + ".\n");
    }
  }
}

TEST_F(BoundsElement, PercentageEdgeThatCannotBeTakenIsTheOrigin) {
  const struct {
    int origin;
    int extent;
  } cases[] = {{-1, -1}, {-1, 200}, {-7, 200}, {0, 0}, {10, 0}, {10, -1}, {10, smallest}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.origin) + ", " + std::to_string(c.extent));
    EXPECT_EQ(Edge("50%", c.origin, c.extent), Json::Value(c.origin));
    EXPECT_EQ(Errors(),
              "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
  }
}

TEST_F(BoundsElement, PercentageSizeThatCannotBeTakenIsZero) {
  for (const int extent : {0, -1, -7, smallest}) {
    SCOPED_TRACE(extent);
    EXPECT_EQ(Size("50%", 10, extent), Json::Value(0));
    EXPECT_EQ(Errors(),
              "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
  }
}

TEST_F(BoundsElement, PercentageSizeNeedsNoOrigin) {
  for (const int origin : {smallest, -7, -1, 0, greatest}) {
    SCOPED_TRACE(origin);
    EXPECT_EQ(Size("50%", origin, 200), Json::Value(100));
    EXPECT_EQ(Errors(), "");
  }
}

// --- Other text ---

TEST_F(BoundsElement, TextEdgeGetsTheOriginWhateverItsSign) {
  const struct {
    const char* text;
    int origin;
    int result;
  } cases[] = {
      {"5", 10, 15},
      {"5", 0, 5},
      {"5", -1, 4},
      {"5", -7, -2},
      {"-5", 10, 5},
      {"+5", 10, 15},
      {" 5", 10, 15},
      {"0x10", 10, 26},
      {"010", 10, 18},
      {"", 10, 10},
      {"", -1, -1},
      {"9999999999", 0, greatest},
      {"-9999999999", 0, smallest},
      {"2147483647", 1, smallest},
      {"9999999999", greatest, -2},
      {"-2147483648", -1, greatest},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " at " + std::to_string(c.origin));
    EXPECT_EQ(Edge(c.text, c.origin, 200), Json::Value(c.result));
    EXPECT_EQ(Edge(c.text, c.origin, -1), Json::Value(c.result));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, TextSizeGetsNoOrigin) {
  const struct {
    const char* text;
    int result;
  } cases[] = {{"5", 5},     {"-5", -5}, {"+5", 5}, {" 5", 5},
               {"0x10", 16}, {"010", 8}, {"", 0},   {"9999999999", greatest}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(Size(c.text, 10, 200), Json::Value(c.result));
    EXPECT_EQ(Size(c.text, -1, -1), Json::Value(c.result));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, TextThatDoesNotConvertCountsAsZero) {
  for (const std::string text : {"abc", "5 ", "12.5", "1e2", "5,5", "5x", "0b11"}) {
    SCOPED_TRACE(text);
    const std::string message =
        "CTokenResolver::stringToInt: cannot convert value to signed integer: " + text + ".\n";
    EXPECT_EQ(Edge(text, 10, 200), Json::Value(10));
    EXPECT_EQ(Errors(), message);
    EXPECT_EQ(Edge(text, -1, -1), Json::Value(-1));
    EXPECT_EQ(Errors(), message);
    EXPECT_EQ(Size(text, 10, 200), Json::Value(0));
    EXPECT_EQ(Errors(), message);
  }
}

// --- Tokens ---

TEST_F(BoundsElement, TokenGivesTheNumberOrThePercentage) {
  const struct {
    const char* value;
    int edge;    // at 10, of 200
    int absent;  // at -1, of 200
    int size;    // of 200
  } cases[] = {
      {"7", 17, 6, 7},
      {"2.9", 12, 1, 2},
      {"-2.9", 8, -3, -2},
      {"true", 11, 0, 1},
      {"null", 10, -1, 0},
      {"[5]", 10, -1, 0},
      {R"({"a": 5})", 10, -1, 0},
      {R"("5")", 15, 4, 5},
      {R"("0x10")", 26, 15, 16},
      {R"("")", 10, -1, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    Handle("n", c.value);
    EXPECT_EQ(Edge("$(n)", 10, 200), Json::Value(c.edge));
    EXPECT_EQ(Edge("$(n)", -1, 200), Json::Value(c.absent));
    EXPECT_EQ(Size("$(n)", 10, 200), Json::Value(c.size));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, PercentSignIsLookedForAfterSubstitution) {
  Handle("share", R"("50%")");
  Handle("n", "25");
  EXPECT_EQ(Edge("$(share)", 10, 200), Json::Value(110));
  EXPECT_EQ(Size("$(share)", 10, 200), Json::Value(100));
  EXPECT_EQ(Edge("$(n)%", 10, 200), Json::Value(60));
  EXPECT_EQ(Size("$(n)%", 10, 200), Json::Value(50));
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, FaultsInTokensComeBeforeTheConversion) {
  Handle("token", R"j("$(n)")j");
  const struct {
    const char* text;
    int edge;
    int size;
    const char* errors;
  } cases[] = {
      {"$(gone)", 10, 0, "CTokenResolver::GetTokenValue: no token handler for: gone.\n"},
      {"5$(gone)", 15, 5, "CTokenResolver::GetTokenValue: no token handler for: gone.\n"},
      {"x$(gone)", 10, 0,
       "CTokenResolver::GetTokenValue: no token handler for: gone.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: x.\n"},
      {"5$(n", 10, 0,
       "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: 5$(n.\n"},
      {"$(token)", 10, 0,
       "CTokenResolver::stringToInt: cannot convert value to signed integer: $(n).\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(Edge(c.text, 10, 200), Json::Value(c.edge));
    EXPECT_EQ(Errors(), c.errors);
    EXPECT_EQ(Size(c.text, 10, 200), Json::Value(c.size));
    EXPECT_EQ(Errors(), c.errors);
  }
}

TEST_F(BoundsElement, TokenNumberOutsideTheIntRangeThrows) {
  for (const char* value : {"3000000000", "-3000000000", "3e9", "18446744073709551615"}) {
    SCOPED_TRACE(value);
    Handle("n", value);
    EXPECT_THROW(Edge("$(n)", 10, 200), Json::LogicError);
    EXPECT_THROW(Size("$(n)", 10, 200), Json::LogicError);
    EXPECT_EQ(Errors(), "");
  }
}

// --- Points and layouts ---

TEST_F(BoundsElement, PointIsExtendedToTwoEdges) {
  Enclose("[10, 20, 200, 100]");
  const struct {
    const char* point;
    const char* result;
  } cases[] = {
      {"[5, 6]", "[15, 26]"},
      {R"(["50%", "50%"])", "[110, 70]"},
      {R"(["5", "6"])", "[15, 26]"},
      {"[1920]", "[1930, null]"},
      {R"(["10%"])", "[30, null]"},
      {"[]", "[null, null]"},
      {"[null, 6]", "[null, 26]"},
      {"[1.5, true]", "[1.5, true]"},
      {"[[5], {}]", "[[5], {}]"},
      {R"j([5, 6, 7, "8", "50%", "$(n)", null])j", R"j([15, 26, 7, "8", "50%", "$(n)", null])j"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.point);
    EXPECT_EQ(Point(Parse(c.point)), Parse(c.result));
    EXPECT_EQ(Layout(Parse("[" + std::string(c.point) + "]")),
              Parse("[" + std::string(c.result) + "]"));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, PointThatIsNoArrayStays) {
  Enclose("[10, 20, 200, 100]");
  for (const char* point : {"5", "2.5", "true", "null", R"("50%")", "{}", R"({"a": 5})"}) {
    SCOPED_TRACE(point);
    EXPECT_EQ(Point(Parse(point)), Parse(point));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, LayoutIsMeasuredPointByPoint) {
  Enclose("[0, 0, 1920, 1080]");
  EXPECT_EQ(Layout(Parse(R"([[0, 0], ["50%", "50%"], [1920]])")),
            Parse("[[0, 0], [960, 540], [1920, null]]"));
  Enclose("[10, 20, 200, 100]");
  EXPECT_EQ(Layout(Parse(R"([[1, 1], 5, "50%", null, {"a": 1}, [1, 1], ["50%", "50%"]])")),
            Parse(R"([[11, 21], 5, "50%", null, {"a": 1}, [11, 21], [110, 70]])"));
  EXPECT_EQ(Layout(Parse("[]")), Parse("[]"));
  EXPECT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames().back().bounds, Parse("[]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, LayoutThatIsNoArrayStays) {
  Enclose("[10, 20, 200, 100]");
  for (const char* layout :
       {"5", "2.5", "true", "null", R"("50%")", "{}", R"({"a": [5, 5]})", "[5]", "[null]"}) {
    SCOPED_TRACE(layout);
    EXPECT_EQ(Layout(Parse(layout)), Parse(layout));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, PointWithoutEnclosingBoundsKeepsIntsAndTakesOneFromText) {
  stack.Clear();
  EXPECT_EQ(Point(Parse(R"([5, "5"])")), Parse("[5, 4]"));
  EXPECT_EQ(Errors(), "");
  EXPECT_EQ(Layout(Parse(R"([["50%", 7]])")), Parse("[[-1, 7]]"));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
}

// --- Bounds arrays ---

TEST_F(BoundsElement, BoundsAreMadeAbsoluteAndRecorded) {
  const struct {
    const char* bounds;
    const char* result;
  } cases[] = {
      {R"([5, "10%", "50%", "25%"])", "[15, 30, 100, 25]"},
      {R"(["5", 5, 7, 9, "3"])", "[15, 25, 7, 9, 3]"},
      {R"(["10%", "10%", "10%", "10%"])", "[30, 30, 20, 10]"},
      {R"([10.5, null, 2.5, null])", "[10.5, null, 2.5, null]"},
      {"[5]", "[15]"},
      {"[5, 6]", "[15, 26]"},
      {R"([5, 6, "50%"])", "[15, 26, 100]"},
      {"[]", "[]"},
      // The two further integers are only converted.
      {R"([0, 0, 0, 0, "3", "0x10"])", "[10, 20, 0, 0, 3, 16]"},
      {"[0, 0, 0, 0, -4, 2.9]", "[10, 20, 0, 0, -4, 2]"},
      {"[0, 0, 0, 0, null, true]", "[10, 20, 0, 0, 0, 1]"},
      {R"([0, 0, 0, 0, "", [5]])", "[10, 20, 0, 0, 0, 0]"},
      // Nothing happens to the rest.
      {R"j([0, 0, 0, 0, 0, 0, "7", "50%", "$(n)", null, 2.5])j",
       R"j([10, 20, 0, 0, 0, 0, "7", "50%", "$(n)", null, 2.5])j"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bounds);
    Enclose("[10, 20, 200, 100]");
    EXPECT_EQ(Bounds(Parse(c.bounds)), Parse(c.result));
    EXPECT_EQ(stack.frames().back().bounds, Parse(c.result));
    EXPECT_EQ(stack.frames().front().bounds, Parse("[10, 20, 200, 100]"));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(BoundsElement, PercentageIsNothingForTheFurtherIntegers) {
  Enclose("[10, 20, 200, 100]");
  EXPECT_EQ(Bounds(Parse(R"([0, 0, 0, 0, "50%", "abc"])")), Parse("[10, 20, 0, 0, 0, 0]"));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n");
}

TEST_F(BoundsElement, EntriesAreProcessedInTheirOrder) {
  const CTableHandler& handler = Handle("h", R"({"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7})");
  Enclose("[10, 20, 200, 100]");
  EXPECT_EQ(Bounds(Parse(R"j(["$(h.a)","$(h.b)","$(h.c)","$(h.d)","$(h.e)","$(h.f)","$(h.g)"])j")),
            Parse(R"j([11, 22, 3, 4, 5, 6, "$(h.g)"])j"));
  EXPECT_EQ(handler.calls(),
            (std::vector<std::string>{"GetValue h.a", "GetValue h.b", "GetValue h.c",
                                      "GetValue h.d", "GetValue h.e", "GetValue h.f"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, EnclosingEntriesThatAreMissingOrNoIntsAreAbsent) {
  const std::string width =
      "CTokenResolver::stringToInt: cannot convert value to signed integer: 51%.\n";
  const std::string height =
      "CTokenResolver::stringToInt: cannot convert value to signed integer: 52%.\n";
  const struct {
    const char* enclosing;
    const char* result;
    std::string errors;
  } cases[] = {
      {"[10, 20, 200, 100]", "[11, 21, 102, 52]", ""},
      {"[10]", "[11, 1, 0, 0]", width + height},
      {"[10, 20, 200]", "[11, 21, 102, 0]", height},
      {"[null, null, 200, 100]", "[1, 1, 102, 52]", ""},
      {R"(["10", true, 200.0, 100.5])", "[1, 1, 102, 0]", height},
      {"[10.0, 20.5, [200], {}]", "[11, 1, 0, 0]", width + height},
      {"[3000000000, 20, 3000000000, 100]", "[1, 21, 0, 52]", width},
      {"[-10, -1, 200, 100]", "[1, 1, 102, 52]", ""},
      {"[10, 20, 0, -100]", "[11, 21, 0, 0]", width + height},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.enclosing);
    Enclose(c.enclosing);
    EXPECT_EQ(Bounds(Parse(R"([1, 1, "51%", "52%"])")), Parse(c.result));
    EXPECT_EQ(Errors(), c.errors);
  }
}

TEST_F(BoundsElement, WithoutEnclosingBoundsTextLosesOneAndIntsStay) {
  stack.Clear();
  stack.Push(CTemplateStack::CStackFrame());
  EXPECT_EQ(Bounds(Parse(R"([5, "5", "50%"])")), Parse("[5, 4, 0]"));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
  EXPECT_EQ(stack.frames().back().bounds, Parse("[5, 4, 0]"));
}

TEST_F(BoundsElement, WithoutEnclosingWidthPercentagesAreZero) {
  Enclose("[10, 20, 0, 100]");
  EXPECT_EQ(Bounds(Parse(R"(["50%", "50%", "50%", "50%"])")), Parse("[10, 70, 0, 50]"));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
}

TEST_F(BoundsElement, EmptyStackIsReportedAfterTheProcessing) {
  stack.Clear();
  EXPECT_EQ(Bounds(Parse(R"([5, "5", "x", 7, "3"])")), Parse("[5, 4, 0, 7, 3]"));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: x.\n"
            "CTemplateStack::BoundsSet: preconditions.\n");
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(BoundsElement, BoundsThatAreNoArrayAreReportedAndKept) {
  const CTableHandler& handler = Handle("n", "7");
  Enclose("[10, 20, 200, 100]");
  stack.BoundsSet(Parse("[1, 2, 3, 4]"));
  for (const char* bounds : {"null", "5", "2.5", "true", R"("50%")", R"j("$(n)")j", "{}"}) {
    SCOPED_TRACE(bounds);
    EXPECT_EQ(Bounds(Parse(bounds)), Parse(bounds));
    EXPECT_EQ(stack.frames().back().bounds, Parse("[1, 2, 3, 4]"));
    EXPECT_EQ(handler.calls(), std::vector<std::string>{});
    EXPECT_EQ(Errors(), "CTemplateStack::BoundsSet: preconditions.\n");
  }
}

TEST_F(BoundsElement, ObjectWithMembersThrows) {
  Enclose("[10, 20, 200, 100]");
  EXPECT_THROW(Bounds(Parse(R"({"x": 5})")), Json::LogicError);
  EXPECT_EQ(stack.frames().back().bounds, Parse("[]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, EmptyBoundsAreRecorded) {
  Enclose("[10, 20, 200, 100]");
  stack.BoundsSet(Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(Bounds(Parse("[]")), Parse("[]"));
  EXPECT_EQ(stack.frames().back().bounds, Parse("[]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[10, 20, 200, 100]"));
  EXPECT_EQ(Errors(), "");
  stack.Clear();
  EXPECT_EQ(Bounds(Parse("[]")), Parse("[]"));
  EXPECT_EQ(Errors(), "CTemplateStack::BoundsSet: preconditions.\n");
}

TEST_F(BoundsElement, EnclosingBoundsAreLookedUpOnce) {
  const CFrameHandler frame(&stack);
  tokens.Set("frame", &frame);
  Enclose("[10, 20, 50, 80]");
  EXPECT_EQ(Bounds(Parse(R"j(["5$(frame.place)", 1, "50%", "50%"])j")), Parse("[15, 21, 25, 40]"));
  Enclose("[10, 20, 50, 80]");
  Json::Value layout = Parse(R"j([["5$(frame.place)", 1], [2, "50%"]])j");
  resolver.processLayoutElement(layout);
  EXPECT_EQ(layout, Parse("[[15, 21], [12, 60]]"));
  EXPECT_EQ(stack.frames().back().bounds, Parse("[100, 200, 300, 400]"));
  EXPECT_EQ(Errors(), "");
}

// --- In the walk ---

TEST_F(BoundsElement, ScreenIsTheOutermostEnclosure) {
  EXPECT_EQ(ResolveEntry(R"({"Bounds":["50%","25%","100%","10%",null,"2"]})"),
            R"({"Bounds":[640,180,1280,72,0,2]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, ElementIsMeasuredAgainstTheNearestOneWithBounds) {
  EXPECT_EQ(ResolveEntry(R"({"Bounds":[100,50,200,100],"Contents":[)"
                         R"({"Bounds":["50%","50%","50%","50%"],"Contents":[{"Bounds":[1,1]}]},)"
                         R"({"Contents":[{"Bounds":[2,"10%"]}]},)"
                         R"({"Bounds":[],"Contents":[{"Bounds":[3,3]}]}]})"),
            R"({"Bounds":[100,50,200,100],"Contents":[)"
            R"({"Bounds":[200,100,100,50],"Contents":[{"Bounds":[201,101]}]},)"
            R"({"Contents":[{"Bounds":[102,60]}]},)"
            R"({"Bounds":[],"Contents":[{"Bounds":[103,53]}]}]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, RecordedBoundsAreInForceForTheContents) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(ResolveEntry(R"j({"Bounds":["5",6,7,8,"9"],"Contents":["$(stack.bounds)"]})j"),
            R"({"Bounds":[5,6,7,8,9],"Contents":[[5,6,7,8,9]]})");
  // While they are processed, those of the screen still are, with their six entries.
  EXPECT_EQ(ResolveEntry(R"j({"Bounds":["$(stack.bounds#)","$(stack.bounds#)"]})j"),
            R"({"Bounds":[6,6]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, LayoutIsMeasuredAgainstTheElementsOwnBounds) {
  EXPECT_EQ(ResolveEntry(R"({"Bounds":[100,50,200,100],"Layout":[["50%","50%"],[1]]})"),
            R"({"Bounds":[100,50,200,100],"Layout":[[200,100],[101,null]]})");
  EXPECT_EQ(ResolveEntry(R"({"Layout":[["50%","50%"],[1]]})"),
            R"({"Layout":[[640,360],[1,null]]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, OriginLeftOfTheScreenCountsAsAbsent) {
  EXPECT_EQ(ResolveEntry(R"({"Bounds":[-10,20,200,100],"Contents":[)"
                         R"({"Bounds":[5,5,"50%",1]},{"Bounds":["5","5"]},{"Bounds":["50%"]}]})"),
            R"({"Bounds":[-10,20,200,100],"Contents":[)"
            R"({"Bounds":[5,25,100,1]},{"Bounds":[-5,25]},{"Bounds":[-10]}]})");
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
}

TEST_F(BoundsElement, WithoutAScreenSizeThereIsNoEnclosure) {
  resolver.SetScreenSize(0, 1280);
  EXPECT_EQ(ResolveEntry(R"({"Bounds":[5,"5","50%"],"Contents":[{"Bounds":[1,1]}]})"),
            R"({"Bounds":[5,4,0],"Contents":[{"Bounds":[6,5]}]})");
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
}

TEST_F(BoundsElement, SecondPassAddsTheOriginAgain) {
  EXPECT_EQ(ResolveEntry(R"({"Bounds":[100,50,200,100],"Contents":[{"Bounds":[5,"5"]}]})"),
            R"({"Bounds":[100,50,200,100],"Contents":[{"Bounds":[105,55]}]})");
  resolver.Process();
  EXPECT_EQ(resolver.Output(),
            R"({"Contents":[{"Bounds":[100,50,200,100],"Contents":[{"Bounds":[205,105]}]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(BoundsElement, FaultsAreReportedInTheOrderOfTheWalk) {
  EXPECT_EQ(ResolveEntry(R"({"Bounds":["a",0],"Layout":[["b"]],"Contents":[{"Bounds":5,)"
                         R"("Contents":[{"Bounds":["c"]}]},{"Bounds":["d"],"Layout":"50%"}]})"),
            R"({"Bounds":[0,0],"Contents":[{"Bounds":5,)"
            R"("Contents":[{"Bounds":[0]}]},{"Bounds":[0],"Layout":"50%"}],"Layout":[[0,null]]})");
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: a.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: b.\n"
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: c.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: d.\n");
}

TEST_F(BoundsElement, ExceptionLeavesTheFramesUntilTheNextInput) {
  Handle("big", "3000000000");
  resolver.Input(R"j({"Contents":[{"Bounds":[1,2],"Contents":[{"Bounds":[3,"$(big)",4]}]}]})j");
  EXPECT_THROW(resolver.Process(), Json::LogicError);
  ASSERT_EQ(stack.frames().size(), 3U);
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[1, 2]"));
  EXPECT_EQ(stack.frames()[2].bounds, Parse("[]"));
  EXPECT_EQ(ResolveEntry(R"({"Bounds":["50%"]})"), R"({"Bounds":[640]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

}  // namespace
