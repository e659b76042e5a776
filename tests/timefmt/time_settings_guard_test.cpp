#include "timefmt/time_settings_guard.h"

#include <gtest/gtest.h>
#include <time.h>

#include <clocale>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "support/time_settings_fixture.h"

namespace {

using tf::CTimeSettingsGuard;

class TimeSettingsGuard : public TimeSettingsTest {
 protected:
  TimeSettingsGuard() : TimeSettingsTest("EST5") {}

  /// The local time of noon UTC, as the C library has it without a further tzset().
  static std::string NoonUTC() {
    const time_t noon = 1000036800;
    tm local{};
    localtime_r(&noon, &local);
    return std::to_string(local.tm_hour) + ":" + std::to_string(local.tm_min);
  }
};

TEST_F(TimeSettingsGuard, SwitchesTheZoneForItsLifetime) {
  {
    const CTimeSettingsGuard guard("<+0530>-5:30", "");
    EXPECT_EQ(Variable("TZ"), "<+0530>-5:30");
    EXPECT_EQ(NoonUTC(), "17:30");
  }
  EXPECT_EQ(Variable("TZ"), "EST5");
  EXPECT_EQ(NoonUTC(), "7:0");
}

TEST_F(TimeSettingsGuard, SwitchesTheLocaleForItsLifetime) {
  {
    const CTimeSettingsGuard guard("", "C.UTF-8");
    EXPECT_EQ(Locale(), "C.UTF-8");
  }
  EXPECT_EQ(Locale(), "C");
}

TEST_F(TimeSettingsGuard, SwitchesBothTogether) {
  {
    const CTimeSettingsGuard guard("JST-9", "C.UTF-8");
    EXPECT_EQ(Variable("TZ"), "JST-9");
    EXPECT_EQ(NoonUTC(), "21:0");
    EXPECT_EQ(Locale(), "C.UTF-8");
  }
  EXPECT_EQ(Variable("TZ"), "EST5");
  EXPECT_EQ(NoonUTC(), "7:0");
  EXPECT_EQ(Locale(), "C");
}

TEST_F(TimeSettingsGuard, UsesTheLocaleNameAsGiven) {
  const CTimeSettingsGuard guard("", "C.utf8");
  EXPECT_EQ(Locale(), "C.utf8");
}

TEST_F(TimeSettingsGuard, SwitchesEveryCategory) {
  const CTimeSettingsGuard guard("", "C.UTF-8");
  for (const int category : {LC_COLLATE, LC_CTYPE, LC_MESSAGES, LC_MONETARY, LC_NUMERIC, LC_TIME}) {
    SCOPED_TRACE(category);
    EXPECT_STREQ(std::setlocale(category, nullptr), "C.UTF-8");
  }
}

TEST_F(TimeSettingsGuard, RemovesAZoneThatWasNotSet) {
  SetVariable("TZ", std::nullopt);
  const std::string noon = NoonUTC();
  {
    const CTimeSettingsGuard guard("<+0530>-5:30", "");
    EXPECT_EQ(Variable("TZ"), "<+0530>-5:30");
    EXPECT_EQ(NoonUTC(), "17:30");
  }
  EXPECT_EQ(Variable("TZ"), std::nullopt);
  EXPECT_EQ(NoonUTC(), noon);
}

TEST_F(TimeSettingsGuard, RestoresAnEmptyZoneAsEmpty) {
  SetVariable("TZ", "");
  { const CTimeSettingsGuard guard("JST-9", ""); }
  EXPECT_EQ(Variable("TZ"), "");
  EXPECT_EQ(NoonUTC(), "12:0");
}

TEST_F(TimeSettingsGuard, RestoresALocaleThatDiffersBetweenCategories) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  const std::string mixed = Locale();
  ASSERT_NE(mixed, "C");
  {
    const CTimeSettingsGuard guard("", "C.UTF-8");
    EXPECT_EQ(Locale(), "C.UTF-8");
  }
  EXPECT_EQ(Locale(), mixed);
}

TEST_F(TimeSettingsGuard, UnknownLocaleLeavesThePreviousOne) {
  std::setlocale(LC_ALL, "C.UTF-8");
  {
    const CTimeSettingsGuard guard("", "xx_XX.UTF-8");
    EXPECT_EQ(Locale(), "C.UTF-8");
  }
  EXPECT_EQ(Locale(), "C.UTF-8");
}

TEST_F(TimeSettingsGuard, PreviousLocaleComesBackAfterAnUnknownOneToo) {
  {
    const CTimeSettingsGuard guard("", "xx_XX.UTF-8");
    std::setlocale(LC_ALL, "C.UTF-8");
  }
  EXPECT_EQ(Locale(), "C");
}

TEST_F(TimeSettingsGuard, PreviousZoneComesBackAfterAnUnknownOneToo) {
  {
    const CTimeSettingsGuard guard("Nowhere/Unknown", "");
    EXPECT_EQ(Variable("TZ"), "Nowhere/Unknown");
  }
  EXPECT_EQ(Variable("TZ"), "EST5");
  EXPECT_EQ(NoonUTC(), "7:0");
}

TEST_F(TimeSettingsGuard, ZoneAloneLeavesTheLocaleAlone) {
  {
    const CTimeSettingsGuard guard("JST-9", "");
    EXPECT_EQ(Locale(), "C");
    std::setlocale(LC_ALL, "C.UTF-8");
  }
  EXPECT_EQ(Variable("TZ"), "EST5");
  EXPECT_EQ(Locale(), "C.UTF-8");
}

TEST_F(TimeSettingsGuard, LocaleAloneLeavesTheZoneAlone) {
  {
    const CTimeSettingsGuard guard("", "C.UTF-8");
    EXPECT_EQ(Variable("TZ"), "EST5");
    EXPECT_EQ(NoonUTC(), "7:0");
    SetVariable("TZ", "JST-9");
  }
  EXPECT_EQ(Locale(), "C");
  EXPECT_EQ(Variable("TZ"), "JST-9");
  EXPECT_EQ(NoonUTC(), "21:0");
}

TEST_F(TimeSettingsGuard, EmptyNamesLeaveEverythingAlone) {
  {
    const CTimeSettingsGuard guard("", "");
    EXPECT_EQ(Variable("TZ"), "EST5");
    EXPECT_EQ(Locale(), "C");
    SetVariable("TZ", std::nullopt);
    std::setlocale(LC_ALL, "C.UTF-8");
  }
  EXPECT_EQ(Variable("TZ"), std::nullopt);
  EXPECT_EQ(Locale(), "C.UTF-8");
}

TEST_F(TimeSettingsGuard, OverridesWhatIsChangedInItsLifetime) {
  {
    const CTimeSettingsGuard guard("JST-9", "C.UTF-8");
    SetVariable("TZ", std::nullopt);
    std::setlocale(LC_ALL, "POSIX");
  }
  EXPECT_EQ(Variable("TZ"), "EST5");
  EXPECT_EQ(NoonUTC(), "7:0");
  EXPECT_EQ(Locale(), "C");
}

TEST_F(TimeSettingsGuard, NestedGuardsRestoreStepByStep) {
  auto outer = std::make_unique<CTimeSettingsGuard>("JST-9", "C.UTF-8");
  auto inner = std::make_unique<CTimeSettingsGuard>("<+0530>-5:30", "C");
  EXPECT_EQ(NoonUTC(), "17:30");
  EXPECT_EQ(Locale(), "C");

  inner.reset();
  EXPECT_EQ(Variable("TZ"), "JST-9");
  EXPECT_EQ(NoonUTC(), "21:0");
  EXPECT_EQ(Locale(), "C.UTF-8");

  outer.reset();
  EXPECT_EQ(Variable("TZ"), "EST5");
  EXPECT_EQ(NoonUTC(), "7:0");
  EXPECT_EQ(Locale(), "C");
}

TEST_F(TimeSettingsGuard, SavedNamesOutliveManySwitches) {
  const std::string longZone = "<" + std::string(200, 'A') + ">5";
  SetVariable("TZ", longZone);
  std::setlocale(LC_CTYPE, "C.UTF-8");
  const std::string mixed = Locale();
  {
    const CTimeSettingsGuard guard("JST-9", "C.UTF-8");
    for (int i = 0; i < 100; ++i) {
      SetVariable("TZ", "UTC" + std::to_string(i % 24));
      std::setlocale(LC_ALL, i % 2 == 0 ? "C" : "C.UTF-8");
    }
  }
  EXPECT_EQ(Variable("TZ"), longZone);
  EXPECT_EQ(Locale(), mixed);
}

TEST_F(TimeSettingsGuard, EnvironmentVariableOfTheLocaleStaysAsItIs) {
  for (const Text& value : {Text(), Text(""), Text("xx_XX.UTF-8")}) {
    SCOPED_TRACE(value.value_or("not set"));
    SetVariable("LC_ALL", value);
    {
      const CTimeSettingsGuard guard("JST-9", "C.UTF-8");
      EXPECT_EQ(Variable("LC_ALL"), value);
      EXPECT_EQ(Locale(), "C.UTF-8");
    }
    EXPECT_EQ(Variable("LC_ALL"), value);
    EXPECT_EQ(Locale(), "C");
    { const CTimeSettingsGuard zoneOnly("JST-9", ""); }
    EXPECT_EQ(Variable("LC_ALL"), value);
  }
}

}  // namespace
