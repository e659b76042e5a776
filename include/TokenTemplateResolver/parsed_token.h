#ifndef TOKENTEMPLATERESOLVER_PARSED_TOKEN_H
#define TOKENTEMPLATERESOLVER_PARSED_TOKEN_H

#include <cstdint>
#include <string>

#include "TokenTemplateResolver/export.h"
#include "TokenTemplateResolver/token_parts.h"

/// The sections of a token body. Each is a single bit, so that a set of them fits an integer.
enum eTokenSection : std::int32_t {
  sectionName = 1,
  sectionIndex = 2,
  sectionIndexEnd = 4,
  sectionArgument = 8,
  sectionOperand = 16,
  sectionCount = 32,
};

/// A token body, the text between "$(" and ")", taken apart.
///
///     name.path #  [ index.path ]  operator operand.path  :argument
///
/// All but the name is optional. The argument stands last, because it may hold any character but
/// "[", operators included. A body is cut into segments at delimiters that depend on the
/// section it stands in, and the delimiter chooses the next section:
///
/// | section  | entered by          | a segment goes to      | delimiters  |
/// |----------|---------------------|------------------------|-------------|
/// | name     | start of the body   | nameParts              | . [ : + - * / |
/// | index    | [                   | indexParts             | . ]         |
/// | indexEnd | ]                   | nowhere                | : + - * /   |
/// | argument | :                   | argument (replaces it) | [           |
/// | operand  | + - * /             | operandParts           | . : [       |
/// | count    | a name ending in #  | nowhere                | newline     |
///
/// Empty segments vanish, everything else is kept as written, white space included:
///
/// | body                     | nameParts            | indexParts | argument | operator, operand |
/// |--------------------------|----------------------|------------|----------|-------------------|
/// | `Weather.today.high`     | Weather, today, high |            |          |                   |
/// | `Time:%H:%M`             | Time                 |            | %H:%M    |                   |
/// | `List[Sel.row]`          | List                 | Sel, row   |          |                   |
/// | `List#+1` (count plus 1) | List                 |            |          | + 1               |
/// | `Volume*Scale.factor`    | Volume               |            |          | * Scale, factor   |
///
/// The fields are what a token handler reads; parsing accepts every text.
struct TTR_EXPORT CParsedToken {
  using eTokenSection = ::eTokenSection;
  // Second names, as the enumerators of a nested enumeration would have.
  static constexpr ::eTokenSection sectionName = ::sectionName;
  static constexpr ::eTokenSection sectionIndex = ::sectionIndex;
  static constexpr ::eTokenSection sectionIndexEnd = ::sectionIndexEnd;
  static constexpr ::eTokenSection sectionArgument = ::sectionArgument;
  static constexpr ::eTokenSection sectionOperand = ::sectionOperand;
  static constexpr ::eTokenSection sectionCount = ::sectionCount;

  /// Parses `body`, written without "$(" and ")".
  // Implicit: every text is a body.
  // NOLINTNEXTLINE(google-explicit-constructor)
  CParsedToken(const std::string& body);

  CTokenParts nameParts;   ///< Registered handler name, then the path that the handler interprets.
  CTokenParts indexParts;  ///< Between "[" and "]": one part is a literal, more are a path.
  std::string argument;    ///< After ":"; free text for the handler, never read by the library.
  char operation = '\0';   ///< '+', '-', '*' or '/'; NUL when there is none.
  CTokenParts operandParts;  ///< Right of the operator: one part is a literal, more are a path.
  std::int32_t section = sectionName;  ///< The eTokenSection in which parsing ended.
  std::int32_t sectionsSeen = 0;       ///< The set of sections entered, eTokenSection bits.
};

#endif  // TOKENTEMPLATERESOLVER_PARSED_TOKEN_H
