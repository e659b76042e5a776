#ifndef TOOL_PREVIEW_PICTURE_H
#define TOOL_PREVIEW_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "page/page_host.h"
#include "preview/assets.h"
#include "preview/box.h"

namespace ttr {

/// Something that a picture shows.
struct CShape {
  enum eKind {
    kindElement,  ///< a box with colours and contents
    kindFrame,    ///< the bounds of an element that was replaced by its contents
    kindCell,     ///< a cell of a grid
    kindText,     ///< contents without a box of their own, in the box around them
  };

  eKind kind = kindElement;
  std::size_t id = 0;                  ///< of the element; a cell and a text have none
  CBox box;                            ///< no size is negative
  std::size_t depth = 0;               ///< number of boxes around it
  std::vector<std::uint32_t> colours;  ///< colour words
  std::vector<std::string> texts;
  std::vector<const CImage*> images;
  std::string container;  ///< how the tag of a container reads; empty for others
  bool isInner = false;   ///< a container inside of another one
  std::string title;      ///< shown when the mouse rests on it
};

/// A list below the picture.
struct CNotes {
  std::string heading;
  std::vector<std::string> lines;
};

/// What a picture shows, shapes in the order of drawing.
struct CScene {
  CScreenSize size;
  std::string name;  ///< of the picture, unlike those of other pictures in the same document
  std::vector<CShape> shapes;
  std::vector<CNotes> notes;
};

struct CPicture {
  std::string svg;
  CBox canvas;  ///< all that is shown, notes included
};

/// True when `box` lies outside of the screen, wholly or in part.
bool isOffScreen(const CBox& box, CScreenSize size);

/// `scene` as an SVG document, one unit of the screen to a pixel unless that makes it huge. Around
/// the screen there is a margin for what lies outside, of half a screen at most.
CPicture drawPicture(const CScene& scene);

/// `picture` under a banner that says OUTDATED and `reason`.
std::string withBanner(const CPicture& picture, const std::string& reason);

}  // namespace ttr

#endif  // TOOL_PREVIEW_PICTURE_H
