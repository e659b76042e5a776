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
  preview.pictures = {picture, picture};
  preview.pictures[1].pass = 2;
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
  EXPECT_EQ(model["pictures"][0]["svg"], "<svg><!-- x --></svg>");
  EXPECT_TRUE(model["pictures"][0]["elements"][0]["parent"].isNull());
  EXPECT_EQ(model["pictures"][0]["elements"][1]["parent"].asUInt(), 0U);
}

TEST(ViewerPage, TellsThatItIsOutdatedOrLive) {
  const Json::Value model = ModelOf(viewerPage(Preview(), "broken", true));
  EXPECT_EQ(model["outdated"], "broken");
  EXPECT_TRUE(model["live"].asBool());
}

TEST(ViewerPage, FaultNamesTheFirstCopyOfTheInnermostElement) {
  const Json::Value model = ModelOf(viewerPage(Preview(), "", false));
  const Json::Value& fault = model["pictures"][0]["diagnostics"][0];
  EXPECT_EQ(fault["element"].asUInt(), 1U);
  EXPECT_EQ(fault["place"], "page.json:2:9");
  EXPECT_EQ(fault["level"], "warning");
}

TEST(ViewerPage, EveryTagOfManyPicturesIsEscaped) {
  ttr::CPreviewModel model = Preview();
  model.pictures[0].svg = "</a><!b></</<!<!";
  model.pictures.resize(40, model.pictures[0]);
  const std::string text = ModelText(viewerPage(model, "", false));
  EXPECT_EQ(text.find("</"), std::string::npos);
  EXPECT_EQ(text.find("<!"), std::string::npos);
  EXPECT_EQ(ModelOf(viewerPage(model, "", false))["pictures"][39]["svg"], model.pictures[0].svg);
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
