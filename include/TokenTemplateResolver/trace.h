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
  /// The resolver comes to the part `part`; `value` is the part as it is now, before it is
  /// resolved. Parts lie within each other: the one begun last is ended first.
  traceBegin,
  /// It is done with the part begun last; `part` is that part's, `value` what became of it.
  traceEnd,
  /// An edge or a size of a "Bounds", or an edge of a point, is about to be made a number: `value`,
  /// its tokens replaced. An edge is counted from `origin`, a share taken of `extent`, both those
  /// of the bounds around; the origin of a size is 0. `percentage` is set where `value` is one;
  /// with an origin below 0 or an extent below 1 it cannot be taken, and a message follows. Not
  /// told of what stays as it is: a size that is no text, an edge that is a number where there is
  /// no origin.
  traceMeasure,
  /// An "If" is decided: `holds`, with `value` the condition and `operand` what it was compared
  /// with, as they were compared: for "==", "!=", "<" and ">" converted to integers, where they can
  /// be. Where nothing is compared the condition is a boolean and the operand a null value. An "If"
  /// at fault does not hold.
  traceVerdict,
  /// The indices of a "Loop" are known: `start`, `count` and `step`; all 0 for a range that is
  /// empty or at fault.
  traceRange,
  /// The layout of a grid is chosen: the one at `index`, which is `value`, a null value when there
  /// is none.
  traceLayout,
  /// A copy of a loop binds a variable: `name` is the member that asks for it, "Var", "Key",
  /// "Value" or "Count", `text` the variable, `value` its value.
  traceVariable,
  /// The innermost element was replaced because of its member `name`, "Include", "If" or "Loop", by
  /// `value`, a null value for what is not shown.
  traceReplaced,
  /// The entry of "Contents" ended last, a text that names an image or font file, was lowercased,
  /// to `value`. Told, too, when that changed nothing.
  traceLowercased,
  /// `text` is about to be written to standard error, and a line end behind it. The text about a
  /// syntax error in JSON has several lines.
  traceMessage,
};

/// What is begun and ended. All fields named here but `part` and `value` are set at the beginning
/// only, unless it says otherwise.
enum eTracePart : std::int32_t {
  /// The template, whose `name` is empty, or an included file, by its `name`. The file is begun
  /// before it is read, and has no value then.
  tracedDocument,
  /// An entry of "Contents", an object or any other value. `bounds` are those that it is measured
  /// against, a null value where there are none.
  tracedElement,
  /// The member `name` of a document, a page, an element, an "Include", an "If" or a "Loop". One
  /// that asks for a list or a number ends with its tokens replaced; it is begun again, where it is
  /// missing too, when its value, which then may have no place, is converted.
  tracedMember,
  /// An entry of a "Bounds", "Display", "Play" or "Prec", a member of a "Context", a point or one
  /// of its edges, the cell of a grid that is filled next.
  tracedEntry,
  /// A copy of a loop's contents: for the index `index` of its range, which is at position `count`,
  /// from 0. `bounds` as for an element: in a grid they are its cell. It has no value.
  tracedCopy,
  /// A token, `text` is its body; and each path inside of one that is looked up, as it stands in an
  /// index or an operand. It has no value at first; at its end `value` is the answer and `name` the
  /// handler that was asked, empty when there is none for the token.
  tracedToken,
};

/// One step of a pass. Fields that an event does not set are as they are here. All that it points
/// to is borrowed for the time of the call: what is to be kept, `name` and `text` too, is copied.
///
/// A value that stands in a template keeps its place: JsonCpp's getOffsetStart() and
/// getOffsetLimit() count bytes in the text of the innermost document, behind a byte order mark, in
/// every copy that a loop makes too. Only what is shown by `traceBegin` stands in the template:
/// what the resolver or a handler made has no place, where both are 0, or one in another text.
/// Begun without a place is the edge that a point lacks, and what an earlier pass over the same
/// document has made.
struct CTraceEvent {
  eTraceEvent event = traceBegin;
  eTracePart part = tracedDocument;    ///< of `traceBegin` and `traceEnd`
  const Json::Value* value = nullptr;  ///< null when there is none
  std::string_view name;
  std::string_view text;
  const Json::Value* bounds = nullptr;   ///< null but for an element and a copy
  const Json::Value* operand = nullptr;  ///< null but for `traceVerdict`
  bool holds = false;
  int origin = 0;  ///< -1 stands for an edge that is missing
  int extent = 0;  ///< -1 stands for a size that is missing
  std::optional<int> percentage;
  int index = 0;
  int start = 0;
  int count = 0;
  int step = 0;
};

/// Told each step of a pass, while it happens, in the thread that resolves; also the message of
/// `Input`, if it has one, and what a host does by calling a step, a registry or a stack itself.
///
/// The library has no such function. A program that wants to listen defines it, once, and the
/// library finds it when the program is linked or started:
///
///     void ttr::trace(const ttr::CTraceEvent& event) {
///       if (event.event == ttr::traceMessage) ++faults;
///     }
///
/// Without one a step costs a comparison. With one it is told of all resolvers in all threads of
/// the program. It must not change the stack, the registry or the resolver.
///
/// What it throws ends the pass as an exception of a token handler does: it leaves `Process`, the
/// frames on the stack stay, the next `Input` starts clean. A message that it throws at is not
/// written. So a program can bound what a page may cost. After an exception, its own or another,
/// what was begun is not ended.
[[gnu::weak]] TTR_EXPORT void trace(const CTraceEvent& event);

}  // namespace ttr

#endif  // TOKENTEMPLATERESOLVER_TRACE_H
