#include "preview/image_format.h"

#include <gtest/gtest.h>

#include "tool/support/image_bytes.h"

namespace {

using ttr::isWellFormedImage;

TEST(ImageFormat, IsToldFromTheFirstBytes) {
  EXPECT_EQ(ttr::mediaType(ttr::PngOf(1)), "image/png");
  EXPECT_EQ(ttr::mediaType(ttr::JpegOf(1)), "image/jpeg");
  EXPECT_EQ(ttr::mediaType("BM"), "");
  EXPECT_EQ(ttr::mediaType(""), "");
}

TEST(ImageFormat, ImagesHaveASize) {
  EXPECT_TRUE(isWellFormedImage(ttr::PngOf(1)));
  EXPECT_FALSE(isWellFormedImage(ttr::PngOf(0)));
  EXPECT_TRUE(isWellFormedImage(ttr::JpegOf(1)));
  EXPECT_FALSE(isWellFormedImage(ttr::JpegOf(0)));
}

TEST(ImageFormat, BeginningsAreNotWellFormed) {
  for (const std::string& image : {ttr::PngOf(1), ttr::JpegOf(1)}) {
    for (std::size_t size = 0; size < image.size(); ++size) {
      EXPECT_FALSE(isWellFormedImage(image.substr(0, size))) << size;
    }
  }
}

TEST(ImageFormat, PngIsChunksInOrder) {
  const std::string png = ttr::PngOf(1);
  const std::string signature = png.substr(0, 8);
  const std::string header = png.substr(8, 25);
  const std::string pixels = ttr::PngChunk("IDAT", "rest");
  const std::string end = ttr::PngChunk("IEND", "");
  EXPECT_TRUE(isWellFormedImage(signature + header + ttr::PngChunk("tEXt", "x") + pixels + end));
  EXPECT_FALSE(isWellFormedImage(signature + header + end));
  EXPECT_FALSE(isWellFormedImage(signature + pixels + end));
  EXPECT_FALSE(isWellFormedImage(signature + header + header + pixels + end));
  EXPECT_FALSE(isWellFormedImage(signature + header + "\xFF\xFF\xFF\xFFIDAT" + pixels + end));
  EXPECT_FALSE(isWellFormedImage(signature + "and no more than that"));
}

TEST(ImageFormat, JpegIsSegments) {
  const std::string jpeg = ttr::JpegOf(1);
  const std::string fill = "\xFF\xFF";
  const std::string table("\xFF\xC4\0\3x", 5);
  EXPECT_TRUE(isWellFormedImage(jpeg.substr(0, 2) + table + fill + jpeg.substr(2)));
  EXPECT_FALSE(isWellFormedImage(jpeg.substr(0, 2) + table + jpeg.substr(12)));
  EXPECT_FALSE(
      isWellFormedImage(jpeg.substr(0, 2) + std::string("\xFF\xE0\0\1", 4) + jpeg.substr(2)));
}

}  // namespace
