// Test: tests/tool/diff/compared_page_test.cpp
#include "diff/compared_page.h"

#include <map>
#include <memory>
#include <utility>

#include "files.h"
#include "page/element_tree.h"
#include "page/page_run.h"
#include "tool_error.h"

namespace ttr {
namespace {

using CPlaces = std::map<CJsonPointer, CPlace>;

/// Notes where the entries of a resolved page come from. Of nodes with the same pointer, an Include
/// and its document, the outer one counts: that is the place where the entry stands.
void collectPlaces(CPageRunner& page, const CElementNode& node, CPlaces& places) {
  if (const CSourceFile* file = page.File(node.origin.file)) {
    places.emplace(node.pointer, file->PlaceOf(node.origin.pointer));
  }
  for (const CElementNode& child : node.children) collectPlaces(page, child, places);
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
  const CPageRun run = page.Run({}, options.pass);
  if (run.exception) throw CToolError(options.page, *run.exception);
  if (!run.result.isObject()) throw CToolError(options.page, "does not resolve to a JSON object");
  CPlaces places;
  collectPlaces(page, elementTree(page, run), places);
  return {options.page, withoutFileNames(run.result),
          [places = std::move(places)](const CJsonPointer& pointer) {
            return nearestPlace(places, pointer);
          }};
}

CComparedPage readResolvedPage(const std::string& file) {
  const auto source = std::make_shared<const CSourceFile>(file, readText(file));
  requireJson(*source);
  if (!source->document().isObject()) throw CToolError(file, "a resolved page is a JSON object");
  return {file, source->document(),
          [source](const CJsonPointer& pointer) { return source->PlaceOf(pointer); }};
}

}  // namespace ttr
