#ifndef SRC_TIMEFMT_TIME_SETTINGS_GUARD_H
#define SRC_TIMEFMT_TIME_SETTINGS_GUARD_H

#include <optional>
#include <string>

namespace tf {

/// Switches the time zone and the locale of the process for its lifetime; an empty name leaves
/// the one in force. Nothing is reported: an unknown locale leaves the previous one, an unknown
/// time zone counts as UTC.
class CTimeSettingsGuard {
 public:
  CTimeSettingsGuard(const std::string& timeZone, const std::string& locale);
  ~CTimeSettingsGuard();
  CTimeSettingsGuard(const CTimeSettingsGuard&) = delete;
  CTimeSettingsGuard& operator=(const CTimeSettingsGuard&) = delete;

 private:
  bool tzChanged = false;
  bool localeChanged = false;
  // Copies, because the C library may reuse the storage of what it returned.
  std::optional<std::string> savedTZ;
  std::optional<std::string> savedLocale;
};

}  // namespace tf

#endif  // SRC_TIMEFMT_TIME_SETTINGS_GUARD_H
