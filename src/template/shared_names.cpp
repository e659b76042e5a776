#include "template/shared_names.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace ttr {
namespace {

constexpr std::string_view formatNames[] = {
    "!=",        "<",         "==",       ">",       "Bounds", "CellHeight", "CellWidth",
    "ColVar",    "Condition", "Contents", "Context", "Count",  "Display",    "Equals",
    "Filename",  "If",        "Include",  "Key",     "Layout", "List",       "Loop",
    "NotEquals", "Offset",    "Page",     "Play",    "Prec",   "RenderType", "RowVar",
    "Size",      "Start",     "Stop",     "Value",   "Var"};

constexpr std::size_t slotCount = 128;

/// A slot for each of them; no two have the same.
constexpr std::size_t slotOf(std::string_view name) {
  const auto first = static_cast<unsigned char>(name.front());
  const auto last = static_cast<unsigned char>(name.back());
  return (name.size() + std::size_t{3} * first + std::size_t{4} * last) % slotCount;
}

constexpr std::array<std::string_view, slotCount> slots() {
  std::array<std::string_view, slotCount> slots{};
  for (const std::string_view name : formatNames) slots[slotOf(name)] = name;
  return slots;
}

// What makes strings is not inlined: they would take room in every frame of what calls itself.

[[gnu::noinline]] Json::Value& addOtherMember(Json::Value& object, std::string_view name) {
  return object[std::string(name)];
}

/// The member `name` of `object`, which has none so far, with the library's own text as its name if
/// the format has it.
Json::Value& addMember(Json::Value& object, std::string_view name) {
  static constexpr std::array<std::string_view, slotCount> known = slots();
  if (name.empty() || known[slotOf(name)] != name) return addOtherMember(object, name);
  return object[Json::StaticString(known[slotOf(name)].data())];
}

/// An array or an object, which are the last of JsonCpp's types.
bool isContainer(const Json::Value& value) { return value.type() >= Json::arrayValue; }

/// True when the first or the last entry of `array` is an array or an object. One in between is
/// copied as it is, which is rare and costs no more than it did.
bool holdsContainers(const Json::Value& array) {
  const auto first = array.begin();
  auto last = array.end();
  return first != last && (isContainer(*first) || isContainer(*--last));
}

/// Gives `copy` what `value` has beside its content: place and comments.
[[gnu::noinline]] void copySurroundings(Json::Value& copy, const Json::Value& value) {
  copy.setOffsetStart(value.getOffsetStart());
  copy.setOffsetLimit(value.getOffsetLimit());
  for (const Json::CommentPlacement placement :
       {Json::commentBefore, Json::commentAfterOnSameLine, Json::commentAfter}) {
    if (value.hasComment(placement)) copy.setComment(value.getComment(placement), placement);
  }
}

// Makes the null value `copy` one of `value`.
void copyInto(Json::Value& copy, const Json::Value& value);

void copyArray(Json::Value& copy, const Json::Value& array) {
  copy = Json::Value(Json::arrayValue);
  for (const Json::Value& entry : array) copyInto(copy.append(Json::Value()), entry);
  copySurroundings(copy, array);
}

void copyObject(Json::Value& copy, const Json::Value& object) {
  copy = Json::Value(Json::objectValue);
  const auto end = object.end();
  for (auto member = object.begin(); member != end; ++member) {
    const char* nameEnd = nullptr;
    const char* name = member.memberName(&nameEnd);
    copyInto(addMember(copy, {name, static_cast<std::size_t>(nameEnd - name)}), *member);
  }
  copySurroundings(copy, object);
}

void copyInto(Json::Value& copy, const Json::Value& value) {
  if (value.isObject()) {
    copyObject(copy, value);
  } else if (value.isArray() && holdsContainers(value)) {
    copyArray(copy, value);
  } else {
    copy = value;
  }
}

}  // namespace

Json::Value copyWithSharedNames(const Json::Value& document) {
  Json::Value copy;
  copyInto(copy, document);
  return copy;
}

}  // namespace ttr
