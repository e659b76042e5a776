#ifndef TOOL_PREVIEW_PICTURE_NOTES_H
#define TOOL_PREVIEW_PICTURE_NOTES_H

#include <string>
#include <vector>

#include "preview/box.h"
#include "preview/picture.h"

namespace ttr {

/// A piece of SVG, and the room it takes.
struct CPanel {
  std::string svg;
  CBox box;  ///< empty when there is nothing to show
};

/// The lists below a picture that shows `canvas`.
CPanel notesPanel(const std::vector<CNotes>& notes, const CBox& canvas);

/// The banner over the top of `canvas` that says OUTDATED and `reason`.
CPanel outdatedBanner(const std::string& reason, const CBox& canvas);

}  // namespace ttr

#endif  // TOOL_PREVIEW_PICTURE_NOTES_H
