#include "page/loop_words.h"

#include <gtest/gtest.h>

#include "support/json.h"

namespace {

using ttr::CLoopFact;

/// A loop with this range, of which a copy shows an index at a position.
CLoopFact Loop(int start, int count, int step, int index, int position) {
  CLoopFact loop;
  loop.start = start;
  loop.count = count;
  loop.step = step;
  loop.copies.push_back({index, position, Parse("[1, 2, 3, 4, null, null]")});
  return loop;
}

TEST(LoopWords, RangesRunAsTheirCopiesShow) {
  EXPECT_EQ(rangeText(Loop(2, 2, -1, 2, 0)), "2 indices, 2..1: no List and no Start");
  EXPECT_EQ(rangeText(Loop(7, 1, 1, 7, 0)), "1 index, 7..7: no List and no Start");
  CLoopFact rotating = Loop(2, 2, -1, 2, 1);
  rotating.isRotating = true;
  rotating.members = {{"Value", "x"}, {"Size", -2}, {"List", Parse("[1, 2, 3]")}};
  EXPECT_EQ(rangeText(rotating), "2 indices, 3..2: List of 3 entries, Size -2 (integer)");
  EXPECT_EQ(rotationText(rotating), "one copy in each pass, this one of index 2, position 2 of 2");
}

TEST(LoopWords, ARangeWithoutIndicesShowsNoneOrIndexZero) {
  CLoopFact loop;
  EXPECT_EQ(rangeText(loop), "no indices: no List and no Start");
  loop.isRotating = true;
  EXPECT_EQ(rangeText(loop), "no indices, so index 0: no List and no Start");
  EXPECT_EQ(rotationText(Loop(0, 0, 0, 0, 0)), "one copy in each pass, this one of index 0");
}

TEST(LoopWords, AGridTellsItsLayoutAndCells) {
  CLoopFact loop = Loop(0, 5, 1, 0, 0);
  EXPECT_EQ(gridText(loop, 3), "1 copy");
  loop.layout = 1;
  EXPECT_EQ(cellsText(loop), "[1,2,3,4]");
  loop.copies.resize(5, loop.copies.front());
  EXPECT_EQ(gridText(loop, 3), "5 copies in layout 2 of 3");
  EXPECT_EQ(cellsText(loop), "[1,2,3,4], [1,2,3,4], [1,2,3,4], [1,2,3,4], ...");
}

}  // namespace
