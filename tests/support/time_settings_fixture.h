#ifndef TESTS_SUPPORT_TIME_SETTINGS_FIXTURE_H
#define TESTS_SUPPORT_TIME_SETTINGS_FIXTURE_H

#include <gtest/gtest.h>
#include <time.h>

#include <clocale>
#include <cstdlib>
#include <optional>
#include <string>

#include "support/cerr_capture.h"

/// Starts in a time zone and the locale "C", and gives the settings found back. Nothing is reported
/// meanwhile.
class TimeSettingsTest : public ::testing::Test {
 protected:
  using Text = std::optional<std::string>;

  explicit TimeSettingsTest(const std::string& zone) {
    SetVariable("TZ", zone);
    SetVariable("LC_ALL", std::nullopt);
    std::setlocale(LC_ALL, "C");
  }

  ~TimeSettingsTest() override {
    SetVariable("TZ", m_zone);
    SetVariable("LC_ALL", m_lcAll);
    std::setlocale(LC_ALL, m_locale.c_str());
  }

  void TearDown() override { EXPECT_EQ(m_cerr.Take(), ""); }

  static Text Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? Text() : value;
  }

  static void SetVariable(const char* name, const Text& value) {
    if (value) {
      setenv(name, value->c_str(), 1);
    } else {
      unsetenv(name);
    }
    tzset();
  }

  static std::string Locale() { return std::setlocale(LC_ALL, nullptr); }

 private:
  Text m_zone = Variable("TZ");
  Text m_lcAll = Variable("LC_ALL");
  std::string m_locale = Locale();
  CCerrCapture m_cerr;
};

#endif  // TESTS_SUPPORT_TIME_SETTINGS_FIXTURE_H
