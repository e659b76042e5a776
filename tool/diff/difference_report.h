#ifndef TOOL_DIFF_DIFFERENCE_REPORT_H
#define TOOL_DIFF_DIFFERENCE_REPORT_H

#include <string>
#include <vector>

#include "diff/compared_page.h"
#include "diff/page_difference.h"

namespace ttr {

/// Two pages and what differs between them.
struct CComparedPages {
  CComparedPage before;
  CComparedPage after;
  std::vector<CDifference> differences;
};

/// One line for each difference, beginning with its place; empty when there is none.
std::string textReport(const CComparedPages& pages, bool colour);

/// The differences as JSON.
std::string jsonReport(const CComparedPages& pages);

/// The differences as a page for a browser that needs nothing else.
std::string htmlReport(const CComparedPages& pages);

}  // namespace ttr

#endif  // TOOL_DIFF_DIFFERENCE_REPORT_H
