#ifndef TESTS_SUPPORT_JSON_H
#define TESTS_SUPPORT_JSON_H

#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <sstream>
#include <stdexcept>
#include <string>

/// The value that `text` describes; throws when it does not parse. Compare values rather than
/// texts where the JSON type counts: JsonCpp's == tells 5 from 5u and from 5.0.
inline Json::Value Parse(const std::string& text) {
  Json::Value value;
  std::string errors;
  std::istringstream stream(text);
  if (!Json::parseFromStream(Json::CharReaderBuilder(), stream, &value, &errors)) {
    throw std::invalid_argument(errors);
  }
  return value;
}

#endif  // TESTS_SUPPORT_JSON_H
