// The functions that format times, against strftime itself, a second calendar, and 64-bit minutes.
// Input: seconds; a locale; a format; the locale and the time zone of the process (numbers that
// choose); then the nine numbers of a broken-down time; each on its line.

// 64-bit time on 32-bit platforms; the C library wants these before its first header.
#ifndef _TIME_BITS
#define _TIME_BITS 64
#endif
#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64
#endif

#include <time.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "TokenTemplateResolver/time_format.h"
#include "fuzz_input.h"
#include "fuzz_support.h"

static_assert(sizeof(time_t) == sizeof(std::int64_t), "times beyond 2038");

namespace {

using ttr::require;

constexpr std::size_t bufferSize = 128;

/// Sets the locale and the time zone of the process, as a host has done before it formats times.
void settle(std::int64_t locale, std::int64_t zone) {
  static const char* const locales[] = {"C", "C.UTF-8", "de_DE.UTF-8"};
  // Rules, not names: names are files, and not every machine has them.
  static const char* const zones[] = {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "<-0330>3:30", ""};
  // One that is not installed leaves the one before in force, which must not be another run's.
  std::setlocale(LC_ALL, "C");
  std::setlocale(LC_ALL, locales[static_cast<std::uint64_t>(locale) % 3]);
  setenv("TZ", zones[static_cast<std::uint64_t>(zone) % 4], 1);
  tzset();
}

std::string timeZone() {
  const char* const rules = std::getenv("TZ");
  return rules == nullptr ? "none" : rules;
}

/// Runs `format` twice, and checks what every formatting leaves behind.
template <typename Format>
std::string formatted(const Format& format) {
  const std::string locale = std::setlocale(LC_ALL, nullptr);
  const std::string zone = timeZone();
  std::string text;
  std::string again;
  ttr::finishes<>([&] {
    text = format();
    again = format();
  });
  require(text == again, "the same text twice");
  require(text.size() < bufferSize, "texts fit into 128 bytes with their end");
  require(locale == std::setlocale(LC_ALL, nullptr), "the locale is restored");
  require(zone == timeZone(), "the time zone is restored");
  return text;
}

/// `time` in the locale of the process; empty when 128 bytes do not hold it. Formatted into more,
/// so that the limit is ours.
std::string expectedText(const tm& time, const std::string& format) {
  char buffer[64 * bufferSize];
  const std::size_t length = strftime(buffer, sizeof buffer, format.c_str(), &time);
  return length == 0 || length >= bufferSize ? "" : std::string(buffer, length);
}

/// `time` in `locale`, which is switched here as it is there.
std::string expectedText(const tm& time, std::string locale, const std::string& format) {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  if (!locale.empty()) {
    const std::string suffix = ".UTF-8";
    const std::size_t end = locale.size() - std::min(locale.size(), suffix.size());
    if (locale.substr(end) != suffix) locale += suffix;
    std::setlocale(LC_ALL, locale.c_str());
  }
  std::string text = expectedText(time, format);
  std::setlocale(LC_ALL, previous.c_str());
  return text;
}

void checkRemaining(std::int64_t seconds, const std::string& format) {
  // The minutes are narrowed to 32 bits.
  const auto minutes = static_cast<std::int32_t>(
      static_cast<std::uint32_t>(static_cast<std::uint64_t>(seconds / 60) & 0xFFFFFFFF));
  char clock[64];
  std::snprintf(clock, sizeof clock, "%d:%02d", minutes / 60, minutes % 60);
  const auto remaining = [seconds](const std::string& written) {
    return formatted([&] { return tf::formatTimeRemaining(seconds, written); });
  };
  require(remaining("") == std::to_string(minutes), "whole minutes");
  require(remaining("%M") == std::to_string(minutes), "whole minutes by format");
  require(remaining("%H:%M") == clock, "hours and minutes");
  if (format.empty() || format == "%M" || format == "%H:%M") return;
  const std::string day = formatted([&] { return tf::formatTimeUTC(seconds, "", format); });
  require(remaining(format) == day, "other formats show the time since the epoch");
}

/// The date and time of `seconds`, for four-digit years, by counting days.
void checkCalendar(std::int64_t seconds) {
  constexpr std::int64_t firstSecond = -30610224000;  // 1000-01-01
  constexpr std::int64_t lastSecond = 253402300799;   // 9999-12-31 23:59:59
  if (seconds < firstSecond || seconds > lastSecond) return;
  const std::int64_t day = (seconds - firstSecond) / 86400;
  const std::int64_t second = (seconds - firstSecond) % 86400;
  const auto isLeap = [](std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  };
  const auto daysBefore = [](std::int64_t year) {  // since year 1
    return (year - 1) * 365 + (year - 1) / 4 - (year - 1) / 100 + (year - 1) / 400;
  };
  std::int64_t year = 1000 + day / 366;
  while (daysBefore(year + 1) - daysBefore(1000) <= day) ++year;
  std::int64_t rest = day - (daysBefore(year) - daysBefore(1000));
  const int lengths[] = {31, isLeap(year) ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int month = 0;
  for (; rest >= lengths[month]; ++month) rest -= lengths[month];
  char expected[128];
  std::snprintf(expected, sizeof expected, "%d-%02d-%02d %02d:%02d:%02d", static_cast<int>(year),
                month + 1, static_cast<int>(rest) + 1, static_cast<int>(second / 3600),
                static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
  require(tf::formatTimeUTC(seconds, "", "%Y-%m-%d %H:%M:%S") == expected, "the calendar");
}

void checkTimes(std::int64_t seconds, const std::string& locale, const std::string& format) {
  const time_t time = seconds;
  tm broken{};
  const bool dated = gmtime_r(&time, &broken) != nullptr;
  const std::string utc = formatted([&] { return tf::formatTimeUTC(seconds, locale, format); });
  require(utc == (dated ? expectedText(broken, locale, format) : ""), "UTC");

  tm brokenLocal{};
  const bool datedLocal = localtime_r(&time, &brokenLocal) != nullptr;
  const std::string local = formatted([&] { return tf::formatTimeLocal(seconds, locale, format); });
  require(local == (datedLocal ? expectedText(brokenLocal, locale, format) : ""), "local time");
}

/// A broken-down time of any numbers: the C library writes "?" for names that there are not.
tm readBroken(ttr::CFuzzInput& input) {
  const auto number = [&input] {
    constexpr std::int64_t lowest = std::numeric_limits<int>::min();
    constexpr std::int64_t highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(input.number(), lowest, highest));
  };
  tm broken{};
  for (int* field :
       {&broken.tm_sec, &broken.tm_min, &broken.tm_hour, &broken.tm_mday, &broken.tm_mon,
        &broken.tm_year, &broken.tm_wday, &broken.tm_yday, &broken.tm_isdst}) {
    *field = number();
  }
  return broken;
}

void checkBroken(const tm& broken, const std::string& locale, const std::string& format) {
  tm time = broken;
  const std::string text = formatted([&] { return tf::formatTimeBroken(&time, locale, format); });
  require(text == expectedText(broken, locale, format), "broken-down time");
  const bool kept = time.tm_sec == broken.tm_sec && time.tm_min == broken.tm_min &&
                    time.tm_hour == broken.tm_hour && time.tm_mday == broken.tm_mday &&
                    time.tm_mon == broken.tm_mon && time.tm_year == broken.tm_year &&
                    time.tm_wday == broken.tm_wday && time.tm_yday == broken.tm_yday;
  require(kept, "the broken-down time is not changed");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ttr::CFuzzInput input(data, size);
  const std::int64_t seconds = input.number();
  const std::string locale = input.line();
  const std::string format = input.line();
  const std::int64_t processLocale = input.number();
  settle(processLocale, input.number());
  const tm broken = readBroken(input);

  checkTimes(seconds, locale, format);
  checkRemaining(seconds, format);
  checkCalendar(seconds);
  checkBroken(broken, locale, format);
  return 0;
}
