#ifndef TOKENTEMPLATERESOLVER_TIME_FORMAT_H
#define TOKENTEMPLATERESOLVER_TIME_FORMAT_H

#include <ctime>
#include <string>

#include "TokenTemplateResolver/export.h"

/// Points in time and durations as display text, for token handlers such as clocks.
///
/// Formats are those of strftime. Times are seconds since the Unix epoch in 64 bits, beyond 2038
/// on 32-bit platforms too. A `locale` is a name without encoding, such as "de_DE", and selects
/// that locale's UTF-8 variant; an empty one leaves the locale alone, an unknown one counts as
/// the one in force. A text of 128 bytes and more, and a time that has no calendar date, give "".
///
///     tf::formatTimeUTC(0, "", "%Y-%m-%d %H:%M")       // "1970-01-01 00:00"
///     tf::formatTimeLocal(now, "de_DE", "%A, %e. %B")  // "Samstag, 21. November"
///     tf::formatTimeRemaining(3900, "%H:%M")           // "1:05"
///
/// The locale is switched for the whole process during a call: calls, and whatever else depends on
/// the locale, must be serialised by the caller. The library itself formats no times.
namespace tf {

/// The broken-down `time`, which is borrowed and not changed.
TTR_EXPORT std::string formatTimeBroken(tm* time, std::string locale, const std::string& format);

/// `seconds` in the local time zone, as the last tzset() of the process found it in `TZ`.
TTR_EXPORT std::string formatTimeLocal(long long seconds, const std::string& locale,
                                       const std::string& format);

/// `seconds` in UTC.
TTR_EXPORT std::string formatTimeUTC(long long seconds, const std::string& locale,
                                     const std::string& format);

/// A duration. An empty format and "%M" give whole minutes, "%H:%M" gives hours (not limited to
/// 24) and minutes; both truncate, and a negative duration carries its sign in every number. Any
/// other format is applied to the time so long after the epoch, in UTC.
TTR_EXPORT std::string formatTimeRemaining(long long seconds, std::string format);

}  // namespace tf

#endif  // TOKENTEMPLATERESOLVER_TIME_FORMAT_H
