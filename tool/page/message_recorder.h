#ifndef TOOL_PAGE_MESSAGE_RECORDER_H
#define TOOL_PAGE_MESSAGE_RECORDER_H

#include <ios>
#include <streambuf>
#include <string>
#include <vector>

namespace ttr {

/// Stands in for the buffer of std::cerr while it lives, and keeps what the library writes there.
/// The library flushes after each message, which tells messages of several lines apart.
class CMessageRecorder : public std::streambuf {
 public:
  CMessageRecorder();
  ~CMessageRecorder() override;
  CMessageRecorder(const CMessageRecorder&) = delete;
  CMessageRecorder& operator=(const CMessageRecorder&) = delete;

  /// The messages since the last call, without their line ends.
  std::vector<std::string> Take();

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize length) override;
  int sync() override;

 private:
  std::streambuf* m_output;
  std::ios_base::fmtflags m_flags;
  std::string m_text;
  std::vector<std::string> m_messages;
};

}  // namespace ttr

#endif  // TOOL_PAGE_MESSAGE_RECORDER_H
