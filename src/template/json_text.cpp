// JSON text to value and back.
#include "TokenTemplateResolver/json_text.h"

#include <json/reader.h>

#include <memory>
#include <optional>
#include <sstream>
#include <utility>

#include "template/compact_text.h"

namespace jsoncpp_string {

CJsonWriter::CJsonWriter() { settings_["indentation"] = ""; }

CJsonWriter::~CJsonWriter() = default;

Json::Value toJsonObject(const std::string& text, std::string* errors) {
  static const Json::CharReaderBuilder jsonReader;
  // As Json::parseFromStream does, but without its stream: when memory runs out, that takes the
  // text as far as it came for the whole.
  const std::unique_ptr<Json::CharReader> reader(jsonReader.newCharReader());
  Json::Value value;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, errors)) return Json::Value();
  return value;
}

std::string toString(const Json::Value& value) {
  if (std::optional<std::string> text = ttr::compactText(value)) return *std::move(text);
  static const CJsonWriter jsonWriter;
  // As Json::writeString does, but with a stream that passes on what goes wrong: by default it
  // would end early when memory runs out, and say nothing.
  const std::unique_ptr<Json::StreamWriter> writer(jsonWriter.newStreamWriter());
  std::ostringstream text;
  text.exceptions(std::ios::badbit);
  writer->write(value, &text);
  return text.str();
}

}  // namespace jsoncpp_string
