// The table of exceptions in docs/embedding.md, row by row and in its order: each test is named
// after the operations of a row, throws what the row names, and checks the state that it promises.
#include <TokenTemplateHandlers/clock_handler.h>
#include <TokenTemplateHandlers/context_handler.h>
#include <TokenTemplateHandlers/json_handler.h>
#include <TokenTemplateResolver/json_text.h>
#include <TokenTemplateResolver/regex_match.h>
#include <TokenTemplateResolver/time_format.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <functional>
#include <iostream>
#include <limits>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "exceptions/memory_files.h"
#include "exceptions/thrown.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

const std::string nothing = "nothing";
const std::string logicError = "Json::LogicError";
const std::string runtimeError = "Json::RuntimeError";
const std::string divisionByZero = "std::runtime_error";
const std::string hostError = "CHostError";

/// Throws in every operation that the library calls.
class CBrokenHandler : public CThrowingHandler {
 public:
  Json::Value GetIndexedValue(const CParsedToken& /*token*/,
                              const Json::Value& /*index*/) const override {
    throw CHostError();
  }
};

/// Text with a token, and what its substitution throws.
struct CTokenFault {
  std::string text;
  std::string thrown;
};

const std::vector<CTokenFault> tokenFaults = {
    {"$(number/0)", divisionByZero},     {"$(number/zero.x)", divisionByZero},
    {"$(null/0)", divisionByZero},       {"$(list#/0)", divisionByZero},
    {"At $(number/0).", divisionByZero}, {"$(far.int+1)", logicError},
    {"$(far.real*2)", logicError},       {"$(word+1)", logicError},
    {"$(list-1)", logicError},           {"$(object/2)", logicError},
    {"$(list[far.int])", logicError},    {"$(number+far.real)", logicError},
    {"At $(far.int+1).", logicError},    {"$(broken)", hostError},
    {"$(broken.path)", hostError},       {"$(broken[1])", hostError},
    {"$(list[broken.x])", hostError},    {"$(number+broken.x)", hostError},
    {"At $(broken).", hostError},
};

/// Values of every kind, extremes included.
std::vector<Json::Value> Zoo() {
  std::vector<Json::Value> values = {Json::Value(),
                                     true,
                                     INT_MIN,
                                     UINT_MAX,
                                     std::numeric_limits<Json::Int64>::min(),
                                     std::numeric_limits<Json::UInt64>::max(),
                                     -0.5,
                                     1e300,
                                     std::numeric_limits<double>::quiet_NaN(),
                                     -std::numeric_limits<double>::infinity(),
                                     "",
                                     "$(",
                                     "$(broken)",
                                     "\xC3.PNG",
                                     std::string("\0\xFF\"#zz,\"", 8),
                                     std::string(100000, '"'),
                                     Json::arrayValue,
                                     Json::objectValue,
                                     Json::stringValue};
  Json::Value deep = Parse(R"(/* kept */ [[], {"a": "x"}, null])");
  for (int level = 0; level < 2000; ++level) {
    Json::Value outer;
    (level % 2 == 0 ? outer[1] : outer["a"]).swap(deep);
    deep.swap(outer);
  }
  values.push_back(deep);
  return values;
}

/// Texts that nobody writes on purpose.
const std::vector<std::string> texts = {"",
                                        "#",
                                        "[",
                                        "a[b].c:d+e",
                                        "...#[[]]::",
                                        std::string("\0.\n", 3),
                                        std::string(2000, '.'),
                                        std::string(2000, '[') + "%]",
                                        "\xFF\xFE%",
                                        "%Ez%O",
                                        "(",
                                        "[[:",
                                        "a{99999}",
                                        R"((a*)*\1)"};

/// `brackets` arrays in one another.
std::string Nested(std::size_t brackets) {
  return std::string(brackets, '[') + std::string(brackets, ']');
}

class DocumentedExceptions : public ResolverTest {
 protected:
  using CStep = std::function<void(Json::Value&)>;

  DocumentedExceptions() {
    Handle("number", "7");
    Handle("zero", R"({"x": 0})");
    Handle("null", "null");
    Handle("far", R"({"int": 5000000000, "real": 1e300})");
    Handle("word", R"("two")");
    Handle("list", "[1, 2]");
    Handle("object", R"({"x": 1})");
    tokens.Set("broken", &m_broken);
    resolver.Input("{}");
  }

  ~DocumentedExceptions() override { MemoryFiles() = {}; }

  /// Every fault of a token leaves `step`, called with the JSON text `shape` where "@" stands for
  /// the text with the token.
  void ExpectTokenFaults(const std::string& shape, const CStep& step) {
    for (const CTokenFault& fault : tokenFaults) {
      SCOPED_TRACE(shape + " " + fault.text);
      Json::Value value = Parse(std::string(shape).replace(shape.find('@'), 1, fault.text));
      EXPECT_EQ(Thrown([&] { step(value); }), fault.thrown);
    }
  }

  /// `step` refuses each of the JSON texts `values`, and changes none.
  static void ExpectLogicError(const std::vector<std::string>& values, const CStep& step) {
    for (const std::string& text : values) {
      SCOPED_TRACE(text);
      Json::Value value = Parse(text);
      EXPECT_EQ(Thrown([&] { step(value); }), logicError);
      EXPECT_EQ(value, Parse(text));
    }
  }

  /// `step` throws `thrown` for the JSON text `before`, which is then `after`.
  static void ExpectState(const std::string& before, const CStep& step, const std::string& thrown,
                          const std::string& after) {
    SCOPED_TRACE(before);
    Json::Value value = Parse(before);
    EXPECT_EQ(Thrown([&] { step(value); }), thrown);
    EXPECT_EQ(jsoncpp_string::toString(value), after);
  }

  CTemplateResolver::CLoopRange oneStep{true, 0, 1, 1};

 private:
  CBrokenHandler m_broken;
};

// --- CTemplateResolver ---

TEST_F(DocumentedExceptions, SetScreenSizePushScreenSizeOutput) {
  EXPECT_EQ(Thrown([&] {
              for (const int size : {INT_MIN, -1, 0, 1, INT_MAX}) {
                resolver.SetScreenSize(size, size);
                resolver.pushScreenSize();
              }
            }),
            nothing);
  for (const char* text : {"", "5", "[1", "{\"a\": 1e999}", "\"\\ud800\"", "[[[null]]]"}) {
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input(text);
    EXPECT_EQ(Thrown([&] { fresh.Output(); }), nothing) << text;
  }
}

TEST_F(DocumentedExceptions, InputAfterAScalar) {
  for (const char* text : {"5", "-1", "1.5", "true", "\"text\""}) {
    SCOPED_TRACE(text);
    CTemplateResolver spoilt(&tokens, &stack);
    spoilt.Input(text);
    stack.Clear();
    stack.Push();
    stack.Push();
    for (int again = 0; again < 2; ++again) {
      EXPECT_EQ(Thrown([&] { spoilt.Input("{}"); }), logicError);
      EXPECT_EQ(spoilt.Output(), text);
      EXPECT_EQ(stack.frames().size(), 2U);
    }
  }
}

TEST_F(DocumentedExceptions, InputReadNestedTooDeep) {
  const std::pair<const char*, const char*> documents[] = {
      {"null", "null"}, {"[1, 2]", "[]"}, {R"({"a": 1})", "{}"}};
  for (const auto& [before, after] : documents) {
    SCOPED_TRACE(before);
    resolver.Input(before);
    stack.Push();
    EXPECT_EQ(Thrown([&] { resolver.Input(Nested(1001)); }), runtimeError);
    EXPECT_EQ(resolver.Output(), after);
    ASSERT_EQ(stack.frames().size(), 1U);
    EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  }
  EXPECT_EQ(Thrown([&] { resolver.Input(Nested(1000)); }), nothing);
  Json::Value out = "kept";
  EXPECT_EQ(Thrown([&] { resolver.read(out, Nested(1001)); }), runtimeError);
  EXPECT_EQ(out, Json::Value("kept"));
}

TEST_F(DocumentedExceptions, ProcessThrows) {
  const auto process = [&](const Json::Value& document) {
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input(jsoncpp_string::toString(document));
    fresh.Process();
  };
  ExpectTokenFaults(R"({"Contents": ["@"]})", process);
  ExpectTokenFaults(R"({"Page": {"Context": {"a": "@"}}})", process);
  ExpectLogicError(
      {"[1]", "5", "true", R"("text")", R"({"Page": []})", R"({"Page": 5})",
       R"({"Contents": [{"If": 5}]})", R"({"Contents": [{"Loop": []}]})",
       R"({"Contents": [{"Include": "a"}]})", R"({"Contents": [{"Bounds": {"a": 1}}]})",
       R"({"Contents": [{"RenderType": 1024, "Frame": 5}]})",
       R"({"Contents": [{"Prec": [5000000000]}]})", R"({"Contents": [{"Display": [-1]}]})"},
      process);
  const Json::Value include = Parse(R"({"Contents": [{"Include": {"Filename": "a"}}]})");
  MemoryFiles().texts["a"] = Nested(1001);
  EXPECT_EQ(Thrown([&] { process(include); }), runtimeError);
  MemoryFiles().texts["a"] = "[]";
  EXPECT_EQ(Thrown([&] { process(include); }), logicError);
  MemoryFiles().beforeRead = [] { throw CHostError(); };
  EXPECT_EQ(Thrown([&] { process(include); }), hostError);
}

TEST_F(DocumentedExceptions, ProcessCountsThePassAndLeavesDocumentFramesAndDepth) {
  resolver.Input(R"j({"Contents": ["$(number)", {"Bounds": ["50%"], "Contents": [
      "$(number)", {"Contents": ["$(broken)", "$(number)"]}]}]})j");
  EXPECT_EQ(Thrown([&] { resolver.Process(); }), hostError);
  EXPECT_EQ(resolver.Output(), R"j({"Contents":[7,{"Bounds":[640],"Contents":[7,)j"
                               R"j({"Contents":["$(broken)","$(number)"]}]}]})j");
  EXPECT_EQ(stack.frames().size(), 3U);

  // The second pass shows the entry at 2.
  CContextHandler context(&stack);
  tokens.Set("context", &context);
  EXPECT_EQ(Resolve(R"j({"Contents": [{"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [],
      "Contents": ["$(context.v)"]}}]})j"),
            R"({"Contents":[{"Contents":["c"]}]})");
  EXPECT_EQ(stack.frames().size(), 1U);

  // The depth shows when a step goes on without Process: ten more files fit, not eleven.
  MemoryFiles().texts["bad"] = R"j({"Contents": ["$(broken)"]})j";
  MemoryFiles().texts["self"] = R"({"Contents": [{"Include": {"Filename": "self"}}]})";
  resolver.Input(R"({"Contents": [{"Include": {"Filename": "bad"}}]})");
  EXPECT_EQ(Thrown([&] { resolver.Process(); }), hostError);
  Json::Value include = Parse(R"({"Filename": "self"})");
  std::string ten = "null";
  for (int depth = 0; depth < 10; ++depth) ten = R"({"Contents":[)" + ten + "]}";
  EXPECT_EQ(jsoncpp_string::toString(resolver.processContentsIncludeElement(include)), ten);
}

TEST_F(DocumentedExceptions, StepsOfTheWalk) {
  const CStep array = [&](Json::Value& v) { resolver.processContentsArray(v, 0); };
  const CStep value = [&](Json::Value& v) { resolver.processContentsValue(v, 0); };
  const CStep object = [&](Json::Value& v) { resolver.processContentsObject(v, 0); };
  const std::pair<const char*, CStep> steps[] = {
      {R"({"Contents": ["@"]})", [&](Json::Value& v) { resolver.process(v); }},
      {R"({"Contents": ["@"]})", [&](Json::Value& v) { resolver.processPageValue(v); }},
      {R"({"Filename": "@"})", [&](Json::Value& v) { resolver.processContentsIncludeElement(v); }},
      {R"({"Condition": "@"})", [&](Json::Value& v) { resolver.processContentsIfElement(v, 0); }},
      {R"({"List": "@"})", [&](Json::Value& v) { resolver.processContentsLoopElement(v, 0); }},
      {R"({"CellWidth": "@"})",
       [&](Json::Value& v) { resolver.loopElementIterate(v, {}, oneStep, 0, nullptr, nullptr); }},
  };
  for (const auto& [shape, step] : steps) {
    ExpectTokenFaults(shape, step);
    ExpectLogicError({"5", "[1]"}, step);
  }
  ExpectTokenFaults(R"(["@"])", array);
  ExpectTokenFaults(R"("@")", value);
  ExpectTokenFaults(R"({"Play": ["@"]})", object);
  for (const CStep& step : {value, object}) {
    ExpectLogicError({R"({"If": 5})", R"({"RenderType": 1024, "Frame": 5})"}, step);
  }
  ExpectState(R"j([{"Contents": ["$(number)", "$(broken)"]}])j", array, hostError,
              R"j([{"Contents":[7,"$(broken)"]}])j");
  // The loop's own frame and that of the element in it stay.
  resolver.Input("{}");
  Json::Value loop = Parse(R"({"Start": 0, "Size": 1, "Layout": [[[0, 0]]],
      "Contents": [{"Prec": [5000000000]}]})");
  EXPECT_EQ(Thrown([&] { resolver.processContentsLoopElement(loop, 0); }), logicError);
  EXPECT_EQ(stack.frames().size(), 3U);
}

TEST_F(DocumentedExceptions, StepsOfTheWalkWithAnInclude) {
  const std::pair<const char*, CStep> steps[] = {
      {R"({"Contents": @})", [&](Json::Value& v) { resolver.process(v); }},
      {R"({"Contents": @})", [&](Json::Value& v) { resolver.processPageValue(v); }},
      {"@", [&](Json::Value& v) { resolver.processContentsArray(v, 0); }},
      {R"({"Contents": @})", [&](Json::Value& v) { resolver.processContentsValue(v, 0); }},
      {R"({"Contents": @})", [&](Json::Value& v) { resolver.processContentsObject(v, 0); }},
      {R"({"Filename": "a"})", [&](Json::Value& v) { resolver.processContentsIncludeElement(v); }},
      {R"({"Condition": 1, "Contents": @})",
       [&](Json::Value& v) { resolver.processContentsIfElement(v, 0); }},
      {R"({"Start": 0, "Size": 1, "Layout": [[[0, 0]]], "Contents": @})",
       [&](Json::Value& v) { resolver.processContentsLoopElement(v, 0); }},
      {R"({"Layout": [[[0, 0]]], "Contents": @})",
       [&](Json::Value& v) { resolver.loopElementIterate(v, {}, oneStep, 0, nullptr, nullptr); }},
  };
  MemoryFiles().texts["a"] = Nested(1001);
  for (const auto& [shape, named] : steps) {
    SCOPED_TRACE(shape);
    const CStep& step = named;  // a lambda captures no part of a pair
    std::string text(shape);
    const std::size_t place = text.find('@');
    if (place != std::string::npos) text.replace(place, 1, R"([{"Include": {"Filename": "a"}}])");
    resolver.Input("{}");
    resolver.Process();  // the include depth starts anew
    Json::Value value = Parse(text);
    EXPECT_EQ(Thrown([&] { step(value); }), runtimeError);
    MemoryFiles().beforeRead = [] { throw CHostError(); };
    EXPECT_EQ(Thrown([&] { step(value); }), hostError);
    MemoryFiles().beforeRead = nullptr;
  }
}

TEST_F(DocumentedExceptions, StepsOfTheWalkCountNoPass) {
  using CResolver = CTemplateResolver;
  const std::pair<const char*, std::function<void(CResolver&, Json::Value&)>> steps[] = {
      {R"j({"Contents": ["$(broken)"]})j", [](CResolver& r, Json::Value& v) { r.process(v); }},
      {R"j({"Contents": ["$(broken)"]})j",
       [](CResolver& r, Json::Value& v) { r.processPageValue(v); }},
      {R"j(["$(broken)"])j", [](CResolver& r, Json::Value& v) { r.processContentsArray(v, 0); }},
      {R"j("$(broken)")j", [](CResolver& r, Json::Value& v) { r.processContentsValue(v, 0); }},
      {R"j({"Play": ["$(broken)"]})j",
       [](CResolver& r, Json::Value& v) { r.processContentsObject(v, 0); }},
      {R"j({"Filename": "$(broken)"})j",
       [](CResolver& r, Json::Value& v) { r.processContentsIncludeElement(v); }},
      {R"j({"Condition": "$(broken)"})j",
       [](CResolver& r, Json::Value& v) { r.processContentsIfElement(v, 0); }},
      {R"j({"List": "$(broken)"})j",
       [](CResolver& r, Json::Value& v) { r.processContentsLoopElement(v, 0); }},
      {R"j({"CellWidth": "$(broken)"})j",
       [&](CResolver& r, Json::Value& v) {
         r.loopElementIterate(v, {}, oneStep, 0, nullptr, nullptr);
       }},
  };
  CContextHandler context(&stack);
  tokens.Set("context", &context);
  for (const auto& [text, named] : steps) {
    SCOPED_TRACE(text);
    const auto& step = named;  // a lambda captures no part of a pair
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input("{}");
    Json::Value value = Parse(text);
    EXPECT_EQ(Thrown([&] { step(fresh, value); }), hostError);
    // The first pass shows the entry at 1.
    fresh.Input(R"j({"Contents": [{"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [],
        "Contents": ["$(context.v)"]}}]})j");
    fresh.Process();
    EXPECT_EQ(fresh.Output(), R"({"Contents":[{"Contents":["b"]}]})");
  }
}

TEST_F(DocumentedExceptions, ProcessContainment) {
  const auto plain = CTemplateResolver::elementPlain;
  const auto container = CTemplateResolver::elementContainer;
  const std::vector<std::string> values = {"5", "[1]", R"("text")", "false"};
  ExpectLogicError(values, [&](Json::Value& v) { resolver.processContainment(v, plain, 1); });
  ExpectLogicError(values, [&](Json::Value& v) { resolver.processContainment(v, container, 0); });
  ExpectLogicError({R"({"Frame": 5})", R"({"Frame": [1]})"},
                   [&](Json::Value& v) { resolver.processContainment(v, container, 0); });
  EXPECT_EQ(resolver.nextContainerID(), 7);  // six ids are used up
}

TEST_F(DocumentedExceptions, GetElementTypeNextContainerIDLowercaseContentsValue) {
  for (Json::Value& value : Zoo()) {
    EXPECT_EQ(Thrown([&] { resolver.getElementType(value); }), nothing) << value.type();
    EXPECT_EQ(Thrown([&] { resolver.nextContainerID(); }), nothing);
    EXPECT_EQ(Thrown([&] { resolver.lowercaseContentsValue(value); }), nothing) << value.type();
  }
}

TEST_F(DocumentedExceptions, StepsOfMembers) {
  const CStep context = [&](Json::Value& v) { resolver.processContentsContextElement(v); };
  const CStep list = [&](Json::Value& v) { resolver.processList(v); };
  const CStep play = [&](Json::Value& v) { resolver.processContentsPlayElement(v); };
  const CStep display = [&](Json::Value& v) { resolver.processContentsDisplayElement(v); };
  const CStep colours = [&](Json::Value& v) { resolver.processArrayColour(v); };
  const CStep prec = [&](Json::Value& v) { resolver.processContentsPrecElement(v); };
  const CStep integers = [&](Json::Value& v) { resolver.processArrayInteger(v); };
  const CStep bounds = [&](Json::Value& v) { resolver.processContentsBoundsElement(v); };
  const CStep layout = [&](Json::Value& v) { resolver.processLayoutElement(v); };
  const CStep point = [&](Json::Value& v) { resolver.processArrayBoundsEdge(v); };
  stack.Push();
  for (const CStep& step : {list, play, display, colours, prec, integers, bounds, point}) {
    ExpectTokenFaults(R"([1, "@"])", step);
    ExpectState(R"j(["$(number)", "$(broken)"])j", step, hostError, R"j([7,"$(broken)"])j");
  }
  ExpectTokenFaults(R"({"a": "@"})", context);
  ExpectTokenFaults(R"([[1, "@"]])", layout);
  ExpectState(R"j({"a": "$(number)", "b": "$(broken)"})j", context, hostError,
              R"j({"a":7,"b":"$(broken)"})j");
  ExpectState(R"j([["$(number)", "$(broken)"]])j", layout, hostError, R"j([[7,"$(broken)"]])j");
  for (const CStep& step : {display, colours}) {
    ExpectLogicError({"[-1]", "[4294967296]", "[1e300]", "[-0.5e9]"}, step);
    ExpectState(R"j(["$(far.real)"])j", step, logicError, "[1.0000000000000001e+300]");
  }
  for (const CStep& step : {prec, integers}) {
    ExpectLogicError({"[2147483648]", "[-2147483649]", "[1e300]"}, step);
    ExpectState(R"j(["$(far.int)"])j", step, logicError, "[5000000000]");
  }
  ExpectLogicError({R"({"a": 1})", "[0, 0, 0, 0, 2147483648]"}, bounds);
  ExpectState(R"j(["$(far.int)"])j", bounds, logicError, "[5000000000]");
  ExpectState(R"j([["$(far.int)"]])j", layout, logicError, "[[5000000000]]");
  EXPECT_EQ(stack.frames().back().context, Json::Value(Json::objectValue));
  EXPECT_EQ(stack.frames().back().bounds, Json::Value(Json::arrayValue));
}

TEST_F(DocumentedExceptions, ProcessBoundsEdgeProcessBoundsSize) {
  const CStep edge = [&](Json::Value& v) { resolver.processBoundsEdge(v, 10, 100); };
  const CStep size = [&](Json::Value& v) { resolver.processBoundsSize(v, 10, 100); };
  for (const CStep& step : {edge, size}) {
    ExpectTokenFaults(R"("@")", step);
    ExpectState(R"j("$(broken)")j", step, hostError, R"j("$(broken)")j");
    ExpectState(R"j("$(far.int)")j", step, logicError, "5000000000");
  }
}

TEST_F(DocumentedExceptions, ProcessValue) {
  const CStep step = [&](Json::Value& v) { resolver.processValue(v); };
  ExpectTokenFaults(R"("@")", step);
  ExpectState(R"j("$(number)$(broken)")j", step, hostError, R"j("$(number)$(broken)")j");
}

TEST_F(DocumentedExceptions, GetValueProcessedGetVarNameExpressionGetLoopRange) {
  const CStep value = [&](Json::Value& v) { resolver.getValueProcessed(v, "a"); };
  const CStep name = [&](Json::Value& v) { resolver.getVarNameAsString(v, "a"); };
  const CStep expression = [&](Json::Value& v) { resolver.processContentsIfExpressionGet(v); };
  const CStep range = [&](Json::Value& v) { resolver.loopElementGetRange(v, {}); };
  const std::vector<std::string> wrong = {"5", "true", R"("text")", "[]", "[1]"};
  for (const CStep& step : {value, name, expression, range}) ExpectLogicError(wrong, step);
  ExpectTokenFaults(R"({"a": "@"})", value);
  ExpectTokenFaults(R"({"Condition": "@"})", expression);
  ExpectTokenFaults(R"({"Condition": 1, "<": "@"})", expression);
  for (const char* member : {"Start", "Stop", "Offset", "Size"}) {
    const std::string object = std::string("{\"") + member + "\": ";
    ExpectTokenFaults(object + "\"@\"}", range);
    ExpectLogicError({object + "2147483648}", object + "-1e300}"}, range);
  }
  ExpectState(R"j({"Condition": "$(broken)"})j", expression, hostError,
              R"j({"Condition":"$(broken)"})j");
  for (const char* text : {R"j("$(broken)")j", "null", "5", "[]", "{}"}) {
    Json::Value object;
    object["a"] = Parse(text);
    EXPECT_EQ(Thrown([&] { resolver.getVarNameAsString(object, "a"); }), nothing) << text;
  }
}

TEST_F(DocumentedExceptions, ProcessContentsIfExpressionEval) {
  CTemplateResolver::CExpression expression;
  expression.op = CTemplateResolver::opTruth;
  expression.condition = Json::Int64{2147483648};
  EXPECT_EQ(Thrown([&] { resolver.processContentsIfExpressionEval(expression); }), logicError);
  for (const auto op : {CTemplateResolver::opIntEqual, CTemplateResolver::opIntNotEqual,
                        CTemplateResolver::opIntLess, CTemplateResolver::opIntGreater}) {
    expression = {op, "0x10", 1e300};
    EXPECT_EQ(Thrown([&] { resolver.processContentsIfExpressionEval(expression); }), logicError);
    EXPECT_EQ(expression.condition, Json::Value(16));
    EXPECT_EQ(expression.operand, Json::Value(1e300));
  }
  for (const auto op : {CTemplateResolver::opEquals, CTemplateResolver::opNotEquals}) {
    for (const Json::Value& value : Zoo()) {
      expression = {op, value, value};
      EXPECT_EQ(Thrown([&] { resolver.processContentsIfExpressionEval(expression); }), nothing);
    }
  }
}

// --- CTokenResolver ---

TEST_F(DocumentedExceptions, SetHandlersFindIsResolvableContainsTokenSubstrings) {
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 20));
    EXPECT_EQ(Thrown([&] { tokens.find(CParsedToken(text).nameParts); }), nothing);
    EXPECT_EQ(Thrown([&] { tokens.find({text, "", text}); }), nothing);
    for (const std::string& token : {text, "$(" + text + ")", "At $(word" + text + ")."}) {
      EXPECT_EQ(Thrown([&] { tokens.IsResolvable(token); }), nothing);
      EXPECT_EQ(Thrown([&] { tokens.ContainsTokenSubstrings(token); }), nothing);
    }
    EXPECT_EQ(Thrown([&] { tokens.Set(text, tokens.handlers().begin()->second); }), nothing);
    EXPECT_EQ(Thrown([&] { tokens.find({text, "", text}); }), nothing);
  }
  EXPECT_EQ(Thrown([&] { tokens.find({}); }), nothing);
  for (const Json::Value& value : Zoo()) {
    EXPECT_EQ(Thrown([&] { tokens.IsResolvable(value); }), nothing);
    EXPECT_EQ(Thrown([&] { tokens.ContainsTokenSubstrings(value); }), nothing);
  }
}

TEST_F(DocumentedExceptions, GetTokenValueSubstituteTokenValues) {
  const CStep step = [&](Json::Value& v) { tokens.SubstituteTokenValues(v); };
  ExpectTokenFaults(R"("@")", step);
  for (const CTokenFault& fault : tokenFaults) {
    Json::Value value = "$(number) " + fault.text;
    EXPECT_EQ(Thrown([&] { step(value); }), fault.thrown);
    EXPECT_EQ(value, Json::Value("$(number) " + fault.text));
    const std::size_t start = fault.text.find("$(") + 2;
    const std::string body = fault.text.substr(start, fault.text.find(')') - start);
    EXPECT_EQ(Thrown([&] { tokens.GetTokenValue(body); }), fault.thrown) << body;
  }
  for (Json::Value& value : Zoo()) {
    if (value != Json::Value("$(broken)")) {
      EXPECT_EQ(Thrown([&] { step(value); }), nothing);
    }
  }
}

TEST_F(DocumentedExceptions, GetTokenElement) {
  EXPECT_EQ(Thrown([&] { tokens.getTokenElement({"far", "int"}); }), logicError);
  EXPECT_EQ(Thrown([&] { tokens.getTokenElement({"far", "real"}); }), logicError);
  EXPECT_EQ(Thrown([&] { tokens.getTokenElement({"broken", "x"}); }), hostError);
  for (const std::string& text : texts) {
    EXPECT_EQ(Thrown([&] { tokens.getTokenElement({text}); }), nothing);
    EXPECT_EQ(Thrown([&] { tokens.getTokenElement({text, text}); }), nothing);
  }
}

TEST_F(DocumentedExceptions, ConvertToTruthValueConvertToIntCoerceToInt) {
  const std::vector<std::string> outside = {"2147483648", "-2147483649", "18446744073709551615",
                                            "2147483648.0", "-1e300"};
  ExpectLogicError(outside, CTokenResolver::ConvertToTruthValue);
  ExpectLogicError(outside, CTokenResolver::ConvertToInt);
  ExpectLogicError(outside, CTokenResolver::CoerceToInt);
  for (const Json::Value& value : Zoo()) {
    const std::string expected =
        value.isDouble() && !value.isInt() && value != Json::Value(-0.5) ? logicError : nothing;
    for (const auto convert : {CTokenResolver::ConvertToTruthValue, CTokenResolver::ConvertToInt,
                               CTokenResolver::CoerceToInt}) {
      Json::Value converted = value;
      EXPECT_EQ(Thrown([&] { convert(converted); }), expected) << value;
    }
  }
}

TEST_F(DocumentedExceptions, CoerceToColour) {
  ExpectLogicError({"-1", "4294967296", "-1.0", "4294967296.0", "1e300"},
                   CTokenResolver::CoerceToColour);
  for (const std::string& text : texts) {
    Json::Value value = "#" + text;
    EXPECT_EQ(Thrown([&] { CTokenResolver::CoerceToColour(value); }), nothing);
  }
  for (const char* text : {"null", "false", "4294967295", "4294967295.0", "[]", "{}", "\"-1\""}) {
    Json::Value value = Parse(text);
    EXPECT_EQ(Thrown([&] { CTokenResolver::CoerceToColour(value); }), nothing) << text;
  }
}

TEST_F(DocumentedExceptions, ConvertToStringConvertToArray) {
  for (const Json::Value& value : Zoo()) {
    for (const auto convert : {CTokenResolver::ConvertToString, CTokenResolver::ConvertToArray}) {
      Json::Value converted = value;
      EXPECT_EQ(Thrown([&] { convert(converted); }), nothing);
    }
  }
}

TEST_F(DocumentedExceptions, EvaluateExpression) {
  const struct {
    const char *left, *right, *after;
    std::string thrown;
  } faults[] = {
      {R"("0x10")", "0", "16", divisionByZero},
      {"7.5", "null", "7", divisionByZero},
      {"[1]", "1", "[1]", logicError},
      {R"({"a":1})", "1", R"({"a":1})", logicError},
      {"5000000000", "1", "5000000000", logicError},
      {R"("two")", "1", R"("two")", logicError},
      {R"("12")", R"("1")", "12", logicError},
      {"true", "[]", "1", logicError},
      {"1.5", R"({"a":1})", "1", logicError},
      {R"("3")", "2147483648", "3", logicError},
  };
  for (const auto& fault : faults) {
    const Json::Value right = Parse(fault.right);
    ExpectState(
        fault.left, [&](Json::Value& v) { tokens.evaluateExpression(v, '/', right); }, fault.thrown,
        fault.after);
    if (fault.thrown == divisionByZero) continue;
    for (const char operation : {'+', '-', '*', '?', '\0'}) {
      ExpectState(
          fault.left, [&](Json::Value& v) { tokens.evaluateExpression(v, operation, right); },
          fault.thrown, fault.after);
    }
  }
  Json::Value least = INT_MIN;
  EXPECT_EQ(Thrown([&] { tokens.evaluateExpression(least, '/', -1); }), nothing);
}

// --- The rest ---

TEST_F(DocumentedExceptions, RebuildTokenReserveAt) {
  EXPECT_EQ(Thrown([] { CTokenParts::rebuildToken({"a"}, 2); }), "std::invalid_argument");
  EXPECT_EQ(Thrown([] { CTokenParts::rebuildToken({}, UINT_MAX); }), "std::invalid_argument");
  EXPECT_EQ(Thrown([] { CTokenParts::rebuildToken({"a"}, 1); }), nothing);
  CTokenParts parts = {"a", "b"};
  EXPECT_EQ(Thrown([&] { parts.reserve(std::vector<std::string>().max_size() + 1); }),
            "std::length_error");
  EXPECT_EQ(Thrown([&] { parts.at(2); }), "std::out_of_range");
  EXPECT_EQ(Thrown([&] { parts.at(1); }), nothing);
  EXPECT_EQ(CTokenParts::rebuildToken(parts, 2), "a.b");
}

TEST_F(DocumentedExceptions, CParsedTokenCTemplateStackTimeFunctionsRegexMatchToString) {
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 20));
    EXPECT_EQ(Thrown([&] { const CParsedToken token(text); }), nothing);
    EXPECT_EQ(Thrown([&] { regexMatch("some text", text.c_str()); }), nothing);
    EXPECT_EQ(Thrown([&] { regexMatch(text.c_str(), "(.+\\.(png|jpg))$"); }), nothing);
    for (const long long seconds : {LLONG_MIN, -1LL, 0LL, LLONG_MAX}) {
      EXPECT_EQ(Thrown([&] { tf::formatTimeLocal(seconds, text, text); }), nothing);
      EXPECT_EQ(Thrown([&] { tf::formatTimeUTC(seconds, text, text); }), nothing);
      EXPECT_EQ(Thrown([&] { tf::formatTimeRemaining(seconds, text); }), nothing);
    }
    tm broken{};
    broken.tm_year = INT_MAX;
    broken.tm_mon = broken.tm_wday = -1;
    EXPECT_EQ(Thrown([&] { tf::formatTimeBroken(&broken, text, "%A %B %c" + text); }), nothing);
  }
  CTemplateStack empty;
  for (const Json::Value& value : Zoo()) {
    EXPECT_EQ(Thrown([&] { jsoncpp_string::toString(value); }), nothing);
    for (CTemplateStack* each : {&empty, &stack}) {
      Json::Value spare = value;
      EXPECT_EQ(Thrown([&] { each->ContextSet(value); }), nothing);
      EXPECT_EQ(Thrown([&] { each->ContextSwap(spare); }), nothing);
      spare = value;
      EXPECT_EQ(Thrown([&] { each->BoundsSet(value); }), nothing);
      EXPECT_EQ(Thrown([&] { each->BoundsSwap(spare); }), nothing);
    }
    EXPECT_EQ(Thrown([&] { stack.Push({value, value}); }), nothing);
    EXPECT_EQ(Thrown([&] { stack.boundsFind(); }), nothing);
  }
  EXPECT_EQ(Thrown([&] { empty.Pop(), empty.boundsFind(), empty.Clear(); }), nothing);
}

TEST_F(DocumentedExceptions, ToJsonObject) {
  std::string errors = "kept";
  EXPECT_EQ(Thrown([&] { jsoncpp_string::toJsonObject(Nested(1001), &errors); }), runtimeError);
  EXPECT_EQ(errors, "kept");
  EXPECT_EQ(Thrown([&] { jsoncpp_string::toJsonObject(Nested(1000), &errors); }), nothing);
  EXPECT_EQ(Thrown([&] { jsoncpp_string::toJsonObject(std::string(999, '['), &errors); }), nothing);
  for (const std::string& text : texts) {
    EXPECT_EQ(Thrown([&] { jsoncpp_string::toJsonObject("\"" + text, &errors); }), nothing);
    EXPECT_EQ(Thrown([&] { jsoncpp_string::toJsonObject("/*" + text, &errors); }), nothing);
  }
}

TEST_F(DocumentedExceptions, CJsonWriter) {
  const jsoncpp_string::CJsonWriter writer;
  EXPECT_EQ(Thrown([&] { delete writer.newStreamWriter(); }), nothing);
  jsoncpp_string::CJsonWriter changed;
  changed["commentStyle"] = "Some";
  EXPECT_EQ(Thrown([&] { changed.newStreamWriter(); }), runtimeError);
  changed["commentStyle"] = Json::Value(Json::arrayValue);
  EXPECT_EQ(Thrown([&] { changed.newStreamWriter(); }), logicError);
}

TEST_F(DocumentedExceptions, ITokenHandler) {
  const CThrowingHandler throwing;
  EXPECT_EQ(Thrown([&] { throwing.GetValue(CParsedToken("a")); }), hostError);
  for (const Json::Value& index : Zoo()) {
    EXPECT_EQ(Thrown([&] { throwing.GetIndexedValue(CParsedToken("a"), index); }), nothing);
  }
}

TEST_F(DocumentedExceptions, CJsonHandlerCContextHandlerGetIndexedValue) {
  const CJsonHandler json(Parse("[1, 2]"));
  stack.ContextSet(Parse(R"({"row": [1, 2]})"));
  const CContextHandler context(&stack);
  for (const char* index : {R"("0")", "[]", "{}", "2147483648", "1e300"}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(Thrown([&] { json.GetIndexedValue(CParsedToken("a"), Parse(index)); }), logicError);
    EXPECT_EQ(Thrown([&] { context.GetIndexedValue(CParsedToken("a.row"), Parse(index)); }),
              logicError);
  }
  for (const Json::Value& index : {Json::Value(INT_MIN), Json::Value(INT_MAX), Json::Value()}) {
    EXPECT_EQ(Thrown([&] { json.GetIndexedValue(CParsedToken("a"), index); }), nothing);
    EXPECT_EQ(Thrown([&] { context.GetIndexedValue(CParsedToken("a.row"), index); }), nothing);
  }
}

TEST_F(DocumentedExceptions, CContextHandlerWithAFrameOfTheHost) {
  const CContextHandler context(&stack);
  stack.Push({Json::Value(Json::arrayValue), Json::Value(Json::arrayValue)});
  EXPECT_EQ(Thrown([&] { context.GetPartsValue({"a", "row"}); }), logicError);
  EXPECT_EQ(Thrown([&] { context.GetValue(CParsedToken("a.row")); }), logicError);
  EXPECT_EQ(Thrown([&] { context.GetIndexedValue(CParsedToken("a.row[0]"), 0); }), logicError);
}

TEST_F(DocumentedExceptions, CJsonHandlerCContextHandlerCClockHandler) {
  const CContextHandler context(&stack);
  const CContextHandler variables(&stack, 100);
  CClockHandler clock("\xFF");
  for (const Json::Value& value : Zoo()) {
    CJsonHandler json(value, value.isNull() ? 100 : 0);
    EXPECT_EQ(Thrown([&] { json.SetValue(value); }), nothing);
    for (const std::string& text : texts) {
      const CParsedToken token(text);
      for (const ITokenHandler* handler :
           {static_cast<const ITokenHandler*>(&json), static_cast<const ITokenHandler*>(&context),
            static_cast<const ITokenHandler*>(&variables)}) {
        EXPECT_EQ(Thrown([&] { handler->GetValue(token); }), nothing);
        EXPECT_EQ(Thrown([&] { handler->GetPartsValue({text, text}); }), nothing);
      }
    }
  }
  for (const std::string& text : texts) {
    for (const long long seconds : {LLONG_MIN, 0LL, LLONG_MAX}) {
      clock.SetTime(seconds);
      EXPECT_EQ(Thrown([&] { clock.GetValue(CParsedToken("clock:" + text)); }), nothing);
      EXPECT_EQ(Thrown([&] { clock.GetIndexedValue(CParsedToken(text), text); }), nothing);
      EXPECT_EQ(Thrown([&] { clock.GetPartsValue({text}); }), nothing);
    }
  }
}

// --- Below the table ---

TEST_F(DocumentedExceptions, StdCerrThatTheHostSetsToThrow) {
  class CFull : public std::streambuf {
  } full;
  std::streambuf* previous = std::cerr.rdbuf(&full);
  std::cerr.exceptions(std::ios::badbit);
  EXPECT_THROW(resolver.Input("5"), std::ios_base::failure);
  std::cerr.exceptions(std::ios::goodbit);
  std::cerr.rdbuf(previous);
}

}  // namespace
