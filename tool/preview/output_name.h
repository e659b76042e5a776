#ifndef TOOL_PREVIEW_OUTPUT_NAME_H
#define TOOL_PREVIEW_OUTPUT_NAME_H

#include <string>

#include "preview/preview.h"

namespace ttr {

enum ePreviewFormat { formatSvg, formatPng, formatHtml };

/// The format that the ending of `name` tells, else `format`: "svg", "png" or "html".
/// \throws CToolError when neither tells
ePreviewFormat previewFormat(const std::string& name, const std::string& format);

/// `name` with `size` and `pass` in place of {size} and {pass}.
std::string outputName(std::string name, const std::string& size, unsigned pass);

/// True when `name` has this placeholder: "{size}", "{pass}".
bool hasPlaceholder(const std::string& name, const std::string& placeholder);

/// Checks that the outputs can be told apart, and that each can hold what it is to show.
/// \throws CToolError when not
void checkOutputs(const CPreviewOptions& options);

}  // namespace ttr

#endif  // TOOL_PREVIEW_OUTPUT_NAME_H
