#ifndef TOKENTEMPLATERESOLVER_TOKEN_RESOLVER_H
#define TOKENTEMPLATERESOLVER_TOKEN_RESOLVER_H

#include <json/value.h>

#include <map>
#include <string>

#include "TokenTemplateResolver/export.h"
#include "TokenTemplateResolver/token_handler.h"
#include "TokenTemplateResolver/token_parts.h"

/// The registry of token handlers, and what it offers: tokens to values, strings with tokens to
/// resolved values, and conversions between the types that values come in.
///
/// The const operations only read the registry; `Set` must not run at the same time as anything
/// else on the same registry.
class TTR_EXPORT CTokenResolver {
 public:
  using CHandlers = std::map<std::string, const ITokenHandler*>;

  CTokenResolver();

  // --- Registry and look-up: token_resolver.cpp ---

  /// Registers `handler` under `name`, replacing an earlier one. A name with dots (`Audio.left`)
  /// is a deeper prefix and wins over `Audio`. The handler is borrowed and must not be null.
  void Set(const std::string& name, const ITokenHandler* handler);

  /// The registered handlers by name.
  const CHandlers& handlers() const { return m_handlers; }

  /// The handler registered under the longest prefix of `parts`; `handlers().end()` when none is.
  CHandlers::const_iterator find(const CTokenParts& parts) const;

  /// Value of an index or operand path: one part is a literal, more are asked of their handler.
  /// An int, or null when there are no parts or no handler.
  Json::Value getTokenElement(const CTokenParts& parts) const;

  /// Value of one token body, written without "$(" and ")".
  ///
  /// The handler's value, then its index, count and arithmetic. Without a handler, or with an
  /// index that is no integer, one line on std::cerr and null; with an operand that is no integer,
  /// one line and the value before arithmetic.
  /// \throws std::runtime_error on a division by zero; what handlers and JsonCpp throw
  Json::Value GetTokenValue(const std::string& body) const;

  /// True when `value` is a string that, read as a bare token body, names a registered handler.
  bool IsResolvable(const Json::Value& value) const;

  /// True when `value` is a string that holds "$(" and, after it, ")".
  bool ContainsTokenSubstrings(const Json::Value& value) const;

  // --- Tokens inside text: token_substitution.cpp ---

  /// Replaces the tokens in a string value; other values, arrays and objects included, stay.
  ///
  /// A string that is one token takes its value with its JSON type; a token inside longer text is
  /// replaced by the text form of its value. Text that comes from a handler is not scanned again.
  /// An unterminated token writes one line on std::cerr and stays, with what follows it.
  /// \throws as GetTokenValue; the value is then unchanged
  void SubstituteTokenValues(Json::Value& value) const;

  // --- Conversions, in place: value_conversion.cpp ---
  // Text that does not convert writes one line on std::cerr. Numbers outside the range of the
  // target raise JsonCpp's exception.

  /// To a boolean: false are null, 0, "", "0" and an empty array; reals are truncated first.
  static void ConvertToTruthValue(Json::Value& value);

  /// Text (decimal, 0x hexadecimal, 0 octal) and numbers to int; the rest, and text that does not
  /// convert, stays.
  static void ConvertToInt(Json::Value& value);

  /// As ConvertToInt, and 0 for whatever is then not an int.
  static void CoerceToInt(Json::Value& value);

  /// To a colour word: alpha in bits 24 to 31, red 16 to 23, green 8 to 15, blue 0 to 7. Text is
  /// "#RRGGBB" (alpha 0), "#RRGGBBAA" or an unsigned number. A uint, but int 0 for null, arrays
  /// and objects.
  static void CoerceToColour(Json::Value& value);

  /// To text: null gives "", numbers and the rest JSON text.
  static void ConvertToString(Json::Value& value);

  /// A string to the array of its comma-separated pieces, each a string. A piece that begins with
  /// a double quote runs to the closing one, as in RFC 4180. Other values stay.
  static void ConvertToArray(Json::Value& value);

  // --- Arithmetic: token_arithmetic.cpp ---

  /// `lhs` = `lhs` op `rhs` in 32 bits that wrap; op is '+', '-', '*' or '/' (truncating). Any
  /// other operator only converts `lhs`. `lhs` goes through ConvertToInt first.
  /// \throws std::runtime_error on a division by zero; Json::LogicError when an operand is no
  /// number, or is out of range
  void evaluateExpression(Json::Value& lhs, char op, const Json::Value& rhs) const;

 private:
  CHandlers m_handlers;
};

#endif  // TOKENTEMPLATERESOLVER_TOKEN_RESOLVER_H
