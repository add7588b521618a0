#include "tessaluna/uikit/stylekit/Listing.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;

TEST(Listing, EachSegmentBecomesItsVerbAndPoints) {
  constexpr auto outline = listing<"M (0, 1), L (0.5, 0.25), C (1, 2; 3, 4; 5, 6), Z">;
  static_assert(outline.verbs.size() == 4 && outline.fractions.size() == 5);
  EXPECT_EQ(outline.verbs[0], tessaluna::backend::PathVerb::Move);
  EXPECT_EQ(outline.verbs[1], tessaluna::backend::PathVerb::Line);
  EXPECT_EQ(outline.verbs[2], tessaluna::backend::PathVerb::Curve);
  EXPECT_EQ(outline.verbs[3], tessaluna::backend::PathVerb::Close);
  EXPECT_EQ(outline.fractions[1], (CGPoint{0.5, 0.25}));
  EXPECT_EQ(outline.fractions[2], (CGPoint{1, 2}));
  EXPECT_EQ(outline.fractions[4], (CGPoint{5, 6}));
}

TEST(Listing, ACoordinateIsTheDoubleNearestToItsDecimal) {
  constexpr auto outline = listing<"M (0.16667, -0.00307), L (0.83333, 1.10714)">;
  EXPECT_EQ(outline.fractions[0].x, 0.16667);
  EXPECT_EQ(outline.fractions[0].y, -0.00307);
  EXPECT_EQ(outline.fractions[1].x, 0.83333);
  EXPECT_EQ(outline.fractions[1].y, 1.10714);
}

TEST(Listing, PairsAreFractionsOfTheFrame) {
  EXPECT_EQ(pointInFrame({10, 20, 30, 40}, {0, 0}), (CGPoint{10, 20}));
  EXPECT_EQ(pointInFrame({10, 20, 30, 40}, {1, 0.5}), (CGPoint{40, 40}));
  EXPECT_EQ(pointInFrame({10, 20, 30, 40}, {-1, 2}), (CGPoint{-20, 100}));
}

TEST(Listing, AFrameOfNegativeSizeCountsAsTheAreaThatItCovers) {
  EXPECT_EQ(pointInFrame({40, 60, -30, -40}, {0, 1}), (CGPoint{10, 60}));
}

TEST(Listing, APathIsBuiltInTheOrderOfTheListing) {
  constexpr auto outline = listing<"M (0, 0), C (1, 1; 0, 0.5; 0.5, 1), L (1, 0), Z, M (0.5, 0.5)">;
  EXPECT_EQ(harness::recordingOf([&] {
              pathInFrame({10, 20, 10, 10}, outline)->fill();
            }),
            (Lines{R"({"op":"fill","path":[["M",10,20],["C",20,30,10,25,15,30],["L",20,20],["Z"],["M",15,25]]})"}));
}

TEST(Listing, IsAddedToAPathThatHasSomethingAlready) {
  constexpr auto outline = listing<"M (0, 0), L (1, 1)">;
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint({5, 5});
  appendListing(*path, {0, 0, 2, 2}, outline);
  EXPECT_EQ(path->path().points().size(), 3u);
}
