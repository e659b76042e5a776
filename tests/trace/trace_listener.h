#ifndef TESTS_TRACE_TRACE_LISTENER_H
#define TESTS_TRACE_TRACE_LISTENER_H

#include <functional>
#include <string>

#include "TokenTemplateResolver/trace.h"

/// While it lives, the trace of this program hands the events of this thread to a function; of
/// several listeners to that of the one made last.
class CTraceListener {
 public:
  using CFunction = std::function<void(const ttr::CTraceEvent&)>;

  explicit CTraceListener(CFunction function);
  ~CTraceListener();
  CTraceListener(const CTraceListener&) = delete;
  CTraceListener& operator=(const CTraceListener&) = delete;

  void Tell(const ttr::CTraceEvent& event) const { m_function(event); }

 private:
  CFunction m_function;
  const CTraceListener* m_previous;
};

/// The event as one line, with every field that is not as in a new event, and always those that its
/// kind sets: `begin element value=["a"] bounds=null`. Long values are cut in the middle.
std::string traceText(const ttr::CTraceEvent& event);

#endif  // TESTS_TRACE_TRACE_LISTENER_H
