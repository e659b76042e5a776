// A plugin of qemu-arm: counts the instructions that the program runs between two marks, and writes
// the count as a line on standard output. Exact: QEMU runs its blocks of instructions from their
// beginning to their end, and a system call ends one. The marks of bench/qemu_mark.cpp take 20.
//
//     qemu-arm -plugin libqemu_counter.so PROGRAM
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>

// What is used of QEMU's interface for plugins; Debian has no package with its header.
extern "C" {
struct qemu_plugin_tb;  // a block of instructions
using BlockTranslated = void (*)(std::uint64_t plugin, qemu_plugin_tb* block);
using SystemCalled = void (*)(std::uint64_t plugin, unsigned processor, std::int64_t number,
                              std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                              std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t);
std::size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(std::uint64_t plugin, BlockTranslated callback);
void qemu_plugin_register_vcpu_syscall_cb(std::uint64_t plugin, SystemCalled callback);
void qemu_plugin_register_vcpu_tb_exec_inline(qemu_plugin_tb* block, int operation, void* operand,
                                              std::uint64_t value);
[[gnu::visibility("default")]] int qemu_plugin_version = 1;
[[gnu::visibility("default")]] int qemu_plugin_install(std::uint64_t plugin, const void* system,
                                                       int argumentCount, char** arguments);
}

namespace {

constexpr int addToOperand = 0;       // the only operation that there is
constexpr std::int64_t getppid = 64;  // its number on ARM

std::uint64_t instructions = 0;
bool counting = false;

void countBlock(std::uint64_t /*plugin*/, qemu_plugin_tb* block) {
  qemu_plugin_register_vcpu_tb_exec_inline(block, addToOperand, &instructions,
                                           qemu_plugin_tb_n_insns(block));
}

void countBetweenMarks(std::uint64_t /*plugin*/, unsigned /*processor*/, std::int64_t number,
                       std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                       std::uint64_t, std::uint64_t, std::uint64_t) {
  if (number != getppid) return;
  if (counting) {
    std::printf("%" PRIu64 "\n", instructions);
    std::fflush(stdout);
  }
  counting = !counting;
  instructions = 0;
}

}  // namespace

int qemu_plugin_install(std::uint64_t plugin, const void* /*system*/, int /*argumentCount*/,
                        char** /*arguments*/) {
  qemu_plugin_register_vcpu_tb_trans_cb(plugin, countBlock);
  qemu_plugin_register_vcpu_syscall_cb(plugin, countBetweenMarks);
  return 0;
}
