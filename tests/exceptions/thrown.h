#ifndef TESTS_EXCEPTIONS_THROWN_H
#define TESTS_EXCEPTIONS_THROWN_H

#include <cxxabi.h>

#include <cstdlib>
#include <string>

/// The class of the exception that `action` throws, as it is written in code; "nothing" when it
/// returns. It is the exact class, where EXPECT_THROW takes any that derives from it.
///
///     EXPECT_EQ(Thrown([&] { resolver.Process(); }), "Json::LogicError");
template <typename Action>
std::string Thrown(const Action& action) {
  try {
    action();
  } catch (...) {
    char* name =
        abi::__cxa_demangle(abi::__cxa_current_exception_type()->name(), nullptr, nullptr, nullptr);
    std::string result(name);
    std::free(name);
    return result;
  }
  return "nothing";
}

#endif  // TESTS_EXCEPTIONS_THROWN_H
