#ifndef TOOL_EXPLAIN_PASS_TREE_H
#define TOOL_EXPLAIN_PASS_TREE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "check/fault.h"
#include "page/element_tree.h"

namespace ttr {

/// The tree of one pass. Of a pass that ends in an exception it is the tree without the values that
/// end it, so that the rest can be explained.
class CPassTree {
 public:
  CPassTree(CPageRunner& page, unsigned pass);
  CPassTree(const CPassTree&) = delete;
  CPassTree& operator=(const CPassTree&) = delete;

  const CElementNode& root() const { return m_root; }
  /// What ended the pass; nothing when it came to its end.
  const std::optional<std::string>& exception() const { return m_exception; }
  /// The fault that the pass reaches first; null also when nobody knows where it stands.
  const CFault* end() const { return m_end; }
  /// The first fault in `node` that ends a pass: in the node's own members, or in its contents too.
  const CFault* OwnEnd(const CElementNode& node) const;
  const CFault* EndIn(const CElementNode& node) const;
  /// `node` as it is in its file.
  CElementNode Written(CElementNode node) const;

 private:
  void takeOutEnds(unsigned pass);
  void useDocuments(CElementNode& node) const;

  CPageRunner& m_page;
  CPageRun m_run;
  CElementNode m_root;
  std::optional<std::string> m_exception;
  std::vector<CFault> m_ends;
  const CFault* m_end = nullptr;
  CPageRunner::CChanges m_documents;  ///< those without the ends
};

}  // namespace ttr

#endif  // TOOL_EXPLAIN_PASS_TREE_H
