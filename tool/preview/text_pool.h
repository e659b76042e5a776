#ifndef TOOL_PREVIEW_TEXT_POOL_H
#define TOOL_PREVIEW_TEXT_POOL_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace ttr {

/// Texts, each of them once. The passes of a page differ little, so that a list of texts is told by
/// what it takes from here.
class CTextPool {
 public:
  /// Parts of the pool one after the other: the number of the first text and how many, by turns.
  using CRuns = std::vector<std::size_t>;

  CTextPool() = default;
  CTextPool(CTextPool&&) = default;
  CTextPool& operator=(CTextPool&&) = default;

  /// Puts `text` at the end of the list that `runs` tells.
  void Append(std::string text, CRuns& runs);

  /// In the order in which they came up.
  const std::vector<const std::string*>& texts() const { return m_texts; }
  std::vector<const std::string*> TextsIn(const CRuns& runs) const;

 private:
  std::map<std::string, std::size_t> m_numbers;
  std::vector<const std::string*> m_texts;  ///< keys of the map, which stay where they are
};

}  // namespace ttr

#endif  // TOOL_PREVIEW_TEXT_POOL_H
