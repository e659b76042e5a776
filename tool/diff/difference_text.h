#ifndef TOOL_DIFF_DIFFERENCE_TEXT_H
#define TOOL_DIFF_DIFFERENCE_TEXT_H

#include <json/value.h>

#include <string>

#include "diff/page_difference.h"

namespace ttr {

/// What happened, in words: "moved by (4, -2)".
std::string changeText(const CDifference& difference);

/// Which entry it happened to: its pointer, and its label in quotes when it has one.
std::string entryText(const CDifference& difference);

/// `kind` for machines: "moved", "became-null", ...
const char* kindName(CDifference::eKind kind);

/// `value` as JSON in one line, with characters outside of ASCII as they are.
std::string jsonText(const Json::Value& value);

}  // namespace ttr

#endif  // TOOL_DIFF_DIFFERENCE_TEXT_H
