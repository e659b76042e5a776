#include "TokenTemplateResolver/template_resolver.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "support/frames_handler.h"
#include "support/resolver_fixture.h"

namespace {

class CHostError : public std::exception {};

/// Throws until it is told to answer.
class CThrowingHandler : public ITokenHandler {
 public:
  Json::Value GetPartsValue(const CTokenParts&) const override {
    if (throws) throw CHostError();
    return "answer";
  }

  bool throws = true;
};

class TemplateResolver : public ResolverTest {};

TEST_F(TemplateResolver, HasNoVirtualOperations) {
  EXPECT_FALSE(std::is_polymorphic<CTemplateResolver>::value);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, SecondArgumentOfScreenSizeIsTheWidth) {
  resolver.SetScreenSize(720, 1280);
  resolver.Input("{}");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, OnlyScreensOfSomeSizeGetAFrame) {
  const struct {
    int height, width;
    const char* bounds;
  } cases[] = {
      {1, 1, "[0, 0, 1, 1, null, null]"},
      {2147483647, 1, "[0, 0, 1, 2147483647, null, null]"},
      {0, 1280, "null"},
      {720, 0, "null"},
      {0, 0, "null"},
      {-1, 1280, "null"},
      {720, -1280, "null"},
      {-2147483647, -2147483647, "null"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.height << " x " << c.width);
    resolver.SetScreenSize(c.height, c.width);
    resolver.Input("{}");
    const Json::Value bounds = Parse(c.bounds);
    EXPECT_EQ(stack.frames().size(), bounds.isNull() ? 0U : 1U);
    EXPECT_EQ(stack.boundsFind(), bounds);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TemplateResolver, ResolvesWithoutScreenSize) {
  resolver.SetScreenSize(0, 0);
  Handle("volume", "7");
  EXPECT_EQ(Resolve(R"j({"Contents":[{"RenderType":"$(volume)"}]})j"),
            R"({"Contents":[{"RenderType":7}]})");
  EXPECT_EQ(Errors(), "");
  EXPECT_TRUE(stack.frames().empty());
  stack.Pop();
  EXPECT_EQ(Errors(), "CTemplateStack::Pop: preconditions.\n");
}

TEST_F(TemplateResolver, ConstructionAndScreenSizeLeaveTheStackAlone) {
  stack.Push({Parse(R"({"a": 1})"), Parse("[1, 2, 3, 4]")});
  CTemplateResolver fresh(&tokens, &stack);
  fresh.SetScreenSize(100, 200);
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, HasNoScreenSizeAtFirst) {
  CTemplateResolver fresh(&tokens, &stack);
  fresh.Input("{}");
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, ScreenSizeTakesEffectWithTheNextInput) {
  resolver.Input("{}");
  resolver.SetScreenSize(100, 200);
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 1280, 720, null, null]"));
  resolver.Process();
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 1280, 720, null, null]"));
  resolver.Input("{}");
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 200, 100, null, null]"));
  EXPECT_EQ(Errors(),
            "CTemplateResolver::Process: render template must have Page or Contents member.\n");
}

TEST_F(TemplateResolver, PushScreenSizeAddsAFrame) {
  stack.Push({Parse(R"({"a": 1})"), Parse("[1, 2, 3, 4]")});
  resolver.pushScreenSize();
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(stack.frames()[1].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, InputEmptiesTheStack) {
  stack.Push({Parse(R"({"a": 1})"), Parse("[1, 2, 3, 4]")});
  stack.Push({Parse(R"({"b": 2})"), Parse("[5, 6, 7, 8]")});
  resolver.Input("{}");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, InputThatThrowsHasStartedOver) {
  const struct {
    const char* before;
    const char* cleared;
  } cases[] = {{R"({"Contents":["x"]})", "{}"}, {"[1,2]", "[]"}, {"null", "null"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.before);
    resolver.Input(c.before);
    Errors();
    stack.ContextSet(Parse(R"({"a": 1})"));
    stack.Push({Parse(R"({"b": 2})"), Parse("[5, 6, 7, 8]")});
    EXPECT_THROW(resolver.Input(std::string(2000, '[')), Json::RuntimeError);
    EXPECT_EQ(resolver.Output(), c.cleared);
    ASSERT_EQ(stack.frames().size(), 1U);
    EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
    EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TemplateResolver, InputReplacesTheDocument) {
  resolver.Input(R"({"Contents": ["one"], "Name": "first"})");
  resolver.Input(R"({"Contents": ["two"]})");
  EXPECT_EQ(resolver.Output(), R"({"Contents":["two"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, TextThatDoesNotParseGivesNullAndTheReadersErrors) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"",
       "CTemplateResolver::read:* Line 1, Column 1\n"
       "  Syntax error: value, object or array expected.\n.\n"},
      {"{", "CTemplateResolver::read:* Line 1, Column 2\n  Missing '}' or object member name\n.\n"},
      {"[1,2",
       "CTemplateResolver::read:* Line 1, Column 5\n"
       "  Missing ',' or ']' in array declaration\n.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    resolver.Input(c.text);
    EXPECT_EQ(Errors(), c.message);
    EXPECT_EQ(resolver.Output(), "null");
    EXPECT_EQ(stack.frames().size(), 1U);
    resolver.Process();
    EXPECT_EQ(Errors(),
              "CTemplateResolver::Process: render template must have Page or Contents member.\n");
    EXPECT_EQ(resolver.Output(), "null");
  }
}

TEST_F(TemplateResolver, TextThatIsNoObjectIsReportedAndKept) {
  for (const char* text : {"[1,2]", "[]", "5", "2.5", "true", R"("text")", "null"}) {
    SCOPED_TRACE(text);
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input(text);
    EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
    EXPECT_EQ(fresh.Output(), text);
  }
}

TEST_F(TemplateResolver, ProcessOfArrayOrScalarThrows) {
  for (const char* text : {"[1,2]", "[]", "5", "2.5", "true", R"("text")"}) {
    SCOPED_TRACE(text);
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input(text);
    EXPECT_THROW(fresh.Process(), Json::LogicError);
    EXPECT_EQ(fresh.Output(), text);
    EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
  }
}

TEST_F(TemplateResolver, InputAfterScalarThrowsBeforeAnythingElse) {
  for (const char* text : {"5", "2.5", "true", R"("text")"}) {
    SCOPED_TRACE(text);
    CTemplateResolver fresh(&tokens, &stack);
    fresh.Input(text);
    stack.Push(CTemplateStack::CStackFrame());
    EXPECT_THROW(fresh.Input("{}"), Json::LogicError);
    EXPECT_EQ(fresh.Output(), text);
    EXPECT_EQ(stack.frames().size(), 1U);
    EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
  }
}

TEST_F(TemplateResolver, InputAfterArrayOrNullStartsOver) {
  for (const char* text : {"[1,2]", "null"}) {
    SCOPED_TRACE(text);
    resolver.Input(text);
    EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
    EXPECT_EQ(Resolve(R"({"Contents":["x"]})"), R"({"Contents":["x"]})");
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TemplateResolver, ReadReplacesItsTarget) {
  const struct {
    const char* text;
    Json::Value value;
    const char* message;
  } cases[] = {
      {R"({"b": 2})", Parse(R"({"b": 2})"), ""},
      {"{}", Json::Value(Json::objectValue), ""},
      {"[1]", Parse("[1]"), "CTemplateResolver::read:.\n"},
      {"5", 5, "CTemplateResolver::read:.\n"},
      {"null", Json::Value(), "CTemplateResolver::read:.\n"},
      {"x", Json::Value(),
       "CTemplateResolver::read:* Line 1, Column 1\n"
       "  Syntax error: value, object or array expected.\n.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    Json::Value out = Parse(R"({"a": 1})");
    resolver.read(out, c.text);
    EXPECT_EQ(out, c.value);
    EXPECT_EQ(Errors(), c.message);
  }
  EXPECT_EQ(resolver.Output(), "null");
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(TemplateResolver, OutputIsNullBeforeAnyInput) {
  EXPECT_EQ(resolver.Output(), "null");
  resolver.Process();
  EXPECT_EQ(resolver.Output(), "null");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::Process: render template must have Page or Contents member.\n");
}

TEST_F(TemplateResolver, OutputIsCompactText) {
  resolver.Input("{\n  \"b\": [1, 2.0, \"caf\xC3\xA9\"],\n  \"a\": {\"c\": null}\n}\n");
  EXPECT_EQ(resolver.Output(), R"({"a":{"c":null},"b":[1,2.0,"caf\u00e9"]})");
  EXPECT_EQ(resolver.Output(), R"({"a":{"c":null},"b":[1,2.0,"caf\u00e9"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, OutputBeforeProcessIsTheTemplate) {
  const CTableHandler& volume = Handle("volume", "7");
  resolver.Input(R"j({"Contents": ["$(volume)"]})j");
  EXPECT_EQ(resolver.Output(), R"j({"Contents":["$(volume)"]})j");
  EXPECT_TRUE(volume.calls().empty());
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[7]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, ProcessLeavesTheScreenFrame) {
  Resolve(R"({"Contents":[{"RenderType":1,"Contents":[{"RenderType":2},"x"]},{}]})");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, ResolvesOneTemplateAfterTheOther) {
  Handle("volume", "7");
  EXPECT_EQ(Resolve(R"j({"Contents":["$(volume)",{"RenderType":1024}]})j"),
            R"({"Contents":[7,{"Frame":{"Id":1},"RenderType":1024}]})");
  resolver.SetScreenSize(100, 200);
  EXPECT_EQ(Resolve(R"j({"Page":{"Contents":["Vol $(volume)",{"RenderType":1024}]}})j"),
            R"({"Page":{"Contents":["Vol 7",{"Frame":{"Id":1},"RenderType":1024}]}})");
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 200, 100, null, null]"));
  EXPECT_EQ(Resolve(R"({"Contents":[]})"), R"({"Contents":[]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, ProcessStartsFromTheFramesThatItFinds) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  resolver.Input(R"j({"Contents":["$(frames)",{"Contents":["$(frames)"]}]})j");
  stack.ContextSet(Parse(R"({"a": 1})"));
  stack.Push({Parse(R"({"b": 2})"), Parse("[5, 6]")});
  const Json::Value found = frames.All();
  for (int pass = 0; pass < 2; ++pass) {
    resolver.Process();
    EXPECT_EQ(frames.All(), found);
  }
  Json::Value page = Parse(resolver.Output());
  EXPECT_EQ(page["Contents"][0], found);
  Json::Value inside = found;
  inside.append(Parse(R"({"context": {}, "bounds": []})"));
  EXPECT_EQ(page["Contents"][1]["Contents"][0], inside);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, ProcessPushesNoScreenFrame) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  resolver.SetScreenSize(0, 0);
  resolver.Input(R"j({"Contents":["$(frames)"]})j");
  resolver.SetScreenSize(100, 200);
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[[]]})");
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, EveryProcessCountsWhateverItComesTo) {
  CThrowingHandler handler;
  tokens.Set("host", &handler);
  EXPECT_EQ(Resolve("{}"), "{}");
  EXPECT_EQ(Resolve("null"), "null");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::Process: render template must have Page or Contents member.\n"
            "CTemplateResolver::read:.\n"
            "CTemplateResolver::Process: render template must have Page or Contents member.\n");
  EXPECT_THROW(Resolve(R"j({"Contents":["$(host)"]})j"), CHostError);
  EXPECT_THROW(Resolve("[1]"), Json::LogicError);
  EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
  CContextHandler variables(&stack);
  tokens.Set("var", &variables);
  EXPECT_EQ(Resolve(R"j({"Contents":[{"Loop":{"Start":0,"Size":9,"Bounds":[],"Var":"i",)j"
                    R"j("Contents":["$(var.i)"]}}]})j"),
            R"({"Contents":[{"Contents":[5]}]})");  // the fifth pass
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, EachProcessNumbersContainersFromOne) {
  const std::string page =
      R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024},{"Frame":{"Id":2},"RenderType":1024}]})";
  EXPECT_EQ(Resolve(R"({"Contents":[{"RenderType":1024},{"RenderType":1024}]})"), page);
  resolver.Process();
  EXPECT_EQ(resolver.Output(), page);
  EXPECT_EQ(resolver.nextContainerID(), 3);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, InputAloneDoesNotRestartContainerIds) {
  EXPECT_EQ(resolver.nextContainerID(), 1);
  EXPECT_EQ(resolver.nextContainerID(), 2);
  resolver.Input(R"({"Contents": []})");
  EXPECT_EQ(resolver.nextContainerID(), 3);
  resolver.Process();
  EXPECT_EQ(resolver.nextContainerID(), 1);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, SecondProcessResolvesTheResolvedDocument) {
  const CTableHandler& outer = Handle("outer", R"j("$(inner)")j");
  Handle("inner", R"({"RenderType": 1024})");
  EXPECT_EQ(Resolve(R"j({"Contents":["$(outer)"]})j"), R"j({"Contents":["$(inner)"]})j");
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[{"RenderType":1024}]})");
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024}]})");
  EXPECT_EQ(outer.calls(), std::vector<std::string>{"GetValue outer"});
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, HandlerExceptionReachesTheHost) {
  CThrowingHandler handler;
  tokens.Set("host", &handler);
  Handle("volume", "7");
  resolver.Input(R"j({"Contents":["$(volume)",{"RenderType":"$(host)"},"$(volume)"]})j");
  EXPECT_THROW(resolver.Process(), CHostError);
  EXPECT_EQ(resolver.Output(), R"j({"Contents":[7,{"RenderType":"$(host)"},"$(volume)"]})j");
  EXPECT_EQ(stack.frames().size(), 2U);

  handler.throws = false;
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[7,{"RenderType":"answer"},7]})");
  EXPECT_EQ(stack.frames().size(), 2U);

  EXPECT_EQ(Resolve(R"j({"Contents":["$(host)"]})j"), R"({"Contents":["answer"]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, ContainerIdsRestartAfterAnException) {
  CThrowingHandler handler;
  tokens.Set("host", &handler);
  resolver.Input(R"j({"Contents":[{"RenderType":1024},"$(host)",{"RenderType":1024}]})j");
  EXPECT_THROW(resolver.Process(), CHostError);
  EXPECT_EQ(resolver.Output(), R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024},)"
                               R"j("$(host)",{"RenderType":1024}]})j");
  EXPECT_EQ(resolver.nextContainerID(), 2);
  handler.throws = false;
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[{"Frame":{"Id":1},"RenderType":1024},)"
                               R"("answer",{"Frame":{"Id":2},"RenderType":1024}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateResolver, StackAndTokenResolverOutliveTheResolver) {
  Handle("volume", "7");
  {
    CTemplateResolver first(&tokens, &stack);
    first.SetScreenSize(100, 200);
    first.Input(R"({"Contents": []})");
  }
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 200, 100, null, null]"));
  EXPECT_EQ(Resolve(R"j({"Contents":["$(volume)"]})j"), R"({"Contents":[7]})");
  EXPECT_EQ(Errors(), "");
}

}  // namespace
