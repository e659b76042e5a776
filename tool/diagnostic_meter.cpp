#include "diagnostic_meter.h"

#include <algorithm>
#include <iostream>

namespace ttr {

CDiagnosticMeter::CDiagnosticMeter() : m_output(std::cerr.rdbuf(this)) {}

CDiagnosticMeter::~CDiagnosticMeter() { std::cerr.rdbuf(m_output); }

CDiagnosticMeter::int_type CDiagnosticMeter::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
  const char single = traits_type::to_char_type(character);
  return xsputn(&single, 1) == 1 ? character : traits_type::eof();
}

// A standard error that cannot be written must not stop the counting: nothing fails here.
std::streamsize CDiagnosticMeter::xsputn(const char* text, std::streamsize length) {
  if (m_muted) return length;
  m_lines += static_cast<std::size_t>(std::count(text, text + length, '\n'));
  m_output->sputn(text, length);
  return length;
}

int CDiagnosticMeter::sync() {
  m_output->pubsync();
  return 0;
}

}  // namespace ttr
