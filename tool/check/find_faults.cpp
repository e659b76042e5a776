// What is wrong with a page: its JSON, what the library writes about it, and what the library
// passes over in silence. Test: tests/tool/check/find_faults_test.cpp
#include "check/fault.h"
#include "check/fault_codes.h"
#include "check/fault_list.h"
#include "check/fault_search.h"
#include "check/suggestions.h"
#include "schema/schema_check.h"

namespace ttr {
namespace {

CFault faultOf(const char* code, const CJsonPointer& pointer, const CPlace& place) {
  CFault fault;
  fault.code = code;
  fault.level = faultKind(code).level;
  fault.pointer = pointer;
  fault.place = place;
  return fault;
}

/// Departures from the schema, but for those in places where the library has its own words.
void addDepartures(const CSourceFile& source, CFaultList& faults) {
  if (!source.errors().empty()) return;
  for (const CSchemaFault& departure : schemaFaults(source.document())) {
    if (faults.Has(source.name(), departure.pointer)) continue;
    CFault fault = faultOf("schema", departure.pointer, source.PlaceOf(departure.pointer));
    fault.message = departure.message;
    faults.Add(fault);
  }
}

void addMisspelt(const CSourceFile& source, CFaultList& faults) {
  for (const CMisspeltMember& member : misspeltMembers(source.document())) {
    CFault fault = faultOf("unknown-member", member.pointer, source.PlaceOfName(member.pointer));
    fault.message = "unknown member \"" + member.pointer.steps().back() + '"';
    fault.suggestion = "did you mean \"" + member.meant + "\"?";
    faults.Add(fault);
  }
}

}  // namespace

std::vector<CFault> findFaults(CPageRunner& page, CPasses passes) {
  CFaultList faults;
  faults.AddFile(page.pageFile().name());
  for (const CFault& fault : syntaxFaults(page.pageFile())) faults.Add(fault);
  for (unsigned pass = passes.first; pass <= passes.last; ++pass) {
    CFaultSearch(page, pass, faults).Search();
  }
  std::vector<const CSourceFile*> files = {&page.pageFile()};
  for (const std::string& name : page.includedFiles()) {
    if (const CSourceFile* source = page.IncludedFile(name)) files.push_back(source);
  }
  for (const CSourceFile* source : files) {
    addDepartures(*source, faults);
    addMisspelt(*source, faults);
  }
  return faults.Sorted();
}

}  // namespace ttr
