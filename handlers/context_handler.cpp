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
  std::size_t frame = 0;
  const Json::Value* value = variable(parts, &frame);
  if (value == nullptr) return Json::Value::nullSingleton();
  return ttr::memberAt(*value, parts, m_nameParts + 1);
}

std::optional<std::size_t> CContextHandler::FindFrame(const CTokenParts& parts) const {
  std::size_t frame = 0;
  if (variable(parts, &frame) == nullptr) return std::nullopt;
  return frame;
}

const Json::Value* CContextHandler::variable(const CTokenParts& parts, std::size_t* frame) const {
  if (parts.size() <= m_nameParts) return nullptr;
  const auto& frames = m_stack->frames();
  const std::string& name = parts[m_nameParts];
  for (auto each = frames.rbegin(); each != frames.rend(); ++each) {
    const Json::Value* value = each->context.find(name.data(), name.data() + name.size());
    if (value == nullptr) continue;
    *frame = static_cast<std::size_t>(frames.rend() - each) - 1;
    return value;
  }
  return nullptr;
}
