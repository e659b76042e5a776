#include "preview/text_layout.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

TEST(TextLayout, CharactersAreUtf8Sequences) {
  EXPECT_EQ(ttr::characters("a\u00e9\u20ac\n"), (Lines{"a", "\u00e9", "\u20ac", " "}));
  EXPECT_EQ(ttr::characters("\xFF\x80\xC3"), (Lines{"\xFF\x80", "\xC3"}));
}

TEST(TextLayout, ShortenedTextTellsSo) {
  EXPECT_EQ(ttr::shortened("Departure", 9), "Departure");
  EXPECT_EQ(ttr::shortened("Departure", 5), "Depa\u2026");
  EXPECT_EQ(ttr::shortened("\u00e9\u00e9\u00e9", 2), "\u00e9\u2026");
}

TEST(TextLayout, LinesBreakAtBlanks) {
  EXPECT_EQ(ttr::wrapped("Please use lift A", 10), (Lines{"Please use", "lift A"}));
  EXPECT_EQ(ttr::wrapped("Friday", 4), (Lines{"Frid", "ay"}));
  EXPECT_EQ(ttr::wrapped("", 4), Lines{});
  EXPECT_EQ(ttr::wrapped("a  b", 1), (Lines{"a", " ", "b"}));
}

TEST(TextLayout, TextFitsTheHeightOfItsBox) {
  EXPECT_EQ(ttr::fitted({"Gate"}, 500, 40, 6, 64).fontSize, 24);
  EXPECT_EQ(ttr::fitted({"Gate"}, 500, 400, 6, 64).fontSize, 64);
}

TEST(TextLayout, LongTextIsWrappedInSmallerLetters) {
  const ttr::CFittedText fit =
      ttr::fitted({"Every Thursday at three, weather permitting."}, 300, 80, 6, 64);
  EXPECT_EQ(fit.lines.size(), 2U);
  EXPECT_LE(2 * fit.LineHeight(), 80);
}

TEST(TextLayout, WordsAreNotBrokenWhileLettersCanBeSmaller) {
  const ttr::CFittedText fit = ttr::fitted({"Departures"}, 100, 60, 6, 64);
  EXPECT_EQ(fit.lines, Lines{"Departures"});
  EXPECT_EQ(fit.fontSize, 17);
}

TEST(TextLayout, EndlessTextIsCutOff) {
  const ttr::CFittedText fit = ttr::fitted({std::string(1000000, 'x')}, 100, 50, 6, 64);
  EXPECT_EQ(fit.fontSize, 6);
  EXPECT_LE(fit.lines.size(), 10U);
}

}  // namespace
