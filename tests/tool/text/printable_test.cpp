#include "text/printable.h"

#include <gtest/gtest.h>

#include <string>

#include "support/cerr_capture.h"
#include "text/output_options.h"

namespace ttr {
namespace {

struct CShown {
  std::string text;
  std::string shown;
};

TEST(Printable, ShowsWhatTerminalsObey) {
  const CShown cases[] = {
      {std::string(1, '\0'), "\\u0000"},
      {"\t", "\\u0009"},
      {"a\nb", "a\\u000ab"},
      {"a\r\nb", "a\\u000d\\u000ab"},
      {"\x07\x1b[31m\x1f", "\\u0007\\u001b[31m\\u001f"},
      {"\x7f", "\\u007f"},
      {"\xC2\x80\xC2\x9B\xC2\x9F", "\\u0080\\u009b\\u009f"},
      {"\xD8\x9C", "\\u061c"},
      {"\xE2\x80\x8E\xE2\x80\x8F", "\\u200e\\u200f"},
      {"\xE2\x80\xA8\xE2\x80\xA9", "\\u2028\\u2029"},
      {"\xE2\x80\xAA\xE2\x80\xAE", "\\u202a\\u202e"},
      {"\xE2\x81\xA6\xE2\x81\xA9", "\\u2066\\u2069"},
  };
  for (const CShown& each : cases) EXPECT_EQ(printable(each.text), each.shown);
}

TEST(Printable, ShowsBytesThatAreNoUtf8) {
  const CShown cases[] = {
      {"\x9b"
       "31m",
       "\\x9b31m"},
      {"\xff", "\\xff"},
      {"a\xC3", "a\\xc3"},
      {"\xE2\x80\x1b", "\\xe2\\x80\\u001b"},         // cut off
      {"\xC0\x9B", "\\xc0\\x9b"},                    // overlong
      {"\xED\xA0\x80", "\\xed\\xa0\\x80"},           // half of a pair of UTF-16
      {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},  // beyond Unicode
      {"\xE2\x82\xAC\x80\xE2\x82\xAC", "\xE2\x82\xAC\\x80\xE2\x82\xAC"},
  };
  for (const CShown& each : cases) EXPECT_EQ(printable(each.text), each.shown);
}

TEST(Printable, KeepsPrintableText) {
  for (const std::string& text :
       {std::string(), std::string(" ~ \\u001b \\x9b"), std::string("\xC2\xA0\xC3\xA9"),
        std::string("\xE2\x80\x8B\xE2\x80\x8D\xE2\x80\xA7\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA"),
        std::string("\xD8\x9B\xF0\x9F\x98\x80\xF4\x8F\xBF\xBD")}) {
    EXPECT_EQ(printable(text), text);
  }
}

TEST(Printable, IsTheSameTwice) {
  const std::string once = printable("\x1b\n\x9b\xE2\x80\xAE\\");
  EXPECT_EQ(printable(once), once);
}

TEST(Printable, KeepsLineEndsOfTheJsonReaderOnly) {
  const std::string ofReader =
      "CTemplateResolver::read:* Line 1, Column 2\n  Missing '}' or object member name\n.";
  EXPECT_EQ(printableMessage(ofReader), ofReader);
  EXPECT_EQ(printableMessage("CTokenResolver::GetTokenValue: no token handler for: a\n* Line 1."),
            "CTokenResolver::GetTokenValue: no token handler for: a\\u000a* Line 1.");
  EXPECT_EQ(printableMessage("CTemplateResolver::read:\x1b\nx"),
            "CTemplateResolver::read:\\u001b\\u000ax");
}

TEST(Printable, JoinsLinesOfTheJsonReaderOnly) {
  EXPECT_EQ(oneLine("* Line 1, Column 2\n  Missing\n"), "* Line 1, Column 2   Missing");
  EXPECT_EQ(oneLine("CTemplateResolver::read:* Line 1, Column 2\n  Missing\n."),
            "CTemplateResolver::read:* Line 1, Column 2   Missing .");
  EXPECT_EQ(oneLine("no handler for: a\nb"), "no handler for: a\nb");
  EXPECT_EQ(joinedLines("\n  Missing\n \n"), "   Missing");
}

TEST(Printable, TellsOneLine) {
  CCerrCapture captured;
  tell("page\n.json: \x1b");
  EXPECT_EQ(captured.Take(), "ttr: page\\u000a.json: \\u001b\n");
}

TEST(Printable, StyledTextHasNoOtherEscapes) {
  EXPECT_EQ(styled("a\x1b[0mb\n", styleRed, true), "\x1b[31ma\\u001b[0mb\\u000a\x1b[0m");
  EXPECT_EQ(styled("a\x1b[0mb\n", styleRed, false), "a\\u001b[0mb\\u000a");
}

}  // namespace
}  // namespace ttr
