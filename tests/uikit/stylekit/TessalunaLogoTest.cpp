#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/TessalunaLogo.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::paintedBy;
using harness::recordingOf;
using harness::subpathsOf;
using harness::windingAt;
using TessalunaUIKit::TessalunaLogo;

tessaluna::backend::Path drawnWith(CGRect bounds, CGRect dirty = {0, 0, 1, 1}) {
  const auto logo = make<TessalunaLogo>(CGRect{{5, 6}, bounds.size});
  logo->setBoundsOrigin(bounds.origin);
  return paintedBy([&] { logo->drawRect(dirty); }).filled.at(0);
}

constexpr CGRect design{0, 0, 415, 100};

TEST(TessalunaLogo, IsOnePathOfFifteenSubpaths) {
  const auto subpaths = subpathsOf(drawnWith(design));
  int lines = 0, curves = 0;
  for (const auto& subpath : subpaths) {
    EXPECT_TRUE(subpath.isClosed);
    lines += subpath.lines;
    curves += subpath.curves;
  }
  EXPECT_EQ(subpaths.size(), 15u);
  EXPECT_EQ(lines, 29);
  EXPECT_EQ(curves, 160);
}

TEST(TessalunaLogo, TheInitialStartsAsItIsGiven) {
  const std::string listing = harness::listingOf(drawnWith({0, 0, 1, 1}));
  EXPECT_THAT(listing, testing::StartsWith("M (0.23711, 0.537), C (0.25542, 0.917; 0.2694, 0.856; 0.26675, 0.917), "
                                           "C (0.12627, 0.322; 0.23831, 0.917; 0.18747, 0.727), "));
  const CGPoint start = drawnWith(design).points()[0];
  EXPECT_NEAR(start.x, 98.4, 0.1);
  EXPECT_NEAR(start.y, 53.7, 0.1);
}

TEST(TessalunaLogo, LeavesItsMargins) {
  const CGRect box = drawnWith({0, 0, 1, 1}).bounds();
  EXPECT_NEAR(CGRectGetMinX(box), 0.0147, 0.00001);
  EXPECT_NEAR(CGRectGetMaxX(box), 0.99976, 0.00001);
  EXPECT_NEAR(CGRectGetMinY(box), 0.087, 0.00001);
  EXPECT_NEAR(CGRectGetMaxY(box), 0.917, 0.00001);
}

TEST(TessalunaLogo, EveryVertexSitsOnTheGridOfTheDesign) {
  const tessaluna::backend::Path path = drawnWith(design);
  for (const CGPoint point : path.points()) {
    // A fraction of five decimals is up to two thousandths of a point off the grid.
    EXPECT_NEAR(point.x, std::round(point.x * 10) / 10, 0.0021);
    EXPECT_NEAR(point.y, std::round(point.y * 10) / 10, 1e-9);
  }
}

TEST(TessalunaLogo, ItsCountersAreOpen) {
  const tessaluna::backend::Path path = drawnWith(design);
  const auto subpaths = subpathsOf(path);
  int counters = 0;
  for (const auto& subpath : subpaths) {
    if ((subpath.area > 0) == (subpaths.front().area > 0)) continue;
    ++counters;
    // Along a row, which in the initial's loop lies under the crossbar, some of the counter is unpainted and
    // both its sides are painted.
    const CGRect box = subpath.path.bounds();
    const double y = CGRectGetMinY(box) + 0.4 * box.size.height;
    double left = CGRectGetMaxX(box), right = CGRectGetMinX(box);
    for (double x = CGRectGetMinX(box); x < CGRectGetMaxX(box); x += 0.05) {
      if (windingAt(subpath.path, {x, y}) == 0) continue;
      left = std::min(left, x), right = std::max(right, x);
      EXPECT_EQ(windingAt(path, {x, y}), 0);
    }
    EXPECT_GT(right - left, 2);
    EXPECT_NE(windingAt(path, {left - 0.5, y}), 0);
    EXPECT_NE(windingAt(path, {right + 0.5, y}), 0);
  }
  EXPECT_EQ(counters, 5);
}

TEST(TessalunaLogo, IsFilledOnceInNamedBlack) {
  const auto logo = make<TessalunaLogo>(design);
  const Lines lines = recordingOf([&] { logo->drawRect(design); });
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], R"({"op":"setFillColor","color":[0,0,0,1],"named":"blackColor"})");
  EXPECT_THAT(lines[1], testing::StartsWith(R"({"op":"fill",)"));
}

TEST(TessalunaLogo, StretchesWithTheViewAxisByAxis) {
  const auto path = drawnWith(design), wide = drawnWith({0, 0, 830, 100});
  for (std::size_t i = 0; i < path.points().size(); ++i) {
    EXPECT_NEAR(wide.points()[i].x, 2 * path.points()[i].x, 1e-9);
    EXPECT_EQ(wide.points()[i].y, path.points()[i].y);
  }
}

TEST(TessalunaLogo, MovesWithTheOriginOfItsBounds) {
  const auto path = drawnWith(design), moved = drawnWith({30, -20, 415, 100});
  for (std::size_t i = 0; i < path.points().size(); ++i) {
    EXPECT_NEAR(moved.points()[i].x, path.points()[i].x + 30, 1e-9);
    EXPECT_NEAR(moved.points()[i].y, path.points()[i].y - 20, 1e-9);
  }
}

TEST(TessalunaLogo, IsBuiltWholeWhateverIsDirty) {
  const auto whole = drawnWith(design, design);
  for (const CGRect dirty : {CGRect{0, 0, 3, 3}, CGRect{0, 0, 0, 0}, CGRect{900, 900, 5, 5}})
    EXPECT_TRUE(std::ranges::equal(drawnWith(design, dirty).points(), whole.points()));
}

TEST(TessalunaLogo, EmptyBoundsPaintNothing) {
  const CGRect box = drawnWith({0, 0, 0, 0}).bounds();
  EXPECT_EQ(box.size, (CGSize{0, 0}));
}

TEST(TessalunaLogo, IsNeitherOpaqueNorFlipped) {
  const auto logo = make<TessalunaLogo>(design);
  EXPECT_FALSE(logo->isOpaque());
  EXPECT_FALSE(logo->isFlipped());
  EXPECT_EQ(logo->className(), "TessalunaUIKit.TessalunaLogo");
}

}  // namespace
