#ifndef TESTS_EXCEPTIONS_FIXED_CAPTURE_H
#define TESTS_EXCEPTIONS_FIXED_CAPTURE_H

#include <array>
#include <iostream>
#include <streambuf>
#include <string>

/// Keeps what is written to std::cerr while it lives, in memory that it has from the start: writing
/// allocates none. What does not fit makes the stream bad.
class CFixedCapture : private std::streambuf {
 public:
  CFixedCapture() : m_previous(std::cerr.rdbuf(this)) { Clear(); }
  ~CFixedCapture() override { std::cerr.rdbuf(m_previous); }
  CFixedCapture(const CFixedCapture&) = delete;
  CFixedCapture& operator=(const CFixedCapture&) = delete;

  /// What was written since the last call; ends in "(cut)" when something was not written.
  std::string Take() {
    std::string text(pbase(), pptr());
    if (!std::cerr) text += "(cut)";
    Clear();
    return text;
  }

 private:
  void Clear() {
    setp(m_text.data(), m_text.data() + m_text.size());
    std::cerr.clear();
  }

  std::array<char, 1 << 16> m_text;
  std::streambuf* m_previous;
};

#endif  // TESTS_EXCEPTIONS_FIXED_CAPTURE_H
