#include "diff/compared_page.h"

#include <gtest/gtest.h>

#include <string>

#include "support/json.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace ttr {
namespace {

/// Line and column of what `page` has at `pointer`.
std::string PlaceOf(const CComparedPage& page, const std::string& pointer) {
  const CPlace place = page.placeOf(CJsonPointer::Parse(pointer));
  return place.file.substr(place.file.rfind('/') + 1) + ':' + std::to_string(place.line) + ':' +
         std::to_string(place.column);
}

TEST(ComparedPage, IsResolvedAndKnowsItsTemplate) {
  const CPageFolder folder({{"page.json", R"j({"Contents": [
  {"Loop": {"List": "a,b", "Value": "v", "Layout": [[[0, 0], [0, 9]]],
    "Contents": [{"RenderType": 3, "Contents": ["$(v)"]}]}},
  {"Include": {"Filename": "part.json"}}]
})j"},
                            {"part.json", "{\"Contents\":\n [\"In\"]}"}});
  const CComparedPage page = resolvedPage(folder.Options("page.json"));
  EXPECT_EQ(page.document,
            Parse(R"({"Contents": [{"Contents": [{"RenderType": 3, "Contents": ["a"]},
                                                 {"RenderType": 3, "Contents": ["b"]}]},
                                   {"Contents": ["In"]}]})"));
  EXPECT_EQ(PlaceOf(page, "/Contents/0/Contents/1/Contents/0"), "page.json:3:49");
  EXPECT_EQ(PlaceOf(page, "/Contents/0/Contents/1/Bounds/0"), "page.json:3:18");
  EXPECT_EQ(PlaceOf(page, "/Contents/1"), "page.json:4:3");
  EXPECT_EQ(PlaceOf(page, "/Contents/1/Contents/0"), "part.json:2:3");
  EXPECT_EQ(PlaceOf(page, ""), "page.json:1:1");
}

TEST(ComparedPage, CannotBeWhatHasNoResult) {
  const CPageFolder folder({{"text.json", "{\"Contents\": [}"},
                            {"number.json", "5"},
                            {"null.json", "null"},
                            {"throws.json", R"({"Contents": [{"Loop": 5}]})"}});
  for (const char* name : {"text.json", "number.json", "null.json", "throws.json"}) {
    SCOPED_TRACE(name);
    EXPECT_THROW(resolvedPage(folder.Options(name)), CToolError);
  }
}

TEST(ComparedPage, NamesThePlaceOfAnException) {
  const CPageFolder folder({{"throws.json", "{\"Contents\": [\n {\"Loop\": 5}]}"}});
  try {
    resolvedPage(folder.Options("throws.json"));
    FAIL() << "no exception";
  } catch (const CToolError& error) {
    const std::string text = error.what();
    EXPECT_EQ(text.find(folder.path() + "/throws.json:2:"), 0U) << text;
  }
}

TEST(ComparedPage, KnowsTheTemplateEntries) {
  const CPageFolder folder({{"page.json", R"({"Contents": [
  {"If": {"Condition": 0, "Contents": ["a"]}}, {"Include": {"Filename": "part.json"}}]})"},
                            {"part.json", R"({"Contents": ["In"]})"}});
  const CComparedPage page = resolvedPage(folder.Options("page.json"));
  const CTemplateEntry& hidden = page.templates.at(CJsonPointer::Parse("/Contents/0"));
  EXPECT_EQ(hidden.file, "");
  EXPECT_EQ(hidden.pointer.Text(), "/Contents/0");
  EXPECT_EQ(hidden.value, Parse(R"({"If": {"Condition": 0, "Contents": ["a"]}})"));
  const CTemplateEntry& inside = page.templates.at(CJsonPointer::Parse("/Contents/1/Contents/0"));
  EXPECT_EQ(inside.file, "part.json");
  EXPECT_EQ(inside.value, "In");
  EXPECT_EQ(page.templates.at(CJsonPointer::Parse("/Contents/1")).file, "");
}

TEST(ComparedPage, ThatWasResolvedBeforeStaysAsItIs) {
  const CPageFolder folder({{"result.json", "{\"Contents\": [\n {\"Bounds\": [\"5%\"]}]}"},
                            {"bad.json", "{"},
                            {"array.json", "[]"}});
  const CComparedPage page = readResolvedPage(folder.path() + "/result.json");
  EXPECT_EQ(page.document, Parse(R"({"Contents": [{"Bounds": ["5%"]}]})"));
  EXPECT_EQ(PlaceOf(page, "/Contents/0"), "result.json:2:2");
  EXPECT_THROW(readResolvedPage(folder.path() + "/bad.json"), CToolError);
  EXPECT_THROW(readResolvedPage(folder.path() + "/array.json"), CToolError);
}

}  // namespace
}  // namespace ttr
