#ifndef TOOL_PAGE_PAGE_VARIABLES_H
#define TOOL_PAGE_PAGE_VARIABLES_H

#include <json/value.h>

#include <map>
#include <set>
#include <string>

#include "TokenTemplateResolver/token_resolver.h"
#include "page/json_pointer.h"

namespace ttr {

/// The names that a page binds: the members of its "Context" objects and the variables of its
/// loops, in the files that it includes too. File names that hold tokens are resolved with
/// `tokens`; files that cannot be read bind nothing.
std::set<std::string> pageVariables(const Json::Value& page, const CTokenResolver& tokens);

/// The names that a document binds, each with the first place that does.
using CBoundNames = std::map<std::string, CJsonPointer>;

/// Those of `document` itself, without the files that it includes.
CBoundNames boundNames(const Json::Value& document);

}  // namespace ttr

#endif  // TOOL_PAGE_PAGE_VARIABLES_H
