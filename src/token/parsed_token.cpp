// The section machine that takes a token body apart: text in, CParsedToken out.
//
// A segment is stored by the section it stands in; then the delimiter that ended it chooses the
// next section. The grammar has no errors: what has no place is dropped.
#include "TokenTemplateResolver/parsed_token.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace {

/// The set of sections in which `character` ends a segment.
std::int32_t sectionsEndedBy(char character) {
  switch (character) {
    case '.':
      return sectionName | sectionIndex | sectionOperand;
    case '[':
      return sectionName | sectionArgument | sectionOperand;
    case ']':
      return sectionIndex;
    case ':':
      return sectionName | sectionIndexEnd | sectionOperand;
    case '+':
    case '-':
    case '*':
    case '/':
      return sectionName | sectionIndexEnd;
    case '\n':
      return sectionCount;
    default:
      return 0;
  }
}

void enterSection(CParsedToken& token, eTokenSection section) {
  token.section = section;
  token.sectionsSeen |= section;
}

/// A name that ends in "#" asks for a count; the section changes before the delimiter that ended
/// the name is applied. A lone "#" leaves an empty name part, deliberately.
void storeName(CParsedToken& token, std::string_view segment) {
  const bool counted = segment.back() == '#';
  if (counted) {
    segment.remove_suffix(1);
    enterSection(token, sectionCount);
  }
  token.nameParts.emplace_back(segment);
}

void storeSegment(CParsedToken& token, std::string_view segment) {
  if (segment.empty()) return;
  switch (token.section) {
    case sectionName:
      return storeName(token, segment);
    case sectionIndex:
      token.indexParts.emplace_back(segment);
      return;
    case sectionArgument:
      token.argument = segment;
      return;
    case sectionOperand:
      token.operandParts.emplace_back(segment);
      return;
    default:
      return;  // after "]" and after "#" nothing is kept
  }
}

void applyDelimiter(CParsedToken& token, char delimiter) {
  switch (delimiter) {
    case '+':
    case '-':
    case '*':
    case '/':
      token.operation = delimiter;
      return enterSection(token, sectionOperand);
    case ':':
      return enterSection(token, sectionArgument);
    case '[':
      return enterSection(token, sectionIndex);
    case ']':
      return enterSection(token, sectionIndexEnd);
    default:
      token.sectionsSeen |= token.section;  // "." and newline stay in their section
  }
}

/// How many parts the name section of `body` has at most, up to a usual length. Room for one part
/// for each dot would cost a text of dots many times its size, for parts that are empty and
/// dropped.
std::size_t roomForName(std::string_view body) {
  constexpr std::size_t usualLength = 16;
  std::size_t parts = 1;
  for (const char character : body) {
    if ((sectionsEndedBy(character) & sectionName) == 0) continue;
    if (character != '.' || parts == usualLength) break;
    ++parts;
  }
  return parts;
}

}  // namespace

CParsedToken::CParsedToken(const std::string& body) {
  const std::string_view text = body;
  nameParts.reserve(roomForName(text));
  std::size_t start = 0;
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if ((sectionsEndedBy(text[pos]) & section) == 0) continue;
    storeSegment(*this, text.substr(start, pos - start));
    applyDelimiter(*this, text[pos]);
    start = pos + 1;
  }
  storeSegment(*this, text.substr(start));
}
