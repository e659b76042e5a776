#include "page/page_host.h"

#include <gtest/gtest.h>

#include "page/page_variables.h"
#include "support/cerr_capture.h"
#include "support/json.h"

namespace {

TEST(PageVariables, AreContextMembersAndLoopVariables) {
  const CTokenResolver tokens;
  const Json::Value page = Parse(R"({"Page": {"Context": {"title": 1},
    "Contents": [{"Context": {"shade": 2}, "Contents": [
      {"Loop": {"Var": "i", "Key": "k", "Value": "flight", "Count": "n", "RowVar": "row",
                "Contents": [{"Context": {"deep": 1}}]}}]}]}})");
  EXPECT_EQ(ttr::pageVariables(page, tokens),
            (std::set<std::string>{"title", "shade", "i", "k", "flight", "n", "deep"}));
}

TEST(PageVariables, AreBoundWhereTheyFirstStand) {
  const Json::Value page = Parse(R"({"Contents": [{"Context": {"a": 1}},
    {"Loop": {"Value": "a", "Var": "b"}}, {"Include": {"Filename": "/nowhere"}}]})");
  const ttr::CBoundNames names = ttr::boundNames(page);
  ASSERT_EQ(names.size(), 2U);
  EXPECT_EQ(names.at("a").Text(), "/Contents/0/Context/a");
  EXPECT_EQ(names.at("b").Text(), "/Contents/1/Loop/Var");
}

TEST(PageVariables, OddShapesBindNothing) {
  const CTokenResolver tokens;
  for (const char* page :
       {"null", "5", "[]", R"({"Context": [1], "Loop": "x", "Include": 5})",
        R"({"Loop": {"Var": 5, "Key": ""}})", R"({"Include": {"Filename": "/nowhere"}})"}) {
    SCOPED_TRACE(page);
    EXPECT_TRUE(ttr::pageVariables(Parse(page), tokens).empty());
  }
}

TEST(PageHost, MembersOfTheValuesAreHandlers) {
  CCerrCapture errors;
  ttr::CPageHost host(Parse(R"({"a": {"x": 1, "b": 5}, "a.b": {"x": 2}})"), {});
  EXPECT_EQ(host.Pass(R"j({"Contents": ["$(a.x)", "$(a.b.x)"]})j"), R"({"Contents":[1,2]})");
  EXPECT_EQ(errors.Take(), "");
}

TEST(PageHost, VariablesOfThePageAreHandlersUnlessTheValuesDefineThem) {
  CCerrCapture errors;
  ttr::CPageHost host(Parse(R"({"both": "value"})"), {});
  const std::string page = R"j({"Page": {"Context": {"mine": {"deep": 5}, "both": "page"},
    "Contents": ["$(mine.deep)", "$(context.mine.deep)", "$(both)", "$(context.both)"]}})j";
  host.ServeVariablesOf(page);
  EXPECT_EQ(Parse(host.Pass(page))["Page"]["Contents"], Parse(R"([5, 5, "value", "page"])"));
  EXPECT_EQ(errors.Take(), "");
}

TEST(PageHost, RotatingLoopsAdvanceFromPassToPass) {
  CCerrCapture errors;
  ttr::CPageHost host(Json::Value(Json::objectValue), {});
  const std::string page = R"j({"Contents": [{"Loop": {"List": "a,b,c", "Value": "letter",
    "Bounds": [], "Contents": ["$(letter)"]}}]})j";
  host.ServeVariablesOf(page);
  EXPECT_EQ(host.Pass(page), R"({"Contents":[{"Contents":["b"]}]})");
  EXPECT_EQ(host.Pass(page), R"({"Contents":[{"Contents":["c"]}]})");
  EXPECT_EQ(host.Pass(page), R"({"Contents":[{"Contents":["a"]}]})");
  EXPECT_EQ(errors.Take(), "");
}

TEST(PageHost, WithoutValuesEveryTokenIsAFault) {
  CCerrCapture errors;
  ttr::CPageHost host(Json::Value(Json::objectValue), {});
  EXPECT_EQ(host.Pass(R"j({"Contents": ["$(a)"]})j"), R"({"Contents":[null]})");
  EXPECT_EQ(errors.Take(), "CTokenResolver::GetTokenValue: no token handler for: a.\n");
}

}  // namespace
