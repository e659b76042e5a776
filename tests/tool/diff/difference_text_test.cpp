#include "diff/difference_text.h"

#include <gtest/gtest.h>

#include <string>

namespace ttr {
namespace {

CDifference Labelled(const std::string& label) {
  CDifference difference;
  difference.before = CJsonPointer::Parse("/Contents/1");
  difference.after = CJsonPointer::Parse("/Contents/2");
  difference.label = label;
  return difference;
}

TEST(DifferenceText, NamesEntriesByPointerAndLabel) {
  EXPECT_EQ(entryText(Labelled("")), "/Contents/2");
  EXPECT_EQ(entryText(Labelled("Gate \"B7\"\n\x1B[31m")),
            "/Contents/2 \"Gate \\\"B7\\\"\\n\\u001b[31m\"");
  CDifference removed = Labelled("");
  removed.after.reset();
  EXPECT_EQ(entryText(removed), "/Contents/1");
}

TEST(DifferenceText, CutsLongLabelsBetweenCharacters) {
  const std::string full(40, 'x');
  EXPECT_EQ(entryText(Labelled(full)), "/Contents/2 \"" + full + '"');
  EXPECT_EQ(entryText(Labelled(full + 'y')), "/Contents/2 \"" + full + "...\"");
  const std::string cut(39, 'x');
  EXPECT_EQ(entryText(Labelled(cut + "\xC3\xA9y")), "/Contents/2 \"" + cut + "...\"");
}

TEST(DifferenceText, CountsOneElementInside) {
  CDifference moved = Labelled("");
  moved.kind = CDifference::kindMoved;
  moved.from = Json::Value(Json::arrayValue);
  moved.from->append(1);
  moved.from->append(2);
  moved.to = moved.from;
  (*moved.to)[0] = 0;
  moved.along = 1;
  EXPECT_EQ(changeText(moved), "moved by (-1, 0), with 1 element inside");
}

}  // namespace
}  // namespace ttr
