#include "resources/painted_stack.h"

#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

namespace {

constexpr unsigned char paint = 0xA5;

/// Memory for a stack, painted, above a page that cannot be touched.
class CPaintedStack {
 public:
  explicit CPaintedStack(std::size_t size) : m_size(size) {
    void* memory = mmap(nullptr, m_guard + m_size, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("no memory for a stack");
    m_memory = static_cast<unsigned char*>(memory);
    mprotect(m_memory, m_guard, PROT_NONE);
    std::fill_n(bottom(), m_size, paint);
  }
  ~CPaintedStack() { munmap(m_memory, m_guard + m_size); }
  CPaintedStack(const CPaintedStack&) = delete;
  CPaintedStack& operator=(const CPaintedStack&) = delete;

  unsigned char* bottom() const { return m_memory + m_guard; }

  std::size_t used() const {
    const unsigned char* end = bottom() + m_size;
    // First by whole blocks, which takes no time without an optimiser either.
    std::array<unsigned char, 4096> block{};
    block.fill(paint);
    const unsigned char* deepest = bottom();
    while (static_cast<std::size_t>(end - deepest) >= block.size() &&
           std::memcmp(deepest, block.data(), block.size()) == 0) {
      deepest += block.size();
    }
    deepest = std::find_if(deepest, end, [](unsigned char byte) { return byte != paint; });
    return static_cast<std::size_t>(end - deepest);
  }

 private:
  std::size_t m_guard = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  std::size_t m_size;
  unsigned char* m_memory = nullptr;
};

void* CallWork(void* work) {
  (*static_cast<const std::function<void()>*>(work))();
  return nullptr;
}

}  // namespace

std::size_t StackUsedBy(const std::function<void()>& work, std::size_t size) {
  const CPaintedStack stack(size);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  std::function<void()> copy = work;
  pthread_t thread{};
  const bool started = pthread_attr_setstack(&attributes, stack.bottom(), size) == 0 &&
                       pthread_create(&thread, &attributes, CallWork, &copy) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) throw std::runtime_error("cannot start a thread on a stack of its own");
  pthread_join(thread, nullptr);
  return stack.used();
}
