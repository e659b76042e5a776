#ifndef TOKENTEMPLATERESOLVER_JSON_TEXT_H
#define TOKENTEMPLATERESOLVER_JSON_TEXT_H

#include <json/value.h>
#include <json/writer.h>

#include <string>

#include "TokenTemplateResolver/export.h"

/// JSON text to value and back, with JsonCpp's reader and writer.
namespace jsoncpp_string {

/// Builder of writers for compact JSON text: one line, no blanks, no newline at the end. All
/// settings but "indentation" (here empty) are JsonCpp's defaults, so that comments which the
/// reader kept are written as they are.
class TTR_EXPORT CJsonWriter : public Json::StreamWriterBuilder {
 public:
  CJsonWriter();
  ~CJsonWriter() override;
};

/// The value that `text` describes, read with JsonCpp's default settings (comments and trailing
/// commas are accepted, text after the value is ignored).
///
/// When `text` does not parse, the result is null and `*errors` receives the reader's error text,
/// which names line and column and may have several lines; otherwise it is emptied.
/// \throws Json::RuntimeError when arrays and objects nest deeper than JsonCpp's limit (1000)
TTR_EXPORT Json::Value toJsonObject(const std::string& text, std::string* errors);

/// Compact JSON text of `value`, as CJsonWriter writes it.
TTR_EXPORT std::string toString(const Json::Value& value);

}  // namespace jsoncpp_string

#endif  // TOKENTEMPLATERESOLVER_JSON_TEXT_H
