#ifndef TOKENTEMPLATERESOLVER_TOKEN_PARTS_H
#define TOKENTEMPLATERESOLVER_TOKEN_PARTS_H

#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/export.h"

/// The parts of a dotted path in a token, in order and without the dots: `Weather.today` has the
/// parts `Weather` and `today`, exactly as written. A vector with a name: all that a vector offers
/// is there, and throws as it does there.
class TTR_EXPORT CTokenParts : public std::vector<std::string> {
 public:
  using std::vector<std::string>::vector;

  CTokenParts() = default;
  // Implicit, as is the way back. The constructors taken over do not include this one.
  // NOLINTNEXTLINE(google-explicit-constructor)
  CTokenParts(std::vector<std::string> parts) : std::vector<std::string>(std::move(parts)) {}

  /// The first `count` of `parts` joined by "."; the empty string for a count of 0.
  /// \throws std::invalid_argument when there are fewer than `count` parts
  static std::string rebuildToken(const std::vector<std::string>& parts, unsigned int count);
};

#endif  // TOKENTEMPLATERESOLVER_TOKEN_PARTS_H
