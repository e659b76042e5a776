// Boxes with what is in them. A box has its first colour; one with texts only has a tint of it, as
// the texts are written in that colour.
#include "preview/shape_painter.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "preview/svg.h"
#include "preview/text_layout.h"
#include "text/xml_text.h"

namespace ttr {
namespace {

/// Outlines by depth: of medium brightness, to be seen on dark and on light grounds.
constexpr std::array<const char*, 6> outlineColours = {"#8fa3bf", "#6ea8fe", "#5fbf9f",
                                                       "#d9a441", "#c792ea", "#e57f84"};
constexpr char containerColour[] = "#a78bfa";
constexpr char alarmColour[] = "#f76707";
constexpr std::uint32_t tint = 130;  ///< thousandths of the colour behind texts
constexpr std::int64_t looseFontSize = 14;

/// The part of a box that is left and right of this share, in hundredths, of its width.
std::pair<CBox, CBox> split(const CBox& box, std::int64_t share) {
  const std::int64_t width = box.width * share / 100;
  return {{box.x, box.y, width, box.height}, {box.x + width, box.y, box.width - width, box.height}};
}

bool isGround(const CShape& shape) {
  return shape.kind == CShape::kindElement && shape.texts.empty() && !shape.colours.empty() &&
         alphaOf(shape.colours[0]) >= 128;
}

}  // namespace

CShapePainter::CShapePainter(const CBox& canvas, const CBox& screen, std::int64_t unit,
                             std::string name)
    : m_canvas(canvas), m_screen(screen), m_unit(unit), m_name(std::move(name)) {}

std::string CShapePainter::Paint(const CShape& shape) {
  if (shape.kind == CShape::kindCell) {
    return "<rect class=\"cell\"" + geometry(visible(shape.box)) + attribute("fill", "none") +
           stroke("#7f8ea3", "0.8", 2, 4, 1) + "/>\n";
  }
  if (shape.kind == CShape::kindText) return "<g class=\"loose\">" + contents(shape) + "</g>\n";
  std::string text = "<g class=\"element\"" + attribute("data-id", std::to_string(shape.id)) +
                     "><rect" + geometry(visible(shape.box)) + fill(shape) + outline(shape) +
                     "/><title>" + xmlText(shape.title) + "</title>" + contents(shape) +
                     swatches(shape) + "</g>\n";
  if (isGround(shape)) m_grounds.push_back(&shape);
  return text;
}

/// `box` as far as it can be seen; edges that cannot stay so. A box far away becomes a small one at
/// the edge of the canvas.
CBox CShapePainter::visible(const CBox& box) const {
  const CBox near = m_canvas.Grown(8 * m_unit);
  const bool apart = box.x > near.Right() || box.Right() < near.x || box.y > near.Bottom() ||
                     box.Bottom() < near.y;
  if (!apart) return clipped(box, near);
  const std::int64_t side = 10 * m_unit;
  return {std::clamp(box.x, m_canvas.x, std::max(m_canvas.x, m_canvas.Right() - side)),
          std::clamp(box.y, m_canvas.y, std::max(m_canvas.y, m_canvas.Bottom() - side)), side,
          side};
}

std::string CShapePainter::stroke(const std::string& colour, const char* opacity, std::int64_t dash,
                                  std::int64_t gap, std::int64_t width) const {
  std::string text = attribute("stroke", colour) + attribute("stroke-opacity", opacity);
  if (width * m_unit != 1) text += attribute("stroke-width", width * m_unit);
  if (dash == 0) return text;
  return text + attribute("stroke-dasharray",
                          std::to_string(dash * m_unit) + ' ' + std::to_string(gap * m_unit));
}

std::string CShapePainter::outline(const CShape& shape) const {
  if (!shape.container.empty()) return stroke(containerColour, "0.9", 7, 4, 2);
  const char* colour = outlineColours[shape.depth % outlineColours.size()];
  if (shape.kind == CShape::kindFrame) return stroke(colour, "0.7", 2, 3, 1);
  return stroke(colour, shape.texts.empty() ? "0.6" : "0.45", 0, 0, 1);
}

std::string CShapePainter::fill(const CShape& shape) {
  if (shape.colours.empty()) return attribute("fill", "#fff") + attribute("fill-opacity", "0");
  return paintOf(shape.colours[0], shape.texts.empty() ? 1000 : tint);
}

std::string CShapePainter::paintOf(std::uint32_t colour, std::uint32_t thousandths) {
  if (alphaOf(colour) == 0) {
    m_hatched.insert(colour);
    return attribute("fill", "url(#" + hatchName(colour) + ')');
  }
  const std::uint32_t opacity = alphaOf(colour) * thousandths / 255;
  const std::string text = attribute("fill", rgbText(colour));
  return opacity > 999 ? text : text + attribute("fill-opacity", fraction(opacity));
}

/// All colours, small, in the lower right corner.
std::string CShapePainter::swatches(const CShape& shape) {
  const CBox box = clipped(shape.box, m_canvas);
  const std::int64_t side = std::clamp<std::int64_t>(box.height / 5, 3, 8) * m_unit;
  const std::int64_t step = side + m_unit;
  const auto count = static_cast<std::int64_t>(shape.colours.size());
  const std::int64_t room = std::min((box.width - 2 * m_unit) / step, count);
  if (room < 1 || box.height < side + 2 * m_unit) return "";
  std::string text;
  std::int64_t x = box.Right() - m_unit - room * step;
  for (std::int64_t index = 0; index < room; ++index, x += step) {
    const CBox swatch{x, box.Bottom() - 2 * m_unit - side, side, side};
    text += "<rect class=\"swatch\"" + geometry(swatch) +
            paintOf(shape.colours[static_cast<std::size_t>(index)], 1000) +
            stroke("#9aa4b2", "0.8", 0, 0, 1) + "/>";
  }
  return text;
}

/// Texts and images, within the part of the box that can be seen.
std::string CShapePainter::contents(const CShape& shape) {
  const CBox box = clipped(shape.box, m_canvas);
  if (box.width < 2 || box.height < 2) return "";
  if (shape.images.empty()) return texts(shape, box);
  if (shape.texts.empty()) return images(shape, box);
  const auto [left, right] = split(box, 65);
  return texts(shape, left) + images(shape, right);
}

std::string CShapePainter::texts(const CShape& shape, const CBox& box) const {
  if (shape.texts.empty()) return "";
  const bool loose = shape.kind == CShape::kindText;
  const std::int64_t padding = std::min<std::int64_t>(6 * m_unit, box.width / 20);
  const CFittedText fit =
      fitted(shape.texts, box.width - 2 * padding, box.height,
             std::min<std::int64_t>(6, box.height), (loose ? looseFontSize : 64) * m_unit);
  const auto count = static_cast<std::int64_t>(fit.lines.size());
  const std::int64_t top =
      loose ? 0 : std::max<std::int64_t>(0, (box.height - count * fit.LineHeight()) / 2);
  // An SVG element of its own cuts off what does not fit. Letters stand at about 95 hundredths of
  // their size below the top of their line.
  std::string text = "<svg" + geometry(box) + '>';
  std::int64_t y = top + fit.fontSize * 95 / 100;
  for (const std::string& line : fit.lines) {
    text += textElement(padding, y, fit.fontSize, ink(shape, box), line, rim(shape, box));
    y += fit.LineHeight();
  }
  return text + "</svg>";
}

std::string CShapePainter::ink(const CShape& shape, const CBox& box) const {
  const bool isOwn = !shape.colours.empty() && alphaOf(shape.colours[0]) > 0;
  if (isOwn) return rgbText(shape.colours[0]);
  return groundBrightness(box) > 140 ? "#20242a" : "#e8ebf0";
}

/// The rim of a text that would not be seen on a ground of the same brightness.
std::string CShapePainter::rim(const CShape& shape, const CBox& box) const {
  if (shape.colours.empty() || alphaOf(shape.colours[0]) == 0) return "";
  const int ground = groundBrightness(box);
  if (std::abs(brightness(shape.colours[0]) - ground) > 24) return "";
  return attribute("stroke", ground > 140 ? "#000" : "#fff") +
         " stroke-opacity=\"0.55\" paint-order=\"stroke\"";
}

/// The brightness of what lies behind the centre of `box`.
int CShapePainter::groundBrightness(const CBox& box) const {
  const std::int64_t x = box.x + box.width / 2;
  const std::int64_t y = box.y + box.height / 2;
  for (auto ground = m_grounds.rbegin(); ground != m_grounds.rend(); ++ground) {
    if ((*ground)->box.Contains(x, y)) return brightness((*ground)->colours[0]);
  }
  return m_screen.Contains(x, y) ? 0 : 255;
}

std::string CShapePainter::images(const CShape& shape, const CBox& box) {
  std::string text;
  CBox rest = box;
  for (std::size_t left = shape.images.size(); left > 0; --left) {
    const auto [part, others] = split(rest, 100 / static_cast<std::int64_t>(left));
    text += image(*shape.images[shape.images.size() - left], part);
    rest = others;
  }
  return text;
}

std::string CShapePainter::image(const CImage& image, const CBox& box) {
  if (image.dataUri.empty()) return placeholder(image, box);
  const std::string next = m_name + "-image-" + std::to_string(m_images.size());
  const std::string& name = m_images.emplace(image.dataUri, next).first->second;
  return "<svg" + geometry(box) + "><use" + attribute("href", '#' + name) + "/></svg>";
}

/// A small landscape, and the name below it where there is room.
std::string CShapePainter::placeholder(const CImage& image, const CBox& box) const {
  const std::int64_t fontSize = std::clamp<std::int64_t>(box.height / 7, 8 * m_unit, 13 * m_unit);
  const bool named = box.height >= 4 * fontSize && box.width >= 6 * fontSize;
  CBox icon = box;
  if (named) icon.height -= fontSize * 3 / 2;
  std::string text = "<rect" + geometry(box) + " fill=\"#94a3b8\" fill-opacity=\"0.16\"/><svg" +
                     geometry(icon) +
                     " viewBox=\"0 0 24 24\"><g fill=\"#94a3b8\"><circle cx=\"16.5\" cy=\"7.5\" "
                     "r=\"2.2\"/><path d=\"M2 20 9 9l5 7.5 2.5-3.5L22 20z\"/></g></svg>";
  if (!named) return text;
  const std::size_t length = charactersIn(box.width - fontSize / 2, fontSize);
  std::string name = image.name;
  if (name.size() > length) name.erase(0, name.rfind('/') + 1);  // the directories first
  if (!image.reason.empty()) name += ": " + image.reason;
  return text + textElement(box.x + box.width / 2, box.Bottom() - fontSize / 2, fontSize, "#94a3b8",
                            shortened(name, length), attribute("text-anchor", "middle"));
}

std::string CShapePainter::Tag(const CShape& shape) const {
  if (shape.container.empty()) return "";
  const std::int64_t fontSize = 10 * m_unit;
  const auto letters = static_cast<std::int64_t>(characters(shape.container).size());
  CBox tag{0, 0, letters * fontSize * 60 / 100 + fontSize, fontSize * 14 / 10};
  const CBox box = visible(shape.box);
  // A container inside of another one often begins where that begins: its tag is at the bottom.
  tag.x = box.x + fontSize / 2;
  tag.y = (shape.isInner ? box.Bottom() : box.y) - tag.height / 2;
  tag.x = std::clamp(tag.x, m_canvas.x, std::max(m_canvas.x, m_canvas.Right() - tag.width));
  tag.y = std::clamp(tag.y, m_canvas.y, std::max(m_canvas.y, m_canvas.Bottom() - tag.height));
  return "<g class=\"tag\" pointer-events=\"none\"><rect" + geometry(tag) +
         attribute("rx", tag.height / 2) + attribute("fill", "#6d4fd0") + "/>" +
         textElement(tag.x + tag.width / 2, tag.y + fontSize * 105 / 100, fontSize, "#fff",
                     shape.container, attribute("text-anchor", "middle")) +
         "</g>\n";
}

std::string CShapePainter::Alarm(const CShape& shape) const {
  return "<rect class=\"off-screen\"" + geometry(visible(shape.box)) + attribute("fill", "none") +
         stroke(alarmColour, "0.9", 6, 3, 1) + " pointer-events=\"none\"/>\n";
}

std::string CShapePainter::Definitions() const {
  std::string text;
  for (const std::uint32_t colour : m_hatched) text += hatch(colour);
  // An image is as large as the SVG element that uses it. No symbol: some programs that draw SVG
  // take the percentages in it of the whole picture.
  for (const auto& [dataUri, name] : m_images) {
    text += "<image" + attribute("id", name) + " width=\"100%\" height=\"100%\"" +
            attribute("href", dataUri) + "/>\n";
  }
  return text;
}

std::string CShapePainter::hatchName(std::uint32_t colour) const {
  return m_name + "-hatch-" + rgbText(colour).substr(1);
}

/// Diagonal lines in a colour that has no alpha, and so would not be seen at all.
std::string CShapePainter::hatch(std::uint32_t colour) const {
  const std::string step = std::to_string(8 * m_unit);
  const std::string side = attribute("width", step) + attribute("height", step);
  const std::string colourText = attribute("fill", rgbText(colour));
  return "<pattern" + attribute("id", hatchName(colour)) + side +
         " patternUnits=\"userSpaceOnUse\" patternTransform=\"rotate(45)\"><rect" + side +
         " fill=\"#7f8ea3\" fill-opacity=\"0.35\"/><rect" + attribute("width", 3 * m_unit) +
         attribute("height", step) + colourText + "/></pattern>\n";
}

}  // namespace ttr
