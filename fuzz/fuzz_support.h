#ifndef TTR_FUZZ_SUPPORT_H
#define TTR_FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <streambuf>
#include <string_view>
#include <typeinfo>

/// What every target defines: one run on one input. Returns 0; a fault found ends the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace ttr {

/// Drops what is written to std::cerr while it lives: messages about faults in an input are
/// expected, and writing them would take most of the time.
class CSilence {
 public:
  CSilence() : m_previous(std::cerr.rdbuf(&m_nothing)) {}
  ~CSilence() { std::cerr.rdbuf(m_previous); }
  CSilence(const CSilence&) = delete;
  CSilence& operator=(const CSilence&) = delete;

 private:
  /// Takes everything and keeps nothing.
  class CNothing : public std::streambuf {
   protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
  };

  CNothing m_nothing;
  std::streambuf* m_previous;
};

/// Ends the program with `broken` on the real standard error, and `detail` where it says more,
/// unless `holds`. Aborting is what libFuzzer takes for a finding.
inline void require(bool holds, std::string_view broken, std::string_view detail = "") {
  if (holds) return;
  std::fprintf(stderr, "\nBROKEN: %.*s\n%.*s\n", static_cast<int>(broken.size()), broken.data(),
               static_cast<int>(detail.size()), detail.data());
  std::abort();
}

/// Runs `step`. True when it returned; false when it threw an exception of exactly one of the
/// classes `Documented`. Anything else it throws ends the program: derived classes too, as nobody
/// documented those.
///
///     const bool done = ttr::finishes<std::runtime_error, Json::LogicError>([&] {
///       value = resolver.GetTokenValue(body);
///     });
template <typename... Documented, typename Step>
bool finishes(const Step& step) {
  try {
    step();
    return true;
  } catch (const std::exception& error) {
    const bool documented = ((typeid(error) == typeid(Documented)) || ...);
    require(documented,
            std::string("undocumented exception ") + typeid(error).name() + ": " + error.what());
    return false;
  }
}

}  // namespace ttr

#endif  // TTR_FUZZ_SUPPORT_H
