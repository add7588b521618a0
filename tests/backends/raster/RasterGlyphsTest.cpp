// Glyphs: kept as masks on the pixel grid if text is upright, filled as shapes if it is not.
#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ground{0.9, 0.8, 0.3, 0.7};
constexpr Color ink{0.1, 0.3, 0.8, 1};
constexpr Color glass{0.7, 0.2, 0.4, 0.6};
constexpr FillRule nonZero = FillRule::NonZero;

// Glyph 1 is a disc that reaches below the baseline, 2 a bar, 3 one larger than any mask, 4 a disc far from its
// origin, 0 blank.
Path outlineOf(std::uint32_t glyph) {
  switch (glyph) {
    case 1: return Path::oval({0.6, -2.3, 9.1, 10.2});
    case 2: return Path::rect({1, 0, 3, 12});
    case 3: return Path::oval({-60, -60, 140, 140});
    case 4: return Path::oval({104, 4, 12, 12});
    default: return {};
  }
}

class Shapes : public Typeface {
 public:
  Path outline(std::uint32_t glyph) const override {
    ++outlines;
    return outlineOf(glyph);
  }
  mutable int outlines = 0;
};

GlyphRun runOf(std::vector<std::uint32_t> glyphs, std::vector<CGPoint> positions) {
  return {.typeface = std::make_shared<Shapes>(), .glyphs = std::move(glyphs), .positions = std::move(positions)};
}

// Two glyphs on whole pixels at every scale.
const CGPoint origin{4, 20};
GlyphRun twoGlyphs() { return runOf({1, 0, 2}, {{0, 0}, {8, 0}, {20, 0}}); }
Path twoOutlines() {
  Path path = Path::oval({4.6, 17.7, 9.1, 10.2});
  path.append(Path::rect({25, 20, 3, 12}));
  return path;
}

void paintGround(RasterCanvas& canvas) {
  canvas.setFillColor(ground);
  canvas.fillPath(Path::rect({0, 0, 40, 24}), nonZero);
}
void paintGround(ReferencePicture& picture) { picture.paint(ground, picture.fill(Path::rect({0, 0, 40, 24}))); }

}  // namespace

TEST(RasterGlyphs, AreDrawnAsFilledOutlines) {
  for (const Color& color : {ink, glass, Color{1, 1, 1, 0.03}}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       paintGround(canvas);
                       canvas.setFillColor(color);
                       canvas.drawGlyphs(twoGlyphs(), origin);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       paintGround(picture);
                       picture.paint(color, picture.fill(twoOutlines()));
                     }});
  }
}

TEST(RasterGlyphs, TakeTheAlphaOfTheState) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     paintGround(canvas);
                     canvas.setFillColor(ink);
                     canvas.setAlpha(0.4);
                     canvas.drawGlyphs(twoGlyphs(), origin);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     paintGround(picture);
                     picture.paint(ink, picture.fill(twoOutlines()), {.alpha = 0.4});
                   }});
}

TEST(RasterGlyphs, AreCutOffByAnyClip) {
  const Path whole = Path::rect({8, 8, 18, 16}), between = Path::rect({8.3, 8.3, 18.4, 15.1});
  for (const Path& clip : {whole, between, Path::oval({6, 12, 24, 16})}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       paintGround(canvas);
                       canvas.clipPath(clip, nonZero);
                       canvas.setFillColor(ink);
                       canvas.drawGlyphs(twoGlyphs(), origin);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       paintGround(picture);
                       const Coverage coverage = picture.fill(clip);
                       picture.paint(ink, picture.fill(twoOutlines()), {.clip = &coverage});
                     }});
  }
}

TEST(RasterGlyphs, AreCutOffByThePicturesEdges) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.setFillColor(ink);
                     canvas.drawGlyphs(runOf({1, 1, 1, 1}, {{-4, 16}, {32, 20}, {12, -4}, {16, 36}}), {0, 0});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     Path all;
                     for (const CGPoint place : {CGPoint{-4, 16}, {32, 20}, {12, -4}, {16, 36}})
                       all.append(Path::oval({place.x + 0.6, place.y - 2.3, 9.1, 10.2}));
                     picture.paint(ink, picture.fill(all));
                   }});
}

TEST(RasterGlyphs, InALayerAreCompositedWithIt) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     paintGround(canvas);
                     canvas.setAlpha(0.5);
                     canvas.beginTransparencyLayer();
                     canvas.setFillColor(ink);
                     canvas.drawGlyphs(twoGlyphs(), origin);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     paintGround(picture);
                     picture.paint(ink, picture.fill(twoOutlines()), {.alpha = 0.5});
                   }});
}

TEST(RasterGlyphs, CastTheShadowOfAllOutlinesTogether) {
  const Shadow shadow{{3, -2}, 4, Color{0, 0, 0, 0.9}};
  const auto filled = [&](const CGAffineTransform& toDevice) { return Region::filled(twoOutlines(), nonZero, toDevice); };
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.setFillColor(ink);
                     canvas.drawGlyphs(twoGlyphs(), origin);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(*shadow.color, picture.shadow(filled, shadow));
                     picture.paint(ink, picture.fill(twoOutlines()));
                   }});
}

TEST(RasterGlyphs, TheShadowOfALayerComesFromItsTextToo) {
  const Shadow shadow{{3, -2}, 4, Color{0, 0, 0, 0.9}};
  const Path square = Path::rect({16, 6, 8, 8});
  Path both = twoOutlines();
  both.append(square);
  const auto filled = [&](const CGAffineTransform& toDevice) { return Region::filled(both, nonZero, toDevice); };
  for (const bool isTextFirst : {true, false}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setShadow(shadow);
                       canvas.beginTransparencyLayer();
                       canvas.setFillColor(ink);
                       if (isTextFirst) canvas.drawGlyphs(twoGlyphs(), origin);
                       canvas.fillPath(square, nonZero);
                       if (!isTextFirst) canvas.drawGlyphs(twoGlyphs(), origin);
                       canvas.endTransparencyLayer();
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint(*shadow.color, picture.shadow(filled, shadow));
                       picture.paint(ink, picture.fill(both));
                     }});
  }
}

TEST(RasterGlyphs, TurnedTextAndTextTooLargeForAMaskAreShapes) {
  const CGAffineTransform turned{0.8, 0.6, -0.6, 0.8, 9, -7};
  expectRight(
      {.draw =
           [&](RasterCanvas& canvas) {
             canvas.concat(turned);
             canvas.setFillColor(ink);
             canvas.drawGlyphs(twoGlyphs(), origin);
           },
       .expect = [&](ReferencePicture& picture) { picture.paint(ink, picture.fill(twoOutlines(), nonZero, turned)); }});
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.setFillColor(glass);
                     canvas.drawGlyphs(runOf({3}, {{1.3, 2.7}}), {0, 0});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(glass, picture.fill(Path::oval({-58.7, -57.3, 140, 140})));
                   }});
}

TEST(RasterGlyphs, OneFarFromItsOriginIsAsExactAsTheOthers) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.setFillColor(ink);
                     canvas.drawGlyphs(runOf({4, 4}, {{-88, 4}, {-100, 12}}), {0, 0});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(ink, picture.fill(Path::oval({16, 8, 12, 12})));
                     picture.paint(ink, picture.fill(Path::oval({4, 16, 12, 12})));
                   }});
}

TEST(RasterGlyphs, OneTooLargeForAMaskLeavesTheOthersOfItsRunPaintedOnce) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.setFillColor(glass);
                     canvas.drawGlyphs(runOf({1, 3}, {{8, 20}, {-76, -76}}), {0, 0});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(glass, picture.fill(Path::oval({8.6, 17.7, 9.1, 10.2})));
                     picture.paint(glass, picture.fill(Path::oval({-136, -136, 140, 140})));
                   }});
}

TEST(RasterGlyphs, LieOnQuartersOfAPixelAcrossAndOnWholeRows) {
  const auto drawn = [](CGPoint place) {
    Bitmap bitmap = std::move(*Bitmap::make(40, 40));
    RasterCanvas canvas(bitmap);
    canvas.drawGlyphs(runOf({1}, {place}), {0, 0});
    return bitmap;
  };
  const auto same = [](const Bitmap& a, const Bitmap& b) {
    for (int y = 0; y < 40; ++y)
      if (!std::equal(a.row(y), a.row(y) + 40, b.row(y))) return false;
    return true;
  };
  EXPECT_TRUE(same(drawn({10.3, 20.4}), drawn({10.25, 20})));
  EXPECT_TRUE(same(drawn({10.9, 19.6}), drawn({10.75, 20})));
  EXPECT_TRUE(same(drawn({10.9999, 20}), drawn({11, 20})));
  EXPECT_FALSE(same(drawn({10.5, 20}), drawn({10.25, 20})));
  EXPECT_FALSE(same(drawn({10, 21}), drawn({10, 20})));
}

TEST(RasterGlyphs, AnOutlineIsRequestedOncePerPlaceOnTheGrid) {
  Bitmap bitmap = std::move(*Bitmap::make(40, 40));
  RasterCanvas canvas(bitmap);
  const auto shapes = std::make_shared<Shapes>();
  for (int i = 0; i < 5; ++i)
    canvas.drawGlyphs({.typeface = shapes, .glyphs = {1, 1}, .positions = {{0, 0}, {8, 0}}}, {double(i), 20});
  EXPECT_EQ(shapes->outlines, 1);
  canvas.drawGlyphs({.typeface = shapes, .glyphs = {1}, .positions = {{0.5, 0}}}, {0, 20});
  EXPECT_EQ(shapes->outlines, 2);
}

TEST(RasterRectangles, OnWholePixelsReplaceWhatIsThereAndOthersBlendAtTheirEdges) {
  for (const Path& rect : {Path::rect({4, 8, 24, 20}), Path::rect({4.3, 8.6, 20.2, 19.7}), Path::rect({-8, -8, 80, 80})}) {
    for (const Color& color : {ink, glass, Color{0, 0, 0, 0}}) {
      for (const BlendMode mode : {BlendMode::Copy, BlendMode::Normal}) {
        expectRight({.draw =
                         [&](RasterCanvas& canvas) {
                           paintGround(canvas);
                           canvas.clipRect({0, 12, 36, 28});
                           canvas.setBlendMode(mode);
                           canvas.setFillColor(color);
                           canvas.fillPath(rect, nonZero);
                         },
                     .expect =
                         [&](ReferencePicture& picture) {
                           paintGround(picture);
                           const Coverage clip = picture.fill(Path::rect({0, 12, 36, 28}));
                           picture.paint(color, picture.fill(rect), {.mode = mode, .clip = &clip});
                         }});
      }
    }
  }
}

TEST(RasterRectangles, InALayerACurvedClipOrWithAShadowTakeNoShortcut) {
  const Path rect = Path::rect({8, 8, 16, 16}), round = Path::oval({4, 4, 18, 22});
  const Shadow shadow{{4, -4}, 3, Color{0, 0, 0, 0.9}};
  const auto filled = [&](const CGAffineTransform& toDevice) { return Region::filled(rect, nonZero, toDevice); };
  for (const BlendMode mode : {BlendMode::Copy, BlendMode::Normal}) {
    SCOPED_TRACE(int(mode));
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       paintGround(canvas);
                       canvas.setBlendMode(mode);
                       canvas.setShadow(shadow);
                       canvas.setFillColor(ink);
                       canvas.fillPath(rect, nonZero);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       paintGround(picture);
                       picture.paint(*shadow.color, picture.shadow(filled, shadow), {.mode = mode});
                       picture.paint(ink, picture.fill(rect), {.mode = mode});
                     }});
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       paintGround(canvas);
                       canvas.setAlpha(0.5);
                       canvas.beginTransparencyLayer();
                       canvas.setBlendMode(mode);
                       canvas.setFillColor(glass);
                       canvas.fillPath(rect, nonZero);
                       canvas.endTransparencyLayer();
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       paintGround(picture);
                       picture.paint(glass, picture.fill(rect), {.alpha = 0.5});
                     }});
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       paintGround(canvas);
                       canvas.clipPath(round, nonZero);
                       canvas.setBlendMode(mode);
                       canvas.setFillColor(glass);
                       canvas.fillPath(rect, nonZero);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       paintGround(picture);
                       const Coverage clip = picture.fill(round);
                       picture.paint(glass, picture.fill(rect), {.mode = mode, .clip = &clip});
                     }});
  }
}

}  // namespace tessaluna::backend::raster::test
