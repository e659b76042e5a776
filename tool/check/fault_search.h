#ifndef TOOL_CHECK_FAULT_SEARCH_H
#define TOOL_CHECK_FAULT_SEARCH_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/fault_list.h"
#include "check/member_blame.h"
#include "check/reduced_page.h"
#include "check/run_messages.h"
#include "page/page_run.h"

namespace ttr {

/// The JSON errors of `source` as faults.
std::vector<CFault> syntaxFaults(const CSourceFile& source);

/// Finds the places of what the library writes in one pass of a page.
///
/// The library names no places, so the search asks it again and again: it goes down the template
/// with copies in which only the way to one element is left, and what such a copy writes more than
/// the one before is the element's. What writes nothing is not looked into.
class CFaultSearch {
 public:
  CFaultSearch(CPageRunner& page, unsigned pass, CFaultList& faults)
      : m_page(page), m_reduced(page, pass), m_faults(faults) {}

  void Search();
  std::size_t runs() const { return m_reduced.runs(); }

 private:
  // Every step gets what the reduced page wrote `before` its part was put in.
  void searchDocument(const std::string& file, const CRunMessages& before);
  void searchElement(const CTemplatePlace& element, const CRunMessages& before);
  void searchObject(const CTemplatePlace& object, eTemplatePart part, const CRunMessages& before);
  void searchEntries(const CTemplatePlace& contents, Json::ArrayIndex first, Json::ArrayIndex last,
                     const CRunMessages& before);
  bool placeTokens(const CTemplatePlace& contents, Json::ArrayIndex first, Json::ArrayIndex last,
                   const CRunMessages& messages);
  bool blameObject(const CTemplatePlace& object, eTemplatePart part, const CRunMessages& before);
  bool repairObject(const CTemplatePlace& object, eTemplatePart part, CRunMessages& run,
                    const CRunMessages& before, std::vector<CJsonPointer>& repairs);

  void searchInclude(const CTemplatePlace& element, const CRunMessages& before);
  bool isOnWay(const std::string& file) const;
  void addCycle(const std::string& file, const CTemplatePlace& element, const CRunMessages& probe);
  bool blameInclude(const CTemplatePlace& element, const CRunMessages& own);
  void searchIncludedFile(const std::string& file, std::size_t count, const CRunMessages& before);
  void addNotIncluded(const std::string& file, std::size_t count, const CTemplatePlace& element);
  void addSyntaxErrors(const CSourceFile& source, std::size_t count);

  void addAll(const CTemplatePlace& place, const CRunMessages& messages);
  void add(const CTemplatePlace& place, const std::string& message, std::size_t count);
  void addException(const CTemplatePlace& place, const std::string& text);
  void addWhatIsLeft(const CRunMessages& whole);
  CTemplatePlace inTemplate(const CTemplatePlace& place) const;
  std::vector<CPlace> waysHere() const;
  CFault faultAt(const CTemplatePlace& place, const char* code) const;
  const Json::Value& original(const CTemplatePlace& place) const;

  /// An Include on the way to what is searched.
  struct CWayStep {
    CTemplatePlace element;
    std::string file;  ///< the one that it includes
  };

  CPageRunner& m_page;
  CReducedPage m_reduced;
  CFaultList& m_faults;
  std::vector<CWayStep> m_way;  ///< outermost first
  CRunMessages m_placed;        ///< what the library wrote and has a place by now
  bool m_exceptionPlaced = false;
  std::optional<CTemplatePlace> m_probe;      ///< an Include that its probe stands in for now
  std::optional<CTemplatePlace> m_recursion;  ///< an Include of a file on the way to it
};

}  // namespace ttr

#endif  // TOOL_CHECK_FAULT_SEARCH_H
