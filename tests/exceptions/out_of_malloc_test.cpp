// When the C library's allocator runs out of memory, at whichever call in whichever library: other
// libraries answer it with more than std::bad_alloc, but only in the ways named here, and the next
// pass comes out right.
#include <TokenTemplateResolver/regex_match.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>

#include "exceptions/page_host.h"
#include "exceptions/thrown.h"
#include "resources/memory_meter.h"
#include "support/build_kind.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 1 : 20;

/// How often each outcome came.
struct COutcomes {
  int badAlloc = 0;
  int runtimeError = 0;   ///< JsonCpp's, without memory for a text
  int malformedReal = 0;  ///< JsonCpp's, without memory for the stream that it reads a number from
  int capitals = 0;       ///< the C library's, without memory for a regular expression
  int unharmed = 0;
};

bool DifferOnlyInCase(const std::string& left, const std::string& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  });
}

/// Names the outcome of a pass that found no memory; that of one that did is `expected`.
void Count(COutcomes& outcomes, const std::string& outcome, const std::string& thrown,
           const std::string& expected) {
  if (thrown == "std::bad_alloc") {
    ++outcomes.badAlloc;
  } else if (outcome == expected) {
    ++outcomes.unharmed;
  } else if (thrown == "Json::RuntimeError") {
    ++outcomes.runtimeError;
  } else if (outcome.find("' is not a number.\n") != std::string::npos) {
    ++outcomes.malformedReal;
  } else if (DifferOnlyInCase(outcome, expected)) {
    ++outcomes.capitals;
  } else {
    ADD_FAILURE() << outcome << "\ninstead of\n" << expected;
  }
}

/// A pass of `page` in which the call `number` fails, then one in which none does. Returns false
/// when the pass makes fewer calls.
bool FailAt(long long number, const CPage& page, const std::string& expected, COutcomes& outcomes) {
  CPageHost host(page);
  std::string output;
  const std::string thrown = Thrown([&] {
    const CMallocFailure failure(number);
    output = host.Run();
  });
  if (!MallocHasFailed()) return false;
  Count(outcomes, host.Outcome(output, thrown), thrown, expected);
  const std::string next = host.Pass();
  CPageHost fresh(page);
  fresh.PassUntil(host.Passes() - 1);
  EXPECT_EQ(next, fresh.Pass());
  return true;
}

/// Lets every call of a pass of `page` fail, one after the other. The C library may lose a block of
/// an expression that it cannot make; nothing else leaks, unless the page has comments.
void FailEverywhere(const CPage& page, COutcomes& outcomes, bool hasComments = false) {
  SCOPED_TRACE(page.text);
  const std::string expected = CPageHost(page).Pass();
  bool failed = true;
  for (long long number = 1; failed && !testing::Test::HasFailure(); ++number) {
    SCOPED_TRACE(number);
    const int capitals = outcomes.capitals;
    const CMemoryUse use = MemoryUsedBy([&] { failed = FailAt(number, page, expected, outcomes); });
    const long long lost = outcomes.capitals - capitals;
    if (!hasComments) {
      EXPECT_GE(use.kept, 0);
      EXPECT_LE(use.kept, lost);
    }
  }
}

class OutOfMalloc : public testing::Test {
 protected:
  void SetUp() override {
    if (!memoryIsMetered) GTEST_SKIP() << "the sanitizer's allocator cannot be made to fail";
  }

  COutcomes outcomes;
};

TEST_F(OutOfMalloc, HasOnlyTheNamedOutcomesInHandMadePages) {
  for (const CPage& page : HandMadePages()) FailEverywhere(page, outcomes);
  EXPECT_GT(outcomes.badAlloc, 1000);
  EXPECT_GT(outcomes.runtimeError, 500);
  EXPECT_GT(outcomes.capitals, 100);
  EXPECT_EQ(outcomes.malformedReal, 0);
}

TEST_F(OutOfMalloc, HasOnlyTheNamedOutcomesInAPageOfNumbers) {
  const CPage page = {
      R"j({"Contents": [0.75, -1e300, "$(real)", "$(real) $(real*2)"]})j", {{"real", 1.5}}, {}};
  FailEverywhere(page, outcomes);
  EXPECT_GT(outcomes.malformedReal, 0);
  EXPECT_EQ(outcomes.capitals, 0);
}

TEST_F(OutOfMalloc, HasOnlyTheNamedOutcomesInAPageWithComments) {
  FailEverywhere(CommentedPage(), outcomes, true);
  EXPECT_GT(outcomes.badAlloc, 100);
  EXPECT_EQ(outcomes.malformedReal + outcomes.capitals, 0);
}

TEST_F(OutOfMalloc, HasOnlyTheNamedOutcomesInRandomPages) {
  for (std::uint32_t seed = 0; seed < randomPages && !HasFailure(); ++seed) {
    FailEverywhere(RandomPage(seed), outcomes);
  }
  EXPECT_GT(outcomes.badAlloc, 0);
  EXPECT_GT(outcomes.runtimeError, 0);
}

// When this fails, the C library has been mended: the block that the tests above let pass can go.
TEST_F(OutOfMalloc, TheCLibraryLosesABlockOfAnExpression) {
  long long lost = 0;
  bool failed = true;
  for (long long number = 1; failed; ++number) {
    bool matches = false;
    const CMemoryUse use = MemoryUsedBy([&] {
      const CMallocFailure failure(number);
      matches = regexMatch("\xC3\x84.PNG", R"(.\.(png|jpg|jpeg|ttf|otf|bmp)$)");
    });
    failed = MallocHasFailed();
    EXPECT_TRUE(matches || failed) << number;
    EXPECT_LE(use.kept, 1) << number;
    lost += use.kept;
  }
  EXPECT_GT(lost, 0);
}

}  // namespace
