#include <gtest/gtest.h>
#include <json/value.h>

#include <cstddef>
#include <exception>
#include <iterator>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/json_text.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "support/frames_handler.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

constexpr int smallest = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

using CCalls = std::vector<std::string>;
using CExpression = CTemplateResolver::CExpression;
using eOp = CTemplateResolver::eExpressionOp;

/// Answers `$(stack.context)`, `$(stack.bounds)` and `$(stack.size)`: the top frame's context, the
/// bounds in force and the number of frames.
class CStackHandler : public ITokenHandler {
 public:
  explicit CStackHandler(const CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    if (parts[1] == "context") return m_stack->frames().back().context;
    if (parts[1] == "bounds") return m_stack->boundsFind();
    return Json::Value(static_cast<int>(m_stack->frames().size()));
  }

 private:
  const CTemplateStack* m_stack;
};

class IfElement : public ResolverTest {
 protected:
  CExpression Expression(const std::string& ifText) {
    Json::Value ifValue = Parse(ifText);
    return resolver.processContentsIfExpressionGet(ifValue);
  }

  bool Holds(eOp op, const Json::Value& condition, const Json::Value& operand = Json::Value()) {
    CExpression expression{op, condition, operand};
    return resolver.processContentsIfExpressionEval(expression);
  }

  /// What takes the place of an "If", and what is reported. The text has the comments.
  struct COutcome {
    Json::Value value;
    std::string text;
    std::string errors;
  };

  /// By the element alone, with container ids from 1 on. The processed contents, and nothing else
  /// that is new, stay behind in the "If" as well.
  COutcome Alone(const Json::Value& original, int container) {
    CTemplateResolver fresh(&tokens, &stack);
    Json::Value ifValue = original;
    stack.Push();
    const Json::Value value = fresh.processContentsIfElement(ifValue, container);
    stack.Pop();
    Json::Value expected = original;
    if (!value.isNull()) expected["Contents"] = value["Contents"];
    EXPECT_EQ(ifValue, expected);
    EXPECT_EQ(jsoncpp_string::toString(ifValue), jsoncpp_string::toString(expected));
    return {value, jsoncpp_string::toString(value), Errors()};
  }

  /// By the walk over an element with this "If", likewise.
  COutcome Walked(const Json::Value& original, int container) {
    CTemplateResolver fresh(&tokens, &stack);
    Json::Value element = Parse(R"({"Name": "x", "Contents": ["y"], "RenderType": 1024})");
    element["If"] = original;
    element.setComment(std::string("/* replaced */"), Json::commentBefore);
    fresh.processContentsValue(element, container);
    return {element, jsoncpp_string::toString(element), Errors()};
  }

  void ExpectWalkedAsAlone(const Json::Value& ifValue) {
    SCOPED_TRACE(ifValue.toStyledString());
    for (const int container : {0, 7, -1}) {
      const COutcome alone = Alone(ifValue, container);
      const COutcome walked = Walked(ifValue, container);
      EXPECT_EQ(walked.value, alone.value);
      EXPECT_EQ(walked.text, alone.text);
      EXPECT_EQ(walked.errors, alone.errors);
    }
  }

  /// The resolved form of `entry`, standing alone in a top-level "Contents".
  std::string ResolveEntry(const std::string& entry) {
    const std::string page = Resolve(R"({"Contents":[)" + entry + "]}");
    return page.substr(13, page.size() - 15);
  }
};

// --- From the element to the expression ---

TEST_F(IfElement, TestsHaveFixedNumbers) {
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opNone), 0);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opTruth), 1);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opEquals), 2);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opNotEquals), 3);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opIntEqual), 4);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opIntNotEqual), 5);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opIntLess), 6);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::opIntGreater), 7);
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, FirstComparisonOfTheTableWins) {
  const struct {
    const char* ifText;
    eOp op;
    Json::Value operand;
  } cases[] = {
      {R"({"Condition": 1})", CTemplateResolver::opTruth, Json::Value()},
      {R"({"Condition": 1, "Contents": []})", CTemplateResolver::opTruth, Json::Value()},
      {R"({"Condition": 1, "equals": 2, "=": 3, "<=": 4})", CTemplateResolver::opTruth,
       Json::Value()},
      {R"({"Condition": 1, ">": 7})", CTemplateResolver::opIntGreater, 7},
      {R"({"Condition": 1, ">": 7, "<": 6})", CTemplateResolver::opIntLess, 6},
      {R"({"Condition": 1, ">": 7, "<": 6, "!=": 5})", CTemplateResolver::opIntNotEqual, 5},
      {R"({"Condition": 1, ">": 7, "<": 6, "!=": 5, "==": 4})", CTemplateResolver::opIntEqual, 4},
      {R"({"Condition": 1, ">": 7, "==": 4, "NotEquals": 3})", CTemplateResolver::opNotEquals, 3},
      {R"({"Condition": 1, ">": 7, "NotEquals": 3, "Equals": 2})", CTemplateResolver::opEquals, 2},
      {R"({"Condition": 1, "<": 6, "Equals": null})", CTemplateResolver::opEquals, Json::Value()},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.ifText);
    const CExpression expression = Expression(c.ifText);
    EXPECT_EQ(expression.op, c.op);
    EXPECT_EQ(expression.condition, Json::Value(1));
    EXPECT_EQ(expression.operand, c.operand);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, WithoutConditionThereIsNoExpression) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* ifText :
       {"{}", "null", R"j({"Equals": "$(n)", "<": "$(n)"})j", R"({"condition": 1, "Equals": 1})"}) {
    SCOPED_TRACE(ifText);
    const CExpression expression = Expression(ifText);
    EXPECT_EQ(expression.op, CTemplateResolver::opNone);
    EXPECT_EQ(expression.condition, Json::Value());
    EXPECT_EQ(expression.operand, Json::Value());
    EXPECT_EQ(handler.calls(), CCalls());
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, IfThatIsArrayOrScalarThrows) {
  for (const char* text : {"[]", R"(["Condition"])", "5", "2.5", "true", R"("Condition")"}) {
    SCOPED_TRACE(text);
    Json::Value ifValue = Parse(text);
    EXPECT_THROW(resolver.processContentsIfExpressionGet(ifValue), Json::LogicError);
    EXPECT_THROW(resolver.processContentsIfElement(ifValue, 0), Json::LogicError);
    EXPECT_EQ(ifValue, Parse(text));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, ValuesOfTheExpressionAreProcessedCopies) {
  const CTableHandler& handler = Handle("h", R"({"a": 5, "b": [1, 2], "c": 7})");
  const std::string text =
      R"j({"Condition": "$(h.a)", "Equals": "$(h.b)", "NotEquals": "$(h.c)", "<": "$(h.c)"})j";
  Json::Value ifValue = Parse(text);
  const CExpression expression = resolver.processContentsIfExpressionGet(ifValue);
  EXPECT_EQ(expression.condition, Json::Value(5));
  EXPECT_EQ(expression.operand, Parse("[1, 2]"));
  EXPECT_EQ(ifValue, Parse(text));
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue h.a", "GetValue h.b"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, TokensInsideAnArrayOperandAreNotSubstituted) {
  Handle("n", "7");
  const CExpression expression = Expression(R"j({"Condition": "$(n)", "Equals": ["$(n)"]})j");
  EXPECT_EQ(expression.condition, Json::Value(7));
  EXPECT_EQ(expression.operand, Parse(R"j(["$(n)"])j"));
  EXPECT_EQ(Errors(), "");
}

// --- From the expression to its result ---

TEST_F(IfElement, ExpressionStartsInvalid) {
  CExpression expression;
  EXPECT_EQ(expression.op, CTemplateResolver::opNone);
  EXPECT_EQ(expression.condition, Json::Value());
  EXPECT_EQ(expression.operand, Json::Value());
  EXPECT_FALSE(resolver.processContentsIfExpressionEval(expression));
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n");
}

TEST_F(IfElement, ConditionAloneIsATruthValue) {
  const struct {
    Json::Value condition;
    bool holds;
  } cases[] = {
      {"", false},
      {"0", false},
      {"00", true},
      {" ", true},
      {"0.0", true},
      {"false", true},
      {"no", true},
      {"text", true},
      {0, false},
      {1, true},
      {-1, true},
      {0U, false},
      {1U, true},
      {0.4, false},
      {-0.9, false},
      {1.5, true},
      {true, true},
      {false, false},
      {Json::Value(), false},
      {Parse("[]"), false},
      {Parse("[0]"), true},
      {Parse("{}"), true},
      {Parse(R"({"a": 0})"), true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.condition.toStyledString());
    CExpression expression{CTemplateResolver::opTruth, c.condition, Json::Value()};
    EXPECT_EQ(resolver.processContentsIfExpressionEval(expression), c.holds);
    EXPECT_EQ(expression.condition, Json::Value(c.holds));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, EqualsComparesJsonTypeAndValue) {
  const struct {
    Json::Value condition;
    Json::Value operand;
    bool equal;
  } cases[] = {
      {5, 5, true},
      {5, 6, false},
      {5, 5.0, false},
      {1, 1U, false},
      {1U, 1U, true},
      {1U, 1.0, false},
      {1, "1", false},
      {1, true, false},
      {0, false, false},
      {0, Json::Value(), false},
      {"", Json::Value(), false},
      {false, Json::Value(), false},
      {Json::Value(), Json::Value(), true},
      {2.5, 2.5, true},
      {5.0, 5.0, true},
      {"a", "a", true},
      {"a", "A", false},
      {"a", "a ", false},
      {"", "", true},
      {true, true, true},
      {true, false, false},
      {Parse("{}"), Parse("{}"), true},
      {Parse(R"({"a": [1]})"), Parse(R"({"a": [1]})"), true},
      {Parse(R"({"a": 1})"), Parse(R"({"a": 1.0})"), false},
      {Parse("{}"), Json::Value(), false},
      {Parse("[]"), Json::Value(), false},
      {Parse("[5]"), 5, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.condition.toStyledString() + "and " + c.operand.toStyledString());
    EXPECT_EQ(Holds(CTemplateResolver::opEquals, c.condition, c.operand), c.equal);
    EXPECT_EQ(Holds(CTemplateResolver::opNotEquals, c.condition, c.operand), !c.equal);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, ArrayOperandMeansMembership) {
  const struct {
    Json::Value condition;
    const char* operand;
    bool member;
  } cases[] = {
      {1, "[1, 2, 3]", true},
      {2, "[1, 2, 3]", true},
      {3, "[1, 2, 3]", true},
      {4, "[1, 2, 3]", false},
      {1, R"([1.0, "1", true, null, [1]])", false},
      {1U, "[1]", false},
      {1.0, "[1, 1.0]", true},
      {"b", R"(["a", "b"])", true},
      {"B", R"(["a", "b"])", false},
      {Json::Value(), "[0, null]", true},
      {1, "[]", false},
      {Json::Value(), "[]", false},
      {Parse("[]"), "[]", false},
      {Parse("[1, 2]"), "[1, 2]", false},
      {Parse("[1, 2]"), "[[1], [1, 2]]", true},
      {Parse(R"({"a": 1})"), R"([{"a": 1}])", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.condition.toStyledString() + "in " + c.operand);
    EXPECT_EQ(Holds(CTemplateResolver::opEquals, c.condition, Parse(c.operand)), c.member);
    EXPECT_EQ(Holds(CTemplateResolver::opNotEquals, c.condition, Parse(c.operand)), !c.member);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, IntegerTestsConvertBothSides) {
  const struct {
    Json::Value condition;
    Json::Value operand;
    int order;  // of condition to operand: less, equal, greater
  } cases[] = {
      {5, 5, 0},
      {4, 5, -1},
      {5, 4, 1},
      {-5, 4, -1},
      {smallest, greatest, -1},
      {greatest, smallest, 1},
      {"10", 9, 1},
      {"10", "9", 1},
      {9, "10", -1},
      {5, 5U, 0},
      {5, 5.0, 0},
      {2.9, 2, 0},
      {-2.9, -2, 0},
      {true, 1, 0},
      {false, "0", 0},
      {"", 0, 0},
      {" 5", 5, 0},
      {"0x10", 16, 0},
      {"010", 8, 0},
      {"9999999999", greatest, 0},
      {"-9999999999", smallest, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.condition.toStyledString() + "and " + c.operand.toStyledString());
    EXPECT_EQ(Holds(CTemplateResolver::opIntEqual, c.condition, c.operand), c.order == 0);
    EXPECT_EQ(Holds(CTemplateResolver::opIntNotEqual, c.condition, c.operand), c.order != 0);
    EXPECT_EQ(Holds(CTemplateResolver::opIntLess, c.condition, c.operand), c.order < 0);
    EXPECT_EQ(Holds(CTemplateResolver::opIntGreater, c.condition, c.operand), c.order > 0);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, IntegerTestsConvertTheFieldsInPlace) {
  CExpression expression{CTemplateResolver::opIntLess, "0x10", 17.9};
  EXPECT_TRUE(resolver.processContentsIfExpressionEval(expression));
  EXPECT_EQ(expression.condition, Json::Value(16));
  EXPECT_EQ(expression.operand, Json::Value(17));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, IntegerTestOfWhatIsNoIntIsInvalid) {
  const std::string invalid =
      "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n";
  const struct {
    Json::Value condition;
    Json::Value operand;
    std::string errors;
  } cases[] = {
      {"abc", 1,
       "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n" + invalid},
      {1, "5 ",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: 5 .\n" + invalid},
      {"a", "b",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: a.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: b.\n" +
           invalid},
      {Json::Value(), "b",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: b.\n" + invalid},
      {"1.5", "1.5",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: 1.5.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: 1.5.\n" +
           invalid},
      {Json::Value(), 0, invalid},
      {0, Json::Value(), invalid},
      {Json::Value(), Json::Value(), invalid},
      {Parse("[1]"), 1, invalid},
      {1, Parse("[1]"), invalid},
      {Parse("{}"), 1, invalid},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.condition.toStyledString() + "and " + c.operand.toStyledString());
    for (const eOp op : {CTemplateResolver::opIntEqual, CTemplateResolver::opIntNotEqual,
                         CTemplateResolver::opIntLess, CTemplateResolver::opIntGreater}) {
      SCOPED_TRACE(op);
      EXPECT_FALSE(Holds(op, c.condition, c.operand));
      EXPECT_EQ(Errors(), c.errors);
    }
  }
}

TEST_F(IfElement, NumberOutsideTheIntRangeThrows) {
  for (const Json::Value& number :
       {Json::Value(3000000000U), Json::Value(-3e9), Json::Value(Json::Int64{2147483648})}) {
    SCOPED_TRACE(number.toStyledString());
    EXPECT_THROW(Holds(CTemplateResolver::opTruth, number), Json::LogicError);
    EXPECT_THROW(Holds(CTemplateResolver::opIntEqual, number, 1), Json::LogicError);
    EXPECT_THROW(Holds(CTemplateResolver::opIntLess, 1, number), Json::LogicError);
    EXPECT_TRUE(Holds(CTemplateResolver::opEquals, number, number));
    EXPECT_EQ(Errors(), "");
  }
}

// --- The element ---

TEST_F(IfElement, HoldingIfBecomesItsContents) {
  Handle("n", "7");
  EXPECT_EQ(ResolveEntry(R"j({"If":{"Condition":"$(n)","Name":"x","Contents":["$(n)","A.PNG",)j"
                         R"j({"RenderType":3}]},"Name":"y","RenderType":1024})j"),
            R"({"Contents":[7,"a.png",{"RenderType":3}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, IfThatDoesNotHoldBecomesNullAndIsNotWalked) {
  const CTableHandler& handler = Handle("h", R"({"a": 0, "b": 1})");
  EXPECT_EQ(Resolve(R"j({"Contents":[{"If":{"Condition":"$(h.a)","Contents":["$(h.b)",5]}},)j"
                    R"j({"If":{"Condition":false,"Contents":"$(h.b)"}},"A.PNG"]})j"),
            R"({"Contents":[null,null,"a.png"]})");
  EXPECT_EQ(handler.calls(), CCalls{"GetValue h.a"});
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, EachTestChoosesTheContents) {
  Handle("n", "5");
  Handle("list", "[4, 5]");
  const struct {
    const char* expression;
    bool holds;
  } cases[] = {
      {R"("Condition":"0")", false},
      {R"("Condition":"")", false},
      {R"("Condition":"false")", true},
      {R"j("Condition":"$(n)","Equals":5)j", true},
      {R"j("Condition":"$(n)","Equals":5.0)j", false},
      {R"j("Condition":"$(n)","Equals":"5")j", false},
      {R"j("Condition":"$(n) ","Equals":"5 ")j", true},
      {R"j("Condition":"$(n)","Equals":"$(list)")j", true},
      {R"j("Condition":"$(n)","NotEquals":"$(list)")j", false},
      {R"j("Condition":"$(n)","Equals":["$(n)"])j", false},
      {R"("Condition":2,"Equals":[1,2,3])", true},
      {R"("Condition":2,"NotEquals":[1,2,3])", false},
      {R"("Condition":5,"Equals":5,"<":1)", true},
      // A count is a uint, arithmetic gives an int.
      {R"j("Condition":"$(list#)","Equals":2)j", false},
      {R"j("Condition":"$(list#+0)","Equals":2)j", true},
      {R"j("Condition":"$(list#)","==":2)j", true},
      {R"j("Condition":"$(list#)","Equals":"$(list#)")j", true},
      {R"("Condition":"10","<":9)", false},
      {R"("Condition":"10",">":9)", true},
      {R"j("Condition":"$(n)","!=":"6")j", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expression);
    EXPECT_EQ(ResolveEntry(R"({"If":{)" + std::string(c.expression) + R"(,"Contents":["x"]}})"),
              c.holds ? R"({"Contents":["x"]})" : "null");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, InvalidExpressionBecomesNull) {
  const struct {
    const char* expression;
    const char* errors;
  } cases[] = {
      {R"("Equals":1)",
       "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n"},
      {R"("Name":"x")",
       "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n"},
      {R"("Condition":"abc","==":1)",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n"
       "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n"},
      {R"j("Condition":"$(gone)","!=":1)j",
       "CTokenResolver::GetTokenValue: no token handler for: gone.\n"
       "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expression);
    EXPECT_EQ(ResolveEntry(R"({"If":{)" + std::string(c.expression) + R"(,"Contents":["x"]}})"),
              "null");
    EXPECT_EQ(Errors(), c.errors);
  }
  EXPECT_EQ(ResolveEntry(R"({"If":null})"), "null");
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n");
}

TEST_F(IfElement, MissingHandlersAreNullsThatAreEqual) {
  EXPECT_EQ(ResolveEntry(R"j({"If":{"Condition":"$(a)","Equals":"$(b)","Contents":["x"]}})j"),
            R"({"Contents":["x"]})");
  EXPECT_EQ(Errors(),
            "CTokenResolver::GetTokenValue: no token handler for: a.\n"
            "CTokenResolver::GetTokenValue: no token handler for: b.\n");
}

TEST_F(IfElement, HoldingIfWithoutContentsBecomesNull) {
  EXPECT_EQ(ResolveEntry(R"({"If":{"Condition":1},"Contents":["x"]})"), "null");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, ContentsThatAreNoArrayAreReportedAndKept) {
  for (const std::string contents : {"null", "5", R"("A.PNG")", R"({"a":["A.PNG"]})"}) {
    SCOPED_TRACE(contents);
    EXPECT_EQ(ResolveEntry(R"({"If":{"Condition":1,"Contents":)" + contents + "}}"),
              R"({"Contents":)" + contents + "}");
    EXPECT_EQ(Errors(),
              "CTemplateResolver::processContentsArray: Contents member must be an array.\n");
  }
}

TEST_F(IfElement, ContentsAreProcessedInPlaceAndCopied) {
  Handle("n", "7");
  Json::Value ifValue = Parse(R"j({"Condition": "$(n)", "Contents": ["$(n)"], "Name": "$(n)"})j");
  EXPECT_EQ(resolver.processContentsIfElement(ifValue, 0), Parse(R"({"Contents": [7]})"));
  EXPECT_EQ(ifValue, Parse(R"j({"Condition": "$(n)", "Contents": [7], "Name": "$(n)"})j"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, ContentsAreMembersOfTheEnclosingContainer) {
  const struct {
    int container;
    const char* element;
  } cases[] = {{5, R"({"RenderType": 3, "Container": 5})"},
               {0, R"({"RenderType": 3})"},
               {-1, R"({"RenderType": 3})"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.container);
    Json::Value ifValue = Parse(R"({"Condition": 1, "Contents": [{"RenderType": 3}]})");
    EXPECT_EQ(resolver.processContentsIfElement(ifValue, c.container)["Contents"][0],
              Parse(c.element));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IfElement, ContainerReachesThroughAnIf) {
  EXPECT_EQ(ResolveEntry(R"({"RenderType":1024,"Contents":[{"RenderType":4,"If":{"Condition":1,)"
                         R"("Contents":[{"RenderType":3},{"RenderType":1024}]}}]})"),
            R"({"Contents":[{"Contents":[{"Container":1,"RenderType":3},{"RenderType":1024}]}],)"
            R"("Frame":{"Id":1},"RenderType":1024})");
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: Nested containers unsupported.\n");
}

TEST_F(IfElement, ContextAndBoundsOfTheElementAreInForce) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(ResolveEntry(R"j({"Bounds":[100,50,200,100],"Context":{"a":1},"If":{)j"
                         R"j("Condition":"$(stack.context)","Equals":"$(stack.context)",)j"
                         R"j("Contents":["$(stack.context)","$(stack.size)",)j"
                         R"j({"Bounds":["50%",1]}]}})j"),
            R"({"Contents":[{"a":1},2,{"Bounds":[200,51]}]})");
  EXPECT_EQ(ResolveEntry(R"j({"Bounds":[1,2],"If":{"Condition":"$(stack.bounds#)","==":2,)j"
                         R"j("Contents":["x"]}})j"),
            R"({"Contents":["x"]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, AllIsProcessedInTheFrameOfTheElement) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  EXPECT_EQ(Resolve(R"j({"Contents":[{"Context":{"a":2},"Bounds":[3,4],"If":{)j"
                    R"j("Condition":"$(frames.condition)","==":"$(frames.operand)",)j"
                    R"j("Contents":["$(frames.entry)",{"Contents":["$(frames.inner)"]}]}}]})j"),
            R"({"Contents":[{"Contents":[1,{"Contents":[1]}]}]})");
  EXPECT_EQ(frames.Take(),
            (std::vector<std::string>{R"(condition {"a":2}[3,4])", R"(operand {"a":2}[3,4])",
                                      R"(entry {"a":2}[3,4])", R"(inner {"a":2}[3,4] {}[])"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, IfsNest) {
  EXPECT_EQ(ResolveEntry(R"({"If":{"Condition":1,"Contents":[{"If":{"Condition":0,"Contents":[]}},)"
                         R"({"If":{"Condition":1,"Contents":["A.PNG"]}}]}})"),
            R"({"Contents":[null,{"Contents":["a.png"]}]})");
  EXPECT_EQ(Errors(), "");
}

// --- The walk, and the element alone ---

TEST_F(IfElement, WalkGivesWhatTheElementAloneGives) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  Handle("n", "7");
  Handle("list", R"([1, "A.PNG"])");
  for (const char* text : {
           R"({"Condition": 1, "Contents": ["a", 5, null]})",
           R"({"Condition": 0, "Contents": ["a", 5, null]})",
           R"({"Condition": 1, "Contents": []})",
           R"({"Condition": 1})",
           R"({"Condition": 0})",
           R"({"Contents": ["a"]})",
           "{}",
           "null",
           R"j({"Condition": "$(n)", "<": 8, "Contents": ["$(n)", "$(list)", "B $(n).PNG"]})j",
           R"j({"Condition": "$(n)", ">": 8, "Contents": ["$(n)", "$(list)"]})j",
           R"j({"Condition": "$(n)", "==": "x", "Contents": ["$(n)"]})j",
           R"j({"Condition": 1, "Contents": ["$(gone)", "$(stack.size)", "$(stack.bounds)"]})j",
           R"({"Condition": 1, "Contents": [{"RenderType": 3}, {"RenderType": 1024}]})",
           R"({"Condition": 1, "Contents": null})",
           R"({"Condition": 1, "Contents": 5})",
           R"({"Condition": 1, "Contents": "A.PNG"})",
           R"j({"Condition": 1, "Contents": "$(list)"})j",
           R"({"Condition": 1, "Contents": {"a": ["A.PNG"]}})",
           R"({"Condition": 1, "Contents": [{"If": {"Condition": 1, "Contents": ["A.PNG", {"If":
              {"Condition": 0, "Contents": ["x"]}}, {"If": {"Condition": 1, "Contents": "x"}}]}}]})",
           "{\"Condition\": 1, /* before */ \"Contents\": [ // beside\n 5 /* five */,\n"
           "// above\n {\"RenderType\": 3} // behind\n, {\"If\": /* if */ {\"Condition\": 1,\n"
           "\"Contents\": /* inner */ [7 // seven\n]}}] // last\n}",
       }) {
    ExpectWalkedAsAlone(Parse(text));
  }
}

/// Entries of "Contents" that reach every way an "If" can go, up to `depth` levels deep.
Json::Value RandomContents(std::mt19937& random, int depth);

Json::Value RandomIf(std::mt19937& random, int depth) {
  const char* const conditions[] = {R"({"Condition": 1})",
                                    R"({"Condition": "text"})",
                                    R"j({"Condition": "$(n)"})j",
                                    R"j({"Condition": "$(n)", "Equals": [6, 7]})j",
                                    R"j({"Condition": "$(n)", "<": 8})j",
                                    R"({"Condition": 0})",
                                    R"j({"Condition": "$(n)", ">": 8})j",
                                    R"j({"Condition": "$(gone)", "==": 1})j",
                                    "{}"};
  Json::Value ifValue = Parse(conditions[random() % std::size(conditions)]);
  if (random() % 8 != 0) ifValue["Contents"] = RandomContents(random, depth - 1);
  return ifValue;
}

Json::Value RandomContents(std::mt19937& random, int depth) {
  if (random() % 8 == 0) return Parse(random() % 2 == 0 ? "null" : R"({"a": ["A.PNG"]})");
  const char* const entries[] = {
      R"j("$(n)")j",
      R"j("B $(n).PNG")j",
      R"j("$(gone)")j",
      R"j("$(stack.size)")j",
      R"("A.PNG")",
      "5",
      "null",
      R"j(["$(n)"])j",
      R"({"RenderType": 3})",
      R"j({"Bounds": [1, 2, "50%", 9], "Contents": ["$(stack.bounds)"]})j",
      R"({"RenderType": 1024, "Contents": [{"RenderType": 4}]})"};
  Json::Value contents(Json::arrayValue);
  for (auto n = random() % 5; n > 0; --n) {
    Json::Value entry;
    if (depth > 0 && random() % 3 == 0) {
      entry["If"] = RandomIf(random, depth);
    } else {
      entry = Parse(entries[random() % std::size(entries)]);
    }
    if (random() % 4 == 0) entry.setComment(std::string("// above"), Json::commentBefore);
    contents.append(std::move(entry));
  }
  if (random() % 4 == 0) contents.setComment(std::string("/* all */"), Json::commentBefore);
  return contents;
}

// The walk moves what the element alone copies.
TEST_F(IfElement, WalkGivesWhatTheElementAloneGivesForRandomContents) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  Handle("n", "7");
  std::mt19937 random(1);
  int replaced = 0;
  for (int i = 0; i < 2000 && !HasFailure(); ++i) {
    const Json::Value ifValue = RandomIf(random, 3);
    ExpectWalkedAsAlone(ifValue);
    if (Alone(ifValue, 0).value.isObject()) ++replaced;
  }
  EXPECT_GT(replaced, 600);
  EXPECT_LT(replaced, 1800);
}

// --- Beside other members ---

TEST_F(IfElement, IfComesBeforeLoop) {
  const CTableHandler& handler = Handle("n", "7");
  const std::string loop = R"j("Loop":{"Bounds":["$(n)"],"List":"$(n)","Contents":["$(n)"]})j";
  EXPECT_EQ(ResolveEntry(R"({"If":{"Condition":1,"Contents":["x"]},)" + loop + "}"),
            R"({"Contents":["x"]})");
  EXPECT_EQ(ResolveEntry(R"({"If":{"Condition":0,"Contents":["x"]},)" + loop + "}"), "null");
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, OtherMembersAreDroppedUnprocessed) {
  const CTableHandler& handler = Handle("n", "7");
  EXPECT_EQ(ResolveEntry(R"j({"Contents":5,"Display":["red","$(n)"],"If":{"Condition":1,)j"
                         R"j("Contents":[]},"Layout":[["a","$(n)"]],"Play":["$(n)"],)j"
                         R"j("Prec":["b","$(n)"],"RenderType":"$(n)"})j"),
            R"({"Contents":[]})");
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, FaultsAreReportedInTheOrderOfTheWalk) {
  EXPECT_EQ(Resolve(R"({"Contents":[{"Context":[],"Bounds":5,"If":{"Condition":"1","==":1,)"
                    R"("Contents":[{"If":{"Condition":"a","<":"b"}},{"Prec":["c"]}]}},)"
                    R"({"If":{}},{"Prec":["d"]}]})"),
            R"({"Contents":[{"Contents":[null,{"Prec":[0]}]},null,{"Prec":[0]}]})");
  EXPECT_EQ(Errors(),
            "CTemplateStack::ContextSet: preconditions.\n"
            "CTemplateStack::BoundsSet: preconditions.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: a.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: b.\n"
            "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: c.\n"
            "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.\n"
            "CTokenResolver::stringToInt: cannot convert value to signed integer: d.\n");
}

TEST_F(IfElement, SecondPassWalksTheChosenContentsOnly) {
  const CTableHandler& handler = Handle("n", "1");
  const std::string page = R"({"Contents":[{"Contents":["x",{"RenderType":3}]},null]})";
  EXPECT_EQ(Resolve(R"j({"Contents":[{"If":{"Condition":"$(n)","Contents":["x",)j"
                    R"j({"RenderType":3}]}},{"If":{"Condition":"$(n)","Equals":2}}]})j"),
            page);
  resolver.Process();
  EXPECT_EQ(resolver.Output(), page);
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue n", "GetValue n"}));
  EXPECT_EQ(Errors(), "");
}

// --- Exceptions ---

TEST_F(IfElement, ExceptionsPassThroughAndLeaveTheFrames) {
  const CThrowingHandler handler;
  tokens.Set("host", &handler);
  const struct {
    const char* text;
    const char* left;
    std::size_t frames;
  } cases[] = {
      {R"j({"Contents":[{"If":{"Condition":"$(host)"}}]})j",
       R"j({"Contents":[{"If":{"Condition":"$(host)"}}]})j", 2},
      {R"j({"Contents":[{"If":{"Condition":1,"==":"$(host)"}}]})j",
       R"j({"Contents":[{"If":{"==":"$(host)","Condition":1}}]})j", 2},
      {R"j({"Contents":[{"If":{"Condition":1,"Contents":["A.PNG",{"Prec":["1","$(host)"]}]}}]})j",
       R"j({"Contents":[{"If":{"Condition":1,"Contents":["a.png",{"Prec":[1,"$(host)"]}]}}]})j", 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    resolver.Input(c.text);
    EXPECT_EQ(stack.frames().size(), 1U);
    EXPECT_THROW(resolver.Process(), CHostError);
    EXPECT_EQ(resolver.Output(), c.left);
    EXPECT_EQ(stack.frames().size(), c.frames);
    EXPECT_EQ(Errors(), "");
  }
  EXPECT_EQ(ResolveEntry(R"({"If":{"Condition":1,"Contents":["x"]}})"), R"({"Contents":["x"]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(IfElement, DivisionByZeroInTheConditionPassesThrough) {
  Handle("n", "7");
  resolver.Input(R"j({"Contents":[{"If":{"Condition":"$(n/0)"}}]})j");
  try {
    resolver.Process();
    FAIL() << "nothing thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
  }
  EXPECT_EQ(Errors(), "");
}

}  // namespace
