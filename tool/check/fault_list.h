#ifndef TOOL_CHECK_FAULT_LIST_H
#define TOOL_CHECK_FAULT_LIST_H

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "check/fault.h"

namespace ttr {

/// Faults, each of them once: one that is added again only counts.
class CFaultList {
 public:
  /// Without a fault the file still has its turn among the sorted ones.
  void AddFile(const std::string& file) { m_fileOrder.emplace(file, m_fileOrder.size()); }
  void Add(const CFault& fault);
  void Add(const CFaultList& other);

  /// True when there is a fault at this place.
  bool Has(const std::string& file, const CJsonPointer& pointer) const;
  /// Gives the faults of this code at this place another message.
  void Reword(const std::string& file, const CJsonPointer& pointer, const std::string& code,
              const std::string& message);
  /// Adds `count` to the first fault with this message; false when there is none.
  bool Count(const std::string& message, std::size_t count);

  /// The faults by files, the others in the order in which they came up, and by places in them.
  std::vector<CFault> Sorted() const;

 private:
  std::vector<CFault> m_faults;
  std::map<std::tuple<std::string, CJsonPointer, std::string>, std::size_t>
      m_indices;  ///< by place
  std::map<std::string, std::size_t> m_fileOrder;
};

}  // namespace ttr

#endif  // TOOL_CHECK_FAULT_LIST_H
