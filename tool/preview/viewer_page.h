#ifndef TOOL_PREVIEW_VIEWER_PAGE_H
#define TOOL_PREVIEW_VIEWER_PAGE_H

#include <string>

#include "preview/preview.h"

namespace ttr {

/// The viewer with `model` in it, one HTML file that needs no other. `outdated` and `live` as for
/// renderPreview().
std::string viewerPage(const CPreviewModel& model, const std::string& outdated, bool live);

}  // namespace ttr

#endif  // TOOL_PREVIEW_VIEWER_PAGE_H
