#ifndef TOOL_PAGE_RECORD_FAULTS_H
#define TOOL_PAGE_RECORD_FAULTS_H

#include <deque>
#include <string>
#include <vector>

#include "page/fault.h"
#include "page/fault_list.h"
#include "page/page_run.h"
#include "page/pass_record.h"

namespace ttr {

/// A fault of this kind, with nothing but its level.
CFault faultOf(const char* code);

/// The "Filename" of an Include.
CTemplateValue filenameOf(const CTemplateValue& element);

/// The Include elements on the way, innermost first.
std::vector<CPlace> placesOf(CPageRunner& page, const std::vector<CIncludeStep>& way);

/// The JSON errors of `source` as faults.
std::vector<CFault> syntaxFaults(const CSourceFile& source);

/// What ended the pass, as a fault.
CFault faultOfEnd(CPageRunner& page, const CPassEnd& end);

/// Puts what the library says in passes into a list of faults: its messages, files that cannot be
/// included, cycles of includes, exceptions.
class CRecordFaults {
 public:
  /// Both are borrowed.
  CRecordFaults(CPageRunner& page, CFaultList& faults);

  void Add(const CPassRecord& record);

 private:
  /// The page or an included file, and the way there.
  struct CDocument {
    const CElementNode* node;
    std::vector<CIncludeStep> way;
  };

  void addNode(const CElementNode& node, const std::vector<CIncludeStep>& way);
  bool addIncluded(const CElementNode& document, const std::vector<CIncludeStep>& way);
  void addMessage(const CMessageFact& message, const CElementNode* node);
  bool addCycle(const CMessageFact& message);
  CFault faultAt(const CTemplateValue& place, const char* code,
                 const std::vector<CIncludeStep>& way);

  CPageRunner& m_page;
  CFaultList& m_faults;
  std::vector<std::string> m_names;  ///< that tokens can begin with
  const CPassRecord* m_record = nullptr;
  std::deque<CDocument> m_documents;  ///< of the record, still to be looked at
};

}  // namespace ttr

#endif  // TOOL_PAGE_RECORD_FAULTS_H
