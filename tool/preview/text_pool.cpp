#include "preview/text_pool.h"

#include <utility>

namespace ttr {

void CTextPool::Append(std::string text, CRuns& runs) {
  const auto [known, added] = m_numbers.try_emplace(std::move(text), m_texts.size());
  if (added) m_texts.push_back(&known->first);
  const std::size_t number = known->second;
  if (!runs.empty() && *(runs.end() - 2) + runs.back() == number) {
    ++runs.back();
  } else {
    runs.insert(runs.end(), {number, 1});
  }
}

std::vector<const std::string*> CTextPool::TextsIn(const CRuns& runs) const {
  std::vector<const std::string*> texts;
  for (std::size_t i = 0; i < runs.size(); i += 2) {
    for (std::size_t k = 0; k < runs[i + 1]; ++k) texts.push_back(m_texts.at(runs[i] + k));
  }
  return texts;
}

}  // namespace ttr
