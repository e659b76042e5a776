#include "util/trace_point.h"

namespace ttr {
namespace {

CTraceEvent eventOf(eTraceEvent kind, const Json::Value* value) {
  CTraceEvent event;
  event.event = kind;
  event.value = value;
  return event;
}

}  // namespace

void tellBegin(eTracePart part, const Json::Value* value, std::string_view name) {
  CTraceEvent event = eventOf(traceBegin, value);
  event.part = part;
  event.name = name;
  trace(event);
}

void tellElementBegin(const Json::Value& value, const CTemplateStack& stack) {
  CTraceEvent event = eventOf(traceBegin, &value);
  event.part = tracedElement;
  event.bounds = &stack.boundsFind();
  trace(event);
}

void tellCopyBegin(int index, int position, const CTemplateStack& stack) {
  CTraceEvent event = eventOf(traceBegin, nullptr);
  event.part = tracedCopy;
  event.bounds = &stack.boundsFind();
  event.index = index;
  event.count = position;
  trace(event);
}

void tellMemberBegin(const char* name, const Json::Value& value) {
  tellBegin(tracedMember, &value, name);
}

void tellEntryBegin(const Json::Value& value) { tellBegin(tracedEntry, &value, {}); }

void tellPartEnd(eTracePart part, const Json::Value& value) { tellEnd(part, &value, {}); }

void tellTokenBegin(std::string_view body) {
  CTraceEvent event = eventOf(traceBegin, nullptr);
  event.part = tracedToken;
  event.text = body;
  trace(event);
}

void tellEnd(eTracePart part, const Json::Value* value, std::string_view name) {
  CTraceEvent event = eventOf(traceEnd, value);
  event.part = part;
  event.name = name;
  trace(event);
}

void tellMeasure(const Json::Value& value, int origin, int extent, std::optional<int> percentage) {
  CTraceEvent event = eventOf(traceMeasure, &value);
  event.origin = origin;
  event.extent = extent;
  event.percentage = percentage;
  trace(event);
}

void tellVerdict(const Json::Value& condition, const Json::Value& operand, bool holds) {
  CTraceEvent event = eventOf(traceVerdict, &condition);
  event.operand = &operand;
  event.holds = holds;
  trace(event);
}

void tellRange(int start, int count, int step) {
  CTraceEvent event = eventOf(traceRange, nullptr);
  event.start = start;
  event.count = count;
  event.step = step;
  trace(event);
}

void tellLayout(int index, const Json::Value& layout) {
  CTraceEvent event = eventOf(traceLayout, &layout);
  event.index = index;
  trace(event);
}

void tellVariable(std::string_view member, std::string_view variable, const Json::Value& value) {
  CTraceEvent event = eventOf(traceVariable, &value);
  event.name = member;
  event.text = variable;
  trace(event);
}

void tellReplaced(const char* member, const Json::Value& value) {
  CTraceEvent event = eventOf(traceReplaced, &value);
  event.name = member;
  trace(event);
}

void tellLowercased(const Json::Value& value) { trace(eventOf(traceLowercased, &value)); }

void tellMessage(std::string_view text) {
  CTraceEvent event = eventOf(traceMessage, nullptr);
  event.text = text;
  trace(event);
}

}  // namespace ttr
