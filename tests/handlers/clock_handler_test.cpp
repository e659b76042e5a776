#include "TokenTemplateHandlers/clock_handler.h"

#include <ctime>

#include "TokenTemplateResolver/time_format.h"
#include "support/resolver_fixture.h"

namespace {

class ClockHandler : public ResolverTest {
 protected:
  ClockHandler() { tokens.Set("clock", &clock); }

  CClockHandler clock;
};

TEST_F(ClockHandler, ArgumentIsTheFormat) {
  clock.SetTime(1000000000);
  EXPECT_EQ(tokens.GetTokenValue("clock:%Y-%m-%d %H:%M:%S"),
            Json::Value(tf::formatTimeLocal(1000000000, "", "%Y-%m-%d %H:%M:%S")));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ClockHandler, WithoutArgumentItShowsHoursAndMinutes) {
  clock.SetTime(1000000000);
  const Json::Value expected(tf::formatTimeLocal(1000000000, "", "%H:%M"));
  EXPECT_EQ(tokens.GetTokenValue("clock"), expected);
  EXPECT_EQ(tokens.GetTokenValue("clock.time"), expected);
  EXPECT_EQ(clock.GetPartsValue({"clock", "time"}), expected);
  EXPECT_EQ(Errors(), "");
}

TEST_F(ClockHandler, ShowsTheCurrentTimeUntilOneIsSet) {
  const std::time_t before = std::time(nullptr);
  const long long shown = std::stoll(tokens.GetTokenValue("clock:%s").asString());
  EXPECT_GE(shown, before);
  EXPECT_LE(shown, std::time(nullptr));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ClockHandler, TimesBeyond2038) {
  clock.SetTime(4102444800);
  EXPECT_EQ(tokens.GetTokenValue("clock:%s"), Json::Value("4102444800"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ClockHandler, UnknownLocaleLeavesTheOneInForce) {
  CClockHandler foreign("xx_XX");
  tokens.Set("foreign", &foreign);
  foreign.SetTime(0);
  EXPECT_EQ(tokens.GetTokenValue("foreign:%Y"), Json::Value("1970"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(ClockHandler, ServesTokensInText) {
  clock.SetTime(0);
  EXPECT_EQ(Resolve(R"j({"Contents":["Year $(clock:%Y)"]})j"), R"({"Contents":["Year 1970"]})");
  EXPECT_EQ(Errors(), "");
}

}  // namespace
