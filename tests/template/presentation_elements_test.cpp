#include <gtest/gtest.h>
#include <json/value.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "support/resolver_fixture.h"

namespace {

constexpr int smallest = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

using CCalls = std::vector<std::string>;

/// Answers `$(stack.context)`, `$(stack.below)` and `$(stack.bounds)`: the contexts of the top
/// frame and of the one below it, and the top frame's bounds.
class CStackHandler : public ITokenHandler {
 public:
  explicit CStackHandler(const CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    if (parts[1] == "below") return m_stack->frames().rbegin()[1].context;
    return parts[1] == "context" ? m_stack->frames().back().context
                                 : m_stack->frames().back().bounds;
  }

 private:
  const CTemplateStack* m_stack;
};

class PresentationElements : public ResolverTest {
 protected:
  PresentationElements() { stack.Push(CTemplateStack::CStackFrame()); }

  Json::Value Display(Json::Value display) {
    resolver.processContentsDisplayElement(display);
    return display;
  }

  Json::Value Prec(Json::Value prec) {
    resolver.processContentsPrecElement(prec);
    return prec;
  }

  Json::Value Play(Json::Value play) {
    resolver.processContentsPlayElement(play);
    return play;
  }

  Json::Value Context(Json::Value context) {
    resolver.processContentsContextElement(context);
    return context;
  }

  Json::Value Colours(Json::Value colours) const {
    resolver.processArrayColour(colours);
    return colours;
  }

  Json::Value Integers(Json::Value integers) const {
    resolver.processArrayInteger(integers);
    return integers;
  }

  /// The resolved form of `entry`, standing alone in a top-level "Contents".
  std::string ResolveEntry(const std::string& entry) {
    const std::string page = Resolve(R"({"Contents":[)" + entry + "]}");
    return page.substr(13, page.size() - 15);
  }
};

Json::Value ArrayOf(const std::vector<Json::Value>& values) {
  Json::Value array(Json::arrayValue);
  for (const Json::Value& value : values) array.append(value);
  return array;
}

/// Values whose size is 0.
const char* const emptyMembers[] = {"[]", "{}",  "null", R"("")", R"("#FF0000")", "0",
                                    "5",  "2.5", "true", "false", R"j("$(n)")j"};

// --- Display ---

TEST_F(PresentationElements, DisplayBecomesColourWords) {
  EXPECT_EQ(Display(Parse(R"(["#FF0000", "#00FF0080", 255])")),
            ArrayOf({16711680U, 2147548928U, 255U}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, EveryColourEndsAsAWord) {
  const struct {
    Json::Value colour;
    Json::Value word;
  } cases[] = {
      {"#FF8000", 16744448U},
      {"#ff800080", 2164228096U},
      {"rgb #0000FF", 255U},
      {"4278190080", 4278190080U},
      {"0xFF0000", 16711680U},
      {"9999999999", 4294967295U},
      {"", 0U},
      {255, 255U},
      {255U, 255U},
      {Json::Value(Json::Int64{4278190080}), 4278190080U},
      {255.9, 255U},
      {true, 1U},
      {false, 0U},
      // No uint, unlike the rest.
      {Json::Value(), 0},
      {Parse("[255]"), 0},
      {Parse(R"({"a": 255})"), 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.colour.toStyledString());
    EXPECT_EQ(Display(ArrayOf({c.colour})), ArrayOf({c.word}));
    EXPECT_EQ(Colours(ArrayOf({c.colour, 1})), ArrayOf({c.word, 1U}));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, ColourThatDoesNotConvertIsZero) {
  EXPECT_EQ(Display(Parse(R"(["red", "x#FF", "#FFFF", "#0000FF"])")), ArrayOf({0U, 0U, 0U, 255U}));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToUInt: cannot convert value to unsigned integer: red.\n"
            "CTokenResolver::HTMLtoInt: cannot convert value to colour: #FF.\n"
            "CTokenResolver::HTMLtoInt: cannot convert value to colour: #FFFF.\n");
}

TEST_F(PresentationElements, ColoursAreSubstitutedOneAfterTheOther) {
  const CTableHandler& handler =
      Handle("c", R"({"int": 255, "text": "#00FF00", "hex": "0000FF", "list": [1, 2]})");
  EXPECT_EQ(Display(Parse(R"j(["$(c.int)", "$(c.text)", "#$(c.hex)80", "$(c.list)", "$(c.no)"])j")),
            ArrayOf({255U, 65280U, 2147483903U, 0, 0}));
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue c.int", "GetValue c.text", "GetValue c.hex",
                                     "GetValue c.list", "GetValue c.no"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, ColourWithoutHandlerIsReportedOnce) {
  EXPECT_EQ(Display(Parse(R"j(["$(gone)"])j")), ArrayOf({0}));
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: no token handler for: gone.\n");
}

TEST_F(PresentationElements, NumberThatIsNoColourWordThrows) {
  const Json::Value numbers[] = {-1, smallest, -1.5, 5e9, Json::Value(Json::Int64{4294967296})};
  for (const Json::Value& number : numbers) {
    SCOPED_TRACE(number.toStyledString());
    Json::Value display = ArrayOf({"#0000FF", number, "#0000FF"});
    EXPECT_THROW(resolver.processContentsDisplayElement(display), Json::LogicError);
    EXPECT_EQ(display, ArrayOf({255U, number, "#0000FF"}));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, EmptyDisplayBecomesThreeZeros) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* display : emptyMembers) {
    SCOPED_TRACE(display);
    EXPECT_EQ(Display(Parse(display)), ArrayOf({0, 0, 0}));
    EXPECT_EQ(handler.calls(), CCalls());
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, DisplayThatIsAnObjectIsReportedAndKept) {
  const CTableHandler& handler = Handle("n", "7");
  const Json::Value object = Parse(R"j({"a": "#FF0000", "b": "$(n)", "c": 5})j");
  EXPECT_EQ(Display(object), object);
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "CTemplateResolver::processArrayColour: element must be an array.\n");
}

TEST_F(PresentationElements, ColoursThatAreNoArrayAreReportedAndKept) {
  for (const char* colours : {"{}", "null", "5", "2.5", "true", R"("#FF0000")", R"({"a": 1})"}) {
    SCOPED_TRACE(colours);
    EXPECT_EQ(Colours(Parse(colours)), Parse(colours));
    EXPECT_EQ(Errors(), "CTemplateResolver::processArrayColour: element must be an array.\n");
  }
  EXPECT_EQ(Colours(Parse("[]")), Parse("[]"));
  EXPECT_EQ(Errors(), "");
}

// --- Prec ---

TEST_F(PresentationElements, PrecBecomesInts) {
  EXPECT_EQ(Prec(Parse(R"(["3", 2.7, true])")), ArrayOf({3, 2, 1}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, EveryIntegerEndsAsAnInt) {
  const struct {
    Json::Value integer;
    int number;
  } cases[] = {
      {"0x10", 16},
      {"010", 8},
      {" 42", 42},
      {"", 0},
      {"9999999999", greatest},
      {"-9999999999", smallest},
      {-5, -5},
      {7U, 7},
      {10.0, 10},
      {-2.9, -2},
      {false, 0},
      {Json::Value(), 0},
      {Parse("[1]"), 0},
      {Parse(R"({"a": 1})"), 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.integer.toStyledString());
    EXPECT_EQ(Prec(ArrayOf({c.integer})), ArrayOf({c.number}));
    EXPECT_EQ(Integers(ArrayOf({c.integer, "1"})), ArrayOf({c.number, 1}));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, IntegerThatDoesNotConvertIsZero) {
  EXPECT_EQ(Prec(Parse(R"(["abc", "42 ", "50%", "1"])")), ArrayOf({0, 0, 0, 1}));
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 42 .\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
}

TEST_F(PresentationElements, IntegersAreSubstitutedOneAfterTheOther) {
  const CTableHandler& handler = Handle("i", R"({"int": 5, "real": 2.9, "text": "1"})");
  EXPECT_EQ(Prec(Parse(R"j(["$(i.int)", "$(i.real)", "$(i.text)6", "$(i.no)", "$(i.int)x"])j")),
            ArrayOf({5, 2, 16, 0, 0}));
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue i.int", "GetValue i.real", "GetValue i.text",
                                     "GetValue i.no", "GetValue i.int"}));
  EXPECT_EQ(Errors(), "CTokenResolver::stringToInt: cannot convert value to signed integer: 5x.\n");
}

TEST_F(PresentationElements, NumberThatIsNoIntThrows) {
  const Json::Value numbers[] = {3000000000U, 3e9, Json::Value(Json::Int64{-2147483649})};
  for (const Json::Value& number : numbers) {
    SCOPED_TRACE(number.toStyledString());
    Json::Value prec = ArrayOf({"1", number, "2"});
    EXPECT_THROW(resolver.processContentsPrecElement(prec), Json::LogicError);
    EXPECT_EQ(prec, ArrayOf({1, number, "2"}));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, EmptyPrecBecomesThreeZeros) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* prec : emptyMembers) {
    SCOPED_TRACE(prec);
    EXPECT_EQ(Prec(Parse(prec)), ArrayOf({0, 0, 0}));
    EXPECT_EQ(handler.calls(), CCalls());
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, PrecThatIsAnObjectIsReportedAndKept) {
  const CTableHandler& handler = Handle("n", "7");
  const Json::Value object = Parse(R"j({"a": "3", "b": "$(n)", "c": 2.7})j");
  EXPECT_EQ(Prec(object), object);
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "CTemplateResolver::processArrayInteger: element must be an array.\n");
}

TEST_F(PresentationElements, IntegersThatAreNoArrayAreReportedAndKept) {
  for (const char* integers : {"{}", "null", "5", "2.5", "true", R"("3")", R"({"a": 1})"}) {
    SCOPED_TRACE(integers);
    EXPECT_EQ(Integers(Parse(integers)), Parse(integers));
    EXPECT_EQ(Errors(), "CTemplateResolver::processArrayInteger: element must be an array.\n");
  }
  EXPECT_EQ(Integers(Parse("[]")), Parse("[]"));
  EXPECT_EQ(Errors(), "");
}

// --- Play ---

TEST_F(PresentationElements, PlayKeepsTheTypesOfItsEntries) {
  Handle("n", "7");
  Handle("t", R"("text")");
  EXPECT_EQ(
      Play(Parse(
          R"j(["$(n)", "$(t)", "<$(n)>", "5", 2.5, 5, true, null, ["$(n)"], {"a": "$(n)"}])j")),
      Parse(R"j([7, "text", "<7>", "5", 2.5, 5, true, null, ["$(n)"], {"a": "$(n)"}])j"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, PlayMayBeAnObject) {
  const CTableHandler& handler = Handle("h", R"({"a": 1, "b": "x"})");
  EXPECT_EQ(Play(Parse(R"j({"z": "$(h.b)", "a": "$(h.a)", "n": ["$(h.a)"], "$(h.a)": "5"})j")),
            Parse(R"j({"z": "x", "a": 1, "n": ["$(h.a)"], "$(h.a)": "5"})j"));
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue h.a", "GetValue h.b"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, EmptyPlayBecomesThreeZerosAndFalse) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* play : emptyMembers) {
    SCOPED_TRACE(play);
    EXPECT_EQ(Play(Parse(play)), ArrayOf({0, 0, 0, false}));
    EXPECT_EQ(handler.calls(), CCalls());
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(PresentationElements, DefaultsAreCopied) {
  Json::Value display;
  Json::Value prec;
  Json::Value play;
  for (int pass = 0; pass < 2; ++pass) {
    SCOPED_TRACE(pass);
    resolver.processContentsDisplayElement(display);
    resolver.processContentsPrecElement(prec);
    resolver.processContentsPlayElement(play);
    EXPECT_EQ(display, ArrayOf({0, 0, 0}));
    EXPECT_EQ(prec, ArrayOf({0, 0, 0}));
    EXPECT_EQ(play, ArrayOf({0, 0, 0, false}));
    for (Json::Value* member : {&display, &prec, &play}) {
      (*member)[0] = 9;
      *member = Json::Value();
    }
  }
  EXPECT_EQ(Errors(), "");
}

// --- Context ---

TEST_F(PresentationElements, ContextIsProcessedAndRecorded) {
  const CTableHandler& handler = Handle("h", R"({"a": 1, "b": [2]})");
  const Json::Value resolved = Parse(R"j({"z": "<1>", "b": [2], "n": {"m": "$(h.a)"}, "i": 5})j");
  EXPECT_EQ(Context(Parse(R"j({"z": "<$(h.a)>", "b": "$(h.b)", "n": {"m": "$(h.a)"}, "i": 5})j")),
            resolved);
  EXPECT_EQ(stack.frames().back().context, resolved);
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue h.b", "GetValue h.a"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, ContextReplacesTheOneBefore) {
  Context(Parse(R"({"a": 1, "b": 2})"));
  Context(Parse(R"({"b": 3})"));
  EXPECT_EQ(stack.frames().back().context, Parse(R"({"b": 3})"));
  EXPECT_EQ(Context(Parse("{}")), Parse("{}"));
  EXPECT_EQ(stack.frames().back().context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, ContextThatIsAnArrayIsProcessedButNotRecorded) {
  Handle("n", "7");
  Context(Parse(R"({"a": 1})"));
  EXPECT_EQ(Context(Parse(R"j(["$(n)", "x"])j")), Parse(R"([7, "x"])"));
  EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
  EXPECT_EQ(Context(Parse("[]")), Parse("[]"));
  EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
  EXPECT_EQ(stack.frames().back().context, Parse(R"({"a": 1})"));
}

TEST_F(PresentationElements, ContextThatIsAScalarIsReportedTwice) {
  const CTableHandler& handler = Handle("n", "7");
  Context(Parse(R"({"a": 1})"));
  for (const char* context : {"null", "5", "2.5", "true", R"("text")", R"j("$(n)")j"}) {
    SCOPED_TRACE(context);
    EXPECT_EQ(Context(Parse(context)), Parse(context));
    EXPECT_EQ(stack.frames().back().context, Parse(R"({"a": 1})"));
    EXPECT_EQ(handler.calls(), CCalls());
    EXPECT_EQ(Errors(),
              "CTemplateResolver::processList: element must be an array or object.\n"
              "CTemplateStack::ContextSet: preconditions.\n");
  }
}

TEST_F(PresentationElements, ContextOnAnEmptyStackIsProcessedButNotRecorded) {
  Handle("n", "7");
  stack.Clear();
  EXPECT_EQ(Context(Parse(R"j({"a": "$(n)"})j")), Parse(R"({"a": 7})"));
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
}

// --- In the walk ---

TEST_F(PresentationElements, MembersOfAnElementAreResolvedInPlace) {
  EXPECT_EQ(ResolveEntry(R"({"Display":["#0000FF"],"Play":[1,"2"],"Prec":["3"]})"),
            R"({"Display":[255],"Play":[1,"2"],"Prec":[3]})");
  EXPECT_EQ(ResolveEntry(R"({"Display":"#0000FF","Play":null,"Prec":{}})"),
            R"({"Display":[0,0,0],"Play":[0,0,0,false],"Prec":[0,0,0]})");
  EXPECT_EQ(ResolveEntry(R"({"Display":{"a":"#0000FF"},"Play":{"a":1},"Prec":{"a":"3"}})"),
            R"({"Display":{"a":"#0000FF"},"Play":{"a":1},"Prec":{"a":"3"}})");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::processArrayColour: element must be an array.\n"
            "CTemplateResolver::processArrayInteger: element must be an array.\n");
}

TEST_F(PresentationElements, ContextIsInForceForTheElementAndItsContents) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(ResolveEntry(R"j({"Context":{"a":1},"Contents":["$(stack.context)",)j"
                         R"j({"Contents":["$(stack.context)","$(stack.below)"]}],)j"
                         R"j("Play":["$(stack.context)"]})j"),
            R"({"Contents":[{"a":1},{"Contents":[{},{"a":1}]}],"Context":{"a":1},)"
            R"("Play":[{"a":1}]})");
  EXPECT_EQ(stack.frames().back().context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, ContextIsRecordedBeforeTheBoundsAreProcessed) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(ResolveEntry(R"j({"Bounds":["$(stack.context#)",0],)j"
                         R"j("Context":{"a":1,"b":"$(stack.context)","c":"$(stack.bounds)"}})j"),
            R"({"Bounds":[3,0],"Context":{"a":1,"b":{},"c":[]}})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, ContextThatIsAnArrayLeavesTheEnclosingOneInForce) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(ResolveEntry(R"j({"Context":{"a":1},"Contents":[{"Context":["$(stack.below)"],)j"
                         R"j("Contents":["$(stack.context)","$(stack.below)"]}]})j"),
            R"({"Contents":[{"Contents":[{},{"a":1}],"Context":[{"a":1}]}],"Context":{"a":1}})");
  EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
}

TEST_F(PresentationElements, ContextOfThePageIsRecordedInTheScreensFrame) {
  Handle("n", "7");
  EXPECT_EQ(Resolve(R"j({"Page":{"Contents":[{"Context":{"b":2}}],"Context":{"a":"$(n)"}}})j"),
            R"({"Page":{"Contents":[{"Context":{"b":2}}],"Context":{"a":7}}})");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 7})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, MembersAreProcessedInTheirFixedOrder) {
  const CTableHandler& handler =
      Handle("h", R"({"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7,"h":8})");
  EXPECT_EQ(
      ResolveEntry(R"j({"Bounds":["$(h.b)",0],"Contents":["$(h.h)"],"Context":{"a":"$(h.a)"},)j"
                   R"j("Display":["$(h.d)"],"Layout":[["$(h.c)",0]],"Play":["$(h.e)"],)j"
                   R"j("Prec":["$(h.f)"],"RenderType":"$(h.g)"})j"),
      R"({"Bounds":[2,0],"Contents":[8],"Context":{"a":1},"Display":[4],"Layout":[[5,0]],)"
      R"("Play":[5],"Prec":[6],"RenderType":7})");
  EXPECT_EQ(handler.calls(),
            (CCalls{"GetValue h.a", "GetValue h.b", "GetValue h.c", "GetValue h.d", "GetValue h.e",
                    "GetValue h.f", "GetValue h.g", "GetValue h.h"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(PresentationElements, FaultsAreReportedInTheOrderOfTheMembers) {
  EXPECT_EQ(ResolveEntry(R"j({"Bounds":5,"Contents":{},"Context":"x","Display":["red"],)j"
                         R"j("Layout":[["l"]],"Play":["$(gone)"],"Prec":["p"]})j"),
            R"({"Bounds":5,"Contents":{},"Context":"x","Display":[0],)"
            R"("Layout":[[0,null]],"Play":[null],"Prec":[0]})");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::processList: element must be an array or object.\n"
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: l.\n"
            "CTokenResolver::stringToUInt: cannot convert value to unsigned integer: red.\n"
            "CTokenResolver::GetTokenValue: no token handler for: gone.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: p.\n"
            "CTemplateResolver::processContentsArray: Contents member must be an array.\n");
}

TEST_F(PresentationElements, ExceptionLeavesTheContextUntilTheNextInput) {
  Handle("n", "7");
  resolver.Input(R"j({"Contents":[{"Context":{"a":1},"Display":["#0000FF"],"Play":["$(n/0)"]}]})j");
  try {
    resolver.Process();
    FAIL() << "nothing thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
  }
  EXPECT_EQ(resolver.Output(),
            R"j({"Contents":[{"Context":{"a":1},"Display":[255],"Play":["$(n/0)"]}]})j");
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"a": 1})"));

  EXPECT_EQ(ResolveEntry(R"j({"Play":["$(n)"]})j"), R"({"Play":[7]})");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

}  // namespace
