// If, Include and Loop: the elements that are replaced. Their operands, names and ranges are asked
// of the library in the place of the element.
#include "explain/replacement_explanation.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "TokenTemplateResolver/json_text.h"
#include "text/printable.h"

namespace ttr {
namespace {

constexpr char indexName[] = "ttr index";
constexpr char indexToken[] = "$(context.ttr index)";

CTypedValue typedMember(const CProbe& probe, const Json::Value& written) {
  CTypedValue typed;
  typed.value = probe.Value(written, true).value;
  typed.type = probe.TypeOf(written, typed.value, true);
  return typed;
}

/// The element of the probe with `replacing` as its member `name`.
Json::Value elementWith(const CProbe& probe, const char* name, const Json::Value& replacing) {
  const Json::Value& value = *probe.node().origin.value;
  Json::Value element(Json::objectValue);
  for (const char* kept : {"Context", "Bounds"}) {
    if (value.isMember(kept)) element[kept] = value[kept];
  }
  element[name] = replacing;
  return element;
}

/// The text of a message of the library without the name of the function.
std::string withoutFunction(const std::string& message) {
  const std::size_t colon = message.find(": ");
  std::string text = oneLine(colon == std::string::npos ? message : message.substr(colon + 2));
  if (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}

// --- If ---

bool isNumber(const std::string& type) {
  return type == "integer" || type == "real" || type == "unsigned count";
}

std::string whyNotSameType(const CIfExplanation& test) {
  const std::string& left = test.condition->type;
  const std::string& right = test.operand.type;
  if (left == "unsigned count" || right == "unsigned count") {
    return "a count is unsigned and equals no number of a page: use ==, or write #+0 for #";
  }
  std::string why = left + " never equals " + right;
  if (left != right && (isNumber(left) || isNumber(right)) && (left == "text" || right == "text")) {
    why += ": use == to compare integers";
  }
  return why;
}

bool holdsToken(const Json::Value& array) {
  return std::any_of(array.begin(), array.end(), [](const Json::Value& entry) {
    return entry.isString() && entry.asString().find("$(") != std::string::npos;
  });
}

std::string whyEquality(const CIfExplanation& test) {
  const bool equal = test.holds == (test.comparison == "Equals");
  const Json::Value& operand = test.operand.value;
  if (operand.isArray()) {
    std::string why = equal ? "it is one of the entries" : "it is none of the entries";
    const auto sameText = [&](const Json::Value& entry) {
      return brief(entry) == brief(test.condition->value) ||
             entry.type() == test.condition->value.type();
    };
    if (equal) return why;
    if (holdsToken(operand)) return why + "; tokens inside an array are not replaced";
    if (!std::any_of(operand.begin(), operand.end(), sameText)) {
      why += ", as none of them is of type " + test.condition->type;
    }
    return why;
  }
  if (equal) return "both are the same";
  return test.condition->type == test.operand.type ? "they differ" : whyNotSameType(test);
}

std::string whyIntegers(const CProbe& probe, const CIfExplanation& test,
                        const Json::Value& written) {
  std::string why;
  const std::pair<const char*, const CTypedValue*> sides[] = {
      {"Condition", &*test.condition}, {test.comparison.c_str(), &test.operand}};
  for (const auto& [name, side] : sides) {
    if (probe.IsInteger(written[name], true)) continue;
    why += (why.empty() ? "" : ", and ") + brief(*side) + " is no integer";
  }
  if (!why.empty()) return why;
  const int left = probe.Integer(written["Condition"], true);
  const int right = probe.Integer(written[test.comparison], true);
  return std::to_string(left) + ' ' + test.comparison + ' ' + std::to_string(right) +
         (test.holds ? " is true" : " is false");
}

std::string whyIf(const CProbe& probe, const CIfExplanation& test, const Json::Value& written) {
  if (!test.condition) return "it has no Condition";
  if (test.comparison.empty()) {
    return brief(*test.condition) + (test.holds ? " counts as true" : " counts as false");
  }
  const bool strict = test.comparison == "Equals" || test.comparison == "NotEquals";
  return strict ? whyEquality(test) : whyIntegers(probe, test, written);
}

// --- Loop ---

/// The contents of what the loop `loop` becomes in the place of the probe's element.
Json::Value copiesOf(const CProbe& probe, const Json::Value& loop) {
  const CProbe::CAnswer answer = probe.Ask(elementWith(probe, "Loop", loop));
  const Json::Value* contents = findMember(&answer.value, "Contents");
  return contents != nullptr && contents->isArray() ? *contents : Json::Value(Json::arrayValue);
}

Json::Value measuringElement() {
  Json::Value element(Json::objectValue);
  for (const char* text : {"0", "0", "100%", "100%"}) element["Bounds"].append(text);
  return element;
}

Json::Value arrayWith(const Json::Value& entry) {
  Json::Value array(Json::arrayValue);
  array.append(entry);
  return array;
}

/// The indices of the loop's range, of a grid and of a rotating loop alike: a grid loop over the
/// same range, with cells enough.
void explainRange(const CProbe& probe, Json::Value loop, CLoopExplanation& explanation) {
  for (const char* name : {"Bounds", "Value", "Key", "Count", "CellWidth", "CellHeight"}) {
    loop.removeMember(name);
  }
  loop["Var"] = indexName;
  Json::Value cells(Json::arrayValue);
  for (std::size_t i = 0; i < CLoopExplanation::mostIndices; ++i) cells.append(0);
  loop["Layout"] = arrayWith(cells);
  loop["Contents"] = arrayWith(indexToken);
  const Json::Value indices = copiesOf(probe, loop);
  explanation.indices = indices.size();
  if (indices.empty() || !indices[0U].isInt()) return;
  explanation.first = indices[0U].asInt();
  if (indices.size() == CLoopExplanation::mostIndices) return;
  explanation.last = indices[indices.size() - 1].asInt();
}

/// The library chooses a layout by its number of cells alone: so each is asked for by as many
/// cells, which tell its number as their width.
void explainLayout(const CProbe& probe, Json::Value loop, CLoopExplanation& explanation) {
  const Json::Value* layouts = findMember(&loop, "Layout");
  if (layouts == nullptr || !layouts->isArray() || layouts->empty()) return;
  explanation.layouts = layouts->size();
  Json::Value numbered(Json::arrayValue);
  for (Json::ArrayIndex i = 0; i < layouts->size(); ++i) {
    Json::Value cell(Json::arrayValue);
    for (const int part : {0, 0, static_cast<int>(i) + 1, 1}) cell.append(part);
    Json::Value cells(Json::arrayValue);
    for (Json::ArrayIndex k = 0; k < (*layouts)[i].size(); ++k) cells.append(cell);
    numbered.append(cells);
  }
  loop["Layout"] = numbered;
  loop["Contents"] = arrayWith(measuringElement());
  const Json::Value copies = copiesOf(probe, loop);
  const Json::Value* width = CJsonPointer::Parse("/0/Bounds/2").Find(copies);
  if (width == nullptr || !width->isInt() || width->asInt() < 1) return;
  explanation.layout = static_cast<std::size_t>(width->asInt() - 1);
}

void explainCells(const CProbe& probe, Json::Value loop, CLoopExplanation& explanation) {
  loop["Contents"] = arrayWith(measuringElement());
  const Json::Value copies = copiesOf(probe, loop);
  explanation.copies = copies.size();
  if (explanation.rotating) return;
  for (const Json::Value& copy : copies) explanation.cells.append(copy["Bounds"]);
}

bool isInt(std::int64_t number) {
  return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
}

void explainShown(const CProbe& probe, Json::Value loop, CLoopExplanation& explanation) {
  for (const char* name : {"Value", "Key"}) loop.removeMember(name);
  loop["Var"] = indexName;
  loop["Contents"] = arrayWith(indexToken);
  const Json::Value copies = copiesOf(probe, loop);
  if (!copies.empty() && copies[0U].isInt()) explanation.shown = copies[0U].asInt();
}

/// The indices of a rotating loop, from the one it shows now: a pass shows the position of its
/// number modulo their count. Downwards they are not those of a grid loop, but as many.
void explainPosition(const CProbe& probe, CLoopExplanation& explanation) {
  const bool down = explanation.last && *explanation.last < *explanation.first;
  explanation.first.reset();
  explanation.last.reset();
  const std::size_t count = explanation.indices;
  if (!explanation.shown || count == 0 || count >= CLoopExplanation::mostIndices) return;
  const std::size_t position = probe.pass() % count;
  const std::int64_t step = down ? -1 : 1;
  const std::int64_t first = *explanation.shown - step * static_cast<std::int64_t>(position);
  const std::int64_t last = first + step * static_cast<std::int64_t>(count - 1);
  explanation.position = position;
  if (!isInt(first) || !isInt(last)) return;
  explanation.first = static_cast<int>(first);
  explanation.last = static_cast<int>(last);
}

bool isEmptyList(const CTypedValue& list) {
  return (list.value.isArray() && list.value.empty()) || list.value == "";
}

std::string whyNoCopies(const CProbe& probe, const Json::Value& loop,
                        const CLoopExplanation& explanation,
                        const std::vector<std::string>& messages) {
  std::string hint;
  for (const auto& [name, typed] : explanation.members) {
    if (name == "List" && typed.type == "null") hint = "; its List is null";
    if (name == "List" && isEmptyList(typed)) return "its List is empty";
  }
  const auto ofLoop = [](const std::string& message) {
    return message.compare(0, 23, "CTemplateResolver::loop") == 0 ||
           message.compare(0, 38, "CTemplateResolver::processContentsLoop") == 0;
  };
  const auto message = std::find_if(messages.begin(), messages.end(), ofLoop);
  if (message != messages.end()) return withoutFunction(*message) + hint;
  if (explanation.indices > 0) {
    const Json::Value* contents = findMember(&loop, "Contents");
    const bool hasContents = contents != nullptr && contents->isArray() && !contents->empty();
    return hasContents ? "its layout has no cells" : "it has no Contents";
  }
  const Json::Value* size = findMember(&loop, "Size");
  if (size != nullptr && probe.Integer(*size, true) == 0) return "its Size is 0";
  return "its range has no indices" + hint;
}

bool hasCopies(const CProbe& probe) { return !probe.node().children.empty(); }

}  // namespace

std::string brief(const CTypedValue& value) {
  return value.value.isNull() ? "null" : brief(value.value) + " (" + value.type + ')';
}

CIfExplanation explainIf(const CProbe& probe) {
  CIfExplanation explanation;
  const Json::Value written = (*probe.node().origin.value)["If"];
  if (!written.isObject()) {
    explanation.why = "it has no Condition";
    return explanation;
  }
  if (written.isMember("Condition")) {
    explanation.condition = typedMember(probe, written["Condition"]);
    for (const char* name : {"Equals", "NotEquals", "==", "!=", "<", ">"}) {
      if (!written.isMember(name)) continue;
      explanation.comparison = name;
      explanation.operand = typedMember(probe, written[name]);
      break;
    }
  }
  Json::Value test = written;
  test["Contents"] = Json::Value(Json::arrayValue);
  explanation.holds = probe.Ask(elementWith(probe, "If", test)).value.isObject();
  explanation.why = whyIf(probe, explanation, written);
  return explanation;
}

CIncludeExplanation explainInclude(const CProbe& probe, const std::vector<std::string>& messages) {
  CIncludeExplanation explanation;
  const Json::Value& include = (*probe.node().origin.value)["Include"];
  if (const Json::Value* filename = findMember(&include, "Filename")) {
    explanation.filename = probe.Value(*filename, true).value;
  }
  if (!probe.node().IsNull()) return explanation;
  const auto ofInclude = [](const std::string& message) {
    return message.find("processContentsIncludeElement") != std::string::npos;
  };
  const auto message = std::find_if(messages.begin(), messages.end(), ofInclude);
  if (message != messages.end()) {
    explanation.why = withoutFunction(*message);
    return explanation;
  }
  const std::string name = explanation.filename.asString();
  const std::string reason = probe.page().ReasonNotIncluded(name);
  const CSourceFile* file = probe.page().IncludedFile(name);
  if (file == nullptr) {
    explanation.why = name + ": " + reason;
  } else if (!file->errors().empty()) {
    explanation.why = file->errors()[0].place.Text() + ": " + file->errors()[0].reason;
  } else {
    explanation.why = name + " holds null";
  }
  return explanation;
}

CLoopExplanation explainLoop(const CProbe& probe, const std::vector<std::string>& messages) {
  CLoopExplanation explanation;
  Json::Value loop = (*probe.node().origin.value)["Loop"];
  if (!loop.isObject()) loop = Json::Value(Json::objectValue);
  explanation.rotating = loop.isMember("Bounds");
  for (const char* name : {"List", "Start", "Stop", "Offset", "Size"}) {
    if (!loop.isMember(name)) continue;
    explanation.members.emplace_back(name, typedMember(probe, loop[name]));
  }
  explainRange(probe, loop, explanation);
  explainCells(probe, loop, explanation);
  if (explanation.rotating) {
    explainShown(probe, loop, explanation);
    explainPosition(probe, explanation);
  } else {
    explainLayout(probe, loop, explanation);
  }
  if (!hasCopies(probe)) {
    explanation.why = whyNoCopies(probe, loop, explanation, messages);
  }
  return explanation;
}

}  // namespace ttr
