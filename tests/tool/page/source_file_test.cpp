#include "page/source_file.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ttr::CJsonPointer;
using ttr::CSourceFile;

std::string PlaceOf(const CSourceFile& file, const char* pointer) {
  return file.PlaceOf(CJsonPointer::Parse(pointer)).Text();
}

std::string PlaceOfName(const CSourceFile& file, const char* pointer) {
  return file.PlaceOfName(CJsonPointer::Parse(pointer)).Text();
}

TEST(SourceFile, KnowsWhereValuesStand) {
  const CSourceFile file("p.json", "{\n  \"a\": [1, -2,\n   \"\xc3\xa9\", true],\r\n\"b\" : {}}");
  EXPECT_TRUE(file.errors().empty());
  EXPECT_EQ(PlaceOf(file, ""), "p.json:1:1");
  EXPECT_EQ(PlaceOf(file, "/a"), "p.json:2:8");
  EXPECT_EQ(PlaceOf(file, "/a/1"), "p.json:2:12");
  EXPECT_EQ(PlaceOf(file, "/a/3"), "p.json:3:10") << "columns count bytes";
  EXPECT_EQ(PlaceOf(file, "/b"), "p.json:4:7");
  EXPECT_EQ(PlaceOf(file, "/b/none/deeper"), "p.json:4:7") << "the nearest parent";
}

TEST(SourceFile, KnowsWhereNamesStand) {
  const CSourceFile file("p.json", R"({"a" : 1, "z":/* c */ 3, "l": [ 4]})");
  EXPECT_EQ(PlaceOfName(file, ""), "p.json:1:1");
  EXPECT_EQ(PlaceOfName(file, "/a"), "p.json:1:2");
  EXPECT_EQ(PlaceOfName(file, "/z"), "p.json:1:23") << "a comment in between: the value";
  EXPECT_EQ(PlaceOfName(file, "/l/0"), "p.json:1:33");
  const CSourceFile escaped("p.json", R"({"x": 0, "q\"\\": 2})");
  EXPECT_EQ(PlaceOfName(escaped, "/q\"\\"), "p.json:1:10");
}

TEST(SourceFile, FindsPartsOfStrings) {
  const CSourceFile file("p.json", R"j(["$(a) $(b)", "\u0024(c)", "$(d)", 5])j");
  const auto placeOfPart = [&](const char* pointer, const char* part) {
    return file.PlaceOfPart(CJsonPointer::Parse(pointer), part).Text();
  };
  EXPECT_EQ(placeOfPart("/0", "$(b"), "p.json:1:8");
  EXPECT_EQ(placeOfPart("/1", "$(c"), "p.json:1:15") << "written with an escape";
  EXPECT_EQ(placeOfPart("/0", "$(d"), "p.json:1:2") << "stands in another string only";
  EXPECT_EQ(placeOfPart("/3", "5"), "p.json:1:36");
}

TEST(SourceFile, FindsTheLastOfSeveralParts) {
  const CSourceFile file("p.json", R"j(["$(x) $(x", 5])j");
  EXPECT_EQ(file.PlaceOfLastPart(CJsonPointer::Parse("/0"), "$(x").Text(), "p.json:1:8");
  EXPECT_EQ(file.PlaceOfLastPart(CJsonPointer::Parse("/0"), "$(y").Text(), "p.json:1:2");
  EXPECT_EQ(file.PlaceOfLastPart(CJsonPointer::Parse("/1"), "5").Text(), "p.json:1:14");
}

TEST(SourceFile, AByteOrderMarkCountsAsThreeColumnsOfTheFirstLine) {
  const CSourceFile file("p.json", "\xef\xbb\xbf[5,\n \"$(a)\"]");
  EXPECT_EQ(PlaceOf(file, "/0"), "p.json:1:5");
  EXPECT_EQ(PlaceOf(file, "/1"), "p.json:2:2");
  EXPECT_EQ(file.PlaceOfPart(CJsonPointer::Parse("/1"), "$(a").Text(), "p.json:2:3");
  const CSourceFile faulty("p.json", "\xef\xbb\xbf[1 2]");
  ASSERT_FALSE(faulty.errors().empty());
  EXPECT_EQ(faulty.errors()[0].place.Text(), "p.json:1:7");
}

TEST(SourceFile, TellsEachJsonErrorWithItsPlace) {
  const CSourceFile file("p.json", "{\"a\": 1,\n \"b\": [1 2],\n \"c\" 5}");
  ASSERT_FALSE(file.errors().empty());
  EXPECT_TRUE(file.document().isNull());
  EXPECT_EQ(file.errors()[0].place.Text(), "p.json:2:10");
  EXPECT_EQ(file.errors()[0].reason, "Missing ',' or ']' in array declaration");
}

TEST(SourceFile, EmptyAndTooDeepFilesHaveAnError) {
  const CSourceFile empty("p.json", "");
  ASSERT_EQ(empty.errors().size(), 1U);
  EXPECT_EQ(empty.errors()[0].place.Text(), "p.json:1:1");
  EXPECT_FALSE(empty.errors()[0].reason.empty());
  const CSourceFile deep("p.json", std::string(2000, '['));
  ASSERT_EQ(deep.errors().size(), 1U);
  EXPECT_EQ(deep.errors()[0].place.Text(), "p.json:1:1");
}

}  // namespace
