#include "util/integer_text.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "util/string_utils.h"

namespace ttr {
namespace {

constexpr std::uint64_t beyond32Bits = std::uint64_t{1} << 32;

/// What the head of a text says: a sign, a magnitude that stops growing at 2^32, and where the
/// digits end (0 when there are none).
struct CScannedInteger {
  bool negative = false;
  std::uint64_t magnitude = 0;
  std::size_t end = 0;
};

/// Value of a digit in any base up to 16; 16 when `character` is none.
unsigned digitValue(char character) {
  if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
  if (character >= 'a' && character <= 'f') return static_cast<unsigned>(character - 'a') + 10;
  if (character >= 'A' && character <= 'F') return static_cast<unsigned>(character - 'A') + 10;
  return 16;
}

/// The base that the digits at `pos` announce. A hexadecimal prefix, which is skipped, counts only
/// before a hexadecimal digit.
unsigned announcedBase(std::string_view text, std::size_t& pos) {
  if (pos >= text.size() || text[pos] != '0') return 10;
  const bool hexadecimal =
      pos + 2 < text.size() && (text[pos + 1] | 0x20) == 'x' && digitValue(text[pos + 2]) < 16;
  if (!hexadecimal) return 8;
  pos += 2;
  return 16;
}

/// Scans in `base`; 0 takes the base from the text.
CScannedInteger scanInteger(std::string_view text, unsigned base) {
  CScannedInteger scan;
  std::size_t pos = std::min(text.find_first_not_of(whiteSpace), text.size());
  if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
    scan.negative = text[pos] == '-';
    ++pos;
  }
  if (base == 0) base = announcedBase(text, pos);
  const std::size_t first = pos;
  for (; pos < text.size() && digitValue(text[pos]) < base; ++pos) {
    scan.magnitude = std::min(scan.magnitude * base + digitValue(text[pos]), beyond32Bits);
  }
  scan.end = pos == first ? 0 : pos;
  return scan;
}

std::int32_t saturatedInt32(const CScannedInteger& scan) {
  constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
  const auto magnitude = static_cast<std::int64_t>(std::min(scan.magnitude, largest + 1));
  if (scan.negative) return static_cast<std::int32_t>(-magnitude);
  return static_cast<std::int32_t>(std::min<std::int64_t>(magnitude, largest));
}

}  // namespace

std::optional<std::int32_t> wholeInt32(std::string_view text) {
  const CScannedInteger scan = scanInteger(text, 0);
  if (scan.end != text.size()) return std::nullopt;
  return saturatedInt32(scan);
}

std::optional<std::uint32_t> wholeUInt32(std::string_view text) {
  const CScannedInteger scan = scanInteger(text, 0);
  if (scan.end != text.size()) return std::nullopt;
  if (scan.magnitude == beyond32Bits) return std::numeric_limits<std::uint32_t>::max();
  const auto magnitude = static_cast<std::uint32_t>(scan.magnitude);
  return scan.negative ? 0 - magnitude : magnitude;
}

std::int32_t leadingInt32(std::string_view text) { return saturatedInt32(scanInteger(text, 10)); }

}  // namespace ttr
