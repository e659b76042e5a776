#include "text/wording.h"

#include <gtest/gtest.h>

#include "TokenTemplateResolver/json_text.h"

namespace {

std::string Brief(const std::string& json) {
  std::string errors;
  const std::string text = ttr::brief(jsoncpp_string::toJsonObject("[" + json + "]", &errors)[0]);
  EXPECT_EQ(errors, "");
  return text;
}

TEST(Wording, BriefValuesAreTheirJson) {
  for (const char* json :
       {"null", "true", "false", "0", "-7", "2147483648", "18446744073709551615", "0.1", "1e+300",
        R"("")", R"("a b/c~")", R"("a\"b\\c")", R"("\u0007")", "[]", "[1,-2,null,[\"a\",[]]]",
        R"([1,0.5])", R"({"a":[1,"b"]})", "{}"}) {
    EXPECT_EQ(Brief(json), json);
  }
  EXPECT_EQ(Brief("5.0"), "5.0");
  EXPECT_EQ(Brief("\"caf\u00e9\""), "\"caf\u00e9\"");
}

TEST(Wording, LongValuesAreCut) {
  const std::string text(60, 'x');
  EXPECT_EQ(Brief('"' + text + '"'), '"' + text.substr(0, 44) + "...");
}

}  // namespace
