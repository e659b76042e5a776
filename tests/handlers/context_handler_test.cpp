#include "TokenTemplateHandlers/context_handler.h"

#include "support/resolver_fixture.h"

namespace {

class ContextHandler : public ResolverTest {
 protected:
  ContextHandler() { tokens.Set("context", &context); }

  void PushContext(const std::string& json) {
    stack.Push(CTemplateStack::CStackFrame());
    stack.ContextSet(Parse(json));
  }

  Json::Value ValueOf(const std::string& body) { return tokens.GetTokenValue(body); }

  CContextHandler context{&stack};
};

TEST_F(ContextHandler, InnermostFrameWithTheNameWins) {
  PushContext(R"({"row": 1, "title": "Lobby"})");
  PushContext(R"({"row": 2})");
  PushContext("{}");
  EXPECT_EQ(ValueOf("context.row"), Json::Value(2));
  EXPECT_EQ(ValueOf("context.title"), Json::Value("Lobby"));
  stack.Pop();
  stack.Pop();
  EXPECT_EQ(ValueOf("context.row"), Json::Value(1));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContextHandler, TellsTheFrameThatBindsAVariable) {
  PushContext(R"({"row": 1, "title": "Lobby"})");
  PushContext(R"({"row": null})");
  const std::size_t inner = stack.frames().size() - 1;
  EXPECT_EQ(context.FindFrame({"context", "row"}), inner);
  EXPECT_EQ(context.FindFrame({"context", "title", "x"}), inner - 1);
  EXPECT_EQ(context.FindFrame({"context", "none"}), std::nullopt);
  EXPECT_EQ(context.FindFrame({"context"}), std::nullopt);
}

TEST_F(ContextHandler, NullInTheInnermostFrameHidesOuterValues) {
  PushContext(R"({"row": 1})");
  PushContext(R"({"row": null})");
  EXPECT_EQ(ValueOf("context.row"), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContextHandler, PartsAndIndexStepIntoTheValue) {
  PushContext(R"({"flight": {"to": "Oslo", "gates": [4, 7]}})");
  EXPECT_EQ(ValueOf("context.flight.to"), Json::Value("Oslo"));
  EXPECT_EQ(ValueOf("context.flight.gates[1]"), Json::Value(7));
  EXPECT_EQ(ValueOf("context.flight.gates[2]"), Json::Value());
  EXPECT_EQ(ValueOf("context.flight.from"), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContextHandler, CountIsThatOfTheWholeValue) {
  PushContext(R"({"rows": [1, [2, 3], {"a": 4}], "none": [], "text": "a,b"})");
  EXPECT_EQ(ValueOf("context.rows"), Parse(R"([1, [2, 3], {"a": 4}])"));
  EXPECT_EQ(ValueOf("context.rows#"), Json::Value(3U));
  EXPECT_EQ(ValueOf("context.none#"), Json::Value(0U));
  EXPECT_EQ(ValueOf("context.text#"), Json::Value(2U));
  EXPECT_EQ(ValueOf("context.gone#"), Json::Value(0U));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContextHandler, UnboundNameAndBareNameAreNull) {
  EXPECT_EQ(ValueOf("context.row"), Json::Value());
  EXPECT_EQ(ValueOf("context"), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContextHandler, RegisteredUnderTheNameOfTheVariable) {
  const CContextHandler variables(&stack, 0);
  tokens.Set("row", &variables);
  tokens.Set("flight", &variables);
  PushContext(R"({"row": 3, "flight": {"gates": [4, 7]}})");
  EXPECT_EQ(ValueOf("row*2"), Json::Value(6));
  EXPECT_EQ(ValueOf("flight.gates[0]"), Json::Value(4));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ContextHandler, ServesAsIndexOfAnotherHandler) {
  Handle("list", R"(["a", "b", "c"])");
  PushContext(R"({"row": 2})");
  EXPECT_EQ(ValueOf("list[context.row]"), Json::Value("c"));
  EXPECT_EQ(Errors(), "");
}

}  // namespace
