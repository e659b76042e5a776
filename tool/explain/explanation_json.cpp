// The answer for programs: all of it as one object.
#include "explain/answer.h"
#include "page/bounds_words.h"
#include "page/loop_words.h"
#include "text/wording.h"

namespace ttr {
namespace {

Json::Value placeJson(const CPlace& place) {
  Json::Value json(Json::objectValue);
  json["file"] = place.file;
  json["line"] = static_cast<Json::UInt64>(place.line);
  json["column"] = static_cast<Json::UInt64>(place.column);
  return json;
}

Json::Value typedJson(const Json::Value& value) {
  Json::Value json(Json::objectValue);
  json["value"] = value;
  json["type"] = typeName(value);
  return json;
}

Json::Value ifJson(const CIfFact& test, const std::string& why) {
  Json::Value json(Json::objectValue);
  if (test.condition) json["condition"] = typedJson(*test.condition);
  if (!test.comparison.empty()) {
    json["comparison"] = test.comparison;
    json["operand"] = typedJson(test.operand);
  }
  json["holds"] = test.holds;
  json["why"] = why;
  return json;
}

Json::Value includeJson(const CIncludeFact& include, const std::string& why) {
  Json::Value json(Json::objectValue);
  json["filename"] = include.filename.value_or(Json::Value());
  if (!why.empty()) json["why"] = why;
  return json;
}

Json::Value loopJson(const CLoopFact& loop, const std::string& why) {
  Json::Value json(Json::objectValue);
  json["kind"] = loop.isRotating ? "rotating" : "grid";
  for (const auto& [name, value] : rangeMembers(loop)) json["members"][name] = typedJson(value);
  json["indices"] = loop.count;
  if (const auto ends = rangeEnds(loop)) {
    json["first"] = static_cast<Json::Int64>(ends->first);
    json["last"] = static_cast<Json::Int64>(ends->second);
  }
  const bool shows = loop.isRotating && !loop.copies.empty();
  if (shows) json["shown"] = loop.copies[0].index;
  if (shows && loop.count > 0) json["position"] = loop.copies[0].position + 1;
  json["copies"] = static_cast<Json::UInt64>(loop.copies.size());
  if (loop.layout) json["layout"] = static_cast<Json::UInt64>(*loop.layout);
  if (!loop.isRotating) {
    json["cells"] = Json::Value(Json::arrayValue);
    for (const CCopyFact& copy : loop.copies) json["cells"].append(cellOf(copy));
  }
  if (!why.empty()) json["why"] = why;
  return json;
}

Json::Value boundsJson(const CExplanation& explanation) {
  Json::Value json(Json::objectValue);
  for (const int number : enclosingNumbers(explanation.node->enclosing)) {
    json["enclosing"].append(number);
  }
  json["from"] = explanation.enclosing;
  const std::optional<CBoundsFact>& bounds = explanation.node->bounds;
  if (!bounds) return json;
  json["result"] = bounds->result;
  json["entries"] = Json::Value(Json::arrayValue);
  for (std::size_t i = 0; i < bounds->entries.size(); ++i) {
    const CBoundsEntryFact& entry = bounds->entries[i];
    Json::Value each(Json::objectValue);
    each["name"] = boundsEntryName(i);
    each["written"] = entry.written;
    each["result"] = entry.result;
    each["arithmetic"] = boundsSum(entry, i);
    json["entries"].append(each);
  }
  return json;
}

Json::Value tokenJson(const CTokenExplanation& token) {
  Json::Value json = placeJson(token.place);
  json["member"] = token.member;
  json["token"] = "$(" + token.fact->body + ')';
  if (!token.part.empty()) json["part"] = token.part;
  json["value"] = token.fact->value;
  json["type"] = typeName(token.fact->value);
  if (!token.fact->handler.empty()) json["handler"] = token.fact->handler;
  if (!token.source.empty()) json["source"] = token.source;
  if (!token.why.empty()) json["why"] = token.why;
  return json;
}

Json::Value copyJson(const CCopyPlace& copy) {
  Json::Value json(Json::objectValue);
  if (copy.index) json["index"] = *copy.index;
  json[copy.index ? "position" : "copy"] = static_cast<Json::UInt64>(copy.number);
  json["of"] = static_cast<Json::UInt64>(copy.of);
  json["loop"] = copy.loop.Text();
  return json;
}

/// What replaces the element, and its bounds.
void addFacts(const CExplanation& explanation, Json::Value& json) {
  const CElementNode& node = *explanation.node;
  if (node.test) json["if"] = ifJson(*node.test, explanation.why);
  if (node.include) json["include"] = includeJson(*node.include, explanation.why);
  if (node.loop) json["loop"] = loopJson(*node.loop, explanation.why);
  if (explanation.HasBounds()) json["bounds"] = boundsJson(explanation);
}

}  // namespace

Json::Value answerJson(const CAnswer& answer) {
  const CExplanation& explanation = answer.explanation;
  Json::Value json = placeJson(explanation.place);
  json["answer"] = answer.sentence;
  json["pointer"] = explanation.pointer.Text();
  json["kind"] = explanation.kind;
  json["template"] = explanation.origin.Text();
  json["pass"] = explanation.pass;
  json["value"] = explanation.value == nullptr ? Json::Value() : *explanation.value;
  for (const char* name : {"copies", "tokens", "messages"}) {
    json[name] = Json::Value(Json::arrayValue);
  }
  for (const CCopyPlace& copy : explanation.copies) json["copies"].append(copyJson(copy));
  for (const CTokenExplanation& token : explanation.tokens) {
    json["tokens"].append(tokenJson(token));
  }
  for (const std::string& message : explanation.messages) json["messages"].append(message);
  if (!explanation.ended) addFacts(explanation, json);
  if (!explanation.end.empty()) json["end"] = explanation.end;
  if (explanation.ended) json["exception"] = explanation.ended->text;
  return json;
}

}  // namespace ttr
