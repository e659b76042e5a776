#include "tool/support/page_folder.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace ttr {

CPageFolder::CPageFolder(std::initializer_list<std::pair<std::string, std::string>> files)
    : m_path((std::filesystem::temp_directory_path() / "ttr-test-XXXXXX").string()) {
  if (::mkdtemp(m_path.data()) == nullptr) throw std::runtime_error("no folder for the test");
  for (const auto& [name, text] : files) Write(name, text);
}

CPageFolder::~CPageFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

void CPageFolder::Write(const std::string& name, const std::string& text) const {
  const std::filesystem::path path = std::filesystem::path(m_path) / name;
  std::filesystem::create_directories(path.parent_path());
  if (!(std::ofstream(path, std::ios::binary) << text)) throw std::runtime_error("cannot write");
}

CPageOptions CPageFolder::Options(const std::string& name) const {
  CPageOptions options;
  options.page = m_path + '/' + name;
  options.directory = m_path;
  return options;
}

}  // namespace ttr
