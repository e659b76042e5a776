#include "TokenTemplateResolver/json_text.h"

#include <gtest/gtest.h>
#include <json/reader.h>

#include <limits>
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
