// The explanation for programs: all of it as one object.
#include "explain/explanation.h"

namespace ttr {
namespace {

Json::Value placeJson(const CPlace& place) {
  Json::Value json(Json::objectValue);
  json["file"] = place.file;
  json["line"] = static_cast<Json::UInt64>(place.line);
  json["column"] = static_cast<Json::UInt64>(place.column);
  return json;
}

Json::Value typedJson(const CTypedValue& typed) {
  Json::Value json(Json::objectValue);
  json["value"] = typed.value;
  json["type"] = typed.type;
  return json;
}

Json::Value ifJson(const CIfExplanation& test) {
  Json::Value json(Json::objectValue);
  if (test.condition) json["condition"] = typedJson(*test.condition);
  if (!test.comparison.empty()) {
    json["comparison"] = test.comparison;
    json["operand"] = typedJson(test.operand);
  }
  json["holds"] = test.holds;
  json["why"] = test.why;
  return json;
}

Json::Value includeJson(const CIncludeExplanation& include) {
  Json::Value json(Json::objectValue);
  json["filename"] = include.filename;
  if (!include.why.empty()) json["why"] = include.why;
  return json;
}

Json::Value loopJson(const CLoopExplanation& loop) {
  Json::Value json(Json::objectValue);
  json["kind"] = loop.rotating ? "rotating" : "grid";
  for (const auto& [name, typed] : loop.members) json["members"][name] = typedJson(typed);
  json["indices"] = static_cast<Json::UInt64>(loop.indices);
  if (loop.first) json["first"] = *loop.first;
  if (loop.last) json["last"] = *loop.last;
  if (loop.shown) json["shown"] = *loop.shown;
  if (loop.position) json["position"] = static_cast<Json::UInt64>(*loop.position + 1);
  json["copies"] = static_cast<Json::UInt64>(loop.copies);
  if (loop.layout) json["layout"] = static_cast<Json::UInt64>(*loop.layout);
  if (!loop.rotating) json["cells"] = loop.cells;
  if (!loop.why.empty()) json["why"] = loop.why;
  return json;
}

Json::Value boundsJson(const CBoundsExplanation& bounds) {
  Json::Value json(Json::objectValue);
  const CEnclosing& around = bounds.enclosing;
  for (const int number : {around.x, around.y, around.width, around.height}) {
    json["enclosing"].append(number);
  }
  json["from"] = around.source;
  if (bounds.result.isNull()) return json;
  json["result"] = bounds.result;
  json["entries"] = Json::Value(Json::arrayValue);
  for (const CBoundsEntry& entry : bounds.entries) {
    Json::Value each(Json::objectValue);
    each["name"] = entry.name;
    each["written"] = entry.written;
    each["result"] = entry.result;
    each["arithmetic"] = entry.arithmetic;
    json["entries"].append(each);
  }
  return json;
}

Json::Value tokenJson(const CTokenExplanation& token) {
  Json::Value json = placeJson(token.place);
  json["member"] = token.member;
  json["token"] = token.token;
  if (!token.part.empty()) json["part"] = token.part;
  json["value"] = token.value;
  json["type"] = token.type;
  if (!token.handler.empty()) json["handler"] = token.handler;
  if (!token.source.empty()) json["source"] = token.source;
  if (!token.why.empty()) json["why"] = token.why;
  return json;
}

}  // namespace

Json::Value explanationJson(const CExplanation& explanation) {
  Json::Value json = placeJson(explanation.place);
  json["answer"] = explanation.answer;
  json["pointer"] = explanation.pointer;
  json["kind"] = explanation.kind;
  json["template"] = explanation.origin.Text();
  json["pass"] = explanation.pass;
  json["value"] = explanation.value;
  json["copies"] = Json::Value(Json::arrayValue);
  for (const CCopy& copy : explanation.copies) {
    Json::Value each(Json::objectValue);
    if (copy.index) each["index"] = *copy.index;
    each[copy.index ? "position" : "copy"] = static_cast<Json::UInt64>(copy.number);
    each["of"] = static_cast<Json::UInt64>(copy.of);
    each["loop"] = copy.loop.Text();
    json["copies"].append(each);
  }
  if (explanation.ifElement) json["if"] = ifJson(*explanation.ifElement);
  if (explanation.include) json["include"] = includeJson(*explanation.include);
  if (explanation.loop) json["loop"] = loopJson(*explanation.loop);
  if (explanation.bounds) json["bounds"] = boundsJson(*explanation.bounds);
  json["tokens"] = Json::Value(Json::arrayValue);
  for (const CTokenExplanation& token : explanation.tokens) {
    json["tokens"].append(tokenJson(token));
  }
  json["messages"] = Json::Value(Json::arrayValue);
  for (const std::string& message : explanation.messages) json["messages"].append(message);
  if (!explanation.end.empty()) json["end"] = explanation.end;
  if (explanation.exception) json["exception"] = *explanation.exception;
  return json;
}

}  // namespace ttr
