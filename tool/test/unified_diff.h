#ifndef TOOL_TEST_UNIFIED_DIFF_H
#define TOOL_TEST_UNIFIED_DIFF_H

#include <string>

namespace ttr {

/// A text and how the head of a diff calls it.
struct CNamedText {
  std::string name;
  std::string text;
};

/// What `diff -u` writes about these texts, without the times of files; empty when they are equal.
std::string unifiedDiff(const CNamedText& before, const CNamedText& after);

}  // namespace ttr

#endif  // TOOL_TEST_UNIFIED_DIFF_H
