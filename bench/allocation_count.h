#ifndef BENCH_ALLOCATION_COUNT_H
#define BENCH_ALLOCATION_COUNT_H

namespace bench {

/// The calls of malloc, realloc and calloc that this program has made so far, in whatever library;
/// operator new is one of them.
long allocationCount();

}  // namespace bench

#endif  // BENCH_ALLOCATION_COUNT_H
