#include "template/shared_names.h"

#include <gtest/gtest.h>

#include <string>

#include "TokenTemplateResolver/json_text.h"
#include "support/json.h"

namespace {

/// Where the name of the only member of `object` stands.
const char* NameOf(const Json::Value& object) {
  const char* end = nullptr;
  return object.begin().memberName(&end);
}

TEST(SharedNames, AreOneTextInAllDocuments) {
  for (const std::string name : {"Bounds", "Contents", "!=", "<", "Var", "ColVar", "Page"}) {
    SCOPED_TRACE(name);
    Json::Value one = Parse(R"({")" + name + R"(": 1})");
    Json::Value other = Parse(R"([{")" + name + R"(": 1}])");
    EXPECT_NE(NameOf(one), NameOf(other[0]));
    ttr::shareNames(one);
    ttr::shareNames(other);
    EXPECT_EQ(NameOf(one), NameOf(other[0]));
    EXPECT_EQ(NameOf(one), NameOf(Json::Value(one)));
    EXPECT_EQ(NameOf(one), name);
  }
}

TEST(SharedNames, AreThoseOfTheFormatOnly) {
  for (const std::string name : {"", "bounds", "Bound", "BoundsX", "title", "!", "=", "zzz"}) {
    SCOPED_TRACE(name);
    Json::Value one = Parse(R"({")" + name + R"(": 1})");
    ttr::shareNames(one);
    EXPECT_NE(NameOf(one), NameOf(Json::Value(one)));
    EXPECT_EQ(NameOf(one), name);
  }
}

TEST(SharedNames, ChangeNothingElse) {
  const char* const texts[] = {
      "{}",
      "[]",
      "5",
      R"("text")",
      "null",
      R"(/* a */ {"Contents": [ // b
           {"Bounds": [1, 2.5, "3%"], "own": {"If": null, "x": {"Loop": true}}}, [[]] /* c */],
           "Page": {"z\u0000": 1, "Context": {}}} // d)",
  };
  for (const char* text : texts) {
    SCOPED_TRACE(text);
    const Json::Value before = Parse(text);
    Json::Value value = before;
    ttr::shareNames(value);
    EXPECT_EQ(value, before);
    EXPECT_EQ(jsoncpp_string::toString(value), jsoncpp_string::toString(before));
    EXPECT_EQ(value.getOffsetLimit(), before.getOffsetLimit());
    if (value.isObject() && value.isMember("Contents")) {
      const Json::Value& entry = value["Contents"][0];
      EXPECT_EQ(entry.getOffsetStart(), before["Contents"][0].getOffsetStart());
      EXPECT_GT(entry["Bounds"].getOffsetStart(), 0);
    }
  }
}

}  // namespace
