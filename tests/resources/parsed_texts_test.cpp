// What it saves to see a text again, and what it may cost in memory.
#include <gtest/gtest.h>

#include <string>

#include "TokenTemplateResolver/template_resolver.h"
#include "resources/memory_meter.h"
#include "resources/nested_page.h"

namespace {

/// A page of some 100 values and `length` bytes, different for each `number`.
std::string Page(int number, std::size_t length) {
  std::string page = R"({"Contents":["page )" + std::to_string(number) + '"' +
                     Repeated(R"(,{"Bounds":[1]})", 20) + "]}";
  page.resize(length, ' ');
  return page;
}

class ParsedTextsMemory : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!memoryIsMetered) GTEST_SKIP() << "the sanitizer's allocator is not counted";
  }

  /// Allocations that it takes to read the page; a text seen before takes fewer.
  long long CallsFor(const std::string& page) {
    return MemoryUsedBy([&] { m_resolver.Input(page); }).calls;
  }
  /// Whether the resolver had the page at hand.
  bool IsKept(const std::string& page) {
    CTemplateResolver fresh(m_resolver);
    const long long again = MemoryUsedBy([&] { fresh.Input(page); }).calls;
    const long long unseen =
        MemoryUsedBy([&] { CTemplateResolver(&m_tokens, &m_stack).Input(page); }).calls;
    return 2 * again < unseen;
  }

  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
};

TEST_F(ParsedTextsMemory, SeenBeforeTakesLessThanHalfTheAllocations) {
  const std::string page = Page(1, 1000);
  EXPECT_FALSE(IsKept(page));
  const long long first = CallsFor(page);
  EXPECT_GT(first, 100);
  EXPECT_LT(2 * CallsFor(page), first);
  EXPECT_TRUE(IsKept(page));
}

TEST_F(ParsedTextsMemory, ThirtyTwoTextsAreKept) {
  for (int number = 0; number < 32; ++number) m_resolver.Input(Page(number, 1000));
  EXPECT_TRUE(IsKept(Page(0, 1000)));
  m_resolver.Input(Page(0, 1000));  // is now the one used last
  m_resolver.Input(Page(32, 1000));
  EXPECT_TRUE(IsKept(Page(0, 1000)));
  EXPECT_FALSE(IsKept(Page(1, 1000)));
  EXPECT_TRUE(IsKept(Page(2, 1000)));
}

TEST_F(ParsedTextsMemory, SixtyFourKibibytesAreKept) {
  m_resolver.Input(Page(1, 1000));
  m_resolver.Input(Page(2, 65537));
  EXPECT_FALSE(IsKept(Page(2, 65537)));
  EXPECT_TRUE(IsKept(Page(1, 1000)));
  m_resolver.Input(Page(3, 65536 - 1000));
  EXPECT_TRUE(IsKept(Page(1, 1000)));
  EXPECT_TRUE(IsKept(Page(3, 65536 - 1000)));
  m_resolver.Input(Page(4, 65536));
  EXPECT_TRUE(IsKept(Page(4, 65536)));
  EXPECT_FALSE(IsKept(Page(3, 65536 - 1000)));
}

TEST_F(ParsedTextsMemory, DoesNotGrowWithTheNumberOfPages) {
  int number = 0;
  const auto showNext = [&] { m_resolver.Input(Page(++number, 1000)); };
  for (int i = 0; i < 100; ++i) showNext();
  const CMemoryUse use = MemoryUsedBy([&] {
    for (int i = 0; i < 1000; ++i) showNext();
  });
  EXPECT_GT(use.calls, 0);
  EXPECT_LE(use.kept, 0);
}

}  // namespace
