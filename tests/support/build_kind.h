#ifndef TESTS_SUPPORT_BUILD_KIND_H
#define TESTS_SUPPORT_BUILD_KIND_H

// GCC tells by macros for which sanitizers it builds, clang by features.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TTR_ADDRESS_SANITIZED
#endif
#if __has_feature(thread_sanitizer)
#define TTR_THREAD_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define TTR_ADDRESS_SANITIZED
#endif
#if defined(__SANITIZE_THREAD__)
#define TTR_THREAD_SANITIZED
#endif

#if defined(TTR_ADDRESS_SANITIZED)
#include <sanitizer/lsan_interface.h>
#endif

namespace ttr {

#if defined(TTR_ADDRESS_SANITIZED)
inline constexpr bool addressSanitized = true;
#else
inline constexpr bool addressSanitized = false;
#endif

/// True where a sanitizer brings an allocator of its own.
#if defined(TTR_ADDRESS_SANITIZED) || defined(TTR_THREAD_SANITIZED)
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif

/// True where the same work takes many times as long: under sanitizers, and for ARM, whose tests
/// run under an emulator.
#if defined(__arm__)
inline constexpr bool slowBuild = true;
#else
inline constexpr bool slowBuild = sanitized;
#endif

/// While it lives, LeakSanitizer, if it is there, does not mind leaks.
class CLeaksAllowed {
 public:
#if defined(TTR_ADDRESS_SANITIZED)
  CLeaksAllowed() { __lsan_disable(); }
  ~CLeaksAllowed() { __lsan_enable(); }
#else
  CLeaksAllowed() {}
  ~CLeaksAllowed() {}
#endif
  CLeaksAllowed(const CLeaksAllowed&) = delete;
  CLeaksAllowed& operator=(const CLeaksAllowed&) = delete;
};

}  // namespace ttr

#endif  // TESTS_SUPPORT_BUILD_KIND_H
