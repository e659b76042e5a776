#include "util/string_utils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using CPieces = std::vector<std::string>;

struct CCase {
  const char* text;
  CPieces pieces;
};

void ExpectPieces(const CCase& testCase) {
  SCOPED_TRACE(testCase.text);
  EXPECT_EQ(ttr::CSVsplit(testCase.text, ","), testCase.pieces);
}

TEST(Trim, RemovesWhiteSpaceAtBothEnds) {
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"", ""},
      {"a", "a"},
      {" a", "a"},
      {"a ", "a"},
      {"  a b  ", "a b"},
      {" \t\n\v\f\ra\r\f\v\n\t ", "a"},
      {" ", ""},
      {" \t\n\v\f\r", ""},
      {"a\n\nb", "a\n\nb"},
      {"\u00A0a", "\u00A0a"},
      {"\ba\b", "\ba\b"},
      {" \"a \" ", "\"a \""},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.text);
    EXPECT_EQ(ttr::trim(testCase.text), testCase.expected);
  }
}

TEST(Trim, KeepsNulCharactersAndTheOriginal) {
  const std::string text(" \0a\0 ", 5);
  EXPECT_EQ(ttr::trim(text), std::string("\0a\0", 3));
  EXPECT_EQ(text, std::string(" \0a\0 ", 5));
}

TEST(CSVsplit, EmptyTextHasNoPieces) { EXPECT_EQ(ttr::CSVsplit("", ","), CPieces()); }

TEST(CSVsplit, PiecesAreExactlyAsWritten) {
  const CCase cases[] = {
      {"a", {"a"}},
      {"a,b,c", {"a", "b", "c"}},
      {" a , b ", {" a ", " b "}},
      {" ", {" "}},
      {"a;b\tc", {"a;b\tc"}},
      {"a\n,\r\nb", {"a\n", "\r\nb"}},
      {"'a,b'", {"'a", "b'"}},
      {"a\\,b", {"a\\", "b"}},
      {"[1,2]", {"[1", "2]"}},
  };
  for (const CCase& testCase : cases) ExpectPieces(testCase);
}

TEST(CSVsplit, EmptyPiecesCount) {
  const CCase cases[] = {
      {",", {"", ""}},          {",,", {"", "", ""}},   {"a,", {"a", ""}},      {",a", {"", "a"}},
      {"a,,b", {"a", "", "b"}}, {"a,,", {"a", "", ""}}, {",,a", {"", "", "a"}},
  };
  for (const CCase& testCase : cases) ExpectPieces(testCase);
}

TEST(CSVsplit, QuotedPieceHoldsDelimitersAndDoubledQuotes) {
  const CCase cases[] = {
      {R"("a")", {"a"}},
      {R"("a,b",c)", {"a,b", "c"}},
      {R"(c,"a,b")", {"c", "a,b"}},
      {R"("a","b")", {"a", "b"}},
      {R"("a""b")", {R"(a"b)"}},
      {R"("""a""")", {R"("a")"}},
      {R"("a"",""b")", {R"(a","b)"}},
      {R"("")", {""}},
      {R"("",a)", {"", "a"}},
      {R"("",)", {"", ""}},
      {R"("""")", {R"(")"}},
      {R"(",")", {","}},
      {R"(" a ",b)", {" a ", "b"}},
      {"\"a\nb\",c", {"a\nb", "c"}},
      {R"("a",)", {"a", ""}},
  };
  for (const CCase& testCase : cases) ExpectPieces(testCase);
}

TEST(CSVsplit, TextAfterTheClosingQuoteIsAppendedAsItStands) {
  const CCase cases[] = {
      {R"("a"b,c)", {"ab", "c"}},          {R"("a" ,c)", {"a ", "c"}},
      {R"("a,b" x)", {"a,b x"}},           {R"("a"b"c,d")", {R"(ab"c)", R"(d")"}},
      {R"("a" "b",c)", {R"(a "b")", "c"}}, {R"("a"b"",c)", {R"(ab"")", "c"}},
  };
  for (const CCase& testCase : cases) ExpectPieces(testCase);
}

TEST(CSVsplit, QuoteInsideAPieceIsText) {
  const CCase cases[] = {
      {R"(a"b)", {R"(a"b)"}},
      {R"(a"b,c")", {R"(a"b)", R"(c")"}},
      {R"( "a,b")", {R"( "a)", R"(b")"}},
      {R"(a"")", {R"(a"")"}},
  };
  for (const CCase& testCase : cases) ExpectPieces(testCase);
}

TEST(CSVsplit, UnterminatedQuoteMakesTheRestOneLiteralPiece) {
  const CCase cases[] = {
      {R"(")", {R"(")"}},
      {R"("a)", {R"("a)"}},
      {R"("a,b)", {R"("a,b)"}},
      {R"(a,"b,c)", {"a", R"("b,c)"}},
      {R"(a,")", {"a", R"(")"}},
      {R"(""")", {R"(""")"}},
      {R"("a""b,c)", {R"("a""b,c)"}},
      {R"("a""),b)", {R"("a""),b)"}},
      {R"("a","b,)", {"a", R"("b,)"}},
  };
  for (const CCase& testCase : cases) ExpectPieces(testCase);
}

TEST(CSVsplit, NulCharactersAreText) {
  EXPECT_EQ(ttr::CSVsplit(std::string("a\0b,\0", 5), ","),
            CPieces({std::string("a\0b", 3), std::string("\0", 1)}));
}

TEST(CSVsplit, SplitsAtTheDelimiterThatIsGiven) {
  EXPECT_EQ(ttr::CSVsplit(R"(a,b;"c;d";e)", ";"), CPieces({"a,b", "c;d", "e"}));
}

TEST(CSVsplit, ManyPieces) {
  constexpr int count = 100000;
  const CPieces pieces = ttr::CSVsplit(std::string(count, ','), ",");
  EXPECT_TRUE(pieces == CPieces(count + 1));
}

}  // namespace
