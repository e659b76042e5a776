#ifndef TOOL_PREVIEW_PREVIEW_H
#define TOOL_PREVIEW_PREVIEW_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "page/explanation.h"
#include "page/fault.h"
#include "page/fault_list.h"
#include "page/page_options.h"
#include "preview/box.h"
#include "preview/text_pool.h"
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
  std::size_t id = 0;                 ///< the same in all pictures; also of its group: data-id
  std::optional<std::size_t> parent;  ///< id
  std::string kind;                   ///< as kindName() calls it
  std::string label;                  ///< short, for the tree
  std::string pointer;                ///< in the resolved page
  std::string place;                  ///< "FILE:LINE:COLUMN" of the template element
  std::string templatePointer;        ///< in that file
  bool isNull = false;
  bool offScreen = false;                     ///< lies outside of the screen, wholly or in part
  Json::Value bounds;                         ///< [x, y, width, height], null without
  Json::Value enclosing;                      ///< the bounds it was measured against
  std::vector<CExplanationLine> explanation;  ///< as `ttr explain` has it, without the place
  Json::Value members;                        ///< resolved, without "Contents"
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

/// A picture as the model keeps it, in runs of the model's texts.
struct CKeptPicture {
  std::string size;
  unsigned pass = 1;
  CBox canvas;
  CTextPool::CRuns lines;
  CTextPool::CRuns elements;
  CTextPool::CRuns diagnostics;
};

/// Everything that a preview shows, whatever the format. What pictures have in common is kept once:
/// of a page with many passes there is one, and what is different in the others.
struct CPreviewModel {
  std::string page;                    ///< name of the page
  CTextPool lines;                     ///< of the pictures' SVG
  CTextPool elements;                  ///< as JSON, for the viewer
  CTextPool diagnostics;               ///< the same, of the pictures' faults
  std::vector<CKeptPicture> pictures;  ///< for each size its passes
  CFaultList faults;                   ///< of all pictures
  std::vector<std::string> files;  ///< absolute paths of all that it was made from: page, values,
                                   ///< includes and assets, also those that could not be read

  void Add(const CPreviewPicture& picture);
  std::string Svg(const CKeptPicture& picture) const;
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
