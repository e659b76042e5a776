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
  for (const std::string name :
       {"!=",        "<",         "==",       ">",       "Bounds", "CellHeight", "CellWidth",
        "ColVar",    "Condition", "Contents", "Context", "Count",  "Display",    "Equals",
        "Filename",  "If",        "Include",  "Key",     "Layout", "List",       "Loop",
        "NotEquals", "Offset",    "Page",     "Play",    "Prec",   "RenderType", "RowVar",
        "Size",      "Start",     "Stop",     "Value",   "Var"}) {
    SCOPED_TRACE(name);
    const Json::Value one = ttr::copyWithSharedNames(Parse(R"({")" + name + R"(": 1})"));
    const Json::Value other = ttr::copyWithSharedNames(Parse(R"([{")" + name + R"(": 1}])"));
    EXPECT_EQ(NameOf(one), NameOf(other[0]));
    EXPECT_EQ(NameOf(one), NameOf(Json::Value(one)));
    EXPECT_EQ(NameOf(one), name);
  }
}

TEST(SharedNames, AreThoseOfTheFormatOnly) {
  for (const std::string name : {"", "bounds", "Bound", "BoundsX", "title", "!", "=", "zzz"}) {
    SCOPED_TRACE(name);
    const Json::Value one = ttr::copyWithSharedNames(Parse(R"({")" + name + R"(": 1})"));
    EXPECT_NE(NameOf(one), NameOf(Json::Value(one)));
    EXPECT_EQ(NameOf(one), name);
  }
}

/// All that can be seen of `value`, but for where its names are.
std::string Seen(const Json::Value& value) {
  std::string seen = Json::writeString(jsoncpp_string::CJsonWriter(), value) + " at " +
                     std::to_string(value.getOffsetStart()) + '-' +
                     std::to_string(value.getOffsetLimit());
  for (const Json::Value& entry : value) seen += " (" + Seen(entry) + ")";
  return seen;
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
           "Page": {"z\u0000": 1, "Context": {}, "": {} /* e */}} // d
           )",
  };
  for (const char* text : texts) {
    SCOPED_TRACE(text);
    const Json::Value document = Parse(text);
    EXPECT_EQ(ttr::copyWithSharedNames(document), document);
    EXPECT_EQ(Seen(ttr::copyWithSharedNames(document)), Seen(document));
  }
}

}  // namespace
