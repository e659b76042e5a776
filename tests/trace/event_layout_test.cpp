// What a listening program was compiled with stays where it is: no exported function takes an
// event, so the check of the library's binary interface does not see it.
#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "TokenTemplateResolver/trace.h"

namespace {

using CEvent = ttr::CTraceEvent;

TEST(TraceEvent, KeepsItsLayout) {
  constexpr std::size_t word = sizeof(void*);
  EXPECT_EQ(offsetof(CEvent, event), 0U);
  EXPECT_EQ(offsetof(CEvent, part), 4U);
  EXPECT_EQ(offsetof(CEvent, value), 8U);
  EXPECT_EQ(offsetof(CEvent, name), 8 + word);
  EXPECT_EQ(offsetof(CEvent, text), 8 + 3 * word);
  EXPECT_EQ(offsetof(CEvent, bounds), 8 + 5 * word);
  EXPECT_EQ(offsetof(CEvent, operand), 8 + 6 * word);
  EXPECT_EQ(offsetof(CEvent, holds), 8 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, origin), 12 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, extent), 16 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, percentage), 20 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, index), 28 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, start), 32 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, count), 36 + 7 * word);
  EXPECT_EQ(offsetof(CEvent, step), 40 + 7 * word);
  EXPECT_EQ(sizeof(CEvent), (44 + 7 * word + word - 1) / word * word);
}

TEST(TraceEvent, KeepsItsNumbers) {
  EXPECT_EQ((std::vector<int>{ttr::traceBegin, ttr::traceEnd, ttr::traceMeasure, ttr::traceVerdict,
                              ttr::traceRange, ttr::traceLayout, ttr::traceVariable,
                              ttr::traceReplaced, ttr::traceLowercased, ttr::traceMessage}),
            (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ((std::vector<int>{ttr::tracedDocument, ttr::tracedElement, ttr::tracedMember,
                              ttr::tracedEntry, ttr::tracedCopy, ttr::tracedToken}),
            (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

}  // namespace
