// Test: tests/tool/preview/preview_test.cpp
#include "preview/preview.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "page/element_tree.h"
#include "page/page_run.h"
#include "preview/assets.h"
#include "preview/bounds_probe.h"
#include "preview/output_name.h"
#include "preview/page_elements.h"
#include "preview/picture.h"
#include "preview/rsvg.h"
#include "preview/viewer_page.h"
#include "tool_error.h"

namespace ttr {
namespace {

namespace fs = std::filesystem;

/// A page that is no JSON has no picture.
void refuseSyntaxErrors(const CSourceFile& page) {
  if (page.errors().empty()) return;
  const CSourceFile::CSyntaxError& error = page.errors().front();
  throw CToolError(error.place.Text(), error.reason);
}

/// Ends the preview with the place that the exception of a pass comes from.
[[noreturn]] void refuseException(CPageRunner& page, unsigned pass, const std::string& exception) {
  for (const CFault& fault : findFaults(page, {pass, pass})) {
    if (fault.level == CFault::levelError && fault.message.find(exception) != std::string::npos) {
      throw CToolError(fault.place.Text(), fault.message);
    }
  }
  throw CToolError(page.pageFile().name(), exception);
}

CPreviewPicture makePicture(CPageRunner& page, unsigned pass, CAssets& assets) {
  const CPageRun run = page.Run({}, pass);
  if (run.exception) refuseException(page, pass, *run.exception);
  const CElementNode root = elementTree(page, run);
  CPageElements elements = pageElements(page, root, probeBounds(page, root, pass), assets);
  CPreviewPicture picture;
  picture.size = std::to_string(page.size().width) + 'x' + std::to_string(page.size().height);
  picture.pass = pass;
  elements.scene.name = "s" + picture.size + "p" + std::to_string(pass);
  CPicture drawn = drawPicture(elements.scene);
  picture.svg = std::move(drawn.svg);
  picture.canvas = drawn.canvas;
  picture.elements = std::move(elements.elements);
  picture.faults = findFaults(page, {pass, pass});
  return picture;
}

/// How many passes the outputs show.
unsigned passCount(CPageRunner& page, const CPreviewOptions& options) {
  if (options.passes) return *options.passes;
  const bool several =
      std::any_of(options.outputs.begin(), options.outputs.end(), [&](const std::string& name) {
        return previewFormat(name, options.format) == formatHtml || hasPlaceholder(name, "{pass}");
      });
  if (!several && !options.outputs.empty()) return 1;
  page.Run({}, options.page.pass);  // then the included files are known
  return page.PassesUntilRepeat();
}

/// The page and its values; where these may appear when there are none.
std::vector<std::string> givenFiles(const CPageOptions& options) {
  std::vector<std::string> files;
  if (options.page != "-") files.push_back(fs::absolute(options.page).string());
  if (!options.values.empty()) {
    if (options.values != "-") files.push_back(fs::absolute(options.values).string());
  } else if (options.page != "-") {
    const fs::path page = fs::absolute(options.page);
    files.push_back((page.parent_path() / (page.stem().string() + ".values.json")).string());
    files.push_back((page.parent_path() / "values.json").string());
  }
  return files;
}

/// What stands in for the pictures of a page that never had any.
std::vector<CPreviewPicture> emptyPictures(const CPreviewOptions& options) {
  std::vector<CPreviewPicture> pictures;
  for (const std::string& size : options.sizes) {
    CScene scene;
    scene.size = parseScreenSize(size);
    const CPicture drawn = drawPicture(scene);
    CPreviewPicture picture;
    picture.size = size;
    picture.pass = options.page.pass;
    picture.svg = drawn.svg;
    picture.canvas = drawn.canvas;
    pictures.push_back(std::move(picture));
  }
  return pictures;
}

/// Adds the pictures that go to the output `name`: all that its placeholders tell apart.
void addPictures(const std::vector<CPreviewPicture>& pictures, const std::string& name,
                 ePreviewFormat format, const std::string& outdated,
                 std::vector<CPreviewFile>& files) {
  for (const CPreviewPicture& picture : pictures) {
    const bool shown = (hasPlaceholder(name, "{size}") || picture.size == pictures.front().size) &&
                       (hasPlaceholder(name, "{pass}") || picture.pass == pictures.front().pass);
    if (!shown) continue;
    std::string svg = picture.svg;
    if (!outdated.empty()) svg = withBanner({picture.svg, picture.canvas}, outdated);
    files.push_back({outputName(name, picture.size, picture.pass),
                     format == formatPng ? pngFromSvg(svg) : std::move(svg)});
  }
}

}  // namespace

CPreviewModel makePreview(const CPreviewOptions& options) {
  CPreviewModel model;
  model.page = options.page.page;
  model.files = givenFiles(options.page);
  CAssets assets(options.assets);
  CPageRunner page(options.page);
  refuseSyntaxErrors(page.pageFile());
  const unsigned first = options.page.pass;
  const unsigned count = passCount(page, options);
  for (const std::string& size : options.sizes) {
    page.SetSize(parseScreenSize(size));
    for (unsigned pass = 0; pass < count; ++pass) {
      model.pictures.push_back(makePicture(page, first + pass, assets));
    }
  }
  for (const std::string& name : page.includedFiles()) {
    model.files.push_back(fs::absolute(name).string());
  }
  model.files.insert(model.files.end(), assets.paths().begin(), assets.paths().end());
  return model;
}

std::vector<CPreviewFile> renderPreview(const CPreviewModel& model, const CPreviewOptions& options,
                                        const std::string& outdated, bool live) {
  const std::vector<CPreviewPicture> pictures =
      model.pictures.empty() ? emptyPictures(options) : model.pictures;
  std::vector<CPreviewFile> files;
  for (const std::string& name : options.outputs) {
    const ePreviewFormat format = previewFormat(name, options.format);
    if (format == formatHtml) {
      files.push_back({name, viewerPage(model, outdated, live)});
    } else {
      addPictures(pictures, name, format, outdated, files);
    }
  }
  return files;
}

}  // namespace ttr
