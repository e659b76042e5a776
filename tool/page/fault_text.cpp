#include "page/fault_text.h"

#include <algorithm>
#include <iterator>

#include "text/output_options.h"
#include "text/printable.h"
#include "text/wording.h"

namespace ttr {

const char* levelName(CFault::eLevel level) {
  return level == CFault::levelError ? "error" : "warning";
}

std::string faultText(const CFault& fault) {
  std::string text = fault.message;
  if (!fault.suggestion.empty()) text += " (" + fault.suggestion + ')';
  if (fault.count > 1) text += " (" + counted(fault.count, "time") + ')';
  return text;
}

std::string faultLines(const std::vector<CFault>& faults, bool colour) {
  std::string text;
  for (const CFault& fault : faults) {
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

std::size_t countOf(const std::vector<CFault>& faults, CFault::eLevel level) {
  const auto count = std::count_if(faults.begin(), faults.end(),
                                   [level](const CFault& fault) { return fault.level == level; });
  return static_cast<std::size_t>(count);
}

std::vector<CFault> onlyErrors(const std::vector<CFault>& faults) {
  std::vector<CFault> errors;
  std::copy_if(faults.begin(), faults.end(), std::back_inserter(errors),
               [](const CFault& fault) { return fault.level == CFault::levelError; });
  return errors;
}

}  // namespace ttr
