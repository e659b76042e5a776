#include "page/page_run.h"

#include <gtest/gtest.h>

#include "support/json.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace {

using Messages = std::vector<std::string>;

Messages TextsOf(const ttr::CPassRecord& record) {
  Messages texts;
  for (const ttr::CMessageFact& message : record.messages) texts.push_back(message.text);
  return texts;
}

TEST(PageRun, GivesTheResolvedPageAndTheMessages) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": ["$(n)", "$(x)", "$(y)!"]})j"},
                                 {"p.values.json", R"({"n": 5})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  EXPECT_EQ(*run.result, Parse(R"j({"Contents": [5, null, "!"]})j"));
  EXPECT_EQ(TextsOf(run), (Messages{"CTokenResolver::GetTokenValue: no token handler for: x.",
                                    "CTokenResolver::GetTokenValue: no token handler for: y."}));
  EXPECT_EQ(run.End(), nullptr);
}

TEST(PageRun, KeepsMessagesOfSeveralLinesTogether) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "bad.json"}}, {"Prec": ["a\n"]}]})j"},
       {"bad.json", "{"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  ASSERT_EQ(run.messages.size(), 3U);
  EXPECT_EQ(run.messages[0].text.substr(0, 26), "CTemplateResolver::read:* ");
  EXPECT_EQ(run.messages[0].text.back(), '.');
  EXPECT_EQ(run.messages[2].text,
            "CTokenResolver::stringToInt: cannot convert value to signed integer: a\n.");
}

TEST(PageRun, KnowsTheIncludedFiles) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "a.json"}}]})j"},
       {"a.json", R"j({"Contents": ["A"]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  EXPECT_EQ(*page.Record(1).result, Parse(R"j({"Contents": [{"Contents": ["A"]}]})j"));
  EXPECT_EQ(page.includedFiles(), std::vector<std::string>{"a.json"});
  EXPECT_EQ(page.IncludedFile("a.json")->name(), folder.path() + "/a.json");
}

TEST(PageRun, CommentsLeaveNoTraceInARecord) {
  const ttr::CPageFolder folder(
      {{"p.json", "// head\n{\"Contents\": [ /* \" */ \"a // \\\" /* b\", // c\r\n \"$(x)\"]}"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  EXPECT_EQ(*run.result, Parse(R"j({"Contents": ["a // \" /* b", null]})j"));
  EXPECT_EQ(run.messages.at(0).pointer.Text(), "/Contents/1");
}

TEST(PageRun, TheOutputIsThatOfTheLibraryToTheByte) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "no.json"}}, "a"] /* c */ })j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPageRunner::COutput output = page.Output(1);
  EXPECT_EQ(output.text, R"j({"Contents":[null,"a"] /* c */})j");
  ASSERT_EQ(output.lines.size(), 3U);
  EXPECT_EQ(output.lines[0], "ttr: not included: no.json: No such file or directory");
  EXPECT_EQ(output.lines[1].substr(0, 24), "CTemplateResolver::read:");
  EXPECT_FALSE(output.exception);
}

TEST(PageRun, TellsWhyAFileIsNotIncluded) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "no.json"}}]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  EXPECT_EQ(run.messages.size(), 2U) << "those of the library alone";
  EXPECT_EQ(page.IncludedFile("no.json"), nullptr);
  EXPECT_EQ(page.ReasonNotIncluded("no.json"), "No such file or directory");
}

TEST(PageRun, APassThatAnExceptionEndsIsMadeAgainWithoutItsCause) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": ["$(x)", "$(y)$(n/0)", "$(z)"]})j"},
                                 {"values.json", R"({"n": 5})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  ASSERT_NE(run.End(), nullptr);
  EXPECT_EQ(run.End()->exception.text, "TokenResolver::evaluateExpression: divide by zero.");
  EXPECT_EQ(run.End()->exception.pointer.Text(), "/Contents/1");
  EXPECT_EQ(run.End()->exception.token, "n/0");
  ASSERT_EQ(run.End()->element.tokens.size(), 2U);
  EXPECT_TRUE(run.End()->element.tokens[0].answered);
  EXPECT_FALSE(run.End()->element.tokens[1].answered);
  EXPECT_TRUE(run.isRepaired);
  EXPECT_EQ(*run.result, Parse(R"j({"Contents": [null, null, null]})j"));
  EXPECT_EQ(TextsOf(run), (Messages{"CTokenResolver::GetTokenValue: no token handler for: x.",
                                    "CTokenResolver::GetTokenValue: no token handler for: z."}));
  ASSERT_EQ(run.lostMessages.size(), 1U);
  EXPECT_EQ(run.lostMessages[0].text, "CTokenResolver::GetTokenValue: no token handler for: y.");
}

TEST(PageRun, WhatCannotBeTakenOutLeavesThePassEnded) {
  const ttr::CPageFolder folder({{"p.json", "[1]"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  ASSERT_EQ(run.ends.size(), 1U);
  EXPECT_FALSE(run.isRepaired);
  EXPECT_TRUE(run.result->isNull());
}

TEST(PageRun, AnIncludedFileMayHaveTheNameOfThePage) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "p.json"}}]})j"},
       {"sub/p.json", R"j({"Contents": ["$(nope)"]})j"}});
  const ttr::CWorkingDirectory directory(folder.path());
  ttr::CPageOptions options = folder.Options("p.json");
  options.page = "p.json";
  options.directory = "sub";
  ttr::CPageRunner page(options);
  const ttr::CPassRecord run = page.Record(1);
  EXPECT_EQ(*run.result, Parse(R"j({"Contents": [{"Contents": [null]}]})j"));
  ASSERT_EQ(run.messages.size(), 1U);
  EXPECT_EQ(run.messages[0].object.file, "p.json");
  EXPECT_EQ(run.root.origin.file, ttr::CPageRunner::pageKey);
}

TEST(PageRun, MessagesAroundAGapAreKept) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": [
      {"Loop": {"Start": 0, "Size": 2, "Layout": [[[0, 0]]], "Contents": ["$(n/0)"]}}]})j"},
                                 {"values.json", R"({"n": 5})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord run = page.Record(1);
  ASSERT_EQ(run.messages.size(), 1U);
  EXPECT_EQ(run.messages[0].text.substr(0, 42), "CTemplateResolver::loopElementIterate: too");
  EXPECT_FALSE(run.messages[0].isAside);
}

TEST(PageRun, APageThatEndsEarlyRotatesToo) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": ["$(n/0)",
      {"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [0, 0, 1, 1], "Contents": ["$(v)"]}}]})j"},
                                 {"values.json", R"({"n": 5})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  EXPECT_EQ(page.PassesUntilRepeat(), 3U);
}

TEST(PageRun, RotatingLoopsShowThePassAskedFor) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": [
      {"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [0, 0, 1, 1], "Contents": ["$(v)"]}},
      {"Loop": {"List": "x,y", "Value": "v", "Bounds": [0, 0, 1, 1], "Contents": ["$(v)"]}}]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  std::string shown;
  for (unsigned pass = 1; pass <= 4; ++pass) {
    shown += (*page.Record(pass).result)["Contents"][0]["Contents"][0].asString();
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
  const ttr::CPassRecord run = page.Record(1);
  EXPECT_EQ(TextsOf(run), Messages{"CTokenResolver::GetTokenValue: no token handler for: nope."});
  EXPECT_EQ((*run.result)["Contents"][1], "\xc3\xa9");
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
