#ifndef TOOL_PREVIEW_ELEMENT_LABEL_H
#define TOOL_PREVIEW_ELEMENT_LABEL_H

#include <json/value.h>

#include <string>

#include "page/pass_record.h"

namespace ttr {

/// What an entry of "Contents" shows where it stands as text: text, numbers and booleans; empty for
/// anything else.
std::string shownText(const Json::Value& entry);

/// A node in a few words: `RenderType 2 "Welcome"`, `Include "header.json"`.
std::string elementLabel(const CElementNode& node);

}  // namespace ttr

#endif  // TOOL_PREVIEW_ELEMENT_LABEL_H
