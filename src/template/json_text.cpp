// JSON text to value and back.
// Test: tests/template/json_text_test.cpp
#include "TokenTemplateResolver/json_text.h"

#include <json/reader.h>

#include <sstream>

namespace jsoncpp_string {

CJsonWriter::CJsonWriter() { settings_["indentation"] = ""; }

CJsonWriter::~CJsonWriter() = default;

Json::Value toJsonObject(const std::string& text, std::string* errors) {
  static const Json::CharReaderBuilder jsonReader;
  Json::Value value;
  std::istringstream stream(text);
  if (!Json::parseFromStream(jsonReader, stream, &value, errors)) return Json::Value();
  return value;
}

std::string toString(const Json::Value& value) {
  static const CJsonWriter jsonWriter;
  return Json::writeString(jsonWriter, value);
}

}  // namespace jsoncpp_string
