#include "page/page_options.h"

#include <charconv>
#include <limits>
#include <system_error>

#include "TokenTemplateResolver/json_text.h"
#include "files.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

/// The JSON value in `text`, the text of the file `path`.
Json::Value parseJson(const std::string& text, const std::string& path) {
  std::string errors;
  Json::Value value;
  try {
    value = jsoncpp_string::toJsonObject(text, &errors);
  } catch (const Json::RuntimeError& error) {  // nested too deep
    throw CToolError(path, error.what());
  }
  if (!errors.empty()) throw CToolError(path, oneLine(errors));
  return value;
}

/// Reads a number of at least 1; true when it ends at `end`.
bool readDimension(const char* begin, const char* end, int& dimension) {
  const auto [stop, error] = std::from_chars(begin, end, dimension);
  return error == std::errc() && stop == end && dimension >= 1;
}

}  // namespace

std::vector<COption> pageOptions(CPageOptions& options) {
  std::vector<COption> all = sharedPageOptions(options);
  all.insert(all.begin() + 2,
             {"--pass", &options.pass, "Show the Nth pass, as rotating loops advance", "N",
              CRange<unsigned>{1, std::numeric_limits<unsigned>::max()}});
  all.insert(all.begin(), {"PAGE", &options.page, "The page template, - for standard input"});
  return all;
}

std::vector<COption> sharedPageOptions(CPageOptions& options) {
  return {
      {"--values", &options.values,
       "JSON object with the values of the tokens, by default\n"
       "PAGE's neighbour NAME.values.json or values.json",
       "VALUES"},
      {"--size", &options.size, "Screen size, by default 1280x720", "WIDTHxHEIGHT"},
      {"--chdir", &options.directory, "Directory that relative includes start from", "DIR"},
      {"--root", &options.root, "Refuse to include files outside of this directory", "DIR"},
  };
}

std::string readPage(const CPageOptions& options) {
  if (options.page == "-" && options.values == "-") {
    throw CToolError("standard input", "cannot be both the page and the values");
  }
  return readText(options.page);
}

std::string valuesFile(const CPageOptions& options) {
  if (!options.values.empty() || options.page == "-") return options.values;
  const std::filesystem::path page = options.page;
  const auto beside = [&](const std::string& name) { return (page.parent_path() / name).string(); };
  for (const std::string& path :
       {beside(page.stem().string() + ".values.json"), beside("values.json")}) {
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored)) return path;
  }
  return "";
}

Json::Value readValues(const std::string& path) {
  if (path.empty()) return Json::Value(Json::objectValue);
  Json::Value values = parseJson(readText(path), path);
  if (!values.isObject()) throw CToolError(path, "the values must be a JSON object");
  return values;
}

CScreenSize parseScreenSize(const std::string& text) {
  const std::size_t cross = text.find('x');
  CScreenSize size;
  const char* begin = text.data();
  const char* end = begin + text.size();
  if (cross == std::string::npos || !readDimension(begin, begin + cross, size.width) ||
      !readDimension(begin + cross + 1, end, size.height)) {
    throw CToolError("--size", "'" + text + "' is not WIDTHxHEIGHT, such as 1280x720");
  }
  return size;
}

CWorkingDirectory::CWorkingDirectory(const std::string& directory) {
  if (directory.empty()) return;
  std::error_code error;
  m_previous = std::filesystem::current_path(error);
  if (!error) std::filesystem::current_path(directory, error);
  if (error) throw CToolError(directory, error.message());
}

CWorkingDirectory::~CWorkingDirectory() {
  if (m_previous.empty()) return;
  std::error_code ignored;
  std::filesystem::current_path(m_previous, ignored);
}

}  // namespace ttr
