#ifndef TOOL_PAGE_TEMPLATE_NAMES_H
#define TOOL_PAGE_TEMPLATE_NAMES_H

#include <string>
#include <vector>

namespace ttr {

/// An object of a template, and the names of its members that the library reads or writes.
struct CTemplateObject {
  const char* name;  ///< "document", "element", or the member that holds it: "Page", "Loop", ...
  std::vector<std::string> members;
};

/// All objects of the format.
const std::vector<CTemplateObject>& templateObjects();

/// The members of the object `name`, which must be one.
const std::vector<std::string>& membersOf(const std::string& name);

}  // namespace ttr

#endif  // TOOL_PAGE_TEMPLATE_NAMES_H
