#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/AlbumArtPlaceholders.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::operationsOf;
using harness::paintedBy;
using harness::recordingOf;
using harness::Subpath;
using harness::subpathsOf;
using harness::windingAt;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using Kit = TessalunaUIKit::AlbumArtPlaceholders;

constexpr CGRect unitFrame{0, 0, 1, 1};

TEST(EmptyAlbumImage, PaintsAPaleSquareWithADashedGrayLine) {
  const Lines lines = recordingOf([] { Kit::drawEmptyAlbumImage({0, 0, 200, 200}); });
  ASSERT_THAT(operationsOf(lines), ElementsAre("setFillColor", "fill", "setStrokeColor", "stroke"));
  EXPECT_EQ(lines[0], R"({"op":"setFillColor","color":[0.927,0.927,0.927,1]})");
  EXPECT_THAT(lines[1], HasSubstr(R"("shape":["roundedRect",12.5,12.5,176,176,10,10])"));
  EXPECT_THAT(lines[2], HasSubstr(R"("named":"lightGrayColor")"));
  EXPECT_THAT(lines[3], HasSubstr(R"("shape":["roundedRect",12.5,12.5,176,176,10,10])"));
  EXPECT_THAT(lines[3], HasSubstr(R"("lineWidth":3,"cap":"butt","join":"miter","miterLimit":10,"dash":[10,2],"phase":0)"));
}

TEST(EmptyAlbumImage, KeepsRadiiLineAndDashesInAFrameOfHalfTheSize) {
  const Lines lines = recordingOf([] { Kit::drawEmptyAlbumImage({0, 0, 100, 100}); });
  EXPECT_THAT(lines.at(3), HasSubstr(R"("shape":["roundedRect",6.5,6.5,88,88,10,10])"));
  EXPECT_THAT(lines.at(3), HasSubstr(R"("lineWidth":3)"));
  EXPECT_THAT(lines.at(3), HasSubstr(R"("dash":[10,2],"phase":0)"));
}

TEST(EmptyAlbumImage, WithoutArgumentsIsMovedByTheOriginOfItsDefaultFrame) {
  const Lines lines = recordingOf([] { Kit::drawEmptyAlbumImage(); });
  EXPECT_THAT(lines.at(1), HasSubstr(R"("shape":["roundedRect",17.5,15.5,176,176,10,10])"));
}

TEST(MissingAlbumArt, PaintsTheSquareThenTheDiscFromItsMiddleOut) {
  const Lines lines = recordingOf([] { Kit::drawMissingAlbumArt(); });
  ASSERT_THAT(operationsOf(lines), ElementsAre("setFillColor", "fill", "setFillColor", "fill", "setStrokeColor", "stroke",
                                               "setFillColor", "fill", "setFillColor", "fill"));
  EXPECT_THAT(lines[0], HasSubstr(R"("named":"lightGrayColor")"));
  EXPECT_THAT(lines[1], HasSubstr(R"("shape":["roundedRect",0,0,200,200,20,20])"));
  EXPECT_THAT(lines[3], HasSubstr(R"("shape":["oval",93,93,14,14])"));
  EXPECT_THAT(lines[5], HasSubstr(R"("lineWidth":1.99,"cap":"round","join":"miter")"));
  for (const int black : {2, 4, 6, 8}) EXPECT_THAT(lines[black], EndsWith(R"(,"color":[0,0,0,1]})"));
}

TEST(MissingAlbumArt, DiscAndGlintsAreThoseOfTheDesign) {
  const auto painted = paintedBy([] { Kit::drawMissingAlbumArt(unitFrame); });
  EXPECT_EQ(harness::listingOf(painted.stroked.at(0)),
            "M (0.5, 1), C (0, 0.5; 0.22385, 1; 0, 0.77615), C (0.5, 0; 0, 0.22385; 0.22385, 0), "
            "C (1, 0.5; 0.77615, 0; 1, 0.22385), C (0.5, 1; 1, 0.77615; 0.77615, 1), Z, "
            "M (0.5, 0.30435), C (0.30435, 0.5; 0.39193, 0.30435; 0.30435, 0.39193), "
            "C (0.5, 0.69565; 0.30435, 0.60807; 0.39193, 0.69565), "
            "C (0.69565, 0.5; 0.60807, 0.69565; 0.69565, 0.60807), "
            "C (0.5, 0.30435; 0.69565, 0.39193; 0.60807, 0.30435), Z");
  EXPECT_EQ(harness::listingOf(painted.filled.at(2)),
            "M (0.69824, 0.6762), C (0.67691, 0.69759; 0.69252, 0.68459; 0.68528, 0.69185), "
            "L (0.78515, 0.82228), C (0.82296, 0.78441; 0.79998, 0.81213; 0.81283, 0.79928), "
            "L (0.69824, 0.6762), Z");
  EXPECT_EQ(harness::listingOf(painted.filled.at(3)),
            "M (0.30176, 0.3238), C (0.32309, 0.30241; 0.30748, 0.31541; 0.31472, 0.30815), "
            "L (0.21485, 0.17772), C (0.17704, 0.21559; 0.20002, 0.18787; 0.18717, 0.20072), "
            "L (0.30176, 0.3238), Z");
}

TEST(MissingAlbumArt, RoundsItsSquareToWholePoints) {
  const Lines below = recordingOf([] { Kit::drawMissingAlbumArt({0, 0, 100.4, 100.5}); });
  EXPECT_THAT(below.at(1), HasSubstr(R"("shape":["roundedRect",0,0,100,101,20,20])"));
  const Lines above = recordingOf([] { Kit::drawMissingAlbumArt({0.3, 0.7, 100.5, 100.4}); });
  EXPECT_THAT(above.at(1), HasSubstr(R"("shape":["roundedRect",0.3,0.7,101,100,20,20])"));
}

TEST(MissingAlbumArt, LineWidthAndRadiusDoNotGrowWithTheFrame) {
  const Lines lines = recordingOf([] { Kit::drawMissingAlbumArt({0, 0, 800, 800}); });
  EXPECT_THAT(lines.at(1), HasSubstr(R"("shape":["roundedRect",0,0,800,800,20,20])"));
  EXPECT_THAT(lines.at(5), HasSubstr(R"("lineWidth":1.99)"));
}

// An expected box is that of the curves, in points of the design, and is met to a fortieth of a point.
void expectBox(const Subpath& subpath, CGRect expected) {
  const CGRect box = subpath.path.bounds();
  EXPECT_NEAR(CGRectGetMinX(box), CGRectGetMinX(expected), 0.025);
  EXPECT_NEAR(CGRectGetMaxX(box), CGRectGetMaxX(expected), 0.025);
  EXPECT_NEAR(CGRectGetMinY(box), CGRectGetMinY(expected), 0.025);
  EXPECT_NEAR(CGRectGetMaxY(box), CGRectGetMaxY(expected), 0.025);
}

CGRect boxAbout(CGPoint center, CGSize size) { return {{center.x - size.width / 2, center.y - size.height / 2}, size}; }

TEST(IconAlbum, IsOneWhiteFillOfSevenSubpaths) {
  const auto painted = paintedBy([] { Kit::drawIconAlbum(); });
  ASSERT_THAT(operationsOf(painted.lines), ElementsAre("setFillColor", "fill"));
  EXPECT_EQ(painted.lines[0], R"({"op":"setFillColor","color":[1,1,1,1]})");
  const auto subpaths = subpathsOf(painted.filled.at(0));
  ASSERT_EQ(subpaths.size(), 7u);
  const double radii[] = {0.44, 0.40333, 0, 0.18333, 0.14667, 0.03667, 0};
  for (int i = 0; i < 7; ++i) {
    SCOPED_TRACE(i);
    EXPECT_TRUE(subpaths[i].isClosed);
    if (radii[i] == 0) continue;
    EXPECT_EQ(subpaths[i].lines, 0);
    EXPECT_EQ(subpaths[i].curves, 4);
    expectBox(subpaths[i], boxAbout({25, 25}, {100 * radii[i], 100 * radii[i]}));
    const CGPoint start = subpaths[i].path.points()[0];
    EXPECT_NEAR(start.x, 25, 1e-9);
    EXPECT_NEAR(start.y, 25 + 50 * radii[i], 1e-9);
  }
  for (const int glint : {2, 6}) {
    EXPECT_EQ(subpaths[glint].lines, 2);
    EXPECT_EQ(subpaths[glint].curves, 2);
  }
  expectBox(subpaths[2], {{32.45, 32.4}, {6.15, 6.2}});
  expectBox(subpaths[6], {{11.4, 11.4}, {6.15, 6.2}});
}

TEST(IconAlbum, HolesAreOpenAndRingsArePainted) {
  const auto painted = paintedBy([] { Kit::drawIconAlbum(); });
  const tessaluna::backend::Path& disc = painted.filled.at(0);
  const CGPoint paint[] = {{25, 46}, {4, 25}, {25, 33.5}, {25, 25}, {35.5, 35.5}, {14.5, 14.5}};
  const CGPoint ground[] = {{25, 40}, {10, 25}, {14.5, 35.5}, {25, 30}, {1, 1}};
  for (const CGPoint point : paint) EXPECT_NE(windingAt(disc, point), 0) << testing::PrintToString(point);
  for (const CGPoint point : ground) EXPECT_EQ(windingAt(disc, point), 0) << testing::PrintToString(point);
}

TEST(IconAlbum, OnAWhiteGroundItShowsNothing) {
  const auto nothing = harness::pixelsOnWhite({50, 50}, [] {});
  EXPECT_TRUE(harness::arePixelsEqual(harness::pixelsOnWhite({50, 50}, [] { Kit::drawIconAlbum(); }), nothing));
}

TEST(IconAlbum, ScalesEachAxisWithTheFrameAndMovesWithItsOrigin) {
  const auto painted = paintedBy([] { Kit::drawIconAlbum({10, 20, 200, 100}); });
  const CGRect box = painted.filled.at(0).bounds();
  EXPECT_NEAR(box.origin.x, 10 + 200 * 0.06, 1e-9);
  EXPECT_NEAR(box.origin.y, 20 + 100 * 0.06, 1e-9);
  EXPECT_NEAR(box.size.width, 176, 1e-9);
  EXPECT_NEAR(box.size.height, 88, 1e-9);
}

struct Dot {
  CGPoint center;
  CGSize size;
  bool isHole;
};

TEST(LoadingAlbumArt, IsOneGrayFillOfEightDotsThatGrowClockwise) {
  const Dot dots[] = {
      {{98.13, 129.26}, {11.35, 11.48}, false},  {{98.13, 129.26}, {4.86, 4.92}, true},
      {{117.59, 121.06}, {12.98, 13.12}, false}, {{78.66, 121.06}, {9.73, 9.84}, false},
      {{117.59, 121.06}, {6.49, 6.56}, true},    {{78.66, 121.06}, {3.24, 3.28}, true},
      {{125.70, 101.39}, {14.60, 14.76}, false}, {{70.56, 101.39}, {8.11, 8.20}, false},
      {{125.70, 101.39}, {8.11, 8.20}, true},    {{70.56, 101.39}, {1.62, 1.64}, true},
      {{117.59, 81.72}, {16.22, 16.39}, false},  {{117.59, 81.72}, {9.73, 9.84}, true},
      {{78.66, 81.72}, {6.49, 6.56}, false},     {{98.13, 73.52}, {17.84, 18.03}, false},
      {{98.13, 73.52}, {11.35, 11.48}, true},
  };
  const auto painted = paintedBy([] { Kit::drawLoadingAlbumArt(); });
  ASSERT_THAT(operationsOf(painted.lines), ElementsAre("setFillColor", "fill"));
  EXPECT_EQ(painted.lines[0], R"({"op":"setFillColor","color":[0.333,0.333,0.333,1]})");
  const tessaluna::backend::Path& ring = painted.filled.at(0);
  const auto subpaths = subpathsOf(ring);
  ASSERT_EQ(subpaths.size(), std::size(dots));
  for (std::size_t i = 0; i < std::size(dots); ++i) {
    SCOPED_TRACE(i);
    const Dot& dot = dots[i];
    EXPECT_EQ(subpaths[i].lines, 0);
    EXPECT_EQ(subpaths[i].curves, 4);
    EXPECT_TRUE(subpaths[i].isClosed);
    EXPECT_EQ(subpaths[i].area < 0, dot.isHole);
    expectBox(subpaths[i], boxAbout(dot.center, dot.size));
    const CGPoint start = subpaths[i].path.points()[0];
    EXPECT_NEAR(start.x, dot.center.x, 0.002);
    EXPECT_NEAR(start.y, dot.center.y + dot.size.height / 2, 0.002);
    // Just inside a hole there is no paint; just inside a dot's rim there is.
    const CGPoint inside{dot.center.x, dot.center.y + dot.size.height / 2 - 0.3};
    EXPECT_EQ(windingAt(ring, inside) == 0, dot.isHole);
  }
}

TEST(LoadingAlbumArt, DrawnTwiceInOneFrameIsTheSamePicture) {
  const auto draw = [] { Kit::drawLoadingAlbumArt({3, 4, 50, 60}); };
  EXPECT_EQ(recordingOf(draw), recordingOf(draw));
}

TEST(AlbumArtPlaceholders, ZeroSizedFramesDrawWithoutFailing) {
  constexpr CGRect nothing{7, 9, 0, 0};
  EXPECT_THAT(recordingOf([&] { Kit::drawEmptyAlbumImage(nothing); }).at(1),
              HasSubstr(R"("shape":["roundedRect",7.5,9.5,0,0,10,10])"));
  EXPECT_THAT(recordingOf([&] { Kit::drawMissingAlbumArt(nothing); }).at(1),
              HasSubstr(R"("shape":["roundedRect",7,9,0,0,20,20])"));
  const auto painted = paintedBy([&] { Kit::drawIconAlbum(nothing); });
  for (const CGPoint point : painted.filled.at(0).points()) EXPECT_EQ(point, (CGPoint{7, 9}));
}

}  // namespace
