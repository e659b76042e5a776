// When memory runs out, at whichever allocation, std::bad_alloc leaves the library, nothing leaks,
// and the next pass comes out right. JsonCpp makes two exceptions, which are named below.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "exceptions/allocation_failure.h"
#include "exceptions/page_host.h"
#include "exceptions/thrown.h"
#include "support/build_kind.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 4 : 40;

/// JsonCpp reads real numbers from a stream, which takes a lack of memory for the end of the
/// number: the text counts as malformed, with this message. The library cannot tell.
bool IsTakenForMalformedReal(const std::string& outcome) {
  return outcome.find("' is not a number.\n") != std::string::npos;
}

/// What JsonCpp allocates for the comments of a value. When that fails while a value is copied, the
/// rest of the copy, which is there by then, leaks.
constexpr std::size_t commentsSize =
    sizeof(std::array<std::string, Json::numberOfCommentPlacement>);

/// A pass of `page` in which the allocation `number` fails, if it comes to that one, then one that
/// succeeds. The outcome of a pass without failure is `expected`.
void FailAt(std::size_t number, const CPage& page, const std::string& expected) {
  CPageHost host(page);
  std::string output;
  const std::string thrown = Thrown([&] {
    const allocation::CFailure failure(number);
    output = host.Run();
  });
  const std::string outcome = host.Outcome(output, thrown);
  // JsonCpp may also lose the message of an exception that the page throws anyway.
  if (thrown != "std::bad_alloc" && !IsTakenForMalformedReal(outcome)) {
    EXPECT_EQ(outcome, expected);
  }
  const std::string next = host.Pass();
  CPageHost fresh(page);
  fresh.PassUntil(host.Passes() - 1);
  EXPECT_EQ(next, fresh.Pass());
}

/// Lets every allocation of a pass of `page` fail, one after the other. Returns how many there are.
std::size_t FailEverywhere(const CPage& page, bool hasComments = false) {
  const std::string expected = CPageHost(page).Pass();
  for (std::size_t number = 1;; ++number) {
    SCOPED_TRACE(number);
    const std::size_t before = allocation::LiveBlocks();
    FailAt(number, page, expected);
    if (!hasComments || allocation::FailedSize() != commentsSize) {
      EXPECT_EQ(allocation::LiveBlocks(), before);
    }
    if (allocation::FailedSize() == 0 || testing::Test::HasFailure()) return number - 1;
  }
}

TEST(OutOfMemory, LeavesHandMadePagesAsBadAlloc) {
  for (const CPage& page : HandMadePages()) {
    SCOPED_TRACE(page.text);
    EXPECT_GT(FailEverywhere(page), 10U);
  }
}

TEST(OutOfMemory, LeavesRandomPagesAsBadAlloc) {
  for (std::uint32_t seed = 0; seed < randomPages && !HasFailure(); ++seed) {
    const CPage page = RandomPage(seed);
    SCOPED_TRACE(page.text);
    SCOPED_TRACE(seed);
    FailEverywhere(page);
  }
}

TEST(OutOfMemory, LeavesAPageWithCommentsAsBadAlloc) {
  const ttr::CLeaksAllowed leaks;
  EXPECT_GT(FailEverywhere(CommentedPage(), true), 10U);
}

// When this fails, JsonCpp has been mended: what the test above lets pass can go.
TEST(OutOfMemory, JsonCppLeaksACopyWhoseCommentsFail) {
  const ttr::CLeaksAllowed leaks;
  Json::Value value(Json::arrayValue);
  value.append(1);
  value.setComment(std::string("// kept"), Json::commentBefore);
  const std::size_t before = allocation::LiveBlocks();
  for (std::size_t number = 1; number <= 3; ++number) {
    const allocation::CFailure failure(number);
    EXPECT_EQ(Thrown([&] { const Json::Value copy(value); }), "std::bad_alloc") << number;
  }
  EXPECT_GT(allocation::LiveBlocks(), before);
}

// The first use of everything that is made once: in a program of its own, as each test is one when
// ctest runs it.
TEST(OutOfMemory, OnFirstUseIsNoHindrance) {
  const CPage page = HandMadePages()[0];
  CPageHost host(page);
  std::string output;
  for (std::size_t number = 1;; ++number) {
    const std::string thrown = Thrown([&] {
      const allocation::CFailure failure(number);
      output = host.Run();
    });
    if (allocation::FailedSize() == 0) break;
    ASSERT_EQ(thrown, "std::bad_alloc") << number;
  }
  EXPECT_EQ(output, CPageHost(page).Run());
}

}  // namespace
