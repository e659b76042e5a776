#include "preview/text_pool.h"

#include <gtest/gtest.h>

namespace {

using Runs = ttr::CTextPool::CRuns;

/// The runs of a list of one-letter texts.
Runs Append(ttr::CTextPool& pool, const std::string& letters) {
  Runs runs;
  for (const char letter : letters) pool.Append(std::string(1, letter), runs);
  return runs;
}

std::string TextOf(const ttr::CTextPool& pool, const Runs& runs) {
  std::string text;
  for (const std::string* part : pool.TextsIn(runs)) text += *part;
  return text;
}

TEST(TextPool, TellsListsByRuns) {
  ttr::CTextPool pool;
  EXPECT_EQ(Append(pool, "abcd"), (Runs{0, 4}));
  EXPECT_EQ(Append(pool, "abcd"), (Runs{0, 4}));
  EXPECT_EQ(Append(pool, "abXd"), (Runs{0, 2, 4, 1, 3, 1}));
  EXPECT_EQ(Append(pool, "aacd"), (Runs{0, 1, 0, 1, 2, 2}));
  EXPECT_EQ(Append(pool, ""), Runs());
  EXPECT_EQ(pool.texts().size(), 5U);
}

TEST(TextPool, GivesListsBack) {
  ttr::CTextPool pool;
  for (const char* list : {"abcd", "", "dcba", "aXbcdY", "aa", "Xabcd"}) {
    EXPECT_EQ(TextOf(pool, Append(pool, list)), list);
  }
}

TEST(TextPool, KeepsItsTextsWhenItIsMoved) {
  ttr::CTextPool pool;
  const Runs runs = Append(pool, "abc");
  const ttr::CTextPool moved = std::move(pool);
  EXPECT_EQ(TextOf(moved, runs), "abc");
}

}  // namespace
