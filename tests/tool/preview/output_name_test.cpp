#include "preview/output_name.h"

#include <gtest/gtest.h>

#include "tool_error.h"

namespace {

using ttr::previewFormat;

TEST(OutputName, EndingTellsTheFormat) {
  EXPECT_EQ(previewFormat("a.svg", ""), ttr::formatSvg);
  EXPECT_EQ(previewFormat("a.PNG", ""), ttr::formatPng);
  EXPECT_EQ(previewFormat("dir.svg/a.html", ""), ttr::formatHtml);
  EXPECT_EQ(previewFormat("a.png", "svg"), ttr::formatPng);
  EXPECT_EQ(previewFormat("-", "svg"), ttr::formatSvg);
  EXPECT_EQ(previewFormat("a", "html"), ttr::formatHtml);
  EXPECT_THROW(previewFormat("-", ""), ttr::CToolError);
  EXPECT_THROW(previewFormat("a.pdf", ""), ttr::CToolError);
}

TEST(OutputName, PlaceholdersAreReplaced) {
  EXPECT_EQ(ttr::outputName("a-{size}-{pass}-{size}.png", "800x480", 12),
            "a-800x480-12-800x480.png");
  EXPECT_EQ(ttr::outputName("{SIZE}.png", "800x480", 1), "{SIZE}.png");
}

std::string Refusal(const ttr::CPreviewOptions& options) {
  try {
    checkOutputs(options);
  } catch (const ttr::CToolError& error) {
    return error.what();
  }
  return "";
}

TEST(OutputName, SeveralPicturesNeedPlaceholders) {
  ttr::CPreviewOptions options;
  options.sizes = {"1x1", "2x2"};
  options.outputs = {"a.png"};
  EXPECT_EQ(Refusal(options),
            "a.png: there are several sizes: the name needs {size}, as in page-{size}.png");
  options.outputs = {"a-{size}.png", "a.html"};
  EXPECT_EQ(Refusal(options), "");
  options.passes = 2;
  EXPECT_EQ(Refusal(options),
            "a-{size}.png: there are several passes: the name needs {pass}, as in page-{pass}.png");
  options.outputs = {"a-{size}-{pass}.svg"};
  EXPECT_EQ(Refusal(options), "");
}

TEST(OutputName, HtmlHoldsAllPictures) {
  ttr::CPreviewOptions options;
  options.sizes = {"1x1"};
  options.outputs = {"a-{size}.html"};
  EXPECT_EQ(Refusal(options),
            "a-{size}.html: an HTML file holds all sizes and passes: no {size}, no {pass}");
}

TEST(OutputName, StandardOutputIsForOne) {
  ttr::CPreviewOptions options;
  options.sizes = {"1x1"};
  options.format = "svg";
  options.outputs = {"-"};
  EXPECT_EQ(Refusal(options), "");
  options.outputs = {"-", "a.svg"};
  EXPECT_NE(Refusal(options), "");
}

}  // namespace
