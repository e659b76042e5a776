#include "preview/picture_notes.h"

#include <algorithm>
#include <cstddef>

#include "preview/svg.h"
#include "preview/text_layout.h"

namespace ttr {
namespace {

constexpr std::size_t mostLines = 30;  ///< of each list
constexpr std::size_t mostReasonLines = 8;
constexpr std::int64_t leastWidth = 360;

/// `lines`, but for a number in the place of those that are too many.
std::vector<std::string> shownLines(const std::vector<std::string>& lines) {
  if (lines.size() <= mostLines) return lines;
  std::vector<std::string> shown(lines.begin(), lines.begin() + mostLines);
  shown.push_back("and " + std::to_string(lines.size() - mostLines) + " more");
  return shown;
}

}  // namespace

CPanel notesPanel(const std::vector<CNotes>& notes, const CBox& canvas) {
  if (notes.empty()) return {"", {canvas.x, canvas.Bottom(), 0, 0}};
  const std::int64_t width = std::max(canvas.width, leastWidth);
  const std::int64_t fontSize = std::max<std::int64_t>(10, width / 100);
  const std::int64_t step = fontSize * 16 / 10;
  const std::int64_t left = canvas.x + fontSize;
  const std::size_t length = charactersIn(width - 2 * fontSize, fontSize);
  std::int64_t y = canvas.Bottom() + fontSize * 2;
  std::string text;
  for (const CNotes& list : notes) {
    text += textElement(left, y, fontSize, "#1f2733", shortened(list.heading, length),
                        attribute("font-weight", "bold")) +
            '\n';
    for (const std::string& line : shownLines(list.lines)) {
      y += step;
      text += textElement(left, y, fontSize, "#4a5566", shortened(line, length)) + '\n';
    }
    y += step * 3 / 2;
  }
  const CBox box{canvas.x, canvas.Bottom(), width, y - step / 2 - canvas.Bottom()};
  return {"<g class=\"notes\"><rect" + geometry(box) + attribute("fill", "#f4f5f7") + "/>\n" +
              text + "</g>\n",
          box};
}

CPanel outdatedBanner(const std::string& reason, const CBox& canvas) {
  const std::int64_t fontSize =
      std::clamp<std::int64_t>(canvas.width / 45, 10, canvas.width / 12 + 10);
  const std::size_t length = charactersIn(canvas.width - 2 * fontSize, fontSize);
  std::vector<std::string> lines = wrapped(reason, length);
  if (lines.size() > mostReasonLines) {
    lines.resize(mostReasonLines);
    lines.back() = shortened(lines.back() + "……", length);
  }
  std::int64_t y = canvas.y + fontSize * 2;
  std::string text = textElement(canvas.x + fontSize, y, fontSize * 13 / 10, "#fff", "OUTDATED",
                                 attribute("font-weight", "bold"));
  for (const std::string& line : lines) {
    y += fontSize * 14 / 10;
    text += textElement(canvas.x + fontSize, y, fontSize, "#fff", line);
  }
  const CBox box{canvas.x, canvas.y, canvas.width, y + fontSize - canvas.y};
  return {"<g class=\"outdated\"><rect" + geometry(box) + attribute("fill", "#b42318") +
              attribute("fill-opacity", "0.94") + "/>" + text + "</g>\n",
          box};
}

}  // namespace ttr
