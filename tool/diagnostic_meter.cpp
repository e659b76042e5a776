#include "diagnostic_meter.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "text/printable.h"

namespace ttr {

// Without unitbuf std::cerr flushes where the library does, not after each piece of a message.
CDiagnosticMeter::CDiagnosticMeter() : m_output(std::cerr.rdbuf(this)), m_flags(std::cerr.flags()) {
  std::cerr << std::nounitbuf;
}

CDiagnosticMeter::~CDiagnosticMeter() {
  std::cerr.flags(m_flags);
  std::cerr.rdbuf(m_output);
}

CDiagnosticMeter::int_type CDiagnosticMeter::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
  m_text += traits_type::to_char_type(character);
  return character;
}

std::streamsize CDiagnosticMeter::xsputn(const char* text, std::streamsize length) {
  m_text.append(text, static_cast<std::size_t>(length));
  return length;
}

// A standard error that cannot be written must not stop the counting: nothing fails here.
int CDiagnosticMeter::sync() {
  std::string message = std::exchange(m_text, {});
  if (m_muted || message.empty()) return 0;
  m_lines += static_cast<std::size_t>(std::count(message.begin(), message.end(), '\n'));
  if (message.back() == '\n') message.pop_back();
  message = printableMessage(message) + '\n';
  m_output->sputn(message.data(), static_cast<std::streamsize>(message.size()));
  m_output->pubsync();
  return 0;
}

}  // namespace ttr
