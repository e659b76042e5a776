#ifndef TESTS_SUPPORT_FRAME_HANDLER_H
#define TESTS_SUPPORT_FRAME_HANDLER_H

#include <json/value.h>

#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/token_handler.h"
#include "support/json.h"

/// Answers with what a host sees of the stack: `$(frame.bounds)` and `$(frame.context)` of the
/// frame on top, `$(frame.depth)`, the number of frames. `$(frame.place)` gives the top frame the
/// bounds [100, 200, 300, 400], `$(frame.clear)` empties the stack.
class CFrameHandler : public ITokenHandler {
 public:
  explicit CFrameHandler(CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    if (parts[1] == "bounds") return m_stack->frames().back().bounds;
    if (parts[1] == "context") return m_stack->frames().back().context;
    if (parts[1] == "depth") return Json::Value(static_cast<int>(m_stack->frames().size()));
    if (parts[1] == "place") m_stack->BoundsSet(Parse("[100, 200, 300, 400]"));
    if (parts[1] == "clear") m_stack->Clear();
    return Json::Value();
  }

 private:
  CTemplateStack* m_stack;
};

#endif  // TESTS_SUPPORT_FRAME_HANDLER_H
