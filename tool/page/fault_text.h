#ifndef TOOL_PAGE_FAULT_TEXT_H
#define TOOL_PAGE_FAULT_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

#include "page/fault.h"

namespace ttr {

/// "error", "warning".
const char* levelName(CFault::eLevel level);

/// What is wrong, with suggestion and count, in one line.
std::string faultText(const CFault& fault);

/// A line for each fault, and one for each Include on the way to it, as compilers write them.
std::string faultLines(const std::vector<CFault>& faults, bool colour);

std::size_t countOf(const std::vector<CFault>& faults, CFault::eLevel level);

/// `faults` without warnings.
std::vector<CFault> onlyErrors(const std::vector<CFault>& faults);

}  // namespace ttr

#endif  // TOOL_PAGE_FAULT_TEXT_H
