// Runs the examples in the documents, so that they cannot go stale.
//
// Fenced blocks, told by the words after the fence:
//   json values             the values for the templates that follow
//   json file NAME          a file that the templates that follow can include
//   json template [OPTIONS] a page; OPTIONS such as size=800x480 pass=2
//   json result             what the page before must give
//   text diagnostics        what it must write to standard error; nothing when there is no block
//
// Rows of a table headed "| Token | Result |": each `$(token)` must give the `JSON` beside it, and
// write what stands in a third column headed "Diagnostics", if there is one.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/json.h"
#include "support/page_case.h"

namespace {

bool StartsWith(const std::string& text, const std::string& head) {
  return text.compare(0, head.size(), head) == 0;
}

/// The texts between pairs of backticks in one table row, one for each column; a column without is
/// empty. "\|" stands for a bar.
std::vector<std::string> CodeCells(const std::string& row) {
  std::vector<std::string> cells;
  std::string cell;
  bool code = false;
  for (std::size_t i = 1; i < row.size(); ++i) {
    const bool escapedBar = StartsWith(row.substr(i), "\\|");
    if (escapedBar) ++i;
    if (row[i] == '`') {
      code = !code;
    } else if (row[i] == '|' && !escapedBar) {
      cells.push_back(cell);
      cell.clear();
    } else if (code) {
      cell += row[i];
    }
  }
  return cells;
}

class CDocument {
 public:
  explicit CDocument(const std::filesystem::path& path) {
    std::string name = (std::filesystem::temp_directory_path() / "ttr-document-XXXXXX").string();
    m_page.directory = ::mkdtemp(name.data());
    std::istringstream lines(FileText(path));
    for (std::string line; std::getline(lines, line);) {
      ++m_line;
      if (StartsWith(line, "```") && line.size() > 3) {
        readBlock(line.substr(3), lines);
      } else {
        readLine(line);
      }
    }
    finishTemplate();
  }
  ~CDocument() { std::filesystem::remove_all(m_page.directory); }
  CDocument(const CDocument&) = delete;
  CDocument& operator=(const CDocument&) = delete;

  int examples() const { return m_examples; }

 private:
  void readBlock(const std::string& info, std::istringstream& lines) {
    std::string text;
    const int start = m_line;
    for (std::string line; std::getline(lines, line) && ++m_line && line != "```";) {
      text += line + '\n';
    }
    if (info == "json values") {
      finishTemplate();
      m_page.values = text;
    } else if (StartsWith(info, "json file ")) {
      finishTemplate();
      std::ofstream(m_page.directory / info.substr(10)) << text;
    } else if (StartsWith(info, "json template")) {
      finishTemplate();
      m_page.page = text;
      m_page.options = info.substr(13);
      m_templateLine = start;
    } else if (info == "json result") {
      m_result = text;
    } else if (info == "text diagnostics") {
      m_diagnostics = text;
    }
  }

  /// Resolves the template read last and compares with the blocks that followed it.
  void finishTemplate() {
    if (m_templateLine == 0) return;
    SCOPED_TRACE("template at line " + std::to_string(m_templateLine));
    const CPageResult result = ResolvePage(m_page);
    EXPECT_EQ(result.json.empty() ? "" : PrettyJson(result.json),
              m_result.empty() ? "" : PrettyJson(m_result));
    EXPECT_EQ(result.errors, m_diagnostics);
    ++m_examples;
    m_templateLine = 0;
    m_result.clear();
    m_diagnostics.clear();
  }

  void readLine(const std::string& line) {
    if (StartsWith(line, "| Token | Result |")) {
      finishTemplate();
      m_inTokenTable = true;
    } else if (!StartsWith(line, "|")) {
      m_inTokenTable = false;
    } else if (m_inTokenTable && !StartsWith(line, "|-")) {
      checkTokenRow(CodeCells(line));
    }
  }

  void checkTokenRow(const std::vector<std::string>& cells) {
    SCOPED_TRACE("table row at line " + std::to_string(m_line));
    ASSERT_GE(cells.size(), 2U);
    Json::Value page;
    page["Contents"].append(cells[0]);
    CPageCase row = m_page;
    row.page = page.toStyledString();
    const CPageResult result = ResolvePage(row);
    Json::Value expected;
    expected["Contents"].append(Parse("[" + cells[1] + "]")[0U]);
    EXPECT_EQ(PrettyJson(result.json), PrettyJson(expected.toStyledString()));
    const bool reported = cells.size() > 2 && !cells[2].empty();
    EXPECT_EQ(result.errors, reported ? cells[2] + "\n" : "");
    ++m_examples;
  }

  CPageCase m_page;
  std::string m_result;
  std::string m_diagnostics;
  int m_line = 0;
  int m_templateLine = 0;
  int m_examples = 0;
  bool m_inTokenTable = false;
};

class Documents : public ::testing::TestWithParam<const char*> {};

TEST_P(Documents, ExamplesGiveWhatTheySay) {
  const CDocument document(std::filesystem::path(TTR_SOURCE_DIR) / GetParam());
  EXPECT_GT(document.examples(), 0);
}

INSTANTIATE_TEST_SUITE_P(All, Documents,
                         ::testing::Values("README.md", "docs/template-format.md",
                                           "docs/token-syntax.md", "docs/diagnostics.md"));

}  // namespace
