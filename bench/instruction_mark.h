#ifndef BENCH_INSTRUCTION_MARK_H
#define BENCH_INSTRUCTION_MARK_H

#include <string>

namespace bench {

// The instructions between the two marks are counted, by callgrind or, on ARM, by qemu_counter.cpp.

/// Begins a count. `name` tells what is counted.
void beginCount(const std::string& name);

/// Ends it. `name` is the same.
void endCount(const std::string& name);

}  // namespace bench

#endif  // BENCH_INSTRUCTION_MARK_H
