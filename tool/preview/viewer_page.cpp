// The data that the scripts in viewer show, and the page that holds both.
#include "preview/viewer_page.h"

#include <json/value.h>
#include <json/writer.h>

#include <cstddef>
#include <set>

#include "preview/viewer_html.h"

namespace ttr {
namespace {

constexpr char modelMark[] = "<!--MODEL-->";

Json::Value runsModel(const CTextPool::CRuns& runs) {
  Json::Value model(Json::arrayValue);
  for (const std::size_t number : runs) model.append(Json::UInt64{number});
  return model;
}

Json::Value pictureModel(const CKeptPicture& picture) {
  Json::Value model;
  model["size"] = picture.size;
  model["pass"] = picture.pass;
  model["lines"] = runsModel(picture.lines);
  model["elements"] = runsModel(picture.elements);
  model["diagnostics"] = runsModel(picture.diagnostics);
  return model;
}

/// All but the texts that the pictures are made of.
Json::Value frameModel(const CPreviewModel& preview, const std::string& outdated, bool live) {
  Json::Value model;
  model["page"] = preview.page;
  model["live"] = live;
  model["outdated"] = outdated;
  model["sizes"] = Json::Value(Json::arrayValue);
  model["pictures"] = Json::Value(Json::arrayValue);
  std::set<unsigned> passes;
  std::set<std::string> sizes;
  for (const CKeptPicture& picture : preview.pictures) {
    if (sizes.insert(picture.size).second) model["sizes"].append(picture.size);
    passes.insert(picture.pass);
    model["pictures"].append(pictureModel(picture));
  }
  model["passes"] = Json::UInt64{passes.size()};
  return model;
}

std::string jsonText(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  return Json::writeString(writer, value);
}

/// The member `name` of an object that has members before it: an array of texts that are JSON.
std::string arrayMember(const std::string& name, const CTextPool& pool) {
  std::string text;
  for (const std::string* entry : pool.texts()) text += (text.empty() ? "" : ",") + *entry;
  return ",\"" + name + "\":[" + text + ']';
}

std::string modelText(const CPreviewModel& preview, const std::string& outdated, bool live) {
  std::string text = jsonText(frameModel(preview, outdated, live));
  text.pop_back();
  Json::Value lines(Json::arrayValue);
  for (const std::string* line : preview.lines.texts()) lines.append(*line);
  return text + ",\"lines\":" + jsonText(lines) + arrayMember("elements", preview.elements) +
         arrayMember("diagnostics", preview.diagnostics) + '}';
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

/// `json` as nothing in it ends, or begins, a script.
std::string scriptText(const std::string& json) {
  return replacedAll(replacedAll(json, "</", "<\\/"), "<!", "<\\u0021");
}

}  // namespace

std::string viewerPage(const CPreviewModel& model, const std::string& outdated, bool live) {
  std::string page = viewerHtml();
  const std::string script = "<script type=\"application/json\" id=\"model\">" +
                             scriptText(modelText(model, outdated, live)) + "</script>";
  return page.replace(page.find(modelMark), sizeof modelMark - 1, script);
}

}  // namespace ttr
