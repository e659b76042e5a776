#ifndef TOKENTEMPLATERESOLVER_TEMPLATE_STACK_H
#define TOKENTEMPLATERESOLVER_TEMPLATE_STACK_H

#include <json/value.h>

#include <iostream>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/export.h"
#include "TokenTemplateResolver/trace.h"

/// The contexts and bounds in force while a template is resolved: one frame for the screen, then
/// one for each element (and each loop) that encloses the place being resolved.
///
/// The host owns the stack, lends it to one CTemplateResolver and may read `frames()` from its
/// token handlers: that is where "Context" members and loop variables are found. The library
/// itself never reads a context back.
///
/// An operation whose precondition does not hold writes one line to std::cerr and changes nothing.
class TTR_EXPORT CTemplateStack {
 public:
  /// What one element puts in force.
  struct CStackFrame {
#ifndef __cpp_aggregate_paren_init
    // From C++20 on the language lets an aggregate be made with parentheses, too; a constructor
    // would there take its designated initialisers away.
    CStackFrame() = default;
    // Implicit, as braces around a context are.
    // NOLINTNEXTLINE(google-explicit-constructor)
    CStackFrame(Json::Value frameContext, Json::Value frameBounds = Json::arrayValue)
        : context(std::move(frameContext)), bounds(std::move(frameBounds)) {}
#endif

    /// Named values: the element's "Context", or the variables of a loop.
    Json::Value context{Json::objectValue};
    /// [x, y, width, height, two further integers] in screen units; empty while there is none.
    Json::Value bounds{Json::arrayValue};
  };

  /// Appends a copy of `frame` as the new top; without one a fresh frame, with nothing in force.
  void Push(const CStackFrame& frame = freshFrame()) { m_frames.push_back(frame); }

  /// As Push without a frame, but makes the fresh one in its place instead of copying.
  void PushFresh() { m_frames.emplace_back(); }

  /// Removes the top frame.
  void Pop() {
    if (m_frames.empty()) {
      report("CTemplateStack::Pop: preconditions.");
      return;
    }
    m_frames.pop_back();
  }

  /// Replaces the top frame's context by `context`, which must be an object.
  void ContextSet(const Json::Value& context) {
    if (contextFits(context)) m_frames.back().context = context;
  }

  /// As ContextSet, but hands the old context back in `context` instead of copying.
  void ContextSwap(Json::Value& context) {
    if (contextFits(context)) m_frames.back().context.swap(context);
  }

  /// Replaces the top frame's bounds by `bounds`, which must be an array.
  void BoundsSet(const Json::Value& bounds) {
    if (boundsFit(bounds)) m_frames.back().bounds = bounds;
  }

  /// As BoundsSet, but hands the old bounds back in `bounds` instead of copying.
  void BoundsSwap(Json::Value& bounds) {
    if (boundsFit(bounds)) m_frames.back().bounds.swap(bounds);
  }

  /// The bounds of the innermost frame that has any; a null value when there is none. The
  /// reference is good until the stack changes.
  const Json::Value& boundsFind() const {
    static const Json::Value nullResult;
    for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame) {
      if (frame->bounds.size() != 0) return frame->bounds;
    }
    return nullResult;
  }

  /// Removes all frames.
  void Clear() { m_frames.clear(); }

  /// All frames, the bottom one (the screen's) first.
  const std::vector<CStackFrame>& frames() const { return m_frames; }

 private:
  // A function, because compilers do not know the frame's members yet where a default argument
  // stands.
  static CStackFrame freshFrame() { return {}; }

  bool contextFits(const Json::Value& context) const {
    if (!m_frames.empty() && context.isObject()) return true;
    report("CTemplateStack::ContextSet: preconditions.");
    return false;
  }

  bool boundsFit(const Json::Value& bounds) const {
    if (!m_frames.empty() && bounds.isArray()) return true;
    report("CTemplateStack::BoundsSet: preconditions.");
    return false;
  }

  // Never inlined: the event would take room in every frame of the walk.
  [[gnu::cold, gnu::noinline]] static void report(const char* message) {
    if (ttr::trace != nullptr) {
      ttr::CTraceEvent event;
      event.event = ttr::traceMessage;
      event.text = message;
      ttr::trace(event);
    }
    std::cerr << message << std::endl;
  }

  std::vector<CStackFrame> m_frames;
};

#endif  // TOKENTEMPLATERESOLVER_TEMPLATE_STACK_H
