#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "support/frame_handler.h"
#include "support/frames_handler.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

/// Answers null and pushes a frame.
class CPushingHandler : public ITokenHandler {
 public:
  explicit CPushingHandler(CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    m_stack->Push({Parse(R"({"pushed": 1})"), Parse("[]")});
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

TEST_F(ContentsWalk, ContextOfAPageWithoutContentsIsRecorded) {
  Handle("volume", "7");
  EXPECT_EQ(Resolve(R"j({"Contents":["$(volume)"],"Page":{"Context":{"a":"$(volume)"}}})j"),
            R"j({"Contents":["$(volume)"],"Page":{"Context":{"a":7}}})j");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 7})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(Errors(), "CTemplateResolver::processPageValue: Page must have Contents member.\n");

  // In the frame on top, whichever that is.
  stack.Push();
  Json::Value page = Parse(R"({"Context": {"b": 8}})");
  resolver.processPageValue(page);
  EXPECT_EQ(page, Parse(R"({"Context": {"b": 8}})"));
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 7})"));
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"b": 8})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[]"));
  EXPECT_EQ(Errors(), "CTemplateResolver::processPageValue: Page must have Contents member.\n");
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
  CFrameHandler handler(&stack);
  tokens.Set("frame", &handler);
  EXPECT_EQ(Resolve(R"j({"Page":{"Contents":["$(frame.depth)",{"RenderType":3}],"Name":"$(x)"}})j"),
            R"j({"Page":{"Contents":[1,{"RenderType":3}],"Name":"$(x)"}})j");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, OnlyContextAndContentsOfAPageAreLookedAt) {
  Handle("volume", "7");
  const std::string others =
      R"j("Bounds":[1,"$(volume)"],"Display":["$(volume)"],"RenderType":1024)j";
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  EXPECT_EQ(Resolve(R"j({"Page":{)j" + others + R"j(,"Contents":["$(frames)"]}})j"),
            R"j({"Page":{"Bounds":[1,"$(volume)"],"Contents":[[{"bounds":)j"
            R"j([0,0,1280,720,null,null],"context":{}}]],"Display":["$(volume)"],)j"
            R"j("RenderType":1024}})j");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, OnlyPageAndContentsOfADocumentAreLookedAt) {
  Handle("volume", "7");
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  EXPECT_EQ(Resolve(R"j({"Bounds":[1,"$(volume)"],"Contents":["$(frames)"],)j"
                    R"j("Context":{"a":"$(volume)"},"RenderType":1024})j"),
            R"j({"Bounds":[1,"$(volume)"],"Contents":[[{"bounds":[0,0,1280,720,null,null],)j"
            R"j("context":{}}]],"Context":{"a":"$(volume)"},"RenderType":1024})j");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, PageWithoutContextLeavesTheOneInForce) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  resolver.Input(R"j({"Page":{"Contents":["$(frames)"]}})j");
  stack.ContextSet(Parse(R"({"host": 1})"));
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Page":{"Contents":[[{"bounds":[0,0,1280,720,null,null],)"
                               R"("context":{"host":1}}]]}})");
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
  CFrameHandler handler(&stack);
  tokens.Set("frame", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":["$(frame.depth)",{"RenderType":"$(frame.depth)","Contents":[)j"
                    R"j("$(frame.depth)",{"Contents":["$(frame.depth)"]},"$(frame.depth)"]},)j"
                    R"j({"Contents":["$(frame.depth)"]},"$(frame.depth)"]})j"),
            R"({"Contents":[1,{"Contents":[2,{"Contents":[3]},2],"RenderType":2},)"
            R"({"Contents":[2]},1]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, FrameOfAnElementIsFresh) {
  CFrameHandler handler(&stack);
  tokens.Set("frame", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":["$(frame.bounds)",)j"
                    R"j({"Contents":["$(frame.context)","$(frame.bounds)"]}]})j"),
            R"({"Contents":[[0,0,1280,720,null,null],{"Contents":[{},[]]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, PopOfAStackThatTheHostEmptiedIsReported) {
  CFrameHandler handler(&stack);
  tokens.Set("frame", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":[{"Contents":["$(frame.clear)"]},"A.PNG"]})j"),
            R"({"Contents":[{"Contents":[null]},"a.png"]})");
  EXPECT_EQ(Errors(), "CTemplateStack::Pop: preconditions.\n");
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(ContentsWalk, OneFrameIsTakenAwayWhicheverAHandlerPushed) {
  const CPushingHandler handler(&stack);
  tokens.Set("push", &handler);
  EXPECT_EQ(Resolve(R"j({"Contents":[{"Context":{"a":1},"Contents":["$(push)","$(push)"]}]})j"),
            R"({"Contents":[{"Contents":[null,null],"Context":{"a":1}}]})");
  ASSERT_EQ(stack.frames().size(), 3U);
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(stack.frames()[2].context, Parse(R"({"pushed": 1})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, EachMemberIsProcessedInTheFrameOfItsElement) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  const std::string members =
      R"j({"Bounds":["$(frames.bounds)",2,3,4,"$(frames.fifth)"],)j"
      R"j("Context":{"a":"$(frames.context)"},"Display":["$(frames.display)"],)j"
      R"j("Layout":[["$(frames.layout)",0]],"Play":["$(frames.play)"],)j"
      R"j("Prec":["$(frames.prec)"],"RenderType":"$(frames.type)")j";
  std::vector<std::string> seen = {R"(context {}[])", R"(bounds {"a":1}[])", R"(fifth {"a":1}[])"};
  for (const char* name : {"layout", "display", "play", "prec", "type"}) {
    seen.push_back(name + std::string(R"( {"a":1}[1,2,3,4,1])"));
  }
  ResolveEntry(members + "}");
  EXPECT_EQ(frames.Take(), seen);
  ResolveEntry(members + R"j(,"Contents":["$(frames.entry)",{"Contents":["$(frames.inner)"]}]})j");
  seen.push_back(R"(entry {"a":1}[1,2,3,4,1])");
  seen.push_back(R"(inner {"a":1}[1,2,3,4,1] {}[])");
  EXPECT_EQ(frames.Take(), seen);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContentsWalk, EveryElementTakesItsFrameAwayAndNoMore) {
  const char* const elements[] = {
      "{}",
      R"({"Context":{"b":2}})",
      R"({"Context":[]})",
      R"({"Bounds":[1,2,3,4]})",
      R"({"Bounds":"x"})",
      R"({"Context":{"b":2},"Bounds":[1,2,3,4],"Layout":[[1,2]],"Contents":[{"Context":{"c":3}}]})",
      R"({"RenderType":1024,"Contents":[{"RenderType":1024}]})",
      R"({"Contents":5})",
      R"({"Context":{"b":2},"Bounds":[1,2,3,4],"If":{"Condition":1,"Contents":["x",{}]}})",
      R"({"Context":{"b":2},"Bounds":[1,2,3,4],"If":{"Condition":0,"Contents":["x"]}})",
      R"({"If":{"Condition":1}})",
      R"({"If":{}})",
      R"({"Context":{"b":2},"Include":{}})",
      R"({"Include":{"Filename":"/no/such/file"}})",
      R"({"Loop":{}})",
      R"({"Context":{"b":2},"Loop":{"List":[]}})",
      R"({"Loop":{"List":[1,2],"Value":"v","Layout":[[[0,0],[1,1]]],"Contents":[{}]}})",
      R"({"Loop":{"List":[1,2],"Value":"v","Layout":[[[0,0]]],"Contents":[{}]}})",
      R"({"Loop":{"List":[1,2],"Value":"v","Layout":5}})",
      R"({"Loop":{"List":[1,2],"Var":"i","Bounds":[1,2,3,4],"Contents":["x",{}]}})",
      R"({"Loop":{"List":[],"Bounds":[1,2,3,4]}})",
  };
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  for (const char* element : elements) {
    SCOPED_TRACE(element);
    const Json::Value page =
        Parse(Resolve(R"j({"Page":{"Context":{"a":1},"Contents":["$(frames)",{"Context":{"p":2},)j"
                      R"j("Bounds":[5,6],"Contents":["$(frames)",)j" +
                      std::string(element) + R"j(,"$(frames)"]},"$(frames)"]}})j"));
    Errors();
    const Json::Value& outer = page["Page"]["Contents"];
    EXPECT_EQ(outer[0], Parse(R"([{"context": {"a": 1},
                                   "bounds": [0, 0, 1280, 720, null, null]}])"));
    EXPECT_EQ(outer[1]["Contents"][0][1], Parse(R"({"context": {"p": 2}, "bounds": [5, 6]})"));
    EXPECT_EQ(outer[1]["Contents"][2], outer[1]["Contents"][0]);
    EXPECT_EQ(outer[2], outer[0]);
    EXPECT_EQ(frames.All(), outer[0]);
  }
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
      // Marks are made before the contents are walked.
      {R"j({"Contents":[{"Contents":[{"Contents":["$(host)"],"RenderType":3}],"RenderType":1024}]})j",
       R"j({"Contents":[{"Contents":[{"Container":1,"Contents":["$(host)"],"RenderType":3}],)j"
       R"j("Frame":{"Id":1},"RenderType":1024}]})j",
       3},
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

TEST_F(ContentsWalk, ExceptionLeavesInTheFrameWhatWasRecordedBefore) {
  CThrowingHandler handler;
  tokens.Set("host", &handler);
  const char* const contextAndBounds = R"("Context":{"a":1},"Bounds":[1,2],)";
  const struct {
    const char* recorded;
    const char* throwing;
    const char* context;
    const char* bounds;
  } cases[] = {
      {"", R"j("Context":{"a":1,"b":"$(host)"})j", "{}", "[]"},
      {R"("Context":{"a":1},)", R"j("Bounds":[1,"$(host)"])j", R"({"a": 1})", "[]"},
      {R"("Context":{"a":1},)", R"j("Bounds":[1,2,3,4,"$(host)"])j", R"({"a": 1})", "[]"},
      {contextAndBounds, R"j("Include":{"Filename":"$(host)"})j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("If":{"Condition":"$(host)"})j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("If":{"Condition":1,"Contents":["$(host)"]})j", R"({"a": 1})",
       "[1, 2]"},
      {contextAndBounds, R"j("Layout":[["$(host)"]])j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("Display":["$(host)"])j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("Play":["$(host)"])j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("Prec":["$(host)"])j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("RenderType":"$(host)")j", R"({"a": 1})", "[1, 2]"},
      {contextAndBounds, R"j("Contents":["$(host)"])j", R"({"a": 1})", "[1, 2]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.throwing);
    resolver.Input(R"({"Page":{"Context":{"p":1},"Contents":[{)" + std::string(c.recorded) +
                   c.throwing + "}]}}");
    EXPECT_THROW(resolver.Process(), CHostError);
    ASSERT_EQ(stack.frames().size(), 2U);
    EXPECT_EQ(stack.frames()[1].context, Parse(c.context));
    EXPECT_EQ(stack.frames()[1].bounds, Parse(c.bounds));
    EXPECT_EQ(stack.frames()[0].context, Parse(R"({"p": 1})"));
    EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(ContentsWalk, ExceptionLeavesTheContextOfThePage) {
  CThrowingHandler handler;
  tokens.Set("host", &handler);
  const struct {
    const char* page;
    const char* context;
  } cases[] = {
      {R"j({"Context":{"a":1,"b":"$(host)"},"Contents":[]})j", "{}"},
      {R"j({"Context":{"a":1},"Contents":["$(host)"]})j", R"({"a": 1})"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.page);
    resolver.Input(R"({"Page":)" + std::string(c.page) + "}");
    EXPECT_THROW(resolver.Process(), CHostError);
    ASSERT_EQ(stack.frames().size(), 1U);
    EXPECT_EQ(stack.frames()[0].context, Parse(c.context));
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

TEST_F(ContentsWalk, ElementAloneIsProcessedInTheFrameOnTop) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  resolver.Input("{}");
  stack.Push();
  Json::Value element = Parse(R"j({"Context": {"a": "$(frames.context)"}, "Bounds": [1, 2],
                                   "Play": ["$(frames.play)"]})j");
  resolver.processContentsObject(element, 0);
  EXPECT_EQ(frames.Take(), (std::vector<std::string>{"context {}[]", R"(play {"a":1}[1,2])"}));
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[1, 2]"));
  EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
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
    EXPECT_EQ(resolver.nextContainerID(), 2);  // the id is used up all the same
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

TEST_F(ContentsWalk, ExceptionLeavesTheBoundsInTheDocumentAndOnTheStack) {
  CThrowingHandler handler;
  tokens.Set("fails", &handler);
  const struct {
    const char* inner;
    const char* left;
    unsigned frames;
  } cases[] = {
      {R"j("$(fails)")j", R"j("$(fails)")j", 3},
      {R"j({"Bounds":["50%",2,3,4],"Contents":["$(fails)"]})j",
       R"j({"Bounds":[7,8,3,4],"Contents":["$(fails)"]})j", 4},
      {R"j({"Bounds":["50%",2,3,"$(fails)"]})j", R"j({"Bounds":[7,8,3,"$(fails)"]})j", 4},
      {R"j({"Bounds":["50%",2],"Loop":{"List":"a","Layout":[[[1,2]]],"Contents":["$(fails)"]}})j",
       R"j({"Bounds":[7,8],"Loop":{"Contents":["$(fails)"],"Layout":[[[1,2]]],"List":"a"}})j", 5},
      {R"j({"Bounds":["50%",2],"If":{"Condition":1,"Contents":["a.PNG","$(fails)"]}})j",
       R"j({"Bounds":[7,8],"If":{"Condition":1,"Contents":["a.png","$(fails)"]}})j", 4},
      {R"j({"Bounds":["50%",2],"Include":{"Filename":"$(fails)"}})j",
       R"j({"Bounds":[7,8],"Include":{"Filename":"$(fails)"}})j", 4},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.inner);
    const std::string page = R"j({"Contents":[{"Bounds":[5,6,5,6],"Contents":[)j";
    resolver.Input(page + c.inner + "]}]}");
    EXPECT_ANY_THROW(resolver.Process());
    EXPECT_EQ(resolver.Output(),
              R"({"Contents":[{"Bounds":[5,6,5,6],"Contents":[)" + std::string(c.left) + "]}]}");
    ASSERT_EQ(stack.frames().size(), c.frames - 1);
    EXPECT_EQ(stack.frames()[1].bounds, Parse("[5, 6, 5, 6]"));
  }
  EXPECT_EQ(Errors(), "");
}

/// Does something to the stack when it is asked, as no handler should, and answers 5.
class CStackChangingHandler : public ITokenHandler {
 public:
  CStackChangingHandler(CTemplateStack* stack, std::function<void(CTemplateStack&)> change)
      : m_stack(stack), m_change(std::move(change)) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    m_change(*m_stack);
    return 5;
  }

 private:
  CTemplateStack* m_stack;
  std::function<void(CTemplateStack&)> m_change;
};

TEST_F(ContentsWalk, ElementKeepsItsBoundsWhateverAHandlerDoesToTheStack) {
  const struct {
    const char* name;
    std::function<void(CTemplateStack&)> change;
    const char* second;  ///< the edge of the second child
    int pops;            ///< that find no frame, with a loop around
  } cases[] = {
      {"set", [](CTemplateStack& s) { s.BoundsSet(Parse("[100, 0, 10, 10]")); }, "101", 0},
      {"set as it is", [](CTemplateStack& s) { s.BoundsSet(s.boundsFind()); }, "8", 0},
      {"set empty", [](CTemplateStack& s) { s.BoundsSet(Parse("[]")); }, "1", 0},
      {"assign", [](CTemplateStack& s) { s = CTemplateStack(); }, "1", 3},
      {"push",
       [](CTemplateStack& s) {
         s.Push({Parse("{}"), Parse("[100, 0, 10, 10]")});
       },
       "101", 0},
      {"pop", [](CTemplateStack& s) { s.Pop(); }, "1", 0},
      {"pop and push",
       [](CTemplateStack& s) {
         s.Pop();
         s.Push();
       },
       "1", 0},
      {"clear", [](CTemplateStack& s) { s.Clear(); }, "1", 3},
  };
  const std::string element = R"j({"Bounds":[7,8,9,9],"Contents":["$(change)",{"Bounds":[1]}]})j";
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const CStackChangingHandler handler(&stack, c.change);
    tokens.Set("change", &handler);
    const std::string resolved =
        R"({"Bounds":[7,8,9,9],"Contents":[5,{"Bounds":[)" + std::string(c.second) + "]}]}";
    EXPECT_EQ(ResolveEntry(element), resolved);
    EXPECT_EQ(Errors(), c.pops > 0 ? "CTemplateStack::Pop: preconditions.\n" : "");
    EXPECT_EQ(ResolveEntry(R"({"Loop":{"Start":0,"Size":1,"Bounds":[0,0,1,1],"Contents":[)" +
                           element + "]}}"),
              R"({"Contents":[)" + resolved + "]}");
    std::string errors;
    for (int i = 0; i < c.pops; ++i) errors += "CTemplateStack::Pop: preconditions.\n";
    EXPECT_EQ(Errors(), errors);
  }
}

TEST_F(ContentsWalk, ObjectStepLeavesTheBoundsInTheFrameOfItsCaller) {
  stack.Push();
  Json::Value element = Parse(R"({"Bounds": [1, 2, 3, 4], "Contents": []})");
  resolver.processContentsObject(element, 0);
  EXPECT_EQ(element["Bounds"], Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(stack.frames().back().bounds, Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(Errors(), "");
}

}  // namespace
