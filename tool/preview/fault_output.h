#ifndef TOOL_PREVIEW_FAULT_OUTPUT_H
#define TOOL_PREVIEW_FAULT_OUTPUT_H

#include <vector>

#include "page/fault.h"
#include "text/output_options.h"

namespace ttr {

/// Prints the faults to standard error as `ttr check` does.
void printFaults(const std::vector<CFault>& faults, const COutputOptions& options);

}  // namespace ttr

#endif  // TOOL_PREVIEW_FAULT_OUTPUT_H
