#include "diff/difference_text.h"

#include <json/writer.h>

#include <cstddef>

#include "text/wording.h"

namespace ttr {
namespace {

constexpr std::size_t maximumLabel = 40;  ///< bytes

std::string sizeText(const Json::Value& size) {
  return size[0].asString() + 'x' + size[1].asString();
}

std::string movedText(const CDifference& move) {
  std::string text = "moved by (" + std::to_string(movedBy(move, 0)) + ", " +
                     std::to_string(movedBy(move, 1)) + ')';
  if (move.along > 0) {
    text += ", with " + counted(move.along, "element") + " inside";
  }
  return text;
}

std::string memberText(const CDifference& change) {
  if (!change.from) return change.member + " added: " + jsonText(*change.to);
  if (!change.to) return change.member + " removed: " + jsonText(*change.from);
  return change.member + " changed from " + jsonText(*change.from) + " to " + jsonText(*change.to);
}

std::string colourChangeText(const CDifference& change) {
  if (!change.from) return "colour added: " + change.to->asString();
  if (!change.to) return "colour removed: " + change.from->asString();
  return "colour changed from " + change.from->asString() + " to " + change.to->asString();
}

/// At most `maximumLabel` bytes of `text`, cut between two characters of UTF-8.
std::string shortened(const std::string& text) {
  if (text.size() <= maximumLabel) return text;
  std::size_t end = maximumLabel;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return text.substr(0, end) + "...";
}

}  // namespace

std::string changeText(const CDifference& difference) {
  switch (difference.kind) {
    case CDifference::kindMoved:
      return movedText(difference);
    case CDifference::kindResized:
      return "resized from " + sizeText(*difference.from) + " to " + sizeText(*difference.to);
    case CDifference::kindColour:
      return colourChangeText(difference) + " (" + difference.member + ')';
    case CDifference::kindText:
      return "text changed from " + jsonText(*difference.from) + " to " + jsonText(*difference.to);
    case CDifference::kindMember:
      return memberText(difference);
    case CDifference::kindAdded:
      return "added";
    case CDifference::kindRemoved:
      return "removed";
    case CDifference::kindBecameNull:
      return "became null";
    case CDifference::kindNoLongerNull:
      return "no longer null";
    case CDifference::kindRenumbered:
      break;
  }
  return "containers have other numbers";
}

std::string entryText(const CDifference& difference) {
  const CJsonPointer& pointer = difference.after ? *difference.after : *difference.before;
  const std::string text = pointer.empty() ? "document" : pointer.Text();
  return difference.label.empty() ? text : text + ' ' + jsonText(shortened(difference.label));
}

const char* kindName(CDifference::eKind kind) {
  switch (kind) {
    case CDifference::kindMoved:
      return "moved";
    case CDifference::kindResized:
      return "resized";
    case CDifference::kindColour:
      return "colour";
    case CDifference::kindText:
      return "text";
    case CDifference::kindMember:
      return "member";
    case CDifference::kindAdded:
      return "added";
    case CDifference::kindRemoved:
      return "removed";
    case CDifference::kindBecameNull:
      return "became-null";
    case CDifference::kindNoLongerNull:
      return "no-longer-null";
    case CDifference::kindRenumbered:
      break;
  }
  return "renumbered";
}

std::string jsonText(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["emitUTF8"] = true;
  return Json::writeString(writer, value);
}

}  // namespace ttr
