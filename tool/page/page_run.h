#ifndef TOOL_PAGE_PAGE_RUN_H
#define TOOL_PAGE_PAGE_RUN_H

#include <json/value.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "page/page_host.h"
#include "page/page_options.h"
#include "page/source_file.h"

namespace ttr {

/// What one pass of a page, or of a reduced copy of it, came to.
struct CPageRun {
  /// The resolved page; null when the pass ended in an exception. Each included document in it
  /// carries the name of its file as the member `includedFileMember`.
  Json::Value result;
  /// What the library wrote to standard error, a text for each message, without the line end; a
  /// message of the JSON reader has several lines.
  std::vector<std::string> messages;
  /// What ended the pass early.
  std::optional<std::string> exception;
};

/// The member of an included document, at its top, that tells its file name in a `CPageRun`.
constexpr char includedFileMember[] = "ttr:file";

/// `value` without the names of included files: what the library alone would give.
Json::Value withoutFileNames(Json::Value value);

/// The page of a command with its values and its included files: resolves it, and copies of it that
/// were changed, any number of times through the shipped library.
///
///     CPageRunner page(options);
///     CPageRun run = page.Run({}, options.pass);
class CPageRunner {
 public:
  /// Documents that stand in for those in the files, by file name; the page's own name is
  /// `pageFile().name()`.
  using CChanges = std::map<std::string, Json::Value>;

  /// Reads the page and its values. While the runner lives the working directory is the one that
  /// the options name; included files are confined to their root from now on.
  /// \throws CToolError when a file cannot be read, or the values are no JSON object
  explicit CPageRunner(const CPageOptions& options);
  ~CPageRunner();
  CPageRunner(const CPageRunner&) = delete;
  CPageRunner& operator=(const CPageRunner&) = delete;

  const CSourceFile& pageFile() const { return m_page; }
  /// The included file `name`, as pages name it; nothing when it cannot be read.
  const CSourceFile* IncludedFile(const std::string& name);
  /// `name`'s source: the page or an included file.
  const CSourceFile* File(const std::string& name);
  /// Why an included file could not be read; empty when it could.
  std::string ReasonNotIncluded(const std::string& name);
  /// The files that were included by some run so far, by name, whether they could be read or not.
  std::vector<std::string> includedFiles() const;
  const Json::Value& values() const { return m_values; }
  CScreenSize size() const { return m_size; }
  void SetSize(CScreenSize size);
  /// Names that tokens can begin with: the handlers' and the variables that the page binds.
  std::vector<std::string> TokenNames() const;

  /// Pass number `pass` (from 1) of the page, as it is in its files except for `changes`.
  CPageRun Run(const CChanges& changes, unsigned pass);

  /// The passes until the page repeats itself, 1 for a page without rotating loops; `limit` when it
  /// does not do so within half as many.
  unsigned PassesUntilRepeat(unsigned limit = defaultPasses);
  static constexpr unsigned defaultPasses = 60;

 private:
  struct CFile;
  CFile& file(const std::string& name);
  std::string Serve(const std::string& name, const CChanges& changes);

  std::string PageText() const;
  std::unique_ptr<CPageHost> NewHost() const;
  CPageHost& HostBefore(unsigned pass);

  CPageOptions m_options;
  CSourceFile m_page;
  Json::Value m_values;
  CScreenSize m_size;
  std::unique_ptr<CWorkingDirectory> m_directory;  ///< once page and values have been read
  std::set<std::string> m_variables;  ///< that the page binds; a reduced copy may bind fewer
  std::map<std::string, std::unique_ptr<CFile>> m_files;
  std::unique_ptr<CPageHost> m_host;  ///< kept, as passes are mostly asked for one after the other
  unsigned m_passes = 0;              ///< that the host has behind it
};

}  // namespace ttr

#endif  // TOOL_PAGE_PAGE_RUN_H
