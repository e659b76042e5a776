#ifndef TOOL_DIFF_TEMPLATE_ENTRY_H
#define TOOL_DIFF_TEMPLATE_ENTRY_H

#include <json/value.h>

#include <map>
#include <string>

#include "page/json_pointer.h"

namespace ttr {

/// The entry of a template that an entry of a resolved page was made from.
struct CTemplateEntry {
  std::string file;  ///< empty for the page itself, whatever its file is called
  CJsonPointer pointer;
  Json::Value value;
};

/// Template entries by the pointer of what they became in the resolved page.
using CTemplateEntries = std::map<CJsonPointer, CTemplateEntry>;

}  // namespace ttr

#endif  // TOOL_DIFF_TEMPLATE_ENTRY_H
