#include <gtest/gtest.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/resolver_fixture.h"

namespace {

constexpr char missingEnd[] =
    "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.\n";

using CCalls = std::vector<std::string>;

class CThrowingHandler : public ITokenHandler {
 public:
  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    throw std::out_of_range("no such value");
  }
};

/// Assigns to a value of the host's, perhaps the very one that is being resolved, and answers 7.
class CAssigningHandler : public ITokenHandler {
 public:
  explicit CAssigningHandler(Json::Value* value) : m_value(value) {}

  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override {
    *m_value = "another text, which is long enough not to fit in place of the old one";
    return 7;
  }

 private:
  Json::Value* m_value;
};

class TokenSubstitution : public ResolverTest {
 protected:
  Json::Value Substituted(Json::Value value) const {
    tokens.SubstituteTokenValues(value);
    return value;
  }
};

std::string Repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST_F(TokenSubstitution, TextIsReadBeforeAHandlerCanChangeIt) {
  for (const char* text : {"head $(a) and a tail that is long enough for the heap",
                           "$(a), $(a) and a tail that is long enough for the heap"}) {
    Json::Value value(text);
    const CAssigningHandler handler(&value);
    tokens.Set("a", &handler);
    tokens.SubstituteTokenValues(value);
    std::string expected = text;
    for (std::size_t at = 0; (at = expected.find("$(a)")) != std::string::npos;) {
      expected.replace(at, 4, "7");
    }
    EXPECT_EQ(value, Json::Value(expected));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, OnlyStringsAreTouched) {
  const CTableHandler& handler = Handle("n", "7");
  const char* const values[] = {"null",
                                "5",
                                "-5",
                                "1.5",
                                "true",
                                "[]",
                                R"J(["$(n)", "x $(n)"])J",
                                R"J({"k": "$(n)", "$(n)": 1})J",
                                R"J([["$(n"]])J"};
  for (const char* text : values) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Substituted(Parse(text)), Parse(text));
  }
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, TextWithoutTokenStartIsUnchanged) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* text : {"", " ", "n", "$", "(n)", ")", "$ (n)", "$n)", "($n)", "$[n)", "a)b("}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Substituted(text), Json::Value(text));
  }
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, UnchangedTextKeepsItsComment) {
  for (const char* text : {"plain", "x $(n"}) {
    SCOPED_TRACE(text);
    Json::Value value(text);
    value.setComment(std::string("// beside"), Json::commentAfterOnSameLine);
    tokens.SubstituteTokenValues(value);
    EXPECT_EQ(value, Json::Value(text));
    EXPECT_EQ(value.getComment(Json::commentAfterOnSameLine), "// beside");
  }
  EXPECT_EQ(Errors(), missingEnd);
}

TEST_F(TokenSubstitution, WholeValueTokenTakesTheTypeOfItsValue) {
  const char* const values[] = {"7",        "-7",          "4294967295", "1.5",
                                "true",     "false",       "null",       R"("")",
                                R"(" a ")", R"J("$(v)")J", "[1, [2]]",   R"J({"k": "$(v)"})J"};
  for (const char* value : values) {
    SCOPED_TRACE(value);
    Handle("v", value);
    EXPECT_EQ(Substituted("$(v)"), Parse(value));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, WholeValueTokenKeepsWhatTheBodyComputes) {
  Handle("List", "[10, 20, 30]");
  Handle("csv", R"("a,b")");
  EXPECT_EQ(Substituted("$(List#)"), Json::Value(3u));
  EXPECT_EQ(Substituted("$(List[1])"), Json::Value(20));
  EXPECT_EQ(Substituted("$(List#*2)"), Json::Value(6));
  EXPECT_EQ(Substituted("$(csv[])"), Parse(R"(["a", "b"])"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, EmbeddedTokenIsReplacedByTheTextOfItsValue) {
  const struct {
    const char* value;
    const char* expected;
  } cases[] = {
      {"7", "<7>"},
      {"-7", "<-7>"},
      {"4294967295", "<4294967295>"},
      {"1.5", "<1.5>"},
      {"10.0", "<10.0>"},
      {"true", "<true>"},
      {"false", "<false>"},
      {"null", "<>"},
      {R"("")", "<>"},
      {R"("text")", "<text>"},
      {R"("  blanks ")", "<  blanks >"},
      {"[]", "<[]>"},
      {"{}", "<{}>"},
      {"[1, 2]", "<[\n\t1,\n\t2\n]>"},
      {R"({"k": "x"})", "<{\n\t\"k\" : \"x\"\n}>"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.value);
    Handle("v", testCase.value);
    EXPECT_EQ(Substituted("<$(v)>"), Json::Value(testCase.expected));
  }
  EXPECT_EQ(Errors(), "");
}

/// A value of any JSON type; arrays and objects up to `depth` levels deep.
Json::Value RandomValue(std::mt19937& random, int depth) {
  Json::Value value;
  switch (random() % (depth > 0 ? 10 : 8)) {
    case 0:
      break;
    case 1:
      value = random() % 2 == 0;
      break;
    case 2:
      value = static_cast<std::int32_t>(random());
      break;
    case 3:
      value = Json::UInt(random());
      break;
    case 4:
      value = Json::Int64(random()) * -1000000;
      break;
    case 5:
      value = static_cast<double>(random()) / 1024;
      break;
    case 6:
    case 7: {
      const std::string characters("ab \t\n\0$()\"\\\xc3\xa4/", 14);
      std::string text;
      for (auto n = random() % 8; n > 0; --n) text += characters[random() % characters.size()];
      value = text;
      break;
    }
    case 8:
      value = Json::Value(Json::arrayValue);
      for (auto n = random() % 4; n > 0; --n) value.append(RandomValue(random, depth - 1));
      break;
    default:
      value = Json::Value(Json::objectValue);
      for (auto n = random() % 4; n > 0; --n) {
        value[std::string(1 + random() % 3, 'k')] = RandomValue(random, depth - 1);
      }
  }
  if (random() % 8 == 0) value.setComment(std::string("/* before */"), Json::commentBefore);
  if (random() % 8 == 0) value.setComment(std::string("// beside"), Json::commentAfterOnSameLine);
  return value;
}

// The text of a value is appended as it is made; the conversion in place decides what is right.
TEST_F(TokenSubstitution, EmbeddedTokenInsertsWhatTheConversionToTextGives) {
  std::vector<Json::Value> values = {0.0,
                                     -0.0,
                                     1e300,
                                     std::numeric_limits<double>::infinity(),
                                     Json::Value(std::numeric_limits<Json::UInt64>::max()),
                                     Json::Value(std::numeric_limits<Json::Int64>::min()),
                                     std::string("a\0b", 3),
                                     std::string(1, '\0'),
                                     std::string(5000, 'x')};
  std::mt19937 random(1);
  for (int i = 0; i < 4000; ++i) values.push_back(RandomValue(random, 3));
  int types[8] = {};
  for (const Json::Value& value : values) {
    Json::Value converted = value;
    CTokenResolver::ConvertToString(converted);
    const std::string text = converted.asString();
    const CTableHandler handler(value);
    tokens.Set("v", &handler);
    ASSERT_EQ(Substituted("<$(v)>"), Json::Value("<" + text + ">"));
    ASSERT_EQ(Substituted("$(v)$(v)"), Json::Value(text + text));
    ASSERT_EQ(Errors(), "");
    ++types[value.type()];
  }
  for (const int count : types) EXPECT_GT(count, 100);
}

TEST_F(TokenSubstitution, AnyCharacterBesideTheTokenMakesItText) {
  Handle("List", "[1]");
  Handle("n", "7");
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {{" $(List)", " [\n\t1\n]"},
               {"$(List) ", "[\n\t1\n] "},
               {"$(n) ", "7 "},
               {" $(n)", " 7"},
               {"$$(n)", "$7"},
               {"$(n))", "7)"},
               {")$(n)", ")7"},
               {"($(n))", "(7)"},
               {"Vol $(n)", "Vol 7"},
               {"$(n)%", "7%"},
               {"\n$(n)", "\n7"}};
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(Substituted(testCase.text), Json::Value(testCase.expected));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, SeveralTokensAreReplacedFromLeftToRight) {
  const CTableHandler& handler = Handle("h", R"({"a": 1, "b": "two", "c": null, "d": [3]})");
  EXPECT_EQ(Substituted("$(h.a)$(h.b)"), Json::Value("1two"));
  EXPECT_EQ(Substituted("$(h.b), $(h.c) and $(h.a#)$(h.d[0])."), Json::Value("two,  and 03."));
  EXPECT_EQ(handler.calls(), CCalls({"GetValue h.a", "GetValue h.b", "GetValue h.b", "GetValue h.c",
                                     "GetValue h.a", "GetIndexedValue h.d [0]"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, BodyEndsAtTheFirstClosingParenthesis) {
  Handle("a(b", "5");
  Handle("a$(b", "[6]");
  EXPECT_EQ(Substituted("$(a(b))"), Json::Value("5)"));
  EXPECT_EQ(Substituted("$(a(b)"), Json::Value(5));
  EXPECT_EQ(Substituted("$(a$(b)"), Parse("[6]"));
  EXPECT_EQ(Substituted("$(a$(b)c)"), Json::Value("[\n\t6\n]c)"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, BodyIsPassedOnAsWritten) {
  const CTableHandler& time = Handle("time", R"("noon")");
  Handle(" n ", "7");
  EXPECT_EQ(Substituted("$(time: %H - $(%M] )"), Json::Value("noon"));
  EXPECT_EQ(Substituted("at $(time:%H:%M)."), Json::Value("at noon."));
  EXPECT_EQ(Substituted("$( n )"), Json::Value(7));
  EXPECT_EQ(time.calls(), CCalls({"GetValue time : %H - $(%M] ", "GetValue time :%H:%M"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, EmptyBodyHasNoHandler) {
  EXPECT_EQ(Substituted("$()"), Json::Value());
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: no token handler for: .\n");
  EXPECT_EQ(Substituted("<$()>"), Json::Value("<>"));
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: no token handler for: .\n");
}

TEST_F(TokenSubstitution, MissingHandlerGivesNullOrEmptyText) {
  Handle("n", "7");
  EXPECT_EQ(Substituted("$(nope)"), Json::Value());
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: no token handler for: nope.\n");
  EXPECT_EQ(Substituted("a $(nope.x) $(n) $(N)"), Json::Value("a  7 "));
  EXPECT_EQ(Errors(),
            "CTokenResolver::GetTokenValue: no token handler for: nope.x.\n"
            "CTokenResolver::GetTokenValue: no token handler for: N.\n");
}

TEST_F(TokenSubstitution, DeliveredTextIsNeverScannedForTokens) {
  Handle("a", R"J("$(b)")J");
  Handle("dollar", R"("$")");
  Handle("open", R"("$(")");
  Handle("close", R"J(")")J");
  const CTableHandler& b = Handle("b", "2");
  EXPECT_EQ(Substituted("$(a)"), Json::Value("$(b)"));
  EXPECT_EQ(Substituted("<$(a)>"), Json::Value("<$(b)>"));
  EXPECT_EQ(Substituted("$(dollar)(b)"), Json::Value("$(b)"));
  EXPECT_EQ(Substituted("$(open)b)"), Json::Value("$(b)"));
  EXPECT_EQ(Substituted("$(open)$(close)"), Json::Value("$()"));
  EXPECT_EQ(b.calls(), CCalls());
  EXPECT_EQ(Substituted("$(open)b) $(b)"), Json::Value("$(b) 2"));
  EXPECT_EQ(b.calls(), CCalls({"GetValue b"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, UnterminatedFirstTokenLeavesTheValue) {
  const CTableHandler& handler = Handle("b", "2");
  for (const char* text : {"$(", "$(b", "x $(b", "x) $(b", "$(b $(b", ")$("}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Substituted(text), Json::Value(text));
    EXPECT_EQ(Errors(), missingEnd);
  }
  EXPECT_EQ(handler.calls(), CCalls());
}

TEST_F(TokenSubstitution, UnterminatedLaterTokenKeepsWhatWasReplaced) {
  const CTableHandler& a = Handle("a", "1");
  const CTableHandler& b = Handle("b", "2");
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"x $(a) y $(b", "x 1 y $(b"}, {"$(a)$(", "1$("}, {"$(a)$(a) $(b $(a", "11 $(b $(a"}};
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(Substituted(testCase.text), Json::Value(testCase.expected));
    EXPECT_EQ(Errors(), missingEnd);
  }
  EXPECT_EQ(a.calls().size(), 4u);
  EXPECT_EQ(b.calls(), CCalls());
}

TEST_F(TokenSubstitution, ReplacementByEmptyTextCountsAsReplacement) {
  EXPECT_EQ(Substituted("$(nope)$(b"), Json::Value("$(b"));
  EXPECT_EQ(Errors(), std::string("CTokenResolver::GetTokenValue: no token handler for: nope.\n") +
                          missingEnd);
}

TEST_F(TokenSubstitution, ExceptionLeavesTheValue) {
  const CTableHandler& handler = Handle("n", "7");
  const CThrowingHandler throwing;
  tokens.Set("bad", &throwing);

  Json::Value value = "$(n/0)";
  EXPECT_THROW(tokens.SubstituteTokenValues(value), std::runtime_error);
  EXPECT_EQ(value, Json::Value("$(n/0)"));
  value = "a $(n) $(bad) $(n)";
  EXPECT_THROW(tokens.SubstituteTokenValues(value), std::out_of_range);
  EXPECT_EQ(value, Json::Value("a $(n) $(bad) $(n)"));

  EXPECT_EQ(handler.calls(), CCalls({"GetValue n", "GetValue n"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, EmbeddedNulIsOrdinaryText) {
  Handle("n", "7");
  const std::string nul(1, '\0');
  EXPECT_EQ(Substituted("a" + nul + "$(n)" + nul), Json::Value("a" + nul + "7" + nul));
  EXPECT_EQ(Substituted("$(n)" + nul), Json::Value("7" + nul));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, HundredThousandTokensEachAskTheirHandlerOnce) {
  constexpr int count = 100000;
  const CTableHandler& handler = Handle("n", R"("seven")");
  EXPECT_TRUE(Substituted(Repeated("$(n)-", count)) == Json::Value(Repeated("seven-", count)));
  EXPECT_EQ(handler.calls().size(), std::size_t{count});
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenSubstitution, HundredThousandUnterminatedStartsAreOneFault) {
  const CTableHandler& handler = Handle("n", "7");
  const std::string starts = Repeated("$(", 100000);
  EXPECT_TRUE(Substituted(starts) == Json::Value(starts));
  EXPECT_EQ(Errors(), missingEnd);
  EXPECT_EQ(handler.calls(), CCalls());

  EXPECT_TRUE(Substituted("$(n)" + starts) == Json::Value("7" + starts));
  EXPECT_EQ(Errors(), missingEnd);
  EXPECT_EQ(handler.calls(), CCalls({"GetValue n"}));
}

TEST_F(TokenSubstitution, ContentsStringsAreSubstituted) {
  Handle("n", "7");
  Handle("List", R"J(["$(n)", 2])J");
  EXPECT_EQ(
      Resolve(R"J({"Contents":["Vol $(n)","$(n)","$(List)","$(gone)","$(n) $(n",["$(n)"]]})J"),
      R"J({"Contents":["Vol 7",7,["$(n)",2],null,"7 $(n",["$(n)"]]})J");
  EXPECT_EQ(Errors(), std::string("CTokenResolver::GetTokenValue: no token handler for: gone.\n") +
                          missingEnd);
}

}  // namespace
