#ifndef TOKENTEMPLATERESOLVER_TOKEN_PARTS_H
#define TOKENTEMPLATERESOLVER_TOKEN_PARTS_H

#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/export.h"

/// The parts of a dotted path in a token, in order and without the dots: `Weather.today` has the
/// parts `Weather` and `today`, exactly as written.
class TTR_EXPORT CTokenParts {
 public:
  using const_iterator = std::vector<std::string>::const_iterator;

  CTokenParts() = default;
  CTokenParts(std::initializer_list<std::string> parts) : m_parts(parts) {}
  // Implicit, as is the way back: parts are a vector with a name.
  // NOLINTNEXTLINE(google-explicit-constructor)
  CTokenParts(std::vector<std::string> parts) : m_parts(std::move(parts)) {}

  const_iterator begin() const { return m_parts.begin(); }
  const_iterator end() const { return m_parts.end(); }
  std::size_t size() const { return m_parts.size(); }
  bool empty() const { return m_parts.empty(); }
  const std::string& operator[](std::size_t index) const { return m_parts[index]; }
  // NOLINTNEXTLINE(google-explicit-constructor)
  operator const std::vector<std::string>&() const { return m_parts; }

  /// Makes room for `count` parts.
  /// \throws std::length_error for more than a vector can have
  void reserve(std::size_t count) { m_parts.reserve(count); }

  /// Appends one part.
  void push_back(std::string part) { m_parts.push_back(std::move(part)); }

  /// The first `count` of `parts` joined by "."; the empty string for a count of 0.
  /// \throws std::invalid_argument when there are fewer than `count` parts
  static std::string rebuildToken(const std::vector<std::string>& parts, unsigned int count);

 private:
  std::vector<std::string> m_parts;
};

#endif  // TOKENTEMPLATERESOLVER_TOKEN_PARTS_H
