// The texts of a preview: pictures line by line, and what the scripts in viewer show, as JSON.
#include <json/value.h>
#include <json/writer.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "page/fault_text.h"
#include "page/json_pointer.h"
#include "preview/preview.h"

namespace ttr {
namespace {

Json::Value idOrNull(std::optional<std::size_t> id) {
  return id ? Json::Value(Json::UInt64{*id}) : Json::Value();
}

Json::Value lineModel(const CExplanationLine& line) {
  Json::Value model;
  model["label"] = line.label;
  model["text"] = line.text;
  if (line.isDetail) model["isDetail"] = true;
  return model;
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
  model["explanation"] = Json::Value(Json::arrayValue);
  for (const CExplanationLine& line : element.explanation) {
    model["explanation"].append(lineModel(line));
  }
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

  /// The id of the innermost element around the fault, the first one of its copies.
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
    if (!found) return std::nullopt;
    return m_elements[*found].id;
  }

 private:
  const std::vector<CPreviewElement>& m_elements;
  std::vector<CJsonPointer> m_pointers;
};

Json::Value faultModel(const CFault& fault, const CElementFinder& finder) {
  Json::Value model;
  model["level"] = levelName(fault.level);
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

/// Writes many values as JSON in ASCII.
class CJsonWriter {
 public:
  CJsonWriter() {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    m_writer.reset(builder.newStreamWriter());
  }

  std::string Text(const Json::Value& value) {
    std::ostringstream text;
    m_writer->write(value, &text);
    return text.str();
  }

 private:
  std::unique_ptr<Json::StreamWriter> m_writer;
};

}  // namespace

void CPreviewModel::Add(const CPreviewPicture& picture) {
  CKeptPicture kept{picture.size, picture.pass, picture.canvas, {}, {}, {}};
  std::istringstream svg(picture.svg);
  for (std::string line; std::getline(svg, line);) lines.Append(line, kept.lines);
  CJsonWriter json;
  for (const CPreviewElement& element : picture.elements) {
    elements.Append(json.Text(elementModel(element)), kept.elements);
  }
  if (!picture.faults.empty()) {
    const CElementFinder finder(picture.elements);
    for (const CFault& fault : picture.faults) {
      diagnostics.Append(json.Text(faultModel(fault, finder)), kept.diagnostics);
      faults.Add(fault);
    }
  }
  pictures.push_back(std::move(kept));
}

std::string CPreviewModel::Svg(const CKeptPicture& picture) const {
  std::string svg;
  for (const std::string* line : lines.TextsIn(picture.lines)) svg += *line + '\n';
  return svg;
}

}  // namespace ttr
