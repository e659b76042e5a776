#include "template/compact_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

#include "TokenTemplateResolver/json_text.h"
#include "support/json.h"

namespace {

/// What JsonCpp's own writer writes.
std::string Written(const Json::Value& value) {
  return Json::writeString(jsoncpp_string::CJsonWriter(), value);
}

TEST(CompactText, IsWhatJsonCppWrites) {
  const Json::Value values[] = {
      Json::Value(),
      true,
      false,
      0,
      -1,
      std::numeric_limits<Json::Int>::min(),
      std::numeric_limits<Json::UInt>::max(),
      Json::Value(std::numeric_limits<Json::Int64>::min()),
      Json::Value(std::numeric_limits<Json::UInt64>::max()),
      0.1,
      -0.0,
      1e300,
      5e-324,
      std::numeric_limits<double>::infinity(),
      -std::numeric_limits<double>::infinity(),
      std::numeric_limits<double>::quiet_NaN(),
      "",
      "plain ~ text",
      R"(quote " and backslash \)",
      "line\nend, tab\t, \x01 and \x7f",
      "K\xC3\xBC\x63he \xF0\x9F\x8D\xBD",
      "\xC3 no UTF-8 \xFF",
      Json::Value(Json::StaticString("static")),
      Json::Value(Json::arrayValue),
      Json::Value(Json::objectValue),
      Parse(R"([[], {}, [1, [2, "three"]], {"a": {"b": [null, true]}}])"),
      Parse(R"({"": 1, "ä": 2, "q\"": [3], "Bounds": [0, 0, 1280, 720]})"),
      Parse("[" + std::string(3000, ' ') + R"(1, "x", )" + std::string(200, '[') +
            std::string(200, ']') + "]"),
  };
  for (const Json::Value& value : values) {
    SCOPED_TRACE(Written(value));
    const std::optional<std::string> text = ttr::compactText(value);
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, Written(value));
  }
}

TEST(CompactText, LeavesToJsonCppWhatIsRare) {
  Json::Value gaps;
  gaps[2] = 1;
  Json::Value named;
  named[std::string("a\0b", 3)] = 1;
  Json::Value commented(1);
  commented.setComment(std::string("// c"), Json::commentAfterOnSameLine);
  Json::Value after(1);
  after.setComment(std::string("// c"), Json::commentAfter);
  const char* const none = nullptr;
  for (const Json::Value& value : {Json::Value(Json::StaticString(none)), gaps, named, commented,
                                   after, Json::Value(std::string("a\0b", 3)), Parse("/* c */ {}"),
                                   Parse("[1, [2, /* c */ 3]]"), Parse("{\"a\": [1 // c\n]}")}) {
    SCOPED_TRACE(Written(value));
    EXPECT_FALSE(ttr::compactText(value));
    Json::Value around(Json::arrayValue);
    around.append(value);
    EXPECT_FALSE(ttr::compactText(around));
    EXPECT_EQ(jsoncpp_string::toString(around), Written(around));
  }
}

}  // namespace
