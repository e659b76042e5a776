#ifndef TESTS_RESOURCES_PAINTED_STACK_H
#define TESTS_RESOURCES_PAINTED_STACK_H

#include <cstddef>
#include <functional>

/// Runs `work` in a thread whose stack has `size` bytes and ends at a page that cannot be touched.
/// Returns how many bytes of it were written, found by the paint that is left. The C library's
/// own needs at the top of the stack count too.
std::size_t StackUsedBy(const std::function<void()>& work, std::size_t size);

#endif  // TESTS_RESOURCES_PAINTED_STACK_H
