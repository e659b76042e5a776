#include "page/message_recorder.h"

#include <iostream>
#include <utility>

namespace ttr {

// Without unitbuf std::cerr flushes where the library does, not after each piece of a message.
CMessageRecorder::CMessageRecorder() : m_output(std::cerr.rdbuf(this)), m_flags(std::cerr.flags()) {
  std::cerr << std::nounitbuf;
}

CMessageRecorder::~CMessageRecorder() {
  std::cerr.flags(m_flags);
  std::cerr.rdbuf(m_output);
}

std::vector<std::string> CMessageRecorder::Take() { return std::exchange(m_messages, {}); }

CMessageRecorder::int_type CMessageRecorder::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
  m_text += traits_type::to_char_type(character);
  return character;
}

std::streamsize CMessageRecorder::xsputn(const char* text, std::streamsize length) {
  m_text.append(text, static_cast<std::size_t>(length));
  return length;
}

int CMessageRecorder::sync() {
  if (m_text.empty()) return 0;
  if (m_text.back() == '\n') m_text.pop_back();
  m_messages.push_back(std::exchange(m_text, {}));
  return 0;
}

}  // namespace ttr
