// After a pass that an exception ended, the next one is as if nothing had happened, but for the
// number of passes.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "exceptions/page_host.h"
#include "support/build_kind.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 40 : 1000;

/// Ends a pass of `page` at the first call of a handler or of the host's reading of files, the next
/// at the second, and so on, each followed by a pass that nothing ends. Returns how many were
/// ended.
unsigned EndPassesOf(const CPage& page) {
  CPageHost host(page);
  for (unsigned call = 1;; ++call) {
    SCOPED_TRACE(call);
    host.fuse.Arm(call);
    const std::string ended = host.Pass();
    const bool blown = !host.fuse.IsArmed();
    EXPECT_EQ(ended.find("\nthrown: CBlown\n") != std::string::npos, blown) << ended;
    host.fuse.Arm(0);
    const std::string next = host.Pass();
    CPageHost fresh(page);
    fresh.PassUntil(host.Passes() - 1);
    EXPECT_EQ(next, fresh.Pass());
    if (!blown || testing::Test::HasFailure()) return call - 1;
  }
}

TEST(Recovery, HandMadePagesComeOutRightAfterAnExceptionAnywhere) {
  unsigned ended = 0;
  for (const CPage& page : HandMadePages()) {
    SCOPED_TRACE(page.text);
    ended += EndPassesOf(page);
  }
  EXPECT_GT(ended, 50U);
}

TEST(Recovery, RandomPagesComeOutRightAfterAnExceptionAnywhere) {
  unsigned ended = 0;
  for (std::uint32_t seed = 0; seed < randomPages && !HasFailure(); ++seed) {
    const CPage page = RandomPage(seed);
    SCOPED_TRACE(page.text);
    SCOPED_TRACE(seed);
    ended += EndPassesOf(page);
  }
  EXPECT_GT(ended, 2 * randomPages);
}

}  // namespace
