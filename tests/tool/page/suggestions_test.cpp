#include "page/suggestions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/json.h"

namespace {

TEST(Suggestions, AnExchangeOfNeighboursIsOneStep) {
  const struct {
    const char* a;
    const char* b;
    std::size_t distance;
  } cases[] = {{"", "", 0},           {"", "abc", 3},        {"clock", "clock", 0},
               {"clok", "clock", 1},  {"clcok", "clock", 1}, {"cluck", "clock", 1},
               {"locks", "clock", 2}, {"ab", "cd", 2}};
  for (const auto& one : cases) {
    EXPECT_EQ(ttr::editDistance(one.a, one.b), one.distance) << one.a << ' ' << one.b;
    EXPECT_EQ(ttr::editDistance(one.b, one.a), one.distance) << one.b << ' ' << one.a;
  }
}

TEST(Suggestions, TheNearestNameWithinTheLimitIsMeant) {
  const std::vector<std::string> names = {"clock", "flock", "weather"};
  EXPECT_EQ(ttr::likelyName("clok", names, 1), "clock");
  EXPECT_EQ(ttr::likelyName("floc", names, 2), "flock");
  EXPECT_EQ(ttr::likelyName("WEATHER", names, 0), "weather");
  EXPECT_EQ(ttr::likelyName("clock3", {"clocks", "clock"}, 1), "clock") << "begins alike";
  EXPECT_EQ(ttr::likelyName("click", {"chick", "clock"}, 1), "chick") << "the first";
  EXPECT_EQ(ttr::likelyName("cl", names, 2), std::nullopt);
  EXPECT_EQ(ttr::likelyName("clock", names, 1), std::nullopt) << "flock is one step away";
}

TEST(Suggestions, ATokenIsComparedByAsManyPartsAsTheNameHas) {
  const std::vector<std::string> names = {"clock", "area.left"};
  const std::string unknown = "CTokenResolver::GetTokenValue: no token handler for: ";
  const std::string index = "CTokenResolver::GetTokenValue: index must be integer in: ";
  const std::string operand =
      "CTokenResolver::GetTokenValue: expression operand must be integer in: ";
  EXPECT_EQ(ttr::tokenSuggestion(unknown + "clok.time:%H.", names), "did you mean \"clock\"?");
  EXPECT_EQ(ttr::tokenSuggestion(unknown + "area.lfet.x.", names), "did you mean \"area.left\"?");
  EXPECT_EQ(ttr::tokenSuggestion(unknown + "Clock.", names), "did you mean \"clock\"?");
  EXPECT_EQ(ttr::tokenSuggestion(unknown + "bass.", names), "");
  EXPECT_EQ(ttr::tokenSuggestion(unknown + ".", names), "");
  EXPECT_EQ(ttr::tokenSuggestion(index + "days[clok.row].", names), "did you mean \"clock\"?");
  EXPECT_EQ(ttr::tokenSuggestion(operand + "n+clok.step.", names), "did you mean \"clock\"?");
  EXPECT_EQ(ttr::tokenSuggestion("CTemplateStack::BoundsSet: preconditions.", names), "");
}

std::vector<std::string> Misspelt(const std::string& document) {
  std::vector<std::string> found;
  for (const ttr::CMisspeltMember& member : ttr::misspeltMembers(Parse(document))) {
    found.push_back(member.pointer.Text() + " " + member.meant);
  }
  return found;
}

TEST(Suggestions, MisspeltMembersAreFoundInTheirContext) {
  const struct {
    const char* document;
    std::vector<std::string> found;
  } cases[] = {
      {R"({"page": {}, "Contents": []})", {"/page Page"}},
      {R"({"Page": {"Contexts": {}, "Contents": []}})", {"/Page/Contexts Context"}},
      {R"({"Contents": [{"Content": []}, {"Content": [], "Context": {}}]})",
       {"/Contents/0/Content Contents", "/Contents/1/Content Contents"}},
      {R"({"Contents": [{"If": {"=": 1, "==": 2, "Equal": 3}}]})", {"/Contents/0/If/Equal Equals"}},
      {R"({"Contents": [{"Bonds": [], "contents": [{"Lop": 1}]}]})",
       {"/Contents/0/Bonds Bounds", "/Contents/0/contents Contents"}},
      {R"({"Contents": [{"Contents": [{"Dispaly": [], "if": {}}]}]})",
       {"/Contents/0/Contents/0/Dispaly Display", "/Contents/0/Contents/0/if If"}},
      {R"({"Contents": [{"Include": {"FileName": "a"}}]})",
       {"/Contents/0/Include/FileName Filename"}},
      {R"({"Contents": [{"If": {"Conditon": 1, "Contents": [{"Playy": 1}]}}]})",
       {"/Contents/0/If/Conditon Condition", "/Contents/0/If/Contents/0/Playy Play"}},
      {R"({"Contents": [{"Loop": {"CellHight": 1, "Contents": [{"Prec ": 1}]}}]})",
       {"/Contents/0/Loop/CellHight CellHeight", "/Contents/0/Loop/Contents/0/Prec  Prec"}},
  };
  for (const auto& one : cases) EXPECT_EQ(Misspelt(one.document), one.found) << one.document;
}

TEST(Suggestions, OtherUnknownMembersAreLegal) {
  for (const char* document :
       {R"j({"Contents": [{"Note": "$(x)", "Title": 1, "id": 2, "Filename": "a", "Start": 0}]})j",
        R"({"Contents": [{"Bounds": [], "Bounds2": [], "Context": {"Bonds": 1}}]})",
        R"({"Contents": [{"Content": [], "Contents": []}]})",
        R"({"Contents": [["Bonds"], {"Loop": 5}, {"If": []}, {"Include": "x"}, null]})",
        R"({"Contents": "Bonds"})", "[1]", "null"}) {
    EXPECT_EQ(Misspelt(document), std::vector<std::string>()) << document;
  }
}

}  // namespace
