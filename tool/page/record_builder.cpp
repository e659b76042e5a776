// Events in, a tree of facts out. Parts that have begun are on a stack; a value is found again in
// its file by its name, or by the offset that it keeps in every copy.
#include "page/record_builder.h"

#include <algorithm>
#include <utility>

#include "TokenTemplateResolver/parsed_token.h"

namespace ttr {
namespace {

/// The index of the entry of `array` that begins at `offset`, or of the first one behind it.
std::size_t indexAt(const Json::Value& array, std::ptrdiff_t offset) {
  Json::ArrayIndex first = 0;
  Json::ArrayIndex last = array.size();
  while (first < last) {
    const Json::ArrayIndex middle = first + (last - first) / 2;
    if (array[middle].getOffsetStart() < offset) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return first;
}

/// The member of `object` whose value begins at `offset`; empty when there is none.
std::string memberAt(const Json::Value& object, std::ptrdiff_t offset) {
  for (auto member = object.begin(); member != object.end(); ++member) {
    if (member->getOffsetStart() == offset) return member.name();
  }
  return "";
}

CElementNode::eKind kindOf(const Json::Value& value) {
  if (value.isString()) return CElementNode::kindText;
  return value.isObject() ? CElementNode::kindElement : CElementNode::kindOther;
}

/// Adds a fact the first time: a member that is begun again has been told.
template <typename Value>
void tell(std::optional<Value>& fact, const Value& value) {
  if (!fact) fact = value;
}

}  // namespace

CRecordBuilder::CRecordBuilder(const CPageHost& host, std::string page, CSources sources)
    : m_host(host), m_page(std::move(page)), m_sources(std::move(sources)) {}

void CRecordBuilder::Tell(const CTraceEvent& event) {
  switch (event.event) {
    case traceBegin:
      return begin(event);
    case traceEnd:
      return end(event);
    case traceMeasure:
      return measure(event);
    case traceVerdict:
      return decide(event);
    case traceRange:
      node().loop->start = event.start;
      node().loop->count = event.count;
      node().loop->step = event.step;
      return;
    case traceLayout:
      node().loop->layout = static_cast<std::size_t>(event.index);
      return;
    case traceVariable:
      return addVariable(event);
    case traceLowercased:
      node().children.back().isLowercased = true;
      return;
    case traceMessage:
      return addMessage(std::string(event.text));
    case traceReplaced:
      return;  // the kind of the element is known from its member
  }
}

void CRecordBuilder::begin(const CTraceEvent& event) {
  switch (event.part) {
    case tracedDocument:
      return beginDocument(std::string(event.name));
    case tracedElement:
      return beginElement(event);
    case tracedMember:
      return beginMember(std::string(event.name));
    case tracedEntry:
      return beginEntry(*event.value);
    case tracedCopy:
      return beginCopy(event);
    case tracedToken:
      return beginToken(std::string(event.text));
  }
}

void CRecordBuilder::beginDocument(const std::string& file) {
  COpenNode open;
  open.part = m_parts.size();
  open.node.kind = CElementNode::kindDocument;
  open.node.origin.file = m_nodes.empty() ? m_page : file;
  if (!m_nodes.empty()) {
    open.node.pointer = node().pointer;
    m_way.push_back({{node().origin.file, node().origin.pointer, nullptr}, file});
  } else {
    m_messagesBefore = m_record.messages.size();
  }
  const CSourceFile* source = m_sources(open.node.origin.file);
  if (source != nullptr) open.node.origin.value = &source->document();
  m_parts.push_back({tracedDocument, "", 0, open.node.origin.value, 0});
  m_nodes.push_back(std::move(open));
}

void CRecordBuilder::beginElement(const CTraceEvent& event) {
  COpenPart& holder = m_parts.back();
  const std::size_t index = holder.entries++;
  const bool isCopied = holder.part == tracedCopy;
  COpenNode open;
  open.part = m_parts.size();
  open.node.kind = kindOf(*event.value);
  open.node.origin = {node().origin.file, node().origin.pointer / stepsInNode() / index,
                      entryOf(holder.written, index)};
  const bool isPage = m_parts[m_nodes.back().part + 1].name == "Page";
  const CJsonPointer shown = isPage ? node().pointer / "Page" : node().pointer;
  open.node.pointer = shown / "Contents" / node().children.size();
  if (isCopied) open.node.copy = node().loop->copies.size() - 1;
  if (event.bounds->isArray()) open.node.enclosing = *event.bounds;
  m_parts.push_back({tracedElement, "", 0, open.node.origin.value, 0});
  m_nodes.push_back(std::move(open));
}

void CRecordBuilder::beginMember(const std::string& name) {
  const COpenPart& holder = m_parts.back();
  const Json::Value* written = memberOf(holder.written, name);
  if (holder.part == tracedElement && name == "Include") {
    node().kind = CElementNode::kindInclude;
    node().include.emplace();
  } else if (holder.part == tracedElement && name == "If") {
    node().kind = CElementNode::kindIf;
    node().test.emplace();
  } else if (holder.part == tracedElement && name == "Loop") {
    node().kind = CElementNode::kindLoop;
    node().loop.emplace();
  } else if (holder.part == tracedElement && name == "Bounds") {
    node().bounds.emplace();
    if (written != nullptr) node().bounds->written = *written;
  } else if (isMemberOf("Loop") && name == "Bounds") {
    node().loop->isRotating = true;
    m_record.rotates = true;
  }
  m_parts.push_back({tracedMember, name, 0, written, 0});
}

void CRecordBuilder::beginEntry(const Json::Value& value) {
  const COpenPart& holder = m_parts.back();
  COpenPart entry{tracedEntry, "", 0, nullptr, 0};
  if (holder.written != nullptr && value.getOffsetLimit() > 0) {
    if (holder.written->isArray()) {
      entry.index = indexAt(*holder.written, value.getOffsetStart());
      entry.written = entryOf(holder.written, entry.index);
    } else if (holder.written->isObject()) {
      entry.name = memberAt(*holder.written, value.getOffsetStart());
      entry.written = memberOf(holder.written, entry.name);
    }
  }
  if (isBounds(m_parts.size() - 1)) node().bounds->entries.push_back({value, {}, {}});
  m_parts.push_back(std::move(entry));
}

void CRecordBuilder::beginCopy(const CTraceEvent& event) {
  CCopyFact copy{event.index, event.count, {}};
  if (event.bounds->isArray()) copy.bounds = *event.bounds;
  node().loop->copies.push_back(std::move(copy));
  m_bindings[m_host.stack().frames().size()] = {};
  const Json::Value* contents = memberOf(m_parts.back().written, "Contents");
  m_parts.push_back({tracedCopy, "Contents", 0, contents, 0});
}

void CRecordBuilder::beginToken(const std::string& body) {
  CTokenFact token;
  token.text = stepsInNode();
  token.body = body;
  token.isPath = !m_tokens.empty();
  m_tokens.push_back(node().tokens.size());
  node().tokens.push_back(std::move(token));
}

void CRecordBuilder::end(const CTraceEvent& event) {
  if (event.part == tracedToken) return endToken(event);
  const COpenPart part = std::move(m_parts.back());
  m_parts.pop_back();
  if (part.part == tracedMember) endMember(part, *event.value);
  if (part.part == tracedEntry && isBounds(m_parts.size() - 1)) {
    node().bounds->entries.back().result = *event.value;
  }
  if (m_parts.empty()) *m_record.result = *event.value;
  if (part.part == tracedElement || part.part == tracedDocument) endNode();
}

void CRecordBuilder::endMember(const COpenPart& member, const Json::Value& value) {
  if (member.name == "Context") bindContext(member);
  if (member.name == "Bounds" && m_parts.back().part == tracedElement) {
    node().bounds->result = value;
  } else if (isMemberOf("Include") && member.name == "Filename") {
    node().include->filename = value;
  } else if (isMemberOf("If") && member.name == "Condition") {
    tell(node().test->condition, value);
  } else if (isMemberOf("If") && member.name != "Contents" && node().test->comparison.empty()) {
    node().test->comparison = member.name;
    node().test->operand = value;
  } else if (isMemberOf("Loop")) {
    auto& members = node().loop->members;
    const bool isKnown = std::any_of(members.begin(), members.end(),
                                     [&](const auto& known) { return known.first == member.name; });
    if (!isKnown && member.written != nullptr) members.emplace_back(member.name, value);
  }
}

void CRecordBuilder::endToken(const CTraceEvent& event) {
  CTokenFact& token = node().tokens[m_tokens.back()];
  m_tokens.pop_back();
  token.answered = true;
  token.handler = std::string(event.name);
  token.value = *event.value;
  token.binding = bindingOf(token);
}

void CRecordBuilder::endNode() {
  CElementNode closed = std::move(m_nodes.back().node);
  m_nodes.pop_back();
  if (closed.kind == CElementNode::kindDocument && !m_way.empty()) m_way.pop_back();
  if (m_nodes.empty()) {
    m_record.root = std::move(closed);
  } else {
    node().children.push_back(std::move(closed));
  }
}

/// The variables of a copy stand in the loop's frame, which is on top while they are bound.
void CRecordBuilder::addVariable(const CTraceEvent& event) {
  const std::string member(event.name);
  CTemplateValue place{node().origin.file, node().origin.pointer / "Loop" / member, nullptr};
  m_bindings[m_host.stack().frames().size()].variables[std::string(event.text)] =
      CBindingFact{member, std::move(place), {}};
}

void CRecordBuilder::bindContext(const COpenPart& member) {
  CTemplateValue context{node().origin.file, node().origin.pointer / stepsInNode() / "Context",
                         member.written};
  m_bindings[m_host.stack().frames().size()] = {std::move(context), {}};
}

void CRecordBuilder::addMessage(const std::string& text) {
  if (!m_nodes.empty()) node().messages.push_back(m_record.messages.size());
  if (m_parts.size() > 1 && isBounds(m_parts.size() - 2)) {
    // What the library says of an entry behind its tokens is that it does not convert.
    auto& measured = node().bounds->entries.back().measure;
    if (measured) measured->isNumber = false;
  }
  m_record.messages.push_back(messageFact(text));
}

void CRecordBuilder::measure(const CTraceEvent& event) {
  if (m_parts.size() < 2 || !isBounds(m_parts.size() - 2)) return;
  const Json::Value& value = *event.value;
  const bool isNumber = value.isString() || value.isNumeric() || value.isBool();
  node().bounds->entries.back().measure =
      CMeasureFact{value, event.origin, event.extent, event.percentage, isNumber};
}

void CRecordBuilder::decide(const CTraceEvent& event) {
  node().test->holds = event.holds;
  node().test->comparedCondition = *event.value;
  node().test->comparedOperand = *event.operand;
}

/// True when the part on top is the control member `name`.
bool CRecordBuilder::isMemberOf(const char* name) const {
  return m_parts.size() > 1 && m_parts.back().name == name &&
         m_parts[m_parts.size() - 2].part == tracedElement;
}

/// True when the part at `index` is the "Bounds" of an element.
bool CRecordBuilder::isBounds(std::size_t index) const {
  return index > 0 && m_parts[index].part == tracedMember && m_parts[index].name == "Bounds" &&
         m_parts[index - 1].part == tracedElement;
}

std::optional<CBindingFact> CRecordBuilder::bindingOf(const CTokenFact& token) const {
  const CTokenParts path = CParsedToken(token.body).nameParts;
  const std::optional<std::size_t> frame = m_host.FrameOf(token.handler, path);
  if (!frame || m_bindings.count(*frame + 1) == 0) return std::nullopt;
  const CFrameBindings& bindings = m_bindings.at(*frame + 1);
  const std::string& name = path[token.handler == "context" ? 1 : 0];
  const CTemplateValue& context = bindings.context;
  CBindingFact binding{"Context", {context.file, context.pointer / name, nullptr}, {}};
  const auto variable = bindings.variables.find(name);
  if (variable != bindings.variables.end()) {
    binding = variable->second;
  } else if (context.file.empty()) {
    return std::nullopt;
  }
  if (token.value.isNull()) binding.value = m_host.stack().frames()[*frame].context[name];
  return binding;
}

/// The way from the innermost node to the innermost value of it that stands in a template.
CJsonPointer CRecordBuilder::stepsInNode() const {
  CJsonPointer steps;
  for (std::size_t i = m_nodes.back().part + 1; i < m_parts.size(); ++i) {
    const COpenPart& part = m_parts[i];
    if (part.written == nullptr) break;
    steps = part.name.empty() ? std::move(steps) / part.index : std::move(steps) / part.name;
  }
  return steps;
}

CMessageFact CRecordBuilder::messageFact(const std::string& text) const {
  CMessageFact fact;
  fact.text = text;
  fact.way = m_way;
  fact.object.file = m_page;
  fact.isDocument = true;
  if (m_nodes.empty()) return fact;
  const CTemplateValue& origin = m_nodes.back().node.origin;
  fact.object = {origin.file, origin.pointer, nullptr};
  fact.isDocument = m_nodes.back().node.kind == CElementNode::kindDocument;
  fact.pointer = fact.object.pointer / stepsInNode();
  if (!m_tokens.empty()) fact.token = m_nodes.back().node.tokens[m_tokens.front()].body;
  return fact;
}

CPassRecord CRecordBuilder::Take(const std::optional<std::string>& exception) {
  if (m_nodes.empty() && m_record.root.origin.file.empty()) beginDocument("");
  for (const std::size_t index : m_tokens) {
    // The exception came instead of what would have told who is asked.
    CTokenFact& token = node().tokens[index];
    const auto& handlers = m_host.tokens().handlers();
    const auto handler = m_host.tokens().find(CParsedToken(token.body).nameParts);
    if (handler == handlers.end()) continue;
    token.handler = handler->first;
    token.binding = bindingOf(token);
  }
  if (exception) m_record.ends.push_back({messageFact(*exception), node()});
  while (!m_nodes.empty()) endNode();
  for (std::size_t i = 0; i < m_messagesBefore; ++i) m_record.root.messages.push_back(i);
  return std::move(m_record);
}

}  // namespace ttr
