#ifndef TOOL_DIFF_CONTAINER_IDS_H
#define TOOL_DIFF_CONTAINER_IDS_H

#include <json/value.h>

#include <map>

#include "diff/page_difference.h"

namespace ttr {

/// Which number a container of one page has in another one. The library counts containers, so that
/// one more of them changes the numbers of all later ones.
class CContainerIds {
 public:
  /// Two objects that are the same element; if they are containers, their numbers belong together.
  void Add(const Json::Value& before, const Json::Value& after);

  /// True when `difference` is only that the same container has another number.
  bool Explain(const CDifference& difference) const;

 private:
  std::map<int, int> m_after;
  std::map<int, int> m_before;
};

}  // namespace ttr

#endif  // TOOL_DIFF_CONTAINER_IDS_H
