#include "template/shared_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace ttr {
namespace {

/// The shorter ones first, those of a length in the order of their bytes.
constexpr std::string_view formatNames[] = {
    "<",         ">",         "!=",        "==",         "If",        "Key",      "Var",
    "List",      "Loop",      "Page",      "Play",       "Prec",      "Size",     "Stop",
    "Count",     "Start",     "Value",     "Bounds",     "ColVar",    "Equals",   "Layout",
    "Offset",    "RowVar",    "Context",   "Display",    "Include",   "Contents", "Filename",
    "CellWidth", "Condition", "NotEquals", "CellHeight", "RenderType"};

bool standsBefore(std::string_view left, std::string_view right) {
  return left.size() != right.size() ? left.size() < right.size() : left < right;
}

/// The member `name` of `object`, which has none so far, with the library's own text as its name if
/// the format has it.
Json::Value& addMember(Json::Value& object, std::string_view name) {
  const auto known =
      std::lower_bound(std::begin(formatNames), std::end(formatNames), name, standsBefore);
  if (known == std::end(formatNames) || *known != name) return object[std::string(name)];
  return object[Json::StaticString(known->data())];
}

bool isContainer(const Json::Value& value) { return value.isArray() || value.isObject(); }

/// Gives `copy` what `value` has beside its content: place and comments.
void copySurroundings(Json::Value& copy, const Json::Value& value) {
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
  } else if (value.isArray() && std::any_of(value.begin(), value.end(), isContainer)) {
    copyArray(copy, value);
  } else {
    copy.copy(value);
  }
}

}  // namespace

Json::Value copyWithSharedNames(const Json::Value& document) {
  Json::Value copy;
  copyInto(copy, document);
  return copy;
}

}  // namespace ttr
