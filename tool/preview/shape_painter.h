#ifndef TOOL_PREVIEW_SHAPE_PAINTER_H
#define TOOL_PREVIEW_SHAPE_PAINTER_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "preview/box.h"
#include "preview/picture.h"

namespace ttr {

/// Writes the shapes of one picture as SVG, in the order of drawing.
class CShapePainter {
 public:
  /// `unit` is the width of a thin line; `name` that of the picture.
  CShapePainter(const CBox& canvas, const CBox& screen, std::int64_t unit, std::string name);

  std::string Paint(const CShape& shape);
  /// A container's tag, which stands above all shapes; empty for other shapes.
  std::string Tag(const CShape& shape) const;
  /// `shape` once more as an outline, for one that lies off the screen.
  std::string Alarm(const CShape& shape) const;
  /// What the shapes painted so far refer to.
  std::string Definitions() const;

 private:
  CBox visible(const CBox& box) const;
  std::string outline(const CShape& shape) const;
  std::string stroke(const std::string& colour, const char* opacity, std::int64_t dash,
                     std::int64_t gap, std::int64_t width) const;
  std::string fill(const CShape& shape);
  std::string paintOf(std::uint32_t colour, std::uint32_t thousandths);
  std::string swatches(const CShape& shape);
  std::string contents(const CShape& shape);
  std::string texts(const CShape& shape, const CBox& box) const;
  std::string images(const CShape& shape, const CBox& box);
  std::string image(const CImage& image, const CBox& box);
  std::string placeholder(const CImage& image, const CBox& box) const;
  std::string ink(const CShape& shape, const CBox& box) const;
  std::string rim(const CShape& shape, const CBox& box) const;
  int groundBrightness(const CBox& box) const;
  std::string hatchName(std::uint32_t colour) const;
  std::string hatch(std::uint32_t colour) const;

  CBox m_canvas;
  CBox m_screen;
  std::int64_t m_unit;
  std::string m_name;
  std::vector<const CShape*> m_grounds;  ///< painted boxes that cover what is behind them
  std::set<std::uint32_t> m_hatched;
  std::map<std::string, std::string> m_images;  ///< data URIs and what they are called
};

}  // namespace ttr

#endif  // TOOL_PREVIEW_SHAPE_PAINTER_H
