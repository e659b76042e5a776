// Texts seen before: whoever looks at results, messages or the stack sees no difference.
#include <gtest/gtest.h>

#include <locale>
#include <string>

#include "TokenTemplateResolver/included_file.h"
#include "support/resolver_fixture.h"

namespace {

class ParsedTexts : public ResolverTest {};

TEST_F(ParsedTexts, ResolveAgainToTheValuesOfTheTime) {
  const std::string page = R"j({"Contents": [{"Bounds": [1, 2, "50%", 4]}, "$(volume)"]})j";
  Handle("volume", "7");
  EXPECT_EQ(Resolve(page), R"({"Contents":[{"Bounds":[1,2,640,4]},7]})");
  Handle("volume", "8");
  resolver.SetScreenSize(100, 200);
  EXPECT_EQ(Resolve(page), R"({"Contents":[{"Bounds":[1,2,100,4]},8]})");
  EXPECT_EQ(Resolve(page), R"({"Contents":[{"Bounds":[1,2,100,4]},8]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ParsedTexts, AreToldApartByEveryByte) {
  EXPECT_EQ(Resolve(R"({"Contents": ["a"]})"), R"({"Contents":["a"]})");
  EXPECT_EQ(Resolve(R"({"Contents": ["b"]})"), R"({"Contents":["b"]})");
  EXPECT_EQ(Resolve(R"({"Contents": ["a"]} )"), R"({"Contents":["a"]})");
  EXPECT_EQ(Resolve(std::string("{\"Contents\": [\"a\"]}\0x", 21)), R"({"Contents":["a"]})");
  EXPECT_EQ(Resolve(R"({"Contents": ["a"]})"), R"({"Contents":["a"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(ParsedTexts, KeepTheirComments) {
  const std::string page = "/* a */ {\"Contents\": [1 // b\n]}";
  const std::string first = Resolve(page);
  EXPECT_EQ(first, "/* a */{\"Contents\":[1 // b]}");
  EXPECT_EQ(Resolve(page), first);
  EXPECT_EQ(Resolve(page), first);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ParsedTexts, ThatAreNoObjectsAreReportedEachTime) {
  for (const char* text : {"", "{", "[1]", "null", "{\"a\" 1}"}) {
    SCOPED_TRACE(text);
    resolver.Input(text);
    const std::string first = Errors();
    EXPECT_EQ(first.find("CTemplateResolver::read:"), 0U);
    resolver.Input("{}");
    EXPECT_EQ(Errors(), "");
    resolver.Input(text);
    EXPECT_EQ(Errors(), first);
    Json::Value document;
    resolver.read(document, text);
    EXPECT_EQ(Errors(), first);
    resolver.Input("{}");
  }
}

TEST_F(ParsedTexts, AreReadAgainWhateverBecameOfTheDocument) {
  Json::Value first;
  resolver.read(first, R"({"a": {"b": 1}})");
  first["a"] = "changed";
  Json::Value second(5);
  resolver.read(second, R"({"a": {"b": 1}})");
  EXPECT_EQ(second, Parse(R"({"a": {"b": 1}})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ParsedTexts, BelongToTheResolverAndItsCopiesEach) {
  const std::string page = R"({"Contents": [{"Bounds": [0, 0, "100%", "100%"]}]})";
  const std::string resolved = R"({"Contents":[{"Bounds":[0,0,1280,720]}]})";
  EXPECT_EQ(Resolve(page), resolved);
  CTemplateResolver copy(resolver);
  EXPECT_EQ(Resolve(page), resolved);
  copy.Input(page);
  copy.Process();
  EXPECT_EQ(copy.Output(), resolved);
  resolver = copy;
  EXPECT_EQ(Resolve(page), resolved);
  EXPECT_EQ(Errors(), "");
}

/// Numbers with a decimal comma, as in most of Europe.
class CDecimalComma : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
};

TEST_F(ParsedTexts, AreThoseOfTheLocaleInForce) {
  const std::string page = R"({"Contents": [1.5]})";
  EXPECT_EQ(Resolve(page), R"({"Contents":[1.5]})");
  EXPECT_EQ(Errors(), "");
  const std::locale before = std::locale::global(std::locale(std::locale(), new CDecimalComma));
  EXPECT_EQ(Resolve(page), R"({"Contents":[1.0]})");  // JsonCpp reads up to the point
  std::locale::global(before);
  EXPECT_EQ(Resolve(page), R"({"Contents":[1.5]})");
  EXPECT_EQ(Errors(), "");
}

}  // namespace
