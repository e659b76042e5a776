#ifndef TOOL_PAGE_CONDITION_WORDS_H
#define TOOL_PAGE_CONDITION_WORDS_H

#include <string>

#include "page/pass_record.h"

namespace ttr {

/// Why an If holds, or does not.
std::string whyHolds(const CIfFact& test);

}  // namespace ttr

#endif  // TOOL_PAGE_CONDITION_WORDS_H
