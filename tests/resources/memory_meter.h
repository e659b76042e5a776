#ifndef TESTS_RESOURCES_MEMORY_METER_H
#define TESTS_RESOURCES_MEMORY_METER_H

#include <functional>

#include "support/build_kind.h"

/// False under sanitizers, which have allocators of their own: nothing is counted, nothing fails.
inline constexpr bool memoryIsMetered = !ttr::sanitized;

/// What the calling thread has asked of the C library's allocator, in whatever library.
struct CMemoryUse {
  long long calls = 0;  ///< of malloc, calloc and realloc
  long long bytes = 0;  ///< that these gave out, all calls together
  long long peak = 0;   ///< the most bytes in use at one time, beyond those at the start
  long long kept = 0;   ///< blocks handed out and not given back; below 0 when older ones were
};

/// Calls `work`, and counts; all figures are 0 where memory is not metered.
CMemoryUse MemoryUsedBy(const std::function<void()>& work);

/// While it lives, the call number `number` of malloc, calloc and realloc, counted from 1, finds no
/// memory in the calling thread; those after it succeed again.
class CMallocFailure {
 public:
  explicit CMallocFailure(long long number);
  ~CMallocFailure();
  CMallocFailure(const CMallocFailure&) = delete;
  CMallocFailure& operator=(const CMallocFailure&) = delete;
};

/// True when a call failed because of the last CMallocFailure.
bool MallocHasFailed();

/// Bytes of memory that the process holds; 0 when the system does not tell.
long long ResidentMemory();

#endif  // TESTS_RESOURCES_MEMORY_METER_H
