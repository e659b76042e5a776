#ifndef TOOL_PREVIEW_BOUNDS_ARITHMETIC_H
#define TOOL_PREVIEW_BOUNDS_ARITHMETIC_H

#include <json/value.h>

#include <string>
#include <vector>

namespace ttr {

/// How the first four entries of `result`, resolved "Bounds", came about: one line each, such as
/// "x: 32 + 16 = 48" or "width: $(half) = 50% of 640 = 320".
///
/// `written` are the bounds in the template, `replaced` the same with tokens replaced, `enclosing`
/// the four numbers they were measured against, null for a missing one. A line never contradicts
/// the result: where the calculation does not lead there, it is the result alone.
std::vector<std::string> boundsArithmetic(const Json::Value& written, const Json::Value& replaced,
                                          const Json::Value& enclosing, const Json::Value& result);

}  // namespace ttr

#endif  // TOOL_PREVIEW_BOUNDS_ARITHMETIC_H
