#include "timefmt/time_settings_guard.h"

#include <time.h>

#include <clocale>
#include <cstdlib>

namespace tf {
namespace {

std::optional<std::string> copyOf(const char* text) {
  if (text == nullptr) return std::nullopt;
  return text;
}

}  // namespace

CTimeSettingsGuard::CTimeSettingsGuard(const std::string& timeZone, const std::string& locale) {
  if (!timeZone.empty()) {
    tzChanged = true;
    savedTZ = copyOf(std::getenv("TZ"));
    setenv("TZ", timeZone.c_str(), 1);
    tzset();
  }
  if (!locale.empty()) {
    localeChanged = true;
    savedLocale = copyOf(std::setlocale(LC_ALL, nullptr));
    std::setlocale(LC_ALL, locale.c_str());
  }
}

CTimeSettingsGuard::~CTimeSettingsGuard() {
  if (tzChanged) {
    if (savedTZ) {
      setenv("TZ", savedTZ->c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }
  if (localeChanged) {
    if (savedLocale) {
      std::setlocale(LC_ALL, savedLocale->c_str());
    } else {
      unsetenv("LC_ALL");  // deliberately the environment, where no locale could be saved
    }
  }
}

}  // namespace tf
