#include "page/page_run.h"

#include <json/writer.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <set>
#include <utility>

#include "TokenTemplateResolver/json_text.h"
#include "page/included_files.h"
#include "page/message_recorder.h"
#include "page/page_variables.h"
#include "tool_error.h"

namespace ttr {
namespace {

/// `text` as JSON; null when it is none, or nested deeper than JsonCpp reads.
Json::Value parsed(const std::string& text) {
  std::string errors;
  try {
    return jsoncpp_string::toJsonObject(text, &errors);
  } catch (const Json::RuntimeError&) {
    return Json::Value();
  }
}

/// The JSON text of `document`, with the bytes of its strings as they are in the file: the library
/// must come upon the same ones, whether they are UTF-8 or not.
std::string textOf(const Json::Value& document) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["emitUTF8"] = true;
  return Json::writeString(writer, document);
}

bool hasRotatingLoop(const Json::Value& value) {
  if (value.isObject()) {
    const Json::Value& loop = value["Loop"];
    if (loop.isObject() && loop.isMember("Bounds")) return true;
  } else if (!value.isArray()) {
    return false;
  }
  return std::any_of(value.begin(), value.end(), hasRotatingLoop);
}

/// The smallest distance at which `texts` repeat themselves throughout; their number without one.
unsigned period(const std::vector<std::string>& texts) {
  const std::size_t count = texts.size();
  for (std::size_t distance = 1; distance <= count / 2; ++distance) {
    const auto shifted = texts.begin() + static_cast<std::ptrdiff_t>(distance);
    if (std::equal(shifted, texts.end(), texts.begin())) return static_cast<unsigned>(distance);
  }
  return static_cast<unsigned>(count);
}

void removeFileNames(Json::Value& value) {
  if (value.isObject()) value.removeMember(includedFileMember);
  if (!value.isObject() && !value.isArray()) return;
  for (Json::Value& entry : value) removeFileNames(entry);
}

/// The path of the included file `name`, as the user of the tool, not the page, would name it.
std::string userPath(const CPageOptions& options, const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(options.directory) / name;
  return path.empty() ? name : path.lexically_normal().string();
}

}  // namespace

Json::Value withoutFileNames(Json::Value value) {
  removeFileNames(value);
  return value;
}

/// An included file, read once.
struct CPageRunner::CFile {
  CSourceFile source;
  std::string reason;  ///< why it could not be read
};

CPageRunner::CPageRunner(const CPageOptions& options)
    : m_options(options),
      m_page(options.page, readPage(options)),
      m_values(readValues(valuesFile(options))),
      m_size(parseScreenSize(options.size)) {
  if (options.root) confineIncludes(*options.root);
  m_directory = std::make_unique<CWorkingDirectory>(options.directory);
  const CIncludeReader reader([this](const std::string& name) { return Serve(name, {}); });
  const CMessageRecorder silence;  // each run says what is wrong with the names of files
  m_variables = pageVariables(m_page.document(), CPageHost(m_values, m_size).tokens());
}

CPageRunner::~CPageRunner() = default;

CPageRunner::CFile& CPageRunner::file(const std::string& name) {
  const auto found = m_files.find(name);
  if (found != m_files.end()) return *found->second;
  std::string text;
  std::string reason;
  try {
    text = readRegularFile(name);
  } catch (const CToolError& error) {
    reason = error.reason();
  }
  CSourceFile source(userPath(m_options, name), std::move(text));
  auto file = std::make_unique<CFile>(CFile{std::move(source), reason});
  return *m_files.emplace(name, std::move(file)).first->second;
}

const CSourceFile* CPageRunner::IncludedFile(const std::string& name) {
  const CFile& included = file(name);
  return included.reason.empty() ? &included.source : nullptr;
}

const CSourceFile* CPageRunner::File(const std::string& name) {
  return name == m_page.name() ? &m_page : IncludedFile(name);
}

std::string CPageRunner::ReasonNotIncluded(const std::string& name) { return file(name).reason; }

std::vector<std::string> CPageRunner::includedFiles() const {
  std::vector<std::string> names;
  for (const auto& [name, file] : m_files) names.push_back(name);
  return names;
}

std::vector<std::string> CPageRunner::TokenNames() const {
  const std::unique_ptr<CPageHost> host = NewHost();
  std::vector<std::string> names;
  for (const auto& [name, handler] : host->tokens().handlers()) names.push_back(name);
  return names;
}

std::string CPageRunner::Serve(const std::string& name, const CChanges& changes) {
  const CFile& included = file(name);
  const auto change = changes.find(name);
  Json::Value document = change == changes.end() ? included.source.document() : change->second;
  if (!included.source.errors().empty() || !document.isObject()) return included.source.text();
  document[includedFileMember] = name;
  return textOf(document);
}

std::unique_ptr<CPageHost> CPageRunner::NewHost() const {
  auto host = std::make_unique<CPageHost>(m_values, m_size);
  host->ServeVariables(m_variables);
  return host;
}

void CPageRunner::SetSize(CScreenSize size) {
  m_size = size;
  m_host.reset();
}

/// The host that comes to `pass` next. Only the number of passes so far is left of those before.
CPageHost& CPageRunner::HostBefore(unsigned pass) {
  if (m_host == nullptr || pass <= m_passes) {
    m_host = NewHost();
    m_passes = 0;
  }
  m_host->SkipPasses(pass - 1 - m_passes);
  m_passes = pass;
  return *m_host;
}

CPageRun CPageRunner::Run(const CChanges& changes, unsigned pass) {
  const CIncludeReader reader([&](const std::string& name) { return Serve(name, changes); });
  const auto change = changes.find(m_page.name());
  const std::string text = change == changes.end() ? PageText() : textOf(change->second);
  CPageHost& host = HostBefore(pass);
  CPageRun run;
  CMessageRecorder recorder;
  try {
    run.result = parsed(host.Pass(text));
  } catch (const std::exception& error) {
    run.exception = error.what();
  }
  run.messages = recorder.Take();
  return run;
}

std::string CPageRunner::PageText() const {
  return m_page.errors().empty() ? textOf(m_page.document()) : m_page.text();
}

unsigned CPageRunner::PassesUntilRepeat(unsigned limit) {
  bool rotates = hasRotatingLoop(m_page.document());
  for (const auto& [name, file] : m_files) {
    rotates = rotates || hasRotatingLoop(file->source.document());
  }
  if (!rotates) return 1;
  std::vector<std::string> texts;
  for (unsigned count = std::min(limit, 60U);; count = std::min(limit, 2 * count)) {
    while (texts.size() < count) {
      const auto pass = static_cast<unsigned>(texts.size() + 1);
      texts.push_back(jsoncpp_string::toString(Run({}, pass).result));
    }
    if (period(texts) < count || count == limit) return period(texts);
  }
}

}  // namespace ttr
