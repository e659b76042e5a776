#include "support/page_case.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "page/page_host.h"
#include "support/cerr_capture.h"
#include "support/json.h"

namespace {

struct COptions {
  ttr::CScreenSize size;
  unsigned pass = 1;
};

COptions ReadOptions(const std::string& text) {
  COptions options;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const bool known =
        std::sscanf(word.c_str(), "size=%dx%d", &options.size.width, &options.size.height) == 2 ||
        std::sscanf(word.c_str(), "pass=%u", &options.pass) == 1;
    if (!known) throw std::invalid_argument("unknown option: " + word);
  }
  return options;
}

/// Changes the working directory while it lives.
class CDirectory {
 public:
  explicit CDirectory(const std::filesystem::path& directory)
      : m_previous(std::filesystem::current_path()) {
    std::filesystem::current_path(directory);
  }
  ~CDirectory() { std::filesystem::current_path(m_previous); }
  CDirectory(const CDirectory&) = delete;
  CDirectory& operator=(const CDirectory&) = delete;

 private:
  std::filesystem::path m_previous;
};

}  // namespace

CPageResult ResolvePage(const CPageCase& page) {
  const COptions options = ReadOptions(page.options);
  const CDirectory directory(page.directory);
  CCerrCapture errors;
  CPageResult result;
  try {
    ttr::CPageHost host(Parse(page.values), options.size);
    host.ServeVariablesOf(page.page);
    for (unsigned pass = 0; pass < options.pass; ++pass) {
      errors.Take();
      result.json = host.Pass(page.page);
    }
    result.errors = errors.Take();
  } catch (const std::exception& error) {
    result.errors = errors.Take() + "exception: " + error.what() + "\n";
  }
  return result;
}

std::string FileText(const std::filesystem::path& path) {
  const std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string PrettyJson(const std::string& json) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "  ";
  writer["enableYAMLCompatibility"] = true;
  return Json::writeString(writer, Parse(json)) + "\n";
}
