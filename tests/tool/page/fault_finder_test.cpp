// Faults in included files, in loops and behind exceptions, cycles, and what the library does not
// look at. tests/tool/page/fault_places_test.cpp has the place of each message.
#include "page/fault_finder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tool/support/page_folder.h"

namespace {

using CFiles = std::initializer_list<std::pair<std::string, std::string>>;

/// The file name without the folder of the test.
std::string ShortText(const ttr::CPlace& place) {
  ttr::CPlace shown = place;
  shown.file = shown.file.substr(shown.file.rfind('/') + 1);
  return shown.Text();
}

std::vector<ttr::CFault> FaultsOf(const CFiles& files, ttr::CPasses passes = {}) {
  const ttr::CPageFolder folder(files);
  ttr::CPageRunner page(folder.Options("page.json"));
  return ttr::findFaults(page, passes);
}

/// "FILE:LINE:COLUMN POINTER [CODE] xCOUNT < FILE:LINE:COLUMN" with the ways through Includes;
/// without departures from the schema.
std::vector<std::string> Described(const std::vector<ttr::CFault>& faults) {
  std::vector<std::string> texts;
  for (const ttr::CFault& fault : faults) {
    if (fault.code == "schema") continue;
    std::string text =
        ShortText(fault.place) + ' ' + fault.pointer.Text() + " [" + fault.code + ']';
    if (fault.count > 1) text += " x" + std::to_string(fault.count);
    for (const ttr::CPlace& from : fault.includedFrom) text += " < " + ShortText(from);
    texts.push_back(text);
  }
  return texts;
}

using CTexts = std::vector<std::string>;

TEST(FaultFinder, ACleanPageHasNone) {
  EXPECT_EQ(Described(FaultsOf({{"page.json", R"j({"Contents": ["Hello"]})j"}})), CTexts());
}

TEST(FaultFinder, AFaultInAnIncludedFileTellsTheWayThere) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", "{\"Contents\": [\n  {\"Include\": {\"Filename\": \"a.json\"}}]}"},
      {"a.json",
       "{\"Page\": {\"Contents\": [\"x\", {\"Contents\": [\n"
       "{\"Include\": {\"Filename\": \"b.json\"}}]}]}}"},
      {"b.json", R"j({"Contents": ["ok", "a $(none)"]})j"},
  }));
  EXPECT_EQ(faults, (CTexts{"b.json:1:24 /Contents/1 [unknown-token] < a.json:2:26 < "
                            "page.json:2:28"}));
}

TEST(FaultFinder, AFileThatIsIncludedTwiceCountsTwice) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"j({"Contents": [{"Include": {"Filename": "a.json"}}, "x",
                        {"Include": {"Filename": "a.json"}}]})j"},
      {"a.json", R"j({"Contents": ["$(none)"]})j"},
  }));
  EXPECT_EQ(faults, (CTexts{"a.json:1:16 /Contents/0 [unknown-token] x2 < page.json:1:40"}));
}

TEST(FaultFinder, EachFileOfALoopedIncludeIsLookedInto) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"j({"Contents": [{"Loop": {"List": "a,b,c,a,d,e", "Value": "v",
         "Layout": [[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]],
         "Contents": [{"Include": {"Filename": "$(v).json"}}]}}]})j"},
      {"a.json", R"j({"Contents": ["$(none)"]})j"},
      {"b.json", R"j({"Contents": ["fine"]})j"},
      {"c.json", R"j({"Contents": [)j"},
      {"d.json", "null"},
  }));
  EXPECT_EQ(faults,
            (CTexts{"page.json:3:48 /Contents/0/Loop/Contents/0/Include/Filename [not-included]",
                    "a.json:1:16 /Contents/0 [unknown-token] x2 < page.json:3:48",
                    "c.json:1:15  [json-syntax] < page.json:3:48",
                    "d.json:1:1  [no-page-or-contents] < page.json:3:48",
                    "d.json:1:1  [not-an-object] < page.json:3:48"}));
}

TEST(FaultFinder, AFileThatCannotBeReadIsToldAtItsName) {
  const std::vector<ttr::CFault> faults =
      FaultsOf({{"page.json", R"j({"Contents": [{"Include": {"Filename": "no.json"}}]})j"}});
  EXPECT_EQ(Described(faults),
            (CTexts{"page.json:1:40 /Contents/0/Include/Filename [not-included]"}));
  EXPECT_EQ(faults.at(0).message, "not included: no.json: No such file or directory");
}

TEST(FaultFinder, AnArrayAsIncludedFileIsToldThereWithItsException) {
  EXPECT_EQ(Described(FaultsOf({{"page.json", R"j({"Contents": [{"Include": {"Filename":
                                  "a.json"}}, "$(none)"]})j"},
                                {"a.json", "[1]"}})),
            (CTexts{"page.json:2:48 /Contents/1 [unknown-token]",
                    "a.json:1:1  [not-an-object] < page.json:2:35",
                    "a.json:1:1  [exception] < page.json:2:35"}));
}

TEST(FaultFinder, ACycleIsToldOnceWithItsChain) {
  const std::vector<ttr::CFault> faults = FaultsOf({
      {"page.json", R"j({"Contents": ["$(none)", {"Include": {"Filename": "a.json"}}]})j"},
      {"a.json", R"j({"Contents": [{"Include": {"Filename": "b.json"}}, "$(nine)"]})j"},
      {"b.json", R"j({"Contents": [{"Include": {"Filename": "a.json"}}]})j"},
  });
  EXPECT_EQ(Described(faults),
            (CTexts{"page.json:1:16 /Contents/0 [unknown-token]",
                    "a.json:1:53 /Contents/1 [unknown-token] x6 < page.json:1:51",
                    "b.json:1:40 /Contents/0/Include/Filename [include-cycle] < a.json:1:40 < "
                    "page.json:1:51"}));
  EXPECT_EQ(faults.back().message, "include cycle: a.json -> b.json -> a.json");
}

TEST(FaultFinder, ACycleCountsAsOftenAsTheLibraryTellsOfIt) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"({"Contents": [{"Include": {"Filename": "page.json"}},
                                     {"Include": {"Filename": "page.json"}}]})"},
  }));
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_NE(faults[0].find("[include-cycle] x2048"), std::string::npos) << faults[0];
  EXPECT_NE(faults[1].find("[include-cycle] x2048"), std::string::npos) << faults[1];
}

TEST(FaultFinder, MessagesOfAFileCountForEachIncludeThatAnExceptionEnds) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"({"Contents": [{"Include": {"Filename": "a.json"}},
                                     {"Include": {"Filename": "a.json"}}]})"},
      {"a.json", "[]"},
  }));
  EXPECT_EQ(faults, (CTexts{"a.json:1:1  [not-an-object] x2 < page.json:1:40",
                            "a.json:1:1  [exception] x2 < page.json:1:40"}));
}

TEST(FaultFinder, ARecursionThatEndsByItselfIsNoFault) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"({"Contents": [{"Context": {"d": 3}, "Include": {"Filename": "a.json"}}]})"},
      {"a.json", R"j({"Contents": [{"If": {"Condition": "$(d)", "Contents": ["$(nine)",
                     {"Context": {"d": "$(d-1)", "e": "$(none)"}, "Include": {"Filename": "a.json"}}]}}]})j"},
  }));
  EXPECT_EQ(
      faults,
      (CTexts{
          "a.json:1:58 /Contents/0/If/Contents/0 [unknown-token] x3 < page.json:1:61",
          "a.json:2:56 /Contents/0/If/Contents/1/Context/e [unknown-token] x3 < page.json:1:61"}));
}

TEST(FaultFinder, OfAContextAndItsUseTheUseIsBlamed) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"j({"Contents": [{"Context": {"w": "$(gap)"}, "Prec": ["$(w)"]}]})j"},
      {"values.json", R"({"gap": "5px"})"},
  }));
  EXPECT_EQ(faults, (CTexts{"page.json:1:53 /Contents/0/Prec/0 [not-an-integer]"}));
}

TEST(FaultFinder, ATextIsBlamedAlsoWhenThePageEndsInAnExceptionWithoutIt) {
  const CTexts faults = Described(FaultsOf({
      {"page.json",
       R"j({"Contents": [{"If": {"Condition": 99999999999, "Equals": "$(x)", "==": 5}}]})j"},
  }));
  EXPECT_EQ(faults, (CTexts{"page.json:1:60 /Contents/0/If/Equals [unknown-token]"}));
}

TEST(FaultFinder, CopiesOfALoopCount) {
  const CTexts faults = Described(FaultsOf({{"page.json", R"j({"Contents": [{"Loop": {
      "Start": 0, "Size": 5, "Layout": [[[0,0],[0,0],[0,0],[0,0],[0,0]]],
      "Contents": [{"Contents": ["$(none)"]}]}}]
})j"}}));
  EXPECT_EQ(faults,
            (CTexts{"page.json:3:35 /Contents/0/Loop/Contents/0/Contents/0 [unknown-token] x5"}));
}

TEST(FaultFinder, TheSameTextAtSeveralPlacesIsSeveralFaults) {
  const CTexts faults = Described(FaultsOf({{"page.json", R"j({"Contents": [
    {"Display": ["red", "#FFF", "red"]}, {"Display": ["red"], "Prec": ["red"]}]})j"}}));
  EXPECT_EQ(faults, (CTexts{"page.json:2:19 /Contents/0/Display/0 [not-a-colour-word]",
                            "page.json:2:26 /Contents/0/Display/1 [not-a-colour]",
                            "page.json:2:34 /Contents/0/Display/2 [not-a-colour-word]",
                            "page.json:2:56 /Contents/1/Display/0 [not-a-colour-word]",
                            "page.json:2:73 /Contents/1/Prec/0 [not-an-integer]"}));
}

TEST(FaultFinder, WhatLiesBehindExceptionsIsFoundToo) {
  const CTexts faults = Described(FaultsOf({{"page.json", R"j({"Contents": [
    "$(a)", "$(n/0)", {"Bounds": {"x": 1}, "Display": ["$(b)"], "Contents": ["$(c)"]},
    {"Play": ["$(n/0)", "$(d/0)", "$(n/0)"]}]})j"},
                                            {"values.json", R"j({"n": 1})j"}}));
  EXPECT_EQ(faults, (CTexts{"page.json:2:6 /Contents/0 [unknown-token]",
                            "page.json:2:13 /Contents/1 [division-by-zero]",
                            "page.json:2:34 /Contents/2/Bounds [exception]",
                            "page.json:2:57 /Contents/2/Display/0 [unknown-token]",
                            "page.json:2:79 /Contents/2/Contents/0 [unknown-token]",
                            "page.json:3:15 /Contents/3/Play/0 [division-by-zero]",
                            "page.json:3:26 /Contents/3/Play/1 [unknown-token]",
                            "page.json:3:35 /Contents/3/Play/2 [division-by-zero]"}));
}

TEST(FaultFinder, AllPassesAreLookedAtOnDemand) {
  const CFiles files = {{"page.json", R"j({"Contents": [{"Loop": {"List": "1,x,3", "Value": "v",
                                         "Bounds": [], "Contents": [{"Prec": ["$(v)"]}]}}]
})j"}};
  const CTexts expected = {"page.json:2:79 /Contents/0/Loop/Contents/0/Prec/0 [not-an-integer]"};
  EXPECT_EQ(Described(FaultsOf(files, {1, 3})), expected);
  EXPECT_EQ(Described(FaultsOf(files, {1, 1})), expected) << "the second entry";
  EXPECT_EQ(Described(FaultsOf(files, {2, 2})), CTexts());
}

TEST(FaultFinder, LikePassesCountWithoutASearchOfTheirOwn) {
  const CFiles files = {{"page.json", R"j({"Contents": [{"Loop": {"List": "a,b", "Value": "v",
      "Bounds": [], "Contents": [
      {"If": {"Condition": "$(v)", "Equals": "a", "Contents": ["$(no)"]}},
      {"If": {"Condition": "$(v)", "NotEquals": "a", "Contents": ["$(no)"]}}]}}]})j"}};
  const std::string at = "/Contents/0/Loop/Contents/";
  EXPECT_EQ(Described(FaultsOf(files, {1, 1})).size(), 1U);
  EXPECT_EQ(Described(FaultsOf(files, {1, 7})),
            (CTexts{"page.json:3:65 " + at + "0/If/Contents/0 [unknown-token] x3",
                    "page.json:4:68 " + at + "1/If/Contents/0 [unknown-token] x4"}));
}

TEST(FaultFinder, WhatTheLibraryDoesNotLookAtTellsTheWayThereToo) {
  const CFiles files = {
      {"page.json", R"({"Contents": [{"Include": {"Filename": "a.json"}}]})"},
      {"a.json", R"({"Contents": [{"Include": {"Filename": "b.json"}}]})"},
      {"b.json", R"({"Contents": [{"Display": "#FF0000FF", "Bonds": []}]})"},
  };
  const std::vector<ttr::CFault> faults = FaultsOf(files);
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].code, "schema");
  EXPECT_EQ(faults[1].code, "unknown-member");
  for (const ttr::CFault& fault : faults) {
    ASSERT_EQ(fault.includedFrom.size(), 2U) << fault.code;
    EXPECT_EQ(ShortText(fault.includedFrom[0]), "a.json:1:40");
    EXPECT_EQ(ShortText(fault.includedFrom[1]), "page.json:1:40");
  }
}

TEST(FaultFinder, TheWayToAFileIsKnownAlsoBehindAnException) {
  const CTexts faults = Described(FaultsOf({
      {"page.json", R"j({"Contents": ["$(n/0)", {"Include": {"Filename": "a.json"}}]})j"},
      {"a.json", R"j({"Contents": ["$(no)", {"Bonds": []}]})j"},
      {"values.json", R"({"n": 1})"},
  }));
  ASSERT_EQ(faults.size(), 3U);
  EXPECT_EQ(faults[2], "a.json:1:25 /Contents/1/Bonds [unknown-member] < page.json:1:50");
}

TEST(FaultFinder, AnExceptionIsToldInTheWordsOfTheSchema) {
  const std::vector<ttr::CFault> faults =
      FaultsOf({{"page.json", R"j({"Contents": [{"If": [1]}, "$(n/0)"]})j"},
                {"values.json", R"({"n": 1})"}});
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].code, "exception");
  EXPECT_EQ(faults[0].level, ttr::CFault::levelError);
  EXPECT_EQ(faults[0].pointer.Text(), "/Contents/0/If");
  EXPECT_EQ(faults[0].message, R"("If" is an object with "Condition" and "Contents")");
  EXPECT_NE(faults[1].message.find("divide by zero"), std::string::npos);
}

TEST(FaultFinder, UnknownTokensAndMembersComeWithSuggestions) {
  const std::vector<ttr::CFault> faults = FaultsOf({
      {"page.json",
       R"j({"Contents": [{"Bonds": [0, 0, 1, 1], "Contents": ["at $(clok.time)"]}]})j"},
      {"values.json", R"j({"clock": {"time": "12:00"}})j"},
  });
  EXPECT_EQ(Described(faults), (CTexts{"page.json:1:16 /Contents/0/Bonds [unknown-member]",
                                       "page.json:1:56 /Contents/0/Contents/0 [unknown-token]"}));
  EXPECT_EQ(faults.at(0).message, "unknown member \"Bonds\"");
  EXPECT_EQ(faults.at(0).suggestion, "did you mean \"Bounds\"?");
  EXPECT_EQ(faults.at(1).message,
            "CTokenResolver::GetTokenValue: no token handler for: clok.time.");
  EXPECT_EQ(faults.at(1).suggestion, "did you mean \"clock\"?");
}

TEST(FaultFinder, TheSchemaSpeaksWhereTheLibraryIsSilent) {
  const std::vector<ttr::CFault> faults = FaultsOf({
      {"page.json", R"({"Contents": [{"Display": "#FF0000FF", "Prec": {"a": 1}}]})"},
  });
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].code, "schema");
  EXPECT_EQ(faults[0].pointer.Text(), "/Contents/0/Display");
  EXPECT_EQ(ShortText(faults[0].place), "page.json:1:27");
  EXPECT_EQ(faults[1].code, "prec-not-array") << "and is not repeated by the schema";
}

}  // namespace
