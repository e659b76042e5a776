#include "test/unified_diff.h"

#include <gtest/gtest.h>

#include <string>

namespace ttr {
namespace {

std::string DiffOf(const std::string& before, const std::string& after) {
  return unifiedDiff({"a", before}, {"b", after});
}

TEST(UnifiedDiff, IsEmptyForEqualTexts) {
  EXPECT_EQ(DiffOf("", ""), "");
  EXPECT_EQ(DiffOf("one\ntwo\n", "one\ntwo\n"), "");
}

TEST(UnifiedDiff, HasThreeLinesAround) {
  EXPECT_EQ(DiffOf("1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nfive\n6\n7\n8\n9\n"),
            "--- a\n+++ b\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n");
  EXPECT_EQ(DiffOf("1\n2\n", "0\n1\n2\n"), "--- a\n+++ b\n@@ -1,2 +1,3 @@\n+0\n 1\n 2\n");
  EXPECT_EQ(DiffOf("1\n", "2\n"), "--- a\n+++ b\n@@ -1 +1 @@\n-1\n+2\n");
}

TEST(UnifiedDiff, JoinsHunksWithSixLinesBetween) {
  EXPECT_EQ(DiffOf("a\n1\n2\n3\n4\n5\n6\nb\n", "A\n1\n2\n3\n4\n5\n6\nB\n"),
            "--- a\n+++ b\n@@ -1,8 +1,8 @@\n-a\n+A\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n+B\n");
  EXPECT_EQ(DiffOf("a\n1\n2\n3\n4\n5\n6\n7\nb\n", "A\n1\n2\n3\n4\n5\n6\n7\nB\n"),
            "--- a\n+++ b\n@@ -1,4 +1,4 @@\n-a\n+A\n 1\n 2\n 3\n"
            "@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-b\n+B\n");
}

TEST(UnifiedDiff, OfAnEmptyTextStandsAtLineZero) {
  EXPECT_EQ(DiffOf("", "1\n2\n"), "--- a\n+++ b\n@@ -0,0 +1,2 @@\n+1\n+2\n");
  EXPECT_EQ(DiffOf("1\n", ""), "--- a\n+++ b\n@@ -1 +0,0 @@\n-1\n");
}

TEST(UnifiedDiff, TellsThatTheLastLineHasNoEnd) {
  EXPECT_EQ(DiffOf("1\n2", "1\n2\n"),
            "--- a\n+++ b\n@@ -1,2 +1,2 @@\n 1\n-2\n\\ No newline at end of file\n+2\n");
  EXPECT_EQ(DiffOf("1", "2"),
            "--- a\n+++ b\n@@ -1 +1 @@\n-1\n\\ No newline at end of file\n"
            "+2\n\\ No newline at end of file\n");
}

}  // namespace
}  // namespace ttr
