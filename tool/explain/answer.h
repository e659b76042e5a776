#ifndef TOOL_EXPLAIN_ANSWER_H
#define TOOL_EXPLAIN_ANSWER_H

#include <json/value.h>

#include <cstddef>
#include <string>

#include "page/explanation.h"
#include "page/page_run.h"

namespace ttr {

/// Why one element of a resolved page is what it is.
struct CAnswer {
  std::string sentence;
  CExplanation explanation;
};

/// Explains the element that `pointer` leads to in `record`, which the answer borrows from;
/// `valuesFile` is the name of the file with the values.
/// \throws CToolError when the page is no JSON, or `pointer` leads nowhere
CAnswer explain(CPageRunner& page, const CPassRecord& record, const std::string& valuesFile,
                const CJsonPointer& pointer);

/// The answer as text of at most `mostLines` lines, each with its line end.
std::string answerText(const CAnswer& answer, bool colour);
constexpr std::size_t mostLines = 25;

/// All of the answer as one JSON object.
Json::Value answerJson(const CAnswer& answer);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_ANSWER_H
