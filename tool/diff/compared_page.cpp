#include "diff/compared_page.h"

#include <map>
#include <memory>
#include <utility>

#include "files.h"
#include "page/page_run.h"
#include "page/record_faults.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

using CPlaces = std::map<CJsonPointer, CPlace>;

/// Notes what the entries of a resolved page were made from, and where it stands. Of nodes with the
/// same pointer, an Include and its document, the outer one counts: that is the place where the
/// entry stands.
void collectTemplates(CPageRunner& page, const CElementNode& node, CPlaces& places,
                      CTemplateEntries& templates) {
  const CTemplateValue& origin = node.origin;
  if (const CSourceFile* file = page.File(origin.file)) {
    const std::string name = origin.file == CPageRunner::pageKey ? "" : origin.file;
    places.emplace(node.pointer, file->PlaceOf(origin.pointer));
    templates.emplace(node.pointer, CTemplateEntry{name, origin.pointer, *origin.value});
  }
  for (const CElementNode& child : node.children) collectTemplates(page, child, places, templates);
}

/// The place of the entry, or of the nearest one around it. The page itself always has one.
CPlace nearestPlace(const CPlaces& places, CJsonPointer pointer) {
  while (places.count(pointer) == 0 && !pointer.empty()) pointer = pointer.Parent();
  return places.at(pointer);
}

void requireJson(const CSourceFile& file) {
  if (file.errors().empty()) return;
  const CSourceFile::CSyntaxError& error = file.errors().front();
  throw CToolError(error.place.Text(), error.reason);
}

}  // namespace

CComparedPage resolvedPage(const CPageOptions& options) {
  CPageRunner page(options);
  requireJson(page.pageFile());
  const CPassRecord record = page.Record(options.pass);
  if (const CPassEnd* end = record.End()) {
    const CFault fault = faultOfEnd(page, *end);
    throw CToolError(fault.place.Text(), fault.message);
  }
  if (!record.result->isObject())
    throw CToolError(options.page, "does not resolve to a JSON object");
  CPlaces places;
  CTemplateEntries templates;
  collectTemplates(page, record.root, places, templates);
  return {options.page, *record.result,
          [places = std::move(places)](const CJsonPointer& pointer) {
            return nearestPlace(places, pointer);
          },
          std::move(templates)};
}

CComparedPage readResolvedPage(const std::string& file) {
  const auto source = std::make_shared<const CSourceFile>(file, readText(file));
  requireJson(*source);
  if (!source->document().isObject()) throw CToolError(file, "a resolved page is a JSON object");
  return {file,
          source->document(),
          [source](const CJsonPointer& pointer) { return source->PlaceOf(pointer); },
          {}};
}

}  // namespace ttr
