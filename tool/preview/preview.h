#ifndef TOOL_PREVIEW_PREVIEW_H
#define TOOL_PREVIEW_PREVIEW_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/fault.h"
#include "page/page_options.h"
#include "preview/box.h"
#include "tool_error.h"

namespace ttr {

/// The page has no picture: it is no JSON, or a pass of it ends in an exception.
class CFaultyPage : public CToolError {
 public:
  /// `faults` says why; it is not empty.
  explicit CFaultyPage(std::vector<CFault> faults);

  const std::vector<CFault>& faults() const { return m_faults; }

 private:
  std::vector<CFault> m_faults;
};

/// What `ttr preview` was asked for.
struct CPreviewOptions {
  CPageOptions page;
  std::vector<std::string> sizes;    ///< "1280x720"; never empty
  std::optional<unsigned> passes;    ///< how many, from page.pass on; without it as outputs need
  std::vector<std::string> outputs;  ///< names of files, with "{size}" and "{pass}"; "-"
  std::string format;                ///< "svg", "png" or "html", of outputs without such an ending
  std::string assets;                ///< directory that image names start from; empty for none
};

/// An entry of a resolved page, as the viewer shows it.
struct CPreviewElement {
  std::size_t id = 0;                 ///< also of its group in the picture: data-id
  std::optional<std::size_t> parent;  ///< id
  std::string kind;                   ///< as kindName() calls it
  std::string label;                  ///< short, for the tree
  std::string pointer;                ///< in the resolved page
  std::string place;                  ///< "FILE:LINE:COLUMN" of the template element
  std::string templatePointer;        ///< in that file
  bool isNull = false;
  bool offScreen = false;               ///< lies outside of the screen, wholly or in part
  Json::Value bounds;                   ///< [x, y, width, height], null without
  Json::Value enclosing;                ///< the bounds it was measured against
  std::vector<std::string> arithmetic;  ///< "x: 32 + 16 = 48"
  Json::Value members;                  ///< resolved, without "Contents"
};

/// One pass of the page on a screen of one size.
struct CPreviewPicture {
  std::string size;  ///< "1280x720"
  unsigned pass = 1;
  std::string svg;  ///< a whole SVG document
  CBox canvas;      ///< what it shows
  std::vector<CPreviewElement> elements;
  std::vector<CFault> faults;
};

/// Everything that a preview shows, whatever the format.
struct CPreviewModel {
  std::string page;                       ///< name of the page
  std::vector<CPreviewPicture> pictures;  ///< for each size its passes
  std::vector<std::string> files;  ///< absolute paths of all that it was made from: page, values,
                                   ///< includes and assets, also those that could not be read
};

/// A file to write.
struct CPreviewFile {
  std::string name;
  std::string content;
};

/// Resolves the page for every size and pass.
/// \throws CFaultyPage when the page has no picture
/// \throws CToolError when a file cannot be read
CPreviewModel makePreview(const CPreviewOptions& options);

/// The files of the preview. With `outdated`, the reason why `model` is not today's page, each
/// picture bears a banner that says OUTDATED and why; `live` makes the HTML reload by itself.
/// \throws CToolError when a picture cannot be rendered
std::vector<CPreviewFile> renderPreview(const CPreviewModel& model, const CPreviewOptions& options,
                                        const std::string& outdated, bool live);

}  // namespace ttr

#endif  // TOOL_PREVIEW_PREVIEW_H
