// A case is a folder: template.json, resolved with values.json and options, must give expected.json
// and write expected.err. The pages are resolved in the folder, so that their includes start there.
#include "test/case_folder.h"

#include <json/reader.h>
#include <json/writer.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>
#include <system_error>

#include "files.h"
#include "page/page_run.h"
#include "test/unified_diff.h"
#include "tool_error.h"

namespace ttr {
namespace {

struct CCaseOptions {
  CScreenSize size;
  unsigned pass = 1;
};

template <typename T>
bool readNumber(const std::string& text, T lowest, T* number) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, *number);
  return error == std::errc() && stop == end && *number >= lowest;
}

/// A size of 0x0 is that of a host without a screen.
bool readSize(const std::string& text, CScreenSize* size) {
  const std::size_t cross = text.find('x');
  return cross != std::string::npos && readNumber(text.substr(0, cross), 0, &size->width) &&
         readNumber(text.substr(cross + 1), 0, &size->height);
}

CCaseOptions readOptions(const std::string& file) {
  CCaseOptions options;
  std::istringstream words(readText(file));
  for (std::string word; words >> word;) {
    const bool known =
        (word.rfind("size=", 0) == 0 && readSize(word.substr(5), &options.size)) ||
        (word.rfind("pass=", 0) == 0 && readNumber(word.substr(5), 1U, &options.pass));
    if (!known) throw CToolError(file, "'" + word + "' is neither size=WIDTHxHEIGHT nor pass=N");
  }
  return options;
}

std::string inFolder(const std::string& folder, const char* name) {
  return (std::filesystem::path(folder) / name).string();
}

bool exists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

/// `text` as JSON with one entry a line; as it is when it is no JSON.
std::string prettyJson(const std::string& text) {
  Json::CharReaderBuilder builder;
  builder["failIfExtra"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  try {
    if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) return text;
  } catch (const Json::RuntimeError&) {  // nested too deep
    return text;
  }
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "  ";
  writer["enableYAMLCompatibility"] = true;
  return Json::writeString(writer, value) + '\n';
}

/// The library's messages as lines. The tool's own notes about files that are not included are left
/// out: they name reasons of this machine.
std::string linesOf(const std::vector<std::string>& messages) {
  std::string lines;
  for (const std::string& message : messages) {
    if (message.rfind("ttr: ", 0) != 0) lines += message + '\n';
  }
  return lines;
}

/// One of the files that hold what is expected.
struct CExpectation {
  const char* name;
  std::optional<std::string> expected;  ///< nothing without the file
  std::string actual;
  bool met = false;
};

CExpectation expectation(const std::string& folder, const char* name, const std::string& actual) {
  CExpectation expectation{name, std::nullopt, actual};
  const std::string file = inFolder(folder, name);
  if (exists(file)) expectation.expected = readText(file);
  expectation.met = expectation.expected == actual;
  return expectation;
}

/// What is expected of the case and not met, with the JSON indented for comparison.
std::vector<CExpectation> unmetExpectations(const std::string& folder) {
  const CCaseOutput output = caseOutput(folder);
  CExpectation json = expectation(folder, "expected.json", output.json);
  if (!json.met && json.expected) {
    json.expected = prettyJson(*json.expected);
    json.met = json.expected == json.actual;
  }
  CExpectation errors = expectation(folder, "expected.err", output.errors);
  if (!errors.expected) errors.met = errors.actual.empty();
  std::vector<CExpectation> unmet;
  for (const CExpectation& each : {json, errors}) {
    if (!each.met) unmet.push_back(each);
  }
  return unmet;
}

/// Only the result must be there: a case without messages has no expected.err.
void report(const CExpectation& unmet, CCaseResult& result) {
  const bool missing = !unmet.expected && std::string(unmet.name) == "expected.json";
  result.failure += (result.failure.empty() ? "" : ", ") + std::string(unmet.name) +
                    (missing ? " is missing" : " differs");
  const std::string file = inFolder(result.folder, unmet.name);
  result.diff += unifiedDiff({unmet.expected ? file : "/dev/null", unmet.expected.value_or("")},
                             {file + " as it is now", unmet.actual});
}

void update(const CExpectation& unmet, CCaseResult& result) {
  const std::string file = inFolder(result.folder, unmet.name);
  if (std::string(unmet.name) == "expected.err" && unmet.actual.empty()) {
    std::error_code error;
    std::filesystem::remove(file, error);
    if (error) throw CToolError(file, error.message());
  } else {
    writeFile(file, unmet.actual);
  }
  result.updated.push_back(file);
}

/// The result of the case, with `handle` called for each unmet expectation. A case that cannot be
/// run fails.
template <typename THandler>
CCaseResult runCase(const std::string& folder, const THandler& handle) {
  CCaseResult result;
  result.folder = folder;
  const auto start = std::chrono::steady_clock::now();
  std::vector<CExpectation> unmet;
  try {
    unmet = unmetExpectations(folder);
  } catch (const CToolError& error) {
    result.failure = error.what();
  }
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  for (const CExpectation& each : unmet) handle(each, result);
  return result;
}

}  // namespace

std::vector<std::string> findCases(const std::string& directory) {
  std::vector<std::string> folders;
  const auto add = [&](const std::filesystem::path& folder) {
    if (exists(inFolder(folder.string(), "template.json"))) folders.push_back(folder.string());
  };
  try {
    add(directory);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
      if (entry.is_directory()) add(entry.path());
    }
  } catch (const std::filesystem::filesystem_error& error) {
    throw CToolError(directory, error.code().message());
  }
  std::sort(folders.begin(), folders.end());
  return folders;
}

CCaseOutput caseOutput(const std::string& folder) {
  const std::string values = inFolder(folder, "values.json");
  const std::string optionsFile = inFolder(folder, "options");
  const CCaseOptions options = exists(optionsFile) ? readOptions(optionsFile) : CCaseOptions();
  CPageOptions page;
  page.page = inFolder(folder, "template.json");
  page.directory = folder;
  if (exists(values)) page.values = values;
  CPageRunner runner(page);
  runner.SetSize(options.size);
  const CPageRunner::COutput resolved = runner.Output(options.pass);
  CCaseOutput output;
  output.errors = linesOf(resolved.lines);
  if (resolved.exception) {
    output.errors += "exception: " + *resolved.exception + '\n';
  } else {
    output.json = prettyJson(resolved.text);
  }
  return output;
}

CCaseResult checkCase(const std::string& folder) { return runCase(folder, report); }

CCaseResult updateCase(const std::string& folder) { return runCase(folder, update); }

}  // namespace ttr
