#include <vector>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"

namespace tessaluna::backend::raster::test {

TEST(Bitmap, StartsTransparent) {
  std::optional<Bitmap> bitmap = Bitmap::make(5, 3);
  ASSERT_TRUE(bitmap);
  EXPECT_EQ(bitmap->width(), 5);
  EXPECT_EQ(bitmap->height(), 3);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 5; ++x) EXPECT_EQ(bitmap->pixel(x, y), 0u);
  }
}

TEST(Bitmap, AbsentForASizeThatIsNotPositive) {
  EXPECT_FALSE(Bitmap::make(0, 5));
  EXPECT_FALSE(Bitmap::make(5, 0));
  EXPECT_FALSE(Bitmap::make(-5, 5));
}

TEST(Bitmap, AbsentForASizeTooLargeForMemory) {
  EXPECT_FALSE(Bitmap::make(32768, 1));
  EXPECT_FALSE(Bitmap::make(1, 1 << 30));
  EXPECT_FALSE(Bitmap::make(30000, 30000));
  EXPECT_FALSE(Bitmap::make(2147483647, 2147483647));
}

TEST(Bitmap, BorrowsRowsThatLieApart) {
  std::vector<std::uint32_t> pixels(6 * 4, 0x12345678);
  std::optional<Bitmap> bitmap = Bitmap::borrow(pixels.data(), 4, 4, 6 * 4);
  ASSERT_TRUE(bitmap);
  RasterCanvas canvas(*bitmap);
  canvas.fillPath(Path::rect({-10, -10, 40, 40}), FillRule::NonZero);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    EXPECT_EQ(pixels[i], i % 6 < 4 ? 0xff000000 : 0x12345678) << "pixel " << i;
  }
}

TEST(Bitmap, AbsentForABorrowedRowThatIsTooShort) {
  std::vector<std::uint32_t> pixels(16);
  EXPECT_FALSE(Bitmap::borrow(pixels.data(), 4, 4, 12));
  EXPECT_FALSE(Bitmap::borrow(pixels.data(), 4, 4, 18));
  EXPECT_FALSE(Bitmap::borrow(nullptr, 4, 4, 16));
}

TEST(Bitmap, RowZeroIsTheTopRow) {
  std::optional<Bitmap> bitmap = Bitmap::make(4, 4);
  RasterCanvas canvas(*bitmap);
  canvas.setFillColor({1, 0, 0, 1});
  canvas.fillPath(Path::rect({0, 0, 4, 1}), FillRule::NonZero);
  EXPECT_EQ(bitmap->pixel(0, 3), 0xffff0000);
  EXPECT_EQ(bitmap->pixel(0, 0), 0u);
}

TEST(RasterView, OriginIsTheLowerLeftCorner) {
  std::optional<Bitmap> bitmap = Bitmap::make(8, 8);
  RasterCanvas canvas(*bitmap, {.scale = 2, .origin = {10, 20}});
  canvas.fillPath(Path::rect({11, 21, 1, 2}), FillRule::NonZero);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 8; ++x) {
      const bool isInside = x >= 2 && x < 4 && y >= 2 && y < 6;
      EXPECT_EQ(bitmap->pixel(x, y), isInside ? 0xff000000 : 0u) << x << ", " << y;
    }
  }
}

TEST(RasterView, BeginningOnAnotherBitmapForgetsTheState) {
  std::optional<Bitmap> first = Bitmap::make(8, 8), second = Bitmap::make(8, 8);
  RasterCanvas canvas(*first);
  canvas.clipRect({0, 0, 2, 2});
  canvas.setFillColor({1, 0, 0, 1});
  canvas.beginTransparencyLayer();
  canvas.begin(*second);
  canvas.fillPath(Path::rect({0, 0, 8, 8}), FillRule::NonZero);
  EXPECT_EQ(first->pixel(0, 7), 0u);
  EXPECT_EQ(second->pixel(7, 0), 0xff000000);
}

}  // namespace tessaluna::backend::raster::test
