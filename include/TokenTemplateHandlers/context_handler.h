#ifndef TOKENTEMPLATEHANDLERS_CONTEXT_HANDLER_H
#define TOKENTEMPLATEHANDLERS_CONTEXT_HANDLER_H

#include <json/value.h>

#include <cstddef>
#include <optional>

#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/token_handler.h"

/// Serves what the template itself binds: the members of "Context" objects and the variables of
/// loops. A name is looked up in the frames of the stack from the innermost outwards; further
/// parts of the path step into objects, an index selects an entry of an array. What is not there
/// is null.
///
///     CContextHandler context(&stack);
///     tokens.Set("context", &context);    // $(context.row), $(context.flight.gate)
///
///     CContextHandler variables(&stack, 0);
///     tokens.Set("row", &variables);      // $(row): the handler's name is the variable's
class CContextHandler : public ITokenHandler {
 public:
  /// `stack` is borrowed, and is the one that the template resolver uses. `nameParts` is the number
  /// of leading path parts that are the handler's name and not the variable's.
  explicit CContextHandler(const CTemplateStack* stack, std::size_t nameParts = 1);

  /// \throws Json::LogicError for an index into an array that is no int; the library asks with ints
  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override;
  Json::Value GetPartsValue(const CTokenParts& parts) const override;

  /// The index among the stack's frames of the one that binds the variable which `parts` begins
  /// with, the handler's name included; none when nothing binds it.
  std::optional<std::size_t> FindFrame(const CTokenParts& parts) const;

 private:
  const Json::Value& find(const CTokenParts& parts) const;
  const Json::Value* variable(const CTokenParts& parts, std::size_t* frame) const;

  const CTemplateStack* m_stack;
  std::size_t m_nameParts;
};

#endif  // TOKENTEMPLATEHANDLERS_CONTEXT_HANDLER_H
