#ifndef TOOL_TEXT_UTF8_H
#define TOOL_TEXT_UTF8_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace ttr {

/// A character as UTF-8 has it; the values that Unicode leaves out are not excluded.
struct CCodePoint {
  std::uint32_t value = 0;
  std::size_t length = 0;  ///< in bytes; 0 when there is no UTF-8
};

/// The code point at `begin`, unless it is cut off or longer than it need be.
CCodePoint codePointAt(const std::string& text, std::size_t begin);

}  // namespace ttr

#endif  // TOOL_TEXT_UTF8_H
