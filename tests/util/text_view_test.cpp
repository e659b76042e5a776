#include "util/text_view.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(TextView, ShowsTheWholeText) {
  const std::string texts[] = {
      "", "a", "$(a)", std::string("a\0b\0", 4), "\xc3\xa4\xff", std::string(100000, 'x')};
  for (const std::string& text : texts) {
    const Json::Value value(text);
    EXPECT_EQ(ttr::textView(value), text);
    EXPECT_EQ(ttr::textView(value), value.asString());
  }
  EXPECT_EQ(ttr::textView(Json::Value(Json::stringValue)), "");
  EXPECT_EQ(ttr::textView(Json::Value(Json::StaticString("literal"))), "literal");
}

TEST(TextView, CopiesNothing) {
  const Json::Value value("a text that is looked at in place");
  EXPECT_EQ(ttr::textView(value).data(), value.asCString());
}

TEST(TextView, IsEmptyForOtherTypes) {
  for (const Json::Value& value : {Json::Value(), Json::Value(5), Json::Value(true),
                                   Json::Value(Json::arrayValue), Json::Value(Json::objectValue)}) {
    EXPECT_EQ(ttr::textView(value), "");
  }
}

}  // namespace
