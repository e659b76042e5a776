// The pages in tests/schema/ and elsewhere against the schema. Beside a wrong page stands what must
// be found in it, a line for each fault: its JSON pointer, a colon, a blank, the message. In the
// legal ones, where the library takes what looks odd, nothing is found.
#include "page/schema_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "page/template_schema.h"
#include "support/json.h"
#include "support/resolver_fixture.h"

namespace {

namespace fs = std::filesystem;

const fs::path source = TTR_SOURCE_DIR;

std::string TextOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> LinesOf(const fs::path& path) {
  std::vector<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

std::vector<std::string> FaultsOf(const std::string& page) {
  std::vector<std::string> lines;
  for (const ttr::CSchemaFault& fault : ttr::schemaFaults(Parse(page))) {
    lines.push_back(fault.pointer.Text() + ": " + fault.message);
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

std::vector<fs::path> FilesWith(const std::string& extension, const fs::path& directory) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  return files;
}

void AddMessages(const Json::Value& schema, std::set<std::string>& messages) {
  if (!schema.isObject() && !schema.isArray()) return;
  if (schema.isObject() && schema["errorMessage"].isString()) {
    messages.insert(schema["errorMessage"].asString());
  }
  for (const Json::Value& part : schema) AddMessages(part, messages);
}

using Lines = std::vector<std::string>;

TEST(SchemaCheck, FindsWhatIsWrongInTheWrongPages) {
  const std::vector<fs::path> pages = FilesWith(".json", source / "tests/schema/wrong");
  EXPECT_GE(pages.size(), 25U);
  for (const fs::path& page : pages) {
    SCOPED_TRACE(page.filename());
    const Lines expected = LinesOf(fs::path(page).replace_extension(".faults"));
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(FaultsOf(TextOf(page)), expected);
  }
}

TEST(SchemaCheck, WrongPagesShowEveryMessageOfTheSchema) {
  std::set<std::string> shown;
  for (const fs::path& faults : FilesWith(".faults", source / "tests/schema/wrong")) {
    for (const std::string& line : LinesOf(faults)) shown.insert(line.substr(line.find(": ") + 2));
  }
  std::set<std::string> messages;
  AddMessages(Parse(ttr::templateSchema), messages);
  EXPECT_EQ(shown, messages);
}

using LegalPages = ResolverTest;

TEST_F(LegalPages, NeitherTheSchemaNorTheLibraryFindsFault) {
  const std::vector<fs::path> pages = FilesWith(".json", source / "tests/schema/legal");
  EXPECT_GE(pages.size(), 5U);
  for (const fs::path& page : pages) {
    SCOPED_TRACE(page.filename());
    EXPECT_EQ(FaultsOf(TextOf(page)), Lines());
    Resolve(TextOf(page));
    EXPECT_EQ(Errors(), "");
  }
}

/// What is wrong on purpose in the page of the case folder `name`; nothing in most of them.
Lines OnPurpose(const fs::path& name) {
  return LinesOf(fs::path(source / "tests/schema/on_purpose" / name).concat(".faults"));
}

TEST(SchemaCheck, FindsInTheExamplesOnlyWhatIsWrongOnPurpose) {
  int pages = 0;
  for (const fs::directory_entry& folder : fs::directory_iterator(source / "examples")) {
    if (!folder.is_directory()) continue;
    for (const fs::path& page : FilesWith(".json", folder)) {
      if (TextOf(page).find("\"Contents\"") == std::string::npos) continue;  // values
      SCOPED_TRACE(page);
      const bool isTemplate = page.filename() == "template.json";
      EXPECT_EQ(FaultsOf(TextOf(page)), isTemplate ? OnPurpose(folder.path().filename()) : Lines());
      ++pages;
    }
  }
  EXPECT_GE(pages, 9);
}

TEST(SchemaCheck, FindsInTheGoldenPagesOnlyWhatIsWrongOnPurpose) {
  int pages = 0;
  for (const fs::directory_entry& folder : fs::directory_iterator(source / "tests/golden")) {
    SCOPED_TRACE(folder.path().filename());
    EXPECT_EQ(FaultsOf(TextOf(folder.path() / "template.json")),
              OnPurpose(folder.path().filename()));
    ++pages;
  }
  EXPECT_GE(pages, 8);
}

/// The block of `kind` that starts at `at` or after blank lines, and `at` moved behind it; empty
/// when something else follows.
std::string TakeBlock(const std::string& text, const std::string& kind, std::size_t& at) {
  const std::string fence = "\n```";
  while (text.compare(at, 2, "\n\n") == 0) ++at;
  if (text.compare(at, fence.size() + kind.size(), fence + kind) != 0) return "";
  const std::size_t begin = text.find('\n', at + 1) + 1;
  const std::size_t end = text.find(fence, begin - 1);
  at = end + fence.size();
  return text.substr(begin, end - begin);
}

/// The pages of a document that write no diagnostics, and so are meant to be right.
std::vector<std::string> CleanTemplates(const fs::path& document) {
  std::vector<std::string> templates;
  const std::string text = TextOf(document);
  for (std::size_t at = 0; (at = text.find("\n```json template", at)) != std::string::npos;) {
    const std::string page = TakeBlock(text, "json template", at);
    TakeBlock(text, "json result", at);
    if (TakeBlock(text, "text diagnostics", at).empty()) templates.push_back(page);
  }
  return templates;
}

TEST(SchemaCheck, FindsNothingInTheDocumentsWhereTheLibraryFindsNothing) {
  std::vector<fs::path> documents = FilesWith(".md", source / "docs");
  documents.push_back(source / "README.md");
  int pages = 0;
  for (const fs::path& document : documents) {
    for (const std::string& page : CleanTemplates(document)) {
      SCOPED_TRACE(document.filename().string() + ": " + page);
      EXPECT_EQ(FaultsOf(page), Lines());
      ++pages;
    }
  }
  EXPECT_GE(pages, 9);
}

TEST(SchemaCheck, UnknownMembersAndEntriesAreLegal) {
  EXPECT_EQ(FaultsOf(R"({"$schema": "s.json", "Author": 5, "Contents": [
      {"Bouds": "x", "Contents": [5, null, true, ["A"], "text"]},
      {"If": {"Condition": null, "Equals": {}, "else": [], "Contents": []}},
      {"Loop": {"List": [], "Layout": [[[0, 0]]], "Rows": "many", "Contents": []}}]})"),
            Lines());
}

TEST(SchemaCheck, OfAReplacedElementOnlyWhatCountsIsLookedAt) {
  EXPECT_EQ(FaultsOf(R"({"Contents": [
      {"Include": {"Filename": "a.json"}, "Display": "red", "Play": 3, "Frame": 5}]})"),
            Lines());
}

TEST(SchemaCheck, LongTextsDoNotEndIt) {
  const std::string length(300000, '1');
  for (const std::string& text : {length, std::string(300000, ' '), '#' + length, length + "%"}) {
    EXPECT_EQ(FaultsOf("{\"Contents\": [{\"Bounds\": [\"" + text + "\"]}]}").size(), 1U);
  }
}

TEST(SchemaCheck, DeepPagesDoNotEndIt) {
  constexpr int depth = 490;  // of two levels each, of the 1000 that the reader allows
  std::string page = "{\"Contents\": [";
  for (int level = 0; level < depth; ++level) page += "{\"Contents\": [";
  page += "{\"Play\": 5}";
  for (int level = 0; level < depth; ++level) page += "]}";
  page += "]}";
  EXPECT_EQ(FaultsOf(page).size(), 1U);
}

}  // namespace
