#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iterator>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateResolver/json_text.h"
#include "support/frame_handler.h"
#include "support/frames_handler.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int highestInt = std::numeric_limits<int>::max();
const char* const tooMany =
    "CTemplateResolver::loopElementIterate: too many elements for grid. Remainder discarded.\n";

/// Answers null and, while it is given bounds or contexts, puts one of each in force: those that
/// come next in turn.
class CMeddlingHandler : public ITokenHandler {
 public:
  explicit CMeddlingHandler(CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    if (!bounds.empty()) m_stack->BoundsSet(bounds[m_calls % bounds.size()]);
    if (!contexts.empty()) m_stack->ContextSet(contexts[m_calls % contexts.size()]);
    ++m_calls;
    return Json::Value();
  }

  std::vector<Json::Value> bounds;
  std::vector<Json::Value> contexts;

 private:
  CTemplateStack* m_stack;
  mutable std::size_t m_calls = 0;
};

/// Answers null and, in place of the frame on top, puts one whose bounds are no array.
class CReplacingHandler : public ITokenHandler {
 public:
  CReplacingHandler(CTemplateStack* stack, Json::Value bounds)
      : m_stack(stack), m_bounds(std::move(bounds)) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    m_stack->Pop();
    CTemplateStack::CStackFrame frame;
    frame.bounds = m_bounds;
    m_stack->Push(frame);
    return Json::Value();
  }

 private:
  CTemplateStack* m_stack;
  Json::Value m_bounds;
};

class LoopGrid : public ResolverTest {
 protected:
  LoopGrid() {
    tokens.Set("frame", &m_frame);
    tokens.Set("frames", &m_frames);
    tokens.Set("meddle", &meddler);
    tokens.Set("var", &m_variables);
    resolver.Input("{}");
  }

  /// The expansion, outside any container, of the loop description with `members`.
  std::string Expand(const std::string& members) {
    Json::Value loop = Parse("{" + members + "}");
    return jsoncpp_string::toString(resolver.processContentsLoopElement(loop, 0));
  }

  /// The frame bounds of the cells of `layout`, common size 30 by 20.
  std::string CellBounds(const std::string& layout) {
    Json::Value loop = Parse(R"j({"Start": 0, "CellWidth": 30, "CellHeight": 20,
                                 "Contents": ["$(frame.bounds)"]})j");
    loop["Layout"].append(Parse(layout));
    loop["Size"] = loop["Layout"][0].size();
    const Json::Value result = resolver.processContentsLoopElement(loop, 0);
    return jsoncpp_string::toString(result["Contents"]);
  }

  /// The step alone, on a frame of its own.
  Json::Value Iterate(const std::string& loop, const std::string& list,
                      const CTemplateResolver::CLoopRange& range, int container = 0) {
    Json::Value description = Parse(loop);
    stack.Push(CTemplateStack::CStackFrame());
    Json::Value result = resolver.loopElementIterate(description, Parse(list), range, container,
                                                     rightPointer, bottomPointer);
    stack.Pop();
    return result;
  }

  /// All that a grid gives: its text has the comments, and its frames are those left behind.
  struct COutcome {
    Json::Value value;
    std::string text;
    std::string errors;
    std::string exception;
    Json::Value frames;
    int right = 0;
    int bottom = 0;
  };

  static void ExpectSame(const COutcome& actual, const COutcome& expected) {
    EXPECT_EQ(actual.value, expected.value);
    EXPECT_EQ(actual.text, expected.text);
    EXPECT_EQ(actual.errors, expected.errors);
    EXPECT_EQ(actual.exception, expected.exception);
    EXPECT_EQ(actual.frames, expected.frames);
    EXPECT_EQ(actual.right, expected.right);
    EXPECT_EQ(actual.bottom, expected.bottom);
  }

  /// The step alone, below a frame with the bounds `enclosing`.
  COutcome Outcome(const Json::Value& loop, const Json::Value& list,
                   const CTemplateResolver::CLoopRange& range, const Json::Value& enclosing) {
    stack.Clear();
    stack.Push({Parse("{}"), enclosing});
    stack.Push();
    COutcome outcome;
    Json::Value description = loop;
    try {
      outcome.value =
          resolver.loopElementIterate(description, list, range, 0, &outcome.right, &outcome.bottom);
    } catch (const std::exception& error) {
      outcome.exception = error.what();
    }
    EXPECT_EQ(description, loop);
    outcome.text = jsoncpp_string::toString(outcome.value);
    outcome.errors = Errors();
    outcome.frames = m_frames.All();
    return outcome;
  }

  /// What `layout`, each cell of it filled, gives as it stands and gives with one surplus cell
  /// whose x is text: which makes every cell go through the steps that text needs.
  void ExpectFilledAsBesideText(const Json::Value& layout, const Json::Value& enclosing) {
    SCOPED_TRACE(layout.toStyledString() + "in " + enclosing.toStyledString());
    Json::Value loop = Parse(R"j({"CellWidth": 30, "CellHeight": 20, "Var": "i", "Count": "n",
        "Contents": ["$(frames)", "$(nobody)", {"Bounds": ["50%", 1, "50%", "-3"],
                                                "Contents": ["$(frames)"]}]})j");
    loop["Layout"].append(layout);
    const CTemplateResolver::CLoopRange range = {true, 3, static_cast<int>(layout.size()), 1};
    const COutcome plain = Outcome(loop, Json::Value(), range, enclosing);
    loop["Layout"][0].append(Parse(R"(["0", 0])"));
    ExpectSame(plain, Outcome(loop, Json::Value(), range, enclosing));
    if (plain.exception.empty()) {
      EXPECT_EQ(plain.value["Contents"].size(), layout.size() * 3);
    }
  }

  CMeddlingHandler meddler{&stack};
  int right = 0;
  int bottom = 0;
  int* rightPointer = &right;
  int* bottomPointer = &bottom;

 private:
  CFrameHandler m_frame{&stack};
  CFramesHandler m_frames{&stack};
  CContextHandler m_variables{&stack};
};

// --- Cells ---

TEST_F(LoopGrid, EachIndexFillsOneCell) {
  EXPECT_EQ(Expand(R"j("Start": 0, "Size": 3, "Var": "i", "Layout": [[[0,0],[10,0],[20,0]]],
                       "Contents": ["$(var.i)", "copy $(var.i)"])j"),
            R"({"Contents":[0,"copy 0",1,"copy 1",2,"copy 2"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, CellGivesPositionOrPositionAndSize) {
  const struct {
    const char* layout;
    const char* bounds;
  } cases[] = {
      {"[[1,2],[3,4]]", "[[1,2,30,20,null,null],[3,4,30,20,null,null]]"},
      {"[[1,2,3,4],[5,6]]", "[[1,2,3,4,null,null],[5,6,30,20,null,null]]"},
      {"[[1,2,3],[4,5,6,7,8]]", "[[1,2,30,20,null,null],[4,5,30,20,null,null]]"},
      {"[[7],[]]", "[[7,0,30,20,null,null],[0,0,30,20,null,null]]"},
      {"[[10.9,true,2.9,null]]", "[[10,1,2,0,null,null]]"},
      {"[[0,0,0,0]]", "[[0,0,0,0,null,null]]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.layout);
    EXPECT_EQ(CellBounds(c.layout), c.bounds);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, CellThatIsNoArrayKeepsThePreviousOne) {
  for (const char* cell : {"null", "5", R"("5")", "true", "{}", R"({"x":1})"}) {
    SCOPED_TRACE(cell);
    EXPECT_EQ(CellBounds("[[1,2,3,4]," + std::string(cell) + ",[5,6]," + cell + "]"),
              "[[1,2,3,4,null,null],[1,2,3,4,null,null],[5,6,30,20,null,null],"
              "[5,6,30,20,null,null]]");
    EXPECT_EQ(CellBounds("[" + std::string(cell) + ",[5,6]]"),
              "[[0,0,30,20,null,null],[5,6,30,20,null,null]]");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, NegativeNumbersOfACellAreNullInTheFrame) {
  EXPECT_EQ(CellBounds("[[-1,2,3,4],[1,-2,-3,-4],[-5,-6]]"),
            "[[null,2,3,4,null,null],[1,null,null,null,null,null],[null,null,30,20,null,null]]");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, CommonCellSizeIsReadAsInt) {
  Handle("size", R"({"w": 40, "h": 30.7})");
  const struct {
    const char* size;
    const char* bounds;
  } cases[] = {
      {R"("X": 0)", "[0,0,0,0,null,null]"},
      {R"("CellWidth": 30)", "[0,0,30,0,null,null]"},
      {R"("CellHeight": 20)", "[0,0,0,20,null,null]"},
      {R"("CellWidth": 30.9, "CellHeight": true)", "[0,0,30,1,null,null]"},
      {R"("CellWidth": null, "CellHeight": -5)", "[0,0,0,null,null,null]"},
      {R"j("CellWidth": "$(size.w)", "CellHeight": "$(size.h)")j", "[0,0,40,30,null,null]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.size);
    EXPECT_EQ(Expand(c.size + std::string(R"j(, "Start": 0, "Size": 1, "Layout": [[[0,0]]],
                                          "Contents": ["$(frame.bounds)"])j")),
              R"({"Contents":[)" + std::string(c.bounds) + "]}");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, CommonCellSizeThatIsNoNumberFailsBeforeAllChecks) {
  Handle("size", R"("40")");
  for (const char* size : {R"("30")", "[30]", "{}", "1e10", "2147483648", R"j("$(size)")j"}) {
    for (const char* member : {"CellWidth", "CellHeight"}) {
      SCOPED_TRACE(std::string(member) + " " + size);
      resolver.Input("{}");
      EXPECT_THROW(Expand(R"("Start": 0, "Size": 1, "Value": "v", ")" + std::string(member) +
                          R"(": )" + size),
                   Json::LogicError);
      EXPECT_EQ(stack.frames().size(), 2U);
      EXPECT_EQ(Errors(), "");
    }
  }
}

TEST_F(LoopGrid, CellsAreMeasuredAgainstTheEnclosingBounds) {
  Handle("x", "7");
  stack.BoundsSet(Parse("[10, 20, 200, 100]"));
  EXPECT_EQ(CellBounds(R"j([[1,2],["50%","-10%"],["$(x)","5",6,7],["x",0]])j"),
            "[[11,22,30,20,null,null],[110,10,30,20,null,null],[17,25,6,7,null,null],"
            "[10,20,30,20,null,null]]");
  EXPECT_EQ(Errors(), "CTokenResolver::stringToInt: cannot convert value to signed integer: x.\n");
}

TEST_F(LoopGrid, WithoutEnclosingBoundsTextLosesOne) {
  stack.Clear();
  EXPECT_EQ(CellBounds(R"([[1,2],["1","2"]])"), "[[1,2,30,20,null,null],[0,1,30,20,null,null]]");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, CellNumbersThatAreNoIntsFail) {
  for (const char* cell : {R"([0,0,"50%",1])", R"([0,0,1,"1"])", "[0,0,[1],1]", "[[1],0]",
                           "[0,0,1e10,1]", "[0,2147483648]"}) {
    SCOPED_TRACE(cell);
    resolver.Input("{}");
    EXPECT_THROW(CellBounds("[" + std::string(cell) + "]"), Json::LogicError);
    EXPECT_EQ(stack.frames().size(), 2U);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, ElementsOfACopyAreMeasuredAgainstTheCell) {
  EXPECT_EQ(Expand(R"("Start": 0, "Size": 2, "Layout": [[[100,50,40,20],[-100,0,40,20]]],
                      "Contents": [{"Bounds": [5,"50%","50%","50%"]}])"),
            R"({"Contents":[{"Bounds":[105,60,20,10]},{"Bounds":[5,10,20,10]}]})");
  EXPECT_EQ(Errors(), "");
}

// --- Cells of ints, which are read where they stand ---

TEST_F(LoopGrid, CellsOfIntsAreFilledAsBesideText) {
  const char* const layouts[] = {"[]",
                                 "[[1,2]]",
                                 "[[1,2],[3,4],[5,6]]",
                                 "[[1,2,3,4],[5,6,7],[8,9],[10,11,12,13,14]]",
                                 "[[-1,-2],[-3,4,-5,6],[7,-8,9,-10]]",
                                 "[[1,2,3,4],5,[5,6],null,\"x\",{},{\"a\":1},true]",
                                 "[null,[1,2]]",
                                 "[[1,2],[]]",
                                 "[[1],[2,3]]",
                                 "[[],[],[4,5]]",
                                 "[[1.0,2.0],[-3.0,4.0,5.0,6.0]]",
                                 "[[2147483647,2147483647],[-2147483648,-2147483648]]",
                                 "[[2147483647,0,2147483647,1],[0,2147483647,1,2147483647]]",
                                 "[[2147483647.0,-2147483648.0]]",
                                 "[[1,2],[2147483648,0]]",
                                 "[[1,2],[0,-2147483649]]",
                                 "[[0,4294967296],[1,2]]",
                                 "[[1,2,1e10,4],[5,6]]",
                                 "[[1,2,\"3\",4]]",
                                 "[[1.5,2],[-2.5,-3]]",
                                 "[[1,2],[3,4.5,5.5,6.5]]",
                                 "[[true,2]]",
                                 "[[1,false],[2,3]]",
                                 "[[null,3]]",
                                 "[ // first\n [1, /* y */ 2], /* second */ [3 // x\n, 4, 5, 6]]"};
  const char* const enclosings[] = {"[]",
                                    "[10,20,200,100]",
                                    "[10,20,200,100,5,6]",
                                    "[0,0,1280,720,null,null]",
                                    "[null,20,200,100]",
                                    "[10,null,200,100]",
                                    "[null,null,null,null,null,null]",
                                    "[-1,-7,200,100]",
                                    "[-2147483648,2147483647,1,1]",
                                    "[2147483647,2147483647]",
                                    "[10]",
                                    "[10.0,20.5,200,100]",
                                    "[\"10\",true,200,100]",
                                    "[4294967296,3000000000]"};
  for (const char* layout : layouts) {
    for (const char* enclosing : enclosings) {
      ExpectFilledAsBesideText(Parse(layout), Parse(enclosing));
    }
  }
}

TEST_F(LoopGrid, CellsOfUnsignedIntsAreFilledAsBesideText) {
  const Json::Value numbers[] = {0U,   7U,  2147483647U, 2147483648U, Json::Value(Json::Int64{5}),
                                 -0.0, 8.0, -9.0};
  for (const Json::Value& x : numbers) {
    for (const Json::Value& y : numbers) {
      Json::Value layout = Parse("[[1,2],[]]");
      layout[1].append(x);
      layout[1].append(y);
      ExpectFilledAsBesideText(layout, Parse("[]"));
      ExpectFilledAsBesideText(layout, Parse("[10,-1,200,100]"));
      layout[1].append(y);
      layout[1].append(x);
      ExpectFilledAsBesideText(layout, Parse("[null,2147483647]"));
    }
  }
}

/// A number that a cell may hold, an int mostly.
Json::Value RandomNumber(std::mt19937& random) {
  const auto small = static_cast<int>(random() % 100) - 20;
  switch (random() % 16) {
    case 0:
      return static_cast<std::int32_t>(random());
    case 1:
      return Json::UInt(random() % 100);
    case 2:
      return static_cast<double>(small);
    case 3:
      return random() % 2 == 0 ? highestInt : lowestInt;
    case 4:
      if (random() % 8 == 0) return Json::Value();
      if (random() % 8 == 0) return small + 0.5;
      [[fallthrough]];
    default:
      return small;
  }
}

Json::Value RandomNumbers(std::mt19937& random, std::size_t count) {
  Json::Value numbers(Json::arrayValue);
  for (; count > 0; --count) numbers.append(RandomNumber(random));
  return numbers;
}

TEST_F(LoopGrid, RandomCellsAreFilledAsBesideText) {
  std::mt19937 random(1);
  for (int i = 0; i < 2000 && !HasFailure(); ++i) {
    Json::Value layout(Json::arrayValue);
    for (auto n = random() % 6; n > 0; --n) {
      const auto shape = random() % 16;
      if (shape == 0) {
        layout.append(RandomNumber(random));
      } else {
        layout.append(RandomNumbers(random, shape == 1 ? random() % 2 : 2 + random() % 4));
      }
    }
    ExpectFilledAsBesideText(layout, RandomNumbers(random, random() % 3 == 0 ? 0 : random() % 7));
  }
}

// --- Reach ---

TEST_F(LoopGrid, ReachIsTheGreatestRightAndBottomEdge) {
  const char* const loop = R"j({"CellWidth": 100, "CellHeight": 50, "Layout": [
      [[0,0],[100,0],[200,0]], [[0,0],[100,0],[200,0],[0,50],[100,50],[200,50]]],
      "Contents": ["$(frame.bounds)"]})j";
  EXPECT_EQ(Iterate(loop, "[1,2,3,4,5]", {true, 0, 5, 1}),
            Parse(R"({"Contents": [[0,0,100,50,null,null], [100,0,100,50,null,null],
                     [200,0,100,50,null,null], [0,50,100,50,null,null],
                     [100,50,100,50,null,null]]})"));
  EXPECT_EQ(right, 300);
  EXPECT_EQ(bottom, 100);
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, ReachIsRaisedOnlyAndMayBeLeftOut) {
  const char* const loop = R"({"Layout": [[[10,20,30,40]]], "Contents": ["a"]})";
  right = 500;
  bottom = -9;
  EXPECT_EQ(Iterate(loop, "null", {true, 0, 1, 1}), Parse(R"({"Contents": ["a"]})"));
  EXPECT_EQ(right, 500);
  EXPECT_EQ(bottom, 60);
  rightPointer = nullptr;
  bottom = 0;
  EXPECT_EQ(Iterate(loop, "null", {true, 0, 1, 1}), Parse(R"({"Contents": ["a"]})"));
  EXPECT_EQ(bottom, 60);
  rightPointer = &right;
  right = 0;
  bottomPointer = nullptr;
  EXPECT_EQ(Iterate(loop, "null", {true, 0, 1, 1}), Parse(R"({"Contents": ["a"]})"));
  EXPECT_EQ(right, 40);
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, ReachOfSingleCells) {
  const struct {
    const char* cell;
    int right;
    int bottom;
  } cases[] = {
      {"[-10,-20,30,50]", 20, 30},
      {"[40,50,-30,-20]", 10, 30},
      {"[-10,-20,5,5]", 0, 0},
      {"[10,20]", 17, 28},
      {"[2147483647,2147483640,1,7]", 0, highestInt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.cell);
    right = bottom = 0;
    EXPECT_EQ(
        Iterate(R"({"CellWidth": 7, "CellHeight": 8, "Layout": [[)" + std::string(c.cell) + "]]}",
                "null", {true, 0, 1, 1}),
        Parse(R"({"Contents": []})"));
    EXPECT_EQ(right, c.right);
    EXPECT_EQ(bottom, c.bottom);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, SurplusIsDroppedAndNotReached) {
  EXPECT_EQ(Iterate(R"j({"Var": "i", "CellWidth": 1, "CellHeight": 1, "Layout": [[[0,0],[9,0]]],
                        "Contents": ["$(var.i)", "$(nobody)"]})j",
                    "null", {true, 5, 4, -1}),
            Parse(R"({"Contents": [5, null, 4, null]})"));
  EXPECT_EQ(right, 10);
  EXPECT_EQ(bottom, 1);
  EXPECT_EQ(Errors(),
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n"
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n" +
                std::string(tooMany));
}

// --- Choice of the layout ---

TEST_F(LoopGrid, LayoutThatFitsBestIsChosen) {
  const struct {
    int count;
    std::vector<int> cells;
    int chosen;
    int copies;
  } cases
      [] =
          {
              {5, {3, 6}, 1, 5},
              {3, {3, 3}, 0, 3},        // the first exact fit
              {3, {4, 1, 3, 3}, 2, 3},  // also after others
              {3, {2, 5}, 1, 3},        // a larger one before a smaller one
              {3, {5, 4, 4}, 1, 3},     // the least excess, the first of equals
              {3, {4, 5, 4}, 0, 3},
              {3, {1, 2, 2}, 1, 2},  // the largest smaller one, the first of equals
              {3, {2, 1}, 0, 2},
              {3, {5, 2}, 0, 3},  // a larger one shuts out the smaller ones after it
              {3, {1, 9, 2}, 0, 1},
              {2, {10, 1}, 0, 2},
              {2, {1, 10}, 0, 1},  // twice the cells and more are never chosen
              {2, {1, 4}, 0, 1},
              {2, {10, 1, 3}, 2, 2},
              {2, {9, 10}, 0, 2},  // unless they come first and nothing else fits
              {1, {2, 3}, 0, 1},
              {1, {0, 2}, 0, 0},
              {1, {0, 2, 1}, 2, 1},
              {3, {0, 0}, 0, 0},
              {3, {0, 1}, 1, 1},
          };
  for (const auto& c : cases) {
    Json::Value loop = Parse(R"j({"Contents": ["$(frame.bounds)"]})j");
    loop["Layout"] = Json::Value(Json::arrayValue);
    for (std::size_t i = 0; i < c.cells.size(); ++i) {
      Json::Value layout(Json::arrayValue);
      for (int k = 0; k < c.cells[i]; ++k) layout.append(Parse("[" + std::to_string(i) + ",0]"));
      loop["Layout"].append(layout);
    }
    SCOPED_TRACE(std::to_string(c.count) + " in " + jsoncpp_string::toString(loop["Layout"]));
    Json::Value expected = Parse(R"({"Contents": []})");
    for (int k = 0; k < c.copies; ++k) {
      expected["Contents"].append(Parse("[" + std::to_string(c.chosen) + ",0,0,0,null,null]"));
    }
    EXPECT_EQ(Iterate(jsoncpp_string::toString(loop), "null", {true, 0, c.count, 1}), expected);
    EXPECT_EQ(Errors(), c.copies < c.count ? tooMany : "");
  }
}

TEST_F(LoopGrid, LayoutWithoutCellsTakesNoCopies) {
  for (const char* layouts : {"[]", "[[]]", "[null]", "[5]", R"(["abc"])", "[{}]"}) {
    SCOPED_TRACE(layouts);
    EXPECT_EQ(
        Expand(R"("Start": 0, "Size": 2, "Contents": ["a"], "Layout": )" + std::string(layouts)),
        R"({"Contents":[]})");
    EXPECT_EQ(Errors(), tooMany);
  }
}

TEST_F(LoopGrid, OnlyTheChosenLayoutIsProcessedAndOnlyACopyOfIt) {
  const CTableHandler& n = Handle("n", R"({"a": 1, "b": 2})");
  const char* const text = R"j({"Start": 0, "Size": 1, "Contents": ["$(frame.bounds)", {"A": 1}],
      "Layout": [[["$(n.a)",0],["$(n.a)",1]], [["$(n.b)",2]]]})j";
  Json::Value loop = Parse(text);
  EXPECT_EQ(resolver.processContentsLoopElement(loop, 0),
            Parse(R"({"Contents": [[2,2,0,0,null,null], {"A": 1}]})"));
  EXPECT_EQ(loop, Parse(text));
  EXPECT_EQ(n.calls(), std::vector<std::string>{"GetValue n.b"});
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, LayoutIsProcessedForNoCopiesToo) {
  const CTableHandler& n = Handle("n", R"({"a": 1})");
  EXPECT_EQ(
      Iterate(R"j({"Layout": [[["$(n.a)", 0]]], "Contents": ["a"]})j", "null", {true, 0, 0, 1}),
      Parse(R"({"Contents": []})"));
  EXPECT_EQ(n.calls(), std::vector<std::string>{"GetValue n.a"});
  EXPECT_EQ(Errors(), "");
}

// --- Faults in the description ---

TEST_F(LoopGrid, LayoutMustBePresentAndAnArray) {
  EXPECT_EQ(Expand(R"("Start": 0, "Size": 2, "Contents": ["a"])"), "null");
  EXPECT_EQ(Errors(), "CTemplateResolver::loopElementIterate: Layout array must be present\n");
  for (const char* layout : {"null", "{}", "5", R"("[]")", "true"}) {
    SCOPED_TRACE(layout);
    EXPECT_EQ(
        Expand(R"("Start": 0, "Size": 2, "Contents": ["a"], "Layout": )" + std::string(layout)),
        "null");
    EXPECT_EQ(Errors(), "CTemplateResolver::loopElementIterate: Layout must be an array\n");
  }
}

TEST_F(LoopGrid, ValueNeedsAListWithEntries) {
  const CTableHandler& n = Handle("n", "1");
  for (const char* list : {"null", "{}", R"({"a": 1})", "5", R"("a,b")", "[]"}) {
    for (const char* layout : {"", R"j(, "Layout": [[["$(n)",0]]])j", R"(, "Layout": 5)"}) {
      SCOPED_TRACE(std::string(list) + layout);
      EXPECT_EQ(Iterate(R"j({"Value": "v", "Contents": ["$(n)"])j" + std::string(layout) + "}",
                        list, {true, 0, 1, 1}),
                Json::Value());
      EXPECT_EQ(Errors(),
                "CTemplateResolver::loopElementIterate: 'Value' variable requires 'List' value as "
                "array.\n");
    }
  }
  EXPECT_TRUE(n.calls().empty());
  EXPECT_EQ(Expand(R"("Start": 0, "Size": 1, "Value": 5, "Layout": [[[0,0]]])"),
            R"({"Contents":[]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, RangeWithoutStepsGivesEmptyContents) {
  EXPECT_EQ(Iterate(R"({"Layout": [[[5,5]]], "CellWidth": 9, "Contents": ["a"]})", "null",
                    {false, 0, 0, 0}),
            Parse(R"({"Contents": []})"));
  EXPECT_EQ(right, 0);
  EXPECT_EQ(Errors(), "");
}

// --- Variables ---

TEST_F(LoopGrid, VariablesAreBoundForEachCopy) {
  EXPECT_EQ(Expand(R"j("List": ["a", "b", {"c": 1}], "Start": 2, "Stop": 1, "Var": "i", "Key": "k",
                       "Value": "v", "Count": "n", "RowVar": "r", "ColVar": "c",
                       "Layout": [[[0,0],[1,0]]], "Contents": ["$(frame.context)"])j"),
            R"({"Contents":[{"i":2,"k":2,"n":0,"v":{"c":1}},{"i":1,"k":1,"n":1,"v":"b"}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, DescendingRangeFillsTheCellsInAscendingOrder) {
  EXPECT_EQ(Expand(R"j("List": "a,b,c,d", "Start": 3, "Size": -3, "Value": "v", "Count": "n",
                       "Layout": [[[10,0],[20,0],[30,0]]],
                       "Contents": ["$(var.v)$(var.n)", "$(frame.bounds)"])j"),
            R"({"Contents":["d0",[10,0,0,0,null,null],"c1",[20,0,0,0,null,null],)"
            R"("b2",[30,0,0,0,null,null]]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, UnnamedVariablesAreNotBound) {
  for (const char* names : {R"("X": 0)", R"("Var": "", "Key": "", "Value": "", "Count": "")",
                            R"("Var": 1, "Key": null, "Value": ["v"], "Count": true)",
                            R"("RowVar": "r", "ColVar": "c")"}) {
    SCOPED_TRACE(names);
    EXPECT_EQ(Expand(names + std::string(R"j(, "List": [7], "Layout": [[[0,0]]],
                                            "Contents": ["$(frame.context)"])j")),
              R"({"Contents":[{}]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, NamesAreTakenAsTheyStandAndTheLaterBindingWins) {
  const struct {
    const char* names;
    const char* context;
  } cases[] = {
      {R"j("Var": "$(n)", "Count": "c d")j", R"j({"$(n)":1,"c d":0})j"},
      {R"("Var": "x", "Count": "x")", R"({"x":0})"},
      {R"("Key": "x", "Value": "x")", R"({"x":"b"})"},
      {R"("Value": "x", "Count": "x")", R"({"x":0})"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.names);
    EXPECT_EQ(Expand(c.names + std::string(R"j(, "List": ["a", "b"], "Start": 1,
                                              "Layout": [[[0,0]]],
                                              "Contents": ["$(frame.context)"])j")),
              R"({"Contents":[)" + std::string(c.context) + "]}");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, IndexWrapsAt32Bits) {
  EXPECT_EQ(Iterate(R"j({"Var": "i", "Layout": [[[0,0],[0,0]]], "Contents": ["$(var.i)"]})j",
                    "null", {true, highestInt, 2, 1}),
            Parse(R"({"Contents": [2147483647, -2147483648]})"));
  EXPECT_EQ(Iterate(R"j({"Key": "i", "Layout": [[[0,0],[0,0]]], "Contents": ["$(var.i)"]})j",
                    "null", {true, lowestInt, 2, -1}),
            Parse(R"({"Contents": [-2147483648, 2147483647]})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, ListIsReadOnly) {
  std::mt19937 random(1);
  const char* const entries[] = {"1", R"("A")", R"({"a": [1]})", "[2, [3]]", "null", "/* 4 */ 4"};
  const char* const names[] = {
      R"("Value": "v")", R"("Value": "v", "Var": "i", "Key": "k", "Count": "n")",
      R"("Key": "v", "Value": "v")", R"("Value": "v", "Count": "v")", R"("Var": "i")"};
  for (int i = 0; i < 2000 && !HasFailure(); ++i) {
    Json::Value loop = Parse(
        "{" + std::string(names[random() % std::size(names)]) +
        R"j(, "Layout": [[[1,2],[3,4,5,6],[7,"50%"],[8,8]]], "Contents": ["$(var.v)", "$(var.i)",
               "$(frames)", {"Contents": ["<$(var.v)>", "$(nobody)"]}]})j");
    Json::Value list(Json::arrayValue);
    for (auto n = 1 + random() % 6; n > 0; --n) {
      list.append(Parse(entries[random() % std::size(entries)]));
    }
    loop["Start"] = static_cast<int>(random() % list.size());
    if (random() % 3 != 0) loop["Stop"] = static_cast<int>(random() % list.size());
    const CTemplateResolver::CLoopRange range = resolver.loopElementGetRange(loop, list);
    ASSERT_TRUE(range.valid);
    const Json::Value original = list;
    const COutcome alone = Outcome(loop, list, range, Parse("[10,20,200,100]"));
    EXPECT_EQ(list, original);
    EXPECT_EQ(jsoncpp_string::toString(list), jsoncpp_string::toString(original));

    loop["List"] = list;
    stack.Clear();
    stack.Push({Parse("{}"), Parse("[10,20,200,100]")});
    const Json::Value whole = resolver.processContentsLoopElement(loop, 0);
    SCOPED_TRACE(loop.toStyledString());
    EXPECT_EQ(whole, alone.value);
    EXPECT_EQ(jsoncpp_string::toString(whole), alone.text);
    EXPECT_EQ(Errors(), alone.errors);
    EXPECT_EQ(loop["List"], original);
  }
}

// --- Contents ---

TEST_F(LoopGrid, ContentsAreCopiedAndProcessed) {
  const CTableHandler& n = Handle("n", "7");
  EXPECT_EQ(Expand(R"j("Start": 0, "Size": 2, "Layout": [[[0,0],[1,0]]], "Var": "i", "Contents": [
                       "$(n)", 5, null, ["$(n)"], {"Contents": ["$(n) $(var.i)"], "A": "$(n)"}])j"),
            R"j({"Contents":[7,5,null,["$(n)"],{"A":"$(n)","Contents":["7 0"]},)j"
            R"j(7,5,null,["$(n)"],{"A":"$(n)","Contents":["7 1"]}]})j");
  EXPECT_EQ(n.calls(), std::vector<std::string>(4, "GetValue n"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, FileNamesAreLowercasedInsideElementsOnly) {
  Handle("n", R"("B.PNG")");
  EXPECT_EQ(Resolve(R"j({"Contents": ["A.PNG", {"Loop": {"Start": 0, "Size": 1, "Layout": [[[0,0]]],
                        "Contents": ["A.PNG", "$(n)", {"Contents": ["A.PNG", "$(n)"]}]}}]})j"),
            R"({"Contents":["a.png",{"Contents":["A.PNG","B.PNG",)"
            R"({"Contents":["a.png","b.png"]}]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, ContentsThatAreNoArrayAreEmpty) {
  for (const char* contents :
       {R"("X": 0)", R"("Contents": null)", R"("Contents": "a")", R"("Contents": {"a": "b"})",
        R"("Contents": 5)", R"("Contents": [])"}) {
    SCOPED_TRACE(contents);
    EXPECT_EQ(Expand(R"("Start": 0, "Size": 1, "Layout": [[[0,0]]], )" + std::string(contents)),
              R"({"Contents":[]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, CopiesAreMembersOfTheGivenContainer) {
  const char* const loop = R"({"Layout": [[[0,0]]], "Contents": [{"RenderType": 3}]})";
  EXPECT_EQ(Iterate(loop, "null", {true, 0, 1, 1}, 8),
            Parse(R"({"Contents": [{"RenderType": 3, "Container": 8}]})"));
  EXPECT_EQ(Iterate(loop, "null", {true, 0, 1, 1}, 0),
            Parse(R"({"Contents": [{"RenderType": 3}]})"));
  EXPECT_EQ(Errors(), "");
}

// --- Order, stack, exceptions ---

TEST_F(LoopGrid, MembersAreReadInOrder) {
  const CTableHandler& n = Handle("n", R"({"list": [4], "zero": 0, "one": 1, "w": 3, "h": 4})");
  EXPECT_EQ(Expand(R"j("Contents": ["$(n.zero)"], "Layout": [[["$(n.one)", "$(n.zero)"]]],
                       "CellHeight": "$(n.h)", "CellWidth": "$(n.w)", "List": "$(n.list)",
                       "Start": "$(n.zero)", "Size": "$(n.one)")j"),
            R"({"Contents":[0]})");
  EXPECT_EQ(n.calls(),
            (std::vector<std::string>{"GetValue n.list", "GetValue n.zero", "GetValue n.one",
                                      "GetValue n.w", "GetValue n.h", "GetValue n.one",
                                      "GetValue n.zero", "GetValue n.zero"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, EmptyStackIsReportedForEachCopy) {
  EXPECT_EQ(Expand(R"j("Start": 0, "Size": 2, "CellWidth": "$(frame.clear)", "Var": "i",
                       "Layout": [[[0,0],[1,0]]], "Contents": ["$(nobody)"])j"),
            R"({"Contents":[null,null]})");
  EXPECT_EQ(Errors(),
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n"
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n"
            "CTemplateStack::Pop: preconditions.\n");
}

TEST_F(LoopGrid, EmptyStackIsReportedWithoutNamesAndContentsToo) {
  EXPECT_EQ(Expand(R"j("Start": 0, "Size": 2, "CellWidth": "$(frame.clear)",
                       "Layout": [[[0,0],[1,0]]])j"),
            R"({"Contents":[]})");
  EXPECT_EQ(Errors(),
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTemplateStack::Pop: preconditions.\n");
}

TEST_F(LoopGrid, StepLeavesTheLastCellInItsFrame) {
  const struct {
    const char* members;
    const char* context;
    const char* bounds;
    const char* errors;
  } cases[] = {
      {R"("Var": "i", "Count": "n", "Layout": [[[1,2],[3,4],[5,6],[7,8],[9,10],[11,-12]]])",
       R"({"i": 8, "n": 5})", "[11, null, 30, 0, null, null]", ""},
      {R"("Var": "i", "Count": "n", "Layout": [[[1,2],[3,4]]])", R"({"i": 4, "n": 1})",
       "[3, 4, 30, 0, null, null]", tooMany},
      {R"("Layout": [[[1,2],[3,4]]])", "{}", "[3, 4, 30, 0, null, null]", tooMany},
      {R"("Var": "i", "Layout": [[]])", R"({"before": 1})", "[-1, -1]", tooMany},
      {R"("Var": "i", "Layout": 5)", R"({"before": 1})", "[-1, -1]",
       "CTemplateResolver::loopElementIterate: Layout must be an array\n"},
  };
  for (const auto& c : cases) {
    for (const char* contents : {"", R"(, "Contents": ["x", {"Context": {"a": 1}}])"}) {
      SCOPED_TRACE(c.members + std::string(contents));
      Json::Value loop = Parse(R"({"CellWidth": 30, )" + std::string(c.members) + contents + "}");
      stack.Clear();
      stack.Push({Parse(R"({"outer": 1})"), Parse("[]")});
      stack.Push({Parse(R"({"before": 1})"), Parse("[-1, -1]")});
      resolver.loopElementIterate(loop, Json::Value(), {true, 3, 6, 1}, 0, nullptr, nullptr);
      ASSERT_EQ(stack.frames().size(), 2U);
      EXPECT_EQ(stack.frames()[0].context, Parse(R"({"outer": 1})"));
      EXPECT_EQ(stack.frames()[0].bounds, Parse("[]"));
      EXPECT_EQ(stack.frames()[1].context, Parse(c.context));
      EXPECT_EQ(stack.frames()[1].bounds, Parse(c.bounds));
      EXPECT_EQ(Errors(), c.errors);
    }
  }
}

TEST_F(LoopGrid, WhatAHandlerDoesToTheFrameStaysUntilTheNextCell) {
  meddler.contexts = {Parse(R"({"host": 1})")};
  meddler.bounds = {Parse("[8, 9]")};
  EXPECT_EQ(Expand(R"j("Start": 0, "Size": 2, "Var": "i", "Layout": [[[0,0],[1,0]]], "Contents": [
                       "$(frame.context)", "$(meddle)", "$(frame.context)", "$(frame.bounds)"])j"),
            R"({"Contents":[{"i":0},null,{"host":1},[8,9],{"i":1},null,{"host":1},[8,9]]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, WhatAHandlerDoesToTheFrameLastsForOneCell) {
  const Json::Value loop = Parse(R"j({"CellWidth": 30, "CellHeight": 20, "Var": "i", "Value": "v",
      "Count": "n", "Layout": [[[1,2],[-3,4,5,6],[7,8,-9,10],[11,12],5,[13,14,15,16]]],
      "Contents": ["$(frames)", "$(meddle)"]})j");
  const Json::Value list = Parse(R"(["a", [1], {"b": 2}, null, 5, "f"])");
  const CTemplateResolver::CLoopRange range = {true, 0, 6, 1};
  const COutcome undisturbed = Outcome(loop, list, range, Parse("[10,-1,200,100]"));
  ASSERT_EQ(undisturbed.value["Contents"].size(), 12U);
  EXPECT_EQ(undisturbed.value["Contents"][2][1], Parse(R"({"bounds": [7, 4, 5, 6, null, null],
                                                           "context": {"i": 1, "n": 1, "v": [1]}})"));
  std::vector<Json::Value> bounds = {
      Parse("[]"),
      Parse("[1, 2, 3]"),
      Parse("[91, 92, 93, 94, 95, 96]"),
      Parse(R"(["a", [1], {"b": 2}, null, true, 2.5])"),
      Parse("[1, 2, 3, 4, 5, 6, 7]"),
      Parse("[ // first\n 1, /* second */ 2, 3 // third\n, 4, 5, 6 /* last */ ]"),
      Parse("/* all */ [1, 2, 3, 4, 5, 6] // behind"),
      Json::Value(Json::arrayValue),
      Parse("[1, 2, 3, 4, 5, 6]")};
  bounds[7][5] = 6;  // the first five are missing
  bounds[8].setComment(std::string("// after"), Json::commentAfter);
  const std::vector<Json::Value> contexts = {Parse("{}"), Parse(R"({"i": 9, "v": 9, "n": 9})"),
                                             Parse(R"({"/* x */": 1, "j": [2]})"),
                                             Parse(R"(/* c */ {"i": /* d */ 3})")};
  const auto expectUndisturbed = [&] {
    const COutcome outcome = Outcome(loop, list, range, Parse("[10,-1,200,100]"));
    EXPECT_EQ(outcome.value, undisturbed.value);
    EXPECT_EQ(outcome.text, undisturbed.text);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.right, undisturbed.right);
    EXPECT_EQ(outcome.bottom, undisturbed.bottom);
    EXPECT_EQ(outcome.frames == undisturbed.frames,
              meddler.bounds.empty() && meddler.contexts.empty());
  };
  for (const Json::Value& each : bounds) {
    SCOPED_TRACE(each.toStyledString());
    meddler.bounds = {each};
    expectUndisturbed();
  }
  meddler.bounds.clear();
  for (const Json::Value& each : contexts) {
    SCOPED_TRACE(each.toStyledString());
    meddler.contexts = {each};
    expectUndisturbed();
  }
  meddler.contexts.clear();
  expectUndisturbed();
  std::mt19937 random(1);
  for (int i = 0; i < 2000 && !HasFailure(); ++i) {
    meddler.bounds.clear();
    meddler.contexts.clear();
    for (int k = 0; k < 7; ++k) {
      meddler.bounds.push_back(bounds[random() % bounds.size()]);
      meddler.contexts.push_back(contexts[random() % contexts.size()]);
    }
    expectUndisturbed();
  }
}

TEST_F(LoopGrid, ExceptionOfACopyLeavesItsFrames) {
  try {
    Expand(R"j("Start": 0, "Size": 3, "Var": "i", "Layout": [[[0,0],[10,20,30,40],[2,0]]],
               "Contents": [{"Contents": ["$(var.i/var.i)"]}, "$(var.i/0)"])j");
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
  }
  ASSERT_EQ(stack.frames().size(), 3U);
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"i": 0})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[0, 0, 0, 0, null, null]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, ExceptionOfACopyLeavesItsCellAndTheReach) {
  const CThrowingHandler handler;
  tokens.Set("host", &handler);
  Json::Value loop = Parse(R"j({"Var": "i", "Layout": [[[1,2,30,40],[5,6,70,80],[9,9,99,99]]],
                               "Contents": ["$(host)"]})j");
  resolver.Input("{}");
  stack.Push();
  EXPECT_THROW(
      resolver.loopElementIterate(loop, Json::Value(), {true, 4, 3, 1}, 0, &right, &bottom),
      CHostError);
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"i": 4})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[1, 2, 30, 40, null, null]"));
  EXPECT_EQ(right, 31);
  EXPECT_EQ(bottom, 42);
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, LoopsNest) {
  EXPECT_EQ(
      Expand(R"j("Start": 1, "Size": 2, "Var": "i", "CellWidth": 100, "CellHeight": 50,
      "Layout": [[[0,0],[100,0]]], "Contents": [{"Loop": {
        "Start": 0, "Size": "$(var.i)", "Var": "j", "CellWidth": 10, "CellHeight": 10,
        "Layout": [[[5,5]], [[0,"50%"],["50%",0]]],
        "Contents": ["$(var.i).$(var.j)", "$(frame.bounds)"]}}, "$(var.j)"])j"),
      R"({"Contents":[{"Contents":["1.0",[5,5,10,10,null,null]]},null,)"
      R"({"Contents":["2.0",[100,25,10,10,null,null],"2.1",[150,0,10,10,null,null]]},null]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopGrid, FrameWithBoundsThatAreNoArrayGetsThoseOfTheNextCell) {
  for (const char* bounds : {R"({"a":1,"b":2,"c":3,"d":4,"e":5,"f":6})", "null", "{}", "5"}) {
    SCOPED_TRACE(bounds);
    const CReplacingHandler replace(&stack, Parse(bounds));
    tokens.Set("replace", &replace);
    EXPECT_EQ(Resolve(R"j({"Contents":[{"Loop":{"Start":0,"Size":3,"CellWidth":7,"CellHeight":8,)j"
                      R"j("Layout":[[[1,2],[3,4],[5,6]]],)j"
                      R"j("Contents":[{"Bounds":[0,0,"100%","100%"]},"$(replace)"]}}]})j"),
              R"({"Contents":[{"Contents":[{"Bounds":[1,2,7,8]},null,{"Bounds":[3,4,7,8]},null,)"
              R"({"Bounds":[5,6,7,8]},null]}]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopGrid, IndexThatRepeatsBindsItsEntryEachTime) {
  resolver.Input("{}");
  stack.Push();
  Json::Value loop = Parse(R"j({"Value": "entry", "Layout": [[[0, 0], [1, 1], [2, 2]]],)j"
                           R"j("Contents": ["$(var.entry)"]})j");
  const Json::Value list = Parse(R"(["a", "b"])");
  CTemplateResolver::CLoopRange range;
  range.valid = true;
  range.start = 1;
  range.count = 3;  // and a step of 0
  EXPECT_EQ(resolver.loopElementIterate(loop, list, range, 0, nullptr, nullptr),
            Parse(R"({"Contents": ["b", "b", "b"]})"));
  EXPECT_EQ(Errors(), "");
}

/// Pushes a frame with an odd context, and answers 5.
class COddFrameHandler : public ITokenHandler {
 public:
  COddFrameHandler(CTemplateStack* stack, Json::Value context)
      : m_stack(stack), m_context(std::move(context)) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    m_stack->Push({m_context, Json::Value(Json::arrayValue)});
    return 5;
  }

 private:
  CTemplateStack* m_stack;
  Json::Value m_context;
};

TEST_F(LoopGrid, FrameThatAHandlerPushedGetsTheNextContext) {
  for (const char* context : {"[1]", "null", R"("text")", "5", R"({"i": "odd"})", "{}"}) {
    for (const char* variable : {R"("Var":"i",)", ""}) {
      SCOPED_TRACE(std::string(context) + variable);
      const COddFrameHandler handler(&stack, Parse(context));
      tokens.Set("odd", &handler);
      EXPECT_EQ(Resolve(std::string(R"j({"Contents":[{"Loop":{"Start":0,"Size":3,)j") + variable +
                        R"j("Layout":[[[1,2],[3,4],[5,6]]],"Contents":["$(odd)"]}}]})j"),
                R"({"Contents":[{"Contents":[5,5,5]}]})");
      EXPECT_EQ(Errors(), "");
    }
  }
}

}  // namespace
