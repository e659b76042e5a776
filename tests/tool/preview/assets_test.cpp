#include "preview/assets.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tool/support/image_bytes.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace {

using ttr::CAssets;
using ttr::CPageFolder;

const std::string png = ttr::PngOf(1);
const std::string pngUri =
    "data:image/"
    "png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAAAtY3JjAAAABElEQVRyZXN0LWNyYwAAAABJRU5ELWNyYw="
    "=";

TEST(Assets, NamesOfImagesEndSo) {
  for (const char* name : {"a.png", "a.jpg", "a.jpeg", "a.bmp", "icons/a.PNG"}) {
    EXPECT_TRUE(ttr::isImageName(name)) << name;
  }
  for (const char* name : {".png", "a.ttf", "a.png.txt", "png", ""}) {
    EXPECT_FALSE(ttr::isImageName(name)) << name;
  }
}

TEST(Assets, ImageBecomesAUri) {
  const CPageFolder folder({{"icons/a.png", png}, {"b.jpg", ttr::JpegOf(1)}});
  CAssets assets(folder.path());
  EXPECT_EQ(assets.Find("icons/a.png").dataUri, pngUri);
  EXPECT_EQ(assets.Find("b.jpg").dataUri, "data:image/jpeg;base64,/9j/wAAICAABAAEA/9oAAg==");
}

TEST(Assets, LetterCaseDoesNotMatter) {
  const CPageFolder folder({{"Icons/Free.PNG", png}});
  CAssets assets(folder.path());
  EXPECT_EQ(assets.Find("icons/free.png").dataUri, pngUri);
}

TEST(Assets, ExactNameWins) {
  const CPageFolder folder({{"A.png", ttr::JpegOf(1)}, {"a.png", png}});
  CAssets assets(folder.path());
  EXPECT_EQ(assets.Find("a.png").dataUri, pngUri);
}

TEST(Assets, NamesThatLeadOutAreRefused) {
  const CPageFolder folder({{"in/a.png", png}, {"out.png", png}, {"secret/b.png", png}});
  std::filesystem::create_symlink("../out.png", folder.path() + "/in/link.png");
  std::filesystem::create_directory_symlink("../secret", folder.path() + "/in/dir");
  CAssets assets(folder.path() + "/in");
  for (const std::string& name :
       {std::string("../out.png"), std::string("x/../a.png"), folder.path() + "/in/a.png",
        std::string("link.png"), std::string("dir/b.png")}) {
    EXPECT_EQ(assets.Find(name).dataUri, "") << name;
    EXPECT_EQ(assets.Find(name).reason, "outside of the assets") << name;
  }
  EXPECT_EQ(assets.Find("a.png").dataUri, pngUri);
}

TEST(Assets, WhatIsNoImageIsNotShown) {
  const CPageFolder folder(
      {{"a.png", "text"}, {"b.png", ""}, {"c.png/d", "x"}, {"d.png", png.substr(0, 50)}});
  CAssets assets(folder.path());
  EXPECT_EQ(assets.Find("a.png").reason, "neither PNG nor JPEG");
  EXPECT_EQ(assets.Find("b.png").reason, "no image");
  EXPECT_EQ(assets.Find("c.png").reason, "no image");
  EXPECT_EQ(assets.Find("d.png").reason, "broken");
  EXPECT_EQ(assets.Find("none.png").reason, "not found");
}

TEST(Assets, TellsThePathsItLookedFor) {
  const CPageFolder folder({{"A.png", png}});
  const std::string directory = std::filesystem::canonical(folder.path()).string();
  CAssets assets(folder.path());
  assets.Find("a.png");
  assets.Find("none.png");
  assets.Find("../x.png");
  EXPECT_EQ(assets.paths(), (std::set<std::string>{directory + "/A.png", directory + "/none.png"}));
}

TEST(Assets, WithoutADirectoryThereIsNone) {
  CAssets assets("");
  EXPECT_EQ(assets.Find("a.png").dataUri, "");
  EXPECT_TRUE(assets.paths().empty());
  EXPECT_THROW(CAssets("/no/such/directory"), ttr::CToolError);
}

}  // namespace
