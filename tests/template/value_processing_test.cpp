#include <gtest/gtest.h>
#include <json/value.h>
#include <json/writer.h>

#include <cctype>
#include <clocale>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateResolver/regex_match.h"
#include "support/resolver_fixture.h"

namespace {

using CCalls = std::vector<std::string>;

class ValueProcessing : public ResolverTest {
 protected:
  Json::Value ListProcessed(Json::Value list) const {
    resolver.processList(list);
    return list;
  }

  Json::Value Lowercased(Json::Value value) {
    resolver.lowercaseContentsValue(value);
    return value;
  }
};

TEST_F(ValueProcessing, ValueIsSubstitutedInPlace) {
  Handle("n", "7");
  Json::Value value = "$(n)";
  resolver.processValue(value);
  EXPECT_EQ(value, Json::Value(7));
  value = "Img/$(n).PNG";
  resolver.processValue(value);
  EXPECT_EQ(value, Json::Value("Img/7.PNG"));
  value = Parse(R"J(["$(n)"])J");
  resolver.processValue(value);
  EXPECT_EQ(value, Parse(R"J(["$(n)"])J"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, MemberIsProcessedAsACopy) {
  Handle("x", "[1, 2]");
  const std::string text = R"J({"k": "$(x)", "t": "<$(gone)>", "a": ["$(x)"], "n": null, "i": 5})J";
  const Json::Value object = Parse(text);
  EXPECT_EQ(resolver.getValueProcessed(object, "k"), Parse("[1, 2]"));
  EXPECT_EQ(resolver.getValueProcessed(object, "a"), Parse(R"J(["$(x)"])J"));
  EXPECT_EQ(resolver.getValueProcessed(object, "n"), Json::Value());
  EXPECT_EQ(resolver.getValueProcessed(object, "i"), Json::Value(5));
  EXPECT_EQ(Errors(), "");
  EXPECT_EQ(resolver.getValueProcessed(object, "t"), Json::Value("<>"));
  EXPECT_EQ(Errors(), "CTokenResolver::GetTokenValue: no token handler for: gone.\n");
  EXPECT_EQ(object, Parse(text));
}

TEST_F(ValueProcessing, MissingMemberIsNull) {
  const CTableHandler& handler = Handle("x", "7");
  const Json::Value object = Parse(R"J({"k": "$(x)"})J");
  EXPECT_EQ(resolver.getValueProcessed(object, "K"), Json::Value());
  EXPECT_EQ(resolver.getValueProcessed(object, ""), Json::Value());
  EXPECT_EQ(resolver.getValueProcessed(Json::Value(), "k"), Json::Value());
  EXPECT_EQ(object, Parse(R"J({"k": "$(x)"})J"));
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, MemberOfAScalarOrAnArrayIsALogicError) {
  for (const char* text : {"5", "1.5", "true", R"("k")", "[]", R"(["k"])"}) {
    SCOPED_TRACE(text);
    EXPECT_THROW(resolver.getValueProcessed(Parse(text), "k"), Json::LogicError);
    EXPECT_THROW(resolver.getVarNameAsString(Parse(text), "k"), Json::LogicError);
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, VariableNameIsTakenAsItStands) {
  const CTableHandler& handler = Handle("x", R"("row")");
  const Json::Value object = Parse(R"J({"a": "row", "b": " $(x) ", "c": ""})J");
  EXPECT_EQ(resolver.getVarNameAsString(object, "a"), "row");
  EXPECT_EQ(resolver.getVarNameAsString(object, "b"), " $(x) ");
  EXPECT_EQ(resolver.getVarNameAsString(object, "c"), "");
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, VariableNameThatIsNoStringIsEmpty) {
  const Json::Value object =
      Parse(R"({"i": 5, "b": true, "n": null, "a": ["x"], "o": {"i": "x"}})");
  for (const char* key : {"i", "b", "n", "a", "o", "missing"}) {
    SCOPED_TRACE(key);
    EXPECT_EQ(resolver.getVarNameAsString(object, key), "");
  }
  EXPECT_EQ(resolver.getVarNameAsString(Json::Value(), "i"), "");
  EXPECT_FALSE(object.isMember("missing"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, ListEntriesAreProcessedInTheirOrder) {
  const CTableHandler& handler = Handle("h", R"({"a": 1, "b": [2], "c": "x"})");
  EXPECT_EQ(ListProcessed(Parse(R"J(["$(h.c)", "<$(h.a)>", 5, null, "$(h.b)"])J")),
            Parse(R"(["x", "<1>", 5, null, [2]])"));
  EXPECT_EQ(handler.calls(), CCalls({"GetValue h.c", "GetValue h.a", "GetValue h.b"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, ObjectMembersAreProcessedByTheOrderOfTheirNames) {
  const CTableHandler& handler = Handle("h", R"({"a": 1, "b": [2], "c": "x"})");
  EXPECT_EQ(ListProcessed(Parse(R"J({"z": "$(h.a)", "$(h.a)": "$(h.b)", "m": "$(h.c)"})J")),
            Parse(R"J({"z": 1, "$(h.a)": [2], "m": "x"})J"));
  EXPECT_EQ(handler.calls(), CCalls({"GetValue h.b", "GetValue h.c", "GetValue h.a"}));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, ListIsProcessedOneLevelDeep) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* text : {"[]", "{}", R"J([["$(n)"], {"k": "$(n)"}])J",
                           R"J({"a": ["$(n)"], "o": {"k": "$(n)"}})J", R"(["A.PNG"])"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ListProcessed(Parse(text)), Parse(text));
  }
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, ListThatIsNeitherArrayNorObjectIsAFault) {
  const CTableHandler& handler = Handle("n", "7");
  for (const char* text : {"null", "5", "1.5", "true", R"("")", R"J("$(n)")J"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ListProcessed(Parse(text)), Parse(text));
    EXPECT_EQ(Errors(), "CTemplateResolver::processList: element must be an array or object.\n");
  }
  EXPECT_EQ(handler.calls(), CCalls());
}

TEST_F(ValueProcessing, ExceptionLeavesTheListPartlyProcessed) {
  Handle("n", "7");
  Json::Value list = Parse(R"J(["$(n)", "$(n/0)", "$(n)"])J");
  EXPECT_THROW(resolver.processList(list), std::runtime_error);
  EXPECT_EQ(list, Parse(R"J([7, "$(n/0)", "$(n)"])J"));
  const Json::Value object = Parse(R"J({"k": "$(n/0)"})J");
  EXPECT_THROW(resolver.getValueProcessed(object, "k"), std::runtime_error);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, NamesOfImagesAndFontsAreLowercased) {
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"Images/Logo.PNG", "images/logo.png"},
      {"A.JPG", "a.jpg"},
      {"A.JPEG", "a.jpeg"},
      {"x.Ttf", "x.ttf"},
      {"A.Otf", "a.otf"},
      {"A.BMP", "a.bmp"},
      {"ALREADY.png", "already.png"},
      {"Old.GIF.Png", "old.gif.png"},
      {"DIR/.PNG", "dir/.png"},
      {"..PNG", "..png"},
      {" .PNG", " .png"},
      {"My File: A+B.Png", "my file: a+b.png"},
      {"Two\nLines.PNG", "two\nlines.png"},
      {"\xC3\x84.PNG", "\xC3\x84.png"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(Lowercased(testCase.text), Json::Value(testCase.expected));
  }
  EXPECT_EQ(Errors(), "");
}

// The judgement takes short cuts; the expression that defines it decides what is right.
TEST_F(ValueProcessing, NamesAreJudgedAsTheExpressionDoes) {
  const std::vector<std::string> pieces = {
      ".",   "A",  "b", "/",    "png",  "JPG",      "jPeG",     "ttf", "OTF", "bmp",
      "PNG", "\n", " ", "\x80", "\xff", "\xc3\xa4", "\xc4\xb0", "gif", ".PNG"};
  std::minstd_rand random(1);
  for (const char* locale : {"C", "C.UTF-8"}) {
    SCOPED_TRACE(locale);
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
    int matches = 0;
    for (int i = 0; i < 20000; ++i) {
      std::string text;
      for (auto n = random() % 6; n > 0; --n) text += pieces[random() % pieces.size()];
      const bool matched = regexMatch(text.c_str(), R"((.+\.(png|jpg|jpeg|ttf|otf|bmp))$)");
      std::string lowered = text;
      for (char& c : lowered) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      ASSERT_EQ(Lowercased(text).asString(), matched ? lowered : text) << text;
      matches += matched ? 1 : 0;
    }
    EXPECT_GT(matches, 500);
  }
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, LongTextIsJudgedInNoTime) {
  const std::string text(1000000, 'A');
  EXPECT_EQ(Lowercased(text).asString(), text);
  const std::string foreign = text + "\xff.PNG";
  EXPECT_EQ(Lowercased(foreign).asString().size(), foreign.size());
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, OtherTextKeepsItsCase) {
  for (const char* text :
       {"", "Title", ".png", ".PNG", "Logo.png.TXT", "A.gif", "A.GIF", "PNG", "APNG", "A_PNG",
        "A.JPE", "A.PNGX", "A.XPNG", "A.PNG ", "A.PNG\n", "A.PNG/B", "A.P NG"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Lowercased(text), Json::Value(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, OnlyStringsAreLowercased) {
  for (const char* text : {"null", "5", "true", R"(["A.PNG"])", R"({"A.PNG": "A.PNG"})"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Lowercased(Parse(text)), Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, ContentsEntriesAreLowercasedOnceResolved) {
  Handle("img", R"("Images/A.PNG")");
  Handle("ext", R"("TTF")");
  Handle("list", R"(["A.PNG"])");
  EXPECT_EQ(Resolve(R"J({"Contents":["B.PNG","$(img)","Font.$(ext)","$(list)",["C.PNG"],"No.GIF",
                                     {"File":"D.PNG","Contents":["E.BMP"]}]})J"),
            R"({"Contents":["b.png","images/a.png","font.ttf",["A.PNG"],["C.PNG"],"No.GIF",)"
            R"({"Contents":["e.bmp"],"File":"D.PNG"}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ValueProcessing, TokenThatLooksLikeAFileNameIsResolvedBeforeItsCaseCounts) {
  Handle("Name", R"("Logo.PNG")");
  EXPECT_EQ(Resolve(R"J({"Contents":["$(Name)","$(Name","$(Name.PNG","X $(Name"]})J"),
            R"J({"Contents":["logo.png","$(Name","$(name.png","X $(Name"]})J");
  EXPECT_EQ(Errors(),
            "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.\n"
            "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.\n"
            "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.\n");
}

}  // namespace
