#include "text/xml_text.h"

#include <gtest/gtest.h>

#include <string>

namespace ttr {
namespace {

constexpr char bad[] = "\xEF\xBF\xBD";

TEST(XmlText, EscapesWhatHasAMeaning) {
  EXPECT_EQ(xmlText("<a href=\"x\"> & 'y' ]]>"), "&lt;a href=&quot;x&quot;&gt; &amp; 'y' ]]&gt;");
}

TEST(XmlText, KeepsTextAsItIs) {
  const std::string text = "line\n\ttab \x7F \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xED\x9F\xBF";
  EXPECT_EQ(xmlText(text), text);
  EXPECT_EQ(xmlText(""), "");
  EXPECT_EQ(xmlText("\r\n"), "&#13;\n");
}

TEST(XmlText, ReplacesWhatXmlCannotHold) {
  const std::string zero(1, '\0');
  for (const std::string& text :
       {zero, std::string("\x01"), std::string("\x1B"), std::string("\x80"), std::string("\xC3"),
        std::string("\xFF"), std::string("\xED\xA0\x80"), std::string("\xEF\xBF\xBE"),
        std::string("\xEF\xBF\xBF")}) {
    const std::string escaped = xmlText("a" + text + "b");
    EXPECT_EQ(escaped, std::string("a") + bad + "b") << static_cast<int>(text[0]);
  }
}

TEST(XmlText, ReplacesEachByteOfWhatIsNoUtf8) {
  EXPECT_EQ(xmlText("\xC0\xAF"), std::string(bad) + bad);                      // overlong
  EXPECT_EQ(xmlText("\xE0\x80\xAF"), std::string(bad) + bad + bad);            // overlong
  EXPECT_EQ(xmlText("\xF0\x80\x80\xAF"), std::string(bad) + bad + bad + bad);  // overlong
  EXPECT_EQ(xmlText("\xE2\x82<"), std::string(bad) + bad + "&lt;");            // cut off
}

TEST(XmlText, ReplacesCodePointsBeyondUnicode) {
  EXPECT_EQ(xmlText("\xF4\x90\x80\x80"), bad);
  EXPECT_EQ(xmlText("\xF4\x8F\xBF\xBD"), "\xF4\x8F\xBF\xBD");
}

}  // namespace
}  // namespace ttr
