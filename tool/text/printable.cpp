#include "text/printable.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <sstream>

#include "text/utf8.h"

namespace ttr {
namespace {

constexpr char readerText[] = "* Line ";
constexpr char readerMessage[] = "CTemplateResolver::read:* Line ";

bool beginsWith(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

/// True for what Unicode has and UTF-8 may hold.
bool isCharacter(const CCodePoint& point) {
  const bool surrogate = point.value >= 0xD800 && point.value < 0xE000;
  return point.length > 0 && !surrogate && point.value < 0x110000;
}

/// True for characters that a terminal or a viewer of text obeys, rather than shows.
bool isObeyed(std::uint32_t value) {
  struct CSpan {
    std::uint32_t first;
    std::uint32_t last;
  };
  static constexpr CSpan spans[] = {
      {0x0, 0x1F},        // C0
      {0x7F, 0x9F},       // DEL and C1
      {0x61C, 0x61C},     // direction: mark
      {0x200E, 0x200F},   // direction: marks
      {0x2028, 0x202E},   // line and paragraph separator; direction: embeddings and overrides
      {0x2066, 0x2069}};  // direction: isolates
  return std::any_of(std::begin(spans), std::end(spans), [value](const CSpan& span) {
    return value >= span.first && value <= span.last;
  });
}

std::string hex(std::uint32_t value, unsigned digits) {
  std::string text;
  for (unsigned shift = 4 * digits; shift > 0; shift -= 4) {
    text += "0123456789abcdef"[(value >> (shift - 4)) & 0xFU];
  }
  return text;
}

}  // namespace

std::string printable(const std::string& text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const CCodePoint point = codePointAt(text, at);
    if (!isCharacter(point)) {
      result += "\\x" + hex(static_cast<unsigned char>(text[at]), 2);
      at += 1;
      continue;
    }
    if (isObeyed(point.value)) {
      result += "\\u" + hex(point.value, 4);
    } else {
      result.append(text, at, point.length);
    }
    at += point.length;
  }
  return result;
}

std::string printableMessage(const std::string& message) {
  if (!beginsWith(message, readerMessage)) return printable(message);
  std::string text;
  std::istringstream lines(message);
  for (std::string line; std::getline(lines, line);) {
    text += (text.empty() ? "" : "\n") + printable(line);
  }
  return text;
}

std::string joinedLines(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string oneLine(const std::string& message) {
  const bool ofReader = beginsWith(message, readerText) || beginsWith(message, readerMessage);
  return ofReader ? joinedLines(message) : message;
}

void tell(const std::string& message) { writeStandardError("ttr: " + printable(message) + '\n'); }

void writeStandardError(const std::string& report) { std::cerr << report << std::flush; }

}  // namespace ttr
