#ifndef TOKENTEMPLATEHANDLERS_CLOCK_HANDLER_H
#define TOKENTEMPLATEHANDLERS_CLOCK_HANDLER_H

#include <json/value.h>

#include <optional>
#include <string>

#include "TokenTemplateResolver/token_handler.h"

/// Serves the time as text, in the local time zone. The token's argument is a strftime format;
/// without one it is "%H:%M".
///
///     CClockHandler clock("de_DE");
///     tokens.Set("clock", &clock);  // $(clock) is 14:05, $(clock:%e. %B) is 21. November
///
/// The locale of the process is switched during each call (TokenTemplateResolver/time_format.h):
/// resolvers with clocks must not run in several threads at once.
class CClockHandler : public ITokenHandler {
 public:
  /// `locale` is a name without encoding, such as "de_DE"; empty leaves the process's locale.
  explicit CClockHandler(std::string locale = "");

  /// Shows `seconds` since the Unix epoch from now on, instead of the current time.
  void SetTime(long long seconds);

  Json::Value GetValue(const CParsedToken& token) const override;
  Json::Value GetPartsValue(const CTokenParts& parts) const override;

 private:
  std::string text(const std::string& format) const;

  std::string m_locale;
  std::optional<long long> m_time;
};

#endif  // TOKENTEMPLATEHANDLERS_CLOCK_HANDLER_H
