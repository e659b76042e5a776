#include "allocation_count.h"

#include <cstddef>

// The C library lets a program put its own functions in the place of these, and offers the old ones
// under other names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

long count = 0;  // the benchmarks run in one thread

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  ++count;
  return __libc_malloc(size);
}

void* calloc(std::size_t elements, std::size_t size) {
  ++count;
  return __libc_calloc(elements, size);
}

void* realloc(void* block, std::size_t size) {
  ++count;
  return __libc_realloc(block, size);
}
}

namespace bench {

long allocationCount() { return count; }

}  // namespace bench
