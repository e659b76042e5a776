// What the trace throws ends a pass as what a handler throws does, wherever it is thrown.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "exceptions/page_host.h"
#include "support/build_kind.h"
#include "trace/trace_listener.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 10 : 20;
/// From one event that throws to the next.
constexpr unsigned stride = ttr::slowBuild ? 7 : 1;

/// Ends a pass of `page` at the first event, the next at the one `stride` later, and so on, each
/// followed by a pass that nothing ends. Returns how many were ended.
unsigned endPassesOf(const CPage& page) {
  CPageHost host(page);
  CFuse fuse;
  std::string frames;
  const CTraceListener listener([&](const ttr::CTraceEvent&) {
    frames = host.Frames();
    fuse.Burn();
  });
  unsigned passes = 0;
  for (unsigned event = 1;; event += stride) {
    SCOPED_TRACE(event);
    fuse.Arm(event);
    const std::string ended = host.Pass();
    const bool blown = !fuse.IsArmed();
    EXPECT_EQ(ended.find("\nthrown: CBlown\n" + frames) != std::string::npos, blown) << ended;
    fuse.Arm(0);
    const std::string next = host.Pass();
    CPageHost fresh(page);
    fresh.PassUntil(host.Passes() - 1);
    EXPECT_EQ(next, fresh.Pass());
    if (!blown || testing::Test::HasFailure()) return passes;
    ++passes;
  }
}

TEST(ThrowingTrace, HandMadePagesComeOutRightAfterAnExceptionAtAnyEvent) {
  unsigned ended = 0;
  for (const CPage& page : HandMadePages()) {
    SCOPED_TRACE(page.text);
    ended += endPassesOf(page);
  }
  EXPECT_GT(ended, 500U / stride);
}

TEST(ThrowingTrace, RandomPagesComeOutRightAfterAnExceptionAtAnyEvent) {
  unsigned ended = 0;
  for (std::uint32_t seed = 0; seed < randomPages && !HasFailure(); ++seed) {
    const CPage page = RandomPage(seed);
    SCOPED_TRACE(page.text);
    SCOPED_TRACE(seed);
    ended += endPassesOf(page);
  }
  EXPECT_GT(ended, 30 * randomPages / stride);
}

TEST(ThrowingTrace, LeavesWhatAHandlerLeaves) {
  const CPage page = {
      R"j({"Contents":[{"Context":{"a":1},"Bounds":[1,2,3,4],"Contents":["$(n)"]}]})j",
      {{"n", 3}},
      {}};
  CPageHost host(page);
  host.fuse.Arm(1);
  const std::string leftByHandler = host.Pass();
  EXPECT_NE(leftByHandler.find("\nthrown: CBlown\n"), std::string::npos) << leftByHandler;
  const CTraceListener listener([](const ttr::CTraceEvent& event) {
    if (event.event == ttr::traceBegin && event.part == ttr::tracedToken) throw CBlown();
  });
  EXPECT_EQ(host.Pass(), leftByHandler);
}

TEST(ThrowingTrace, AMessageThatItRefusesIsNotWritten) {
  const CPage page = {R"({"Page":{}})", {}, {}};
  CPageHost host(page);
  const CTraceListener listener([](const ttr::CTraceEvent& event) {
    if (event.event == ttr::traceMessage) throw CBlown();
  });
  EXPECT_EQ(host.Pass(), "{\"Page\":{}}\nthrown: CBlown\nframe {} [0,0,1280,720,null,null]\n");
}

}  // namespace
