#include "TokenTemplateResolver/parsed_token.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "support/cerr_capture.h"

namespace {

using Strings = std::vector<std::string>;

/// A body and all that it parses to.
struct CRecord {
  std::string body;
  Strings nameParts;
  Strings indexParts;
  std::string argument;
  char operation;
  Strings operandParts;
  std::int32_t section;
  std::int32_t sectionsSeen;
};

Strings StringsOf(const CTokenParts& parts) { return parts; }

/// Parsing accepts every text, so nothing is ever reported.
class ParsedToken : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(m_cerr.Take(), ""); }

  static void ExpectRecord(const CRecord& record) {
    SCOPED_TRACE("body: " + record.body);
    const CParsedToken token(record.body);
    EXPECT_EQ(StringsOf(token.nameParts), record.nameParts);
    EXPECT_EQ(StringsOf(token.indexParts), record.indexParts);
    EXPECT_EQ(token.argument, record.argument);
    EXPECT_EQ(token.operation, record.operation);
    EXPECT_EQ(StringsOf(token.operandParts), record.operandParts);
    EXPECT_EQ(token.section, record.section);
    EXPECT_EQ(token.sectionsSeen, record.sectionsSeen);
  }

  template <std::size_t Count>
  static void ExpectRecords(const CRecord (&records)[Count]) {
    for (const CRecord& record : records) ExpectRecord(record);
  }

 private:
  CCerrCapture m_cerr;
};

TEST_F(ParsedToken, RoomIsMadeForThePartsOfTheNameOnly) {
  for (const char* start : {"a:", "a[", "a+", "a.b:"}) {
    const CParsedToken token(start + std::string(1000, '.'));
    const Strings& parts = token.nameParts;
    EXPECT_LE(parts.capacity(), 2U) << start;
  }
}

TEST_F(ParsedToken, SectionsAreSingleBits) {
  EXPECT_EQ(sectionName, 1);
  EXPECT_EQ(sectionIndex, 2);
  EXPECT_EQ(sectionIndexEnd, 4);
  EXPECT_EQ(sectionArgument, 8);
  EXPECT_EQ(sectionOperand, 16);
  EXPECT_EQ(sectionCount, 32);
}

TEST_F(ParsedToken, FieldsKeepTheirOrderAndTypes) {
  const CParsedToken token("Items.a[0]:short");
  const auto& [name, index, argument, operation, operand, section, seen] = token;
  EXPECT_EQ(StringsOf(name), (Strings{"Items", "a"}));
  EXPECT_EQ(StringsOf(index), Strings{"0"});
  EXPECT_EQ(argument, "short");
  EXPECT_EQ(operation, '\0');
  EXPECT_TRUE(operand.empty());
  EXPECT_EQ(section, 8);
  EXPECT_EQ(seen, 15);
  EXPECT_TRUE((std::is_same_v<decltype(token.operation), char>));
  EXPECT_TRUE((std::is_same_v<decltype(token.section), std::int32_t>));
  EXPECT_TRUE((std::is_same_v<decltype(token.sectionsSeen), std::int32_t>));
}

TEST_F(ParsedToken, TakesTypicalBodiesApart) {
  ExpectRecords({
      {"Clock", {"Clock"}, {}, "", 0, {}, sectionName, 0},
      {"Weather.today.high", {"Weather", "today", "high"}, {}, "", 0, {}, sectionName, 1},
      {"Time:%H:%M", {"Time"}, {}, "%H:%M", 0, {}, sectionArgument, 8},
      {"List[2]", {"List"}, {"2"}, "", 0, {}, sectionIndexEnd, 6},
      {"List[Sel.row]", {"List"}, {"Sel", "row"}, "", 0, {}, sectionIndexEnd, 6},
      {"List[]", {"List"}, {}, "", 0, {}, sectionIndexEnd, 6},
      {"List[2", {"List"}, {"2"}, "", 0, {}, sectionIndex, 2},
      {"List#", {"List"}, {}, "", 0, {}, sectionCount, 32},
      {"Volume*10", {"Volume"}, {}, "", '*', {"10"}, sectionOperand, 16},
      {"Volume+Offset.value", {"Volume"}, {}, "", '+', {"Offset", "value"}, sectionOperand, 16},
      {"Items[0]:short", {"Items"}, {"0"}, "short", 0, {}, sectionArgument, 14},
      {"Name:arg[1]", {"Name"}, {"1"}, "arg", 0, {}, sectionIndexEnd, 14},
      {"List#+1", {"List"}, {}, "", '+', {"1"}, sectionOperand, 48},
  });
}

TEST_F(ParsedToken, EmptyBodyGivesAnEmptyRecord) {
  ExpectRecord({"", {}, {}, "", 0, {}, sectionName, 0});
}

TEST_F(ParsedToken, EmptySegmentsVanish) {
  ExpectRecords({
      {"a..b", {"a", "b"}, {}, "", 0, {}, sectionName, 1},
      {".a", {"a"}, {}, "", 0, {}, sectionName, 1},
      {"a.", {"a"}, {}, "", 0, {}, sectionName, 1},
      {".", {}, {}, "", 0, {}, sectionName, 1},
      {"[1]", {}, {"1"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[.]", {"a"}, {}, "", 0, {}, sectionIndexEnd, 6},
      {"a[.1..2.]", {"a"}, {"1", "2"}, "", 0, {}, sectionIndexEnd, 6},
      {":x", {}, {}, "x", 0, {}, sectionArgument, 8},
      {"a:", {"a"}, {}, "", 0, {}, sectionArgument, 8},
      {"+1", {}, {}, "", '+', {"1"}, sectionOperand, 16},
      {"Count+", {"Count"}, {}, "", '+', {}, sectionOperand, 16},
      {"Count+.1..2.", {"Count"}, {}, "", '+', {"1", "2"}, sectionOperand, 16},
  });
}

TEST_F(ParsedToken, WhiteSpaceAndCaseAreKept) {
  ExpectRecords({
      {" Clock ", {" Clock "}, {}, "", 0, {}, sectionName, 0},
      {"a .\tB", {"a ", "\tB"}, {}, "", 0, {}, sectionName, 1},
      {"a\nb", {"a\nb"}, {}, "", 0, {}, sectionName, 0},
      {"a[ 1 ]", {"a"}, {" 1 "}, "", 0, {}, sectionIndexEnd, 6},
      {"a: x ", {"a"}, {}, " x ", 0, {}, sectionArgument, 8},
      {"a + 1 ", {"a "}, {}, "", '+', {" 1 "}, sectionOperand, 16},
  });
}

TEST_F(ParsedToken, EveryCharacterButTheDelimitersBelongsToTheName) {
  const std::string delimiters = ".[:+-*/";
  for (int code = 0; code < 256; ++code) {
    SCOPED_TRACE(code);
    const char character = static_cast<char>(code);
    const std::string body = std::string("a") + character + "b";
    const bool ends = delimiters.find(character) != std::string::npos;
    const CParsedToken token(body);
    ASSERT_FALSE(token.nameParts.empty());
    EXPECT_EQ(token.nameParts[0], ends ? "a" : body);
    EXPECT_EQ(token.sectionsSeen != 0, ends);
  }
}

TEST_F(ParsedToken, DotsLeaveTheirMarkOnlyInTheirOwnSection) {
  ExpectRecords({
      {"a.b[1]", {"a", "b"}, {"1"}, "", 0, {}, sectionIndexEnd, 7},
      {"a[b.c]", {"a"}, {"b", "c"}, "", 0, {}, sectionIndexEnd, 6},
      {"a:b.c", {"a"}, {}, "b.c", 0, {}, sectionArgument, 8},
      {"a+b.c", {"a"}, {}, "", '+', {"b", "c"}, sectionOperand, 16},
      {"a.b+c.d", {"a", "b"}, {}, "", '+', {"c", "d"}, sectionOperand, 17},
  });
}

TEST_F(ParsedToken, IndexEndsAtDotsAndClosingBracketsOnly) {
  ExpectRecords({
      {"a[b[c]", {"a"}, {"b[c"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[-1]", {"a"}, {"-1"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[1:2+3]", {"a"}, {"1:2+3"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[1\n2]", {"a"}, {"1\n2"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[2#]", {"a"}, {"2#"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[2+1", {"a"}, {"2+1"}, "", 0, {}, sectionIndex, 2},
  });
}

TEST_F(ParsedToken, TextAfterTheIndexIsDiscarded) {
  ExpectRecords({
      {"a[1]x", {"a"}, {"1"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[1].b", {"a"}, {"1"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[1][2]", {"a"}, {"1"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[1]#", {"a"}, {"1"}, "", 0, {}, sectionIndexEnd, 6},
      {"a[1]x:y", {"a"}, {"1"}, "y", 0, {}, sectionArgument, 14},
      {"a[1]x+2", {"a"}, {"1"}, "", '+', {"2"}, sectionOperand, 22},
  });
}

TEST_F(ParsedToken, ArgumentRunsToTheNextOpeningBracket) {
  ExpectRecords({
      {"a:b:c.d]e+f-g*h/i#", {"a"}, {}, "b:c.d]e+f-g*h/i#", 0, {}, sectionArgument, 8},
      {"a:b+1[2]+3", {"a"}, {"2"}, "b+1", '+', {"3"}, sectionOperand, 30},
      {"a:\n", {"a"}, {}, "\n", 0, {}, sectionArgument, 8},
  });
}

TEST_F(ParsedToken, LaterArgumentReplacesTheEarlierUnlessEmpty) {
  ExpectRecords({
      {"a:x[1]:y", {"a"}, {"1"}, "y", 0, {}, sectionArgument, 14},
      {"a:x[1]:", {"a"}, {"1"}, "x", 0, {}, sectionArgument, 14},
      {"a:x[1]:[2]", {"a"}, {"1", "2"}, "x", 0, {}, sectionIndexEnd, 14},
  });
}

TEST_F(ParsedToken, EachOperatorIsKept) {
  ExpectRecords({
      {"a+1", {"a"}, {}, "", '+', {"1"}, sectionOperand, 16},
      {"a-1", {"a"}, {}, "", '-', {"1"}, sectionOperand, 16},
      {"a*1", {"a"}, {}, "", '*', {"1"}, sectionOperand, 16},
      {"a/1", {"a"}, {}, "", '/', {"1"}, sectionOperand, 16},
      {"a[0]/1", {"a"}, {"0"}, "", '/', {"1"}, sectionOperand, 22},
  });
}

TEST_F(ParsedToken, OperatorsInsideAnOperandAreText) {
  ExpectRecords({
      {"Count+1-2", {"Count"}, {}, "", '+', {"1-2"}, sectionOperand, 16},
      {"Count--2", {"Count"}, {}, "", '-', {"-2"}, sectionOperand, 16},
      {"Count*2]#", {"Count"}, {}, "", '*', {"2]#"}, sectionOperand, 16},
  });
}

TEST_F(ParsedToken, OperandEndsAtAnArgumentOrAnIndex) {
  ExpectRecords({
      {"a+1:x", {"a"}, {}, "x", '+', {"1"}, sectionArgument, 24},
      {"a+1[2]", {"a"}, {"2"}, "", '+', {"1"}, sectionIndexEnd, 22},
  });
}

TEST_F(ParsedToken, PartsAddUpWhenASectionIsEnteredAgain) {
  ExpectRecords({
      {"a[1]+2[3]-4", {"a"}, {"1", "3"}, "", '-', {"2", "4"}, sectionOperand, 22},
      {"a:x[1]:y[2]", {"a"}, {"1", "2"}, "y", 0, {}, sectionIndexEnd, 14},
      {"a+1[2]-", {"a"}, {"2"}, "", '-', {"1"}, sectionOperand, 22},
  });
}

TEST_F(ParsedToken, HashAtTheEndOfANameSegmentAsksForACount) {
  ExpectRecords({
      {"a.b#", {"a", "b"}, {}, "", 0, {}, sectionCount, 33},
      {"#", {""}, {}, "", 0, {}, sectionCount, 32},
      {"a.#", {"a", ""}, {}, "", 0, {}, sectionCount, 33},
      {"a##", {"a#"}, {}, "", 0, {}, sectionCount, 32},
      {"a #", {"a "}, {}, "", 0, {}, sectionCount, 32},
      {"a#b", {"a#b"}, {}, "", 0, {}, sectionName, 0},
      {"#a", {"#a"}, {}, "", 0, {}, sectionName, 0},
  });
}

TEST_F(ParsedToken, CountStillEntersTheSectionThatItsDelimiterOpens) {
  ExpectRecords({
      {"List#[2]", {"List"}, {"2"}, "", 0, {}, sectionIndexEnd, 38},
      {"List#[]", {"List"}, {}, "", 0, {}, sectionIndexEnd, 38},
      {"List#:x", {"List"}, {}, "x", 0, {}, sectionArgument, 40},
      {"List#*2", {"List"}, {}, "", '*', {"2"}, sectionOperand, 48},
      {"#+1", {""}, {}, "", '+', {"1"}, sectionOperand, 48},
  });
}

TEST_F(ParsedToken, DotAfterACountDiscardsTheRest) {
  ExpectRecords({
      {"List#.x", {"List"}, {}, "", 0, {}, sectionCount, 32},
      {"List#.x[1]:y+2", {"List"}, {}, "", 0, {}, sectionCount, 32},
      {"List#.x\ny\n+z", {"List"}, {}, "", 0, {}, sectionCount, 32},
      {"a.List#.b#", {"a", "List"}, {}, "", 0, {}, sectionCount, 33},
  });
}

TEST_F(ParsedToken, TokenStartInsideABodyIsPlainText) {
  ExpectRecords({
      {"$(Clock)", {"$(Clock)"}, {}, "", 0, {}, sectionName, 0},
      {"List[$(Sel.row", {"List"}, {"$(Sel", "row"}, "", 0, {}, sectionIndex, 2},
      {"a+$(b", {"a"}, {}, "", '+', {"$(b"}, sectionOperand, 16},
  });
}

TEST_F(ParsedToken, CopyOwnsItsText) {
  auto original = std::make_unique<CParsedToken>("Weather.today[Sel.row]:a long enough argument");
  const CParsedToken copy = *original;
  original->argument = "changed";
  original->nameParts.push_back("added");
  original.reset();
  EXPECT_EQ(StringsOf(copy.nameParts), (Strings{"Weather", "today"}));
  EXPECT_EQ(StringsOf(copy.indexParts), (Strings{"Sel", "row"}));
  EXPECT_EQ(copy.argument, "a long enough argument");
  EXPECT_EQ(copy.sectionsSeen, 15);
}

/// What holds for every body.
void ExpectConsistent(const CParsedToken& token) {
  const auto seen = [&token](std::int32_t section) { return (token.sectionsSeen & section) != 0; };
  EXPECT_EQ(token.sectionsSeen & ~63, 0);
  EXPECT_EQ(token.operation != '\0', seen(sectionOperand));
  EXPECT_TRUE(token.operandParts.empty() || seen(sectionOperand));
  EXPECT_TRUE(token.indexParts.empty() || seen(sectionIndex));
  EXPECT_TRUE(token.argument.empty() || seen(sectionArgument));
  EXPECT_TRUE(!seen(sectionIndexEnd) || seen(sectionIndex));
  EXPECT_TRUE(token.section == sectionName || seen(token.section));
  for (std::size_t i = 0; i < token.nameParts.size(); ++i) {
    const bool last = i + 1 == token.nameParts.size();
    EXPECT_TRUE(!token.nameParts[i].empty() || (last && seen(sectionCount)));
  }
  for (const std::string& part : token.indexParts) EXPECT_NE(part, "");
  for (const std::string& part : token.operandParts) EXPECT_NE(part, "");
}

TEST_F(ParsedToken, EveryShortBodyParsesConsistently) {
  const std::string alphabet = "a.#[]:+\n";
  constexpr unsigned int length = 5;
  for (unsigned int number = 0; number < 1u << (3 * length); ++number) {
    std::string body;
    for (unsigned int i = 0; i < length; ++i) body += alphabet[(number >> (3 * i)) & 7u];
    SCOPED_TRACE("body: " + body);
    ExpectConsistent(CParsedToken(body));
    if (HasFailure()) return;
  }
}

/// The characters that end a segment in each section.
const std::map<std::int32_t, std::string> delimitersOf = {
    {sectionName, ".[:+-*/"}, {sectionIndex, ".]"},    {sectionIndexEnd, ":+-*/"},
    {sectionArgument, "["},   {sectionOperand, ".:["}, {sectionCount, "\n"}};

/// The record of `body` by the table of sections: one search for a delimiter after the other.
CRecord RecordByTable(const std::string& body) {
  CRecord record{body, {}, {}, "", 0, {}, sectionName, 0};
  const auto enter = [&record](std::int32_t section) {
    record.section = section;
    record.sectionsSeen |= section;
  };
  for (std::size_t start = 0, end = 0;; start = end + 1) {
    end = body.find_first_of(delimitersOf.at(record.section), start);
    std::string segment = body.substr(start, end - start);
    if (!segment.empty()) {
      if (record.section == sectionName) {
        if (segment.back() == '#') {
          segment.pop_back();
          enter(sectionCount);
        }
        record.nameParts.push_back(segment);
      } else if (record.section == sectionIndex) {
        record.indexParts.push_back(segment);
      } else if (record.section == sectionArgument) {
        record.argument = segment;
      } else if (record.section == sectionOperand) {
        record.operandParts.push_back(segment);
      }
    }
    if (end == std::string::npos) break;
    const char delimiter = body[end];
    if (delimiter == '[') {
      enter(sectionIndex);
    } else if (delimiter == ']') {
      enter(sectionIndexEnd);
    } else if (delimiter == ':') {
      enter(sectionArgument);
    } else if (delimiter == '.' || delimiter == '\n') {
      enter(record.section);
    } else {
      record.operation = delimiter;
      enter(sectionOperand);
    }
  }
  return record;
}

// The body is read in one pass; the table of sections decides what is right.
TEST_F(ParsedToken, RandomBodiesAreCutAsTheTableOfSectionsSays) {
  const std::string alphabet("ab#.[]:+-*/ \n\0()", 16);
  std::mt19937 random(1);
  std::map<std::int32_t, int> ends;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    std::string body;
    for (auto n = random() % 20; n > 0; --n) body += alphabet[random() % alphabet.size()];
    const CRecord record = RecordByTable(body);
    ExpectRecord(record);
    ++ends[record.section];
  }
  for (const auto& [section, delimiters] : delimitersOf) EXPECT_GT(ends[section], 100) << section;
}

}  // namespace
