#include "tessaluna/platform/graphics/reducedPixels.h"

#include <gtest/gtest.h>

namespace tessaluna::platform {
namespace {

backend::ImagePixels grays(int width, int height, const std::vector<int>& values) {
  backend::ImagePixels picture{.width = width, .height = height, .argb = {}, .isOpaque = true};
  for (const int value : values) picture.argb.push_back(0xFF000000u | static_cast<unsigned>(value * 0x10101));
  return picture;
}

TEST(reducedPixels, EachIsTheAverageOfThoseThatItCovers) {
  const auto reduced = reducedPixels(grays(4, 2, {0, 10, 20, 30, 40, 50, 60, 70}), 2, 1);
  EXPECT_EQ(reduced.argb, grays(2, 1, {25, 45}).argb);
  EXPECT_TRUE(reduced.isOpaque);
}

TEST(reducedPixels, APixelThatIsCutCountsByItsParts) {
  EXPECT_EQ(reducedPixels(grays(3, 1, {0, 90, 210}), 2, 1).argb, grays(2, 1, {30, 170}).argb);
  EXPECT_EQ(reducedPixels(grays(1, 3, {0, 90, 210}), 1, 2).argb, grays(1, 2, {30, 170}).argb);
}

TEST(reducedPixels, ChannelsAreAveragedApart) {
  const backend::ImagePixels picture{.width = 2, .height = 1, .argb = {0x80402000, 0x00000080}, .isOpaque = false};
  const auto reduced = reducedPixels(picture, 1, 1);
  EXPECT_EQ(reduced.argb, std::vector<std::uint32_t>{0x40201040});
  EXPECT_FALSE(reduced.isOpaque);
}

TEST(reducedPixels, TheSizeStaysWithinThePictures) {
  const auto picture = grays(2, 2, {1, 2, 3, 4});
  EXPECT_EQ(reducedPixels(picture, 5, 9).argb, picture.argb);
  EXPECT_EQ(reducedPixels(picture, 0, -1).argb.size(), 1u);
}

TEST(reducedPixels, OneColorStaysThatAtAnySize) {
  const auto picture = grays(97, 61, std::vector<int>(97 * 61, 200));
  for (const int size : {1, 7, 31, 60, 61})
    for (const std::uint32_t pixel : reducedPixels(picture, size, size).argb) ASSERT_EQ(pixel, 0xFFC8C8C8u) << size;
}

}  // namespace
}  // namespace tessaluna::platform
