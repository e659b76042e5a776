#ifndef TOOL_PREVIEW_FAULT_OUTPUT_H
#define TOOL_PREVIEW_FAULT_OUTPUT_H

#include <vector>

#include "check/fault.h"
#include "preview/preview.h"
#include "text/output_options.h"

namespace ttr {

/// The faults of all pictures, each of them once.
std::vector<CFault> allFaults(const CPreviewModel& model);

/// Prints the faults to standard error as `ttr check` does.
void printFaults(const std::vector<CFault>& faults, const COutputOptions& options);

}  // namespace ttr

#endif  // TOOL_PREVIEW_FAULT_OUTPUT_H
