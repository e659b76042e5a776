#ifndef TOOL_CHECK_REDUCED_PAGE_H
#define TOOL_CHECK_REDUCED_PAGE_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/run_messages.h"
#include "page/json_pointer.h"
#include "page/page_run.h"

namespace ttr {

/// A value in one of the files of a page.
struct CTemplatePlace {
  std::string file;
  CJsonPointer pointer;
};

/// What the library does with a value: a document has a page or contents, an element is one of the
/// entries.
enum eTemplatePart { partDocument, partElement };

/// The way from `value` to what it shows: "/Page/Contents", "/Loop/Contents"... Nothing for an
/// Include, which has none of its own. The value there can be missing or no array.
std::optional<CJsonPointer> wayToContents(const Json::Value& value, eTemplatePart part);

/// `value` with null in place of each of the entries that it shows. Their number stays, so that the
/// value behaves as before in all else.
Json::Value withoutEntries(Json::Value value, eTemplatePart part);

/// Takes the value at `pointer` out: a member goes, an entry of an array becomes null.
void takeOut(Json::Value& document, const CJsonPointer& pointer);

/// Copies of a page and of its included files that hold only what a search wants to see at work.
class CReducedPage {
 public:
  CReducedPage(CPageRunner& page, unsigned pass) : m_page(page), m_pass(pass) {}

  /// From now on `document` stands in for the file.
  void SetDocument(const std::string& file, Json::Value document);
  /// The document that was set for the file.
  Json::Value& Document(const std::string& file) { return m_changes.at(file); }
  /// The file is itself again.
  void Restore(const std::string& file) { m_changes.erase(file); }
  /// The value at a place in a document that was set; it must be there.
  Json::Value& At(const CTemplatePlace& place);

  CPageRun Run();
  /// The number of runs so far.
  std::size_t runs() const { return m_runs; }

 private:
  CPageRunner& m_page;
  unsigned m_pass;
  CPageRunner::CChanges m_changes;
  std::size_t m_runs = 0;
};

}  // namespace ttr

#endif  // TOOL_CHECK_REDUCED_PAGE_H
