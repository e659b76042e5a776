// The numbers are those that the library told; only what it adds at the end, the enclosing edge, is
// taken off again to show the steps.
#include "page/bounds_words.h"

#include <cstdint>
#include <cstring>

#include "text/wording.h"

namespace ttr {
namespace {

/// The low 32 bits of `number`, as the library's arithmetic wraps.
int wrapped(std::int64_t number) {
  const auto bits = static_cast<std::uint32_t>(number);
  std::int32_t result = 0;
  std::memcpy(&result, &bits, sizeof result);
  return result;
}

bool isEdge(std::size_t index) { return index < 2; }

std::string whyItStays(const CBoundsEntryFact& entry, std::size_t index) {
  if (index > 3) return "as an integer";
  if (!isEdge(index)) return "stays: as written";
  return entry.written.isInt() ? "stays: the enclosing edge is missing or negative"
                               : "stays: no integer and no text";
}

bool takesPercentage(const CMeasureFact& measure) {
  return measure.percentage && measure.origin >= 0 && measure.extent > 0;
}

/// How `number`, what is written without the enclosing edge, comes about.
std::string numberText(const CMeasureFact& measure, int number) {
  const std::string text = std::to_string(number);
  if (takesPercentage(measure)) {
    const std::int64_t product = std::int64_t{*measure.percentage} * measure.extent;
    return std::to_string(*measure.percentage) + "% of " + std::to_string(measure.extent) + " = " +
           text + (wrapped(product) == product ? "" : " (the product wraps in 32 bits)");
  }
  if (measure.percentage && measure.origin < 0) {
    return text + " (no percentage, as the enclosing edge is missing or negative)";
  }
  if (measure.percentage) return text + " (nothing to take a percentage of)";
  return measure.isNumber ? text : text + " (" + brief(measure.replaced) + " is no integer)";
}

}  // namespace

std::string boundsEntryName(std::size_t index) {
  static constexpr const char* names[] = {"x", "y", "width", "height", "fifth", "sixth"};
  return index < std::size(names) ? names[index] : "";
}

std::string boundsSum(const CBoundsEntryFact& entry, std::size_t index) {
  if (!entry.measure || !entry.result.isInt()) return whyItStays(entry, index);
  const int origin = entry.measure->origin;
  const int result = entry.result.asInt();
  const int number = wrapped(std::int64_t{result} - origin);
  std::string text = numberText(*entry.measure, number);
  if (!isEdge(index)) return text;
  if (takesPercentage(*entry.measure)) text += ", " + std::to_string(number);
  text +=
      origin < 0 ? " - " + std::to_string(-std::int64_t{origin}) : " + " + std::to_string(origin);
  return text + " = " + std::to_string(result);
}

std::array<int, 4> enclosingNumbers(const Json::Value& enclosing) {
  std::array<int, 4> numbers = {-1, -1, 0, 0};
  if (!enclosing.isArray()) return numbers;
  for (Json::ArrayIndex i = 0; i < numbers.size(); ++i) {
    if (enclosing[i].isInt()) numbers.at(i) = enclosing[i].asInt();
  }
  return numbers;
}

}  // namespace ttr
