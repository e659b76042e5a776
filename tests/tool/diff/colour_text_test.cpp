#include "diff/colour_text.h"

#include <gtest/gtest.h>

#include <string>

#include "page/page_host.h"
#include "support/json.h"

namespace ttr {
namespace {

TEST(ColourText, HasTheOpacityAtItsEnd) {
  EXPECT_EQ(colourText(0xFFFFCC00U), "#FFCC00FF");
  EXPECT_EQ(colourText(0x80123456U), "#12345680");
  EXPECT_EQ(colourText(0U), "#00000000");
  EXPECT_EQ(colourText(0xFFFFFFFFU), "#FFFFFFFF");
}

TEST(ColourText, IsWhatTheLibraryResolvesToTheWord) {
  for (const std::string text : {"#01234567", "#89ABCDEF", "#FF000080"}) {
    CPageHost host(Json::Value(Json::objectValue), CScreenSize());
    const Json::Value page =
        Parse(host.Pass(R"({"Contents": [{"Display": [")" + text + R"("]}]})"));
    EXPECT_EQ(colourText(page["Contents"][0]["Display"][0].asUInt()), text);
  }
}

}  // namespace
}  // namespace ttr
