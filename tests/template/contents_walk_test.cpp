#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

/// Answers what the host sees of the stack: `$(stack.size)`, `$(stack.context)` and
/// `$(stack.bounds)` of the top frame; `$(stack.clear)` empties it.
class CStackHandler : public ITokenHandler {
 public:
  explicit CStackHandler(CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    if (parts[1] == "size") return Json::Value(static_cast<int>(m_stack->frames().size()));
    if (parts[1] == "context") return m_stack->frames().back().context;
    if (parts[1] == "bounds") return m_stack->frames().back().bounds;
    if (parts[1] == "clear") m_stack->Clear();
    return Json::Value();
  }

 private:
  CTemplateStack* m_stack;
};

class ContentsWalk : public ResolverTest {
 protected:
  /// The resolved form of `entry`, standing alone in a top-level "Contents".
  std::string ResolveEntry(const std::string& entry) {
    const std::string page = Resolve(R"({"Contents":[)" + entry + "]}");
    return page.substr(13, page.size() - 15);
  }
};

// --- Documents and pages ---

TEST_F(ContentsWalk, PageWinsOverContents) {
  Handle("volume", "7");
  EXPECT_EQ(Resolve(R"j({"Contents":["$(volume)","A.PNG"],"Page":{"Contents":["$(volume)"]}})j"),
            R"j({"Contents":["$(volume)","A.PNG"],"Page":{"Contents":[7]}})j");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, PageWithoutContentsWinsAllTheSame) {
  for (const char* page : {"null", "{}", R"j({"Name":"$(volume)"})j"}) {
    SCOPED_TRACE(page);
    const std::string text = R"j({"Contents":["$(volume)"],"Page":)j" + std::string(page) + "}";
    EXPECT_EQ(Resolve(text), text);
    EXPECT_EQ(Errors(), "CTemplateResolver::processPageValue: Page must have Contents member.\n");
  }
}

TEST_F(ContentsWalk, DocumentWithoutPageAndContentsIsReported) {
  for (const char* text : {"{}", R"j({"contents":["$(volume)"]})j", R"j({"Name":"$(volume)"})j"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Resolve(text), text);
    EXPECT_EQ(Errors(),
              "CTemplateResolver::Process: render template must have Page or Contents member.\n");
  }
}

TEST_F(ContentsWalk, DocumentsAreWalkedWithTheirOwnMessages) {
  Json::Value document = Parse(R"({"Contents": ["A.PNG"]})");
  resolver.process(document);
  EXPECT_EQ(document, Parse(R"({"Contents": ["a.png"]})"));
  EXPECT_EQ(Errors(), "");

  Json::Value null;
  resolver.process(null);
  EXPECT_EQ(null, Json::Value());
  EXPECT_EQ(Errors(),
            "CTemplateResolver::Process: render template must have Page or Contents member.\n");
}

TEST_F(ContentsWalk, DocumentThatIsArrayOrScalarThrows) {
  for (const char* text : {"[]", R"(["Page"])", "5", "2.5", "true", R"("Page")"}) {
    SCOPED_TRACE(text);
    Json::Value document = Parse(text);
    EXPECT_THROW(resolver.process(document), Json::LogicError);
    EXPECT_EQ(document, Parse(text));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, PageThatIsArrayOrScalarThrows) {
  for (const char* text : {"[]", R"(["Contents"])", "5", "2.5", "true", R"("Contents")"}) {
    SCOPED_TRACE(text);
    Json::Value page = Parse(text);
    EXPECT_THROW(resolver.processPageValue(page), Json::LogicError);
    EXPECT_EQ(page, Parse(text));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, PageIsWalkedOutsideAnyContainerAndFrame) {
  CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(Resolve(R"j({"Page":{"Contents":["$(stack.size)",{"RenderType":3}],"Name":"$(x)"}})j"),
            R"j({"Page":{"Contents":[1,{"RenderType":3}],"Name":"$(x)"}})j");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, PageContentsThatAreNoArrayAreReported) {
  const std::string text = R"({"Page":{"Contents":{"RenderType":1024}}})";
  EXPECT_EQ(Resolve(text), text);
  EXPECT_EQ(Errors(),
            "CTemplateResolver::processContentsArray: Contents member must be an array.\n");
}

// --- Contents arrays and their entries ---

TEST_F(ContentsWalk, ContentsThatAreNoArrayAreReportedAndKept) {
  for (const char* contents : {R"({"RenderType":1024,"Contents":["A.PNG"]})",
                               R"({"a":"A.PNG","b":{"Contents":["B.PNG"]}})", "{}", "null", "5",
                               "2.5", "true", R"("$(volume).PNG")"}) {
    SCOPED_TRACE(contents);
    Json::Value value = Parse(contents);
    resolver.processContentsArray(value, 0);
    EXPECT_EQ(value, Parse(contents));
    EXPECT_EQ(Errors(),
              "CTemplateResolver::processContentsArray: Contents member must be an array.\n");
  }
}

TEST_F(ContentsWalk, WalkGoesOnAfterContentsThatAreNoArray) {
  EXPECT_EQ(Resolve(R"({"Contents":[{"Contents":{"a":1}},{"Contents":null},"B.PNG"]})"),
            R"({"Contents":[{"Contents":{"a":1}},{"Contents":null},"b.png"]})");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::processContentsArray: Contents member must be an array.\n"
            "CTemplateResolver::processContentsArray: Contents member must be an array.\n");
}

TEST_F(ContentsWalk, EmptyContentsAreFine) {
  EXPECT_EQ(Resolve(R"({"Contents":[]})"), R"({"Contents":[]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, StringEntriesAreSubstitutedThenLowercased) {
  Handle("volume", "7");
  Handle("list", R"(["A.PNG", "B.PNG"])");
  Handle("logo", R"("Images/Logo")");
  Handle("file", R"("Images/Logo.PNG")");
  const struct {
    const char* entry;
    const char* resolved;
  } cases[] = {
      {R"("plain Text")", R"("plain Text")"},     {R"j("$(volume)")j", "7"},
      {R"j("Vol $(volume)")j", R"("Vol 7")"},     {R"("Images/Logo.PNG")", R"("images/logo.png")"},
      {R"j("$(file)")j", R"("images/logo.png")"}, {R"("$(logo).Ttf")", R"("images/logo.ttf")"},
      {R"j("$(logo)")j", R"("Images/Logo")"},     {R"j("$(list)")j", R"(["A.PNG","B.PNG"])"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.entry);
    EXPECT_EQ(ResolveEntry(c.entry), c.resolved);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, EntryWithoutHandlerBecomesNull) {
  EXPECT_EQ(Resolve(R"j({"Contents":["$(nobody)","x$(nobody)"]})j"), R"({"Contents":[null,"x"]})");
  EXPECT_EQ(Errors(),
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n"
            "CTokenResolver::GetTokenValue: no token handler for: nobody.\n");
}

TEST_F(ContentsWalk, OtherEntriesAreLeftAsTheyAre) {
  const char* entries[] = {
      "5",
      "-5",
      "2.5",
      "5.0",
      "true",
      "null",
      "[]",
      R"j(["$(volume)","A.PNG"])j",
      R"([{"RenderType":1024,"Contents":["A.PNG"]}])",
  };
  for (const std::string entry : entries) {
    SCOPED_TRACE(entry);
    Json::Value contents = Parse("[" + entry + "]");
    resolver.processContentsArray(contents, 3);
    EXPECT_EQ(contents, Parse("[" + entry + "]"));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, ElementDeliveredByAHandlerIsNotWalked) {
  Handle("element", R"({"RenderType": 1024, "Contents": ["A.PNG"]})");
  EXPECT_EQ(ResolveEntry(R"j("$(element)")j"), R"({"Contents":["A.PNG"],"RenderType":1024})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, HandlersAreAskedInTheOrderOfTheWalk) {
  const CTableHandler& handler = Handle("h", R"({"a":1,"b":2,"c":3,"d":4,"e":5})");
  EXPECT_EQ(Resolve(R"j({"Contents":["$(h.a)",{"Contents":["$(h.c)",{"RenderType":"$(h.d)"}],)j"
                    R"j("RenderType":"$(h.b)"},"$(h.e)"]})j"),
            R"({"Contents":[1,{"Contents":[3,{"RenderType":4}],"RenderType":2},5]})");
  EXPECT_EQ(handler.calls(),
            (std::vector<std::string>{"GetValue h.a", "GetValue h.b", "GetValue h.c",
                                      "GetValue h.d", "GetValue h.e"}));
  EXPECT_EQ(Errors(), "");
}

// --- Frames ---

TEST_F(ContentsWalk, EachElementGetsAFrameWhileItIsProcessed) {
  CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":["$(stack.size)",{"RenderType":"$(stack.size)","Contents":[)j"
                    R"j("$(stack.size)",{"Contents":["$(stack.size)"]},"$(stack.size)"]},)j"
                    R"j({"Contents":["$(stack.size)"]},"$(stack.size)"]})j"),
            R"({"Contents":[1,{"Contents":[2,{"Contents":[3]},2],"RenderType":2},)"
            R"({"Contents":[2]},1]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, FrameOfAnElementIsFresh) {
  CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":["$(stack.bounds)",)j"
                    R"j({"Contents":["$(stack.context)","$(stack.bounds)"]}]})j"),
            R"({"Contents":[[0,0,1280,720,null,null],{"Contents":[{},[]]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, PopOfAStackThatTheHostEmptiedIsReported) {
  CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":[{"Contents":["$(stack.clear)"]},"A.PNG"]})j"),
            R"({"Contents":[{"Contents":[null]},"a.png"]})");
  EXPECT_EQ(Errors(), "CTemplateStack::Pop: preconditions.\n");
}

TEST_F(ContentsWalk, ExceptionLeavesTheFramesAndWhatIsResolved) {
  CThrowingHandler handler;
  tokens.Set("host", &handler);
  const struct {
    const char* text;
    const char* left;
    std::size_t frames;
  } cases[] = {
      {R"j({"Contents":["A.PNG","$(host)","B.PNG"]})j",
       R"j({"Contents":["a.png","$(host)","B.PNG"]})j", 1},
      {R"j({"Contents":["x $(host)"]})j", R"j({"Contents":["x $(host)"]})j", 1},
      {R"j({"Contents":[{"Contents":["A.PNG"],"RenderType":"$(host)"}]})j",
       R"j({"Contents":[{"Contents":["A.PNG"],"RenderType":"$(host)"}]})j", 2},
      {R"j({"Page":{"Contents":[{"Contents":["A.PNG",{"Contents":["$(host)"]}]}]}})j",
       R"j({"Page":{"Contents":[{"Contents":["a.png",{"Contents":["$(host)"]}]}]}})j", 3},
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
}

TEST_F(ContentsWalk, DivisionByZeroPassesThrough) {
  Handle("volume", "7");
  resolver.Input(R"j({"Contents":[{"RenderType":"$(volume/0)"}]})j");
  try {
    resolver.Process();
    FAIL() << "nothing thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
  }
  EXPECT_EQ(resolver.Output(), R"j({"Contents":[{"RenderType":"$(volume/0)"}]})j");
  EXPECT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(Errors(), "");
}

// --- Element objects ---

TEST_F(ContentsWalk, ElementThatIsNoObjectIsReportedAndKept) {
  for (const char* text : {"[]", R"(["A.PNG"])", "null", "5", "2.5", "true", R"j("$(volume)")j"}) {
    SCOPED_TRACE(text);
    Json::Value element = Parse(text);
    resolver.processContentsObject(element, 1);
    EXPECT_EQ(element, Parse(text));
    EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: JSON value not an object.\n");
  }
}

TEST_F(ContentsWalk, OtherMembersAreLeftUntouched) {
  const char* elements[] = {
      "{}",
      R"j({"File":"A.PNG","Name":"$(volume)"})j",
      R"({"Elements":[{"RenderType":1024}],"contents":["A.PNG"]})",
      R"({"Page":{"Contents":["A.PNG"]}})",
      R"({"Container":7})",
      R"j({"Frame":{"Id":9,"Name":"$(volume)"}})j",
      R"({"Container":7,"Frame":"A.PNG","RenderType":5})",
  };
  for (const char* element : elements) {
    SCOPED_TRACE(element);
    EXPECT_EQ(ResolveEntry(element), element);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, RenderTypeIsSubstitutedInPlace) {
  Handle("type", R"({"int": 5, "real": 5.0, "text": "5", "list": [5]})");
  const struct {
    const char* renderType;
    const char* resolved;
  } cases[] = {
      {R"j("$(type.int)")j", "5"},
      {R"j("$(type.real)")j", "5.0"},
      {R"j("$(type.text)")j", R"("5")"},
      {R"j("$(type.list)")j", "[5]"},
      {R"j("$(type.missing)")j", "null"},
      {R"("$(type.int)0")", R"("50")"},
      {R"j(["$(type.int)"])j", R"j(["$(type.int)"])j"},
      {R"("A.PNG")", R"("A.PNG")"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.renderType);
    EXPECT_EQ(ResolveEntry(R"({"RenderType":)" + std::string(c.renderType) + "}"),
              R"({"RenderType":)" + std::string(c.resolved) + "}");
    EXPECT_EQ(Errors(), "");
  }
}

// --- Kinds of elements ---

TEST_F(ContentsWalk, KindsHaveFixedNumbers) {
  EXPECT_EQ(static_cast<int>(CTemplateResolver::elementNone), 0);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::elementPlain), 1);
  EXPECT_EQ(static_cast<int>(CTemplateResolver::elementContainer), 2);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, KindFollowsTheOrderingOfJsonValues) {
  constexpr auto none = CTemplateResolver::elementNone;
  constexpr auto plain = CTemplateResolver::elementPlain;
  constexpr auto container = CTemplateResolver::elementContainer;
  const struct {
    Json::Value renderType;
    CTemplateResolver::eElementType kind;
  } cases[] = {
      {1024, container},
      {Json::Value(Json::Int64{1024}), container},
      {1, plain},
      {1023, plain},
      {1025, plain},
      {std::numeric_limits<int>::max(), plain},
      {0, none},
      {-1, none},
      {-1024, none},
      {std::numeric_limits<int>::min(), none},
      // Every uint and real stands above every int, and equals none.
      {1024U, plain},
      {0U, plain},
      {1024.0, plain},
      {0.0, plain},
      {-5.0, plain},
      // No ints.
      {1024.5, none},
      {Json::Value(Json::Int64{2147483648}), none},
      {3000000000U, none},
      {3e9, none},
      {"1024", none},
      {"", none},
      {true, none},
      {Json::Value(), none},
      {Parse("[1024]"), none},
      {Parse("{}"), none},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.renderType.toStyledString() + std::to_string(c.renderType.type()));
    EXPECT_EQ(resolver.getElementType(c.renderType), c.kind);
    EXPECT_EQ(Errors(), "");
  }
}

/// The kind by JsonCpp's own comparisons.
CTemplateResolver::eElementType KindByComparison(const Json::Value& renderType) {
  if (!renderType.isInt()) return CTemplateResolver::elementNone;
  if (!(renderType > Json::Value(0))) return CTemplateResolver::elementNone;
  return renderType == Json::Value(1024) ? CTemplateResolver::elementContainer
                                         : CTemplateResolver::elementPlain;
}

/// `number` in every JSON type that can hold it, and the reals beside it.
std::vector<Json::Value> InEveryType(std::int64_t number) {
  const auto real = static_cast<double>(number);
  std::vector<Json::Value> values = {Json::Value(Json::Int64{number}), real, real + 0.5,
                                     real - 0.5};
  if (number >= 0) values.emplace_back(Json::UInt64(number));
  return values;
}

// Most values take a short cut; JsonCpp's comparisons decide what is right.
TEST_F(ContentsWalk, KindIsThatOfJsonCppsComparisons) {
  std::vector<Json::Value> values = {true,
                                     false,
                                     Json::Value(),
                                     "",
                                     "1024",
                                     "a",
                                     Parse("[]"),
                                     Parse("[1024]"),
                                     Parse("{}"),
                                     Parse(R"({"a": 1024})"),
                                     -0.0,
                                     1e300,
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::quiet_NaN(),
                                     Json::Value(std::numeric_limits<Json::UInt64>::max())};
  const auto add = [&values](std::int64_t number) {
    for (const Json::Value& value : InEveryType(number)) values.push_back(value);
  };
  constexpr std::int64_t smallest32 = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t greatest32 = std::numeric_limits<std::int32_t>::max();
  constexpr std::int64_t unsigned32 = std::numeric_limits<std::uint32_t>::max();
  for (const std::int64_t number :
       {std::int64_t{0}, std::int64_t{1}, std::int64_t{1024}, smallest32, greatest32, unsigned32}) {
    for (const std::int64_t beside : {-1, 0, 1}) add(number + beside);
    for (const std::int64_t beside : {-1, 0, 1}) add(-number + beside);
  }
  add(std::numeric_limits<std::int64_t>::min());
  add(std::numeric_limits<std::int64_t>::max());
  std::mt19937 random(1);
  for (int i = 0; i < 1000; ++i) {
    add(static_cast<std::int32_t>(random()));
    add(static_cast<std::int64_t>(random() % 2100) - 50);
  }
  int kinds[3] = {0, 0, 0};
  for (const Json::Value& value : values) {
    SCOPED_TRACE(::testing::Message() << value << " of type " << value.type());
    const CTemplateResolver::eElementType kind = KindByComparison(value);
    ASSERT_EQ(resolver.getElementType(value), kind);
    ++kinds[kind];
  }
  EXPECT_GT(kinds[CTemplateResolver::elementNone], 1000);
  EXPECT_GT(kinds[CTemplateResolver::elementPlain], 1000);
  EXPECT_GT(kinds[CTemplateResolver::elementContainer], 0);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, RenderTypeFromTokenCountsWithItsJsonType) {
  const std::string nested =
      "CTemplateResolver::processContentsObject: Nested containers unsupported.\n";
  const struct {
    Json::Value value;
    std::string token;
    std::string resolved;  // the element, inside container 1
    std::string errors;
  } cases[] = {
      {7, "$(type)", R"({"Container":1,"RenderType":7})", ""},
      {0, "$(type)", R"({"RenderType":0})", ""},
      {-5, "$(type)", R"({"RenderType":-5})", ""},
      {1024, "$(type)", R"({"RenderType":1024})", nested},
      {1024U, "$(type)", R"({"Container":1,"RenderType":1024})", ""},
      {0U, "$(type)", R"({"Container":1,"RenderType":0})", ""},
      {1024.0, "$(type)", R"({"Container":1,"RenderType":1024.0})", ""},
      {-5.0, "$(type)", R"({"Container":1,"RenderType":-5.0})", ""},
      {2.5, "$(type)", R"({"RenderType":2.5})", ""},
      {"1024", "$(type)", R"({"RenderType":"1024"})", ""},
      {10, "$(type)24", R"({"RenderType":"1024"})", ""},
      // A count is a uint, arithmetic gives an int.
      {Parse("[]"), "$(type#)", R"({"Container":1,"RenderType":0})", ""},
      {Parse("[]"), "$(type#+0)", R"({"RenderType":0})", ""},
      {1024U, "$(type+0)", R"({"RenderType":1024})", nested},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.token + " is " + c.resolved);
    const CTableHandler handler(c.value);
    tokens.Set("type", &handler);
    EXPECT_EQ(
        ResolveEntry(R"({"Contents":[{"RenderType":")" + c.token + R"("}],"RenderType":1024})"),
        R"({"Contents":[)" + c.resolved + R"(],"Frame":{"Id":1},"RenderType":1024})");
    EXPECT_EQ(Errors(), c.errors);
  }
}

TEST_F(ContentsWalk, RenderTypeWithoutHandlerGivesNoContainment) {
  EXPECT_EQ(ResolveEntry(R"j({"Contents":[{"RenderType":"$(nobody)"}],"RenderType":1024})j"),
            R"({"Contents":[{"RenderType":null}],"Frame":{"Id":1},"RenderType":1024})");
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: no token handler for: nobody.\n");
}

// --- Containers ---

TEST_F(ContentsWalk, NextContainerIdCountsFromOne) {
  EXPECT_EQ(resolver.nextContainerID(), 1);
  EXPECT_EQ(resolver.nextContainerID(), 2);
  EXPECT_EQ(resolver.nextContainerID(), 3);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, ContainmentFollowsKindAndEnclosingContainer) {
  constexpr auto none = CTemplateResolver::elementNone;
  constexpr auto plain = CTemplateResolver::elementPlain;
  constexpr auto container = CTemplateResolver::elementContainer;
  const char nested[] =
      "CTemplateResolver::processContentsObject: Nested containers unsupported.\n";
  const struct {
    CTemplateResolver::eElementType kind;
    int enclosing;
    int inner;
    const char* element;
    const char* errors;
  } cases[] = {
      {none, 0, 0, "{}", ""},
      {none, 7, 7, "{}", ""},
      {none, -1, -1, "{}", ""},
      {plain, 0, 0, "{}", ""},
      {plain, 7, 7, R"({"Container": 7})", ""},
      {plain, -1, -1, "{}", ""},
      {container, 7, 7, "{}", nested},
      {container, -1, -1, "{}", nested},
      {container, 0, 1, R"({"Frame": {"Id": 1}})", ""},
      {container, 0, 2, R"({"Frame": {"Id": 2}})", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.kind << " in " << c.enclosing);
    Json::Value element(Json::objectValue);
    EXPECT_EQ(resolver.processContainment(element, c.kind, c.enclosing), c.inner);
    EXPECT_EQ(element, Parse(c.element));
    EXPECT_EQ(Errors(), c.errors);
  }
}

TEST_F(ContentsWalk, ContainerGetsAnIdAndMarksItsContents) {
  EXPECT_EQ(ResolveEntry(R"({"RenderType":1024,"Contents":[{"RenderType":3}]})"),
            R"({"Contents":[{"Container":1,"RenderType":3}],"Frame":{"Id":1},"RenderType":1024})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, ContainersAreNumberedInTheOrderOfTheWalk) {
  EXPECT_EQ(Resolve(R"({"Contents":[{"RenderType":1024},{"RenderType":5,"Contents":[)"
                    R"({"RenderType":1024,"Contents":[{"RenderType":6}]}]},{"RenderType":1024}]})"),
            R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024},{"Contents":[)"
            R"({"Contents":[{"Container":2,"RenderType":6}],"Frame":{"Id":2},"RenderType":1024}],)"
            R"("RenderType":5},{"Frame":{"Id":3},"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, ContainerReachesThroughElementsOfEveryKind) {
  const std::string member = R"({"Container":1,"RenderType":9})";
  const std::string inner = R"("Contents":[{"RenderType":9}])";
  EXPECT_EQ(ResolveEntry(R"({"RenderType":1024,"Contents":[{)" + inner + "},{" + inner +
                         R"(,"RenderType":0},{)" + inner + R"(,"RenderType":8}]})"),
            R"({"Contents":[{"Contents":[)" + member + R"(]},{"Contents":[)" + member +
                R"(],"RenderType":0},{"Container":1,"Contents":[)" + member +
                R"(],"RenderType":8}],"Frame":{"Id":1},"RenderType":1024})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, ElementAfterAContainerIsNotMarked) {
  EXPECT_EQ(Resolve(R"({"Contents":[{"RenderType":1024},{"RenderType":3}]})"),
            R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024},{"RenderType":3}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, NestedContainerCountsAsPartOfTheOuterOne) {
  EXPECT_EQ(Resolve(R"({"Contents":[{"RenderType":1024,"Contents":[{"RenderType":1024,"Contents":[)"
                    R"({"RenderType":3}]}]},{"RenderType":1024}]})"),
            R"({"Contents":[{"Contents":[{"Contents":[{"Container":1,"RenderType":3}],)"
            R"("RenderType":1024}],"Frame":{"Id":1},"RenderType":1024},)"
            R"({"Frame":{"Id":2},"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: Nested containers unsupported.\n");
}

TEST_F(ContentsWalk, NestedContainerKeepsItsOwnFrame) {
  EXPECT_EQ(
      ResolveEntry(R"({"RenderType":1024,"Contents":[{"RenderType":1024,"Frame":{"Id":9}}]})"),
      R"({"Contents":[{"Frame":{"Id":9},"RenderType":1024}],"Frame":{"Id":1},"RenderType":1024})");
  EXPECT_EQ(Errors(), "CTemplateResolver::processContentsObject: Nested containers unsupported.\n");
}

TEST_F(ContentsWalk, IdIsAddedToAnExistingFrame) {
  const struct {
    const char* frame;
    const char* resolved;
  } cases[] = {
      {R"j({"Name":"$(volume)","Size":[1,2]})j", R"j({"Id":1,"Name":"$(volume)","Size":[1,2]})j"},
      {R"({"Id":"old"})", R"({"Id":1})"},
      {"{}", R"({"Id":1})"},
      {"null", R"({"Id":1})"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.frame);
    EXPECT_EQ(ResolveEntry(R"({"RenderType":1024,"Frame":)" + std::string(c.frame) + "}"),
              R"({"Frame":)" + std::string(c.resolved) + R"(,"RenderType":1024})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, FrameThatCannotHoldAnIdThrows) {
  for (const char* frame : {"[]", "5", "true", R"("text")"}) {
    SCOPED_TRACE(frame);
    const std::string text =
        R"({"Contents":[{"Frame":)" + std::string(frame) + R"(,"RenderType":1024}]})";
    resolver.Input(text);
    EXPECT_THROW(resolver.Process(), Json::LogicError);
    EXPECT_EQ(resolver.Output(), text);
    EXPECT_EQ(stack.frames().size(), 2U);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, MarkReplacesAnExistingContainerMember) {
  EXPECT_EQ(ResolveEntry(R"({"RenderType":1024,"Contents":[{"RenderType":3,"Container":"old"}]})"),
            R"({"Contents":[{"Container":1,"RenderType":3}],"Frame":{"Id":1},"RenderType":1024})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, WalkStartsInTheGivenContainer) {
  Json::Value contents = Parse(R"([{"RenderType": 3, "Contents": [{"RenderType": 4}]}, {}])");
  resolver.processContentsArray(contents, 7);
  EXPECT_EQ(contents, Parse(R"([{"RenderType": 3, "Container": 7,
                                 "Contents": [{"RenderType": 4, "Container": 7}]}, {}])"));
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

}  // namespace
