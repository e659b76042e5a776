#include "resources/memory_meter.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string>

namespace {

// Of the thread, and without a constructor: allocations come before anything is set up.
thread_local CMemoryUse use;
thread_local long long inUse = 0;

}  // namespace

CMemoryUse memoryUsedBy(const std::function<void()>& work) {
  use = CMemoryUse();
  inUse = 0;
  work();
  return use;
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

// The C library lets a program put its own functions in the place of these, and offers the old ones
// under other names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

void* counted(void* block) {
  const auto size = static_cast<long long>(malloc_usable_size(block));
  ++use.calls;
  ++use.kept;
  use.bytes += size;
  inUse += size;
  use.peak = std::max(use.peak, inUse);
  return block;
}

void uncount(void* block) {
  if (block == nullptr) return;
  --use.kept;
  inUse -= static_cast<long long>(malloc_usable_size(block));
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) { return counted(__libc_malloc(size)); }

void* calloc(std::size_t elements, std::size_t size) {
  return counted(__libc_calloc(elements, size));
}

void* realloc(void* block, std::size_t size) {
  uncount(block);
  return counted(__libc_realloc(block, size));
}

void free(void* block) {
  uncount(block);
  __libc_free(block);
}
}

#endif

long long residentMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long long kilobytes = 0;
    if (word == "VmRSS:" && status >> kilobytes) return kilobytes * 1024;
  }
  return 0;
}
