#ifndef TESTS_EXCEPTIONS_BUILD_KIND_H
#define TESTS_EXCEPTIONS_BUILD_KIND_H

// GCC tells by a macro that it builds for AddressSanitizer, clang by a feature.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TTR_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define TTR_SANITIZED
#endif

#if defined(TTR_SANITIZED)
#include <sanitizer/lsan_interface.h>
#endif

namespace ttr {

/// True where the same work takes many times as long: under sanitizers, and for ARM, whose tests
/// run under an emulator.
#if defined(TTR_SANITIZED) || defined(__arm__)
inline constexpr bool slowBuild = true;
#else
inline constexpr bool slowBuild = false;
#endif

/// While it lives, LeakSanitizer, if it is there, does not mind leaks.
class CLeaksAllowed {
 public:
#if defined(TTR_SANITIZED)
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

#endif  // TESTS_EXCEPTIONS_BUILD_KIND_H
