#include <gtest/gtest.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/resolver_fixture.h"

namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

struct CCase {
  Json::Value value;
  Json::Value expected;
};
using CCases = std::vector<CCase>;
using CConversion = void (*)(Json::Value&);

Json::Value Converted(CConversion conversion, Json::Value value) {
  conversion(value);
  return value;
}

class ValueConversion : public ResolverTest {
 protected:
  /// Each value becomes what is expected, type included, and nothing is reported.
  void ExpectConversions(CConversion conversion, const CCases& cases) {
    for (const CCase& testCase : cases) {
      SCOPED_TRACE(testCase.value.toStyledString());
      EXPECT_EQ(Converted(conversion, testCase.value), testCase.expected);
      EXPECT_EQ(Errors(), "");
    }
  }
};
class TruthValueConversion : public ValueConversion {};
class IntConversion : public ValueConversion {};
class IntCoercion : public ValueConversion {};
class ColourCoercion : public ValueConversion {};
class StringConversion : public ValueConversion {};
class ArrayConversion : public ValueConversion {};

/// The conversion raises JsonCpp's exception and leaves the value.
void ExpectRangeError(CConversion conversion, const Json::Value& value) {
  SCOPED_TRACE(value.toStyledString());
  Json::Value changed = value;
  EXPECT_THROW(conversion(changed), Json::LogicError);
  EXPECT_EQ(changed, value);
}

TEST_F(TruthValueConversion, EveryTypeHasATruthValue) {
  const std::string nul(1, '\0');
  const CCases cases = {{Json::Value(), false},
                        {0, false},
                        {1, true},
                        {-1, true},
                        {0u, false},
                        {7u, true},
                        {0.0, false},
                        {0.4, false},
                        {0.5, false},
                        {-0.9, false},
                        {1.0, true},
                        {-1.5, true},
                        {false, false},
                        {true, true},
                        {"", false},
                        {"0", false},
                        {"1", true},
                        {"false", true},
                        {"no", true},
                        {" ", true},
                        {"00", true},
                        {" 0", true},
                        {"0.0", true},
                        {"-0", true},
                        {"0" + nul, true},
                        {nul, true},
                        {Parse("[]"), false},
                        {Parse("[0]"), true},
                        {Parse("[null]"), true},
                        {Parse("{}"), true},
                        {Parse(R"({"k": 0})"), true}};
  ExpectConversions(CTokenResolver::ConvertToTruthValue, cases);
}

TEST_F(TruthValueConversion, NumbersBeyondIntRaiseJsonCppsError) {
  for (const char* text : {"2147483648", "4294967295", "-2147483649", "1e10", "-1e10"}) {
    ExpectRangeError(CTokenResolver::ConvertToTruthValue, Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(IntConversion, WholeTextIsReadInTheBaseItAnnounces) {
  const CCases cases = {
      {"", 0},
      {"0", 0},
      {"42", 42},
      {"+42", 42},
      {"  42", 42},
      {"\t\n\v\f\r 42", 42},
      {"010", 8},
      {"-010", -8},
      {"0x10", 16},
      {"0X1f", 31},
      {"-0x10", -16},
      {"+0xF", 15},
      {"2147483647", largest},
      {"2147483648", largest},
      {"-2147483648", smallest},
      {"-2147483649", smallest},
      {"0xFFFFFFFF", largest},
      {"4294967297", largest},
  };
  ExpectConversions(CTokenResolver::ConvertToInt, cases);
}

TEST_F(IntConversion, TextThatDoesNotConvertStays) {
  const std::string nul(1, '\0');
  const std::string texts[] = {"42 ",  "42\n", " ",    "abc",  "4x",      "08",     "0x",  "0xG",
                               "-",    "+",    "+ 5",  "--5",  "1.0",     "1e3",    "1,2", "0b101",
                               "12 3", "-0x",  "0x-1", "$(n)", "5" + nul, nul + "5"};
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Converted(CTokenResolver::ConvertToInt, text), Json::Value(text));
    EXPECT_EQ(Errors(), "CTokenResolver::stringToInt: cannot convert value to signed integer: " +
                            text + ".\n");
  }
}

TEST_F(IntConversion, NumbersAndBooleansBecomeInt) {
  const CCases cases = {
      {5, 5},     {-5, -5},  {5u, 5},    {2147483647u, largest}, {2.9, 2}, {-2.9, -2}, {0.9, 0},
      {10.0, 10}, {true, 1}, {false, 0}, {smallest, smallest}};
  ExpectConversions(CTokenResolver::ConvertToInt, cases);
}

TEST_F(IntConversion, NullArrayAndObjectStay) {
  for (const char* text : {"null", "[]", "[1]", R"(["1"])", "{}", R"({"k": "1"})"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Converted(CTokenResolver::ConvertToInt, Parse(text)), Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(IntConversion, NumbersBeyondIntRaiseJsonCppsError) {
  for (const char* text : {"2147483648", "4294967295", "-2147483649", "1e10", "-1e10"}) {
    ExpectRangeError(CTokenResolver::ConvertToInt, Parse(text));
    ExpectRangeError(CTokenResolver::CoerceToInt, Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(IntCoercion, WhatIsNoIntBecomesZero) {
  const CCases cases = {{"42", 42},
                        {"0x10", 16},
                        {"", 0},
                        {"3000000000", largest},
                        {7, 7},
                        {7u, 7},
                        {2.9, 2},
                        {-2.9, -2},
                        {true, 1},
                        {false, 0},
                        {Json::Value(), 0},
                        {Parse("[1]"), 0},
                        {Parse("[]"), 0},
                        {Parse("{}"), 0},
                        {Parse(R"({"k": 1})"), 0}};
  ExpectConversions(CTokenResolver::CoerceToInt, cases);
}

TEST_F(IntCoercion, TextThatDoesNotConvertIsReportedAndZero) {
  for (const std::string text : {"abc", "42 ", "1.5"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Converted(CTokenResolver::CoerceToInt, text), Json::Value(0));
    EXPECT_EQ(Errors(), "CTokenResolver::stringToInt: cannot convert value to signed integer: " +
                            text + ".\n");
  }
}

TEST_F(ColourCoercion, HexadecimalText) {
  const CCases cases = {
      {"#FF8000", 16744448u},      // six digits: alpha 0
      {"#FF800080", 2164228096u},  // alpha 128
      {"#00FF0080", 0x8000FF00u},
      {"#ff8000fe", 0xFEFF8000u},
      {"#FfFfFfFf", 0xFFFFFFFFu},
      {"#000000", 0u},
      {"rgb #0000FF", 255u},  // what stands before "#" is ignored
      {"12#0000FF", 255u},
      {"#12345", 0x00123405u},  // a field may be short at the end
      {"#1234567", 0x07123456u},
      {"#FF8000FF99", 0xFFFF8000u},
      {"#FF8000;", 0x00FF8000u},
      {"#FF8000 is orange", 0x00FF8000u},
      {"#FF8000 and more", 0x0AFF8000u},  // the "a" is the alpha field
      {"#FF8000#112233", 0x00FF8000u},
  };
  ExpectConversions(CTokenResolver::CoerceToColour, cases);
}

TEST_F(ColourCoercion, BlanksBeforeAFieldAreSkipped) {
  const CCases cases = {{"# FF8000", 0x00FF8000u},
                        {"#FF 80 00", 0x00FF8000u},
                        {"#FF\t80\n00\r\v\f40", 0x40FF8000u},
                        {"#FF8000   7F", 0x7FFF8000u},
                        {"#FF8000 ", 0x00FF8000u},
                        {"#F F 8 0", 0x000F0F08u},
                        {"#1 2 3", 0x00010203u},
                        {"#F 80 0", 0x000F8000u}};
  ExpectConversions(CTokenResolver::CoerceToColour, cases);
}

TEST_F(ColourCoercion, SignTakesOneOfAFieldsTwoCharacters) {
  const CCases cases = {
      {"#+F+8+0", 0x000F0800u},
      {"#+1+2+3+4", 0x04010203u},
      {"#-0-0-0", 0u},
      // A negative field has all high bits set; they reach into the fields above it.
      {"#-10000", 0xFFFF0000u},
      {"#00-100", 0xFFFFFF00u},
      {"#0000-1", 0xFFFFFFFFu},
      {"#0000-F", 0xFFFFFFF1u},
      {"#000000-1", 0xFF000000u},
      {"#0000000-", 0u},  // alpha is the 0 alone
      {"#FFFFFF+", 0x00FFFFFFu},
      {"#FFFFFF-", 0x00FFFFFFu},
  };
  ExpectConversions(CTokenResolver::CoerceToColour, cases);
}

TEST_F(ColourCoercion, FewerThanThreeFieldsAreReportedAndZero) {
  for (const std::string text : {"#", "# ", "#F", "#FF", "#F80", "#FF80", "#FF80 ", "#FF80+",
                                 "#FF80-", "#FF80--1", "#FF80+ 1", "#FF80G0", "#GG8000", "#red",
                                 "##FF8000", "#1#FF8000", "#FF.80.00", "#0x", "#0x12"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Converted(CTokenResolver::CoerceToColour, text), Json::Value(0u));
    EXPECT_EQ(Errors(),
              "CTokenResolver::HTMLtoInt: cannot convert value to colour: " + text + ".\n");
  }
}

TEST_F(ColourCoercion, FaultQuotesTheTextFromTheHashOn) {
  EXPECT_EQ(Converted(CTokenResolver::CoerceToColour, "rgb #FF, opaque"), Json::Value(0u));
  EXPECT_EQ(Errors(), "CTokenResolver::HTMLtoInt: cannot convert value to colour: #FF, opaque.\n");
}

/// The colour of a text with "#", and what is reported, as the C library's scan has it.
void ExpectAsScanned(const std::string& text, const std::string& errors,
                     const Json::Value& actual) {
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  unsigned alpha = 0;
  const int fields = std::sscanf(text.c_str(), "#%02X%02X%02X%02X", &red, &green, &blue, &alpha);
  const bool colour = fields >= 3;
  EXPECT_EQ(actual, Json::Value(colour ? alpha << 24 | red << 16 | green << 8 | blue : 0U));
  EXPECT_EQ(
      errors,
      colour ? "" : "CTokenResolver::HTMLtoInt: cannot convert value to colour: " + text + ".\n");
}

TEST_F(ColourCoercion, HexadecimalPrefixCountsAsTheCLibraryScansIt) {
  // C libraries differ on "0x" in a field of two characters: a zero, or no number at all.
  for (const char* text : {"#0xFF80", "#FF0xAA", "#FFFF0xBB", "#FF800000x", "#0x0x0x0x"}) {
    SCOPED_TRACE(text);
    const Json::Value actual = Converted(CTokenResolver::CoerceToColour, text);
    ExpectAsScanned(text, Errors(), actual);
  }
  EXPECT_EQ(Converted(CTokenResolver::CoerceToColour, "#FFFFFF0x"), Json::Value(0x00FFFFFFu));
  EXPECT_EQ(Errors(), "");
}

// Plain colours take a short cut; the scan decides what is right.
TEST_F(ColourCoercion, EveryTextIsReadAsTheCLibraryScansIt) {
  const std::string characters = "0123456789abcdefABCDEF00FFxX+- #gz";
  std::minstd_rand random(1);
  for (int i = 0; i < 50000; ++i) {
    std::string text = "#";
    for (auto n = random() % 10; n > 0; --n) text += characters[random() % characters.size()];
    SCOPED_TRACE(text);
    const Json::Value actual = Converted(CTokenResolver::CoerceToColour, text);
    ExpectAsScanned(text, Errors(), actual);
  }
}

TEST_F(ColourCoercion, TextWithoutHashIsAnUnsignedNumber) {
  const CCases cases = {{"4278190080", 4278190080u},
                        {"", 0u},
                        {"0", 0u},
                        {"  42", 42u},
                        {"+42", 42u},
                        {"010", 8u},
                        {"0xFF8000", 0x00FF8000u},
                        {"4294967295", 0xFFFFFFFFu},
                        {"4294967296", 0xFFFFFFFFu},
                        {"0x1FFFFFFFF", 0xFFFFFFFFu},
                        {"-1", 0xFFFFFFFFu},
                        {"-4294967295", 1u},
                        {"-4294967296", 0xFFFFFFFFu},
                        {"-0x80000000", 0x80000000u}};
  ExpectConversions(CTokenResolver::CoerceToColour, cases);
}

TEST_F(ColourCoercion, OtherTextIsReportedAndZero) {
  const std::string nul(1, '\0');
  const std::string texts[] = {"red", "FF8000", "42 ", " ",   "08",     "0x",
                               "-",   "1.5",    "0b1", "1 2", "7" + nul};
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Converted(CTokenResolver::CoerceToColour, text), Json::Value(0u));
    EXPECT_EQ(Errors(), "CTokenResolver::stringToUInt: cannot convert value to unsigned integer: " +
                            text + ".\n");
  }
}

TEST_F(ColourCoercion, NumbersAndBooleansBecomeUIntAndTheRestIntZero) {
  const CCases cases = {{255, 255u},
                        {0, 0u},
                        {4294967295u, 4294967295u},
                        {2.9, 2u},
                        {4e9, 4000000000u},
                        {true, 1u},
                        {false, 0u},
                        {Json::Value(), 0},
                        {Parse("[]"), 0},
                        {Parse("[255]"), 0},
                        {Parse("{}"), 0},
                        {Parse(R"({"k": 255})"), 0}};
  ExpectConversions(CTokenResolver::CoerceToColour, cases);
}

TEST_F(ColourCoercion, NumbersThatAreNoUIntRaiseJsonCppsError) {
  for (const char* text : {"-1", "-2147483648", "4294967296", "1e10", "-1.5"}) {
    ExpectRangeError(CTokenResolver::CoerceToColour, Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(StringConversion, StringsStayAndTheRestIsJsonText) {
  const std::string nul(1, '\0');
  const CCases cases = {
      {Json::Value(), ""},
      {"", ""},
      {" \t blanks stay \n", " \t blanks stay \n"},
      {"a" + nul + "b", "a" + nul + "b"},
      {0, "0"},
      {-7, "-7"},
      {4294967295u, "4294967295"},
      {Json::Value(Json::Int64{-9000000000000}), "-9000000000000"},
      {1.5, "1.5"},
      {10.0, "10.0"},
      {-0.25, "-0.25"},
      {true, "true"},
      {false, "false"},
      {Parse("[]"), "[]"},
      {Parse("{}"), "{}"},
      {Parse(R"([1, "a"])"), "[\n\t1,\n\t\"a\"\n]"},
      {Parse(R"([[1], {}])"), "[\n\t[\n\t\t1\n\t],\n\t{}\n]"},
      {Parse(R"({"b": null, "a": true})"), "{\n\t\"a\" : true,\n\t\"b\" : null\n}"},
      {Parse(R"({"a": [2]})"), "{\n\t\"a\" : \n\t[\n\t\t2\n\t]\n}"}};
  ExpectConversions(CTokenResolver::ConvertToString, cases);
}

// Numbers and booleans take a short cut; JsonCpp's stream operator decides what is right.
TEST_F(StringConversion, NumbersReadAsJsonCppStreamsThem) {
  std::mt19937_64 random(1);
  std::vector<Json::Value> values = {true,
                                     false,
                                     0.0,
                                     -0.0,
                                     1e300,
                                     -1e-300,
                                     0.1,
                                     10.0,
                                     1e16,
                                     1e17,
                                     123456789.125,
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::quiet_NaN()};
  for (int i = 0; i < 5000; ++i) {
    values.emplace_back(Json::Int64(random()));
    values.emplace_back(Json::UInt64(random()));
    values.emplace_back(Json::Int(random()));
    double real = 0;
    const std::uint64_t bits = random();
    std::memcpy(&real, &bits, sizeof real);
    values.emplace_back(real);
    values.emplace_back(static_cast<double>(random() % 100000) / 100);
  }
  for (const Json::Value& value : values) {
    std::ostringstream stream;
    stream << value;
    ASSERT_EQ(Converted(CTokenResolver::ConvertToString, value), Json::Value(stream.str()));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(StringConversion, CommentsOfAValueAreInItsText) {
  Json::Value value = 7;
  value.setComment(std::string("/* seven */"), Json::commentBefore);
  EXPECT_EQ(Converted(CTokenResolver::ConvertToString, value), Json::Value("/* seven */\n7"));
  value = 7;
  value.setComment(std::string("// seven"), Json::commentAfterOnSameLine);
  EXPECT_EQ(Converted(CTokenResolver::ConvertToString, value), Json::Value("7 // seven"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ArrayConversion, StringsAreSplitAtCommas) {
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"", "[]"},
      {"a", R"(["a"])"},
      {"a,b,c", R"(["a", "b", "c"])"},
      {"1,2", R"(["1", "2"])"},
      {" a , b ", R"([" a ", " b "])"},
      {"a,,b,", R"(["a", "", "b", ""])"},
      {"a;b", R"(["a;b"])"},
      {R"("a,b",c)", R"(["a,b", "c"])"},
      {R"("say ""hi""",c)", R"(["say \"hi\"", "c"])"},
      {R"("a,b)", R"(["\"a,b"])"},
      {"$(n),[1,2]", R"J(["$(n)", "[1", "2]"])J"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(Converted(CTokenResolver::ConvertToArray, testCase.text), Parse(testCase.expected));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(ArrayConversion, OtherValuesStay) {
  for (const char* text : {"null", "5", "1.5", "true", "[]", R"(["a,b"])", R"({"k": "a,b"})"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Converted(CTokenResolver::ConvertToArray, Parse(text)), Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(ArrayConversion, TokensWithEmptyIndexOrCountSplitText) {
  Handle("csv", R"("a,,b")");
  Handle("empty", R"("")");
  EXPECT_EQ(tokens.GetTokenValue("csv[]"), Parse(R"(["a", "", "b"])"));
  EXPECT_EQ(tokens.GetTokenValue("csv#"), Json::Value(3u));
  EXPECT_EQ(tokens.GetTokenValue("empty[]"), Parse("[]"));
  EXPECT_EQ(tokens.GetTokenValue("empty#"), Json::Value(0u));
  EXPECT_EQ(Errors(), "");
}

}  // namespace
