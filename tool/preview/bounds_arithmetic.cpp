#include "preview/bounds_arithmetic.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>

#include "TokenTemplateResolver/json_text.h"
#include "TokenTemplateResolver/token_resolver.h"
#include "page/message_recorder.h"
#include "preview/text_layout.h"

namespace ttr {
namespace {

constexpr std::size_t longestText = 40;

/// An entry of bounds on its way from the template to the result.
struct CEntry {
  bool isEdge = false;
  Json::Value written;
  Json::Value replaced;
  std::optional<int> origin;  ///< of the enclosing bounds, in this direction
  int extent = 0;             ///< the same; 0 without one
  Json::Value result;
};

/// A number in the steps that lead to it: "$(half)", "50% of 640", "320".
struct CTerm {
  std::vector<std::string> steps;
  std::int64_t number = 0;
  std::string note;  ///< what is to be said besides
};

std::string asText(const Json::Value& value) {
  return shortened(value.isString() ? value.asString() : jsoncpp_string::toString(value),
                   longestText);
}

/// A "%" after the first digit makes a percentage.
bool isPercentage(const Json::Value& value) {
  if (!value.isString()) return false;
  const std::string text = value.asString();
  const std::size_t digit = text.find_first_of("0123456789");
  const std::size_t percent = text.find('%');
  return percent != std::string::npos && digit != std::string::npos && digit < percent;
}

/// The integer that a text or the value of a token converts to, by the library's own conversion;
/// nothing when it is none.
std::optional<int> converted(Json::Value value) {
  const CMessageRecorder silence;
  try {
    CTokenResolver::ConvertToInt(value);
  } catch (const Json::Exception&) {
    return std::nullopt;
  }
  return value.isInt() ? std::optional<int>(value.asInt()) : std::nullopt;
}

CTerm percentageTerm(const CEntry& entry) {
  const std::int64_t percentage = std::strtol(entry.replaced.asCString(), nullptr, 10);
  const std::int64_t number = percentage * entry.extent / 100;
  return {{asText(entry.replaced) + " of " + std::to_string(entry.extent), std::to_string(number)},
          number,
          ""};
}

CTerm integerTerm(const Json::Value& value) {
  const std::optional<int> number = converted(value);
  const std::string numberText = std::to_string(number.value_or(0));
  if (isPercentage(value)) return {{asText(value) + " of nothing", numberText}, 0, ""};
  if (!number) return {{'"' + asText(value) + '"', numberText}, 0, "no integer"};
  if (asText(value) == numberText) return {{numberText}, *number, ""};
  return {{asText(value), numberText}, *number, ""};
}

/// The term of a text, or of what its tokens delivered.
CTerm textTerm(const CEntry& entry) {
  const bool measurable = entry.extent > 0 && (!entry.isEdge || entry.origin.value_or(-1) >= 0);
  CTerm term = measurable && isPercentage(entry.replaced) ? percentageTerm(entry)
                                                          : integerTerm(entry.replaced);
  if (entry.written != entry.replaced) term.steps.insert(term.steps.begin(), asText(entry.written));
  if (entry.isEdge && !entry.origin) term.note = "no enclosing edge counts as -1";
  return term;
}

CTerm integerTerm(const CEntry& entry) {
  const int number = entry.written.asInt();
  CTerm term{{std::to_string(number)}, number, ""};
  if (!entry.isEdge || entry.origin.value_or(-1) >= 0) return term;
  term.note = entry.origin ? "not added to the enclosing edge " + std::to_string(*entry.origin)
                           : "no enclosing edge";
  return term;
}

/// What is added to the term: the enclosing edge, where it has one that counts.
std::optional<int> originOf(const CEntry& entry) {
  if (!entry.isEdge) return std::nullopt;
  const int origin = entry.origin.value_or(-1);
  if (entry.written.isInt() && origin < 0) return std::nullopt;
  return origin;
}

/// "32 + 5% of 640 = 32 + 32 = 64".
std::string calculation(const CTerm& term, std::optional<int> origin) {
  const std::string added = origin ? std::to_string(*origin) + " + " : "";
  std::string text;
  for (const std::string& step : term.steps) {
    if (!text.empty()) text += " = ";
    text += added;
    text += step;
  }
  if (origin) text += " = " + std::to_string(term.number + *origin);
  return term.note.empty() ? text : text + " (" + term.note + ')';
}

std::string lineOf(const CEntry& entry) {
  if (!entry.written.isInt() && !entry.written.isString()) return asText(entry.result);
  const CTerm term = entry.written.isInt() ? integerTerm(entry) : textTerm(entry);
  const std::optional<int> origin = originOf(entry);
  const bool leadsThere =
      entry.result.isInt() && entry.result.asInt() == term.number + origin.value_or(0);
  return leadsThere ? calculation(term, origin) : asText(entry.result);
}

/// Entry `index` of an array; null when there is none.
Json::Value at(const Json::Value& array, Json::ArrayIndex index) {
  return array.isArray() && array.isValidIndex(index) ? array[index] : Json::Value();
}

CEntry entryAt(Json::ArrayIndex index, const Json::Value& written, const Json::Value& replaced,
               const Json::Value& enclosing) {
  CEntry entry;
  entry.isEdge = index < 2;
  entry.written = at(written, index);
  entry.replaced = at(replaced, index);
  const Json::Value origin = at(enclosing, index % 2);
  const Json::Value extent = at(enclosing, index % 2 + 2);
  if (origin.isInt()) entry.origin = origin.asInt();
  if (extent.isInt()) entry.extent = extent.asInt();
  return entry;
}

}  // namespace

std::vector<std::string> boundsArithmetic(const Json::Value& written, const Json::Value& replaced,
                                          const Json::Value& enclosing, const Json::Value& result) {
  static constexpr const char* names[] = {"x: ", "y: ", "width: ", "height: "};
  std::vector<std::string> lines;
  if (!result.isArray()) return lines;
  for (Json::ArrayIndex index = 0; index < 4 && index < result.size(); ++index) {
    CEntry entry = entryAt(index, written, replaced, enclosing);
    entry.result = result[index];
    lines.push_back(names[index] + lineOf(entry));
  }
  return lines;
}

}  // namespace ttr
