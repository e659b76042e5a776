#ifndef TOKENTEMPLATERESOLVER_TOKEN_HANDLER_H
#define TOKENTEMPLATERESOLVER_TOKEN_HANDLER_H

#include <json/value.h>

#include "TokenTemplateResolver/export.h"
#include "TokenTemplateResolver/parsed_token.h"

/// A source of token values, implemented by the host and registered under a name with
/// CTokenResolver::Set.
///
/// A handler receives the whole path, its own registered name included: `$(Audio.volume)` reaches
/// the handler registered as `Audio` with the parts `Audio` and `volume`. The library applies
/// count (`#`) and arithmetic to what the handler returns; a null value stands for "not there".
///
///     class CAudioHandler : public ITokenHandler {
///       Json::Value GetPartsValue(const CTokenParts& parts) const override {
///         return parts.size() == 2 && parts[1] == "volume" ? Json::Value(m_volume) :
///         Json::Value();
///       }
///       ...
///     };
///
/// Handlers are borrowed: they must outlive every call that may reach them. An exception that a
/// handler throws reaches the caller of CTemplateResolver::Process. While it is asked, a handler
/// may look at the stack, but must neither drive the resolver that asks nor change what it
/// resolves.
class TTR_EXPORT ITokenHandler {
 public:
  /// Value of a token with an index, as `$(List[2])`. `index` is always an int, possibly out of
  /// range. By default a null value.
  virtual Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const;

  /// Value of a token without index, or with an empty one (`$(List[])`). Override to read the
  /// token's `argument`. By default `GetPartsValue(token.nameParts)`.
  virtual Json::Value GetValue(const CParsedToken& token) const;

  /// Value of a path: of a plain token, and of an index or operand path such as `Sel.row` in
  /// `$(List[Sel.row])`.
  virtual Json::Value GetPartsValue(const CTokenParts& parts) const = 0;

  virtual ~ITokenHandler();
};

#endif  // TOKENTEMPLATERESOLVER_TOKEN_HANDLER_H
