// Shapes with upright sides, whose rows are equal for long stretches: each row is right, whatever else crosses some of them.
#include <utility>

#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ink{0.1, 0.3, 0.8, 1}, glass{0.9, 0.2, 0.1, 0.5};

using Corners = std::initializer_list<CGPoint>;

Path shapeOf(std::initializer_list<Corners> rings) {
  Path path;
  for (const Corners& corners : rings) {
    bool isFirst = true;
    for (const CGPoint& p : corners) std::exchange(isFirst, false) ? path.moveTo(p) : path.lineTo(p);
    path.close();
  }
  return path;
}

// Draws three times, since the canvas remembers what it sees twice.
void expectFills(const Path& path, FillRule rule = FillRule::NonZero) {
  for (const Color& color : {ink, glass}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setFillColor(color);
                       for (int i = 0; i < 3; ++i) canvas.fillPath(path, rule);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       for (int i = 0; i < 3; ++i) picture.paint(color, picture.fill(path, rule));
                     }});
  }
}

const Corners leftBar{{5.3, 4.2}, {14.7, 4.2}, {14.7, 35.6}, {5.3, 35.6}};
const Corners rightBar{{20.1, 7.5}, {33.4, 7.5}, {33.4, 31.9}, {20.1, 31.9}};

}  // namespace

TEST(RasterUprightSides, BarsBesideEachOther) { expectFills(shapeOf({leftBar, rightBar})); }

TEST(RasterUprightSides, BarsThatOverlap) {
  const Corners across{{10.2, 11.5}, {25.4, 11.5}, {25.4, 25.5}, {10.2, 25.5}};
  for (const FillRule rule : {FillRule::NonZero, FillRule::EvenOdd}) expectFills(shapeOf({leftBar, across, rightBar}), rule);
}

TEST(RasterUprightSides, AHoleInABar) {
  expectFills(shapeOf({{{4.5, 3}, {30.5, 3}, {30.5, 37}, {4.5, 37}}, {{9.2, 9.9}, {9.2, 30.1}, {17.3, 30.1}, {17.3, 9.9}}}));
}

TEST(RasterUprightSides, ASlantCrossesSomeOfTheRows) {
  expectFills(shapeOf({leftBar, {{12.3, 15.1}, {38.2, 18.7}, {36.5, 22.3}}}));
  expectFills(shapeOf({leftBar, {{22.3, 15.1}, {38.2, 18.7}, {36.5, 22.3}}}));
}

TEST(RasterUprightSides, MoreBarsThanAreKeptApart) {
  Path path;
  for (int i = 0; i < 40; ++i) path.append(Path::rect({i * 0.93 + 1.2, 3.3 + 0.07 * i, 0.6, 30.2}));
  expectFills(path);
}

TEST(RasterUprightSides, RoundedRectangleFilledWithAGradient) {
  const Path path = Path::roundedRect({3.4, 4.1, 31.3, 30.7}, {6, 6});
  const std::vector<GradientStop> stops{{0, {1, 0, 0, 1}}, {1, {0, 0, 1, 1}}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.fillGradient(path, FillRule::NonZero, {.stops = stops, .start = {0, 0}, .end = {40, 0}});
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const auto colorAt = [](CGPoint p) { return Color{1 - p.x / 40, 0, p.x / 40, 1}; };
                     picture.paint(colorAt, picture.fill(path));
                   }});
}

TEST(RasterUprightSides, RoundedRectangleInAClipOfAnotherShape) {
  const Path path = Path::roundedRect({3.4, 4.1, 31.3, 30.7}, {6, 6});
  const Path clip = shapeOf({{{2, 12}, {36, 5}, {30, 38}}});
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.clipPath(clip, FillRule::NonZero);
                     canvas.setFillColor(ink);
                     for (int i = 0; i < 3; ++i) canvas.fillPath(path, FillRule::NonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const Coverage clipped = picture.fill(clip);
                     for (int i = 0; i < 3; ++i) picture.paint(ink, picture.fill(path), {.clip = &clipped});
                   }});
}

TEST(RasterUprightSides, BarsThatAClipCutsAtTheLeft) {
  const CGRect clip{{9, 6}, {20, 30}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.clipRect(clip);
                     canvas.setFillColor(ink);
                     canvas.fillPath(shapeOf({leftBar, rightBar}), FillRule::NonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const Coverage clipped = picture.fill(Path::rect(clip));
                     picture.paint(ink, picture.fill(shapeOf({leftBar, rightBar})), {.clip = &clipped});
                   }});
}

TEST(RasterUprightSides, BarsInClipsThatCutRows) {
  const Path bars = shapeOf({leftBar, rightBar});
  const Path clips[] = {Path::rect({7.3, 9.4, 21.1, 17.3}), Path::rect({7.3, 9.4, 21.1, 1.3}),
                        Path::rect({7.3, 9.4, 21.1, 0.2}), Path::oval({3, 6, 33, 29})};
  for (const Path& clip : clips) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.clipPath(clip, FillRule::NonZero);
                       canvas.setFillColor(glass);
                       canvas.fillPath(bars, FillRule::NonZero);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       const Coverage covered = picture.fill(clip);
                       picture.paint(glass, picture.fill(bars), {.clip = &covered});
                     }});
  }
}

}  // namespace tessaluna::backend::raster::test
