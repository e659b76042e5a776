#ifndef TOOL_DIAGNOSTIC_METER_H
#define TOOL_DIAGNOSTIC_METER_H

#include <cstddef>
#include <ios>
#include <streambuf>
#include <string>

namespace ttr {

/// Stands in for the buffer of std::cerr while it lives, and counts the lines that the library
/// writes there. It passes them on, printable, unless it is muted: then they are neither shown nor
/// counted. The library flushes after each message, which tells messages of several lines apart.
class CDiagnosticMeter : public std::streambuf {
 public:
  CDiagnosticMeter();
  ~CDiagnosticMeter() override;
  CDiagnosticMeter(const CDiagnosticMeter&) = delete;
  CDiagnosticMeter& operator=(const CDiagnosticMeter&) = delete;

  void Mute(bool muted) { m_muted = muted; }
  std::size_t lines() const { return m_lines; }

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize length) override;
  int sync() override;

 private:
  std::streambuf* m_output;
  std::ios_base::fmtflags m_flags;
  std::string m_text;
  std::size_t m_lines = 0;
  bool m_muted = false;
};

}  // namespace ttr

#endif  // TOOL_DIAGNOSTIC_METER_H
