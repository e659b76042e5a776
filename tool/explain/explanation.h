#ifndef TOOL_EXPLAIN_EXPLANATION_H
#define TOOL_EXPLAIN_EXPLANATION_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "explain/bounds_explanation.h"
#include "explain/replacement_explanation.h"
#include "explain/target.h"
#include "explain/token_explanation.h"

namespace ttr {

/// In which copy of a loop an element stands; of a rotating loop, at which position of its range.
struct CCopy {
  std::size_t number = 1;
  std::size_t of = 1;
  CPlace loop;
  std::optional<int> index;  ///< that a rotating loop shows
};

/// Why one element of a resolved page is what it is.
struct CExplanation {
  std::string answer;   ///< in one sentence
  std::string pointer;  ///< of the element in the resolved page
  std::string kind;
  CPlace place;         ///< in its template
  CJsonPointer origin;  ///< in its template
  unsigned pass = 1;
  std::vector<CCopy> copies;  ///< of the loops around it, the outermost first
  Json::Value value;          ///< what it became
  bool lowercased = false;    ///< a text that names an image or font file
  std::optional<CIfExplanation> ifElement;
  std::optional<CIncludeExplanation> include;
  std::optional<CLoopExplanation> loop;
  std::optional<CBoundsExplanation> bounds;  ///< of elements; not of text
  std::vector<CTokenExplanation> tokens;
  std::vector<std::string> messages;  ///< of the library about the element, not about its contents
  std::optional<std::string> exception;  ///< what ends the pass in the element
  std::string end;  ///< where the pass ends early, and why; empty when it does not

  /// True when the library found a fault in the element.
  bool HasFaults() const { return !messages.empty() || exception; }
};

/// Explains the element that `pointer` leads to in pass number `pass`; `valuesFile` is the name of
/// the file with the values.
/// \throws CToolError when the page is no JSON, or `pointer` leads nowhere
CExplanation explain(CPageRunner& page, unsigned pass, const std::string& valuesFile,
                     const CJsonPointer& pointer);

/// The explanation as text of at most `mostLines` lines, each with its line end.
std::string explanationText(const CExplanation& explanation, bool colour);
constexpr std::size_t mostLines = 25;

/// All of the explanation as one JSON object.
Json::Value explanationJson(const CExplanation& explanation);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_EXPLANATION_H
