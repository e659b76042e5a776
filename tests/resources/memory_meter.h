#ifndef TESTS_RESOURCES_MEMORY_METER_H
#define TESTS_RESOURCES_MEMORY_METER_H

#include <functional>

/// What the calling thread has asked of the C library's allocator, in whatever library.
struct CMemoryUse {
  long long calls = 0;  ///< of malloc, calloc and realloc
  long long bytes = 0;  ///< that these gave out, all calls together
  long long peak = 0;   ///< the most bytes in use at one time, beyond those at the start
  long long kept = 0;   ///< blocks handed out and not given back; below 0 when older ones were
};

/// Calls `work`, and counts. All figures are 0 under sanitizers, which have allocators of their
/// own.
CMemoryUse memoryUsedBy(const std::function<void()>& work);

/// Bytes of memory that the process holds.
long long residentMemory();

#endif  // TESTS_RESOURCES_MEMORY_METER_H
