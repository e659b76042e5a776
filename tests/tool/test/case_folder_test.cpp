#include "test/case_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "files.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace ttr {
namespace {

constexpr char page[] = R"j({"Contents": [{"Bounds": [0, 0, "50%", 10], "Contents": ["$(a)"]
}]
})j";
constexpr char result[] = R"({"Contents": [{"Bounds": [0, 0, 640, 10], "Contents": [5]}]})";

std::string FileIn(const CPageFolder& folder, const char* name) {
  return folder.path() + '/' + name;
}

bool Has(const CPageFolder& folder, const char* name) {
  return std::filesystem::exists(FileIn(folder, name));
}

TEST(CaseFolder, PassesHoweverTheResultIsIndented) {
  const CPageFolder folder(
      {{"template.json", page}, {"values.json", R"({"a": 5})"}, {"expected.json", result}});
  EXPECT_EQ(checkCase(folder.path()).failure, "");
  folder.Write("expected.json", caseOutput(folder.path()).json);
  EXPECT_EQ(checkCase(folder.path()).failure, "");
}

TEST(CaseFolder, FailsWithADiff) {
  const CPageFolder folder(
      {{"template.json", page}, {"values.json", R"({"a": 6})"}, {"expected.json", result}});
  const CCaseResult checked = checkCase(folder.path());
  EXPECT_EQ(checked.failure, "expected.json differs");
  EXPECT_NE(checked.diff.find("\n-        5\n+        6\n"), std::string::npos) << checked.diff;
}

TEST(CaseFolder, TellsANumberFromItsText) {
  const CPageFolder folder(
      {{"template.json", page}, {"values.json", R"({"a": "5"})"}, {"expected.json", result}});
  EXPECT_EQ(checkCase(folder.path()).failure, "expected.json differs");
}

TEST(CaseFolder, FailsWithoutAnExpectedResult) {
  const CPageFolder folder({{"template.json", R"({"Contents": []})"}});
  EXPECT_EQ(checkCase(folder.path()).failure, "expected.json is missing");
}

TEST(CaseFolder, FailsForTextAfterTheExpectedResult) {
  const CPageFolder folder(
      {{"template.json", R"({"Contents": []})"}, {"expected.json", R"({"Contents": []} 5)"}});
  EXPECT_EQ(checkCase(folder.path()).failure, "expected.json differs");
}

TEST(CaseFolder, ExpectsTheMessages) {
  const CPageFolder folder({{"template.json", R"j({"Contents": ["$(none)"]})j"},
                            {"expected.json", R"({"Contents": [null]})"}});
  EXPECT_EQ(checkCase(folder.path()).failure, "expected.err differs");
  folder.Write("expected.err", "CTokenResolver::GetTokenValue: no token handler for: none.\n");
  EXPECT_EQ(checkCase(folder.path()).failure, "");
  folder.Write("template.json", R"({"Contents": [null]})");
  EXPECT_EQ(checkCase(folder.path()).failure, "expected.err differs");
}

TEST(CaseFolder, ExpectsAnException) {
  const CPageFolder folder({{"template.json", R"j({"Contents": ["$(none)", "$(a/0)"]})j"},
                            {"values.json", R"({"a": 5})"}});
  const CCaseOutput output = caseOutput(folder.path());
  EXPECT_EQ(output.json, "");
  EXPECT_EQ(output.errors,
            "CTokenResolver::GetTokenValue: no token handler for: none.\n"
            "exception: TokenResolver::evaluateExpression: divide by zero.\n");
  EXPECT_EQ(checkCase(folder.path()).failure, "expected.json is missing, expected.err differs");
  folder.Write("expected.json", "");
  folder.Write("expected.err", output.errors);
  EXPECT_EQ(checkCase(folder.path()).failure, "");
}

TEST(CaseFolder, ReadsSizeAndPass) {
  const CPageFolder folder(
      {{"template.json", R"j({"Contents": [{"Bounds": ["50%", 0, 1, 1], "Contents": [
          {"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [], "Contents": ["$(v)"]}}]}]
})j"},
       {"options", "size=800x480 pass=2\n"},
       {"expected.json", R"({"Contents": [{"Bounds": [400, 0, 1, 1], "Contents": [
          {"Contents": ["c"]}]}]})"}});
  EXPECT_EQ(checkCase(folder.path()).failure, "");
  folder.Write("options", "size=0x0");
  EXPECT_EQ(caseOutput(folder.path()).errors,
            "CTokenResolver::stringToInt: cannot convert value to signed integer: 50%.\n");
}

TEST(CaseFolder, FailsForOptionsThatItDoesNotKnow) {
  for (const char* options : {"size=800", "size=x", "size=-1x5", "pass=0", "pass=1x", "other"}) {
    SCOPED_TRACE(options);
    const CPageFolder folder({{"template.json", page}, {"options", options}});
    const std::string failure = checkCase(folder.path()).failure;
    EXPECT_EQ(failure, folder.path() + "/options: '" + options +
                           "' is neither size=WIDTHxHEIGHT nor pass=N");
  }
}

TEST(CaseFolder, FailsForValuesThatAreNone) {
  const CPageFolder folder({{"template.json", page}, {"values.json", "[]"}});
  EXPECT_NE(checkCase(folder.path()).failure.find("must be a JSON object"), std::string::npos);
}

TEST(CaseFolder, LeavesOutWhyAFileIsNotIncluded) {
  const CPageFolder folder(
      {{"template.json", R"({"Contents": [{"Include": {"Filename": "x"}}]})"}});
  const std::string errors = caseOutput(folder.path()).errors;
  EXPECT_EQ(errors.find("ttr:"), std::string::npos) << errors;
  EXPECT_EQ(errors.find("CTemplateResolver::read:"), 0U) << errors;
}

TEST(CaseFolder, IncludesFilesBesideIt) {
  const CPageFolder folder(
      {{"template.json", R"({"Contents": [{"Include": {"Filename": "part.json"}}]})"},
       {"part.json", R"({"Contents": ["In"]})"},
       {"expected.json", R"({"Contents": [{"Contents": ["In"]}]})"}});
  EXPECT_EQ(checkCase(folder.path()).failure, "");
}

TEST(CaseFolder, UpdatesOnlyWhatDiffers) {
  const CPageFolder folder({{"template.json", page},
                            {"values.json", R"({"a": 5})"},
                            {"expected.json", result},
                            {"expected.err", "a line\n"}});
  const CCaseResult updated = updateCase(folder.path());
  EXPECT_EQ(updated.failure, "");
  EXPECT_EQ(updated.updated, std::vector<std::string>{FileIn(folder, "expected.err")});
  EXPECT_FALSE(Has(folder, "expected.err"));
  EXPECT_EQ(readText(FileIn(folder, "expected.json")), result);
  EXPECT_EQ(updateCase(folder.path()).updated, std::vector<std::string>());
}

TEST(CaseFolder, UpdateWritesWhatIsMissing) {
  const CPageFolder folder({{"template.json", R"j({"Contents": ["$(none)"]})j"}});
  EXPECT_EQ(
      updateCase(folder.path()).updated,
      (std::vector<std::string>{FileIn(folder, "expected.json"), FileIn(folder, "expected.err")}));
  EXPECT_EQ(checkCase(folder.path()).failure, "");
}

TEST(CaseFolder, UpdateFailsWhereThereIsNothingToWrite) {
  const CPageFolder folder({{"template.json", page}, {"options", "bad"}});
  EXPECT_NE(updateCase(folder.path()).failure, "");
  EXPECT_FALSE(Has(folder, "expected.json"));
}

TEST(CaseFolder, IsStableWithComments) {
  const CPageFolder folder(
      {{"template.json", "{/* kept */ \"Contents\": [\"a\" /* b */,\n/* c */ 1]}"}});
  updateCase(folder.path());
  EXPECT_EQ(checkCase(folder.path()).failure, "");
}

TEST(CaseFolder, IsFoundAtAnyDepth) {
  const CPageFolder folder({{"template.json", "{}"}});
  std::filesystem::create_directories(folder.path() + "/b/c");
  std::filesystem::create_directories(folder.path() + "/a");
  folder.Write("b/c/template.json", "{}");
  folder.Write("a/other.json", "{}");
  EXPECT_EQ(findCases(folder.path()),
            (std::vector<std::string>{folder.path(), folder.path() + "/b/c"}));
  EXPECT_EQ(findCases(folder.path() + "/a"), std::vector<std::string>());
  EXPECT_THROW(findCases(folder.path() + "/none"), CToolError);
  EXPECT_THROW(findCases(folder.path() + "/template.json"), CToolError);
}

}  // namespace
}  // namespace ttr
