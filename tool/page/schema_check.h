#ifndef TOOL_PAGE_SCHEMA_CHECK_H
#define TOOL_PAGE_SCHEMA_CHECK_H

#include <json/value.h>

#include <string>
#include <vector>

#include "page/json_pointer.h"

namespace ttr {

/// A value of a template that is not what the schema of templates allows in its place.
struct CSchemaFault {
  CJsonPointer pointer;  ///< to the wrong value; for a missing member, to the object that lacks it
  std::string message;   ///< one line, for authors: what belongs there
};

/// Where `document`, a page or an included file, departs from the schema that `ttr schema` prints:
/// a fault for each wrong value and for each missing member.
std::vector<CSchemaFault> schemaFaults(const Json::Value& document);

}  // namespace ttr

#endif  // TOOL_PAGE_SCHEMA_CHECK_H
