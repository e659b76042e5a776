#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateResolver/json_text.h"
#include "exceptions/thrown.h"
#include "support/frame_handler.h"
#include "support/frames_handler.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

/// Answers null and puts the context {"host": 1} in force.
class CContextSettingHandler : public ITokenHandler {
 public:
  explicit CContextSettingHandler(CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    m_stack->ContextSet(Parse(R"({"host": 1})"));
    return Json::Value();
  }

 private:
  CTemplateStack* m_stack;
};

class LoopElement : public ResolverTest {
 protected:
  LoopElement() {
    tokens.Set("frame", &m_frame);
    tokens.Set("var", &m_variables);
    resolver.Input("{}");
  }

  /// The expansion of the loop description with `members`, in the container with the id
  /// `container`.
  std::string Expand(const std::string& members, int container = 0) {
    Json::Value loop = Parse("{" + members + "}");
    return jsoncpp_string::toString(resolver.processContentsLoopElement(loop, container));
  }

  /// "Contents" of a page that consists of one loop with `members`; one more pass.
  std::string Pass(const std::string& members) {
    const Json::Value page = Parse(Resolve(R"({"Contents":[{"Loop":{)" + members + "}}]}"));
    return jsoncpp_string::toString(page["Contents"][0]["Contents"]);
  }

 private:
  CFrameHandler m_frame{&stack};
  CContextHandler m_variables{&stack};
};

// --- The element and its loop ---

TEST_F(LoopElement, TakesThePlaceOfTheWholeElement) {
  EXPECT_EQ(Resolve(R"j({"Contents": ["a", {"Name": "n", "RenderType": 3, "Contents": ["x"],
                        "Loop": {"Start": 4, "Size": 2, "Var": "i", "Layout": [[[0,0],[1,0]]],
                                 "Contents": ["$(var.i)"]}}, "b"]})j"),
            R"({"Contents":["a",{"Contents":[4,5]},"b"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, ContextAndBoundsOfTheElementAreInForce) {
  EXPECT_EQ(
      Resolve(R"j({"Contents": [{"Context": {"list": "a,b"}, "Bounds": [100, 50, 200, 100],
                        "Loop": {"List": "$(var.list)", "Value": "v", "Layout": [[[1,2],["50%",0]]],
                                 "Contents": ["$(var.v)", "$(frame.bounds)"]}}]})j"),
      R"({"Contents":[{"Contents":["a",[101,52,0,0,null,null],"b",[200,50,0,0,null,null]]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, RotatesWhenItHasBoundsOfAnyKind) {
  for (const char* bounds : {"[0,0,1,1]", "[]", "null", "5", R"("x")", "{}", R"({"x":1})"}) {
    SCOPED_TRACE(bounds);
    EXPECT_EQ(Expand(R"j("List": [7, 8], "Value": "v", "Contents": ["$(var.v)"], "Bounds": )j" +
                     std::string(bounds)),
              R"({"Contents":[7]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, ListMayBeTextOrToken) {
  Handle("n", R"({"array": ["a", "b"], "text": "c,d", "object": {"e": "f"}, "number": 7})");
  const struct {
    const char* list;
    const char* contents;
  } cases[] = {
      {R"(["a", {"b": 1}])", R"(["a",{"b":1}])"},
      {R"("a,b")", R"(["a","b"])"},
      {R"(" a,")", R"([" a",""])"},
      {R"j("$(n.array)")j", R"(["a","b"])"},
      {R"j("$(n.text)")j", R"(["c","d"])"},
      {R"j("x,$(n.text)")j", R"(["x","c","d"])"},
      {R"j(["$(n.text)"])j", R"j(["$(n.text)"])j"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.list);
    EXPECT_EQ(Expand(R"j("Value": "v", "Layout": [[[0,0],[0,0],[0,0]], [[0,0],[0,0]], [[0,0]]],
                         "Contents": ["$(var.v)"], "List": )j" +
                     std::string(c.list)),
              R"({"Contents":)" + std::string(c.contents) + "}");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, ListOfAnotherKindIsNoList) {
  Handle("n", R"({"object": {"e": "f"}, "number": 7})");
  for (const char* list : {"null", "{}", "5", "true", R"j("$(n.object)")j", R"j("$(n.number)")j"}) {
    SCOPED_TRACE(list);
    const std::string members = R"("Value": "v", "List": )" + std::string(list);
    EXPECT_EQ(Expand(members), "null");
    EXPECT_EQ(Errors(),
              "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n");
    EXPECT_EQ(Expand(members + R"j(, "Start": 0, "Size": 1, "Bounds": [],
                                   "Contents": ["$(frame.context)"])j"),
              R"({"Contents":[{"v":null}]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, DescriptionMustBeAnObject) {
  for (const char* loop : {"5", R"("x")", "[]", "true"}) {
    SCOPED_TRACE(loop);
    EXPECT_THROW(Resolve(R"({"Contents": [{"Loop": )" + std::string(loop) + "}]}"),
                 Json::LogicError);
    EXPECT_EQ(stack.frames().size(), 3U);
    EXPECT_EQ(Errors(), "");
  }
  for (const char* loop : {"{}", "null"}) {
    SCOPED_TRACE(loop);
    EXPECT_EQ(Resolve(R"({"Contents": [{"Loop": )" + std::string(loop) + "}]}"),
              R"({"Contents":[null]})");
    EXPECT_EQ(Errors(),
              "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n");
  }
}

// --- Rotating loops ---

TEST_F(LoopElement, RotatesFromPassToPass) {
  const char* const members = R"j("List": ["a", "b", "c"], "Bounds": [0,0,1,1], "Var": "i",
                                  "Value": "v", "Contents": ["$(var.i)$(var.v)"])j";
  EXPECT_EQ(Expand(members), R"({"Contents":["0a"]})");  // before the first pass
  for (const char* shown : {"1b", "2c", "0a", "1b", "2c", "0a"}) {
    EXPECT_EQ(Pass(members), R"([")" + std::string(shown) + R"("])");
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, RotationCountsPassesOfAllTemplates) {
  const char* const members =
      R"j("Start": 10, "Size": 4, "Bounds": [], "Var": "i", "Contents": ["$(var.i)"])j";
  EXPECT_EQ(Pass(members), "[11]");
  EXPECT_EQ(Resolve(R"({"Contents": []})"), R"({"Contents":[]})");
  EXPECT_EQ(Pass(members), "[13]");
  resolver.Process();  // the loop has been replaced by its copies
  EXPECT_EQ(resolver.Output(), R"({"Contents":[{"Contents":[13]}]})");
  EXPECT_EQ(Pass(members), "[11]");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, DescendingRotationShowsTheAscendingIndicesBackwards) {
  const struct {
    const char* range;
    std::vector<const char*> shown;  // in the passes 1, 2, ...
  } cases[] = {
      {R"("List": "a,b,c,d,e", "Start": 2, "Size": -2)", {"2c", "3d", "2c"}},
      {R"("List": "a,b,c,d,e", "Start": 3, "Stop": 1)", {"4e", "3d", "5", "4e"}},
      {R"("List": "a,b,c", "Start": 2, "Size": -9)", {"3", "2c", "4"}},
      {R"("List": "a,b,c", "Size": -1)", {"0a", "0a"}},
      {R"("Start": 8, "Stop": 6)", {"9", "8", "10"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.range);
    CTemplateResolver fresh(&tokens, &stack);
    for (const char* shown : c.shown) {
      fresh.Input(R"j({"Contents": [{"Loop": {"Bounds": [], "Var": "i", "Value": "v",
                      "Contents": ["$(var.i)$(var.v)"], )j" +
                  std::string(c.range) + "}}]}");
      fresh.Process();
      EXPECT_EQ(fresh.Output(), R"({"Contents":[{"Contents":[")" + std::string(shown) + R"("]}]})");
    }
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, RangeThatIsNotValidShowsIndexZero) {
  const struct {
    const char* range;
    const char* context;
    const char* errors;
  } cases[] = {
      {R"("List": [])", R"({"i":0,"v":null})", ""},
      {R"("List": "")", R"({"i":0,"v":null})", ""},
      {R"("List": ["a"], "Size": 0)", R"({"i":0,"v":"a"})", ""},
      {R"("List": ["a"], "Start": 5)", R"({"i":0,"v":"a"})",
       "CTemplateResolver::processContentsLoop: 'Start' value: 5 must be within range of 'List': "
       "0..0.\n"},
      {R"("Start": 5)", R"({"i":0,"v":null})",
       "CTemplateResolver::loopElementGetRange: Unable to determine stop value.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.range);
    EXPECT_EQ(Pass(c.range + std::string(R"j(, "Bounds": [], "Var": "i", "Value": "v",
                                              "Contents": ["$(frame.context)"])j")),
              "[" + std::string(c.context) + "]");
    EXPECT_EQ(Errors(), c.errors);
  }
}

TEST_F(LoopElement, HugeRotationIsNeitherBuiltNorOverflown) {
  const struct {
    const char* range;
    const char* shown;
  } cases[] = {
      {R"("Start": 0, "Size": 2147483647)", "[1]"},
      {R"("Start": 2147483647, "Size": 2147483647)", "[-2147483648]"},
      {R"("Start": 2147483647, "Size": -2147483647)", "[-4]"},
      {R"("Start": -2147483648, "Size": 1)", "[-2147483647]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.range);
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input(
        R"j({"Contents": [{"Loop": {"Bounds": [], "Var": "i", "Contents": ["$(var.i)"], )j" +
        std::string(c.range) + "}}]}");
    fresh.Process();
    EXPECT_EQ(fresh.Output(), R"({"Contents":[{"Contents":)" + std::string(c.shown) + "}]}");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, RotationBindsVarKeyAndValueOnly) {
  Handle("n", R"("x")");
  const struct {
    const char* names;
    const char* context;
  } cases[] = {
      {R"("Var": "i", "Key": "k", "Value": "v")", R"({"i":1,"k":1,"v":"b"})"},
      {R"("Var": "i", "Key": "k")", R"({"i":1,"k":1})"},
      {R"("Count": "n", "RowVar": "r", "ColVar": "c")", "{}"},
      {R"("Var": "", "Key": 5, "Value": ["v"])", "{}"},
      {R"j("Var": "$(n)")j", R"j({"$(n)":1})j"},
      {R"("Key": "x", "Value": "x", "Var": "x")", R"({"x":"b"})"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.names);
    EXPECT_EQ(Expand(c.names + std::string(R"j(, "List": ["a", "b"], "Start": 1, "Bounds": [],
                                              "Contents": ["$(frame.context)"])j")),
              R"({"Contents":[)" + std::string(c.context) + "]}");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, RotationLeavesItsDescriptionUnchanged) {
  Handle("n", R"("A.PNG")");
  const char* const text = R"j({"List": "a,b", "Bounds": [["$(n)",1]], "Var": "i", "Contents": [
      "$(n)", "B.PNG", 5, {"Contents": ["$(n) $(var.i)", "B.PNG"]}]})j";
  Json::Value loop = Parse(text);
  EXPECT_EQ(resolver.processContentsLoopElement(loop, 0),
            Parse(R"({"Contents": ["A.PNG", "B.PNG", 5, {"Contents": ["A.PNG 0", "b.png"]}]})"));
  EXPECT_EQ(loop, Parse(text));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: A.PNG.\n");
}

TEST_F(LoopElement, RotationWithoutContentsArrayHasEmptyContents) {
  for (const char* contents : {R"("X": 0)", R"("Contents": null)", R"("Contents": "a")",
                               R"("Contents": {"a": "b"})", R"("Contents": [])"}) {
    SCOPED_TRACE(contents);
    EXPECT_EQ(Expand(R"("List": [1], "Bounds": [], )" + std::string(contents)),
              R"({"Contents":[]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, BoundsOfARotationPlaceNothingInside) {
  stack.BoundsSet(Parse("[10, 20, 200, 100]"));
  EXPECT_EQ(Expand(R"j("List": [1], "Bounds": [50, 60, 70, 80],
                       "Contents": ["$(frame.bounds)", {"Bounds": [1, "50%", "50%", 4]}])j"),
            R"({"Contents":[[],{"Bounds":[11,70,100,4]}]})");
  EXPECT_EQ(Errors(), "");
}

// --- Containers ---

TEST_F(LoopElement, OutsideContainersNothingIsWrappedOrNumbered) {
  for (const int container : {0, -1, -2147483647}) {
    SCOPED_TRACE(container);
    EXPECT_EQ(Expand(R"("List": [1], "Bounds": [1,2,3,4], "Contents": ["a"])", container),
              R"({"Contents":["a"]})");
    EXPECT_EQ(Expand(R"("List": [1], "Layout": [[[0,0]]], "Contents": ["a"])", container),
              R"({"Contents":["a"]})");
    EXPECT_EQ(Expand(R"("List": [])", container), "null");
  }
  EXPECT_EQ(resolver.nextContainerID(), 1);
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, RotationInAContainerIsWrapped) {
  stack.BoundsSet(Parse("[10, 20, 200, 100]"));
  Json::Value loop = Parse(R"({"List": [1], "Bounds": [1, -2, 3, -4, 5, 6, 7], "Contents": []})");
  EXPECT_EQ(resolver.processContentsLoopElement(loop, 7), Parse(R"({
      "Contents": [], "Bounds": [11, 18, 3, -4, 0, 0], "RenderType": 1024,
      "Frame": {"Id": 1, "Container": 7, "Align": "None", "Flow": "None", "Padding": 0}})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, GridInAContainerIsWrapped) {
  stack.BoundsSet(Parse("[10, 20, 200, 100]"));
  Json::Value loop = Parse(R"({"List": [1, 2], "Layout": [[[0,5,30,40],[100,0,50,10]]],
                               "Contents": []})");
  EXPECT_EQ(resolver.processContentsLoopElement(loop, 7), Parse(R"({
      "Contents": [], "Bounds": [10, 20, 150, 45, 0, 0], "RenderType": 1024,
      "Frame": {"Id": 1, "Container": 7, "Align": "None", "Flow": "None", "Padding": 0}})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, GridWithoutCopiesIsAContainerWithoutContents) {
  const struct {
    const char* members;
    const char* errors;
  } cases[] = {
      {R"("List": [])", ""},
      {R"("List": [1], "Start": 1, "Contents": ["a"], "Layout": [[[0,0]]])", ""},
      {R"("Size": 3)",
       "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n"},
      {R"("List": [1], "Contents": ["a"])",
       "CTemplateResolver::loopElementIterate: Layout array must be present\n"},
      {R"("List": [1], "Layout": 5)",
       "CTemplateResolver::loopElementIterate: Layout must be an array\n"},
      {R"("Start": 0, "Size": 1, "Value": "v", "Layout": [[[0,0]]])",
       "CTemplateResolver::loopElementIterate: 'Value' variable requires 'List' value as array.\n"},
  };
  stack.BoundsSet(Parse("[10, 20, 200, 100]"));
  int id = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.members);
    ++id;
    EXPECT_EQ(Expand(c.members, 7),
              R"({"Bounds":[10,20,-10,-20,0,0],"Frame":{"Align":"None","Container":7,)"
              R"("Flow":"None","Id":)" +
                  std::to_string(id) + R"(,"Padding":0},"RenderType":1024})");
    EXPECT_EQ(Errors(), c.errors);
    EXPECT_EQ(Expand(c.members, 0), "null");
    EXPECT_EQ(Errors(), c.errors);
  }
}

TEST_F(LoopElement, OriginThatIsMissingOrNoIntIsMinusOne) {
  const struct {
    const char* enclosing;
    const char* grid;
    const char* rotation;
  } cases[] = {
      {"[]", "[-1,-1,6,7,0,0]", "[9,19,30,40,0,0]"},
      {"[null, 50, 1, 1]", "[-1,50,6,6,0,0]", "[9,70,30,40,0,0]"},
      {"[10.5, \"5\", 1, 1]", "[-1,-1,6,7,0,0]", "[9,19,30,40,0,0]"},
      {"[50]", "[50,-1,5,7,0,0]", "[60,19,30,40,0,0]"},
      {"[-50, 60]", "[-50,60,55,6,0,0]", "[-40,80,30,40,0,0]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.enclosing);
    stack.Clear();
    stack.Push({Parse("{}"), Parse(c.enclosing)});
    Json::Value grid = Parse(R"({"List": [1], "Layout": [[[0,0,5,6]]]})");
    EXPECT_EQ(resolver.processContentsLoopElement(grid, 1)["Bounds"], Parse(c.grid));
    Json::Value rotation = Parse(R"({"List": [1], "Bounds": [10, 20, 30, 40]})");
    EXPECT_EQ(resolver.processContentsLoopElement(rotation, 1)["Bounds"], Parse(c.rotation));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, OriginIsFoundInTheNearestFrameWithBounds) {
  stack.Push({Parse("{}"), Parse("[10, 20, 200, 100]")});
  stack.Push({Parse("{}"), Parse("[]")});
  Json::Value rotation = Parse(R"({"List": [1], "Bounds": [1, 2, 3, 4]})");
  EXPECT_EQ(resolver.processContentsLoopElement(rotation, 1)["Bounds"],
            Parse("[11, 22, 3, 4, 0, 0]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, RotationLooksForItsOriginAfterTheContentsAGridBefore) {
  stack.BoundsSet(Parse("[10, 20, 500, 500]"));
  Json::Value rotation =
      Parse(R"j({"List": [1], "Bounds": [1, 2, 3, 4], "Contents": ["$(frame.place)"]})j");
  EXPECT_EQ(resolver.processContentsLoopElement(rotation, 1)["Bounds"],
            Parse("[101, 202, 3, 4, 0, 0]"));
  Json::Value grid =
      Parse(R"j({"List": [1], "Layout": [[[1, 2, 3, 4]]], "Contents": ["$(frame.place)"]})j");
  EXPECT_EQ(resolver.processContentsLoopElement(grid, 1)["Bounds"], Parse("[10, 20, 4, 6, 0, 0]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, BoundsOfARotationAreReadAsInts) {
  const struct {
    const char* bounds;
    const char* result;
  } cases[] = {
      {"[1.9, -1.9, true, null]", "[1,-1,1,0,0,0]"},
      {"[1, 2]", "[1,2,0,0,0,0]"},
      {"[]", "[0,0,0,0,0,0]"},
      {"null", "[0,0,0,0,0,0]"},
      {R"([1, 2, 3, 4, "x"])", "[1,2,3,4,0,0]"},
      {"[-2147483648, 2147483647, -2147483648, 2147483647]",
       "[-2147483648,2147483647,-2147483648,2147483647,0,0]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bounds);
    Json::Value loop = Parse(R"({"List": [1], "Bounds": )" + std::string(c.bounds) + "}");
    EXPECT_EQ(resolver.processContentsLoopElement(loop, 1)["Bounds"], Parse(c.result));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, BoundsThatAreNoIntsFailInsideContainersOnly) {
  const CTableHandler& n = Handle("n", "5");
  std::vector<std::string> calls;
  for (const char* bounds :
       {R"(["1",2,3,4])", R"([1,2,3,"50%"])", R"j([1,"$(var.i)",3,4])j", "[1,2147483648,3,4]",
        "[1,2,1e10,4]", "[1,2,{},4]", "[[1,2],3]", R"({"x":1})", "{}", R"("x")", "5"}) {
    SCOPED_TRACE(bounds);
    resolver.Input("{}");
    const std::string members =
        R"j("List": [1], "Contents": ["$(n)"], "Bounds": )j" + std::string(bounds);
    EXPECT_EQ(Expand(members, 0), R"({"Contents":[5]})");
    EXPECT_EQ(stack.frames().size(), 1U);
    EXPECT_THROW(Expand(members, 1), Json::LogicError);
    EXPECT_EQ(stack.frames().size(), 2U);
    calls.insert(calls.end(), 2, "GetValue n");
    EXPECT_EQ(n.calls(), calls);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, SumsOfContainerBoundsWrapAt32Bits) {
  stack.BoundsSet(Parse("[10, -2147483648, 200, 100]"));
  Json::Value rotation = Parse(R"({"List": [1], "Bounds": [2147483647, -1, 0, 0]})");
  EXPECT_EQ(resolver.processContentsLoopElement(rotation, 1)["Bounds"],
            Parse("[-2147483639, 2147483647, 0, 0, 0, 0]"));
  Json::Value grid = Parse(R"({"List": [1], "Layout": [[[0, 0, 5, 6]]]})");
  EXPECT_EQ(resolver.processContentsLoopElement(grid, 1)["Bounds"],
            Parse("[10, -2147483648, 5, -2147483642, 0, 0]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, CopiesOfAGridAreItsMembersCopiesOfARotationAreTheEnclosingOnes) {
  EXPECT_EQ(Expand(R"("List": [1], "Layout": [[[0,0]]], "Contents": [{"RenderType": 3}])", 7),
            R"({"Bounds":[0,0,0,0,0,0],"Contents":[{"Container":1,"RenderType":3}],)"
            R"("Frame":{"Align":"None","Container":7,"Flow":"None","Id":1,"Padding":0},)"
            R"("RenderType":1024})");
  EXPECT_EQ(Expand(R"("List": [1], "Bounds": [1,2,3,4], "Contents": [{"RenderType": 3}])", 7),
            R"({"Bounds":[1,2,3,4,0,0],"Contents":[{"Container":7,"RenderType":3}],)"
            R"("Frame":{"Align":"None","Container":7,"Flow":"None","Id":2,"Padding":0},)"
            R"("RenderType":1024})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, NegativeContainerReachesTheCopiesOfARotationOnly) {
  EXPECT_EQ(Expand(R"("List": [1], "Bounds": [], "Contents": [{"RenderType": 1024}])", -3),
            R"({"Contents":[{"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: Nested containers unsupported.\n");
  EXPECT_EQ(Expand(R"("List": [1], "Layout": [[[0,0]]], "Contents": [{"RenderType": 1024}])", -3),
            R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, IdIsTakenBeforeTheContentsAreWalked) {
  const Json::Value page = Parse(Resolve(R"({"Contents": [{"RenderType": 1024, "Contents": [
      {"Loop": {"List": [1, 2], "Layout": [[[0,0],[0,0]]], "Contents": [
          {"Loop": {"List": [1], "Bounds": [], "Contents": [
              {"Loop": {"List": []}}]}}]}},
      {"Loop": {"List": [1], "Bounds": [], "Contents": [{"RenderType": 1024}]}}]}]})"));
  const Json::Value& box = page["Contents"][0];
  EXPECT_EQ(box["Frame"], Parse(R"({"Id": 1})"));
  const auto ids = [](const Json::Value& element) {
    return std::to_string(element["Frame"]["Id"].asInt()) + " in " +
           std::to_string(element["Frame"]["Container"].asInt());
  };
  const Json::Value& grid = box["Contents"][0];
  EXPECT_EQ(ids(grid), "2 in 1");
  EXPECT_EQ(ids(grid["Contents"][0]), "3 in 2");
  EXPECT_EQ(ids(grid["Contents"][0]["Contents"][0]), "4 in 2");
  EXPECT_EQ(ids(grid["Contents"][1]), "5 in 2");
  EXPECT_EQ(ids(grid["Contents"][1]["Contents"][0]), "6 in 2");
  EXPECT_EQ(ids(box["Contents"][1]), "7 in 1");
  EXPECT_EQ(box["Contents"][1]["Contents"], Parse(R"([{"RenderType": 1024}])"));
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: Nested containers unsupported.\n");
}

TEST_F(LoopElement, ExceptionsUseUpTheIdThatWasTakenBefore) {
  const CThrowingHandler handler;
  tokens.Set("host", &handler);
  const struct {
    const char* members;
    int nextId;
  } cases[] = {
      {R"j("List": "$(host)", "Bounds": [0,0,1,1])j", 1},
      {R"j("Size": "$(host)", "Bounds": [0,0,1,1])j", 1},
      {R"j("List": [1], "Bounds": [["$(host)", 0]])j", 1},
      {R"j("List": [1], "Bounds": [0,0,1,1], "Contents": ["$(host)"])j", 2},
      {R"j("List": "$(host)", "Layout": [[[0,0]]])j", 1},
      {R"j("Size": "$(host)", "Layout": [[[0,0]]])j", 1},
      {R"j("List": [1], "CellWidth": "$(host)")j", 2},
      {R"j("List": [1], "Layout": [[["$(host)",0]]])j", 2},
      {R"j("List": [1], "Layout": [[[0,0]]], "Contents": ["$(host)"])j", 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.members);
    CTemplateResolver fresh(&tokens, &stack);
    Json::Value loop = Parse("{" + std::string(c.members) + "}");
    EXPECT_THROW(fresh.processContentsLoopElement(loop, 7), CHostError);
    EXPECT_EQ(fresh.nextContainerID(), c.nextId);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, SecondPassTakesAWrappedLoopForANestedContainer) {
  EXPECT_EQ(Resolve(R"({"Contents": [{"RenderType": 1024, "Bounds": [10,20,30,40], "Contents": [
                {"Loop": {"List": [1], "Bounds": [1,2,3,4], "Contents": ["a"]}}]}]})"),
            R"({"Contents":[{"Bounds":[10,20,30,40],"Contents":[{"Bounds":[11,22,3,4,0,0],)"
            R"("Contents":["a"],"Frame":{"Align":"None","Container":1,"Flow":"None","Id":2,)"
            R"("Padding":0},"RenderType":1024}],"Frame":{"Id":1},"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "");
  resolver.Process();
  EXPECT_EQ(resolver.Output(),
            R"({"Contents":[{"Bounds":[10,20,30,40],"Contents":[{"Bounds":[21,42,3,4,0,0],)"
            R"("Contents":["a"],"Frame":{"Align":"None","Container":1,"Flow":"None","Id":2,)"
            R"("Padding":0},"RenderType":1024}],"Frame":{"Id":1},"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: Nested containers unsupported.\n");
}

// --- Order ---

TEST_F(LoopElement, MembersOfARotationAreReadInOrder) {
  const CTableHandler& n = Handle(
      "n", R"({"list": [7], "start": 0, "stop": 0, "offset": 0, "size": 1, "x": 1, "c": 2})");
  EXPECT_EQ(Expand(R"j("Contents": ["$(n.c)"], "Bounds": [["$(n.x)", 0]], "Size": "$(n.size)",
                       "Offset": "$(n.offset)", "Stop": "$(n.stop)", "Start": "$(n.start)",
                       "List": "$(n.list)", "CellWidth": "$(n.list)")j"),
            R"({"Contents":[2]})");
  EXPECT_EQ(n.calls(),
            (std::vector<std::string>{"GetValue n.list", "GetValue n.start", "GetValue n.stop",
                                      "GetValue n.offset", "GetValue n.size", "GetValue n.x",
                                      "GetValue n.c"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, FaultsAreReportedInOrder) {
  EXPECT_EQ(Resolve(R"j({"Contents": [{"Context": {"a": "$(ctx)"}, "Loop": {
                "List": "$(list)", "Start": "1x", "Contents": ["$(inside)"], "Size": "2x",
                "Bounds": [["3x", 0]]}}, "$(after)"]})j"),
            R"({"Contents":[{"Contents":[null]},null]})");
  EXPECT_EQ(Errors(),
            "CTokenResolver::GetTokenValue: no token handler for: ctx.\n"
            "CTokenResolver::GetTokenValue: no token handler for: list.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 1x.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 2x.\n"
            "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 3x.\n"
            "CTokenResolver::GetTokenValue: no token handler for: inside.\n"
            "CTokenResolver::GetTokenValue: no token handler for: after.\n");
}

// --- Stack ---

TEST_F(LoopElement, VariablesLiveInAFrameOfTheLoop) {
  EXPECT_EQ(Resolve(R"j({"Contents": ["$(frame.depth)", {"Context": {"i": "outer"}, "Loop": {
                "List": ["$(var.i)"], "Start": "$(frame.depth-3)", "Size": 1, "Var": "i",
                "Layout": [[[0,0]]], "Contents": ["$(frame.depth)", "$(var.i)",
                {"A": 1, "Contents": ["$(frame.depth)", "$(frame.context)", "$(var.i)"]}]}},
                "$(frame.depth)", "$(var.i)"]})j"),
            R"({"Contents":[1,{"Contents":[3,0,{"A":1,"Contents":[4,{},0]}]},1,null]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, FrameIsPushedFreshBeforeTheListIsRead) {
  EXPECT_EQ(Expand(R"j("List": "$(frame.depth) $(frame.context#) $(frame.bounds#)", "Value": "v",
                       "Bounds": [], "Contents": ["$(var.v)"])j"),
            R"({"Contents":["2 0 0"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, EachMemberIsProcessedInTheFrameOfTheLoop) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  const std::string range =
      R"j("List":"$(frames.list)","Start":"$(frames.start)","Stop":"$(frames.stop)",)j"
      R"j("Offset":"$(frames.offset)","Size":"$(frames.size)")j";
  const std::string contents = R"j("Contents":["$(frames.entry)",{"Contents":["$(frames.in)"]}])j";
  const struct {
    std::string loop;
    std::vector<std::string> seen;  // above the frame of the element
  } cases[] = {
      {range + R"j(,"Var":"i","Bounds":[["$(frames.bounds)",0]],)j" + contents,
       {"list {}[]", "start {}[]", "stop {}[]", "offset {}[]", "size {}[]", "bounds {}[]",
        R"(entry {"i":2}[])", R"(in {"i":2}[] {}[])"}},
      {range + R"j(,"Bounds":[["$(frames.bounds)",0]],)j" + contents,
       {"list {}[]", "start {}[]", "stop {}[]", "offset {}[]", "size {}[]", "bounds {}[]",
        "entry {}[]", "in {}[] {}[]"}},
      {range + R"j(,"Var":"i","Count":"n","CellWidth":"$(frames.width)",)j" +
           R"j("CellHeight":"$(frames.height)","Layout":[[["$(frames.x)","$(frames.y)"]]],)j" +
           contents,
       {"list {}[]", "start {}[]", "stop {}[]", "offset {}[]", "size {}[]", "width {}[]",
        "height {}[]", "x {}[]", "y {}[]", R"(entry {"i":2,"n":0}[4,5,1,1,null,null])",
        R"(in {"i":2,"n":0}[4,5,1,1,null,null] {}[])"}},
  };
  for (auto c : cases) {
    SCOPED_TRACE(c.loop);
    Resolve(R"({"Contents":[{"Context":{"a":2},"Bounds":[3,4],"Loop":{)" + c.loop + "}}]}");
    for (std::string& seen : c.seen) seen.insert(seen.find(' '), R"( {"a":2}[3,4])");
    EXPECT_EQ(frames.Take(), c.seen);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopElement, WhatAHandlerDoesToTheVariablesOfARotationStays) {
  const CContextSettingHandler set(&stack);
  tokens.Set("set", &set);
  EXPECT_EQ(Expand(R"j("List": [7], "Value": "v", "Bounds": [],
                       "Contents": ["$(frame.context)", "$(set)", "$(frame.context)"])j"),
            R"({"Contents":[{"v":7},null,{"host":1}]})");
  // Without a name, too, the variables take the place of what was there.
  EXPECT_EQ(Expand(R"j("List": "$(set)", "Bounds": [], "Contents": ["$(frame.context)"])j"),
            R"({"Contents":[{}]})");
  EXPECT_EQ(Errors(), "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n");
}

TEST_F(LoopElement, EmptyStackIsReported) {
  const char* const members = R"j("List": "$(frame.clear)", "Start": 0, "Size": 1, "Var": "i",
                                  "Bounds": [], "Contents": ["$(nobody)"])j";
  EXPECT_EQ(Expand(members), R"({"Contents":[null]})");
  EXPECT_EQ(Errors(),
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n"
            "CTemplateStack::Pop: preconditions.\n");
  EXPECT_EQ(Expand(R"j("List": "$(frame.clear)", "Start": 0, "Size": 1, "Bounds": [])j"),
            R"({"Contents":[]})");
  EXPECT_EQ(Errors(),
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTemplateStack::Pop: preconditions.\n");
  EXPECT_EQ(Expand(R"j("List": "$(frame.clear)")j", 1),
            R"({"Bounds":[-1,-1,1,1,0,0],"Frame":{"Align":"None","Container":1,"Flow":"None",)"
            R"("Id":1,"Padding":0},"RenderType":1024})");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n"
            "CTemplateStack::Pop: preconditions.\n");
}

TEST_F(LoopElement, WithoutScreenSizeTheLoopHasItsFrameAllTheSame) {
  resolver.SetScreenSize(0, 0);
  EXPECT_EQ(Resolve(R"j({"Contents": [{"RenderType": 1024, "Contents": [{"Loop": {"List": "a,b",
                "Value": "v", "Layout": [[[0,0,5,6],[10,0,5,6]]],
                "Contents": ["$(var.v)"]}}]}]})j"),
            R"({"Contents":[{"Contents":[{"Bounds":[-1,-1,16,7,0,0],"Contents":["a","b"],)"
            R"("Frame":{"Align":"None","Container":1,"Flow":"None","Id":2,"Padding":0},)"
            R"("RenderType":1024}],"Frame":{"Id":1},"RenderType":1024}]})");
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, ExceptionLeavesTheFramesUntilTheNextInput) {
  const char* const page = R"j({"Contents": [{"Loop": {"List": [4, 0], "Bounds": [], "Value": "v",
                               "Contents": ["$(frame.depth/var.v)"]}}]})j";
  try {
    Resolve(page);
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
  }
  ASSERT_EQ(stack.frames().size(), 3U);
  EXPECT_EQ(stack.frames()[2].context, Parse(R"({"v": 0})"));
  EXPECT_EQ(Resolve(page), R"({"Contents":[{"Contents":[0]}]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, NumberBeyondTheIntRangeLeavesTheFrames) {
  EXPECT_THROW(Resolve(R"({"Contents": [{"Loop": {"List": [1], "Size": 1e10}}]})"),
               Json::LogicError);
  EXPECT_EQ(stack.frames().size(), 3U);
  EXPECT_EQ(Errors(), "");
}

// --- Loops among other elements ---

TEST_F(LoopElement, RotationInsideAGridShowsTheSameIndexInEachCell) {
  const char* const members = R"j("Start": 0, "Size": 2, "Var": "i", "Layout": [[[0,0],[50,0]]],
      "Contents": [{"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [],
                   "Contents": ["$(var.i)$(var.v)"]}}])j";
  EXPECT_EQ(Pass(members), R"([{"Contents":["0b"]},{"Contents":["1b"]}])");
  EXPECT_EQ(Pass(members), R"([{"Contents":["0c"]},{"Contents":["1c"]}])");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, GridInsideARotationRunsOverItsEntry) {
  const char* const members = R"j("List": [["a", "b"], ["c"]], "Value": "v", "Bounds": [],
      "Contents": [{"Loop": {"List": "$(var.v)", "Value": "v", "Layout": [[[0,0],[5,0]], [[7,0]]],
                   "Contents": ["$(var.v)", "$(frame.bounds)"]}}, "$(var.v)"])j";
  EXPECT_EQ(Pass(members), R"([{"Contents":["c",[7,0,0,0,null,null]]},["c"]])");
  EXPECT_EQ(Pass(members), R"([{"Contents":["a",[0,0,0,0,null,null],"b",[5,0,0,0,null,null]]},)"
                           R"(["a","b"]])");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, ConditionSeesTheVariables) {
  EXPECT_EQ(Pass(R"j("Start": 1, "Size": 3, "Var": "i", "Layout": [[[0,0],[0,0],[0,0]]],
                     "Contents": [{"If": {"Condition": "$(var.i)", "<": 3,
                                          "Contents": ["B$(var.i).PNG"]}}])j"),
            R"([{"Contents":["b1.png"]},{"Contents":["b2.png"]},null])");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopElement, LeavesItsDescriptionAsItWasAtAnyDepth) {
  CThrowingHandler handler;
  tokens.Set("fails", &handler);
  Handle("volume", "7");
  const std::string inner =
      R"j({"Loop":{"List":"c,d","Layout":[[[1,2],[3,4]]],"Contents":["$(volume)",%]}})j";
  for (const char* innermost : {R"("x.PNG")", R"j("$(fails)")j"}) {
    for (const char* outer : {R"({"Start":0,"Size":1,"Layout":[[[5,6]]],"Contents":[%]})",
                              R"({"Bounds":[0,0,9,9],"List":"a","Contents":[%]})"}) {
      std::string text = outer;
      text.replace(text.find('%'), 1, inner);
      text.replace(text.find('%'), 1, innermost);
      SCOPED_TRACE(text);
      const Json::Value before = Parse(text);
      Json::Value loop = before;
      // The step after one that an exception ended keeps what it is given, too.
      for (int round = 0; round < 2; ++round) {
        Thrown([&] { resolver.processContentsLoopElement(loop, 0); });
        EXPECT_EQ(loop, before);
      }
    }
  }
  EXPECT_EQ(Errors(), "");
}

/// Copies its resolver, and lets it expand a loop of its own.
class CCopyingHandler : public ITokenHandler {
 public:
  explicit CCopyingHandler(const CTemplateResolver* resolver) : m_resolver(resolver) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    copy = std::make_unique<CTemplateResolver>(*m_resolver);
    return 5;
  }

  mutable std::unique_ptr<CTemplateResolver> copy;

 private:
  const CTemplateResolver* m_resolver;
};

TEST_F(LoopElement, CopyOfAResolverMadeInALoopTakesNothingFromOthers) {
  const CCopyingHandler handler(&resolver);
  tokens.Set("copy", &handler);
  EXPECT_EQ(
      Resolve(
          R"j({"Contents":[{"Loop":{"Start":0,"Size":1,"Bounds":[0,0,1,1],"Contents":["$(copy)"]}}]})j"),
      R"({"Contents":[{"Contents":[5]}]})");
  ASSERT_TRUE(handler.copy);
  const Json::Value before =
      Parse(R"({"Start": 0, "Size": 1, "Bounds": [0, 0, 1, 1], "Contents": ["a"]})");
  Json::Value loop = before;
  handler.copy->processContentsLoopElement(loop, 0);
  EXPECT_EQ(loop, before);
  Json::Value value = Parse(
      R"j([{"Loop": {"Start": 0, "Size": 1, "Bounds": [0], "Contents": ["a", "$(fails)"]}}])j");
  const Json::Value untouched = value;
  CThrowingHandler fails;
  tokens.Set("fails", &fails);
  EXPECT_THROW(handler.copy->processContentsArray(value, 0), CHostError);
  EXPECT_EQ(value, untouched);
  EXPECT_EQ(Errors(), "");
}

}  // namespace
