#ifndef TOOL_PAGE_FAULT_LIST_H
#define TOOL_PAGE_FAULT_LIST_H

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "page/fault.h"

namespace ttr {

/// Faults, each of them once: one that is added again only counts.
class CFaultList {
 public:
  /// Without a fault the file still has its turn among the sorted ones.
  void AddFile(const std::string& file) { m_fileOrder.emplace(file, m_fileOrder.size()); }
  void Add(const CFault& fault);

  /// True when there is a fault at this place.
  bool Has(const std::string& file, const CJsonPointer& pointer) const;
  /// Gives the faults of this code at this place another message.
  void Reword(const std::string& file, const CJsonPointer& pointer, const std::string& code,
              const std::string& message);

  /// The faults by files in the order in which they came up, by places in them, and by messages.
  std::vector<CFault> Sorted() const;

 private:
  std::vector<CFault> m_faults;
  std::map<std::tuple<std::string, CJsonPointer, std::string>, std::size_t>
      m_indices;  ///< by place
  std::map<std::string, std::size_t> m_fileOrder;
};

}  // namespace ttr

#endif  // TOOL_PAGE_FAULT_LIST_H
