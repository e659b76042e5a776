#ifndef TESTS_SUPPORT_FRAMES_HANDLER_H
#define TESTS_SUPPORT_FRAMES_HANDLER_H

#include <json/value.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/json_text.h"
#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/token_handler.h"

/// Answers with all that a host sees of the stack, the bottom frame first. Where the value is not
/// to be seen in the page, `$(frames.name)` answers 1 and keeps what it saw.
class CFramesHandler : public ITokenHandler {
 public:
  explicit CFramesHandler(const CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    if (parts.size() < 2) return All();
    m_seen.push_back(parts[1] + AboveTheScreen());
    return Json::Value(1);
  }

  /// All frames, as a JSON value.
  Json::Value All() const {
    Json::Value frames(Json::arrayValue);
    for (const CTemplateStack::CStackFrame& frame : m_stack->frames()) {
      Json::Value& entry = frames.append(Json::Value(Json::objectValue));
      entry["context"] = frame.context;
      entry["bounds"] = frame.bounds;
    }
    return frames;
  }

  /// What was kept since the last call: the name and, for each frame above the bottom one, its
  /// context and its bounds, as in `name {"a":1}[1,2] {}[]`.
  std::vector<std::string> Take() { return std::exchange(m_seen, {}); }

 private:
  std::string AboveTheScreen() const {
    std::string text;
    for (std::size_t i = 1; i < m_stack->frames().size(); ++i) {
      const CTemplateStack::CStackFrame& frame = m_stack->frames()[i];
      text +=
          " " + jsoncpp_string::toString(frame.context) + jsoncpp_string::toString(frame.bounds);
    }
    return text;
  }

  const CTemplateStack* m_stack;
  mutable std::vector<std::string> m_seen;
};

#endif  // TESTS_SUPPORT_FRAMES_HANDLER_H
