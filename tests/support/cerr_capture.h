#ifndef TESTS_SUPPORT_CERR_CAPTURE_H
#define TESTS_SUPPORT_CERR_CAPTURE_H

#include <iostream>
#include <sstream>
#include <string>

/// Keeps what is written to std::cerr while it lives.
class CCerrCapture {
 public:
  CCerrCapture() : m_previous(std::cerr.rdbuf(m_text.rdbuf())) {}
  ~CCerrCapture() { std::cerr.rdbuf(m_previous); }
  CCerrCapture(const CCerrCapture&) = delete;
  CCerrCapture& operator=(const CCerrCapture&) = delete;

  /// What was written since the last call.
  std::string Take() {
    std::string text = m_text.str();
    m_text.str("");
    return text;
  }

 private:
  std::ostringstream m_text;
  std::streambuf* m_previous;
};

#endif  // TESTS_SUPPORT_CERR_CAPTURE_H
