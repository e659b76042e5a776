#include "preview/preview.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

#include "check/fault_codes.h"
#include "check/fault_search.h"
#include "page/element_tree.h"
#include "page/page_run.h"
#include "preview/assets.h"
#include "preview/bounds_probe.h"
#include "preview/output_name.h"
#include "preview/page_elements.h"
#include "preview/picture.h"
#include "preview/rsvg.h"
#include "preview/viewer_page.h"
#include "text/printable.h"

namespace ttr {
namespace {

namespace fs = std::filesystem;

/// A page that is no JSON has no picture.
void refuseSyntaxErrors(const CSourceFile& page) {
  if (!page.errors().empty()) throw CFaultyPage(syntaxFaults(page));
}

/// The fault that ended a pass in `exception`. `ttr check` has better words for some exceptions,
/// but keeps their code.
CFault causeOf(CPageRunner& page, unsigned pass, const std::string& exception) {
  const std::vector<CFault> faults = findFaults(page, {pass, pass});
  const auto firstThat = [&faults](const auto& condition) {
    return std::find_if(faults.begin(), faults.end(), condition);
  };
  CFault cause;
  cause.code = kindOfException(exception).code;
  cause.level = CFault::levelError;
  cause.message = oneLine(exception);
  cause.place.file = page.pageFile().name();
  auto found = firstThat([&](const CFault& fault) { return fault.message == cause.message; });
  if (found != faults.end()) return *found;
  found = firstThat([&](const CFault& fault) { return fault.code == cause.code; });
  return found == faults.end() ? cause : *found;
}

/// Makes the pictures of one page.
class CPictureMaker {
 public:
  CPictureMaker(CPageRunner& page, CAssets& assets) : m_page(page), m_assets(assets) {}

  CPreviewPicture Make(unsigned pass, bool isOneOfSeveral) {
    const CPageRun run = m_page.Run({}, pass);
    if (run.exception) {
      CFault cause = causeOf(m_page, pass, *run.exception);
      if (isOneOfSeveral) cause.message = "pass " + std::to_string(pass) + ": " + cause.message;
      throw CFaultyPage({cause});
    }
    const CElementNode root = elementTree(m_page, run);
    CPageElements elements = pageElements(m_page, root, probeBounds(m_page, root, pass), m_assets);
    CPreviewPicture picture;
    picture.size = std::to_string(m_page.size().width) + 'x' + std::to_string(m_page.size().height);
    picture.pass = pass;
    elements.scene.name = "s" + picture.size + "p" + std::to_string(pass);
    CPicture drawn = drawPicture(elements.scene);
    picture.svg = std::move(drawn.svg);
    picture.canvas = drawn.canvas;
    picture.elements = std::move(elements.elements);
    picture.faults = faultsOf(picture, run.messages);
    return picture;
  }

 private:
  /// The search takes long, so that pictures that show the same of the template, and whose messages
  /// are the same, share one.
  const std::vector<CFault>& faultsOf(const CPreviewPicture& picture,
                                      std::vector<std::string> messages) {
    std::sort(messages.begin(), messages.end());
    std::string likeness = picture.size;
    for (const std::string& message : messages) likeness += '\n' + message;
    for (const CPreviewElement& element : picture.elements) {
      likeness += '\n' + element.place + (element.isNull ? "-" : "+");
    }
    const auto [known, added] = m_faults.try_emplace(std::move(likeness));
    if (added) known->second = findFaults(m_page, {picture.pass, picture.pass});
    return known->second;
  }

  CPageRunner& m_page;
  CAssets& m_assets;
  std::map<std::string, std::vector<CFault>> m_faults;
};

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

CFaultyPage::CFaultyPage(std::vector<CFault> faults)
    : CToolError(faults.front().place.Text(), faults.front().message),
      m_faults(std::move(faults)) {}

CPreviewModel makePreview(const CPreviewOptions& options) {
  CPreviewModel model;
  model.page = options.page.page;
  model.files = givenFiles(options.page);
  CAssets assets(options.assets);
  CPageRunner page(options.page);
  refuseSyntaxErrors(page.pageFile());
  const unsigned first = options.page.pass;
  const unsigned count = passCount(page, options);
  CPictureMaker pictures(page, assets);
  for (const std::string& size : options.sizes) {
    page.SetSize(parseScreenSize(size));
    for (unsigned pass = 0; pass < count; ++pass) {
      model.pictures.push_back(pictures.Make(first + pass, count > 1));
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
