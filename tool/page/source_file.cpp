#include "page/source_file.h"

#include <json/reader.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <memory>
#include <utility>

#include "text/printable.h"

namespace ttr {
namespace {

/// The faults in the error text of JsonCpp: "* Line 3, Column 7\n  Missing ','\n" for each.
std::vector<CSourceFile::CSyntaxError> readErrors(const std::string& text,
                                                  const std::string& file) {
  std::vector<CSourceFile::CSyntaxError> errors;
  constexpr char head[] = "* Line ";
  for (std::size_t begin = text.find(head); begin != std::string::npos;) {
    const std::size_t next = text.find(head, begin + 1);
    CSourceFile::CSyntaxError error;
    error.place.file = file;
    std::sscanf(text.c_str() + begin, "* Line %zu, Column %zu", &error.place.line,
                &error.place.column);
    const std::size_t reason = std::min(text.find('\n', begin), text.size());
    error.reason = joinedLines(text.substr(reason, next - reason));
    error.reason.erase(0, error.reason.find_first_not_of(' '));
    if (!error.reason.empty() && error.reason.back() == '.') error.reason.pop_back();
    errors.push_back(std::move(error));
    begin = next;
  }
  return errors;
}

/// The offset of the quote that opens the string whose closing quote is at `closing`.
std::size_t openingQuote(const std::string& text, std::size_t closing) {
  std::size_t quote = closing;
  while (quote > 0) {
    quote = text.rfind('"', quote - 1);
    if (quote == std::string::npos) return closing;
    std::size_t backslashes = 0;
    while (backslashes < quote && text[quote - 1 - backslashes] == '\\') ++backslashes;
    if (backslashes % 2 == 0) return quote;
  }
  return closing;
}

bool isSpace(char character) { return std::isspace(static_cast<unsigned char>(character)) != 0; }

/// Where the name before the member's value at `value` begins; `value` when a comment is between.
std::size_t nameBefore(const std::string& text, std::size_t value) {
  std::size_t at = value;
  const auto skipSpace = [&] {
    while (at > 0 && isSpace(text[at - 1])) --at;
  };
  skipSpace();
  if (at == 0 || text[at - 1] != ':') return value;
  --at;
  skipSpace();
  return at > 0 && text[at - 1] == '"' ? openingQuote(text, at - 1) : value;
}

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

}  // namespace

std::string CPlace::Text() const {
  return file + ':' + std::to_string(line) + ':' + std::to_string(column);
}

CSourceFile::CSourceFile(std::string name, std::string text)
    : m_name(std::move(name)), m_text(std::move(text)) {
  m_lineStarts.push_back(0);
  for (std::size_t at = 0; at < m_text.size(); ++at) {
    if (m_text[at] == '\n') m_lineStarts.push_back(at + 1);
  }
  if (m_text.compare(0, byteOrderMark.size(), byteOrderMark) == 0) m_begin = byteOrderMark.size();
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  try {
    const char* begin = m_text.data();
    const char* end = begin + m_text.size();
    if (reader->parse(begin + m_begin, end, &m_document, &errors)) return;
    m_errors = readErrors(errors, m_name);
    for (CSyntaxError& error : m_errors) error.place.column += error.place.line == 1 ? m_begin : 0;
  } catch (const Json::RuntimeError& error) {  // nested too deep
    errors = error.what();
  }
  m_document = Json::Value();
  if (m_errors.empty()) m_errors.push_back({PlaceAt(0), oneLine(errors)});
}

/// A comment begins outside of strings only; in a text that is JSON no other slash stands there.
std::string CSourceFile::TextWithoutComments() const {
  std::string text = m_text;
  if (!m_errors.empty()) return text;
  for (std::size_t at = text.find_first_of("/\""); at < text.size();
       at = text.find_first_of("/\"", at)) {
    if (text[at] == '"') {
      while (++at < text.size() && text[at] != '"') at += text[at] == '\\' ? 1U : 0U;
      ++at;
      continue;
    }
    const bool isBlock = text.compare(at, 2, "/*") == 0;
    const std::size_t last = isBlock ? text.find("*/", at + 2) : text.find_first_of("\r\n", at);
    const std::size_t end = last == std::string::npos ? text.size() : last + (isBlock ? 2 : 0);
    std::replace_if(
        text.begin() + static_cast<std::ptrdiff_t>(at),
        text.begin() + static_cast<std::ptrdiff_t>(end),
        [](char character) { return character != '\n' && character != '\r'; }, ' ');
    at = end;
  }
  return text;
}

CPlace CSourceFile::PlaceAt(std::size_t offset) const {
  const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
  const auto line = static_cast<std::size_t>(next - m_lineStarts.begin());
  return {m_name, line, offset - *std::prev(next) + 1};
}

const Json::Value& CSourceFile::NearestValue(const CJsonPointer& pointer) const {
  CJsonPointer nearest = pointer;
  while (nearest.Find(m_document) == nullptr) nearest = nearest.Parent();
  return *nearest.Find(m_document);
}

CPlace CSourceFile::PlaceOf(const CJsonPointer& pointer) const {
  return PlaceAt(StartOf(NearestValue(pointer)));
}

CPlace CSourceFile::PlaceOfName(const CJsonPointer& pointer) const {
  if (pointer.empty() || pointer.Find(m_document) == nullptr) return PlaceOf(pointer);
  const std::size_t value = StartOf(*pointer.Find(m_document));
  if (!pointer.Parent().Find(m_document)->isObject()) return PlaceAt(value);
  return PlaceAt(nameBefore(m_text, value));
}

std::size_t CSourceFile::StartOf(const Json::Value& value) const {
  return m_begin + static_cast<std::size_t>(std::max<std::ptrdiff_t>(value.getOffsetStart(), 0));
}

std::string_view CSourceFile::WrittenString(const CJsonPointer& pointer) const {
  const Json::Value* value = pointer.Find(m_document);
  if (value == nullptr || !value->isString()) return {};
  const auto length = static_cast<std::size_t>(value->getOffsetLimit() - value->getOffsetStart());
  return std::string_view(m_text).substr(StartOf(*value), length);
}

CPlace CSourceFile::PlaceOfPart(const CJsonPointer& pointer, const std::string& part,
                                std::size_t before) const {
  const std::string_view text = WrittenString(pointer);
  std::size_t found = text.find(part);
  for (; before > 0 && found != std::string_view::npos; --before)
    found = text.find(part, found + 1);
  if (found == std::string_view::npos) return PlaceOf(pointer);
  return PlaceAt(StartOf(*pointer.Find(m_document)) + found);
}

CPlace CSourceFile::PlaceOfLastPart(const CJsonPointer& pointer, const std::string& part) const {
  const std::size_t found = WrittenString(pointer).rfind(part);
  if (found == std::string_view::npos) return PlaceOf(pointer);
  return PlaceAt(StartOf(*pointer.Find(m_document)) + found);
}

}  // namespace ttr
