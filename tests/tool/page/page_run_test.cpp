#include "page/page_run.h"

#include <gtest/gtest.h>

#include "support/json.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace {

using Messages = std::vector<std::string>;

TEST(PageRun, GivesTheResolvedPageAndTheMessages) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": ["$(n)", "$(x)", "$(y)!"]})j"},
                                 {"p.values.json", R"({"n": 5})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPageRun run = page.Run({}, 1);
  EXPECT_EQ(run.result, Parse(R"j({"Contents": [5, null, "!"]})j"));
  EXPECT_EQ(run.messages, (Messages{"CTokenResolver::GetTokenValue: no token handler for: x.",
                                    "CTokenResolver::GetTokenValue: no token handler for: y."}));
  EXPECT_FALSE(run.exception);
}

TEST(PageRun, KeepsMessagesOfSeveralLinesTogether) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "bad.json"}}, {"Prec": ["a\n"]}]})j"},
       {"bad.json", "{"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPageRun run = page.Run({}, 1);
  ASSERT_EQ(run.messages.size(), 3U);
  EXPECT_EQ(run.messages[0].substr(0, 26), "CTemplateResolver::read:* ");
  EXPECT_EQ(run.messages[0].back(), '.');
  EXPECT_EQ(run.messages[2],
            "CTokenResolver::stringToInt: cannot convert value to signed integer: a\n.");
}

TEST(PageRun, NamesIncludedDocumentsInTheResult) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "a.json"}}]})j"},
       {"a.json", R"j({"Contents": ["A"]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const Json::Value result = page.Run({}, 1).result;
  EXPECT_EQ(result, Parse(R"j({"Contents": [{"Contents": ["A"], "ttr:file": "a.json"}]})j"));
  EXPECT_EQ(ttr::withoutFileNames(result), Parse(R"j({"Contents": [{"Contents": ["A"]}]})j"));
  EXPECT_EQ(page.includedFiles(), std::vector<std::string>{"a.json"});
  EXPECT_EQ(page.IncludedFile("a.json")->name(), folder.path() + "/a.json");
}

TEST(PageRun, ChangesStandInForFiles) {
  const ttr::CPageFolder folder(
      {{"p.json",
        R"j({"Contents": ["$(v)", {"Context": {"v": 1}, "Include": {"Filename": "a.json"}}]})j"},
       {"a.json", R"j({"Contents": ["A"]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  ttr::CPageRunner::CChanges changes;
  changes["a.json"] = Parse(R"j({"Contents": ["B"]})j");
  EXPECT_EQ(page.Run(changes, 1).result["Contents"][1]["Contents"], Parse(R"(["B"])"));
  changes[page.pageFile().name()] = Parse(R"j({"Contents": ["$(v)"]})j");
  const ttr::CPageRun run = page.Run(changes, 1);
  EXPECT_EQ(run.result, Parse(R"j({"Contents": [null]})j"));
  EXPECT_TRUE(run.messages.empty()) << "v is a variable of the page, though not of this copy";
}

TEST(PageRun, TellsWhyAFileIsNotIncluded) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "no.json"}}]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPageRun run = page.Run({}, 1);
  EXPECT_EQ(run.messages.size(), 2U) << "those of the library alone";
  EXPECT_EQ(page.IncludedFile("no.json"), nullptr);
  EXPECT_EQ(page.ReasonNotIncluded("no.json"), "No such file or directory");
}

TEST(PageRun, AnExceptionEndsThePass) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": ["$(x)", "$(n/0)"]})j"}, {"values.json", R"({"n": 5})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPageRun run = page.Run({}, 1);
  EXPECT_EQ(run.exception, "TokenResolver::evaluateExpression: divide by zero.");
  EXPECT_TRUE(run.result.isNull());
  EXPECT_EQ(run.messages.size(), 1U);
}

TEST(PageRun, RotatingLoopsShowThePassAskedFor) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": [
      {"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [0, 0, 1, 1], "Contents": ["$(v)"]}},
      {"Loop": {"List": "x,y", "Value": "v", "Bounds": [0, 0, 1, 1], "Contents": ["$(v)"]}}]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  std::string shown;
  for (unsigned pass = 1; pass <= 4; ++pass) {
    shown += page.Run({}, pass).result["Contents"][0]["Contents"][0].asString();
  }
  EXPECT_EQ(shown, "bcab");
  EXPECT_EQ(page.PassesUntilRepeat(), 6U);
}

TEST(PageRun, LooksForARepetitionAsFarAsItIsTold) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": [
      {"Loop": {"Start": 0, "Size": 70, "Var": "i", "Bounds": [0, 0, 1, 1],
                "Contents": ["$(i)"]}}]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  EXPECT_EQ(page.PassesUntilRepeat(), 60U);
  EXPECT_EQ(page.PassesUntilRepeat(139), 139U) << "not seen twice";
  EXPECT_EQ(page.PassesUntilRepeat(1000), 70U);
}

TEST(PageRun, TheLibraryComesUponTheBytesOfTheFile) {
  const ttr::CPageFolder folder({{"p.json", "{\"Contents\": [\"\xe9$(nope)\", \"\xc3\xa9\"]}"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPageRun run = page.Run({}, 1);
  EXPECT_EQ(run.messages, Messages{"CTokenResolver::GetTokenValue: no token handler for: nope."});
  EXPECT_EQ(run.result["Contents"][1], "\xc3\xa9");
}

TEST(PageRun, OneFileHasOneNameForTheReader) {
  const ttr::CPageFolder folder({{"p.json", R"({"Contents": []})"}, {"a.json", "{}"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  EXPECT_EQ(page.IncludedFile("./a.json")->name(), page.IncludedFile("a.json")->name());
}

TEST(PageRun, APageWithoutRotatingLoopsHasOnePass) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": ["A"]})j"}});
  EXPECT_EQ(ttr::CPageRunner(folder.Options("p.json")).PassesUntilRepeat(), 1U);
}

TEST(PageRun, TokenNamesAreHandlersAndVariables) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Page": {"Context": {"ink": 1}, "Contents": []}})j"},
       {"values.json", R"({"audio.left": 5})"}});
  EXPECT_EQ(ttr::CPageRunner(folder.Options("p.json")).TokenNames(),
            (std::vector<std::string>{"audio.left", "context", "ink"}));
}

TEST(PageRun, FaultsOfThePageAndItsValuesAreToldWithTheirFiles) {
  const ttr::CPageFolder folder({{"p.json", "{}"}, {"values.json", "[]"}});
  EXPECT_THROW(ttr::CPageRunner(folder.Options("p.json")), ttr::CToolError);
  EXPECT_THROW(ttr::CPageRunner(folder.Options("none.json")), ttr::CToolError);
}

}  // namespace
