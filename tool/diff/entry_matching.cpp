#include "diff/entry_matching.h"

#include <json/writer.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "diff/page_difference.h"
#include "diff/unique_anchors.h"

namespace ttr {
namespace {

/// Numbers for texts and values: equal ones have the same. So each is looked at only once, however
/// often it is compared.
class CNumbers {
 public:
  static constexpr int none = -1;  ///< for what is not there; equal to nothing

  CNumbers() {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    m_writer.reset(builder.newStreamWriter());
  }

  int Of(const std::string& text) {
    if (text.empty()) return none;
    return m_numbers.emplace(text, static_cast<int>(m_numbers.size())).first->second;
  }

  int Of(const Json::Value& value) {
    std::ostringstream text;
    m_writer->write(value, &text);
    return Of(text.str());
  }

  int OfMember(const char* name, const Json::Value& object) {
    return object.isMember(name) ? Of(object[name]) : none;
  }

 private:
  std::unique_ptr<Json::StreamWriter> m_writer;
  std::map<std::string, int> m_numbers;
};

/// An entry of Contents: what it is recognised by, as numbers.
struct CEntry {
  bool null = false;
  bool element = false;
  int value = CNumbers::none;
  int label = CNumbers::none;
  int members = CNumbers::none;
  int bounds = CNumbers::none;
  int renderType = CNumbers::none;
  int display = CNumbers::none;
  int templateValue = CNumbers::none;
  int templateLabel = CNumbers::none;
  int templatePlace = CNumbers::none;
};

/// What tells template entries apart also where they are resolved to null.
std::string templateLabel(const Json::Value& entry) {
  for (const char* name : {"If", "Loop"}) {
    const Json::Value* inner = (CJsonPointer() / name).Find(entry);
    if (inner != nullptr) return labelOf(*inner);
  }
  const Json::Value* file = (CJsonPointer() / "Include" / "Filename").Find(entry);
  return file != nullptr && file->isString() ? file->asString() : labelOf(entry);
}

void describeElement(const Json::Value& element, CNumbers& numbers, CEntry& entry) {
  std::string members;
  for (const std::string& name : element.getMemberNames()) members += name + '\n';
  entry.element = true;
  entry.members = numbers.Of("members\n" + members);
  entry.bounds = numbers.OfMember("Bounds", element);
  entry.renderType = numbers.OfMember("RenderType", element);
  entry.display = numbers.OfMember("Display", element);
}

std::vector<CEntry> entriesOf(const CContents& contents, CNumbers& numbers) {
  std::vector<CEntry> entries;
  for (const Json::Value& value : contents.entries) {
    const auto made = contents.templates.find(contents.pointer / entries.size());
    CEntry entry;
    entry.null = value.isNull();
    entry.value = numbers.Of(value);
    entry.label = numbers.Of(labelOf(value));
    if (value.isObject()) describeElement(value, numbers, entry);
    if (made != contents.templates.end()) {
      const CTemplateEntry& source = made->second;
      entry.templateValue = numbers.Of(source.value);
      entry.templateLabel = numbers.Of(templateLabel(source.value));
      entry.templatePlace = numbers.Of(source.file + '\n' + source.pointer.Text());
    }
    entries.push_back(entry);
  }
  return entries;
}

bool same(int left, int right) { return left != CNumbers::none && left == right; }

/// A template entry that was not changed is the same one. Its place says less, as one more entry
/// before it shifts it.
int likenessOfTemplates(const CEntry& left, const CEntry& right) {
  return (same(left.templateValue, right.templateValue) ? 80 : 0) +
         (same(left.templatePlace, right.templatePlace) ? 15 : 0);
}

/// Two elements can always be the same one, changed: then all scores are above 0. A text says most
/// about what an element is.
int likenessOfElements(const CEntry& left, const CEntry& right) {
  return 5 + (same(left.label, right.label) ? 40 : 0) + (same(left.bounds, right.bounds) ? 20 : 0) +
         (left.members == right.members ? 15 : 0) +
         (same(left.renderType, right.renderType) ? 5 : 0) +
         (same(left.display, right.display) ? 5 : 0);
}

/// Null itself says nothing about what was to be there; only its template does.
int likenessOfNull(const CEntry& left, const CEntry& right) {
  const bool both = left.null && right.null;
  if (both && same(left.templateValue, right.templateValue)) return scoreOfSame;
  return (both ? 2 : 1) + (same(left.templateLabel, right.templateLabel) ? 40 : 0) +
         likenessOfTemplates(left, right);
}

int likenessOf(const CEntry& left, const CEntry& right) {
  if (left.null || right.null) return likenessOfNull(left, right);
  if (left.value == right.value) return scoreOfSame;
  if (left.element != right.element) return 0;
  return (left.element ? likenessOfElements(left, right) : 5) + likenessOfTemplates(left, right);
}

/// Numbers that are equal where the entries are: nulls when their templates are.
std::vector<int> identities(const std::vector<CEntry>& entries) {
  std::vector<int> numbers;
  numbers.reserve(entries.size());
  for (const CEntry& entry : entries) {
    numbers.push_back(entry.null ? entry.templateValue : entry.value);
  }
  return numbers;
}

}  // namespace

std::vector<CAlignedPair> matchEntries(const CContents& before, const CContents& after) {
  CNumbers numbers;
  const std::vector<CEntry> left = entriesOf(before, numbers);
  const std::vector<CEntry> right = entriesOf(after, numbers);
  std::vector<CAlignedPair> anchors = uniqueAnchors(identities(left), identities(right));
  anchors.push_back({left.size(), right.size()});
  std::vector<CAlignedPair> pairs;
  CAlignedPair at;
  for (const CAlignedPair& anchor : anchors) {
    const auto likeness = [&](std::size_t leftEntry, std::size_t rightEntry) {
      return likenessOf(left[at.left + leftEntry], right[at.right + rightEntry]);
    };
    for (const CAlignedPair& pair :
         align(anchor.left - at.left, anchor.right - at.right, likeness)) {
      pairs.push_back({at.left + pair.left, at.right + pair.right});
    }
    pairs.push_back(anchor);
    at = {anchor.left + 1, anchor.right + 1};
  }
  pairs.pop_back();  // the end
  return pairs;
}

}  // namespace ttr
