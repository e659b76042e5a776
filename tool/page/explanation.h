#ifndef TOOL_PAGE_EXPLANATION_H
#define TOOL_PAGE_EXPLANATION_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "page/page_run.h"
#include "page/pass_record.h"

namespace ttr {

/// In which copy of a loop an element stands; of a rotating loop, at which position of its range.
struct CCopyPlace {
  std::size_t number = 1;
  std::size_t of = 1;
  CPlace loop;
  std::optional<int> index;  ///< that a rotating loop shows
};

/// A token of an element, or of a text that stands directly in it: who answered, and what.
struct CTokenExplanation {
  std::string member;                ///< the way from the element to the text: "If/Condition"
  std::string part;                  ///< "index of $(list[a.b])" for a path inside of a token
  const CTokenFact* fact = nullptr;  ///< borrowed from the record
  CPlace place;
  std::string source;  ///< where the handler takes its values from
  std::string why;     ///< why there is no value; empty when there is one
};

/// What ends the pass in an element.
struct CEndExplanation {
  std::string text;
  CPlace place;
  bool isFirst = true;  ///< false for what the pass would come to later
};

/// Why one element of a resolved page is what it is.
struct CExplanation {
  const CElementNode* node = nullptr;  ///< its facts, borrowed from the record
  std::string kind;
  CJsonPointer pointer;  ///< in the resolved page
  CJsonPointer origin;   ///< in its template
  CPlace place;          ///< in its template
  unsigned pass = 1;
  std::vector<CCopyPlace> copies;      ///< of the loops around it, the outermost first
  const Json::Value* value = nullptr;  ///< what it became; null when that is missing
  std::string enclosing;               ///< what its bounds are measured against: "the screen"
  std::string why;                     ///< of an If always; of others when they show nothing
  std::vector<CTokenExplanation> tokens;
  std::vector<std::string> messages;     ///< about the element, not about its contents
  std::optional<CEndExplanation> ended;  ///< then only the tokens are told
  std::string end;  ///< where the pass ends early, and why; empty when it does not

  /// True when the library found a fault in the element.
  bool HasFaults() const { return !messages.empty() || ended; }
  /// True when it tells what the bounds of the element are, or would be measured against.
  bool HasBounds() const { return !enclosing.empty() && !ended; }
};

/// Explains the last node of `way` in `record`; `valuesFile` is the name of the file with the
/// values. Borrows from the record.
CExplanation explainNode(CPageRunner& page, const CPassRecord& record, const CNodeWay& way,
                         const std::string& valuesFile);

/// A fact in words.
struct CExplanationLine {
  std::string label;
  std::string text;
  bool isDetail = false;  ///< of the line before
};

/// All that an explanation tells, a line for each fact.
std::vector<CExplanationLine> explanationLines(const CExplanation& explanation);

}  // namespace ttr

#endif  // TOOL_PAGE_EXPLANATION_H
