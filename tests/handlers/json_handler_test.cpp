#include "TokenTemplateHandlers/json_handler.h"

#include "support/resolver_fixture.h"

namespace {

class JsonHandler : public ResolverTest {
 protected:
  Json::Value ValueOf(const std::string& body) { return tokens.GetTokenValue(body); }

  CJsonHandler weather{Parse(R"({"today": {"high": 21}, "hours": [14, 15, 17], "none": null})")};
};

TEST_F(JsonHandler, PartsAfterTheNameStepIntoObjects) {
  tokens.Set("weather", &weather);
  EXPECT_EQ(ValueOf("weather.today.high"), Json::Value(21));
  EXPECT_EQ(ValueOf("weather.today"), Parse(R"({"high": 21})"));
  EXPECT_EQ(ValueOf("weather")["none"], Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(JsonHandler, WhatIsNotThereIsNull) {
  tokens.Set("weather", &weather);
  for (const char* body : {"weather.tomorrow", "weather.today.low", "weather.today.high.max",
                           "weather.hours.first", "weather.none.at.all"}) {
    SCOPED_TRACE(body);
    EXPECT_EQ(ValueOf(body), Json::Value());
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(JsonHandler, IndexSelectsAnArrayEntry) {
  tokens.Set("weather", &weather);
  EXPECT_EQ(ValueOf("weather.hours[0]"), Json::Value(14));
  EXPECT_EQ(ValueOf("weather.hours[2]+1"), Json::Value(18));
  EXPECT_EQ(ValueOf("weather.hours[3]"), Json::Value());
  EXPECT_EQ(ValueOf("weather.hours[-1]"), Json::Value());
  EXPECT_EQ(ValueOf("weather.today[0]"), Json::Value());
  EXPECT_EQ(ValueOf("weather.hours#"), Json::Value(3U));
  EXPECT_EQ(Errors(), "");
}

TEST_F(JsonHandler, CountIsThatOfTheWholeValue) {
  const char* const values[] = {"[]",
                                "[null]",
                                R"([1, "a", [2, 3], {"b": 4}])",
                                R"({"a": 1, "b": 2})",
                                "{}",
                                "null",
                                "5",
                                R"("")",
                                R"("a,b,c")",
                                "true"};
  for (const char* text : values) {
    SCOPED_TRACE(text);
    const CJsonHandler value(Parse(R"({"at": )" + std::string(text) + "}"));
    tokens.Set("value", &value);
    Json::Value whole = ValueOf("value.at");
    EXPECT_EQ(whole, Parse(text));
    CTokenResolver::ConvertToArray(whole);
    EXPECT_EQ(ValueOf("value.at#"), Json::Value(whole.size()));
    EXPECT_EQ(ValueOf("value.at#[]"), Json::Value(whole.size()));
    EXPECT_EQ(ValueOf("value.at#*2"), Json::Value(2 * static_cast<int>(whole.size())));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(JsonHandler, NameWithDotsTakesAsManyParts) {
  const CJsonHandler now(Parse(R"({"high": 25})"), 2);
  tokens.Set("weather", &weather);
  tokens.Set("weather.now", &now);
  EXPECT_EQ(ValueOf("weather.now.high"), Json::Value(25));
  EXPECT_EQ(ValueOf("weather.today.high"), Json::Value(21));
  EXPECT_EQ(Errors(), "");
}

TEST_F(JsonHandler, SetValueShowsInTheNextPass) {
  tokens.Set("weather", &weather);
  const std::string page = R"j({"Contents":["$(weather.today.high)"]})j";
  EXPECT_EQ(Resolve(page), R"({"Contents":[21]})");
  weather.SetValue(Parse(R"({"today": {"high": 19}})"));
  EXPECT_EQ(Resolve(page), R"({"Contents":[19]})");
  EXPECT_EQ(Errors(), "");
}

}  // namespace
