#ifndef TOOL_PREVIEW_VIEWER_HTML_H
#define TOOL_PREVIEW_VIEWER_HTML_H

#include <string>

namespace ttr {

/// The page made of the files in viewer, which is part of the program.
std::string viewerHtml();

}  // namespace ttr

#endif  // TOOL_PREVIEW_VIEWER_HTML_H
