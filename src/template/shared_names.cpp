#include "template/shared_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace ttr {
namespace {

/// In the order of their bytes.
constexpr std::string_view formatNames[] = {
    "!=",        "<",         "==",       ">",       "Bounds", "CellHeight", "CellWidth",
    "ColVar",    "Condition", "Contents", "Context", "Count",  "Display",    "Equals",
    "Filename",  "If",        "Include",  "Key",     "Layout", "List",       "Loop",
    "NotEquals", "Offset",    "Page",     "Play",    "Prec",   "RenderType", "RowVar",
    "Size",      "Start",     "Stop",     "Value",   "Var"};

/// The member `name` of `object`, which has none so far, with the library's own text as its name if
/// the format has it.
Json::Value& addMember(Json::Value& object, std::string_view name) {
  const auto known = std::lower_bound(std::begin(formatNames), std::end(formatNames), name);
  if (known == std::end(formatNames) || *known != name) return object[std::string(name)];
  return object[Json::StaticString(known->data())];
}

void shareOwnNames(Json::Value& object) {
  Json::Value renamed(Json::objectValue);
  const auto end = object.end();
  for (auto member = object.begin(); member != end; ++member) {
    const char* nameEnd = nullptr;
    const char* name = member.memberName(&nameEnd);
    addMember(renamed, {name, static_cast<std::size_t>(nameEnd - name)}).swap(*member);
  }
  object.swapPayload(renamed);
}

}  // namespace

void shareNames(Json::Value& document) {
  for (Json::Value& value : document) shareNames(value);
  if (document.isObject()) shareOwnNames(document);
}

}  // namespace ttr
