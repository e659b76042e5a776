#include "TokenTemplateResolver/time_format.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <time.h>

#include <clocale>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/time_settings_fixture.h"

namespace {

using Names = std::vector<std::string>;

/// What setlocale is asked for while a test watches it; null otherwise.
Names* watchedNames = nullptr;
/// Whether setlocale, while it is watched, does not tell the locale in force.
bool localeIsSecret = false;

}  // namespace

/// Stands before the C library's function in the whole test program.
extern "C" char* setlocale(int category, const char* name) noexcept {
  using Function = char* (*)(int, const char*);
  static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "setlocale"));
  if (watchedNames != nullptr) {
    const std::string prefix = category == LC_ALL ? "" : "one category: ";
    watchedNames->push_back(prefix + (name == nullptr ? "(query)" : name));
    if (name == nullptr && localeIsSecret) return nullptr;
  }
  return original(category, name);
}

namespace {

constexpr long long latest = std::numeric_limits<long long>::max();
constexpr long long earliest = std::numeric_limits<long long>::min();
constexpr long long leapDay = 951782400;  // Tuesday, 2000-02-29 00:00:00 UTC

class TimeFormat : public TimeSettingsTest {
 protected:
  TimeFormat() : TimeSettingsTest("UTC0") {}

  /// What setlocale is asked for during `call`.
  template <typename Call>
  static Names NamesDuring(Call call) {
    Names names;
    watchedNames = &names;
    call();
    watchedNames = nullptr;
    return names;
  }
};

TEST_F(TimeFormat, UTC) {
  const struct {
    long long seconds;
    const char* format;
    const char* expected;
  } cases[] = {
      {0, "%Y-%m-%d %H:%M", "1970-01-01 00:00"},
      {-1, "%Y-%m-%d %H:%M:%S", "1969-12-31 23:59:59"},
      {-2208988800, "%Y-%m-%d %H:%M:%S", "1900-01-01 00:00:00"},
      {leapDay, "%A, %e. %B %Y", "Tuesday, 29. February 2000"},
      {2147483647, "%Y-%m-%d %H:%M:%S", "2038-01-19 03:14:07"},
      {2147483648, "%Y-%m-%d %H:%M:%S", "2038-01-19 03:14:08"},
      {-2147483649, "%Y-%m-%d %H:%M:%S", "1901-12-13 20:45:51"},
      {4102444800, "%Y", "2100"},
      {4294967296, "%Y-%m-%d %H:%M:%S", "2106-02-07 06:28:16"},
      {253402300799, "%Y-%m-%d %H:%M:%S", "9999-12-31 23:59:59"},
      {253402300800, "%Y-%m-%d %H:%M:%S", "10000-01-01 00:00:00"},
      {0, "", ""},
      {0, "at 100%%", "at 100%"},
      {0, "gr\u00fcn %H Uhr", "gr\u00fcn 00 Uhr"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(std::to_string(testCase.seconds) + " as " + testCase.format);
    EXPECT_EQ(tf::formatTimeUTC(testCase.seconds, "", testCase.format), testCase.expected);
  }
}

TEST_F(TimeFormat, UTCDoesNotDependOnTheZone) {
  SetVariable("TZ", "JST-9");
  EXPECT_EQ(tf::formatTimeUTC(leapDay, "", "%d. %H:%M %z"), "29. 00:00 +0000");
  EXPECT_EQ(Variable("TZ"), "JST-9");
}

TEST_F(TimeFormat, LocalTimeIsThatOfTheZoneInForce) {
  const struct {
    const char* zone;
    long long seconds;
    const char* expected;
  } cases[] = {
      {"UTC0", 0, "1970-01-01 00:00 UTC +0000"},
      {"EST5", 0, "1969-12-31 19:00 EST -0500"},
      {"JST-9", leapDay, "2000-02-29 09:00 JST +0900"},
      {"<+0530>-5:30", leapDay, "2000-02-29 05:30 +0530 +0530"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", 4102444800, "2100-01-01 01:00 CET +0100"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", 1121428800, "2005-07-15 14:00 CEST +0200"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", 4118083200, "2100-07-01 02:00 CEST +0200"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(std::string(testCase.zone) + " at " + std::to_string(testCase.seconds));
    SetVariable("TZ", testCase.zone);
    EXPECT_EQ(tf::formatTimeLocal(testCase.seconds, "", "%Y-%m-%d %H:%M %Z %z"), testCase.expected);
    EXPECT_EQ(Variable("TZ"), testCase.zone);
  }
}

TEST_F(TimeFormat, BrokenDownTimeIsTakenAsItStands) {
  tm time{};
  time.tm_year = 105;
  time.tm_mon = 1;
  time.tm_mday = 30;
  time.tm_hour = 23;
  time.tm_min = 5;
  time.tm_sec = 60;
  time.tm_wday = 6;
  time.tm_yday = 0;
  EXPECT_EQ(tf::formatTimeBroken(&time, "", "%Y-%m-%d %H:%M:%S %A %j"),
            "2005-02-30 23:05:60 Saturday 001");
  EXPECT_EQ(time.tm_mon, 1);
  EXPECT_EQ(time.tm_mday, 30);
  EXPECT_EQ(time.tm_sec, 60);
}

TEST_F(TimeFormat, BrokenDownTimeBelongsToTheZoneInForce) {
  SetVariable("TZ", "EST5");
  tm midnight{};
  midnight.tm_year = 70;
  midnight.tm_mday = 1;
  EXPECT_EQ(tf::formatTimeBroken(&midnight, "C", "%s"), "18000");
  EXPECT_EQ(Variable("TZ"), "EST5");
}

TEST_F(TimeFormat, TextsOf128BytesAndMoreAreEmpty) {
  std::string umlauts;
  for (int i = 0; i < 63; ++i) umlauts += "\u00fc";
  const struct {
    std::string format;
    std::string expected;
  } cases[] = {
      {std::string(126, 'x'), std::string(126, 'x')},
      {std::string(127, 'x'), std::string(127, 'x')},
      {std::string(128, 'x'), ""},
      {std::string(1000, 'x'), ""},
      {std::string(123, 'x') + "%Y", std::string(123, 'x') + "1970"},
      {std::string(124, 'x') + "%Y", ""},
      {"%Y" + std::string(123, 'x'), "1970" + std::string(123, 'x')},
      {"%Y" + std::string(124, 'x'), ""},
      {std::string(120, 'x') + "%%%%%%%%%%%%%%", std::string(120, 'x') + "%%%%%%%"},
      {umlauts + "x", umlauts + "x"},
      {umlauts + "\u00fc", ""},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.format);
    tm epoch{};
    epoch.tm_year = 70;
    EXPECT_EQ(tf::formatTimeBroken(&epoch, "", testCase.format), testCase.expected);
    EXPECT_EQ(tf::formatTimeLocal(0, "", testCase.format), testCase.expected);
    EXPECT_EQ(tf::formatTimeUTC(0, "C", testCase.format), testCase.expected);
    EXPECT_EQ(tf::formatTimeRemaining(0, testCase.format), testCase.expected);
    EXPECT_EQ(Locale(), "C");
  }
}

TEST_F(TimeFormat, TimesWithoutACalendarDateAreEmpty) {
  const struct {
    long long seconds;
    const char* expected;
  } cases[] = {
      {67768036191676799, "12-31 23:59:59"},  {67768036191676800, ""},  {latest, ""},
      {-67768040609740800, "01-01 00:00:00"}, {-67768040609740801, ""}, {earliest, ""},
  };
  const std::string format = "%m-%d %H:%M:%S";
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.seconds);
    EXPECT_EQ(tf::formatTimeLocal(testCase.seconds, "C", format), testCase.expected);
    EXPECT_EQ(tf::formatTimeUTC(testCase.seconds, "C", format), testCase.expected);
    EXPECT_EQ(tf::formatTimeRemaining(testCase.seconds, format), testCase.expected);
    EXPECT_EQ(Locale(), "C");
  }
}

TEST_F(TimeFormat, LocaleNamesTheUTF8Variant) {
  const struct {
    const char* locale;
    const char* expected;
  } cases[] = {
      {"de_DE", "de_DE.UTF-8"},
      {"C", "C.UTF-8"},
      {"de_DE.UTF-8", "de_DE.UTF-8"},
      {"C.UTF-8", "C.UTF-8"},
      {".UTF-8", ".UTF-8"},
      {"x.UTF-8", "x.UTF-8"},
      {"UTF-8", "UTF-8.UTF-8"},
      {"xUTF-8", "xUTF-8.UTF-8"},
      {"de_DE.utf8", "de_DE.utf8.UTF-8"},
      {"de_DE.utf-8", "de_DE.utf-8.UTF-8"},
      {"de_DE.Utf-8", "de_DE.Utf-8.UTF-8"},
      {"de_DE.UTF8", "de_DE.UTF8.UTF-8"},
      {"de_DE.UTF-8 ", "de_DE.UTF-8 .UTF-8"},
      {"de_DE@euro", "de_DE@euro.UTF-8"},
      {"de_DE.UTF-8@euro", "de_DE.UTF-8@euro.UTF-8"},
      {"de_DE.ISO-8859-1", "de_DE.ISO-8859-1.UTF-8"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.locale);
    const Names expected = {"(query)", testCase.expected, "C"};
    tm epoch{};
    EXPECT_EQ(NamesDuring([&] { tf::formatTimeBroken(&epoch, testCase.locale, "%H"); }), expected);
    EXPECT_EQ(NamesDuring([&] { tf::formatTimeLocal(0, testCase.locale, "%H"); }), expected);
    EXPECT_EQ(NamesDuring([&] { tf::formatTimeUTC(0, testCase.locale, "%H"); }), expected);
    EXPECT_EQ(Locale(), "C");
  }
}

TEST_F(TimeFormat, EmptyLocaleLeavesTheLocaleAlone) {
  tm epoch{};
  EXPECT_EQ(NamesDuring([&] {
              tf::formatTimeBroken(&epoch, "", "%A");
              tf::formatTimeLocal(0, "", "%A");
              tf::formatTimeUTC(0, "", "%A");
            }),
            Names());
}

TEST_F(TimeFormat, UnknownLocaleLeavesTheOneInForce) {
  EXPECT_EQ(tf::formatTimeUTC(leapDay, "xx_XX", "%A, %e. %B"), "Tuesday, 29. February");
  EXPECT_EQ(tf::formatTimeLocal(leapDay, "xx_XX.UTF-8", "%A, %e. %B"), "Tuesday, 29. February");
  EXPECT_EQ(Locale(), "C");
}

TEST_F(TimeFormat, HostsLocaleComesBack) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  const std::string mixed = Locale();
  ASSERT_NE(mixed, "C");
  for (const char* locale : {"", "C", "C.UTF-8", "xx_XX"}) {
    SCOPED_TRACE(locale);
    tm epoch{};
    epoch.tm_year = 70;
    EXPECT_EQ(tf::formatTimeBroken(&epoch, locale, "%Y"), "1970");
    EXPECT_EQ(Locale(), mixed);
    EXPECT_EQ(tf::formatTimeLocal(0, locale, "%Y"), "1970");
    EXPECT_EQ(Locale(), mixed);
    EXPECT_EQ(tf::formatTimeUTC(0, locale, "%Y"), "1970");
    EXPECT_EQ(Locale(), mixed);
  }
}

TEST_F(TimeFormat, EnvironmentStaysAsItIs) {
  for (const Text& value : {Text(), Text("xx_XX.UTF-8")}) {
    SCOPED_TRACE(value.value_or("not set"));
    SetVariable("LC_ALL", value);
    SetVariable("TZ", value ? Text("EST5") : Text());
    EXPECT_EQ(tf::formatTimeUTC(0, "C", "%Y"), "1970");
    EXPECT_EQ(tf::formatTimeLocal(leapDay, "C", "%Y"), "2000");
    EXPECT_EQ(tf::formatTimeUTC(0, "", "%Y"), "1970");
    EXPECT_EQ(tf::formatTimeRemaining(60, "%S"), "00");
    EXPECT_EQ(Variable("LC_ALL"), value);
    EXPECT_EQ(Variable("TZ"), value ? Text("EST5") : Text());
  }
}

TEST_F(TimeFormat, WithoutASavedLocaleTheEnvironmentVariableIsRemovedInstead) {
  SetVariable("LC_ALL", "C");
  localeIsSecret = true;
  const Names names = NamesDuring([] { EXPECT_EQ(tf::formatTimeUTC(0, "C", "%Y"), "1970"); });
  localeIsSecret = false;
  EXPECT_EQ(names, Names({"(query)", "C.UTF-8"}));
  EXPECT_EQ(Variable("LC_ALL"), std::nullopt);
  EXPECT_EQ(Locale(), "C.UTF-8");
}

TEST_F(TimeFormat, RemainingWholeMinutes) {
  const std::pair<long long, const char*> cases[] = {
      {0, "0"},
      {30, "0"},
      {59, "0"},
      {60, "1"},
      {3599, "59"},
      {3600, "60"},
      {7200, "120"},
      {360000, "6000"},
      {-30, "0"},
      {-59, "0"},
      {-60, "-1"},
      {-90, "-1"},
      {-120, "-2"},
      {128849018820, "2147483647"},
      {128849018879, "2147483647"},
      {128849018880, "-2147483648"},
      {-128849018939, "-2147483648"},
      {-128849018940, "2147483647"},
      {257698037760, "0"},
      {257698041420, "61"},
      {-257698041420, "-61"},
      {latest, "572662306"},
      {earliest, "-572662306"},
  };
  for (const auto& [seconds, expected] : cases) {
    SCOPED_TRACE(seconds);
    EXPECT_EQ(tf::formatTimeRemaining(seconds, ""), expected);
    EXPECT_EQ(tf::formatTimeRemaining(seconds, "%M"), expected);
  }
}

TEST_F(TimeFormat, RemainingHoursAndMinutes) {
  const std::pair<long long, const char*> cases[] = {
      {0, "0:00"},
      {59, "0:00"},
      {60, "0:01"},
      {599, "0:09"},
      {3599, "0:59"},
      {3600, "1:00"},
      {3900, "1:05"},
      {86400, "24:00"},
      {360000, "100:00"},
      {-59, "0:00"},
      {-300, "0:-5"},
      {-3540, "0:-59"},
      {-3600, "-1:00"},
      {-3900, "-1:-5"},
      {-4200, "-1:-10"},
      {128849018820, "35791394:07"},
      {128849018880, "-35791394:-8"},
      {-128849018880, "-35791394:-8"},
      {-128849018940, "35791394:07"},
      {257698041420, "1:01"},
      {latest, "9544371:46"},
      {earliest, "-9544371:-46"},
  };
  for (const auto& [seconds, expected] : cases) {
    SCOPED_TRACE(seconds);
    EXPECT_EQ(tf::formatTimeRemaining(seconds, "%H:%M"), expected);
  }
}

TEST_F(TimeFormat, RemainingInAnyOtherFormatIsATimeOfDay) {
  const struct {
    long long seconds;
    const char* format;
    const char* expected;
  } cases[] = {
      {3661, "%H:%M:%S", "01:01:01"}, {90000, "%H:%M:%S", "01:00:00"},
      {-60, "%H:%M:%S", "23:59:00"},  {4102444800, "%Y-%m-%d", "2100-01-01"},
      {7200, "%M ", "00 "},           {7200, "%M min", "00 min"},
      {3599, "%M:%S", "59:59"},       {360000, "%R", "04:00"},
      {360000, " %H:%M", " 04:00"},   {360000, "%H:%M h", "04:00 h"},
      {360000, "%H", "04"},           {60, "soon", "soon"},
  };
  SetVariable("TZ", "EST5");
  for (const auto& testCase : cases) {
    SCOPED_TRACE(std::to_string(testCase.seconds) + " as " + testCase.format);
    EXPECT_EQ(tf::formatTimeRemaining(testCase.seconds, testCase.format), testCase.expected);
  }
}

TEST_F(TimeFormat, RemainingTimeLeavesTheLocaleAlone) {
  EXPECT_EQ(NamesDuring([] {
              tf::formatTimeRemaining(60, "");
              tf::formatTimeRemaining(60, "%H:%M");
              tf::formatTimeRemaining(60, "%A");
            }),
            Names());
}

/// A locale in which names differ from those of "C".
class GermanTimeFormat : public TimeFormat {
 protected:
  void SetUp() override {
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr)
        << "These tests need the locale de_DE.UTF-8: install the package \"locales\" and run "
           "\"localedef -i de_DE -f UTF-8 de_DE.UTF-8\".";
    std::setlocale(LC_ALL, "C");
  }
};

TEST_F(GermanTimeFormat, WritesNamesInTheLocale) {
  const struct {
    const char* locale;
    const char* expected;
  } cases[] = {
      {"de_DE", "Dienstag, 8. M\u00e4rz 2005"}, {"de_DE.UTF-8", "Dienstag, 8. M\u00e4rz 2005"},
      {"de_DE.utf8", "Tuesday, 8. March 2005"}, {"C", "Tuesday, 8. March 2005"},
      {"", "Tuesday, 8. March 2005"},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.locale);
    tm march{};
    march.tm_year = 105;
    march.tm_mon = 2;
    march.tm_mday = 8;
    march.tm_wday = 2;
    const std::string format = "%A, %-d. %B %Y";
    EXPECT_EQ(tf::formatTimeBroken(&march, testCase.locale, format), testCase.expected);
    EXPECT_EQ(tf::formatTimeLocal(1110240000, testCase.locale, format), testCase.expected);
    EXPECT_EQ(tf::formatTimeUTC(1110240000, testCase.locale, format), testCase.expected);
    EXPECT_EQ(Locale(), "C");
  }
}

TEST_F(GermanTimeFormat, HostsLanguageIsUsedWhereNoOtherOneIsSelected) {
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  const std::pair<const char*, const char*> cases[] = {
      {"", "Dienstag"},       {"xx_XX", "Dienstag"},      {"C", "Tuesday"},
      {"C.UTF-8", "Tuesday"}, {"de_DE.utf8", "Dienstag"},
  };
  for (const auto& [locale, expected] : cases) {
    SCOPED_TRACE(locale);
    EXPECT_EQ(tf::formatTimeUTC(leapDay, locale, "%A"), expected);
    EXPECT_EQ(Locale(), "de_DE.UTF-8");
  }
  EXPECT_EQ(tf::formatTimeRemaining(leapDay, "%A"), "Dienstag");
}

TEST_F(GermanTimeFormat, TextWithoutCharactersIsEmpty) {
  EXPECT_EQ(tf::formatTimeUTC(0, "de_DE", "%p"), "");
  EXPECT_EQ(tf::formatTimeUTC(0, "", "%p"), "AM");
}

TEST_F(GermanTimeFormat, LengthCountsBytes) {
  const std::string text(122, 'x');
  EXPECT_EQ(tf::formatTimeUTC(1110240000, "de_DE", text + "%B"), text + "M\u00e4rz");
  EXPECT_EQ(tf::formatTimeUTC(1110240000, "de_DE", "x" + text + "%B"), "");
  EXPECT_EQ(Locale(), "C");
}

}  // namespace
