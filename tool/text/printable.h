#ifndef TOOL_TEXT_PRINTABLE_H
#define TOOL_TEXT_PRINTABLE_H

#include <string>

namespace ttr {

// The way out of text to people. Names, values and messages may hold anything that the author of a
// template writes: what a terminal obeys, and line ends that forge lines of a report, are shown as
// escapes. Reports pass each piece of a line through `printable` and add line ends and colours
// themselves. JSON, XML and HTML escape as these formats do.

/// `text` with what is not printed visible: control characters (C0, DEL, C1), line ends, line and
/// paragraph separators and the controls of writing direction as "\u001b", bytes that are no UTF-8
/// as "\x9b". A backslash stays as it is, so that what is printable is not changed.
std::string printable(const std::string& text);

/// The same for a message of the library, which keeps its own line ends: those of the JSON reader's
/// text, which quotes nothing of the page. No other message of the library has line ends.
std::string printableMessage(const std::string& message);

/// `text` with blanks for its line ends, and none of either at its end.
std::string joinedLines(std::string text);

/// `message` with the JSON reader's line ends joined; line ends of other messages stay for
/// `printable` to show. For messages of the library and for reasons of the reader.
std::string oneLine(const std::string& message);

/// Writes "ttr: " and `message` as a line to standard error.
void tell(const std::string& message);

/// Writes a report whose pieces are printable to standard error.
void writeStandardError(const std::string& report);

}  // namespace ttr

#endif  // TOOL_TEXT_PRINTABLE_H
