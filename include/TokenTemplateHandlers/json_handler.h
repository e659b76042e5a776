#ifndef TOKENTEMPLATEHANDLERS_JSON_HANDLER_H
#define TOKENTEMPLATEHANDLERS_JSON_HANDLER_H

#include <json/value.h>

#include <cstddef>

#include "TokenTemplateResolver/token_handler.h"

/// Serves a JSON value: the parts of a token's path after the handler's own name step into
/// objects, an index selects an entry of an array. What is not there is null.
///
///     CJsonHandler weather(value);       // {"today": {"high": 21}, "hours": [14, 15, 17]}
///     tokens.Set("weather", &weather);   // $(weather.today.high) is 21, $(weather.hours[2]) is 17
class CJsonHandler : public ITokenHandler {
 public:
  /// `nameParts` is the number of parts in the name that the handler is registered under: 1 for
  /// "weather", 2 for "weather.now".
  explicit CJsonHandler(Json::Value value, std::size_t nameParts = 1);

  /// Replaces the value; the next pass shows it. Not while a pass is running.
  void SetValue(Json::Value value);

  /// \throws Json::LogicError for an index into an array that is no int; the library asks with ints
  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override;
  Json::Value GetPartsValue(const CTokenParts& parts) const override;

 private:
  Json::Value m_value;
  std::size_t m_nameParts;
};

#endif  // TOKENTEMPLATEHANDLERS_JSON_HANDLER_H
