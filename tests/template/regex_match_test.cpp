#include "TokenTemplateResolver/regex_match.h"

#include <gtest/gtest.h>

#include "support/cerr_capture.h"

namespace {

struct CCase {
  const char* text;
  const char* pattern;
  bool matches;
};

void ExpectMatches(const CCase& testCase) {
  SCOPED_TRACE(testCase.text);
  SCOPED_TRACE(testCase.pattern);
  CCerrCapture cerr;
  EXPECT_EQ(regexMatch(testCase.text, testCase.pattern), testCase.matches);
  EXPECT_EQ(cerr.Take(), "");
}

TEST(RegexMatch, MatchesAnywhereInTheText) {
  const CCase cases[] = {
      {"one two", "two", true},    {"one two", "e t", true},   {"one two", "^two", false},
      {"one two", "^one", true},   {"one two", "one$", false}, {"one two", "two$", true},
      {"one two", "three", false}, {"", "a", false},           {"", "^$", true},
      {"a", "^$", false}};
  for (const CCase& testCase : cases) ExpectMatches(testCase);
}

TEST(RegexMatch, DisregardsCase) {
  const CCase cases[] = {{"ABC", "abc", true},
                         {"abc", "ABC", true},
                         {"aBc", "AbC", true},
                         {"LOGO", "[a-z]+", true},
                         {"logo", "^[A-Z]+$", true}};
  for (const CCase& testCase : cases) ExpectMatches(testCase);
}

TEST(RegexMatch, PatternsAreExtended) {
  const CCase cases[] = {{"xx", "^x+$", true},
                         {"x+", "^x+$", false},
                         {"ab", "^(cd|ab)$", true},
                         {"(ab)", "^(ab)$", false},
                         {"(ab)", R"(^\(ab\)$)", true},
                         {"aaa", "^a{3}$", true},
                         {"aa", "^a{3}$", false},
                         {"ac", "^ab?c$", true},
                         {"a1", "^[[:alpha:]][[:digit:]]$", true}};
  for (const CCase& testCase : cases) ExpectMatches(testCase);
}

TEST(RegexMatch, NewlineIsAnOrdinaryCharacter) {
  const CCase cases[] = {{"a\nb", "a.b", true},
                         {"a\nb", "^b", false},
                         {"a\nb", "a$", false},
                         {"a\nb", "[^x]b", true},
                         {"a\n", "a$", false}};
  for (const CCase& testCase : cases) ExpectMatches(testCase);
}

TEST(RegexMatch, PatternThatDoesNotCompileMatchesNothing) {
  for (const char* pattern : {"(", "a(b", "[", "[a", "a{2,1}", "[[:nothing:]]", "[b-a]", "\\"}) {
    ExpectMatches({"(", pattern, false});
    ExpectMatches({"a(b", pattern, false});
    ExpectMatches({"", pattern, false});
  }
}

TEST(RegexMatch, NothingIsKeptBetweenCalls) {
  ExpectMatches({"abc", "b", true});
  ExpectMatches({"abc", "(", false});
  ExpectMatches({"abc", "b", true});
  ExpectMatches({"xyz", "b", false});
}

}  // namespace
