#ifndef TESTS_EXCEPTIONS_ALLOCATION_FAILURE_H
#define TESTS_EXCEPTIONS_ALLOCATION_FAILURE_H

#include <cstddef>

/// Makes operator new fail; this program has one of its own.
namespace allocation {

/// While it lives, the allocation number `number`, counted from 1, throws std::bad_alloc; those
/// after it succeed again.
class CFailure {
 public:
  explicit CFailure(std::size_t number);
  ~CFailure();
  CFailure(const CFailure&) = delete;
  CFailure& operator=(const CFailure&) = delete;
};

/// The size of the allocation that failed because of the last CFailure; 0 when none did.
std::size_t FailedSize();

/// The number of blocks that were allocated and are not freed.
std::size_t LiveBlocks();

}  // namespace allocation

#endif  // TESTS_EXCEPTIONS_ALLOCATION_FAILURE_H
