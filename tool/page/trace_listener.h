#ifndef TOOL_PAGE_TRACE_LISTENER_H
#define TOOL_PAGE_TRACE_LISTENER_H

#include "TokenTemplateResolver/trace.h"

namespace ttr {

/// Is told each step of the passes in this thread while it lives; the one made last of several.
class CTraceListener {
 public:
  CTraceListener();
  virtual ~CTraceListener();
  CTraceListener(const CTraceListener&) = delete;
  CTraceListener& operator=(const CTraceListener&) = delete;

  virtual void Tell(const CTraceEvent& event) = 0;

 private:
  CTraceListener* m_previous;
};

}  // namespace ttr

#endif  // TOOL_PAGE_TRACE_LISTENER_H
