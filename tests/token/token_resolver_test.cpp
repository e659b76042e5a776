#include "TokenTemplateResolver/token_resolver.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <map>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "support/resolver_fixture.h"

namespace {

using Strings = std::vector<std::string>;

/// A token body, its value and what is written to standard error.
struct CValueRow {
  std::string body;
  Json::Value result;
  std::string errors;
};

class TokenRegistryTest : public ResolverTest {
 protected:
  /// The name under which `parts` are found, "(none)" when they are not.
  std::string FoundName(const CTokenParts& parts) {
    const auto found = tokens.find(parts);
    return found == tokens.handlers().end() ? "(none)" : found->first;
  }

  void ExpectValues(const std::vector<CValueRow>& rows) {
    for (const CValueRow& row : rows) {
      SCOPED_TRACE("body: " + row.body);
      EXPECT_EQ(tokens.GetTokenValue(row.body), row.result);
      EXPECT_EQ(Errors(), row.errors);
    }
  }
};

// --- Set and find ---

class TokenRegistry : public TokenRegistryTest {};

TEST_F(TokenRegistry, EmptyRegistryFindsNothing) {
  EXPECT_TRUE(tokens.handlers().empty());
  EXPECT_EQ(FoundName({"Clock"}), "(none)");
  ExpectValues({{"Clock", {}, "CTokenResolver::GetTokenValue: no token handler for: Clock.\n"},
                {"", {}, "CTokenResolver::GetTokenValue: no token handler for: .\n"}});
  for (const char* text : {"Clock", "", "#", "a.b"}) {
    EXPECT_FALSE(tokens.IsResolvable(text)) << text;
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenRegistry, SetStoresNameAndPointerUnchecked) {
  const CTableHandler& handler = Handle("", "1");
  tokens.Set(" a[1].B ", &handler);
  tokens.Set("null", nullptr);
  ASSERT_EQ(tokens.handlers().size(), 3u);
  EXPECT_EQ(tokens.handlers().at(""), &handler);
  EXPECT_EQ(tokens.handlers().at(" a[1].B "), &handler);
  EXPECT_EQ(tokens.handlers().at("null"), nullptr);
  EXPECT_EQ(FoundName({"null", "x"}), "null");
  EXPECT_TRUE(tokens.IsResolvable("null.x"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenRegistry, SecondSetOfANameReplacesTheHandler) {
  const CTableHandler& first = Handle("a", "1");
  const CTableHandler& second = Handle("a", "2");
  EXPECT_EQ(tokens.handlers().size(), 1u);
  ExpectValues({{"a", 2, ""}});
  EXPECT_EQ(first.calls(), Strings());
  EXPECT_EQ(second.calls(), Strings{"GetValue a"});
}

TEST_F(TokenRegistry, NamesAreOrderedByteWise) {
  EXPECT_TRUE(
      (std::is_same_v<CTokenResolver::CHandlers, std::map<std::string, const ITokenHandler*>>));
  for (const char* name : {"\xC3\xA4", "b", "a.b", "B", "a", "a-"}) Handle(name, "1");
  Strings names;
  for (const auto& entry : tokens.handlers()) names.push_back(entry.first);
  EXPECT_EQ(names, (Strings{"B", "a", "a-", "a.b", "b", "\xC3\xA4"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenRegistry, LongestPrefixOfWholePartsWins) {
  Handle("A", "1");
  Handle("A.b", "2");
  Handle("A.b.c.d", "3");
  Handle("X.y", "4");
  const struct {
    Strings parts;
    std::string name;
  } rows[] = {{{"A"}, "A"},
              {{"A", "x"}, "A"},
              {{"A", "b"}, "A.b"},
              {{"A", "b", "c"}, "A.b"},
              {{"A", "b", "c", "d"}, "A.b.c.d"},
              {{"A", "b", "c", "d", "e", "f"}, "A.b.c.d"},
              {{"A", "bc"}, "A"},
              {{"A", "B"}, "A"},
              {{"a"}, "(none)"},
              {{"A "}, "(none)"},
              {{"Ab"}, "(none)"},
              {{"x", "A"}, "(none)"},
              {{"X"}, "(none)"},
              {{"X", "x"}, "(none)"},
              {{"X", "y", "z"}, "X.y"},
              {{}, "(none)"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(row.parts));
    EXPECT_EQ(FoundName(CTokenParts(row.parts)), row.name);
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenRegistry, HandlerNameMustCoverAWholePart) {
  Handle("Clo", "1");
  EXPECT_EQ(FoundName({"Clock"}), "(none)");
  EXPECT_EQ(FoundName({"Clo", "ck"}), "Clo");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenRegistry, EmptyNameAnswersAnEmptyPartButNotAnEmptyPath) {
  Handle("", "[1, 2]");
  EXPECT_EQ(FoundName({}), "(none)");
  EXPECT_EQ(FoundName({""}), "");
  ExpectValues({{"#", 2u, ""},
                {"", {}, "CTokenResolver::GetTokenValue: no token handler for: .\n"},
                {"+1", {}, "CTokenResolver::GetTokenValue: no token handler for: +1.\n"}});
}

TEST_F(TokenRegistry, LookUpsLeaveTheRegistryAsItIs) {
  const CTableHandler& handler = Handle("A", "[1]");
  tokens.GetTokenValue("A[x.y]+z.w");
  tokens.GetTokenValue("B");
  tokens.IsResolvable("C");
  ASSERT_EQ(tokens.handlers().size(), 1u);
  EXPECT_EQ(tokens.handlers().at("A"), &handler);
  EXPECT_EQ(Errors(),
            "CTokenResolver::GetTokenValue: index must be integer in: A[x.y]+z.w.\n"
            "CTokenResolver::GetTokenValue: no token handler for: B.\n");
}

// --- getTokenElement ---

class TokenElement : public TokenRegistryTest {};

TEST_F(TokenElement, NoPartsGiveNull) {
  Handle("", "1");
  EXPECT_EQ(tokens.getTokenElement({}), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenElement, OnePartIsALiteral) {
  const CTableHandler& row = Handle("Row", "7");
  const struct {
    const char* part;
    int value;
    std::string errors;
  } rows[] = {
      {"2", 2, ""},
      {"-2", -2, ""},
      {" +2", 2, ""},
      {"0x10", 16, ""},
      {"010", 8, ""},
      {"", 0, ""},
      {"99999999999", 2147483647, ""},
      {"-99999999999", -2147483647 - 1, ""},
      {"Row", 0, "CTokenResolver::stringToInt: cannot convert value to signed integer: Row.\n"},
      {"2 ", 0, "CTokenResolver::stringToInt: cannot convert value to signed integer: 2 .\n"}};
  for (const auto& literal : rows) {
    SCOPED_TRACE(literal.part);
    EXPECT_EQ(tokens.getTokenElement({literal.part}), Json::Value(literal.value));
    EXPECT_EQ(Errors(), literal.errors);
  }
  EXPECT_EQ(row.calls(), Strings());
}

TEST_F(TokenElement, PathIsAskedOfItsHandlerAndCoerced) {
  const struct {
    const char* value;
    int result;
    std::string errors;
  } rows[] = {{"7", 7, ""},
              {"2.9", 2, ""},
              {"true", 1, ""},
              {"\"0x10\"", 16, ""},
              {"null", 0, ""},
              {"[3]", 0, ""},
              {"{\"a\": 3}", 0, ""},
              {"\"abc\"", 0,
               "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.value);
    const CTableHandler& handler = Handle("Sel", std::string(R"({"row": )") + row.value + "}");
    EXPECT_EQ(tokens.getTokenElement({"Sel", "row"}), Json::Value(row.result));
    EXPECT_EQ(handler.calls(), Strings{"GetPartsValue Sel.row"});
    EXPECT_EQ(Errors(), row.errors);
  }
}

TEST_F(TokenElement, PathGoesToTheLongestPrefix) {
  const CTableHandler& shallow = Handle("Sel", R"({"row": 1})");
  const CTableHandler& deep = Handle("Sel.row", R"({"row": 2})");
  EXPECT_EQ(tokens.getTokenElement({"Sel", "row"}), Json::Value(2));
  EXPECT_EQ(shallow.calls(), Strings());
  EXPECT_EQ(deep.calls(), Strings{"GetPartsValue Sel.row"});
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenElement, PathWithoutHandlerIsNull) {
  Handle("row", "1");
  EXPECT_EQ(tokens.getTokenElement({"Sel", "row"}), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenElement, NumberBeyondIntRaisesJsonCppsError) {
  Handle("Sel", R"({"row": 4294967295})");
  EXPECT_THROW(tokens.getTokenElement({"Sel", "row"}), Json::LogicError);
  EXPECT_EQ(Errors(), "");
}

// --- GetTokenValue: handler, index, count, operand ---

class TokenValue : public TokenRegistryTest {};

TEST_F(TokenValue, KeepsTheTypeOfTheHandlersValue) {
  for (const char* json : {"7", "2.5", "\"1,2\"", "true", "null", "[1, 2]", "{\"a\": 1}"}) {
    SCOPED_TRACE(json);
    Handle("a", json);
    ExpectValues({{"a", Parse(json), ""}});
  }
}

TEST_F(TokenValue, WithoutHandlerIsNullAndNamesTheBody) {
  Handle("Clock", "1");
  const std::string line = "CTokenResolver::GetTokenValue: no token handler for: ";
  ExpectValues({{"clock", {}, line + "clock.\n"},
                {"Clo", {}, line + "Clo.\n"},
                {" Clock", {}, line + " Clock.\n"},
                {"x.y:%H[1]+2", {}, line + "x.y:%H[1]+2.\n"},
                {"x#", {}, line + "x#.\n"},
                {"$(Clock)", {}, line + "$(Clock).\n"},
                {"x\n", {}, line + "x\n.\n"}});
}

TEST_F(TokenValue, WithoutHandlerNothingElseIsAsked) {
  const CTableHandler& other = Handle("Sel", "1");
  ExpectValues({{"x[Sel.row]/Sel.zero",
                 {},
                 "CTokenResolver::GetTokenValue: no token handler for: x[Sel.row]/Sel.zero.\n"}});
  EXPECT_EQ(other.calls(), Strings());
}

TEST_F(TokenValue, WholePathReachesTheMostSpecificHandler) {
  const CTableHandler& shallow = Handle("A", "1");
  const CTableHandler& deep = Handle("A.b", "2");
  ExpectValues({{"A.b.c", {}, ""}, {"A.x", {}, ""}, {"A", 1, ""}});
  EXPECT_EQ(deep.calls(), Strings{"GetValue A.b.c"});
  EXPECT_EQ(shallow.calls(), (Strings{"GetValue A.x", "GetValue A"}));
}

TEST_F(TokenValue, RegistryMayChangeBetweenTokens) {
  Handle("a", "1");
  ExpectValues({{"a.b", {}, ""}});
  Handle("a.b", R"({"b": 2})");
  ExpectValues({{"a.b", 2, ""}});
}

class TokenIndex : public TokenRegistryTest {
 protected:
  TokenIndex() { Handle("List", R"(["a", "b", "c", 40, "5"])"); }
};

TEST_F(TokenIndex, SelectsTheIndexedValue) {
  Handle("Sel", R"({"row": 2})");
  ExpectValues({{"List[1]", "b", ""},
                {"List[0x2]", "c", ""},
                {"List[Sel.row]", "c", ""},
                {"List[9]", {}, ""},
                {"List[-1]", {}, ""},
                {"List[1]x", "b", ""},
                {"List:arg[1]", "b", ""},
                {"List[1]:arg", "b", ""}});
}

TEST_F(TokenIndex, TextThatIsNoNumberIsIndexZero) {
  const CTableHandler& list = Handle("List", R"(["a", "b"])");
  ExpectValues({{"List[abc]", "a",
                 "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n"}});
  EXPECT_EQ(list.calls(), Strings{"GetIndexedValue List [0]"});
}

TEST_F(TokenIndex, PathWithoutHandlerGivesNullWithoutCountOrArithmetic) {
  const CTableHandler& list = Handle("List", "[1, 2, 3]");
  const CTableHandler& add = Handle("Add", "1");
  const std::string line = "CTokenResolver::GetTokenValue: index must be integer in: ";
  ExpectValues({{"List[Sel.row]", {}, line + "List[Sel.row].\n"},
                {"List#[Sel.row]", {}, line + "List#[Sel.row].\n"},
                {"List[Sel.row]+Add.x", {}, line + "List[Sel.row]+Add.x.\n"},
                {"List[Sel.row]/0", {}, line + "List[Sel.row]/0.\n"},
                {"List[2.5]", {}, line + "List[2.5].\n"}});
  EXPECT_EQ(list.calls(), Strings());
  EXPECT_EQ(add.calls(), Strings());
}

TEST_F(TokenIndex, EmptyIndexConvertsTextToAnArray) {
  Handle("Csv", R"("x, y,")");
  Handle("Number", "5");
  Handle("Nothing", "null");
  ExpectValues({{"List[]", Parse(R"(["a", "b", "c", 40, "5"])"), ""},
                {"Csv[]", Parse(R"(["x", " y", ""])"), ""},
                {"Csv[.]", Parse(R"(["x", " y", ""])"), ""},
                {"Number[]", 5, ""},
                {"Nothing[]", {}, ""}});
}

TEST_F(TokenIndex, UnclosedIndexIsIgnored) {
  const CTableHandler& csv = Handle("Csv", R"("x,y")");
  ExpectValues(
      {{"Csv[1", "x,y", ""}, {"Csv[", "x,y", ""}, {"Csv[x.y", "x,y", ""}, {"Csv#[1", 2u, ""}});
  EXPECT_EQ(csv.calls(), Strings(4, "GetValue Csv"));
}

TEST_F(TokenIndex, PartsOfTwoIndicesFormOnePath) {
  const CTableHandler& path = Handle("1", R"({"3": 3})");
  ExpectValues({{"List[1]+2[3]", 42, ""}});
  EXPECT_EQ(path.calls(), Strings{"GetPartsValue 1.3"});
}

class TokenCount : public TokenRegistryTest {};

TEST_F(TokenCount, IsAnUnsignedNumberOfElements) {
  const struct {
    const char* json;
    unsigned int count;
  } rows[] = {{"[1, 2, 3, 4, 5]", 5u},
              {"[]", 0u},
              {"{\"a\": 1, \"b\": 2}", 2u},
              {"{}", 0u},
              {"\"a,b,c\"", 3u},
              {"\"a\"", 1u},
              {"\"\"", 0u},
              {"7", 0u},
              {"2.5", 0u},
              {"true", 0u},
              {"null", 0u}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.json);
    Handle("List", row.json);
    ExpectValues({{"List#", row.count, ""}, {"List#.x", row.count, ""}});
  }
}

TEST_F(TokenCount, FollowsTheIndexAndPrecedesTheArithmetic) {
  Handle("List", R"(["a,b", [1, 2, 3], 7])");
  ExpectValues({{"List#*2", 6, ""},
                {"List#-4", -1, ""},
                {"List#[0]", 2u, ""},
                {"List#[1]", 3u, ""},
                {"List#[2]", 0u, ""},
                {"List#[]", 3u, ""},
                {"List#[1]+1", 4, ""},
                {"List#+", 3u, ""},
                {"List[1]#", Parse("[1, 2, 3]"), ""}});
}

TEST_F(TokenCount, OfTextWithAnEmptyIndexIsTheNumberOfItsPieces) {
  Handle("Csv", R"("a,b,c")");
  ExpectValues({{"Csv#[]", 3u, ""}, {"Csv#[]*2", 6, ""}});
}

class TokenOperand : public TokenRegistryTest {
 protected:
  TokenOperand() { Handle("Volume", R"("7")"); }
};

TEST_F(TokenOperand, AppliesTheOperator) {
  Handle("Offset", R"({"value": 3})");
  Handle("List", "[10, 20]");
  ExpectValues({{"Volume+1", 8, ""},
                {"Volume-10", -3, ""},
                {"Volume*0x10", 112, ""},
                {"Volume/2", 3, ""},
                {"Volume/-2", -3, ""},
                {"Volume+Offset.value", 10, ""},
                {"List[1]+1", 21, ""},
                {"List[5]+1", 1, ""}});
}

TEST_F(TokenOperand, MissingOperandIsIgnoredSilently) {
  ExpectValues(
      {{"Volume+", "7", ""}, {"Volume/", "7", ""}, {"Volume+.", "7", ""}, {"Volume+:1", "7", ""}});
}

TEST_F(TokenOperand, OnePartIsALiteralEvenWhenAHandlerHasItsName) {
  const CTableHandler& x = Handle("x", "5");
  ExpectValues(
      {{"Volume+x", 7, "CTokenResolver::stringToInt: cannot convert value to signed integer: x.\n"},
       {"Volume+1-2", 7,
        "CTokenResolver::stringToInt: cannot convert value to signed integer: 1-2.\n"},
       {"Volume*x", 0,
        "CTokenResolver::stringToInt: cannot convert value to signed integer: x.\n"}});
  EXPECT_EQ(x.calls(), Strings());
}

TEST_F(TokenOperand, PathWithoutHandlerKeepsTheValueBeforeArithmetic) {
  Handle("List", R"(["a", "b"])");
  const std::string line = "CTokenResolver::GetTokenValue: expression operand must be integer in: ";
  ExpectValues({{"Volume*x.y", "7", line + "Volume*x.y.\n"},
                {"Volume/2.0", "7", line + "Volume/2.0.\n"},
                {"List+x.y", Parse(R"(["a", "b"])"), line + "List+x.y.\n"},
                {"List[1]+x.y", "b", line + "List[1]+x.y.\n"},
                {"List#+x.y", 2u, line + "List#+x.y.\n"}});
}

TEST_F(TokenOperand, DivisionByZeroReachesTheCaller) {
  Handle("Zero", R"({"value": 0})");
  for (const char* body : {"Volume/0", "Volume#/0", "Volume/Zero.value", "Volume/Zero.none"}) {
    SCOPED_TRACE(body);
    try {
      tokens.GetTokenValue(body);
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
    }
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(TokenOperand, ValueThatIsNoNumberRaisesJsonCppsError) {
  Handle("List", "[1]");
  Handle("Text", R"("abc")");
  EXPECT_THROW(tokens.GetTokenValue("List+1"), Json::LogicError);
  EXPECT_THROW(tokens.GetTokenValue("Volume[]+1"), Json::LogicError);
  EXPECT_EQ(Errors(), "");
  EXPECT_THROW(tokens.GetTokenValue("Text+1"), Json::LogicError);
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n");
}

TEST_F(TokenValue, ReachesTheResolvedDocumentWithItsType) {
  Handle("List", R"(["a", "b,c"])");
  EXPECT_EQ(Resolve(R"j({"Contents": ["$(List#)", "$(List[])", "n=$(List#*2)", "$(List[x.y])"]})j"),
            R"({"Contents":[2,["a","b,c"],"n=4",null]})");
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: index must be integer in: List[x.y].\n");
}

TEST_F(TokenValue, IndexPathIsWrittenBare) {
  Handle("List", "\"a,b\"");
  Handle("Sel", R"({"row": 1})");
  Json::Value text = "$(List[$(Sel.row)])";
  tokens.SubstituteTokenValues(text);
  EXPECT_EQ(text, Json::Value("a,b])"));
  EXPECT_EQ(Errors(), "");
}

// --- Tests on a value ---

class TokenPredicates : public TokenRegistryTest {};

TEST_F(TokenPredicates, BareBodyOfARegisteredHandlerIsResolvable) {
  const CTableHandler& clock = Handle("Clock", "1");
  const struct {
    const char* text;
    bool resolvable;
  } rows[] = {
      {"Clock", true},    {"Clock.time", true}, {"Clock:%H", true},   {"Clock[x.y]+z", true},
      {"Clock#", true},   {"Clock[", true},     {"", false},          {"$(Clock)", false},
      {"Clock)", false},  {" Clock", false},    {"Clockwork", false}, {"clock", false},
      {"x.Clock", false}, {":Clock", false},    {".Clock", true}};
  for (const auto& row : rows) {
    EXPECT_EQ(tokens.IsResolvable(row.text), row.resolvable) << row.text;
  }
  EXPECT_EQ(clock.calls(), Strings());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenPredicates, TokenSubstringNeedsAStartAndALaterEnd) {
  const CTableHandler& c = Handle("c", "1");
  const struct {
    std::string text;
    bool contains;
  } rows[] = {{"$(c)", true},
              {"a)b$(c)", true},
              {"x $(c) y", true},
              {"$()", true},
              {"$(c$(d)", true},
              {"$(unknown)", true},
              {std::string("a\0$(c)", 6), true},
              {"a)b$(c", false},
              {"$(", false},
              {"$(c", false},
              {"(c)", false},
              {"$ (c)", false},
              {"c", false},
              {")", false},
              {"", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(tokens.ContainsTokenSubstrings(row.text), row.contains) << row.text;
  }
  EXPECT_EQ(c.calls(), Strings());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenPredicates, OtherThanStringsAreNeitherResolvableNorHoldTokens) {
  Handle("1", "1");
  Handle("true", "1");
  for (const char* json : {"null", "1", "1.0", "true", R"j(["$(1)"])j", R"j({"1": "$(1)"})j"}) {
    EXPECT_FALSE(tokens.IsResolvable(Parse(json))) << json;
    EXPECT_FALSE(tokens.ContainsTokenSubstrings(Parse(json))) << json;
  }
  EXPECT_TRUE(tokens.IsResolvable("1"));
  EXPECT_EQ(Errors(), "");
}

}  // namespace
