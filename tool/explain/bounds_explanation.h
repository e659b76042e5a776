#ifndef TOOL_EXPLAIN_BOUNDS_EXPLANATION_H
#define TOOL_EXPLAIN_BOUNDS_EXPLANATION_H

#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "explain/probe.h"

namespace ttr {

/// What an element is measured against: -1 stands for an edge that is missing, 0 for a size.
struct CEnclosing {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  std::string source;  ///< "the screen", "Bounds at FILE:LINE:COLUMN", "cell 2 of the Loop at ..."
};

/// One of the entries of a "Bounds": how its value comes from what is written.
struct CBoundsEntry {
  std::string name;  ///< "x", "width", ...
  Json::Value written;
  Json::Value result;        ///< as the library has it
  std::string arithmetic;    ///< "5% of 1280 = 64, + 100"
  std::optional<int> value;  ///< what the arithmetic comes to; none where nothing is computed
};

struct CBoundsExplanation {
  CEnclosing enclosing;
  Json::Value result;  ///< null when the element has no "Bounds"
  std::vector<CBoundsEntry> entries;
};

/// What the element at the end of a probe's way is measured against, and how its "Bounds" come out.
CBoundsExplanation explainBounds(const CProbe& probe);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_BOUNDS_EXPLANATION_H
