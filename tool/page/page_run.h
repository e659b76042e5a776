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
#include "page/page_variables.h"
#include "page/pass_record.h"
#include "page/source_file.h"

namespace ttr {

/// The page of a command with its values and its included files: resolves it any number of times,
/// through the shipped library, and records what happens.
///
///     CPageRunner page(options);
///     CPassRecord record = page.Record(options.pass);
class CPageRunner {
 public:
  /// Reads the page and its values. While the runner lives the working directory is the one that
  /// the options name; included files are confined to their root from now on.
  /// \throws CToolError when a file cannot be read, or the values are no JSON object
  explicit CPageRunner(const CPageOptions& options);
  ~CPageRunner();
  CPageRunner(const CPageRunner&) = delete;
  CPageRunner& operator=(const CPageRunner&) = delete;

  /// What records call the page, whatever its file is called: an Include may name a file of the
  /// same name in another folder. No file has this name.
  static inline const std::string pageKey{"\0page", 5};

  const CSourceFile& pageFile() const { return m_page; }
  /// The included file `name`, as pages name it; nothing when it cannot be read.
  const CSourceFile* IncludedFile(const std::string& name);
  /// The file that a record calls `name`: the page or an included file.
  const CSourceFile* File(const std::string& name);
  /// Why an included file could not be read; empty when it could.
  std::string ReasonNotIncluded(const std::string& name);
  /// The files that were included by some pass so far, by name, whether they could be read or not.
  std::vector<std::string> includedFiles() const;
  /// The page, then the included files that can be read.
  std::vector<const CSourceFile*> sources();
  const Json::Value& values() const { return m_values; }
  CScreenSize size() const { return m_size; }
  void SetSize(CScreenSize size);
  /// Names that tokens can begin with: the handlers' and the variables that the page binds.
  const std::vector<std::string>& TokenNames() const { return m_tokenNames; }
  /// The first place that binds the variable `name`, in the page or in a file that was included by
  /// some pass so far.
  std::optional<CPlace> PlaceOfVariable(const std::string& name);

  /// Pass number `pass` (from 1). The record borrows from the runner.
  CPassRecord Record(unsigned pass);

  /// What the library makes of the page to the byte in pass number `pass`, and what it writes, with
  /// the lines of the tool about files that are not included.
  struct COutput {
    std::string text;
    std::vector<std::string> lines;
    std::optional<std::string> exception;
  };
  COutput Output(unsigned pass);

  /// The passes until the page repeats itself, 1 for a page without rotating loops; `limit` when it
  /// does not do so within half as many.
  unsigned PassesUntilRepeat(unsigned limit = defaultPasses);
  static constexpr unsigned defaultPasses = 60;

 private:
  struct CFile;
  /// Texts that stand in for those of the files, by file name.
  using CChanges = std::map<std::string, CSourceFile>;

  CFile& file(const std::string& name);
  const CSourceFile* served(const std::string& name, const CChanges& changes);
  CPassRecord record(unsigned pass, const CChanges& changes);
  bool takeOut(const CMessageFact& end, CChanges& changes);
  COutput run(unsigned pass, const std::function<void(CPageHost&)>& work);
  std::unique_ptr<CPageHost> newHost() const;
  CPageHost& hostBefore(unsigned pass);

  CPageOptions m_options;
  CSourceFile m_page;
  Json::Value m_values;
  CScreenSize m_size;
  std::unique_ptr<CWorkingDirectory> m_directory;  ///< once page and values have been read
  std::set<std::string> m_variables;               ///< that the page binds
  std::vector<std::string> m_tokenNames;
  std::map<const CSourceFile*, CBoundNames> m_boundNames;  ///< of files, once asked for
  std::map<std::string, std::unique_ptr<CFile>> m_files;
  std::unique_ptr<CPageHost> m_host;  ///< kept, as passes are mostly asked for one after the other
  unsigned m_passes = 0;              ///< that the host has behind it
};

}  // namespace ttr

#endif  // TOOL_PAGE_PAGE_RUN_H
