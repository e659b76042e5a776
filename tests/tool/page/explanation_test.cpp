#include "page/explanation.h"

#include <gtest/gtest.h>

#include "tool/support/page_folder.h"

namespace {

/// The lines about the element at `pointer` of the page p.json, without the folder's own path.
std::string LinesAt(std::initializer_list<std::pair<std::string, std::string>> files,
                    const std::string& pointer) {
  const ttr::CPageFolder folder(files);
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord record = page.Record(1);
  const ttr::CNodeWay way = wayTo(record.root, ttr::CJsonPointer::Parse(pointer));
  std::string text;
  for (const auto& line : explanationLines(explainNode(page, record, way, "values.json"))) {
    text += (line.isDetail ? "  " : "") + line.label + ": " + line.text + '\n';
  }
  const std::string path = folder.path() + '/';
  for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path)) {
    text.erase(at, path.size());
  }
  return text;
}

TEST(Explanation, HasALineForEachFact) {
  EXPECT_EQ(LinesAt({{"p.json", R"j({"Contents": [{"Bounds": [100, 0, 400, 50], "Contents": [
                         {"Bounds": ["10%", 1, "$(w)", 5, "x"]}]}]})j"},
                     {"values.json", R"({"w": "5"})"}},
                    "/Contents/0/Contents/0"),
            R"j(element: p.json:2:26, /Contents/0/Contents/0; pass 1
Bounds: [140,1,5,5,0], within 100,0 400x50 of the element at p.json:1:15
  x: 140 from "10%": 10% of 400 = 40, 40 + 100 = 140
  y: 1 from 1: 1 + 0 = 1
  width: 5 from "$(w)": 5
  height: 5 from 5: stays: as written
  fifth: 0 from "x": as an integer
token: $(w) in Bounds/2: "5" (text), by w from values.json
message: CTokenResolver::stringToInt: cannot convert value to signed integer: x.
)j");
}

TEST(Explanation, ATokenThatStandsTwiceHasTwoPlaces) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": ["$(n) of $(n), $(n[0])$(n)"]})j"},
                                 {"values.json", R"({"n": 3})"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord record = page.Record(1);
  const ttr::CNodeWay way = wayTo(record.root, ttr::CJsonPointer::Parse("/Contents/0"));
  std::vector<std::size_t> columns;
  for (const auto& token : explainNode(page, record, way, "").tokens) {
    columns.push_back(token.place.column);
  }
  EXPECT_EQ(columns, (std::vector<std::size_t>{16, 24, 30, 37}));
}

TEST(Explanation, ANameIsFoundWhereAnotherFileBindsIt) {
  const std::string lines =
      LinesAt({{"p.json", R"j({"Contents": ["$(late)", {"Include": {"Filename": "a.json"}}]})j"},
               {"a.json", R"j({"Contents": [{"Loop": {"Value": "late"}}]})j"}},
              "/Contents/0");
  EXPECT_NE(lines.find("'late' is not in force here; it is bound at a.json:1:25\n"),
            std::string::npos)
      << lines;
}

TEST(Explanation, WhatEndsThePassIsToldAroundItToo) {
  const std::string end = "divide by zero., by n from values.json\n";
  const std::string lines = LinesAt(
      {{"p.json", R"j({"Contents": [{"Contents": ["$(n/0)"]}]})j"}, {"values.json", R"({"n": 3})"}},
      "/Contents/0");
  EXPECT_NE(lines.find("$(n/0) in Contents/0: null: TokenResolver::evaluateExpression: " + end),
            std::string::npos)
      << lines;
  const std::string included =
      LinesAt({{"p.json", R"j({"Contents": [{"Include": {"Filename": "a.json"}}]})j"},
               {"a.json", R"j({"Page": {"Context": {"c": "$(n/0)"}, "Contents": []}})j"},
               {"values.json", R"({"n": 3})"}},
              "/Contents/0");
  EXPECT_NE(included.find("$(n/0) in Page/Context/c: null: "), std::string::npos) << included;
}

TEST(Explanation, OfWhatEndsThePassOnlyTokensAreTold) {
  EXPECT_EQ(LinesAt({{"p.json", R"j({"Contents": [{"Bounds": ["$(n)", "$(n/0)", 1, 1]}]})j"},
                     {"values.json", R"({"n": 3})"}},
                    "/Contents/0"),
            R"j(element: p.json:1:15, /Contents/0; pass 1
token: $(n) in Bounds/0: 3 (integer), by n from values.json
token: $(n/0) in Bounds/1: null: TokenResolver::evaluateExpression: divide by zero., by n from values.json
)j");
}

}  // namespace
