// The section machine that takes a token body apart: text in, CParsedToken out.
//
// A segment is stored by the section it stands in; then the delimiter that ended it chooses the
// next section. The grammar has no errors: what has no place is dropped.
// Test: tests/token/parsed_token_test.cpp
#include "TokenTemplateResolver/parsed_token.h"

#include <cstddef>

namespace {

/// The characters that end a segment in `section`.
const char* delimitersOf(std::int32_t section) {
  switch (section) {
    case sectionIndex:
      return ".]";
    case sectionIndexEnd:
      return ":+-*/";
    case sectionArgument:
      return "[";
    case sectionOperand:
      return ".:[";
    case sectionCount:
      return "\n";
    default:
      return ".[:+-*/";
  }
}

void enterSection(CParsedToken& token, eTokenSection section) {
  token.section = section;
  token.sectionsSeen |= section;
}

/// A name that ends in "#" asks for a count; the section changes before the delimiter that ended
/// the name is applied. A lone "#" leaves an empty name part, deliberately.
void storeName(CParsedToken& token, std::string segment) {
  const bool counted = segment.back() == '#';
  if (counted) {
    segment.pop_back();
    enterSection(token, sectionCount);
  }
  token.nameParts.push_back(std::move(segment));
}

void storeSegment(CParsedToken& token, std::string segment) {
  if (segment.empty()) return;
  switch (token.section) {
    case sectionName:
      return storeName(token, std::move(segment));
    case sectionIndex:
      return token.indexParts.push_back(std::move(segment));
    case sectionArgument:
      token.argument = std::move(segment);
      return;
    case sectionOperand:
      return token.operandParts.push_back(std::move(segment));
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

}  // namespace

CParsedToken::CParsedToken(const std::string& body) {
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = body.find_first_of(delimitersOf(section), start);
    if (end == std::string::npos) break;
    storeSegment(*this, body.substr(start, end - start));
    applyDelimiter(*this, body[end]);
    start = end + 1;
  }
  storeSegment(*this, body.substr(start));
}
