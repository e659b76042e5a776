#ifndef SRC_UTIL_INTEGER_TEXT_H
#define SRC_UTIL_INTEGER_TEXT_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace ttr {

// Text to integer, as the C library converts it on a platform whose `long` has 32 bits. Our own
// scan, because on other platforms strtol and its family saturate elsewhere, and newer C
// libraries accept prefixes (0b) that older ones do not.
//
// Leading white space and a sign are accepted. "Whole text" means up to its last character, so
// trailing blanks and embedded NULs do not convert; the empty text converts to 0.

/// Whole text by strtol in base 0 (0x hexadecimal, 0 octal), saturating.
std::optional<std::int32_t> wholeInt32(std::string_view text);

/// Whole text by strtoul in base 0, saturating; a negative number gives its negation modulo 2^32.
std::optional<std::uint32_t> wholeUInt32(std::string_view text);

/// The decimal number that `text` begins with, as atoi gives it; 0 when there is none.
std::int32_t leadingInt32(std::string_view text);

}  // namespace ttr

#endif  // SRC_UTIL_INTEGER_TEXT_H
