// Prints what becomes of hand-made and random pages: results, exceptions, frames, standard error.
#include <TokenTemplateResolver/trace.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "exceptions/page_host.h"
#include "support/build_kind.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 200 : 3000;

void print(const CPage& page) {
  CPageHost host(page);
  for (int pass = 0; pass < 2; ++pass) std::cout << host.Pass() << "\n";
}

}  // namespace

/// `page_outcomes listening|alone`: fails when it is not what it is said to be.
int main(int argc, char** argv) {
  const bool listens = ttr::trace != nullptr;
  if (argc != 2 || std::string(argv[1]) != (listens ? "listening" : "alone")) return EXIT_FAILURE;
  for (const CPage& page : HandMadePages()) print(page);
  print(CommentedPage());
  for (std::uint32_t seed = 0; seed < randomPages; ++seed) print(RandomPage(seed));
}
