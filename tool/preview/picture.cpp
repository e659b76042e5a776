// A resolved page as an SVG document: the screen, the shapes on it, the margin around it, and what
// has no place in the picture below it.
#include "preview/picture.h"

#include <algorithm>

#include "preview/picture_notes.h"
#include "preview/shape_painter.h"
#include "preview/svg.h"

namespace ttr {
namespace {

constexpr std::int64_t largestSide = 4096;  ///< of a picture, in pixels
constexpr char svgEnd[] = "</svg>\n";

CBox screenOf(CScreenSize size) { return {0, 0, size.width, size.height}; }

/// The screen and what lies around it, no further away than half a screen.
CBox canvasFor(const CScene& scene) {
  const std::int64_t width = scene.size.width;
  const std::int64_t height = scene.size.height;
  std::int64_t left = 0;
  std::int64_t top = 0;
  std::int64_t right = width;
  std::int64_t bottom = height;
  for (const CShape& shape : scene.shapes) {
    left = std::min(left, shape.box.x);
    top = std::min(top, shape.box.y);
    right = std::max({right, shape.box.x, shape.box.Right()});
    bottom = std::max({bottom, shape.box.y, shape.box.Bottom()});
  }
  const auto margin = [](std::int64_t excess, std::int64_t side) {
    return excess > 0 ? std::min(excess + side / 40 + 8, side / 2 + 8) : 0;
  };
  CBox canvas{-margin(-left, width), -margin(-top, height), 0, 0};
  canvas.width = width + margin(right - width, width) - canvas.x;
  canvas.height = height + margin(bottom - height, height) - canvas.y;
  return canvas;
}

std::string head(const CBox& all) {
  const std::int64_t side = std::max(all.width, all.height);
  const auto pixels = [&](std::int64_t length) {
    return side <= largestSide ? length : std::max<std::int64_t>(1, length * largestSide / side);
  };
  const std::string viewBox = std::to_string(all.x) + ' ' + std::to_string(all.y) + ' ' +
                              std::to_string(all.width) + ' ' + std::to_string(all.height);
  return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", pixels(all.width)) +
         attribute("height", pixels(all.height)) + attribute("viewBox", viewBox) +
         " font-family=\"'DejaVu Sans', Verdana, Arial, sans-serif\">\n";
}

std::string ground(const CBox& all, const CBox& screen) {
  return "<rect class=\"ground\"" + geometry(all) + attribute("fill", "#dfe3e9") +
         "/>\n<rect class=\"screen\"" + geometry(screen) + attribute("fill", "#14171c") + "/>\n";
}

std::string outsideHatch(const std::string& name, std::int64_t unit) {
  const std::string step = std::to_string(10 * unit);
  const std::string side = attribute("width", step) + attribute("height", step);
  return "<pattern" + attribute("id", name) + side +
         " patternUnits=\"userSpaceOnUse\" patternTransform=\"rotate(45)\"><rect" + side +
         " fill=\"#e6e9ee\" fill-opacity=\"0.5\"/><rect" + attribute("width", unit) +
         attribute("height", step) + " fill=\"#8d97a5\" fill-opacity=\"0.7\"/></pattern>\n";
}

/// Everything of `canvas` but `screen`.
std::string outside(const CBox& canvas, const CBox& screen, const std::string& hatch) {
  const auto outline = [](const CBox& box) {
    return 'M' + std::to_string(box.x) + ' ' + std::to_string(box.y) + 'H' +
           std::to_string(box.Right()) + 'V' + std::to_string(box.Bottom()) + 'H' +
           std::to_string(box.x) + 'z';
  };
  return "<path class=\"outside\"" + attribute("d", outline(canvas) + outline(screen)) +
         attribute("fill-rule", "evenodd") + attribute("fill", "url(#" + hatch + ')') +
         " pointer-events=\"none\"/>\n";
}

}  // namespace

bool isOffScreen(const CBox& box, CScreenSize size) { return !box.IsInside(screenOf(size)); }

CPicture drawPicture(const CScene& scene) {
  const CBox screen = screenOf(scene.size);
  const CBox canvas = canvasFor(scene);
  const std::int64_t unit = std::max<std::int64_t>(1, std::max(canvas.width, canvas.height) / 2500);
  CShapePainter painter(canvas, screen, unit, scene.name);
  std::string shapes;
  for (const CShape& shape : scene.shapes) shapes += painter.Paint(shape);
  std::string definitions = painter.Definitions();
  if (!(canvas == screen)) {
    const std::string hatch = scene.name + "-outside";
    definitions += outsideHatch(hatch, unit);
    shapes += outside(canvas, screen, hatch);
  }
  for (const CShape& shape : scene.shapes) {
    const bool hasBox = shape.kind == CShape::kindElement || shape.kind == CShape::kindFrame;
    if (hasBox && isOffScreen(shape.box, scene.size)) shapes += painter.Alarm(shape);
  }
  for (const CShape& shape : scene.shapes) shapes += painter.Tag(shape);
  const CPanel notes = notesPanel(scene.notes, canvas);
  const CBox all{canvas.x, canvas.y, std::max(canvas.width, notes.box.width),
                 canvas.height + notes.box.height};
  if (!definitions.empty()) definitions = "<defs>\n" + definitions + "</defs>\n";
  return {head(all) + definitions + ground(all, screen) + shapes + notes.svg + svgEnd, all};
}

std::string withBanner(const CPicture& picture, const std::string& reason) {
  std::string svg = picture.svg;
  svg.insert(svg.rfind(svgEnd), outdatedBanner(reason, picture.canvas).svg);
  return svg;
}

}  // namespace ttr
