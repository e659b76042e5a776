// The library's own words about a page, with their places.
#include "page/record_faults.h"

#include <algorithm>

#include "page/fault_codes.h"
#include "page/message_place.h"
#include "page/suggestions.h"
#include "text/printable.h"

namespace ttr {

CFault faultOf(const char* code) {
  CFault fault;
  fault.code = code;
  fault.level = faultKind(code).level;
  return fault;
}

CTemplateValue filenameOf(const CTemplateValue& element) {
  return {element.file, element.pointer / "Include" / "Filename", nullptr};
}

/// The Include elements on the way, innermost first.
std::vector<CPlace> placesOf(CPageRunner& page, const std::vector<CIncludeStep>& way) {
  std::vector<CPlace> places;
  for (auto step = way.rbegin(); step != way.rend(); ++step) {
    const CTemplateValue filename = filenameOf(step->element);
    places.push_back(page.File(filename.file)->PlaceOf(filename.pointer));
  }
  return places;
}

std::vector<CFault> syntaxFaults(const CSourceFile& source) {
  std::vector<CFault> faults;
  for (const CSourceFile::CSyntaxError& error : source.errors()) {
    CFault fault = faultOf("json-syntax");
    fault.message = error.reason;
    fault.place = error.place;
    faults.push_back(fault);
  }
  return faults;
}

CFault faultOfEnd(CPageRunner& page, const CPassEnd& end) {
  const CMessageFact& exception = end.exception;
  CFault fault = faultOf(kindOfException(exception.text).code);
  fault.message = oneLine(exception.text);
  fault.pointer = exception.pointer;
  fault.place = page.File(exception.object.file)->PlaceOf(exception.pointer);
  fault.includedFrom = placesOf(page, exception.way);
  return fault;
}

CRecordFaults::CRecordFaults(CPageRunner& page, CFaultList& faults)
    : m_page(page), m_faults(faults), m_names(page.TokenNames()) {}

/// File after file, those that few Includes lead to first: theirs is the way that is told.
void CRecordFaults::Add(const CPassRecord& record) {
  m_record = &record;
  m_documents = {{&record.root, {}}};
  while (!m_documents.empty()) {
    const CDocument document = std::move(m_documents.front());
    m_documents.pop_front();
    if (document.way.empty() || addIncluded(*document.node, document.way)) {
      addNode(*document.node, document.way);
    }
  }
  for (const CMessageFact& message : record.lostMessages) addMessage(message, nullptr);
  for (const CPassEnd& end : record.ends) m_faults.Add(faultOfEnd(m_page, end));
}

void CRecordFaults::addNode(const CElementNode& node, const std::vector<CIncludeStep>& way) {
  for (const std::size_t index : node.messages) {
    const CMessageFact& message = m_record->messages[index];
    if (!message.isAside) addMessage(message, &node);
  }
  for (const CElementNode& child : node.children) {
    if (child.kind != CElementNode::kindDocument) {
      addNode(child, way);
      continue;
    }
    m_documents.push_back({&child, way});
    m_documents.back().way.push_back({node.origin, child.origin.file});
  }
}

/// False for a file that holds no template, which is told once and for all.
bool CRecordFaults::addIncluded(const CElementNode& document,
                                const std::vector<CIncludeStep>& way) {
  const std::string& name = document.origin.file;
  const CSourceFile* source = m_page.File(name);
  if (source == nullptr) {
    std::vector<CIncludeStep> outer = way;
    outer.pop_back();
    CFault fault = faultAt(filenameOf(way.back().element), "not-included", outer);
    fault.message = "not included: " + name + ": " + m_page.ReasonNotIncluded(name);
    m_faults.Add(fault);
    return false;
  }
  m_faults.AddFile(source->name());
  for (CFault& fault : syntaxFaults(*source)) {
    fault.includedFrom = placesOf(m_page, way);
    m_faults.Add(fault);
  }
  return source->errors().empty();
}

void CRecordFaults::addMessage(const CMessageFact& message, const CElementNode* node) {
  const CFaultKind& kind = kindOfMessage(message.text);
  if (kind.code == std::string("include-depth") && addCycle(message)) return;
  const CTemplateValue place{message.object.file, placeOfMessage(m_page, message, node), nullptr};
  CFault fault = faultAt(place, kind.code, message.way);
  fault.message = oneLine(message.text);
  fault.suggestion = tokenSuggestion(message.text, m_names);
  const CSourceFile& source = *m_page.File(place.file);
  const Json::Value* text = place.pointer.Find(source.document());
  if (text != nullptr && text->isString()) fault.place = placeInText(source, place, message);
  m_faults.Add(fault);
}

/// A file that is on the way to its own Include; false when there is none, and the files are just
/// too many. Told where the way first comes back.
bool CRecordFaults::addCycle(const CMessageFact& message) {
  std::vector<std::string> files = {m_page.pageFile().name()};
  for (const CIncludeStep& step : message.way) {
    const auto first = std::find(files.begin(), files.end(), step.file);
    if (first == files.end()) {
      files.push_back(step.file);
      continue;
    }
    const auto depth = static_cast<std::ptrdiff_t>(files.size()) - 1;
    const std::vector<CIncludeStep> way(message.way.begin(), message.way.begin() + depth);
    CFault fault = faultAt(filenameOf(step.element), "include-cycle", way);
    fault.message = "include cycle: ";
    for (auto file = first; file != files.end(); ++file) fault.message += *file + " -> ";
    fault.message += step.file;
    m_faults.Add(fault);
    return true;
  }
  return false;
}

CFault CRecordFaults::faultAt(const CTemplateValue& place, const char* code,
                              const std::vector<CIncludeStep>& way) {
  CFault fault = faultOf(code);
  fault.place = m_page.File(place.file)->PlaceOf(place.pointer);
  fault.pointer = place.pointer;
  fault.includedFrom = placesOf(m_page, way);
  return fault;
}

}  // namespace ttr
