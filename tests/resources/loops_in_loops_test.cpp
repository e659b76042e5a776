// Loops in each other: each is copied with what is in it, which must not make their cost grow with
// the square of their number.
#include <gtest/gtest.h>

#include <string>

#include "TokenTemplateResolver/template_resolver.h"
#include "resources/memory_meter.h"
#include "resources/nested_page.h"
#include "support/cerr_capture.h"

namespace {

class CHost {
 public:
  std::string Resolve(const std::string& page) {
    m_resolver.Input(page);
    m_resolver.Process();
    return m_resolver.Output();
  }

 private:
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
};

CMemoryUse UseOf(const CNesting& nesting, int levels) {
  const std::string page = NestedPage(nesting, levels, R"("done")");
  return MemoryUsedBy([&] { EXPECT_EQ(CHost().Resolve(page), NestedResult(levels, R"("done")")); });
}

TEST(LoopsInLoops, CostAsMuchAsTheyAreMany) {
  constexpr int few = 40;
  for (const CNesting& nesting : nestings) {
    SCOPED_TRACE(nesting.name);
    UseOf(nesting, few);  // builds what is built once
    const CMemoryUse less = UseOf(nesting, few);
    const CMemoryUse more = UseOf(nesting, 4 * few);
    EXPECT_EQ(less.calls > 0, memoryIsMetered);
    EXPECT_LE(more.calls, 5 * less.calls);
    EXPECT_LE(more.bytes, 6 * less.bytes);
    EXPECT_LE(more.peak, 6 * less.peak);
  }
}

/// A plain element, or a condition, between each loop and the next.
TEST(LoopsInLoops, AlsoWithOtherElementsBetween) {
  const CNesting between[] = {
      {"elements", R"({"Loop":{"Start":0,"Size":1,"Bounds":[0,0,9,9],"Contents":[{"Contents":[)",
       "]}]}}", 5, 1},
      {"ifs",
       R"({"Loop":{"Start":0,"Size":1,"Bounds":[0,0,9,9],"Contents":[{"If":{"Condition":1,)"
       R"("Contents":[)",
       "]}}]}}", 6, 1},
      {"layouts with too few cells",
       R"({"Contents":[{"Loop":{"Start":0,"Size":9,"Layout":[[[0,0]]],"Contents":[)", "]}}]}", 5,
       3},
  };
  constexpr int few = 20;
  for (const CNesting& nesting : between) {
    SCOPED_TRACE(nesting.name);
    const auto use = [&nesting](int levels) {
      const std::string page = NestedPage(nesting, levels, R"("done")");
      const CCerrCapture messages;
      return MemoryUsedBy(
          [&] { EXPECT_EQ(CHost().Resolve(page), NestedResult(2 * levels, R"("done")")); });
    };
    use(few);
    const CMemoryUse less = use(few);
    const CMemoryUse more = use(4 * few);
    EXPECT_EQ(less.calls > 0, memoryIsMetered);
    EXPECT_LE(more.calls, 5 * less.calls);
    EXPECT_LE(more.peak, 6 * less.peak);
  }
}

}  // namespace
