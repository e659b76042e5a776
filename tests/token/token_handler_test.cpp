#include "TokenTemplateResolver/token_handler.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/resolver_fixture.h"

namespace {

using Strings = std::vector<std::string>;

/// The least that a host implements. Records the paths that it is asked for.
class CPartsHandler : public ITokenHandler {
 public:
  explicit CPartsHandler(Json::Value value) : m_value(std::move(value)) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    m_paths.push_back(CTokenParts::rebuildToken(parts, static_cast<unsigned int>(parts.size())));
    return m_value;
  }

  const Strings& paths() const { return m_paths; }

 private:
  Json::Value m_value;
  mutable Strings m_paths;
};

/// Keeps the tokens and the indices that it receives.
class CTokenKeeper : public ITokenHandler {
 public:
  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override {
    m_tokens.push_back(token);
    m_indices.push_back(index);
    return "indexed";
  }
  Json::Value GetValue(const CParsedToken& token) const override {
    m_tokens.push_back(token);
    return "plain";
  }
  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override { return "parts"; }

  const std::vector<CParsedToken>& tokens() const { return m_tokens; }
  const std::vector<Json::Value>& indices() const { return m_indices; }

 private:
  mutable std::vector<CParsedToken> m_tokens;
  mutable std::vector<Json::Value> m_indices;
};

/// Counts the handlers that were destroyed.
class CMortalHandler : public ITokenHandler {
 public:
  explicit CMortalHandler(int* destroyed) : m_destroyed(destroyed) {}
  ~CMortalHandler() override { ++*m_destroyed; }
  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override { return 1; }

 private:
  int* m_destroyed;
};

class TokenHandler : public ResolverTest {};

TEST_F(TokenHandler, IndexedValueIsNullByDefault) {
  const CPartsHandler handler("text");
  const ITokenHandler& base = handler;
  EXPECT_EQ(base.GetIndexedValue(CParsedToken("List[2]"), 2), Json::Value());
  EXPECT_EQ(handler.paths(), Strings());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, ValueIsThatOfTheNamePathByDefault) {
  const CPartsHandler handler(7);
  const ITokenHandler& base = handler;
  EXPECT_EQ(base.GetValue(CParsedToken("Weather.today[Sel.row]:arg")), Json::Value(7));
  EXPECT_EQ(handler.paths(), Strings{"Weather.today"});
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, OnlyThePartsValueMustBeImplemented) {
  EXPECT_TRUE(std::is_abstract_v<ITokenHandler>);
  EXPECT_FALSE(std::is_abstract_v<CPartsHandler>);
  const CPartsHandler handler("text");
  const ITokenHandler& base = handler;
  EXPECT_EQ(base.GetPartsValue({"A", "b"}), Json::Value("text"));
  EXPECT_EQ(handler.paths(), Strings{"A.b"});
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, PartsHandlerServesAllButIndexedTokens) {
  const CPartsHandler list("5,6,7");
  const CPartsHandler number("5");
  tokens.Set("List", &list);
  tokens.Set("Number", &number);
  const struct {
    const char* body;
    Json::Value result;
  } rows[] = {{"List", "5,6,7"},
              {"List.member", "5,6,7"},
              {"List:arg", "5,6,7"},
              {"List#", 3u},
              {"List#*2", 6},
              {"List[]", Parse(R"(["5","6","7"])")},
              {"Number+1", 6},
              {"List[0]", Json::Value()},
              {"List[-1]:x", Json::Value()},
              {"List.a[2]", Json::Value()}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    EXPECT_EQ(tokens.GetTokenValue(row.body), row.result);
    EXPECT_EQ(Errors(), "");
  }
}

/// Position of a virtual operation in the table of its class. The first word of a pointer to a
/// virtual member holds the offset in the table, on some platforms with the lowest bit set.
template <typename Operation>
std::size_t SlotOf(Operation operation) {
  std::size_t word = 0;
  static_assert(sizeof(operation) >= sizeof(word), "not a pointer to a member function");
  std::memcpy(&word, &operation, sizeof(word));
  return word / sizeof(void*);
}

TEST(TokenHandlerLayout, VirtualOperationsKeepTheirSlots) {
  EXPECT_EQ(SlotOf(&ITokenHandler::GetIndexedValue), 0u);
  EXPECT_EQ(SlotOf(&ITokenHandler::GetValue), 1u);
  EXPECT_EQ(SlotOf(&ITokenHandler::GetPartsValue), 2u);
}

TEST(TokenHandlerLayout, DeletingThroughTheInterfaceRunsTheHandlersDestructor) {
  int destroyed = 0;
  std::unique_ptr<ITokenHandler> handler = std::make_unique<CMortalHandler>(&destroyed);
  EXPECT_EQ(destroyed, 0);
  handler.reset();
  EXPECT_EQ(destroyed, 1);
}

TEST_F(TokenHandler, RegistryNeverDeletesItsHandlers) {
  int destroyed = 0;
  const auto first = std::make_unique<CMortalHandler>(&destroyed);
  const auto second = std::make_unique<CMortalHandler>(&destroyed);
  {
    CTokenResolver registry;
    registry.Set("a", first.get());
    registry.Set("a", second.get());
    EXPECT_EQ(registry.GetTokenValue("a"), Json::Value(1));
  }
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, EachTokenAsksOneOperation) {
  const struct {
    const char* body;
    Strings calls;
  } rows[] = {{"H", {"GetValue H"}},
              {"H.a.b", {"GetValue H.a.b"}},
              {"H:%H:%M", {"GetValue H :%H:%M"}},
              {"H#", {"GetValue H"}},
              {"H[]", {"GetValue H"}},
              {"H[.]", {"GetValue H"}},
              {"H[2", {"GetValue H"}},
              {"H[2]", {"GetIndexedValue H [2]"}},
              {"H.a[-1]", {"GetIndexedValue H.a [-1]"}},
              {"H#[2]", {"GetIndexedValue H [2]"}},
              {"H[2]+1", {"GetIndexedValue H [2]"}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    const CTableHandler& handler = Handle("H", "5");
    tokens.GetTokenValue(row.body);
    EXPECT_EQ(handler.calls(), row.calls);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TokenHandler, IndexComesBeforeTheValueAndTheOperandAfterIt) {
  const CTableHandler& handler = Handle("H", R"({"list": [10, 20], "row": 1, "add": 5})");
  EXPECT_EQ(tokens.GetTokenValue("H.list[H.row]+H.add"), Json::Value(25));
  EXPECT_EQ(handler.calls(),
            (Strings{"GetPartsValue H.row", "GetIndexedValue H.list [1]", "GetPartsValue H.add"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, ReceivesTheWholeToken) {
  const CTokenKeeper keeper;
  tokens.Set("Clock", &keeper);
  EXPECT_EQ(tokens.GetTokenValue("Clock.time:%H:%M"), Json::Value("plain"));
  ASSERT_EQ(keeper.tokens().size(), 1u);
  const CParsedToken& token = keeper.tokens()[0];
  ASSERT_EQ(token.nameParts.size(), 2u);
  EXPECT_EQ(token.nameParts[0], "Clock");
  EXPECT_EQ(token.nameParts[1], "time");
  EXPECT_EQ(token.argument, "%H:%M");
  EXPECT_EQ(token.sectionsSeen, 9);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, ReceivesTheArgumentOfAnIndexedToken) {
  const CTokenKeeper keeper;
  tokens.Set("Items", &keeper);
  EXPECT_EQ(tokens.GetTokenValue("Items[3]:short"), Json::Value("indexed"));
  ASSERT_EQ(keeper.indices().size(), 1u);
  EXPECT_EQ(keeper.tokens()[0].argument, "short");
  EXPECT_EQ(keeper.indices()[0], Json::Value(3));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenHandler, IndexIsAlwaysOfTypeInt) {
  const struct {
    const char* row;
    Json::Value index;
  } rows[] = {{"2", 2},    {"2.9", 2}, {"-2.9", -2},      {"\"0x10\"", 16}, {"true", 1},
              {"null", 0}, {"[1]", 0}, {"{\"a\": 1}", 0}, {"\"\"", 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.row);
    const CTokenKeeper keeper;
    tokens.Set("List", &keeper);
    Handle("Sel", std::string(R"({"row": )") + row.row + "}");
    EXPECT_EQ(tokens.GetTokenValue("List[Sel.row]"), Json::Value("indexed"));
    ASSERT_EQ(keeper.indices().size(), 1u);
    EXPECT_EQ(keeper.indices()[0], row.index);
    EXPECT_EQ(keeper.indices()[0].type(), Json::intValue);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TokenHandler, ItsExceptionsReachTheCaller) {
  class CThrowingHandler : public ITokenHandler {
    Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
      throw std::out_of_range("no such member");
    }
  };
  const CThrowingHandler handler;
  tokens.Set("Bad", &handler);
  Handle("Good", "[1, 2]");
  for (const char* body : {"Bad", "Bad#", "Good[Bad.row]", "Good#+Bad.row"}) {
    SCOPED_TRACE(body);
    EXPECT_THROW(tokens.GetTokenValue(body), std::out_of_range);
    EXPECT_EQ(Errors(), "");
  }
  EXPECT_THROW(Resolve(R"j({"Contents": ["$(Bad)"]})j"), std::out_of_range);
  EXPECT_EQ(Errors(), "");
}

}  // namespace
