// Points in time and durations as text. Goes in: seconds or a broken-down time, a locale, a
// format; comes out: the text, empty when it does not fit or the time has no date.

// 64-bit time on 32-bit platforms; the C library wants these before its first header.
#ifndef _TIME_BITS
#define _TIME_BITS 64
#endif
#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64
#endif

#include "TokenTemplateResolver/time_format.h"

#include <time.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "timefmt/time_settings_guard.h"

namespace tf {
namespace {

static_assert(sizeof(time_t) == sizeof(long long), "times beyond 2038 need a 64-bit time_t");

constexpr std::size_t bufferSize = 128;
constexpr char utf8Suffix[] = ".UTF-8";
constexpr std::size_t utf8SuffixLength = 6;

/// `format` applied to `time`; empty when the text does not fit.
std::string formatted(const tm* time, const std::string& format) {
  char buffer[bufferSize];
  const std::size_t length = strftime(buffer, bufferSize, format.c_str(), time);
  return length == 0 ? "" : buffer;
}

/// The UTF-8 variant of a locale name; only the exact suffix ".UTF-8" is recognised.
std::string utf8Variant(std::string locale) {
  const bool named =
      locale.size() >= utf8SuffixLength &&
      locale.compare(locale.size() - utf8SuffixLength, utf8SuffixLength, utf8Suffix) == 0;
  return named ? locale : locale.append(utf8Suffix);
}

std::int32_t wholeMinutes(long long seconds) { return static_cast<std::int32_t>(seconds / 60); }

std::string minutesText(std::int32_t minutes) {
  char buffer[bufferSize];
  std::snprintf(buffer, bufferSize, "%d", minutes);
  return buffer;
}

std::string hoursAndMinutesText(std::int32_t minutes) {
  char buffer[bufferSize];
  std::snprintf(buffer, bufferSize, "%d:%02d", minutes / 60, minutes % 60);
  return buffer;
}

}  // namespace

std::string formatTimeBroken(tm* time, std::string locale, const std::string& format) {
  if (!locale.empty()) locale = utf8Variant(std::move(locale));
  const CTimeSettingsGuard guard("", locale);
  return formatted(time, format);
}

std::string formatTimeLocal(long long seconds, const std::string& locale,
                            const std::string& format) {
  const time_t time = seconds;
  tm broken{};
  if (localtime_r(&time, &broken) == nullptr) return "";
  return formatTimeBroken(&broken, locale, format);
}

std::string formatTimeUTC(long long seconds, const std::string& locale, const std::string& format) {
  const time_t time = seconds;
  tm broken{};
  if (gmtime_r(&time, &broken) == nullptr) return "";
  return formatTimeBroken(&broken, locale, format);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value in the stable interface
std::string formatTimeRemaining(long long seconds, std::string format) {
  if (format.empty() || format == "%M") return minutesText(wholeMinutes(seconds));
  if (format == "%H:%M") return hoursAndMinutesText(wholeMinutes(seconds));
  const time_t time = seconds;
  tm broken{};
  if (gmtime_r(&time, &broken) == nullptr) return "";
  return formatted(&broken, format);
}

}  // namespace tf
