#include "workloads.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "TokenTemplateResolver/json_text.h"

namespace bench {
namespace {

std::string fileText(const std::string& name) {
  const std::ifstream file(name);
  std::ostringstream text;
  text << file.rdbuf();
  if (!file) throw std::runtime_error("cannot read " + name);
  return text.str();
}

Json::Value parsed(const std::string& text) {
  std::string errors;
  Json::Value value = jsoncpp_string::toJsonObject(text, &errors);
  if (!errors.empty()) throw std::runtime_error(errors);
  return value;
}

/// One layout of `count` cells in ten columns, as the member "Layout" holds it.
Json::Value gridLayout(int count) {
  Json::Value cells(Json::arrayValue);
  for (int i = 0; i < count; ++i) {
    Json::Value& cell = cells.append(Json::Value(Json::arrayValue));
    cell.append(i % 10 * 100);
    cell.append(i / 10 * 50);
  }
  Json::Value layouts(Json::arrayValue);
  layouts.append(cells);
  return layouts;
}

/// Elements of a page without loops, `count` of them; one in three has a token.
Json::Value plainElements(int count) {
  Json::Value elements(Json::arrayValue);
  for (int i = 0; i < count; ++i) {
    Json::Value& element = elements.append(parsed(R"j({
      "Bounds": ["10%", 5, "80%", 20], "RenderType": 2, "Display": ["#FFFFFFFF"]})j"));
    element["Contents"].append(i % 3 == 0 ? "$(menu.title) " + std::to_string(i) : "Plain text");
  }
  return elements;
}

/// A page of `contents`.
std::string pageText(const Json::Value& contents) {
  Json::Value page;
  page["Contents"] = contents;
  return jsoncpp_string::toString(page);
}

std::string sized(const std::string& kind, int size) { return kind + "/" + std::to_string(size); }

Json::Value menuValues() { return parsed(R"j({"menu": {"title": "Dish"}})j"); }

/// The page `name` of the examples, which stands in `directory`; without its included files.
CWorkload example(const std::string& name, const std::string& directory) {
  CWorkload workload{"example/" + name, "pass", 1};
  workload.page = fileText(directory + "/template.json");
  workload.values = parsed(fileText(directory + "/values.json"));
  return workload;
}

CWorkload lobby(const std::string& directory) {
  CWorkload workload = example("lobby", directory);
  workload.includes = {fileText(directory + "/header.json"), fileText(directory + "/footer.json")};
  workload.values["theme"]["dir"] = directory;
  workload.variables = {"accent", "ink", "quiet", "room", "n", "line", "notice", "shown", "hour"};
  return workload;
}

CWorkload departures(const std::string& directory) {
  CWorkload workload = example("departures", directory);
  workload.variables = {"ink", "dim", "heading", "flight", "row", "line"};
  return workload;
}

CWorkload menu(const std::string& directory) {
  CWorkload workload = example("menu", directory);
  // The page names the file as seen from its own folder, which is not where benchmarks run.
  const std::string name = "allergens.json";
  const std::string file = directory + "/" + name;
  workload.page.replace(workload.page.find(name), name.size(), file);
  workload.includes = {fileText(file)};
  workload.variables = {"cream", "price", "note", "section", "number", "item", "special"};
  return workload;
}

}  // namespace

CWorkload grid(int cells) {
  CWorkload workload{sized("grid", cells), "cell", cells};
  workload.values = menuValues();
  Json::Value contents = parsed(R"j([{"Loop": {
    "Start": 0, "Var": "i", "CellWidth": 100, "CellHeight": 50,
    "Contents": [
      {"Bounds": [0, 0, "100%", "50%"], "RenderType": 2, "Display": ["#FF8000FF", "#00000080"],
       "Contents": ["$(menu.title) $(context.i)"]},
      {"Bounds": ["10%", "50%", "80%", "50%"], "RenderType": 3, "Display": ["#FFFFFFFF"],
       "Contents": ["Images/Dish$(context.i).PNG"]}]}}])j");
  Json::Value& loop = contents[0]["Loop"];
  loop["Size"] = cells;
  loop["Layout"] = gridLayout(cells);
  workload.page = pageText(contents);
  return workload;
}

CWorkload staticPage() {
  constexpr int containers = 10;
  constexpr int elementsInside = 28;
  const int elements = containers * (2 + elementsInside);
  CWorkload workload{sized("static", elements), "element", elements};
  workload.values = menuValues();
  // In each container one plain element, and the others inside that.
  Json::Value container = parsed(R"j({"Bounds": [10, 10, "90%", "90%"], "RenderType": 1024,
    "Contents": [{"Bounds": [0, 0, "100%", "100%"], "RenderType": 1}]})j");
  container["Contents"][0]["Contents"] = plainElements(elementsInside);
  Json::Value contents(Json::arrayValue);
  for (int i = 0; i < containers; ++i) contents.append(container);
  workload.page = pageText(contents);
  return workload;
}

CWorkload text(int tokens) {
  CWorkload workload{sized("text", tokens), "token", tokens};
  workload.values = menuValues();
  std::string text;
  for (int i = 0; i < tokens; ++i) text += "a $(menu.title) ";
  Json::Value contents(Json::arrayValue);
  contents.append(text);
  workload.page = pageText(contents);
  return workload;
}

CWorkload list(int rows) {
  CWorkload workload{sized("list", rows), "row", 2 * rows};
  std::string csv;
  for (int i = 0; i < rows; ++i) {
    const std::string row = "Row " + std::to_string(i);
    csv += (i == 0 ? "" : ",") + row;
    workload.values["list"].append(row);
  }
  workload.values["csv"] = csv;
  Json::Value contents = parsed(R"j([
    "$(list#) rows",
    {"Loop": {"List": "$(csv)", "Value": "row", "CellWidth": 100, "CellHeight": 50,
              "Contents": [{"RenderType": 2, "Contents": ["$(context.row)"]}]}},
    {"Loop": {"List": "$(list)", "Var": "i", "CellWidth": 100, "CellHeight": 50,
              "Contents": [{"RenderType": 2, "Contents": ["$(list[context.i])"]}]}}])j");
  contents[1]["Loop"]["Layout"] = contents[2]["Loop"]["Layout"] = gridLayout(rows);
  workload.page = pageText(contents);
  return workload;
}

CWorkload includeChain(const std::string& directory) {
  constexpr int levels = 11;
  constexpr int elements = 50;
  CWorkload workload{sized("include", levels), "element", levels * elements};
  workload.values = menuValues();
  Json::Value next;
  for (int level = levels; level > 0; --level) {
    Json::Value contents = plainElements(elements);
    if (!next.isNull()) contents.append(next);
    const std::string name = directory + "/level" + std::to_string(level) + ".json";
    workload.includes.push_back(pageText(contents));
    std::ofstream(name) << workload.includes.back();
    next = parsed(R"j({"Bounds": [0, 0, "100%", "100%"]})j");
    next["Include"]["Filename"] = name;
  }
  Json::Value contents(Json::arrayValue);
  contents.append(next);
  workload.page = pageText(contents);
  return workload;
}

std::vector<CWorkload> examplePages(const std::string& examples) {
  return {lobby(examples + "/lobby"), departures(examples + "/departures"),
          menu(examples + "/menu")};
}

std::vector<CWorkload> allWorkloads(const std::string& directory, const std::string& examples) {
  std::vector<CWorkload> workloads;
  for (const int cells : {10, 100, 1000, 10000}) workloads.push_back(grid(cells));
  workloads.push_back(staticPage());
  for (const int tokens : {10, 1000, 100000}) workloads.push_back(text(tokens));
  for (const int rows : {100, 1000}) workloads.push_back(list(rows));
  workloads.push_back(includeChain(directory));
  for (const CWorkload& page : examplePages(examples)) workloads.push_back(page);
  return workloads;
}

}  // namespace bench
