#include "TokenTemplateResolver/template_stack.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/cerr_capture.h"
#include "support/json.h"

namespace {

class TemplateStack : public ::testing::Test {
 protected:
  static CTemplateStack::CStackFrame Frame(const char* context, const char* bounds) {
    return {Parse(context), Parse(bounds)};
  }

  std::string Errors() { return m_cerr.Take(); }

  CTemplateStack stack;

 private:
  CCerrCapture m_cerr;
};

TEST_F(TemplateStack, FreshFrameHoldsEmptyContextAndEmptyBounds) {
  const CTemplateStack::CStackFrame frame;
  EXPECT_EQ(frame.context, Json::Value(Json::objectValue));
  EXPECT_EQ(frame.bounds, Json::Value(Json::arrayValue));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, FrameHoldsContextBeforeBounds) {
  const CTemplateStack::CStackFrame frame = Frame(R"({"a": 1})", "[1, 2]");
  EXPECT_TRUE(std::less<const Json::Value*>()(&frame.context, &frame.bounds));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, CopyOfFrameIsIndependent) {
  const CTemplateStack::CStackFrame frame = Frame(R"({"a": 1})", "[1, 2]");
  CTemplateStack::CStackFrame copy = frame;
  copy.context["a"] = 9;
  copy.bounds[0] = 9;
  EXPECT_EQ(frame.context, Parse(R"({"a": 1})"));
  EXPECT_EQ(frame.bounds, Parse("[1, 2]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, IsEmptyAtFirst) {
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, PushAppendsOnTop) {
  stack.Push(Frame(R"({"a": 1})", "[1]"));
  stack.Push(Frame(R"({"b": 2})", "[2]"));
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1]"));
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"b": 2})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[2]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, PushCopiesTheFrame) {
  CTemplateStack::CStackFrame frame = Frame(R"({"a": 1})", "[1]");
  stack.Push(frame);
  frame.context["a"] = 9;
  frame.bounds[0] = 9;
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, PushFreshAppendsAFreshFrame) {
  CTemplateStack other;
  for (std::size_t depth = 1; depth <= 20; ++depth) {
    stack.PushFresh();
    other.Push(CTemplateStack::CStackFrame());
    ASSERT_EQ(stack.frames().size(), depth);
    const CTemplateStack::CStackFrame& top = stack.frames().back();
    EXPECT_EQ(top.context, other.frames().back().context);
    EXPECT_EQ(top.bounds, other.frames().back().bounds);
    EXPECT_EQ(stack.boundsFind(), other.boundsFind());
    stack.ContextSet(Parse(R"({"a": 1})"));
    other.ContextSet(Parse(R"({"a": 1})"));
    if (depth % 3 != 0) continue;
    stack.BoundsSet(Parse("[1, 2, 3]"));
    other.BoundsSet(Parse("[1, 2, 3]"));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, PushWithoutFrameAppendsAFreshOne) {
  stack.Push(Frame(R"({"a": 1})", "[1]"));
  stack.Push();
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[1].context, Json::Value(Json::objectValue));
  EXPECT_EQ(stack.frames()[1].bounds, Json::Value(Json::arrayValue));
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, PopRemovesTheTopFrame) {
  stack.Push(Frame("{}", "[1]"));
  stack.Push(Frame("{}", "[2]"));
  stack.Pop();
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1]"));
  stack.Pop();
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, PopOfEmptyStackIsReported) {
  stack.Pop();
  EXPECT_EQ(Errors(), "CTemplateStack::Pop: preconditions.\n");
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(TemplateStack, ContextSetReplacesTheTopContext) {
  stack.Push(Frame(R"({"a": 1})", "[1]"));
  stack.Push(Frame(R"({"a": 2, "b": 3})", "[2]"));
  stack.ContextSet(Parse(R"({"c": 4})"));
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"c": 4})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[2]"));
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  stack.ContextSet(Parse("{}"));
  EXPECT_EQ(stack.frames()[1].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, ContextSetCopiesTheContext) {
  stack.Push(Frame("{}", "[]"));
  Json::Value context = Parse(R"({"a": 1})");
  stack.ContextSet(context);
  context["a"] = 9;
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, ContextThatIsNoObjectIsReportedAndDropped) {
  stack.Push(Frame(R"({"a": 1})", "[1]"));
  for (const char* context : {"[]", "[1]", "null", "5", "2.5", "true", R"("text")"}) {
    SCOPED_TRACE(context);
    stack.ContextSet(Parse(context));
    EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
    EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  }
}

TEST_F(TemplateStack, ContextSetOnEmptyStackIsReported) {
  stack.ContextSet(Parse(R"({"a": 1})"));
  EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(TemplateStack, ContextSwapExchangesTheTopContext) {
  stack.Push(Frame(R"({"a": 1})", "[1]"));
  stack.Push(Frame(R"({"b": 2})", "[2]"));
  Json::Value context = Parse(R"({"c": 3, "d": null})");
  stack.ContextSwap(context);
  EXPECT_EQ(context, Parse(R"({"b": 2})"));
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"c": 3, "d": null})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[2]"));
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  context = Parse("{}");
  stack.ContextSwap(context);
  EXPECT_EQ(context, Parse(R"({"c": 3, "d": null})"));
  EXPECT_EQ(stack.frames()[1].context, Parse("{}"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, ContextSwapOfWhatIsNoObjectIsReportedAndDropped) {
  stack.Push(Frame(R"({"a": 1})", "[1, 2]"));
  for (const char* text : {"[]", "[1]", "null", "5", "2.5", "true", R"("text")"}) {
    SCOPED_TRACE(text);
    Json::Value context = Parse(text);
    stack.ContextSwap(context);
    EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
    EXPECT_EQ(context, Parse(text));
    ASSERT_EQ(stack.frames().size(), 1U);
    EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
    EXPECT_EQ(stack.frames()[0].bounds, Parse("[1, 2]"));
  }
}

TEST_F(TemplateStack, ContextSwapOnEmptyStackIsReported) {
  Json::Value context = Parse(R"({"a": 1})");
  stack.ContextSwap(context);
  EXPECT_EQ(Errors(), "CTemplateStack::ContextSet: preconditions.\n");
  EXPECT_EQ(context, Parse(R"({"a": 1})"));
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(TemplateStack, BoundsSetReplacesTheTopBounds) {
  stack.Push(Frame("{}", "[1]"));
  stack.Push(Frame(R"({"a": 1})", "[2, 2, 2, 2]"));
  stack.BoundsSet(Parse("[3, 4]"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[3, 4]"));
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"a": 1})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, BoundsSetCopiesTheBounds) {
  stack.Push(Frame("{}", "[]"));
  Json::Value bounds = Parse("[1, 2, 3, 4]");
  stack.BoundsSet(bounds);
  bounds[0] = 9;
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, BoundsThatAreNoArrayAreReportedAndDropped) {
  stack.Push(Frame("{}", "[1, 2]"));
  for (const char* bounds : {"{}", R"({"x": 1})", "null", "5", "2.5", "true", R"("50%")"}) {
    SCOPED_TRACE(bounds);
    stack.BoundsSet(Parse(bounds));
    EXPECT_EQ(Errors(), "CTemplateStack::BoundsSet: preconditions.\n");
    EXPECT_EQ(stack.frames()[0].bounds, Parse("[1, 2]"));
  }
}

TEST_F(TemplateStack, BoundsSetOnEmptyStackIsReported) {
  stack.BoundsSet(Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(Errors(), "CTemplateStack::BoundsSet: preconditions.\n");
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(TemplateStack, BoundsSwapExchangesTheTopBounds) {
  stack.Push(Frame(R"({"a": 1})", "[1]"));
  stack.Push(Frame(R"({"b": 2})", "[2, 2]"));
  Json::Value bounds = Parse("[3, 4, null]");
  stack.BoundsSwap(bounds);
  EXPECT_EQ(bounds, Parse("[2, 2]"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[3, 4, null]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[3, 4, null]"));
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"b": 2})"));
  EXPECT_EQ(stack.frames()[0].bounds, Parse("[1]"));
  bounds = Parse("[]");
  stack.BoundsSwap(bounds);
  EXPECT_EQ(bounds, Parse("[3, 4, null]"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[1]"));
  stack.BoundsSwap(bounds);
  EXPECT_EQ(bounds, Parse("[]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[3, 4, null]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, BoundsSwapOfWhatIsNoArrayIsReportedAndDropped) {
  stack.Push(Frame(R"({"a": 1})", "[1, 2]"));
  for (const char* text : {"{}", R"({"x": 1})", "null", "5", "2.5", "true", R"("50%")"}) {
    SCOPED_TRACE(text);
    Json::Value bounds = Parse(text);
    stack.BoundsSwap(bounds);
    EXPECT_EQ(Errors(), "CTemplateStack::BoundsSet: preconditions.\n");
    EXPECT_EQ(bounds, Parse(text));
    ASSERT_EQ(stack.frames().size(), 1U);
    EXPECT_EQ(stack.frames()[0].bounds, Parse("[1, 2]"));
    EXPECT_EQ(stack.frames()[0].context, Parse(R"({"a": 1})"));
  }
}

TEST_F(TemplateStack, BoundsSwapOnEmptyStackIsReported) {
  Json::Value bounds = Parse("[1, 2, 3, 4]");
  stack.BoundsSwap(bounds);
  EXPECT_EQ(Errors(), "CTemplateStack::BoundsSet: preconditions.\n");
  EXPECT_EQ(bounds, Parse("[1, 2, 3, 4]"));
  EXPECT_TRUE(stack.frames().empty());
}

TEST_F(TemplateStack, BoundsFindGivesTheInnermostBounds) {
  stack.Push(Frame("{}", "[0, 0, 1280, 720, null, null]"));
  stack.Push(Frame("{}", "[]"));
  stack.Push(Frame("{}", "[]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 1280, 720, null, null]"));
  stack.BoundsSet(Parse("[10, 10, 100, 50, 0, 0]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[10, 10, 100, 50, 0, 0]"));
  stack.Pop();
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, EmptyArrayHidesTheTopFrameFromBoundsFind) {
  stack.Push(Frame("{}", "[1, 2, 3, 4]"));
  stack.Push(Frame("{}", "[5, 6, 7, 8]"));
  stack.BoundsSet(Parse("[]"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[]"));
  EXPECT_EQ(stack.boundsFind(), Parse("[1, 2, 3, 4]"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, BoundsFindJudgesFramesBySizeAlone) {
  const struct {
    const char* top;
    const char* found;
  } cases[] = {
      {"[5]", "[5]"},
      {"[null]", "[null]"},
      {"[]", "[1, 2, 3, 4]"},
      {"null", "[1, 2, 3, 4]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.top);
    stack.Clear();
    stack.Push(Frame("{}", "[1, 2, 3, 4]"));
    stack.Push(Frame(R"({"a": 1})", c.top));
    EXPECT_EQ(stack.boundsFind(), Parse(c.found));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TemplateStack, BoundsFindRefersToTheFrame) {
  stack.Push(Frame("{}", "[1, 2, 3, 4]"));
  stack.Push(Frame("{}", "[]"));
  EXPECT_EQ(&stack.boundsFind(), &stack.frames()[0].bounds);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, BoundsFindWithoutBoundsIsNull) {
  EXPECT_EQ(stack.boundsFind(), Json::Value());
  stack.Push(Frame(R"({"a": 1})", "[]"));
  stack.Push(Frame(R"({"a": 1})", "[]"));
  EXPECT_EQ(stack.boundsFind(), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, AllStacksShareTheNullResult) {
  const CTemplateStack other;
  EXPECT_EQ(&stack.boundsFind(), &other.boundsFind());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TemplateStack, ClearRemovesAllFrames) {
  stack.Push(Frame("{}", "[1]"));
  stack.Push(Frame("{}", "[2]"));
  stack.Clear();
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(stack.boundsFind(), Json::Value());
  stack.Clear();
  EXPECT_TRUE(stack.frames().empty());
  EXPECT_EQ(Errors(), "");
}

}  // namespace
