#ifndef TOOL_PAGE_FAULT_FINDER_H
#define TOOL_PAGE_FAULT_FINDER_H

#include <map>
#include <string>
#include <vector>

#include "page/record_faults.h"

namespace ttr {

/// Finds what is wrong with a page: JSON errors, departures from the schema, the library's own
/// diagnostics, cycles of includes.
class CFaultFinder {
 public:
  /// `page` is borrowed.
  explicit CFaultFinder(CPageRunner& page) : m_page(page) { reset(); }

  /// Looks at one pass more.
  void Add(const CPassRecord& record);

  /// What is wrong in the passes added since the last call together, in the order of files and
  /// places.
  std::vector<CFault> Take();

 private:
  void reset();
  const std::vector<CFault>& stillFaults(const CSourceFile& source);
  void addWays(const CElementNode& node, std::vector<CIncludeStep>& way);

  CPageRunner& m_page;
  CFaultList m_faults;
  CRecordFaults m_passes{m_page, m_faults};
  std::map<std::string, std::vector<CPlace>> m_ways;  ///< the shortest to each file, by its name
  std::map<const CSourceFile*, std::vector<CFault>> m_still;  ///< that no pass changes, by file
};

/// Everything that is wrong with `page` in these passes.
std::vector<CFault> findFaults(CPageRunner& page, CPasses passes);

}  // namespace ttr

#endif  // TOOL_PAGE_FAULT_FINDER_H
