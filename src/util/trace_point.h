#ifndef SRC_UTIL_TRACE_POINT_H
#define SRC_UTIL_TRACE_POINT_H

#include <json/value.h>

#include <optional>
#include <string_view>

#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/trace.h"

// The points at which the library tells ttr::trace what it does. Nobody listens on a device: there
// each costs a comparison, and the event is put together out of the way of the walk.
namespace ttr {

/// True when the program listens.
inline bool isTraced() { return __builtin_expect(ttr::trace != nullptr, 0); }

[[gnu::cold]] void tellBegin(eTracePart part, const Json::Value* value, std::string_view name);
[[gnu::cold]] void tellElementBegin(const Json::Value& value, const CTemplateStack& stack);
[[gnu::cold]] void tellCopyBegin(int index, int position, const CTemplateStack& stack);
[[gnu::cold]] void tellMemberBegin(const char* name, const Json::Value& value);
[[gnu::cold]] void tellEntryBegin(const Json::Value& value);
[[gnu::cold]] void tellPartEnd(eTracePart part, const Json::Value& value);
[[gnu::cold]] void tellTokenBegin(std::string_view body);
[[gnu::cold]] void tellEnd(eTracePart part, const Json::Value* value, std::string_view name);
[[gnu::cold]] void tellMeasure(const Json::Value& value, int origin, int extent,
                               std::optional<int> percentage);
[[gnu::cold]] void tellVerdict(const Json::Value& condition, const Json::Value& operand,
                               bool holds);
[[gnu::cold]] void tellRange(int start, int count, int step);
[[gnu::cold]] void tellLayout(int index, const Json::Value& layout);
[[gnu::cold]] void tellVariable(std::string_view member, std::string_view variable,
                                const Json::Value& value);
[[gnu::cold]] void tellReplaced(const char* member, const Json::Value& value);
[[gnu::cold]] void tellLowercased(const Json::Value& value);
[[gnu::cold]] void tellMessage(std::string_view text);

inline void traceElementBegin(const Json::Value& value, const CTemplateStack& stack) {
  if (isTraced()) tellElementBegin(value, stack);
}
inline void traceElementEnd(const Json::Value& value) {
  if (isTraced()) tellPartEnd(tracedElement, value);
}
inline void traceMemberBegin(const char* name, const Json::Value& value) {
  if (isTraced()) tellMemberBegin(name, value);
}
inline void traceMemberEnd(const Json::Value& value) {
  if (isTraced()) tellPartEnd(tracedMember, value);
}
inline void traceEntryBegin(const Json::Value& value) {
  if (isTraced()) tellEntryBegin(value);
}
inline void traceEntryEnd(const Json::Value& value) {
  if (isTraced()) tellPartEnd(tracedEntry, value);
}
/// `position` is that of the copy among those of its loop.
inline void traceCopyBegin(int index, int position, const CTemplateStack& stack) {
  if (isTraced()) tellCopyBegin(index, position, stack);
}
inline void traceCopyEnd() {
  if (isTraced()) tellEnd(tracedCopy, nullptr, {});
}
inline void traceReplacement(const char* member, const Json::Value& value) {
  if (isTraced()) tellReplaced(member, value);
}

}  // namespace ttr

#endif  // SRC_UTIL_TRACE_POINT_H
