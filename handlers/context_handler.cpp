#include "TokenTemplateHandlers/context_handler.h"

#include "value_path.h"

CContextHandler::CContextHandler(const CTemplateStack* stack, std::size_t nameParts)
    : m_stack(stack), m_nameParts(nameParts) {}

Json::Value CContextHandler::GetIndexedValue(const CParsedToken& token,
                                             const Json::Value& index) const {
  return ttr::entryAt(find(token.nameParts), index);
}

Json::Value CContextHandler::GetPartsValue(const CTokenParts& parts) const { return find(parts); }

const Json::Value& CContextHandler::find(const CTokenParts& parts) const {
  if (parts.size() > m_nameParts) {
    const auto& frames = m_stack->frames();
    const std::string& name = parts[m_nameParts];
    for (auto frame = frames.rbegin(); frame != frames.rend(); ++frame) {
      const Json::Value* value = frame->context.find(name.data(), name.data() + name.size());
      if (value != nullptr) return ttr::memberAt(*value, parts, m_nameParts + 1);
    }
  }
  return Json::Value::nullSingleton();
}
