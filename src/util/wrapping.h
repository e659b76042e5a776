#ifndef SRC_UTIL_WRAPPING_H
#define SRC_UTIL_WRAPPING_H

#include <cstdint>

namespace ttr {

// Arithmetic of 32-bit integers that wraps on overflow, where plain `int` would be undefined.

inline std::int32_t wrapAdd(std::int32_t left, std::int32_t right) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) +
                                   static_cast<std::uint32_t>(right));
}

inline std::int32_t wrapSubtract(std::int32_t left, std::int32_t right) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) -
                                   static_cast<std::uint32_t>(right));
}

inline std::int32_t wrapMultiply(std::int32_t left, std::int32_t right) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) *
                                   static_cast<std::uint32_t>(right));
}

inline std::int32_t wrapNegate(std::int32_t value) { return wrapSubtract(0, value); }

}  // namespace ttr

#endif  // SRC_UTIL_WRAPPING_H
