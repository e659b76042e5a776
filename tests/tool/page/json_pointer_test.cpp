#include "page/json_pointer.h"

#include <gtest/gtest.h>

#include "support/json.h"
#include "tool_error.h"

namespace {

using ttr::CJsonPointer;

TEST(JsonPointer, TextIsThatOfTheStandard) {
  for (const char* text : {"", "/", "/Page/Contents/2", "/a~1b/m~0n", "//x", "/Page/"}) {
    EXPECT_EQ(CJsonPointer::Parse(text).Text(), text);
  }
  EXPECT_EQ((CJsonPointer() / "a/b" / "m~n" / std::size_t{3}).Text(), "/a~1b/m~0n/3");
}

TEST(JsonPointer, RefusesWhatIsNone) {
  EXPECT_THROW(CJsonPointer::Parse("Page"), ttr::CToolError);
  EXPECT_THROW(CJsonPointer::Parse("/a~"), ttr::CToolError);
  EXPECT_THROW(CJsonPointer::Parse("/a~2"), ttr::CToolError);
}

TEST(JsonPointer, FindsMembersAndEntries) {
  const Json::Value document = Parse(R"({"a": [10, {"b/c": true}], "": 5, "0": 6})");
  const auto find = [&](const char* text) { return CJsonPointer::Parse(text).Find(document); };
  EXPECT_EQ(find(""), &document);
  EXPECT_EQ(*find("/a/0"), 10);
  EXPECT_EQ(*find("/a/1/b~1c"), true);
  EXPECT_EQ(*find("/"), 5);
  EXPECT_EQ(*find("/0"), 6);
  for (const char* text :
       {"/x", "/a/2", "/a/-", "/a/01", "/a/-1", "/a/1x", "/a/", "/a/0/x", "/a/99999999999"}) {
    EXPECT_EQ(find(text), nullptr) << text;
  }
}

TEST(JsonPointer, KnowsItsParentsAndWhatIsBelow) {
  const CJsonPointer pointer = CJsonPointer::Parse("/a/1");
  EXPECT_EQ(pointer.Parent().Text(), "/a");
  EXPECT_EQ(CJsonPointer().Parent().Text(), "");
  EXPECT_TRUE(pointer.IsBelow(CJsonPointer()));
  EXPECT_TRUE(pointer.IsBelow(pointer));
  EXPECT_FALSE(pointer.Parent().IsBelow(pointer));
  EXPECT_FALSE(CJsonPointer::Parse("/a/10").IsBelow(pointer));
}

}  // namespace
