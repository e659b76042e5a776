#include "preview/viewer_page.h"

#include <gtest/gtest.h>

#include "TokenTemplateResolver/json_text.h"

namespace {

constexpr char opening[] = "<script type=\"application/json\" id=\"model\">";

/// The JSON text in a page.
std::string ModelText(const std::string& page) {
  const std::size_t begin = page.find(opening);
  EXPECT_NE(begin, std::string::npos);
  if (begin == std::string::npos) return "";
  const std::size_t first = begin + sizeof opening - 1;
  return page.substr(first, page.find("</script>", first) - first);
}

Json::Value ModelOf(const std::string& page) {
  std::string errors;
  Json::Value model = jsoncpp_string::toJsonObject(ModelText(page), &errors);
  EXPECT_EQ(errors, "");
  return model;
}

ttr::CPreviewModel Preview() {
  ttr::CPreviewModel preview;
  preview.page = "page.json";
  ttr::CPreviewPicture picture;
  picture.size = "800x480";
  picture.svg = "<svg><!-- x --></svg>";
  ttr::CPreviewElement outer;
  outer.place = "page.json:1:1";
  ttr::CPreviewElement inner;
  inner.id = 1;
  inner.parent = 0;
  inner.label = "</script><!--<script>\xFF";
  inner.place = "page.json:2:3";
  inner.templatePointer = "/Contents/0";
  ttr::CPreviewElement copy = inner;
  copy.id = 2;
  picture.elements = {outer, inner, copy};
  ttr::CFault fault;
  fault.code = "unknown-token";
  fault.place = {"page.json", 2, 9};
  fault.pointer = ttr::CJsonPointer::Parse("/Contents/0/Bounds/1");
  picture.faults = {fault};
  preview.Add(picture);
  picture.pass = 2;
  picture.elements[2].label = "changed";
  preview.Add(picture);
  return preview;
}

TEST(ViewerPage, HoldsTheModel) {
  const Json::Value model = ModelOf(viewerPage(Preview(), "", false));
  EXPECT_EQ(model["page"], "page.json");
  EXPECT_EQ(model["sizes"].size(), 1U);
  EXPECT_EQ(model["passes"].asUInt(), 2U);
  EXPECT_FALSE(model["live"].asBool());
  EXPECT_EQ(model["outdated"], "");
  ASSERT_EQ(model["pictures"].size(), 2U);
  EXPECT_EQ(model["pictures"][1]["pass"].asUInt(), 2U);
  EXPECT_EQ(model["lines"][0], "<svg><!-- x --></svg>");
  EXPECT_TRUE(model["elements"][0]["parent"].isNull());
  EXPECT_EQ(model["elements"][1]["parent"].asUInt(), 0U);
}

TEST(ViewerPage, PassHasOnlyWhatIsNewInIt) {
  const Json::Value model = ModelOf(viewerPage(Preview(), "", false));
  EXPECT_EQ(model["lines"].size(), 1U);
  EXPECT_EQ(model["diagnostics"].size(), 1U);
  ASSERT_EQ(model["elements"].size(), 4U);
  EXPECT_EQ(model["elements"][3]["label"], "changed");
  EXPECT_EQ(jsoncpp_string::toString(model["pictures"][0]["elements"]), "[0,3]");
  EXPECT_EQ(jsoncpp_string::toString(model["pictures"][1]["elements"]), "[0,2,3,1]");
}

TEST(ViewerPage, TellsThatItIsOutdatedOrLive) {
  const Json::Value model = ModelOf(viewerPage(Preview(), "broken", true));
  EXPECT_EQ(model["outdated"], "broken");
  EXPECT_TRUE(model["live"].asBool());
}

TEST(ViewerPage, FaultNamesTheFirstCopyOfTheInnermostElement) {
  const Json::Value model = ModelOf(viewerPage(Preview(), "", false));
  const Json::Value& fault = model["diagnostics"][0];
  EXPECT_EQ(fault["element"].asUInt(), 1U);
  EXPECT_EQ(fault["place"], "page.json:2:9");
  EXPECT_EQ(fault["level"], "warning");
}

TEST(ViewerPage, EveryTagOfManyPicturesIsEscaped) {
  ttr::CPreviewModel model;
  for (unsigned pass = 1; pass <= 40; ++pass) {
    model.Add({"9x9", pass, "</a><!b></</<!<!" + std::to_string(pass), {}, {}, {}});
  }
  const std::string text = ModelText(viewerPage(model, "", false));
  EXPECT_EQ(text.find("</"), std::string::npos);
  EXPECT_EQ(text.find("<!"), std::string::npos);
  EXPECT_EQ(ModelOf(viewerPage(model, "", false))["lines"][39], "</a><!b></</<!<!40");
}

TEST(ViewerPage, NothingInTheModelEndsOrBeginsAScript) {
  const std::string page = viewerPage(Preview(), "", false);
  const std::string text = ModelText(page);
  EXPECT_EQ(text.find("</"), std::string::npos);
  EXPECT_EQ(text.find("<!"), std::string::npos);
  for (const char character : text) EXPECT_GE(character, ' ');
  EXPECT_EQ(page.find("<!--MODEL-->"), std::string::npos);
}

}  // namespace
