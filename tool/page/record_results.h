#ifndef TOOL_PAGE_RECORD_RESULTS_H
#define TOOL_PAGE_RECORD_RESULTS_H

#include <functional>
#include <string>

#include "page/pass_record.h"
#include "page/source_file.h"

namespace ttr {

/// The files of a page by the names that pages have for them; null for what cannot be read.
using CSources = std::function<const CSourceFile*(const std::string& name)>;

/// Gives each node of `record` its value in the result and in its file, and adds what an If that
/// does not hold hides.
void findResults(CPassRecord& record, const CSources& sources);

}  // namespace ttr

#endif  // TOOL_PAGE_RECORD_RESULTS_H
