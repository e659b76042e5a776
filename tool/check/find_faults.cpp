// What is wrong with a page: its JSON, what the library writes about it, and what the library
// passes over in silence.
#include <map>
#include <set>
#include <utility>

#include "check/fault.h"
#include "check/fault_codes.h"
#include "check/fault_list.h"
#include "check/fault_search.h"
#include "check/suggestions.h"
#include "page/element_tree.h"
#include "schema/schema_check.h"

namespace ttr {
namespace {

/// The Includes on the way to a file, innermost first.
using CWay = std::vector<CPlace>;

/// Adds the way to each file that is included in `node`, which `way` leads to; of several the first
/// counts.
void addWays(CPageRunner& page, const CElementNode& node, const CWay& way,
             std::map<std::string, CWay>& ways) {
  CWay inside = way;
  if (node.kind == CElementNode::kindInclude && !node.children.empty()) {
    const CSourceFile& source = *page.File(node.origin.file);
    inside.insert(inside.begin(), source.PlaceOf(node.origin.pointer / "Include" / "Filename"));
    const CSourceFile& included = *page.File(node.children.front().origin.file);
    ways.emplace(included.name(), inside);
  }
  for (const CElementNode& child : node.children) addWays(page, child, inside, ways);
}

/// Adds what `node` shows of the template: its entries in their order, and which of them are null.
void addShown(const CElementNode& node, std::string& text) {
  text += node.origin.file + ':' + node.origin.pointer.Text() + (node.IsNull() ? "-\n" : "+\n");
  for (const CElementNode& child : node.children) addShown(child, text);
}

/// The same for two passes that show the same of the template and write the same: what they write
/// then has the same places.
std::string likeness(const CElementNode& tree, const CRunMessages& messages) {
  std::string text;
  addShown(tree, text);
  for (const auto& [message, count] : messages.counts) {
    text += std::to_string(count) + ' ' + message + '\n';
  }
  return text + messages.exception.value_or("");
}

/// Adds what the library writes in `passes`, and the ways to the files that they include. Only the
/// first one of like passes is searched.
void addMessages(CPageRunner& page, CPasses passes, CFaultList& faults,
                 std::map<std::string, CWay>& ways) {
  std::map<std::string, CFaultList> searched;
  for (unsigned pass = passes.first; pass <= passes.last; ++pass) {
    const CPageRun run = page.Run({}, pass);
    const CElementNode tree = elementTree(page, run);
    addWays(page, tree, {}, ways);
    const auto [known, added] = searched.try_emplace(likeness(tree, CRunMessages(run)));
    if (added) CFaultSearch(page, pass, known->second).Search();
    faults.Add(known->second);
  }
  // A pass that ends in an exception shows nothing, but what is behind it was searched.
  for (const CFault& fault : faults.Sorted()) ways.emplace(fault.place.file, fault.includedFrom);
}

CFault faultOf(const char* code, const CJsonPointer& pointer, const CPlace& place) {
  CFault fault;
  fault.code = code;
  fault.level = faultKind(code).level;
  fault.pointer = pointer;
  fault.place = place;
  return fault;
}

/// Departures from the schema, one for each place. The library's own words for a place count more,
/// but for those of an exception, which tell of its inside only.
void addDepartures(const CSourceFile& source, const CWay& way, CFaultList& faults) {
  if (!source.errors().empty()) return;
  std::set<CJsonPointer> told;
  for (const CSchemaFault& departure : schemaFaults(source.document())) {
    if (!told.insert(departure.pointer).second) continue;
    faults.Reword(source.name(), departure.pointer, "exception", departure.message);
    if (faults.Has(source.name(), departure.pointer)) continue;
    CFault fault = faultOf("schema", departure.pointer, source.PlaceOf(departure.pointer));
    fault.message = departure.message;
    fault.includedFrom = way;
    faults.Add(fault);
  }
}

void addMisspelt(const CSourceFile& source, const CWay& way, CFaultList& faults) {
  for (const CMisspeltMember& member : misspeltMembers(source.document())) {
    CFault fault = faultOf("unknown-member", member.pointer, source.PlaceOfName(member.pointer));
    fault.message = "unknown member \"" + member.pointer.steps().back() + '"';
    fault.suggestion = "did you mean \"" + member.meant + "\"?";
    fault.includedFrom = way;
    faults.Add(fault);
  }
}

}  // namespace

std::vector<CFault> findFaults(CPageRunner& page, CPasses passes) {
  CFaultList faults;
  faults.AddFile(page.pageFile().name());
  for (const CFault& fault : syntaxFaults(page.pageFile())) faults.Add(fault);
  std::map<std::string, CWay> ways = {{page.pageFile().name(), {}}};
  addMessages(page, passes, faults, ways);
  std::vector<const CSourceFile*> files = {&page.pageFile()};
  for (const std::string& name : page.includedFiles()) {
    if (const CSourceFile* source = page.IncludedFile(name)) files.push_back(source);
  }
  for (const CSourceFile* source : files) {
    addDepartures(*source, ways[source->name()], faults);
    addMisspelt(*source, ways[source->name()], faults);
  }
  return faults.Sorted();
}

}  // namespace ttr
