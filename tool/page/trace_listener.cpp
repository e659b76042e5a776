#include "page/trace_listener.h"

#include <utility>

namespace ttr {
namespace {

CTraceListener*& listener() {
  thread_local CTraceListener* current = nullptr;
  return current;
}

}  // namespace

CTraceListener::CTraceListener() : m_previous(std::exchange(listener(), this)) {}

CTraceListener::~CTraceListener() { listener() = m_previous; }

/// What the library looks for.
void trace(const CTraceEvent& event) {
  if (listener() != nullptr) listener()->Tell(event);
}

}  // namespace ttr
