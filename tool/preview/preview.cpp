#include "preview/preview.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "page/fault_finder.h"
#include "page/page_run.h"
#include "page/pass_record.h"
#include "page/record_faults.h"
#include "preview/assets.h"
#include "preview/output_name.h"
#include "preview/page_elements.h"
#include "preview/picture.h"
#include "preview/rsvg.h"
#include "preview/viewer_page.h"

namespace ttr {
namespace {

namespace fs = std::filesystem;

/// A page that is no JSON has no picture.
void refuseSyntaxErrors(const CSourceFile& page) {
  if (!page.errors().empty()) throw CFaultyPage(syntaxFaults(page));
}

/// Makes the pictures of one page.
class CPictureMaker {
 public:
  CPictureMaker(CPageRunner& page, std::string valuesFile, CAssets& assets)
      : m_page(page), m_valuesFile(std::move(valuesFile)), m_assets(assets), m_finder(page) {}

  CPreviewPicture Make(unsigned pass, bool isOneOfSeveral) {
    const CPassRecord record = m_page.Record(pass);
    m_finder.Add(record);
    CPreviewPicture picture;
    picture.faults = m_finder.Take();
    if (record.End() != nullptr) {
      CFault cause = causeOf(*record.End(), picture.faults);
      if (isOneOfSeveral) cause.message = "pass " + std::to_string(pass) + ": " + cause.message;
      throw CFaultyPage({cause});
    }
    CPageElements elements = pageElements(m_page, record, m_valuesFile, m_ids, m_assets);
    picture.size = std::to_string(m_page.size().width) + 'x' + std::to_string(m_page.size().height);
    picture.pass = pass;
    elements.scene.name = 's' + picture.size;
    CPicture drawn = drawPicture(elements.scene);
    picture.svg = std::move(drawn.svg);
    picture.canvas = drawn.canvas;
    picture.elements = std::move(elements.elements);
    return picture;
  }

 private:
  /// What ended a pass, in the words of its faults: they may have better ones.
  CFault causeOf(const CPassEnd& end, const std::vector<CFault>& faults) {
    const CFault cause = faultOfEnd(m_page, end);
    const auto isCause = [&](const CFault& fault) {
      return fault.code == cause.code && fault.place.Text() == cause.place.Text();
    };
    const auto found = std::find_if(faults.begin(), faults.end(), isCause);
    return found == faults.end() ? cause : *found;
  }

  CPageRunner& m_page;
  std::string m_valuesFile;
  CAssets& m_assets;
  CFaultFinder m_finder;
  CElementIds m_ids;
};

/// How many passes the outputs show.
unsigned passCount(CPageRunner& page, const CPreviewOptions& options) {
  if (options.passes) return *options.passes;
  const bool several =
      std::any_of(options.outputs.begin(), options.outputs.end(), [&](const std::string& name) {
        return previewFormat(name, options.format) == formatHtml || hasPlaceholder(name, "{pass}");
      });
  if (!several && !options.outputs.empty()) return 1;
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
CPreviewModel emptyModel(const CPreviewOptions& options) {
  CPreviewModel model;
  for (const std::string& size : options.sizes) {
    CScene scene;
    scene.size = parseScreenSize(size);
    const CPicture drawn = drawPicture(scene);
    model.Add({size, options.page.pass, drawn.svg, drawn.canvas, {}, {}});
  }
  return model;
}

/// Adds the pictures that go to the output `name`: all that its placeholders tell apart.
void addPictures(const CPreviewModel& model, const std::string& name, ePreviewFormat format,
                 const std::string& outdated, std::vector<CPreviewFile>& files) {
  const CKeptPicture& first = model.pictures.front();
  for (const CKeptPicture& picture : model.pictures) {
    const bool shown = (hasPlaceholder(name, "{size}") || picture.size == first.size) &&
                       (hasPlaceholder(name, "{pass}") || picture.pass == first.pass);
    if (!shown) continue;
    std::string svg = model.Svg(picture);
    if (!outdated.empty()) svg = withBanner({svg, picture.canvas}, outdated);
    files.push_back({outputName(name, picture.size, picture.pass),
                     format == formatPng ? pngFromSvg(svg) : std::move(svg)});
  }
}

}  // namespace

CFaultyPage::CFaultyPage(std::vector<CFault> faults)
    : CToolError(faults.front().place.Text(), faults.front().message),
      m_faults(std::move(faults)) {}

CPreviewModel makePreview(const CPreviewOptions& options) {
  CPreviewModel model;
  model.page = options.page.page;
  model.faults.AddFile(model.page);
  model.files = givenFiles(options.page);
  CAssets assets(options.assets);
  const std::string values = valuesFile(options.page);
  CPageRunner page(options.page);
  refuseSyntaxErrors(page.pageFile());
  const unsigned first = options.page.pass;
  const unsigned count = passCount(page, options);
  CPictureMaker pictures(page, values, assets);
  for (const std::string& size : options.sizes) {
    page.SetSize(parseScreenSize(size));
    for (unsigned pass = 0; pass < count; ++pass) {
      model.Add(pictures.Make(first + pass, count > 1));
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
  const CPreviewModel empty = emptyModel(options);
  const CPreviewModel& shown = model.pictures.empty() ? empty : model;
  std::vector<CPreviewFile> files;
  for (const std::string& name : options.outputs) {
    const ePreviewFormat format = previewFormat(name, options.format);
    if (format == formatHtml) {
      files.push_back({name, viewerPage(model, outdated, live)});
    } else {
      addPictures(shown, name, format, outdated, files);
    }
  }
  return files;
}

}  // namespace ttr
