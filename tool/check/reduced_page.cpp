#include "check/reduced_page.h"

#include <utility>

namespace ttr {

std::optional<CJsonPointer> wayToContents(const Json::Value& value, eTemplatePart part) {
  if (!value.isObject()) return std::nullopt;
  const CJsonPointer here;
  if (part == partDocument) {
    return value.isMember("Page") ? here / "Page" / "Contents" : here / "Contents";
  }
  if (value.isMember("Include")) return std::nullopt;
  for (const char* replacing : {"If", "Loop"}) {
    if (value.isMember(replacing)) return here / replacing / "Contents";
  }
  return here / "Contents";
}

Json::Value withoutEntries(Json::Value value, eTemplatePart part) {
  const std::optional<CJsonPointer> way = wayToContents(value, part);
  Json::Value* contents = way ? way->Find(value) : nullptr;
  if (contents == nullptr || !contents->isArray()) return value;
  for (Json::Value& entry : *contents) entry = Json::Value();
  return value;
}

void takeOut(Json::Value& document, const CJsonPointer& pointer) {
  if (pointer.empty()) return;
  Json::Value* parent = pointer.Parent().Find(document);
  if (parent == nullptr) return;
  if (parent->isObject()) {
    parent->removeMember(pointer.steps().back());
  } else if (Json::Value* entry = pointer.Find(document)) {
    *entry = Json::Value();
  }
}

void CReducedPage::SetDocument(const std::string& file, Json::Value document) {
  m_changes[file] = std::move(document);
}

Json::Value& CReducedPage::At(const CTemplatePlace& place) {
  return *place.pointer.Find(m_changes.at(place.file));
}

CPageRun CReducedPage::Run() {
  ++m_runs;
  return m_page.Run(m_changes, m_pass);
}

}  // namespace ttr
