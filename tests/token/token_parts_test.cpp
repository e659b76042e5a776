#include "TokenTemplateResolver/token_parts.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateResolver/parsed_token.h"
#include "support/cerr_capture.h"

namespace {

using Strings = std::vector<std::string>;

/// Paths are plain data: nothing about them is ever reported.
class TokenParts : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(m_cerr.Take(), ""); }

 private:
  CCerrCapture m_cerr;
};

TEST_F(TokenParts, DefaultConstructedHasNoParts) {
  const CTokenParts parts;
  EXPECT_TRUE(parts.empty());
  EXPECT_EQ(parts.size(), 0u);
  EXPECT_EQ(parts.begin(), parts.end());
}

TEST_F(TokenParts, KeepsPartsExactlyAsWritten) {
  const CTokenParts parts{" Weather ", "TODAY", "", "a.b"};
  ASSERT_EQ(parts.size(), 4u);
  EXPECT_FALSE(parts.empty());
  EXPECT_EQ(parts[0], " Weather ");
  EXPECT_EQ(parts[1], "TODAY");
  EXPECT_EQ(parts[2], "");
  EXPECT_EQ(parts[3], "a.b");
}

TEST_F(TokenParts, IteratesInOrder) {
  const CTokenParts parts{"c", "a", "b"};
  EXPECT_EQ(Strings(parts.begin(), parts.end()), (Strings{"c", "a", "b"}));
}

TEST_F(TokenParts, TakesItsPartsFromAVector) {
  const CTokenParts parts(Strings{"c", "a", "b"});
  const Strings& strings = parts;
  EXPECT_EQ(strings, (Strings{"c", "a", "b"}));
}

TEST_F(TokenParts, AppendsAtTheEnd) {
  CTokenParts parts{"a"};
  parts.push_back("b");
  parts.push_back("");
  const Strings& strings = parts;
  EXPECT_EQ(strings, (Strings{"a", "b", ""}));
}

TEST_F(TokenParts, CopyIsIndependentOfTheOriginal) {
  CTokenParts original{"a"};
  const CTokenParts copy = original;
  original.push_back("b");
  EXPECT_EQ(original.size(), 2u);
  ASSERT_EQ(copy.size(), 1u);
  EXPECT_EQ(copy[0], "a");
}

TEST_F(TokenParts, RebuildJoinsTheFirstPartsByDots) {
  const struct {
    Strings parts;
    unsigned int count;
    std::string token;
  } rows[] = {
      {{}, 0, ""},
      {{"A"}, 0, ""},
      {{"A"}, 1, "A"},
      {{"A", "b", "c"}, 0, ""},
      {{"A", "b", "c"}, 1, "A"},
      {{"A", "b", "c"}, 2, "A.b"},
      {{"A", "b", "c"}, 3, "A.b.c"},
      {{""}, 1, ""},
      {{"a", ""}, 2, "a."},
      {{"", "a"}, 2, ".a"},
      {{"a", "", "b"}, 3, "a..b"},
      {{"A.b", "c"}, 2, "A.b.c"},
      {{" a ", "B"}, 2, " a .B"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(row.parts) + " " + std::to_string(row.count));
    EXPECT_EQ(CTokenParts::rebuildToken(row.parts, row.count), row.token);
  }
}

TEST_F(TokenParts, RebuildOfMorePartsThanThereAreThrows) {
  const struct {
    Strings parts;
    unsigned int count;
  } rows[] = {
      {{"A", "b", "c"}, 4},
      {{"A"}, 2},
      {{}, 1},
      {{"A"}, 4294967295u},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(row.parts) + " " + std::to_string(row.count));
    try {
      CTokenParts::rebuildToken(row.parts, row.count);
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::invalid_argument& error) {
      EXPECT_STREQ(error.what(), "CTokenParts::rebuildToken: bad element count");
    }
  }
}

TEST_F(TokenParts, RebuildAcceptsTheNameOfAParsedToken) {
  const CParsedToken token("Weather.today.high:C");
  EXPECT_EQ(CTokenParts::rebuildToken(token.nameParts, 3), "Weather.today.high");
  EXPECT_EQ(CTokenParts::rebuildToken(token.nameParts, 2), "Weather.today");
  EXPECT_THROW(CTokenParts::rebuildToken(token.nameParts, 4), std::invalid_argument);
}

}  // namespace
