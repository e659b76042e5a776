// `ttr preview --watch` and `--serve`: builds follow one another in this thread, as the library
// wants it; the threads of the server only hand out what was built last.
#include "preview/watch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <utility>

#include "files.h"
#include "page/page_run.h"
#include "preview/fault_output.h"
#include "preview/file_watch.h"
#include "preview/server.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

/// Where the signal handler writes to.
int stopDescriptor = -1;

extern "C" void askToStop(int) {
  const int error = errno;
  const std::uint64_t one = 1;
  const ssize_t ignored = ::write(stopDescriptor, &one, sizeof one);
  static_cast<void>(ignored);
  errno = error;
}

/// Makes SIGINT and SIGTERM wishes to stop: the first one, so that the second ends a build that
/// takes too long.
class CStopSignals {
 public:
  CStopSignals() {
    stopDescriptor = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (stopDescriptor < 0) throw CToolError("watch", std::strerror(errno));
    struct sigaction action {};
    action.sa_handler = askToStop;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    ::sigaction(SIGINT, &action, &m_interrupt);
    ::sigaction(SIGTERM, &action, &m_terminate);
  }
  ~CStopSignals() {
    ::sigaction(SIGINT, &m_interrupt, nullptr);
    ::sigaction(SIGTERM, &m_terminate, nullptr);
    ::close(stopDescriptor);
  }
  CStopSignals(const CStopSignals&) = delete;
  CStopSignals& operator=(const CStopSignals&) = delete;

  /// Readable once the program is to stop.
  int descriptor() const { return stopDescriptor; }
  bool IsAsked() const {
    pollfd stop{stopDescriptor, POLLIN, 0};
    return ::poll(&stop, 1, 0) > 0;
  }

 private:
  struct sigaction m_interrupt {};
  struct sigaction m_terminate {};
};

/// What is missing at the start is a mistake in the command line, not in the page.
void checkInputs(const CPreviewOptions& options) {
  const CPageOptions& page = options.page;
  if (page.page == "-" || page.values == "-") {
    throw CToolError("standard input", "cannot be watched");
  }
  for (const std::string& output : options.outputs) {
    if (output == "-") throw CToolError("standard output", "cannot be written anew");
  }
  readText(page.page);
  if (!page.values.empty()) readText(page.values);
  for (const std::string& size : options.sizes) parseScreenSize(size);
  if (page.root) const CWorkingDirectory root(*page.root);
  if (!options.assets.empty()) const CWorkingDirectory assets(options.assets);
  const CWorkingDirectory directory(page.directory);
}

std::string absolutePath(const std::string& path) {
  return (std::filesystem::current_path() / path).string();
}

/// The same for all names of a file.
std::string realPath(const std::string& path) {
  std::error_code error;
  return std::filesystem::weakly_canonical(absolutePath(path), error).string();
}

/// The page and where its values are or may appear.
std::vector<std::string> givenFiles(const CPageOptions& options) {
  const std::filesystem::path page(absolutePath(options.page));
  if (!options.values.empty()) return {page.string(), absolutePath(options.values)};
  const std::filesystem::path folder = page.parent_path();
  return {page.string(), (folder / (page.stem().string() + ".values.json")).string(),
          (folder / "values.json").string()};
}

/// The files that the page includes as far as it can be resolved: the fault may be in one of them.
std::vector<std::string> includedFiles(const CPageOptions& options) {
  const std::filesystem::path folder(absolutePath(options.directory));
  std::vector<std::string> files;
  try {
    CPageRunner page(options);
    page.Record(options.pass);
    for (const std::string& name : page.includedFiles()) files.push_back((folder / name).string());
  } catch (const std::exception&) {
    // The page itself or its values cannot be read.
  }
  return files;
}

/// Why a page is not whole: a file that it includes is missing, as one that an author is about to
/// save can be. Empty for a whole page.
std::string missingPart(const std::vector<CFault>& faults) {
  for (const CFault& fault : faults) {
    if (fault.code == "json-syntax" || fault.code == "not-included") {
      return fault.place.Text() + ": " + fault.message;
    }
  }
  return "";
}

/// The preview as it was built last, in its files and on the server.
class CWatchedPreview {
 public:
  CWatchedPreview(const CPreviewOptions& options, const CWatchOptions& watch)
      : m_options(options), m_served(options), m_watch(watch), m_files(givenFiles(options.page)) {
    m_served.outputs = {"index.html"};
    m_model.page = options.page.page;
  }

  /// \throws CToolError when an output cannot be made; a faulty page is shown as such
  void Build();

  /// What the preview is made from, without what it is written to: else it would never end.
  std::vector<std::string> Files() const;

 private:
  void resolve();
  void writeOutputs();
  void serve();
  void report();

  CPreviewOptions m_options;
  CPreviewOptions m_served;  ///< the same for the server's page
  CWatchOptions m_watch;
  CPreviewModel m_model;  ///< the last good one; until there is one, the last that is not whole
  bool m_isGood = false;
  std::vector<CFault> m_faults;
  std::string m_outdated;  ///< why it is not today's
  std::vector<std::string> m_files;
  std::set<std::string> m_written;
  std::optional<CPreviewServer> m_server;
  bool m_built = false;
};

void CWatchedPreview::Build() {
  resolve();
  writeOutputs();
  if (m_watch.serve) serve();
  report();
}

std::vector<std::string> CWatchedPreview::Files() const {
  std::vector<std::string> files;
  for (const std::string& file : m_files) {
    if (m_written.count(realPath(file)) == 0) files.push_back(file);
  }
  return files;
}

void CWatchedPreview::resolve() {
  m_files = givenFiles(m_options.page);
  m_faults.clear();
  std::vector<std::string> tried;
  try {
    // The server's page shows all that the other outputs do.
    CPreviewModel model = makePreview(m_watch.serve ? m_served : m_options);
    tried = model.files;
    m_faults = model.faults.Sorted();
    m_outdated = missingPart(m_faults);
    if (m_outdated.empty() || !m_isGood) m_model = std::move(model);
    m_isGood = m_isGood || m_outdated.empty();
  } catch (const std::exception& error) {
    m_outdated = error.what();
    const auto* page = dynamic_cast<const CFaultyPage*>(&error);
    if (page != nullptr) m_faults = page->faults();
    tried = includedFiles(m_options.page);
  }
  m_files.insert(m_files.end(), tried.begin(), tried.end());
  m_files.insert(m_files.end(), m_model.files.begin(), m_model.files.end());
}

void CWatchedPreview::writeOutputs() {
  if (m_options.outputs.empty()) return;
  for (const CPreviewFile& file : renderPreview(m_model, m_options, m_outdated, false)) {
    m_written.insert(realPath(file.name));
    writeFile(file.name, file.content);
  }
}

void CWatchedPreview::serve() {
  std::string html = renderPreview(m_model, m_served, m_outdated, true).at(0).content;
  if (m_server) {
    m_server->Publish(std::move(html));
  } else {
    m_server.emplace(m_watch.port, std::move(html));
    writeStandardOutput(m_server->Url() + '\n');
  }
}

void CWatchedPreview::report() {
  const char* const done = m_built ? "rebuilt: " : "built: ";
  m_built = true;
  printFaults(m_faults, m_watch.output);
  if (!m_outdated.empty()) {
    if (m_faults.empty()) tell(m_outdated);
  } else if (!m_watch.output.quiet) {
    std::string names;
    for (const std::string& name : m_options.outputs) names += (names.empty() ? "" : ", ") + name;
    tell(done + (names.empty() ? m_options.page.page : names));
  }
}

/// Waits until a change is due to be shown; false when the program is to stop instead.
bool waitForChange(const CStopSignals& stop, CFileWatch& files, CDebounce& changes) {
  while (!changes.IsDue(CDebounce::Clock::now())) {
    pollfd sources[] = {{stop.descriptor(), POLLIN, 0}, {files.descriptor(), POLLIN, 0}};
    const int timeout = changes.MillisecondsLeft(CDebounce::Clock::now());
    if (::poll(sources, 2, timeout) < 0 && errno != EINTR) {
      throw CToolError("watch", std::strerror(errno));
    }
    if (stop.IsAsked()) return false;
    if (files.ReadEvents()) changes.Note(CDebounce::Clock::now());
  }
  changes.Clear();
  return true;
}

/// One build. Only the first one must be successful; one that is disturbed by the wish to stop, as
/// it reaches the programs that draw, too, is not reported.
void build(CWatchedPreview& preview, const CStopSignals& stop, bool first) {
  try {
    preview.Build();
  } catch (const std::exception& error) {
    if (stop.IsAsked()) return;
    if (first) throw;
    tell(error.what());
  }
}

}  // namespace

void watchPreview(const CPreviewOptions& options, const CWatchOptions& watch) {
  checkInputs(options);
  const CStopSignals stop;
  CWatchedPreview preview(options, watch);
  CFileWatch files;
  CDebounce changes;
  files.Watch(preview.Files(), fileTime());
  bool first = true;
  do {
    const timespec begin = fileTime();
    build(preview, stop, first);
    first = false;
    if (files.Watch(preview.Files(), begin)) changes.Note(CDebounce::Clock::now());
  } while (waitForChange(stop, files, changes));
}

}  // namespace ttr
