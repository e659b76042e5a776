#include "trace/trace_listener.h"

#include <TokenTemplateResolver/json_text.h>

#include <cstddef>
#include <utility>

namespace {

const CTraceListener*& lastListener() {
  static thread_local const CTraceListener* listener = nullptr;
  return listener;
}

const char* kindOf(const ttr::CTraceEvent& event) {
  static constexpr const char* kinds[] = {"begin",      "end",    "measure",  "verdict",
                                          "range",      "layout", "variable", "replaced",
                                          "lowercased", "message"};
  return kinds[event.event];
}

const char* partOf(const ttr::CTraceEvent& event) {
  static constexpr const char* parts[] = {"document", "element", "member",
                                          "entry",    "copy",    "token"};
  return parts[event.part];
}

std::string shortened(const std::string& text) {
  constexpr std::size_t head = 50;
  constexpr std::size_t tail = 20;
  if (text.size() <= head + tail) return text;
  return text.substr(0, head) + "..." + text.substr(text.size() - tail);
}

void append(std::string& line, const char* name, std::string_view text) {
  if (!text.empty()) line.append(" ").append(name).append("=").append(text);
}

void append(std::string& line, const char* name, const Json::Value* value) {
  if (value != nullptr) append(line, name, shortened(jsoncpp_string::toString(*value)));
}

void append(std::string& line, const char* name, int number, bool always) {
  if (always || number != 0) append(line, name, std::to_string(number));
}

}  // namespace

CTraceListener::CTraceListener(CFunction function)
    : m_function(std::move(function)), m_previous(std::exchange(lastListener(), this)) {}

CTraceListener::~CTraceListener() { lastListener() = m_previous; }

void ttr::trace(const ttr::CTraceEvent& event) {
  if (lastListener() != nullptr) lastListener()->Tell(event);
}

std::string traceText(const ttr::CTraceEvent& event) {
  const bool isPart = event.event == ttr::traceBegin || event.event == ttr::traceEnd;
  const bool isMeasure = event.event == ttr::traceMeasure;
  const bool isRange = event.event == ttr::traceRange;
  const bool begunCopy = event.event == ttr::traceBegin && event.part == ttr::tracedCopy;
  std::string line = kindOf(event);
  if (isPart || event.part != ttr::tracedDocument) line += std::string(" ") + partOf(event);
  append(line, "name", event.name);
  append(line, "text", event.text);
  append(line, "value", event.value);
  append(line, "bounds", event.bounds);
  append(line, "operand", event.operand);
  if (event.event == ttr::traceVerdict) line += event.holds ? " holds" : " fails";
  append(line, "origin", event.origin, isMeasure);
  append(line, "extent", event.extent, isMeasure);
  if (event.percentage) append(line, "percentage", *event.percentage, true);
  append(line, "index", event.index, event.event == ttr::traceLayout || begunCopy);
  append(line, "start", event.start, isRange);
  append(line, "count", event.count, isRange);
  append(line, "step", event.step, isRange);
  return line;
}
