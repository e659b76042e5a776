#include "util/integer_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "support/cerr_capture.h"

namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::uint32_t largestUnsigned = std::numeric_limits<std::uint32_t>::max();

TEST(IntegerText, WholeSignedText) {
  const struct {
    const char* text;
    std::int32_t number;
  } cases[] = {{"", 0},
               {"0", 0},
               {"-0", 0},
               {"7", 7},
               {"42", 42},
               {"+42", 42},
               {"-42", -42},
               {"  42", 42},
               {" \t\n\v\f\r-42", -42},
               {"007", 7},
               {"010", 8},
               {"-010", -8},
               {"0x10", 16},
               {"0X1f", 31},
               {"-0x10", -16},
               {"+0xaBc", 2748},
               {"0x000000000000010", 16},
               {"0000000000000000010", 8}};
  CCerrCapture cerr;
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(ttr::wholeInt32(testCase.text), testCase.number);
  }
  EXPECT_EQ(cerr.Take(), "");
}

TEST(IntegerText, SignedTextSaturates) {
  const struct {
    const char* text;
    std::int32_t number;
  } cases[] = {{"2147483646", largest - 1},
               {"2147483647", largest},
               {"2147483648", largest},
               {"4294967295", largest},
               {"4294967296", largest},
               {"9223372036854775808", largest},
               {"99999999999999999999999999", largest},
               {"-2147483647", -largest},
               {"-2147483648", smallest},
               {"-2147483649", smallest},
               {"-4294967296", smallest},
               {"-4294967297", smallest},
               {"-99999999999999999999999999", smallest},
               {"0x7fffffff", largest},
               {"0x80000000", largest},
               {"0xFFFFFFFF", largest},
               {"-0x80000000", smallest},
               {"-0xFFFFFFFFFFFFFFFFFF", smallest},
               {"017777777777", largest},
               {"020000000000", largest},
               {"-020000000000", smallest}};
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(ttr::wholeInt32(testCase.text), testCase.number);
  }
}

TEST(IntegerText, WholeUnsignedText) {
  const struct {
    const char* text;
    std::uint32_t number;
  } cases[] = {{"", 0},
               {"0", 0},
               {"42", 42},
               {" +42", 42},
               {"010", 8},
               {"0xFF8000", 16744448},
               {"2147483648", 2147483648u},
               {"4278190080", 4278190080u},
               {"4294967295", largestUnsigned},
               {"037777777777", largestUnsigned}};
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(ttr::wholeUInt32(testCase.text), testCase.number);
  }
}

TEST(IntegerText, NegativeUnsignedTextIsNegatedModulo32Bits) {
  const struct {
    const char* text;
    std::uint32_t number;
  } cases[] = {{"-0", 0},
               {"-1", largestUnsigned},
               {"-2", largestUnsigned - 1},
               {"-0x10", 4294967280u},
               {"-010", 4294967288u},
               {"-2147483648", 2147483648u},
               {"-4294967295", 1}};
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(ttr::wholeUInt32(testCase.text), testCase.number);
  }
}

TEST(IntegerText, UnsignedTextSaturatesWhateverItsSign) {
  for (const char* text : {"4294967296", "4294967297", "8589934592", "99999999999999999999999999",
                           "0x100000000", "040000000000", "-4294967296", "-4294967297",
                           "-18446744073709551615", "-99999999999999999999999999"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ttr::wholeUInt32(text), largestUnsigned);
  }
}

TEST(IntegerText, TextThatIsNoNumberToItsEndDoesNotConvert) {
  const std::string nul(1, '\0');
  const std::string texts[] = {
      " ",    "\n",      "-",       "+",     " -",      "abc",          "x10", "42 ",
      "42\n", "42a",     "4 2",     "08",    "09",      "018",          "0x",  "0X",
      "-0x",  "0xG",     "0x ",     "0x-1",  "0x0x1",   "00x1",         "+-5", "--5",
      "- 5",  "1.0",     "1e3",     "1,000", "0b1",     "0b101",        "0B1", "-0b1",
      "0o7",  "\u00A05", "5" + nul, nul,     nul + "5", "5" + nul + "6"};
  CCerrCapture cerr;
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ttr::wholeInt32(text), std::nullopt);
    EXPECT_EQ(ttr::wholeUInt32(text), std::nullopt);
  }
  EXPECT_EQ(cerr.Take(), "");
}

// Small numbers, for which every `long` will do.
TEST(IntegerText, DigitsAreThoseOfTheCLibraryInEachBase) {
  CCerrCapture cerr;
  for (int code = 1; code < 256; ++code) {
    for (const std::string prefix : {"", "1", "01", "0x", "0x1"}) {
      const std::string text = prefix + static_cast<char>(code);
      SCOPED_TRACE(text);
      char* end = nullptr;
      const long number = std::strtol(text.c_str(), &end, 0);
      const bool whole = *end == '\0';
      EXPECT_EQ(ttr::wholeInt32(text).has_value(), whole);
      EXPECT_EQ(ttr::wholeInt32(text).value_or(0), whole ? number : 0);
    }
  }
  EXPECT_EQ(cerr.Take(), "");
}

TEST(IntegerText, TextEndsWhereTheViewEnds) {
  CCerrCapture cerr;
  EXPECT_EQ(ttr::wholeInt32(std::string_view("1234").substr(0, 2)), 12);
  EXPECT_EQ(ttr::wholeUInt32(std::string_view("0x1F7").substr(0, 4)), 31U);
  EXPECT_EQ(ttr::leadingInt32(std::string_view("1234").substr(0, 2)), 12);
  EXPECT_EQ(cerr.Take(), "");
}

TEST(IntegerText, LeadingDecimalNumber) {
  const struct {
    const char* text;
    std::int32_t number;
  } cases[] = {{"", 0},
               {" ", 0},
               {"abc", 0},
               {"%", 0},
               {"-", 0},
               {"- 5", 0},
               {"+-5", 0},
               {"50%", 50},
               {"50", 50},
               {" \t\n50 %", 50},
               {"-50%", -50},
               {"+50%", 50},
               {"12.9", 12},
               {"1e3", 1},
               {"010", 10},
               {"08", 8},
               {"0x10", 0},
               {"2147483647", largest},
               {"2147483648%", largest},
               {"-2147483648", smallest},
               {"-2147483649", smallest},
               {"99999999999999999999999999%", largest},
               {"-99999999999999999999999999%", smallest}};
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(ttr::leadingInt32(testCase.text), testCase.number);
  }
}

}  // namespace
