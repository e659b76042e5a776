#include "exceptions/allocation_failure.h"

#include <cstdlib>
#include <new>

namespace {

// The program has one thread.
std::size_t left = 0;
std::size_t failed = 0;
std::size_t live = 0;

void* Allocate(std::size_t size) noexcept {
  if (size == 0) size = 1;
  if (left != 0 && --left == 0) {
    failed = size;
    return nullptr;
  }
  void* block = std::malloc(size);
  if (block != nullptr) ++live;
  return block;
}

void* AllocateOrThrow(std::size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Release(void* block) noexcept {
  if (block != nullptr) --live;
  std::free(block);
}

}  // namespace

allocation::CFailure::CFailure(std::size_t number) {
  failed = 0;
  left = number;
}

allocation::CFailure::~CFailure() { left = 0; }

std::size_t allocation::FailedSize() { return failed; }

std::size_t allocation::LiveBlocks() { return live; }

// All forms but the aligned ones, which nothing here uses: a sanitizer has its own for each that is
// missing, and would find that blocks are freed by another function than they should be.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Release(block); }
void operator delete[](void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t) noexcept { Release(block); }
void operator delete[](void* block, std::size_t) noexcept { Release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Release(block); }
