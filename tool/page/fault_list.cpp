#include "page/fault_list.h"

#include <algorithm>

namespace ttr {

void CFaultList::Add(const CFault& fault) {
  AddFile(fault.place.file);
  const auto [known, added] = m_indices.emplace(
      std::make_tuple(fault.place.Text(), fault.pointer, fault.message), m_faults.size());
  if (added) {
    m_faults.push_back(fault);
  } else {
    m_faults[known->second].count += fault.count;
  }
}

bool CFaultList::Has(const std::string& file, const CJsonPointer& pointer) const {
  return std::any_of(m_faults.begin(), m_faults.end(), [&](const CFault& fault) {
    return fault.place.file == file && fault.pointer == pointer;
  });
}

void CFaultList::Reword(const std::string& file, const CJsonPointer& pointer,
                        const std::string& code, const std::string& message) {
  for (CFault& fault : m_faults) {
    const bool here = fault.place.file == file && fault.pointer == pointer;
    if (here && fault.code == code) fault.message = message;
  }
}

std::vector<CFault> CFaultList::Sorted() const {
  const auto key = [this](const CFault& fault) {
    return std::make_tuple(m_fileOrder.at(fault.place.file), fault.place.line, fault.place.column,
                           fault.message);
  };
  std::vector<CFault> sorted = m_faults;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&key](const CFault& a, const CFault& b) { return key(a) < key(b); });
  return sorted;
}

}  // namespace ttr
