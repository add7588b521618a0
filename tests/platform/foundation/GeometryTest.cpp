#include "tessaluna/platform/foundation/Geometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;

TEST(Geometry, EdgesAndMiddlesOfARectangle) {
  constexpr CGRect r{10, 20, 30, 44};
  EXPECT_EQ(CGRectGetMinX(r), 10);
  EXPECT_EQ(CGRectGetMinY(r), 20);
  EXPECT_EQ(CGRectGetMaxX(r), 40);
  EXPECT_EQ(CGRectGetMaxY(r), 64);
  EXPECT_EQ(CGRectGetMidX(r), 25);
  EXPECT_EQ(CGRectGetMidY(r), 42);
  EXPECT_EQ(CGRectGetWidth(r), 30);
  EXPECT_EQ(CGRectGetHeight(r), 44);
}

TEST(Geometry, ARectangleOfNegativeSizeIsMeasuredAsTheAreaThatItCovers) {
  constexpr CGRect r{10, 20, -4, -6};
  EXPECT_EQ(CGRectGetMinX(r), 6);
  EXPECT_EQ(CGRectGetMaxX(r), 10);
  EXPECT_EQ(CGRectGetMinY(r), 14);
  EXPECT_EQ(CGRectGetMaxY(r), 20);
  EXPECT_EQ(CGRectGetMidX(r), 8);
  EXPECT_EQ(CGRectGetMidY(r), 17);
  EXPECT_EQ(CGRectGetWidth(r), 4);
  EXPECT_EQ(CGRectGetHeight(r), 6);
}

TEST(Geometry, ARectangleOfNegativeSizeKeepsItsFields) {
  constexpr CGRect r{10, 20, -4, -6};
  EXPECT_EQ(r.origin, (CGPoint{10, 20}));
  EXPECT_EQ(r.size, (CGSize{-4, -6}));
}

TEST(Geometry, APointOnTheMinimumEdgesIsInTheRectangle) {
  EXPECT_TRUE(NSPointInRect({10, 20}, {10, 20, 5, 5}));
  EXPECT_TRUE(NSPointInRect({14.999, 20}, {10, 20, 5, 5}));
}

TEST(Geometry, APointOnAMaximumEdgeIsNotInTheRectangle) {
  EXPECT_FALSE(NSPointInRect({15, 22}, {10, 20, 5, 5}));
  EXPECT_FALSE(NSPointInRect({12, 25}, {10, 20, 5, 5}));
}

TEST(Geometry, NoPointIsInAnEmptyRectangle) {
  EXPECT_FALSE(NSPointInRect({10, 20}, {10, 20, 0, 5}));
  EXPECT_FALSE(NSPointInRect({0, 0}, NSZeroRect));
}

TEST(Geometry, InsetMovesBothEdgesInward) { EXPECT_EQ(NSInsetRect({10, 20, 30, 40}, 1, 2), (CGRect{11, 22, 28, 36})); }

TEST(Geometry, ANegativeInsetGrows) { EXPECT_EQ(NSInsetRect({10, 20, 30, 40}, -1, -2), (CGRect{9, 18, 32, 44})); }

TEST(Geometry, OffsetMovesAndKeepsTheSize) { EXPECT_EQ(NSOffsetRect({10, 20, 30, 40}, 5, -5), (CGRect{15, 15, 30, 40})); }

TEST(Geometry, UnionIsTheSmallestRectangleAroundBoth) {
  EXPECT_EQ(NSUnionRect({0, 0, 10, 10}, {20, 5, 10, 10}), (CGRect{0, 0, 30, 15}));
}

TEST(Geometry, AnEmptyRectangleAddsNothingToAUnion) {
  EXPECT_EQ(NSUnionRect({5, 5, 10, 10}, {100, 100, 0, 50}), (CGRect{5, 5, 10, 10}));
  EXPECT_EQ(NSUnionRect({100, 100, 50, 0}, {5, 5, 10, 10}), (CGRect{5, 5, 10, 10}));
}

TEST(Geometry, TheUnionOfTwoEmptyRectanglesIsZero) { EXPECT_EQ(NSUnionRect({5, 5, 0, 10}, {100, 100, 0, 50}), NSZeroRect); }

TEST(Geometry, IntersectionIsTheCommonArea) {
  EXPECT_EQ(NSIntersectionRect({0, 0, 10, 10}, {5, 6, 10, 10}), (CGRect{5, 6, 5, 4}));
}

TEST(Geometry, RectanglesThatOnlyTouchHaveNoIntersection) {
  EXPECT_EQ(NSIntersectionRect({0, 0, 10, 10}, {10, 0, 10, 10}), NSZeroRect);
  EXPECT_FALSE(NSIntersectsRect({0, 0, 10, 10}, {10, 0, 10, 10}));
}

TEST(Geometry, AnEmptyRectangleIntersectsNothing) {
  EXPECT_EQ(NSIntersectionRect({0, 0, 10, 10}, {5, 5, 0, 2}), NSZeroRect);
  EXPECT_FALSE(NSIntersectsRect({5, 5, 2, 0}, {0, 0, 10, 10}));
}

TEST(Geometry, ContainsCountsTheEdges) {
  EXPECT_TRUE(NSContainsRect({0, 0, 10, 10}, {0, 0, 10, 10}));
  EXPECT_FALSE(NSContainsRect({0, 0, 10, 10}, {0, 0, 10, 10.5}));
}

TEST(Geometry, NoRectangleContainsAnEmptyOne) { EXPECT_FALSE(NSContainsRect({0, 0, 10, 10}, {5, 5, 0, 0})); }

TEST(Geometry, ASizeThatIsNotANumberCountsAsEmpty) {
  EXPECT_TRUE(NSIsEmptyRect({0, 0, std::nan(""), 5}));
  EXPECT_TRUE(NSIsEmptyRect({0, 0, -1, 5}));
  EXPECT_FALSE(NSIsEmptyRect({0, 0, 1e-300, 1e-300}));
}
