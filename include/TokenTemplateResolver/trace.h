#ifndef TOKENTEMPLATERESOLVER_TRACE_H
#define TOKENTEMPLATERESOLVER_TRACE_H

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "TokenTemplateResolver/export.h"

namespace ttr {

/// What a step of a pass is about; tells which fields of the event are set.
enum eTraceEvent : std::int32_t {
  /// The resolver comes to the part `part`. Parts lie within each other: what is begun last is
  /// ended
  /// first. `value` is the part as it is now, before it is resolved.
  traceBegin,
  /// It is done with the part that was begun last; `value` is what became of it.
  traceEnd,
  /// An edge or a size of a "Bounds", or an edge of a point, is about to be made a number: `value`
  /// with its tokens replaced, `origin` and `extent` of what it is measured against, and
  /// `percentage` when it is one that can be taken. Integers that stay as they are have none.
  traceMeasure,
  /// An "If" is decided: `holds`, with `value` the condition and `operand` what it was compared
  /// with, as they were compared: converted to integers for "==", "!=", "<" and ">".
  traceVerdict,
  /// The indices of a "Loop" are known: `start`, `count` and `step`; all 0 for a range that is
  /// empty or at fault.
  traceRange,
  /// The layout of a grid is chosen: the one at `index`, which is `value`.
  traceLayout,
  /// A copy of a loop binds a variable: `name` is the member that asks for it, such as "Var",
  /// `text`
  /// the variable, `value` its value.
  traceVariable,
  /// The element begun last was replaced because of its member `name`, "Include", "If" or "Loop",
  /// by
  /// `value`.
  traceReplaced,
  /// A text that names an image or font file was lowercased, to `value`.
  traceLowercased,
  /// `text` is about to be written to standard error, as one line.
  traceMessage,
};

/// What is begun and ended.
enum eTracePart : std::int32_t {
  /// The template, or an included file, `name`; that of the template is empty. An included file is
  /// begun before it is read, without a value.
  tracedDocument,
  /// An entry of "Contents", an object or any other value. `bounds` are those that it is measured
  /// against, a null value where there are none.
  tracedElement,
  /// The member `name` of a document, a page, an element, an "Include", an "If" or a "Loop". Some
  /// are
  /// begun again when their value, which may then be one that has no place, is put to use.
  tracedMember,
  /// An entry of a "Bounds", "Display", "Play" or "Prec", a member of a "Context", a point or one
  /// of
  /// its edges, the cell of a grid that is filled next.
  tracedEntry,
  /// A copy of a loop's contents: for the index `index` of its range, which is at position `count`,
  /// from 0. `bounds` as for an element: those of the cell in a grid.
  tracedCopy,
  /// A token, `text` is its body; and each path inside of one that is looked up, as it stands in an
  /// index or an operand. At its end `name` is the handler that was asked, empty when there is none
  /// of that name, and `value` the answer.
  tracedToken,
};

/// One step of a pass. Fields that an event does not set are as they are here. All that it points
/// to is borrowed for the time of the call.
///
/// A value that stands in a template keeps its place: JsonCpp's getOffsetStart() and
/// getOffsetLimit() count bytes in the text of the document begun last, behind a byte order mark,
/// in every copy that a loop makes too. What the resolver or a handler made has no place, or one in
/// another text: only what is shown by `traceBegin` stands in the template.
struct CTraceEvent {
  eTraceEvent event = traceBegin;
  eTracePart part = tracedDocument;    ///< of `traceBegin` and `traceEnd`
  const Json::Value* value = nullptr;  ///< null when there is none
  std::string_view name;
  std::string_view text;
  const Json::Value* bounds = nullptr;
  const Json::Value* operand = nullptr;  ///< a null value when nothing was compared
  bool holds = false;
  int origin = 0;  ///< -1 stands for an edge that is missing
  int extent = 0;  ///< -1 stands for a size that is missing
  std::optional<int> percentage;
  int index = 0;
  int start = 0;
  int count = 0;
  int step = 0;
};

/// Told each step of a pass, while it happens, in the thread that resolves; and `Input`'s message,
/// if it has one.
///
/// The library has no such function. A program that wants to listen defines it, and the library
/// finds it when the program is linked or started:
///
///     void ttr::trace(const ttr::CTraceEvent& event) {
///       if (event.event == ttr::traceMessage) ++faults;
///     }
///
/// Without one a step costs a comparison. It is told of resolvers in all threads of the program,
/// and must not change the stack, the registry or the resolver.
///
/// What it throws ends the pass as an exception of a token handler does: it leaves `Process`, the
/// frames on the stack stay, the next `Input` starts clean. So a program can bound what a page may
/// cost. After an exception, its own or another, what was begun is not ended.
[[gnu::weak]] TTR_EXPORT void trace(const CTraceEvent& event);

}  // namespace ttr

#endif  // TOKENTEMPLATERESOLVER_TRACE_H
