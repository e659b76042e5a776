#ifndef TOOL_PAGE_PAGE_HOST_H
#define TOOL_PAGE_PAGE_HOST_H

#include <json/value.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/token_resolver.h"

namespace ttr {

/// Width and height of a screen in its own units.
struct CScreenSize {
  int width = 1280;
  int height = 720;
};

/// A host without a device: serves tokens from a JSON object and from the page itself.
///
/// Every member of the values is a handler of that name (`"audio.left"` a deeper one); what the
/// page binds is served as `$(context.NAME)` and as `$(NAME)`, unless the values define that name.
class CPageHost {
 public:
  /// `values` is an object.
  CPageHost(const Json::Value& values, CScreenSize size);
  CPageHost(const CPageHost&) = delete;
  CPageHost& operator=(const CPageHost&) = delete;

  /// One Input and Process of `page`. Rotating loops advance from call to call.
  void Resolve(const std::string& page);
  /// The same; the resolved page as compact JSON text.
  std::string Pass(const std::string& page);

  /// Lets the variables that `page` binds be used as tokens; once before the first pass.
  void ServeVariablesOf(const std::string& page);
  void ServeVariables(const std::set<std::string>& names);

  /// Lets rotating loops advance as `passes` passes do.
  void SkipPasses(unsigned passes);

  /// The registry, with the handlers of the values, "context", and the variables served so far.
  const CTokenResolver& tokens() const { return m_tokens; }
  const CTemplateStack& stack() const { return m_stack; }

  /// The index of the stack's frame that answers `path` for the handler `name` now; none when the
  /// answer comes from the values, or from nowhere.
  std::optional<std::size_t> FrameOf(const std::string& name, const CTokenParts& path) const;

 private:
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
  CContextHandler m_context{&m_stack};
  CContextHandler m_variables{&m_stack, 0};
  std::vector<std::unique_ptr<CJsonHandler>> m_values;
};

}  // namespace ttr

#endif  // TOOL_PAGE_PAGE_HOST_H
