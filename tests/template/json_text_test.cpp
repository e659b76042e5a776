#include "TokenTemplateResolver/json_text.h"

#include <gtest/gtest.h>
#include <json/reader.h>

#include <limits>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include "support/cerr_capture.h"
#include "support/json.h"

namespace {

TEST(JsonText, TextBecomesValueOfItsType) {
  Json::Value object(Json::objectValue);
  object["a"] = 1;
  Json::Value array(Json::arrayValue);
  array.append(1);
  array.append(true);
  array.append(Json::Value());
  const struct {
    const char* text;
    Json::Value value;
  } cases[] = {
      {R"({"a": 1})", object},
      {"[1, true, null]", array},
      {"{}", Json::Value(Json::objectValue)},
      {"[]", Json::Value(Json::arrayValue)},
      {R"("text")", "text"},
      {"5", 5},
      {"-5", -5},
      {"5.0", 5.0},
      {"2147483648", Json::Value(Json::Int64{2147483648})},
      {"18446744073709551615", Json::Value(std::numeric_limits<Json::UInt64>::max())},
      {"false", false},
      {"null", Json::Value()},
      {" \n\t{} \n", Json::Value(Json::objectValue)},
  };
  CCerrCapture cerr;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    std::string errors;
    EXPECT_EQ(jsoncpp_string::toJsonObject(c.text, &errors), c.value);
    EXPECT_EQ(errors, "");
  }
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonText, ReaderKeepsTheDefaultSettings) {
  const struct {
    const char* text;
    const char* value;
  } cases[] = {
      {"{/* one */ \"a\": 1 // two\n}", R"({"a": 1})"}, {R"({"a": [1, 2,],})", R"({"a": [1, 2]})"},
      {R"({"a": 1} and more)", R"({"a": 1})"},          {R"({"a": 1, "a": 2})", R"({"a": 2})"},
      {"\xEF\xBB\xBF{\"a\": 1}", R"({"a": 1})"},
  };
  CCerrCapture cerr;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    std::string errors;
    EXPECT_EQ(jsoncpp_string::toJsonObject(c.text, &errors), Parse(c.value));
    EXPECT_EQ(errors, "");
  }
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonText, TextThatDoesNotParseGivesNullAndTheErrorText) {
  const struct {
    const char* text;
    const char* errors;
  } cases[] = {
      {"", "* Line 1, Column 1\n  Syntax error: value, object or array expected.\n"},
      {"nul", "* Line 1, Column 1\n  Syntax error: value, object or array expected.\n"},
      {"NaN", "* Line 1, Column 1\n  Syntax error: value, object or array expected.\n"},
      {"'a'", "* Line 1, Column 1\n  Syntax error: value, object or array expected.\n"},
      {"{", "* Line 1, Column 2\n  Missing '}' or object member name\n"},
      {"{1: 2}", "* Line 1, Column 2\n  Missing '}' or object member name\n"},
      {"[1,\n2", "* Line 2, Column 2\n  Missing ',' or ']' in array declaration\n"},
      {"{\"a\":}", "* Line 1, Column 6\n  Syntax error: value, object or array expected.\n"},
  };
  CCerrCapture cerr;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    std::string errors = "old";
    EXPECT_EQ(jsoncpp_string::toJsonObject(c.text, &errors), Json::Value());
    EXPECT_EQ(errors, c.errors);
  }
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonText, NestingBeyondTheDefaultLimitThrows) {
  CCerrCapture cerr;
  std::string errors;
  const std::string deepest = std::string(1000, '[') + std::string(1000, ']');
  EXPECT_EQ(jsoncpp_string::toString(jsoncpp_string::toJsonObject(deepest, &errors)), deepest);
  EXPECT_THROW(jsoncpp_string::toJsonObject("[" + deepest + "]", &errors), Json::RuntimeError);
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonText, ValueBecomesCompactText) {
  const struct {
    Json::Value value;
    const char* text;
  } cases[] = {
      {Parse(R"({"a": [1, 2]})"), R"({"a":[1,2]})"},
      {Parse(R"({"b": {}, "a": []})"), R"({"a":[],"b":{}})"},
      {Parse(R"([{"a": null}, true, "x"])"), R"([{"a":null},true,"x"])"},
      {Parse("{}"), "{}"},
      {Json::Value(), "null"},
      {5, "5"},
      {5U, "5"},
      {5.0, "5.0"},
      {0.1, "0.10000000000000001"},
      {4294967295U, "4294967295"},
      {false, "false"},
      {"two\nlines \"quoted\"", R"("two\nlines \"quoted\"")"},
      {"caf\xC3\xA9", R"("caf\u00e9")"},
      {std::numeric_limits<double>::quiet_NaN(), "null"},
  };
  CCerrCapture cerr;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(jsoncpp_string::toString(c.value), c.text);
  }
  EXPECT_EQ(cerr.Take(), "");
}

/// `text` is what JsonCpp's writer makes of `value`, and what toString makes of it.
void ExpectWritten(const Json::Value& value, const std::string& text) {
  SCOPED_TRACE(text);
  CCerrCapture cerr;
  EXPECT_EQ(Json::writeString(jsoncpp_string::CJsonWriter(), value), text);
  EXPECT_EQ(jsoncpp_string::toString(value), text);
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonText, NumbersAreWrittenAsJsonCppWritesThem) {
  const auto infinity = std::numeric_limits<double>::infinity();
  const struct {
    Json::Value value;
    const char* text;
  } cases[] = {
      {0, "0"},
      {std::numeric_limits<Json::Int>::max(), "2147483647"},
      {std::numeric_limits<Json::Int>::min(), "-2147483648"},
      {std::numeric_limits<Json::UInt>::max(), "4294967295"},
      {std::numeric_limits<Json::Int64>::max(), "9223372036854775807"},
      {std::numeric_limits<Json::Int64>::min(), "-9223372036854775808"},
      {std::numeric_limits<Json::UInt64>::max(), "18446744073709551615"},
      {0.0, "0.0"},
      {-0.0, "-0.0"},
      {100.0, "100.0"},
      {-2.5, "-2.5"},
      {1e16, "10000000000000000.0"},
      {1e17, "1e+17"},
      {1e-5, "1.0000000000000001e-05"},
      {std::numeric_limits<double>::min(), "2.2250738585072014e-308"},
      {std::numeric_limits<double>::denorm_min(), "4.9406564584124654e-324"},
      {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
      {-std::numeric_limits<double>::quiet_NaN(), "null"},
      {infinity, "1e+9999"},
      {-infinity, "-1e+9999"},
  };
  for (const auto& c : cases) ExpectWritten(c.value, c.text);
}

TEST(JsonText, TextIsEscapedAsJsonCppEscapesIt) {
  using std::string;
  const struct {
    Json::Value value;
    const char* text;
  } cases[] = {
      {"", R"("")"},
      {"\"\\/\b\f\n\r\t", R"("\"\\/\b\f\n\r\t")"},
      {"\x01\x1F", R"("\u0001\u001f")"},
      {" ~\x7F", "\" ~\x7F\""},  // DEL is no control character here
      {string("a\0b", 3), R"("a\u0000b")"},
      {"caf\xC3\xA9 \xE2\x80\xA8", R"("caf\u00e9 \u2028")"},
      {"\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", R"("\ud83d\ude00\udbff\udfff")"},
      // What is no UTF-8
      {"\xFF", R"("\ufffd")"},
      {"a\xC3", R"("a\ufffd")"},
      {"\xE2\x82", R"("\ufffd\ufffd")"},
      {"\xF0\x9F\x98", R"("\ufffd\u07d8")"},
      {"\xC3(", R"("\u00e8")"},
      {"\xE2(\xA1", R"("\u2a21")"},
      {"\xED\xA0\x80", R"("\ufffd")"},
      {"\xC0\x80", R"("\ufffd")"},
      {"\xF4\x90\x80\x80", R"("\ud800\udc00")"},
      {"\xF8\x88\x80\x80\x80", R"("\ufffd\u0200\ufffd")"},
      {Json::StaticString("caf\xC3\xA9 \"static\""), R"("caf\u00e9 \"static\"")"},
  };
  for (const auto& c : cases) ExpectWritten(c.value, c.text);
}

TEST(JsonText, ArraysAndObjectsAreWrittenAsJsonCppWritesThem) {
  Json::Value gaps;
  gaps[2] = 1;
  gaps[4] = Json::Value(Json::objectValue);
  ExpectWritten(gaps, "[null,null,1,null,{}]");
  Json::Value grown;
  grown.resize(3);
  ExpectWritten(grown, "[null,null,null]");

  Json::Value object;
  object[std::string("a\0b", 3)] = 1;
  object[""] = 2;
  object["\xFF\n"] = gaps;
  object[Json::StaticString("a")] = Json::Value(Json::arrayValue);
  ExpectWritten(object, R"({"":2,"a":[],"a\u0000b":1,"\ufffd\n":[null,null,1,null,{}]})");

  Json::Value deep = 1;
  std::string text = "1";
  for (int depth = 0; depth < 1000; ++depth) {
    Json::Value around;
    (depth % 2 == 0 ? around["a"] : around[0U]) = deep;
    deep.swap(around);
    text = depth % 2 == 0 ? "{\"a\":" + text + "}" : "[" + text + "]";
  }
  ExpectWritten(deep, text);
}

/// `value` with a comment at each place that there is.
Json::Value Commented(Json::Value value) {
  value.setComment(std::string("/*before*/"), Json::commentBefore);
  value.setComment(std::string("//same line"), Json::commentAfterOnSameLine);
  value.setComment(std::string("/*after*/"), Json::commentAfter);
  return value;
}

TEST(JsonText, CommentsAreWrittenAsJsonCppWritesThem) {
  ExpectWritten(Commented(1), "/*before*/1 //same line/*after*/");
  ExpectWritten(Commented(Json::Value(Json::arrayValue)), "/*before*/[] //same line/*after*/");

  Json::Value array;
  array[1] = Commented("x");
  array[2] = Commented(Json::Value());
  ExpectWritten(array,
                "[null,/*before*/\"x\", //same line/*after*//*before*/null //same line/*after*/]");

  Json::Value object;
  object["a"] = Commented(true);
  object["b"] = Commented(array);
  ExpectWritten(object,
                "{/*before*/\"a\":true, //same line/*after*/"
                "/*before*/\"b\":[null,/*before*/\"x\", //same line/*after*/"
                "/*before*/null //same line/*after*/] //same line/*after*/}");

  Json::Value lines = 1;
  lines.setComment(std::string("//one\n//two\n/* three\n   four */\n"), Json::commentBefore);
  ExpectWritten(lines, "//one\n//two\n/* three\n   four */1");
}

TEST(JsonText, LocaleOfTheProgramChangesNoNumber) {
  class CCommas : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale previous = std::locale::global({std::locale(), new CCommas});
  ExpectWritten(1234567, "1234567");
  ExpectWritten(4294967295U, "4294967295");
  ExpectWritten(1234567.25, "1234567.25");
  std::locale::global(previous);
}

TEST(JsonText, CommentsAreReadAndWrittenAgain) {
  CCerrCapture cerr;
  std::string errors;
  const Json::Value value = jsoncpp_string::toJsonObject("[/* one */ 1]", &errors);
  EXPECT_EQ(jsoncpp_string::toString(value), "[/* one */1]");
  EXPECT_EQ(errors, "");
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonText, TextSurvivesTheRoundTrip) {
  CCerrCapture cerr;
  std::string errors;
  const std::string text = R"({"a":[1,2.5,"x",null,true,{"b":-7}],"c":4294967295})";
  EXPECT_EQ(jsoncpp_string::toString(jsoncpp_string::toJsonObject(text, &errors)), text);
  EXPECT_EQ(errors, "");
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonWriter, OnlyTheIndentationDiffersFromTheDefaults) {
  CCerrCapture cerr;
  Json::StreamWriterBuilder expected;
  EXPECT_NE(expected["indentation"], Json::Value(""));
  expected["indentation"] = "";
  EXPECT_EQ(jsoncpp_string::CJsonWriter().settings_, expected.settings_);
  EXPECT_TRUE(jsoncpp_string::CJsonWriter().validate(nullptr));
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonWriter, MakesWritersThroughTheFactoryInterface) {
  CCerrCapture cerr;
  const jsoncpp_string::CJsonWriter builder;
  const Json::StreamWriter::Factory& factory = builder;
  const std::unique_ptr<Json::StreamWriter> writer(factory.newStreamWriter());
  std::ostringstream text;
  EXPECT_EQ(writer->write(Parse(R"({"a": [1, 2]})"), &text), 0);
  EXPECT_EQ(text.str(), R"({"a":[1,2]})");
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonWriter, InheritsTheMakingOfWritersUnchanged) {
  using jsoncpp_string::CJsonWriter;
  using CInheritedOperation = Json::StreamWriter* (Json::StreamWriterBuilder::*)() const;
  CCerrCapture cerr;
  EXPECT_TRUE((std::is_base_of<Json::StreamWriterBuilder, CJsonWriter>::value));
  EXPECT_TRUE((std::is_same<decltype(&CJsonWriter::newStreamWriter), CInheritedOperation>::value));
  EXPECT_EQ(sizeof(CJsonWriter), sizeof(Json::StreamWriterBuilder));
  EXPECT_EQ(cerr.Take(), "");
}

TEST(JsonWriter, IsDestroyedThroughItsBase) {
  class CCountedWriter : public jsoncpp_string::CJsonWriter {
   public:
    explicit CCountedWriter(int* destroyed) : m_destroyed(destroyed) {}
    ~CCountedWriter() override { *m_destroyed += 1; }

   private:
    int* m_destroyed;
  };
  CCerrCapture cerr;
  int destroyed = 0;
  std::unique_ptr<Json::StreamWriter::Factory> factory =
      std::make_unique<CCountedWriter>(&destroyed);
  EXPECT_EQ(Json::writeString(*factory, Parse("[1, 2]")), "[1,2]");
  factory.reset();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(cerr.Take(), "");
}

}  // namespace
