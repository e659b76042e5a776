#include "resources/memory_meter.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fstream>
#include <string>

namespace {

// Of the thread, and without a constructor: allocations come before anything is set up.
thread_local CMemoryUse use;
thread_local long long inUse = 0;
thread_local long long callsLeft = 0;  // up to the one that fails
thread_local bool failed = false;

}  // namespace

CMemoryUse MemoryUsedBy(const std::function<void()>& work) {
  use = CMemoryUse();
  inUse = 0;
  work();
  return use;
}

CMallocFailure::CMallocFailure(long long number) {
  failed = false;
  callsLeft = number;
}

CMallocFailure::~CMallocFailure() { callsLeft = 0; }

bool MallocHasFailed() { return failed; }

#if !defined(TTR_ADDRESS_SANITIZED) && !defined(TTR_THREAD_SANITIZED)

// The C library lets a program put its own functions in the place of these, and offers the old ones
// under other names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

/// Whether the present call is the one to fail.
bool Fails() {
  if (callsLeft == 0 || --callsLeft != 0) return false;
  errno = ENOMEM;
  failed = true;
  return true;
}

void* Counted(void* block) {
  ++use.calls;
  if (block == nullptr) return block;
  const auto size = static_cast<long long>(malloc_usable_size(block));
  ++use.kept;
  use.bytes += size;
  inUse += size;
  use.peak = std::max(use.peak, inUse);
  return block;
}

void Uncount(void* block) {
  if (block == nullptr) return;
  --use.kept;
  inUse -= static_cast<long long>(malloc_usable_size(block));
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) { return Fails() ? nullptr : Counted(__libc_malloc(size)); }

void* calloc(std::size_t elements, std::size_t size) {
  return Fails() ? nullptr : Counted(__libc_calloc(elements, size));
}

void* realloc(void* block, std::size_t size) {
  if (Fails()) return nullptr;
  Uncount(block);
  return Counted(__libc_realloc(block, size));
}

void free(void* block) {
  Uncount(block);
  __libc_free(block);
}
}

#endif

long long ResidentMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long long kilobytes = 0;
    if (word == "VmRSS:" && status >> kilobytes) return kilobytes * 1024;
  }
  return 0;
}
