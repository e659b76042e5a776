// What ends a pass is replaced by null, in copies of the documents. That leaves every other entry
// in its place, so the tree of that pass has the pointers that the page would have.
#include "explain/pass_tree.h"

#include <algorithm>
#include <utility>

namespace ttr {
namespace {

bool endsPass(const CFault& fault) {
  return fault.code == "division-by-zero" || fault.code == "exception";
}

}  // namespace

CPassTree::CPassTree(CPageRunner& page, unsigned pass)
    : m_page(page), m_run(page.Run({}, pass)), m_exception(m_run.exception) {
  if (m_exception) takeOutEnds(pass);
  m_root = elementTree(m_page, m_run);
  useDocuments(m_root);
  m_end = EndIn(m_root);
}

void CPassTree::takeOutEnds(unsigned pass) {
  for (CFault& fault : findFaults(m_page, {pass, pass})) {
    if (endsPass(fault)) m_ends.push_back(std::move(fault));
  }
  std::vector<std::string> names = m_page.includedFiles();
  names.push_back(m_page.pageFile().name());
  for (const std::string& name : names) {
    const CSourceFile* file = m_page.File(name);
    for (const CFault& end : m_ends) {
      if (file == nullptr || end.place.file != file->name()) continue;
      Json::Value& document = m_documents.try_emplace(name, file->document()).first->second;
      if (Json::Value* value = end.pointer.Find(document)) *value = Json::Value();
    }
  }
  const auto isDocument = [](const CFault& end) { return end.pointer.empty(); };
  const bool placed = std::none_of(m_ends.begin(), m_ends.end(), isDocument);
  CPageRun run = m_page.Run(m_documents, pass);
  if (!placed || run.exception) {
    m_documents.clear();
    m_ends.clear();
  } else {
    m_run = std::move(run);
  }
}

void CPassTree::useDocuments(CElementNode& node) const {
  const auto document = m_documents.find(node.origin.file);
  if (document != m_documents.end()) {
    const Json::Value* value = node.origin.pointer.Find(document->second);
    if (value != nullptr) node.origin.value = value;
  }
  for (CElementNode& child : node.children) useDocuments(child);
}

const CFault* CPassTree::OwnEnd(const CElementNode& node) const {
  const CSourceFile* file = m_page.File(node.origin.file);
  const auto own = [&](const CFault& end) {
    if (file == nullptr || end.place.file != file->name()) return false;
    const auto holdsEnd = [&](const CElementNode& child) {
      return child.origin.file == node.origin.file && end.pointer.IsBelow(child.origin.pointer);
    };
    return end.pointer.IsBelow(node.origin.pointer) &&
           std::none_of(node.children.begin(), node.children.end(), holdsEnd);
  };
  const auto found = std::find_if(m_ends.begin(), m_ends.end(), own);
  return found == m_ends.end() ? nullptr : &*found;
}

const CFault* CPassTree::EndIn(const CElementNode& node) const {
  if (const CFault* end = OwnEnd(node)) return end;
  for (const CElementNode& child : node.children) {
    if (const CFault* end = EndIn(child)) return end;
  }
  return nullptr;
}

CElementNode CPassTree::Written(CElementNode node) const {
  const CSourceFile* file = m_page.File(node.origin.file);
  const Json::Value* value = file == nullptr ? nullptr : node.origin.pointer.Find(file->document());
  if (value != nullptr) node.origin.value = value;
  return node;
}

}  // namespace ttr
