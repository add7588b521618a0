// Images: copied, shrunk, enlarged, turned, and combined with everything that applies to shapes.
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ground{0.9, 0.8, 0.3, 0.7};
constexpr FillRule nonZero = FillRule::NonZero;

// Neighbouring pixels are unrelated, so that a sample from the wrong place shows.
ImagePixels noise(int width, int height, bool isOpaque) {
  ImagePixels image{.width = width, .height = height, .argb = {}};
  std::mt19937 random(7);
  for (int i = 0; i < width * height; ++i) {
    const std::uint32_t alpha = isOpaque ? 255 : random() % 256;
    const auto channel = [&] { return random() % (alpha + 1); };
    image.argb.push_back(alpha << 24 | channel() << 16 | channel() << 8 | channel());
  }
  return image;
}

CGRect wholeOf(const ImagePixels& image) { return {{0, 0}, {double(image.width), double(image.height)}}; }

struct Share {
  int index;
  double share;
};

// The shares of source pixels along one direction, for a device pixel that shows this part of them.
std::vector<Share> sharesOf(double low, double high, double perPixel, int count) {
  const auto clamped = [count](int i) { return std::clamp(i, 0, count - 1); };
  std::vector<Share> shares;
  if (perPixel <= 1) {
    const double middle = (low + high) / 2 - 0.5, below = std::floor(middle);
    return {{clamped(int(below)), 1 - (middle - below)}, {clamped(int(below) + 1), middle - below}};
  }
  for (int i = int(std::floor(low)); i < int(std::ceil(high)); ++i) {
    shares.push_back({clamped(i), (std::min(high, i + 1.0) - std::max(low, double(i))) / (high - low)});
  }
  return shares;
}

Color blend(const ImagePixels& image, const std::vector<Share>& across, const std::vector<Share>& down) {
  Color sum{.alpha = 0};
  for (const Share& row : down) {
    for (const Share& column : across) {
      const std::uint32_t p = image.argb[std::size_t(row.index * image.width + column.index)];
      const double share = row.share * column.share / 255;
      sum.red += (p >> 16 & 255) * share;
      sum.green += (p >> 8 & 255) * share;
      sum.blue += (p & 255) * share;
      sum.alpha += (p >> 24) * share;
    }
  }
  const double alpha = sum.alpha > 0 ? sum.alpha : 1;
  return {sum.red / alpha, sum.green / alpha, sum.blue / alpha, sum.alpha};
}

// The color that an upright image shows around a point in base space, for device pixels of this size.
std::function<Color(CGPoint)> shownBy(const ImagePixels& image, CGRect source, CGRect place, double scale) {
  return [=](CGPoint p) {
    const double across = source.size.width / place.size.width, down = source.size.height / place.size.height;
    const double half = 0.5 / scale;
    const auto columnAt = [&](double x) {
      return source.origin.x + (std::clamp(x, CGRectGetMinX(place), CGRectGetMaxX(place)) - CGRectGetMinX(place)) * across;
    };
    const auto rowAt = [&](double y) {
      return source.origin.y + (CGRectGetMaxY(place) - std::clamp(y, CGRectGetMinY(place), CGRectGetMaxY(place))) * down;
    };
    return blend(image, sharesOf(columnAt(p.x - half), columnAt(p.x + half), across / scale, image.width),
                 sharesOf(rowAt(p.y + half), rowAt(p.y - half), down / scale, image.height));
  };
}

struct Shown {
  ImagePixels image;
  CGRect source, place;
  double alpha = 1;
};

void expectShown(const Shown& shown) {
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setFillColor(ground);
                     canvas.fillPath(Path::rect({0, 0, 20, 40}), nonZero);
                     canvas.setAlpha(shown.alpha);
                     canvas.drawImage(shown.image, shown.source, shown.place);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(ground, picture.fill(Path::rect({0, 0, 20, 40})));
                     picture.paint(shownBy(shown.image, shown.source, shown.place, picture.scale),
                                   picture.fill(Path::rect(shown.place)), {.alpha = shown.alpha});
                   }});
}

// The image is turned about the middle of the picture.
CGAffineTransform turned(double degrees) {
  const double angle = degrees * 3.14159265358979323846 / 180, c = std::cos(angle), s = std::sin(angle);
  return CGAffineTransform::translation(-20, -20).then({c, s, -s, c, 0, 0}).then(CGAffineTransform::translation(20, 20));
}

}  // namespace

TEST(RasterImage, OnWholePixelsIsCopiedOrBlendedAtOtherScales) {
  for (const bool isOpaque : {true, false}) {
    const ImagePixels image = noise(21, 15, isOpaque);
    expectShown({image, wholeOf(image), {{7, 11}, {21, 15}}});
  }
}

TEST(RasterImage, OnWholePixelsTakesTheAlphaOfTheState) {
  const ImagePixels image = noise(21, 15, true);
  expectShown({image, wholeOf(image), {{7, 11}, {21, 15}}, 0.4});
}

TEST(RasterImage, BetweenPixelsCoversItsEdgesPartly) {
  for (const bool isOpaque : {true, false}) {
    const ImagePixels image = noise(6, 5, isOpaque);
    expectShown({image, wholeOf(image), {{5.3, 6.2}, {27.1, 25.6}}});
  }
}

TEST(RasterImage, ShrunkIsTheAverageOfWhatLiesUnderAPixel) {
  for (const int side : {83, 200, 411}) {
    const ImagePixels image = noise(side, side - 7, false);
    expectShown({image, wholeOf(image), {{5.3, 6.2}, {27.1, 25.6}}});
  }
}

TEST(RasterImage, StretchedOneWayAndShrunkTheOther) {
  const ImagePixels image = noise(7, 150, false);
  expectShown({image, wholeOf(image), {{3, 4}, {32, 30}}});
}

TEST(RasterImage, OfOnePixelIsUniform) {
  const ImagePixels image = noise(1, 1, false);
  expectShown({image, wholeOf(image), {{5.3, 6.2}, {27.1, 25.6}}});
}

TEST(RasterImage, PartOfAnImage) {
  const ImagePixels image = noise(12, 12, false);
  expectShown({image, {{2.5, 3}, {6, 5.25}}, {{5, 6}, {27, 25}}});
}

TEST(RasterImage, OpaquePartBesideTransparentPixelsLetsTheGroundThrough) {
  ImagePixels image{.width = 4, .height = 1, .argb = {0, 0xff000000, 0xff000000, 0xff000000}};
  auto bitmap = Bitmap::make(30, 4);
  bitmap->clear(0xffffffff);
  RasterCanvas(*bitmap).drawImage(image, {{1, 0}, {3, 1}}, {{0, 0}, {30, 4}});
  EXPECT_EQ(bitmap->pixel(0, 2), 0xff737373);  // nine twentieths of the transparent pixel
  EXPECT_EQ(bitmap->pixel(20, 2), 0xff000000);
}

TEST(RasterImage, ReducedToLessThanAPixelIsItsMean) {
  const ImagePixels image = noise(500, 300, false);
  expectShown({image, wholeOf(image), {{5.25, 6.25}, {0.3, 0.4}}});
}

TEST(RasterImage, OfThousandsOfRowsKeepsItsColor) {
  for (const int rows : {258, 600, 3000}) {
    const ImagePixels image{
        .width = 5, .height = rows, .argb = std::vector<std::uint32_t>(5 * std::size_t(rows), 0xffffffff)};
    Bitmap bitmap = *Bitmap::make(5, 2);
    RasterCanvas(bitmap).drawImage(image, wholeOf(image), {{0, 0}, {5, 2}});
    for (int x = 0; x < 5; ++x) EXPECT_EQ(bitmap.pixel(x, 1), 0xffffffffu) << rows << " rows, column " << x;
  }
}

TEST(RasterImage, FlippedByTheTransform) {
  const ImagePixels image = noise(9, 7, false);
  ImagePixels mirrored = image;
  std::reverse(mirrored.argb.begin(), mirrored.argb.end());
  const CGRect place{{5.3, 6.2}, {27.1, 25.6}}, other{{40 - 5.3 - 27.1, 40 - 6.2 - 25.6}, place.size};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.concat({-1, 0, 0, -1, 40, 40});
                     canvas.drawImage(image, wholeOf(image), place);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(shownBy(mirrored, wholeOf(image), other, picture.scale), picture.fill(Path::rect(other)));
                   }});
}

TEST(RasterImage, TurnedHasTheEdgesOfItsRectangle) {
  const ImagePixels white{.width = 2, .height = 2, .argb = {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}};
  const CGRect place{{8, 8}, {24, 24}};
  for (const double degrees : {30.0, 90.0, 211.0}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.concat(turned(degrees));
                       canvas.drawImage(white, wholeOf(white), place);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint({1, 1, 1, 1}, picture.fill(Path::rect(place), nonZero, turned(degrees)));
                     }});
  }
}

TEST(RasterImage, TurnedAndEnlargedBlendsTheFourNearest) {
  const ImagePixels image = noise(5, 4, false);
  const CGRect place{{8, 10}, {25, 20}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.concat(turned(30));
                     canvas.drawImage(image, wholeOf(image), place);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const CGAffineTransform back = *turned(30).inverted();
                     const auto colorAt = [&](CGPoint p) {
                       const CGPoint q = back.apply(p);
                       const double x = (q.x - 8) / 5, y = (30 - q.y) / 5;
                       return blend(image, sharesOf(x, x, 1, 5), sharesOf(y, y, 1, 4));
                     };
                     picture.paint(colorAt, picture.fill(Path::rect(place), nonZero, turned(30)));
                   }});
}

TEST(RasterImage, TurnedAndShrunkToAnEighthIsAveraged) {
  ImagePixels pattern{.width = 240, .height = 240, .argb = {}};
  for (int i = 0; i < 240 * 240; ++i) pattern.argb.push_back((i % 240 + i / 240) % 2 ? 0xffffffff : 0xff000000);
  const CGRect place{{5, 5}, {30, 30}};
  auto bitmap = Bitmap::make(40, 40);
  RasterCanvas canvas(*bitmap);
  canvas.concat(turned(30));
  canvas.drawImage(pattern, wholeOf(pattern), place);
  ReferencePicture picture(40, 1);
  picture.paint({0.5, 0.5, 0.5, 1}, picture.fill(Path::rect(place), nonZero, turned(30)));
  EXPECT_EQ(picture.difference(*bitmap), "");
}

TEST(RasterImage, TurnedAndShrunkStripesAsWideAsHalfAPixelAreAveraged) {
  ImagePixels stripes{.width = 240, .height = 240, .argb = {}};
  for (int i = 0; i < 240 * 240; ++i) stripes.argb.push_back(i % 240 / 4 % 2 ? 0xffffffff : 0xff000000);
  auto bitmap = Bitmap::make(40, 40);
  RasterCanvas canvas(*bitmap);
  canvas.concat(turned(30));
  canvas.drawImage(stripes, wholeOf(stripes), {{5, 5}, {30, 30}});
  for (int y = 14; y < 26; ++y) {
    for (int x = 14; x < 26; ++x) ASSERT_NEAR(int(bitmap->pixel(x, y) & 255), 128, 2) << x << ", " << y;
  }
}

TEST(RasterImage, TurnedAndShrunkInAClipIsTheSameAsWithoutIt) {
  ImagePixels ramp{.width = 240, .height = 240, .argb = {}};
  for (int i = 0; i < 240 * 240; ++i) ramp.argb.push_back(0xff000000 | unsigned(i % 240) << 8 | unsigned(i / 240));
  auto bitmap = Bitmap::make(40, 40), clipped = Bitmap::make(40, 40);
  for (Bitmap* picture : {&*bitmap, &*clipped}) {
    RasterCanvas canvas(*picture);
    if (picture == &*clipped) canvas.clipRect({14, 14, 12, 12});
    canvas.concat(turned(30));
    canvas.drawImage(ramp, wholeOf(ramp), {{5, 5}, {30, 30}});
  }
  for (int y = 14; y < 26; ++y) {
    for (int x = 14; x < 26; ++x) {
      const std::uint32_t whole = bitmap->pixel(x, y), part = clipped->pixel(x, y);
      ASSERT_NEAR(int(whole >> 8 & 255), int(part >> 8 & 255), 1) << x << ", " << y;
      ASSERT_NEAR(int(whole & 255), int(part & 255), 1) << x << ", " << y;
    }
  }
}

TEST(RasterImage, GoesThroughClipsLayersAndBlendModesAsAShapeDoes) {
  const ImagePixels image = noise(6, 5, false);
  const CGRect place{{5.3, 6.2}, {27.1, 25.6}};
  const Path disc = Path::oval({9.3, 8.2, 23.4, 24.1});
  for (const BlendMode mode : {BlendMode::Normal, BlendMode::Copy, BlendMode::SourceIn, BlendMode::DestinationAtop}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setFillColor(ground);
                       canvas.fillPath(Path::rect({0, 0, 20, 40}), nonZero);
                       canvas.clipPath(disc, nonZero);
                       canvas.setBlendMode(mode);
                       canvas.drawImage(image, wholeOf(image), place);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint(ground, picture.fill(Path::rect({0, 0, 20, 40})));
                       const Coverage clip = picture.fill(disc);
                       picture.paint(shownBy(image, wholeOf(image), place, picture.scale), picture.fill(Path::rect(place)),
                                     {.mode = mode, .clip = &clip});
                     }});
  }
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setAlpha(0.6);
                     canvas.beginTransparencyLayer();
                     canvas.setFillColor(ground);
                     canvas.fillPath(disc, nonZero);
                     canvas.drawImage(image, wholeOf(image), place);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     ReferencePicture layer(40, picture.scale);
                     layer.paint(ground, layer.fill(disc));
                     layer.paint(shownBy(image, wholeOf(image), place, picture.scale), layer.fill(Path::rect(place)));
                     picture.paint(layer, {.alpha = 0.6});
                   }});
}

TEST(RasterImage, CastsTheShadowOfWhatItShows) {
  // The right half of the image is transparent.
  ImagePixels image{.width = 20, .height = 20, .argb = {}};
  for (int i = 0; i < 400; ++i) image.argb.push_back(i % 20 < 10 ? 0xff4080c0 : 0);
  const Shadow shadow{{3, -4}, 4, Color{0.2, 0, 0.3, 0.7}};
  const Path left = Path::rect({8, 12, 10, 20});
  auto bitmap = Bitmap::make(40, 40);
  RasterCanvas canvas(*bitmap);
  canvas.setShadow(shadow);
  canvas.drawImage(image, wholeOf(image), {{8, 12}, {20, 20}});
  ReferencePicture picture(40, 1);
  const auto region = [&](const CGAffineTransform& toDevice) { return Region::filled(left, nonZero, toDevice); };
  picture.paint(*shadow.color, picture.shadow(region, shadow));
  picture.paint({0x40 / 255.0, 0x80 / 255.0, 0xc0 / 255.0, 1}, picture.fill(left));
  EXPECT_EQ(picture.difference(*bitmap), "");
}

}  // namespace tessaluna::backend::raster::test
