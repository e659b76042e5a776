#include <algorithm>
#include <iterator>

#include "check/check_report.h"
#include "text/output_options.h"
#include "text/printable.h"
#include "text/wording.h"

namespace ttr {

std::size_t CCheckReport::Count(CFault::eLevel level) const {
  const auto count = std::count_if(faults.begin(), faults.end(),
                                   [level](const CFault& fault) { return fault.level == level; });
  return static_cast<std::size_t>(count);
}

CCheckReport CCheckReport::OnlyErrors() const {
  CCheckReport report = *this;
  const auto isError = [](const CFault& fault) { return fault.level == CFault::levelError; };
  report.faults.clear();
  std::copy_if(faults.begin(), faults.end(), std::back_inserter(report.faults), isError);
  return report;
}

const char* levelName(CFault::eLevel level) {
  return level == CFault::levelError ? "error" : "warning";
}

std::string faultText(const CFault& fault) {
  std::string text = fault.message;
  if (!fault.suggestion.empty()) text += " (" + fault.suggestion + ')';
  if (fault.count > 1) text += " (" + counted(fault.count, "time") + ')';
  return text;
}

std::string textReport(const CCheckReport& report, bool colour) {
  std::string text;
  for (const CFault& fault : report.faults) {
    const eTextStyle style = fault.level == CFault::levelError ? styleRed : styleYellow;
    text += styled(fault.place.Text() + ':', styleBold, colour) + ' ' +
            styled(std::string(levelName(fault.level)) + ':', style, colour) + ' ' +
            printable(faultText(fault)) + " [" + fault.code + "]\n";
    for (const CPlace& place : fault.includedFrom) {
      text += styled(place.Text() + ':', styleBold, colour) + ' ' +
              styled("note:", styleCyan, colour) + " included from here\n";
    }
  }
  return text;
}

}  // namespace ttr
