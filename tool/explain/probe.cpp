// The reduced page has, for each node on the way, only what is in force for the next one. At its
// end stands the entry that is asked about, between two marks: texts with a token that has no
// handler. The library's message about it shows where the messages of the entry begin and end.
#include "explain/probe.h"

#include <algorithm>
#include <utility>

#include "TokenTemplateResolver/json_text.h"

namespace ttr {
namespace {

constexpr char mark[] = "ttr explain mark$(ttr explain mark)";
constexpr char resolvedMark[] = "\"ttr explain mark\"";
constexpr char markMessage[] =
    "CTokenResolver::GetTokenValue: no token handler for: ttr explain mark.";

Json::Value arrayOf(std::initializer_list<Json::Value> entries) {
  Json::Value array(Json::arrayValue);
  for (const Json::Value& entry : entries) array.append(entry);
  return array;
}

void keep(const Json::Value& from, const char* name, Json::Value& to) {
  if (const Json::Value* member = findMember(&from, name)) to[name] = *member;
}

/// The member of an element that replaces it and has contents of its own; null for other kinds.
const char* replacingMember(CElementNode::eKind kind) {
  switch (kind) {
    case CElementNode::kindInclude:
      return "Include";
    case CElementNode::kindIf:
      return "If";
    case CElementNode::kindLoop:
      return "Loop";
    default:
      return nullptr;
  }
}

/// What is in force inside of the element `node`, with `entries` as its contents.
Json::Value reducedElement(const CElementNode& node, const Json::Value& entries,
                           const std::string& file) {
  const Json::Value& value = *node.origin.value;
  Json::Value element(Json::objectValue);
  keep(value, "Context", element);
  keep(value, "Bounds", element);
  if (const char* replacing = replacingMember(node.kind)) {
    keep(value, replacing, element);
    if (node.kind == CElementNode::kindInclude) {
      element[replacing]["Filename"] = file;
    } else {
      element[replacing]["Contents"] = entries;
    }
    return element;
  }
  keep(value, "RenderType", element);
  keep(value, "Frame", element);
  element["Contents"] = entries;
  return element;
}

Json::Value reducedDocument(const CElementNode& node, const Json::Value& entries, bool isPlace) {
  Json::Value document(Json::objectValue);
  const Json::Value* page = findMember(node.origin.value, "Page");
  if (page == nullptr || isPlace) {
    document["Contents"] = entries;
  } else {
    keep(*page, "Context", document["Page"]);
    document["Page"]["Contents"] = entries;
  }
  return document;
}

/// The name that the document at `depth` of `way` is included by. A file that includes itself is
/// reduced in as many ways, and each needs a name of its own.
std::string fileAt(const CNodeWay& way, std::size_t depth) {
  std::string name = way[depth]->origin.file;
  const bool absolute = !name.empty() && name[0] == '/';
  for (std::size_t above = 0; above < depth; ++above) {
    const CElementNode& node = *way[above];
    const bool same =
        node.kind == CElementNode::kindDocument && node.origin.file == way[depth]->origin.file;
    if (same) name.insert(0, absolute ? "/" : "./");
  }
  return name;
}

/// Empties the array "Contents" of an object.
void dropContents(Json::Value* value) {
  if (value == nullptr || !value->isObject() || !value->isMember("Contents")) return;
  Json::Value& contents = (*value)["Contents"];
  if (contents.isArray()) contents = Json::Value(Json::arrayValue);
}

Json::Value documentAlone(Json::Value document) {
  const bool hasPage = document.isObject() && document.isMember("Page");
  dropContents(hasPage ? &document["Page"] : &document);
  return document;
}

Json::Value elementAlone(const CElementNode& node) {
  Json::Value element = *node.origin.value;
  const char* replacing = replacingMember(node.kind);
  dropContents(replacing == nullptr ? &element : &element[replacing]);
  return element;
}

/// The messages between the marks around instance number `instance`; up to the end when an
/// exception leaves the second one out.
std::vector<std::string> messagesBetweenMarks(const std::vector<std::string>& messages,
                                              std::size_t instance) {
  std::vector<std::string> between;
  std::size_t marks = 0;
  for (const std::string& message : messages) {
    if (message == markMessage) {
      ++marks;
    } else if (marks == 2 * instance + 1) {
      between.push_back(message);
    }
  }
  return between;
}

/// The number of marks in `result` before the value at `place`.
std::size_t marksBefore(Json::Value result, const CJsonPointer& place) {
  constexpr char here[] = "ttr explain here";
  if (Json::Value* value = place.Find(result)) *value = here;
  const std::string text = jsoncpp_string::toString(result);
  const std::size_t end = text.find(here);
  std::size_t count = 0;
  for (std::size_t at = text.find(resolvedMark); at < end; at = text.find(resolvedMark, at + 1)) {
    ++count;
  }
  return count;
}

}  // namespace

const Json::Value* findMember(const Json::Value* value, const char* name) {
  if (value == nullptr || !value->isObject() || !value->isMember(name)) return nullptr;
  return &(*value)[name];
}

std::string typeName(const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      return "null";
    case Json::intValue:
    case Json::uintValue:
      return "integer";
    case Json::realValue:
      return "real";
    case Json::stringValue:
      return "text";
    case Json::booleanValue:
      return "boolean";
    case Json::arrayValue:
      return "array";
    case Json::objectValue:
      break;
  }
  return "object";
}

CProbe::CProbe(CPageRunner& page, unsigned pass, CNodeWay way)
    : m_page(page), m_pass(pass), m_way(std::move(way)) {
  const CPageRun run = m_page.Run(ChangesFor(Json::Value()), m_pass);
  m_instance = marksBefore(run.result, Place()) / 2;
}

CPageRunner::CChanges CProbe::ChangesFor(const Json::Value& entry) const {
  CPageRunner::CChanges changes;
  Json::Value entries = arrayOf({mark, entry, mark});
  std::string file;
  for (std::size_t depth = m_way.size(); depth-- > 0;) {
    const CElementNode& node = *m_way[depth];
    const bool isPlace = depth + 1 == m_way.size();
    if (node.kind == CElementNode::kindDocument) {
      file = fileAt(m_way, depth);
      changes[file] = reducedDocument(node, entries, isPlace);
    } else if (!isPlace) {
      entries = arrayOf({reducedElement(node, entries, file)});
    }
  }
  return changes;
}

CJsonPointer CProbe::Place() const {
  CJsonPointer place;
  for (std::size_t depth = 0; depth < m_way.size(); ++depth) {
    const CElementNode& node = *m_way[depth];
    const bool isPlace = depth + 1 == m_way.size();
    const bool isDocument = node.kind == CElementNode::kindDocument;
    if (node.kind == CElementNode::kindInclude || (isPlace && !isDocument)) continue;
    if (isDocument && !isPlace && node.origin.value->isMember("Page")) place = place / "Page";
    const std::size_t copy = isPlace ? 0 : m_way[depth + 1]->copy.value_or(0);
    const bool holdsPlace = isPlace || depth + 2 == m_way.size();
    place = place / "Contents" / (holdsPlace ? 3 * copy + 1 : copy);
  }
  return place;
}

CProbe::CAnswer CProbe::Ask(const Json::Value& entry) const {
  CPageRun run = m_page.Run(ChangesFor(entry), m_pass);
  CAnswer answer;
  if (const Json::Value* value = Place().Find(run.result)) answer.value = *value;
  answer.messages = messagesBetweenMarks(run.messages, m_instance);
  answer.exception = std::move(run.exception);
  return answer;
}

Json::Value CProbe::WithContext(Json::Value element, bool inside) const {
  if (inside) keep(*node().origin.value, "Context", element);
  return element;
}

CProbe::CAnswer CProbe::Value(const Json::Value& written, bool inside) const {
  Json::Value element(Json::objectValue);
  element["Play"] = arrayOf({written});
  CAnswer answer = Ask(WithContext(std::move(element), inside));
  const Json::Value* play = findMember(&answer.value, "Play");
  answer.value = play == nullptr ? Json::Value() : Json::Value((*play)[0U]);
  return answer;
}

int CProbe::Integer(const Json::Value& written, bool inside) const {
  Json::Value element(Json::objectValue);
  element["Prec"] = arrayOf({written});
  const CAnswer answer = Ask(WithContext(std::move(element), inside));
  const Json::Value* integers = findMember(&answer.value, "Prec");
  return integers != nullptr && (*integers)[0U].isInt() ? (*integers)[0U].asInt() : 0;
}

bool CProbe::IsInteger(const Json::Value& written, bool inside) const {
  Json::Value element(Json::objectValue);
  element["If"]["Condition"] = written;
  element["If"]["=="] = written;
  element["If"]["Contents"] = Json::Value(Json::arrayValue);
  return Ask(WithContext(std::move(element), inside)).value.isObject();
}

std::string CProbe::TypeOf(const Json::Value& written, const Json::Value& value,
                           bool inside) const {
  if (!value.isInt() || !written.isString()) return typeName(value);
  // The result as text does not tell a count from a number, but the library does.
  Json::Value element(Json::objectValue);
  element["If"]["Condition"] = written;
  element["If"]["Equals"] = value;
  element["If"]["Contents"] = Json::Value(Json::arrayValue);
  const bool equal = Ask(WithContext(std::move(element), inside)).value.isObject();
  return equal ? typeName(value) : "unsigned count";
}

CProbe::CAnswer CProbe::Alone() const {
  const CElementNode& own = node();
  if (own.kind == CElementNode::kindDocument) {
    CPageRun run = m_page.Run({{own.origin.file, documentAlone(*own.origin.value)}}, m_pass);
    return {std::move(run.result), std::move(run.messages), std::move(run.exception)};
  }
  const bool included = own.kind == CElementNode::kindInclude && !own.children.empty();
  if (!included) return Ask(elementAlone(own));
  CNodeWay way = m_way;
  way.push_back(&own.children.front());
  const std::string file = fileAt(way, m_way.size());
  Json::Value element = *own.origin.value;
  element["Include"]["Filename"] = file;
  CPageRunner::CChanges changes = ChangesFor(element);
  changes[file] = documentAlone(*own.children.front().origin.value);
  CPageRun run = m_page.Run(changes, m_pass);
  return {Json::Value(), messagesBetweenMarks(run.messages, m_instance), run.exception};
}

}  // namespace ttr
