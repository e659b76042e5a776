#include "preview/preview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>

#include "preview/rsvg.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace {

using ttr::CPreviewFile;
using ttr::CPreviewModel;
using ttr::CPreviewOptions;

constexpr char rotating[] = R"j({"Contents": [{"Loop": {"List": "a,b,c", "Value": "v",
    "Bounds": [], "Contents": [{"Bounds": [1, 2, 30, 40], "Contents": ["$(v)"]}]}}]})j";

CPreviewOptions OptionsFor(const ttr::CPageFolder& folder, std::vector<std::string> outputs) {
  CPreviewOptions options;
  options.page = folder.Options("p.json");
  options.sizes = {"320x200"};
  options.outputs = std::move(outputs);
  return options;
}

/// `svg` without the numbers of its elements, which are those of all pictures together.
std::string WithoutIds(const std::string& svg) {
  return std::regex_replace(svg, std::regex("data-id=\"[0-9]+\""), "");
}

std::string Refusal(const CPreviewOptions& options) {
  try {
    makePreview(options);
  } catch (const ttr::CToolError& error) {
    const std::string text = error.what();
    return text.substr(text.find("p.json"));
  }
  return "";
}

TEST(Preview, PassesAreThoseThatTheOutputsNeed) {
  const ttr::CPageFolder folder({{"p.json", rotating}});
  EXPECT_EQ(makePreview(OptionsFor(folder, {"a.svg"})).pictures.size(), 1U);
  EXPECT_EQ(makePreview(OptionsFor(folder, {"a.html"})).pictures.size(), 3U);
  EXPECT_EQ(makePreview(OptionsFor(folder, {"a-{pass}.svg"})).pictures.size(), 3U);
  CPreviewOptions options = OptionsFor(folder, {"a.html"});
  options.passes = 2;
  options.page.pass = 2;
  const CPreviewModel model = makePreview(options);
  ASSERT_EQ(model.pictures.size(), 2U);
  EXPECT_EQ(model.pictures[0].pass, 2U);
  EXPECT_NE(model.Svg(model.pictures[0]).find(">c</text>"), std::string::npos);
}

/// A page of `count` elements and a line that changes with each pass; in every second pass there is
/// one element more in front of all.
std::string PageOfManyPasses(unsigned count) {
  std::string page = R"j({"Contents": [
    {"Loop": {"List": "1,0", "Value": "v", "Bounds": [], "Contents": [
      {"If": {"Condition": "$(v)", "Contents": [{"Bounds": [0, 0, 90, 20], "Contents": ["New"]}]}}]}},
    {"Loop": {"Start": 0, "Size": 40, "Var": "i", "Bounds": [], "Contents": [
      {"Bounds": [0, 0, 100, 20], "Contents": ["Line $(i)"]}]}})j";
  for (unsigned i = 0; i < count; ++i) {
    page += R"(, {"Bounds": [1, 2, 30, 40], "Display": ["#0011223344"], "Contents": ["A text"]})";
  }
  return page + "]}";
}

std::size_t PageSize(const ttr::CPageFolder& folder, unsigned passes) {
  CPreviewOptions options = OptionsFor(folder, {"a.html"});
  options.passes = passes;
  return renderPreview(makePreview(options), options, "", false).at(0).content.size();
}

TEST(Preview, PassesShareWhatTheyHaveInCommon) {
  const ttr::CPageFolder folder({{"p.json", PageOfManyPasses(200)}});
  const std::size_t one = PageSize(folder, 1);
  const std::size_t forty = PageSize(folder, 40);
  EXPECT_GT(one, 100000U);
  EXPECT_LT(forty, one + 39 * 4000);
}

TEST(Preview, EveryPassIsTheSameAloneAndAmongOthers) {
  const ttr::CPageFolder folder({{"p.json", PageOfManyPasses(3)}});
  CPreviewOptions options = OptionsFor(folder, {"a.html"});
  options.passes = 3;
  const CPreviewModel all = makePreview(options);
  options.passes = 1;
  for (unsigned pass = 3; pass > 0; --pass) {
    options.page.pass = pass;
    const CPreviewModel alone = makePreview(options);
    const std::string svg = alone.Svg(alone.pictures.at(0));
    EXPECT_NE(svg.find(">Line " + std::to_string(pass) + "</text>"), std::string::npos);
    EXPECT_EQ(svg.find(">New</text>") != std::string::npos, pass == 2) << pass;
    EXPECT_EQ(WithoutIds(svg), WithoutIds(all.Svg(all.pictures.at(pass - 1)))) << pass;
  }
}

TEST(Preview, FilesAreNamedAfterSizeAndPass) {
  const ttr::CPageFolder folder({{"p.json", rotating}});
  CPreviewOptions options = OptionsFor(folder, {"{size}-{pass}.svg", "all.html"});
  options.sizes = {"320x200", "64x64"};
  options.passes = 2;
  const std::vector<CPreviewFile> files = renderPreview(makePreview(options), options, "", false);
  std::vector<std::string> names;
  for (const CPreviewFile& file : files) names.push_back(file.name);
  EXPECT_EQ(names, (std::vector<std::string>{"320x200-1.svg", "320x200-2.svg", "64x64-1.svg",
                                             "64x64-2.svg", "all.html"}));
}

TEST(Preview, ReasonsTellTheirPlace) {
  const ttr::CPageFolder folder({{"p.json", "{\"Contents\": [\n  1 2]}"}});
  EXPECT_EQ(Refusal(OptionsFor(folder, {"a.svg"})).rfind("p.json:2:", 0), 0U)
      << Refusal(OptionsFor(folder, {"a.svg"}));
  folder.Write("p.json", "{\"Contents\": [\n  {\"Loop\": 5}]}");
  EXPECT_EQ(Refusal(OptionsFor(folder, {"a.svg"})).rfind("p.json:2:", 0), 0U)
      << Refusal(OptionsFor(folder, {"a.svg"}));
}

TEST(Preview, PassesWithTheSameMessagesTellTheirOwnPlaces) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": [
{"Loop": {"List": "0,1,0,0", "Value": "v", "Bounds": [], "Contents": [
  {"If": {"Condition": "$(v)", "Contents": ["$(no)"]}}]}},
{"Loop": {"List": "1,0,1,1", "Value": "v", "Bounds": [], "Contents": [
  {"If": {"Condition": "$(v)", "Contents": ["$(no)"]}}]}}]})j"}});
  const CPreviewModel model = makePreview(OptionsFor(folder, {"a.html"}));
  ASSERT_EQ(model.pictures.size(), 4U);
  std::vector<std::size_t> lines;
  for (const ttr::CKeptPicture& picture : model.pictures) {
    const std::vector<const std::string*> faults = model.diagnostics.TextsIn(picture.diagnostics);
    ASSERT_EQ(faults.size(), 1U);
    lines.push_back(faults[0]->find("p.json:3:") == std::string::npos ? 5 : 3);
  }
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines, (std::vector<std::size_t>{3, 5, 5, 5}));
  const std::vector<ttr::CFault> faults = model.faults.Sorted();
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].place.line, 3U);
  EXPECT_EQ(faults[1].place.line, 5U);
  EXPECT_EQ(faults[1].count, 3U);
}

TEST(Preview, OutdatedPicturesBearABanner) {
  const ttr::CPageFolder folder({{"p.json", rotating}});
  const CPreviewOptions options = OptionsFor(folder, {"a.svg"});
  const std::string svg =
      renderPreview(makePreview(options), options, "no <JSON>", false).at(0).content;
  EXPECT_NE(svg.find("OUTDATED"), std::string::npos);
  EXPECT_NE(svg.find("no &lt;JSON&gt;"), std::string::npos);
}

TEST(Preview, PageThatNeverHadAPictureIsAnEmptyScreen) {
  const CPreviewOptions options = OptionsFor(ttr::CPageFolder({}), {"a.svg", "a.html"});
  const std::vector<CPreviewFile> files = renderPreview(CPreviewModel(), options, "why", false);
  ASSERT_EQ(files.size(), 2U);
  EXPECT_NE(files[0].content.find("OUTDATED"), std::string::npos);
}

TEST(Preview, NamesTheFilesItWasMadeFrom) {
  const ttr::CPageFolder folder(
      {{"p.json", R"({"Contents": [{"Include": {"Filename": "i.json"}}, "x.png"]})"}});
  CPreviewOptions options = OptionsFor(folder, {"a.svg"});
  options.assets = folder.path();
  const CPreviewModel model = makePreview(options);
  std::vector<std::string> names;
  for (const std::string& file : model.files) {
    EXPECT_TRUE(std::filesystem::path(file).is_absolute());
    names.push_back(std::filesystem::path(file).filename().string());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"p.json", "p.values.json", "values.json", "i.json",
                                             "x.png"}));
}

TEST(Rsvg, MakesAPng) {
  const std::string png = ttr::pngFromSvg(
      R"(<svg xmlns="http://www.w3.org/2000/svg" width="3" height="2"><rect width="3"/></svg>)");
  ASSERT_GE(png.size(), 24U);
  EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\0\3\0\0\0\2", 8));
}

TEST(Rsvg, TellsItsReason) {
  try {
    ttr::pngFromSvg("no XML");
    FAIL();
  } catch (const ttr::CToolError& error) {
    EXPECT_EQ(std::string(error.what()).rfind("rsvg-convert: ", 0), 0U);
    EXPECT_GT(error.reason().size(), 10U);
  }
}

TEST(Rsvg, SaysWhenTheProgramIsMissing) {
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", "/nowhere", 1);
  std::string reason;
  try {
    ttr::pngFromSvg("<svg/>");
  } catch (const ttr::CToolError& error) {
    reason = error.what();
  }
  ::setenv("PATH", path.c_str(), 1);
  EXPECT_EQ(reason,
            "rsvg-convert: not found; PNG pictures need it (Debian: apt install librsvg2-bin)");
}

}  // namespace
