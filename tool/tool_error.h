#ifndef TOOL_TOOL_ERROR_H
#define TOOL_TOOL_ERROR_H

#include <stdexcept>
#include <string>

namespace ttr {

/// What the tool was asked cannot be done: the message names the file and the reason. `main`
/// prints it as one line and exits with 2.
class CToolError : public std::runtime_error {
 public:
  /// `file` is named as the system sees it: up to its first zero byte.
  CToolError(const std::string& file, const std::string& reason)
      : std::runtime_error(file.c_str() + (": " + reason)), m_reason(reason) {}

  /// The reason without the file.
  const std::string& reason() const { return m_reason; }

 private:
  std::string m_reason;
};

}  // namespace ttr

#endif  // TOOL_TOOL_ERROR_H
