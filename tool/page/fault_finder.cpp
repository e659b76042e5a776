// What is wrong with a page: its JSON, what the library writes about it, and what the library
// passes over in silence.
#include "page/fault_finder.h"

#include <set>
#include <utility>

#include "page/schema_check.h"
#include "page/suggestions.h"

namespace ttr {

void CFaultFinder::reset() {
  m_faults = CFaultList();
  m_ways = {{m_page.pageFile().name(), {}}};
  m_faults.AddFile(m_page.pageFile().name());
  for (const CFault& fault : syntaxFaults(m_page.pageFile())) m_faults.Add(fault);
}

void CFaultFinder::Add(const CPassRecord& record) {
  if (!m_page.pageFile().errors().empty()) return;
  m_passes.Add(record);
  std::vector<CIncludeStep> way;
  addWays(record.root, way);
}

void CFaultFinder::addWays(const CElementNode& node, std::vector<CIncludeStep>& way) {
  for (const CElementNode& child : node.children) {
    const bool isDocument = child.kind == CElementNode::kindDocument;
    const CSourceFile* source = isDocument ? m_page.File(child.origin.file) : nullptr;
    if (isDocument) way.push_back({node.origin, child.origin.file});
    if (source != nullptr) {
      const auto [known, added] = m_ways.try_emplace(source->name(), placesOf(m_page, way));
      if (!added && way.size() < known->second.size()) known->second = placesOf(m_page, way);
    }
    addWays(child, way);
    if (isDocument) way.pop_back();
  }
}

/// Departures from the schema, one for each place, and misspelt members.
const std::vector<CFault>& CFaultFinder::stillFaults(const CSourceFile& source) {
  const auto [known, added] = m_still.try_emplace(&source);
  std::vector<CFault>& faults = known->second;
  if (!added || !source.errors().empty()) return faults;
  std::set<CJsonPointer> told;
  for (const CSchemaFault& departure : schemaFaults(source.document())) {
    if (!told.insert(departure.pointer).second) continue;
    CFault fault = faultOf("schema");
    fault.pointer = departure.pointer;
    fault.place = source.PlaceOf(departure.pointer);
    fault.message = departure.message;
    faults.push_back(fault);
  }
  for (const CMisspeltMember& member : misspeltMembers(source.document())) {
    CFault fault = faultOf("unknown-member");
    fault.pointer = member.pointer;
    fault.place = source.PlaceOfName(member.pointer);
    fault.message = "unknown member \"" + member.pointer.steps().back() + '"';
    fault.suggestion = "did you mean \"" + member.meant + "\"?";
    faults.push_back(fault);
  }
  return faults;
}

std::vector<CFault> CFaultFinder::Take() {
  const bool isJson = m_page.pageFile().errors().empty();
  std::set<std::string> looked;  // a page that includes itself is two files of one name
  for (const CSourceFile* source : isJson ? m_page.sources() : std::vector<const CSourceFile*>()) {
    if (!looked.insert(source->name()).second) continue;
    for (CFault fault : stillFaults(*source)) {
      // The library's own words for a place count more, but for those of an exception, which tell
      // of its inside only.
      const bool isSchema = fault.code == "schema";
      if (isSchema) m_faults.Reword(source->name(), fault.pointer, "exception", fault.message);
      if (isSchema && m_faults.Has(source->name(), fault.pointer)) continue;
      fault.includedFrom = m_ways[source->name()];
      m_faults.Add(fault);
    }
  }
  std::vector<CFault> faults = m_faults.Sorted();
  reset();
  return faults;
}

std::vector<CFault> findFaults(CPageRunner& page, CPasses passes) {
  CFaultFinder finder(page);
  for (unsigned pass = passes.first; pass <= passes.last; ++pass) finder.Add(page.Record(pass));
  return finder.Take();
}

}  // namespace ttr
