#ifndef SRC_UTIL_STRING_UTILS_H
#define SRC_UTIL_STRING_UTILS_H

#include <string>
#include <vector>

namespace ttr {

/// White space as the C locale knows it.
inline constexpr char whiteSpace[] = " \t\n\v\f\r";

/// A copy of `text` without leading and trailing white space.
std::string trim(const std::string& text);

/// The pieces of `text` between characters of `delimiter`, in order and exactly as written: empty
/// pieces count, blanks stay; empty text has no pieces.
///
/// A piece that begins with a double quote runs to its closing quote (RFC 4180): the quotes are
/// dropped, a doubled quote inside is one quote, delimiters inside are text. What stands between
/// the closing quote and the next delimiter is appended. Without a closing quote the rest of the
/// text, opening quote included, is one piece.
std::vector<std::string> CSVsplit(const std::string& text, const std::string& delimiter);

}  // namespace ttr

#endif  // SRC_UTIL_STRING_UTILS_H
