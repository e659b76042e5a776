// 64-bit time on 32-bit platforms; the C library wants these before its first header.
#ifndef _TIME_BITS
#define _TIME_BITS 64
#endif
#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64
#endif

#include "TokenTemplateHandlers/clock_handler.h"

#include <time.h>

#include <utility>

#include "TokenTemplateResolver/time_format.h"

static_assert(sizeof(time_t) == sizeof(long long), "times beyond 2038 need a 64-bit time_t");

namespace {

constexpr char defaultFormat[] = "%H:%M";

}  // namespace

CClockHandler::CClockHandler(std::string locale) : m_locale(std::move(locale)) {}

void CClockHandler::SetTime(long long seconds) { m_time = seconds; }

Json::Value CClockHandler::GetValue(const CParsedToken& token) const {
  return text(token.argument.empty() ? defaultFormat : token.argument);
}

Json::Value CClockHandler::GetPartsValue(const CTokenParts& /*parts*/) const {
  return text(defaultFormat);
}

std::string CClockHandler::text(const std::string& format) const {
  return tf::formatTimeLocal(m_time.value_or(::time(nullptr)), m_locale, format);
}
