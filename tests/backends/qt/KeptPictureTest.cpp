#include "tessaluna/backends/qt/KeptPicture.h"

#include <gtest/gtest.h>

#include <array>

namespace tessaluna::backend::qt {

namespace {

// Paints all of the picture in opaque red; what is reported to have changed.
QRegion fill(KeptPicture& picture) {
  const std::array<CGRect, 1> all{CGRect{{}, picture.size()}};
  return picture.paint(all, [&](Canvas& canvas) {
    canvas.setFillColor({1, 0, 0, 1});
    canvas.fillPath(Path::rect({{}, {1000, 1000}}), FillRule::NonZero);
  });
}

}  // namespace

TEST(KeptPicture, HasWhatWasPaintedUntilItGetsAnotherSizeOrScale) {
  KeptPicture picture;
  EXPECT_TRUE(picture.setSize({20, 10}, 1));
  EXPECT_EQ(picture.image().pixelColor(3, 3).alpha(), 0);
  EXPECT_EQ(fill(picture), QRegion(0, 0, 20, 10));
  EXPECT_FALSE(picture.setSize({20, 10}, 1));
  EXPECT_EQ(picture.image().pixelColor(3, 3), QColor(Qt::red));
  EXPECT_TRUE(picture.setSize({20, 10}, 2));
  EXPECT_EQ(picture.image().size(), QSize(40, 20));
  EXPECT_EQ(picture.image().pixelColor(3, 3).alpha(), 0);
  EXPECT_TRUE(picture.setSize({30, 10}, 2));
  EXPECT_EQ(picture.image().size(), QSize(60, 20));
}

TEST(KeptPicture, IsNoneWhereASideIsNothingOrTooLongForMemory) {
  KeptPicture picture;
  for (const CGSize size :
       {CGSize{0, 10}, CGSize{10, 0}, CGSize{-5, 10}, CGSize{10, -5}, CGSize{1e6, 10}, CGSize{10, 1e6}}) {
    picture.setSize({10, 10}, 1);
    EXPECT_TRUE(picture.setSize(size, 1));
    EXPECT_TRUE(picture.image().isNull()) << size.width << " x " << size.height;
    EXPECT_TRUE(fill(picture).isEmpty());
    EXPECT_FALSE(picture.completeEdges());
  }
}

TEST(KeptPicture, PixelsThatItsSizeCoversInPartBecomeLikeThoseBesideThem) {
  KeptPicture picture;
  for (const CGSize size : {CGSize{20, 10}, CGSize{20.3, 10}, CGSize{20, 10.3}, CGSize{20.3, 10.3}}) {
    picture.setSize(size, 1);
    fill(picture);
    EXPECT_EQ(picture.completeEdges(), size != CGSize({20, 10}));
    const QImage& image = picture.image();
    EXPECT_EQ(image.pixelColor(image.width() - 1, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
  }
  // There is nothing beside them.
  picture.setSize({0.3, 10}, 1);
  EXPECT_FALSE(picture.completeEdges());
  picture.setSize({10, 0.3}, 1);
  EXPECT_FALSE(picture.completeEdges());
}

}  // namespace tessaluna::backend::qt
