// Runs every case folder below the golden roots: template.json, resolved with values.json and
// options, must give expected.json and write expected.err. Files that are absent count as empty;
// other files in the folder are there to be included.
//
// With TTR_RENEW_GOLDEN set, expected.json and expected.err are written anew instead, and the
// tests fail so that a renewal is never taken for a pass.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/json.h"
#include "support/page_case.h"

namespace {

std::vector<std::filesystem::path> CaseFolders() {
  std::vector<std::filesystem::path> folders;
  for (const char* root : {TTR_SOURCE_DIR "/examples", TTR_SOURCE_DIR "/tests/golden"}) {
    for (const auto& entry : std::filesystem::directory_iterator(root)) {
      if (std::filesystem::exists(entry.path() / "template.json")) folders.push_back(entry.path());
    }
  }
  std::sort(folders.begin(), folders.end());
  return folders;
}

std::string TextOr(const std::filesystem::path& path, const std::string& absent) {
  return std::filesystem::exists(path) ? FileText(path) : absent;
}

void Renew(const std::filesystem::path& folder, const CPageResult& result) {
  std::ofstream(folder / "expected.json") << (result.json.empty() ? "" : PrettyJson(result.json));
  std::filesystem::remove(folder / "expected.err");
  if (!result.errors.empty()) std::ofstream(folder / "expected.err") << result.errors;
}

class Golden : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(Golden, GivesTheExpectedResult) {
  const std::filesystem::path& folder = GetParam();
  CPageCase page;
  page.page = FileText(folder / "template.json");
  page.values = TextOr(folder / "values.json", "{}");
  page.options = TextOr(folder / "options", "");
  page.directory = folder;
  const CPageResult result = ResolvePage(page);
  if (std::getenv("TTR_RENEW_GOLDEN") != nullptr) {
    Renew(folder, result);
    FAIL() << "renewed; run again without TTR_RENEW_GOLDEN";
  }
  const std::string actual = result.json.empty() ? "" : PrettyJson(result.json);
  EXPECT_EQ(actual, FileText(folder / "expected.json"));
  EXPECT_EQ(result.errors, TextOr(folder / "expected.err", ""));
}

std::string CaseName(const ::testing::TestParamInfo<std::filesystem::path>& info) {
  std::string name = info.param.filename().string();
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Pages, Golden, ::testing::ValuesIn(CaseFolders()), CaseName);

}  // namespace
