#ifndef TOOL_EXPLAIN_REPLACEMENT_EXPLANATION_H
#define TOOL_EXPLAIN_REPLACEMENT_EXPLANATION_H

#include <json/value.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "explain/probe.h"
#include "text/wording.h"

namespace ttr {

/// A member's value with its tokens replaced, and its JSON type.
struct CTypedValue {
  Json::Value value;
  std::string type;
};

/// An If: its operands, and whether it holds.
struct CIfExplanation {
  std::optional<CTypedValue> condition;  ///< none when there is no "Condition"
  std::string comparison;                ///< the member that compares; empty for the truth value
  CTypedValue operand;
  bool holds = false;
  std::string why;
};

/// An Include: the file it names.
struct CIncludeExplanation {
  Json::Value filename;  ///< with its tokens replaced
  std::string why;       ///< why nothing is included; empty when it is
};

/// A Loop: its range, and where the copies went.
struct CLoopExplanation {
  bool rotating = false;
  std::vector<std::pair<std::string, CTypedValue>> members;  ///< List, Start, ... as far as given
  std::size_t indices = 0;  ///< of the range; `mostIndices` stands for more too
  std::optional<int> first;
  std::optional<int> last;
  std::optional<int> shown;             ///< the index that a rotating loop shows in this pass
  std::optional<std::size_t> position;  ///< of that index in the range, from 0
  std::size_t copies = 0;
  std::optional<std::size_t> layout;  ///< which of the layouts was chosen, from 0
  std::size_t layouts = 0;
  Json::Value cells{Json::arrayValue};  ///< [x, y, width, height] of each copy of a grid
  std::string why;                      ///< why there are no copies; empty when there are

  static constexpr std::size_t mostIndices = 1000;
};

CIfExplanation explainIf(const CProbe& probe);
/// `messages` are those that the library wrote for the element alone.
CIncludeExplanation explainInclude(const CProbe& probe, const std::vector<std::string>& messages);
CLoopExplanation explainLoop(const CProbe& probe, const std::vector<std::string>& messages);

/// `brief` with its type where it is not plain from the JSON.
std::string brief(const CTypedValue& value);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_REPLACEMENT_EXPLANATION_H
