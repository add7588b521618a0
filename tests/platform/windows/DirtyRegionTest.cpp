#include "tessaluna/platform/windows/DirtyRegion.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

constexpr CGRect window{0, 0, 1000, 1000};

double area(CGRect r) { return r.size.width * r.size.height; }

}  // namespace

TEST(DirtyRegion, IsEmptyAtFirstAndAfterItWasTaken) {
  DirtyRegion region;
  EXPECT_TRUE(region.isEmpty());
  region.add({1, 2, 3, 4}, 1);
  EXPECT_FALSE(region.isEmpty());
  EXPECT_THAT(region.take(window, 1), ElementsAre(CGRect{1, 2, 3, 4}));
  EXPECT_TRUE(region.isEmpty());
}

TEST(DirtyRegion, AnEmptyRectangleAddsNothing) {
  DirtyRegion region;
  region.add({1, 2, 0, 4}, 1);
  region.add({1, 2, 3, std::nan("")}, 1);
  EXPECT_TRUE(region.isEmpty());
}

TEST(DirtyRegion, RoundsOutwardToDevicePixels) {
  DirtyRegion region;
  region.add({1.1, 2.6, 1, 1}, 1);
  EXPECT_THAT(region.take(window, 1), ElementsAre(CGRect{1, 2, 2, 2}));
  region.add({1.1, 2.6, 1, 1}, 2);
  EXPECT_THAT(region.take(window, 2), ElementsAre(CGRect{1, 2.5, 1.5, 1.5}));
  region.add({1, 1, 1, 1}, 1.25);
  const CGRect pixels = region.take(window, 1.25).at(0);
  EXPECT_DOUBLE_EQ(CGRectGetMinX(pixels) * 1.25, 1);
  EXPECT_DOUBLE_EQ(CGRectGetMaxX(pixels) * 1.25, 3);
}

TEST(DirtyRegion, TheNoiseOfAConversionMovesNoEdge) {
  DirtyRegion region;
  region.add({1 - 1e-12, 2 + 1e-12, 1 + 2e-12, 1}, 1);
  EXPECT_THAT(region.take(window, 1), ElementsAre(CGRect{1, 2, 1, 1}));
}

TEST(DirtyRegion, RectanglesThatMeetBecomeOne) {
  DirtyRegion region;
  region.add({0, 0, 10, 10}, 1);
  region.add({5, 5, 10, 10}, 1);
  EXPECT_THAT(region.take(window, 1), ElementsAre(CGRect{0, 0, 15, 15}));
}

TEST(DirtyRegion, RectanglesApartStayApart) {
  DirtyRegion region;
  region.add({0, 0, 10, 10}, 1);
  region.add({50, 50, 10, 10}, 1);
  EXPECT_THAT(region.take(window, 1), UnorderedElementsAre(CGRect{0, 0, 10, 10}, CGRect{50, 50, 10, 10}));
}

TEST(DirtyRegion, AUnionThatMeetsAThirdTakesItInToo) {
  DirtyRegion region;
  region.add({0, 0, 10, 10}, 1);
  region.add({20, 0, 10, 10}, 1);
  region.add({12, 5, 2, 30}, 1);
  region.add({5, 8, 20, 4}, 1);
  EXPECT_THAT(region.take(window, 1), ElementsAre(CGRect{0, 0, 30, 35}));
}

TEST(DirtyRegion, IsCutToTheWindow) {
  DirtyRegion region;
  region.add({-5, 990, 10, 50}, 1);
  region.add({2000, 0, 10, 10}, 1);
  EXPECT_THAT(region.take(window, 1), ElementsAre(CGRect{0, 990, 5, 10}));
}

TEST(DirtyRegion, IsCutToWholeDevicePixelsOfAWindowThatEndsWithinOne) {
  DirtyRegion region;
  region.add({0, 0, 10, 10}, 1);
  EXPECT_THAT(region.take({0, 0, 5.5, 4.25}, 1), ElementsAre(CGRect{0, 0, 6, 5}));
}

TEST(DirtyRegion, ManyRectanglesBecomeFewAndCoverThemAll) {
  DirtyRegion region;
  std::vector<CGRect> added;
  for (int i = 0; i < 40; ++i) added.push_back({(i * 137) % 900 + 0.0, (i * 211) % 900 + 0.0, 7, 5});
  for (const CGRect& rect : added) region.add(rect, 1);
  const auto rects = region.take(window, 1);
  EXPECT_LE(rects.size(), 8u);
  for (const CGRect& rect : added) {
    int holders = 0;
    for (const CGRect& whole : rects) holders += NSContainsRect(whole, rect);
    EXPECT_EQ(holders, 1) << "a rectangle lies in one of them as a whole";
  }
  for (std::size_t i = 0; i < rects.size(); ++i)
    for (std::size_t j = i + 1; j < rects.size(); ++j) EXPECT_FALSE(NSIntersectsRect(rects[i], rects[j]));
}

TEST(DirtyRegion, OfTooManyTheTwoThatWasteLeastAreJoined) {
  DirtyRegion region;
  for (int i = 0; i < 8; ++i) region.add({i * 100.0, 0, 10, 10}, 1);
  region.add({705, 20, 10, 10}, 1);
  const auto rects = region.take(window, 1);
  EXPECT_EQ(rects.size(), 8u);
  EXPECT_THAT(rects, testing::Contains(CGRect{700, 0, 15, 30}));
  double total = 0;
  for (const CGRect& rect : rects) total += area(rect);
  EXPECT_EQ(total, 7 * 100 + 15 * 30);
}

TEST(DirtyRegion, TheTwoThatWasteLeastAreJoinedWhereverTheyAre) {
  for (int near = 0; near < 8; ++near) {
    DirtyRegion region;
    region.add({near * 100.0 + 5, 20, 10, 10}, 1);
    for (int i = 0; i < 8; ++i) region.add({i * 100.0, 0, 10, 10}, 1);
    const auto rects = region.take(window, 1);
    EXPECT_EQ(rects.size(), 8u);
    EXPECT_THAT(rects, testing::Contains(CGRect{near * 100.0, 0, 15, 30}));
  }
}
