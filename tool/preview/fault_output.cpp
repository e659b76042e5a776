// Tests: tests/tool/preview_*, tests/tool/watch/check_watch.sh
#include "preview/fault_output.h"

#include <unistd.h>

#include "check/check_report.h"
#include "check/fault_list.h"
#include "text/printable.h"

namespace ttr {

std::vector<CFault> allFaults(const CPreviewModel& model) {
  CFaultList faults;
  faults.AddFile(model.page);
  for (const CPreviewPicture& picture : model.pictures) {
    for (const CFault& fault : picture.faults) faults.Add(fault);
  }
  return faults.Sorted();
}

void printFaults(const std::vector<CFault>& faults, const COutputOptions& options) {
  CCheckReport report;
  report.faults = faults;
  if (options.quiet) report = report.OnlyErrors();
  writeStandardError(textReport(report, useColour(options, STDERR_FILENO)));
}

}  // namespace ttr
