// The data that the scripts in viewer show, and the page that holds both.
#include "preview/viewer_page.h"

#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <utility>

#include "page/json_pointer.h"
#include "preview/viewer_html.h"

namespace ttr {
namespace {

constexpr char modelMark[] = "<!--MODEL-->";

Json::Value idOrNull(std::optional<std::size_t> id) {
  return id ? Json::Value(Json::UInt64{*id}) : Json::Value();
}

Json::Value elementModel(const CPreviewElement& element) {
  Json::Value model;
  model["id"] = Json::UInt64{element.id};
  model["parent"] = idOrNull(element.parent);
  model["kind"] = element.kind;
  model["label"] = element.label;
  model["pointer"] = element.pointer;
  model["place"] = element.place;
  model["templatePointer"] = element.templatePointer;
  model["isNull"] = element.isNull;
  model["offScreen"] = element.offScreen;
  model["bounds"] = element.bounds;
  model["enclosing"] = element.enclosing;
  model["arithmetic"] = Json::Value(Json::arrayValue);
  for (const std::string& line : element.arithmetic) model["arithmetic"].append(line);
  model["members"] = element.members;
  return model;
}

/// The template elements of a picture, to find the one at fault.
class CElementFinder {
 public:
  explicit CElementFinder(const std::vector<CPreviewElement>& elements) : m_elements(elements) {
    for (const CPreviewElement& element : elements) {
      m_pointers.push_back(CJsonPointer::Parse(element.templatePointer));
    }
  }

  /// The innermost element around the fault, the first one of its copies.
  std::optional<std::size_t> Find(const CFault& fault) const {
    std::optional<std::size_t> found;
    for (std::size_t index = 0; index < m_elements.size(); ++index) {
      const std::string file = fault.place.file + ':';
      const bool around = m_elements[index].place.compare(0, file.size(), file) == 0 &&
                          fault.pointer.IsBelow(m_pointers[index]);
      const bool deeper =
          !found || m_pointers[index].steps().size() > m_pointers[*found].steps().size();
      if (around && deeper) found = index;
    }
    return found;
  }

 private:
  const std::vector<CPreviewElement>& m_elements;
  std::vector<CJsonPointer> m_pointers;
};

Json::Value faultModel(const CFault& fault, const CElementFinder& finder) {
  Json::Value model;
  model["level"] = fault.level == CFault::levelError ? "error" : "warning";
  model["code"] = fault.code;
  model["message"] = fault.message;
  model["place"] = fault.place.Text();
  model["pointer"] = fault.pointer.Text();
  model["suggestion"] = fault.suggestion;
  model["count"] = Json::UInt64{fault.count};
  model["element"] = idOrNull(finder.Find(fault));
  model["includedFrom"] = Json::Value(Json::arrayValue);
  for (const CPlace& place : fault.includedFrom) model["includedFrom"].append(place.Text());
  return model;
}

Json::Value pictureModel(const CPreviewPicture& picture) {
  Json::Value model;
  model["size"] = picture.size;
  model["pass"] = picture.pass;
  model["svg"] = picture.svg;
  model["elements"] = Json::Value(Json::arrayValue);
  for (const CPreviewElement& element : picture.elements) {
    model["elements"].append(elementModel(element));
  }
  const CElementFinder finder(picture.elements);
  model["diagnostics"] = Json::Value(Json::arrayValue);
  for (const CFault& fault : picture.faults) model["diagnostics"].append(faultModel(fault, finder));
  return model;
}

Json::Value wholeModel(const CPreviewModel& preview, const std::string& outdated, bool live) {
  Json::Value model;
  model["page"] = preview.page;
  model["live"] = live;
  model["outdated"] = outdated;
  model["sizes"] = Json::Value(Json::arrayValue);
  model["pictures"] = Json::Value(Json::arrayValue);
  std::set<unsigned> passes;
  std::set<std::string> sizes;
  for (const CPreviewPicture& picture : preview.pictures) {
    if (sizes.insert(picture.size).second) model["sizes"].append(picture.size);
    passes.insert(picture.pass);
    model["pictures"].append(pictureModel(picture));
  }
  model["passes"] = Json::UInt64{passes.size()};
  return model;
}

/// A new text, as replacing in place would move the rest each time.
std::string replacedAll(const std::string& text, const std::string& from, const std::string& to) {
  std::string replaced;
  replaced.reserve(text.size() + text.size() / 8);
  std::size_t begin = 0;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, begin)) {
    replaced.append(text, begin, at - begin).append(to);
    begin = at + from.size();
  }
  return replaced.append(text, begin, std::string::npos);
}

/// `model` as JSON that nothing in ends, or begins, a script: as text in a page, in ASCII.
std::string scriptText(const Json::Value& model) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  const std::string text = replacedAll(Json::writeString(writer, model), "</", "<\\/");
  return replacedAll(text, "<!", "<\\u0021");
}

}  // namespace

std::string viewerPage(const CPreviewModel& model, const std::string& outdated, bool live) {
  std::string page = viewerHtml();
  const std::string script = "<script type=\"application/json\" id=\"model\">" +
                             scriptText(wholeModel(model, outdated, live)) + "</script>";
  return page.replace(page.find(modelMark), sizeof modelMark - 1, script);
}

}  // namespace ttr
