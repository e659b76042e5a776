#include "preview/fault_output.h"

#include <unistd.h>

#include "page/fault_text.h"
#include "text/printable.h"

namespace ttr {

void printFaults(const std::vector<CFault>& faults, const COutputOptions& options) {
  writeStandardError(
      faultLines(options.quiet ? onlyErrors(faults) : faults, useColour(options, STDERR_FILENO)));
}

}  // namespace ttr
