#include "template_input.h"

#include <json/reader.h>
#include <json/writer.h>

#include <algorithm>
#include <memory>

namespace ttr {
namespace {

/// More than the library reads, as files that include each other nest deeper.
constexpr int depthLimit = 5000;

/// The largest number of cells that a loop description offers.
double cellsOf(const Json::Value& loop) {
  const Json::Value layouts = loop.isObject() ? loop["Layout"] : Json::Value();
  double cells = 1;
  for (const Json::Value& layout : layouts) {
    cells = std::max<double>(cells, layout.size());
  }
  return cells;
}

int intOf(const Json::Value& value, int low, int high) {
  return value.isInt() ? std::min(std::max(value.asInt(), low), high) : low;
}

CTemplateText textOf(const Json::Value& given) {
  CTemplateText result;
  result.text = given.isString() ? given.asString() : writeJson(given);
  if (!parseJson(result.text, result.document)) result.document = Json::Value();
  // In a document that was given as such, the two characters are part of a string.
  result.lineComments = given.isString() && result.text.find("//") != std::string::npos;
  result.work = workOf(result.document);
  return result;
}

}  // namespace

double workOf(const Json::Value& value) {
  double work = 1;
  if (value.isString()) return work + static_cast<double>(value.asString().size()) / 16;
  for (auto member = value.begin(); member != value.end(); ++member) {
    const bool loop = value.isObject() && member.name() == "Loop";
    work += workOf(*member) * (loop ? cellsOf(*member) : 1);
  }
  return work;
}

bool parseJson(const std::string& text, Json::Value& value) {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["stackLimit"] = depthLimit;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  try {
    return reader->parse(text.data(), text.data() + text.size(), &value, nullptr);
  } catch (const Json::RuntimeError&) {
    return false;
  }
}

std::string writeJson(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

CTemplateInput readTemplateInput(const std::string& bytes) {
  CTemplateInput input;
  Json::Value given;
  if (!parseJson(bytes, given) || !given.isObject() || !given.isMember("page")) {
    input.page = textOf(Json::Value(bytes));
    return input;
  }
  input.page = textOf(given["page"]);
  const Json::Value& files = given["files"];
  if (files.isObject()) {
    for (const std::string& name : files.getMemberNames()) input.files[name] = textOf(files[name]);
  }
  if (given["values"].isObject()) input.values = given["values"];
  if (given["size"].isArray()) {
    input.height = intOf(given["size"][0], -1, INT32_MAX);
    input.width = intOf(given["size"][1], -1, INT32_MAX);
  }
  input.throwAt = intOf(given["throw"], 0, 1000);
  input.passes = intOf(given["passes"], 1, 3);
  input.again = given["again"] == Json::Value(true);
  return input;
}

}  // namespace ttr
