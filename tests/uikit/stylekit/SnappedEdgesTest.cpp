#include "tessaluna/uikit/stylekit/SnappedEdges.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

TEST(SnappedEdges, AConstantOfAHalfRoundsToTheNearestPoint) {
  EXPECT_EQ((SnappedEdge{0.01316, 0.5}.in(76)), 1);
  EXPECT_EQ((SnappedEdge{0.0625, 0.5}.in(32)), 2);
  EXPECT_EQ((SnappedEdge{0.21875, 0.5}.in(32)), 7);
  EXPECT_EQ((SnappedEdge{0.5, 0.5}.in(5)), 3);
}

TEST(SnappedEdges, AConstantOfZeroPutsTheEdgeOnAHalfPoint) {
  EXPECT_EQ((SnappedEdge{0.03333, 0}.in(15)), 0.5);
  EXPECT_EQ((SnappedEdge{0.5, 0}.in(15)), 7.5);
}

TEST(SnappedEdges, OtherConstantsKeepTheDesignsDistanceFromTheGrid) {
  EXPECT_EQ((SnappedEdge{0.95377, -0.02}.in(32)), 30.52);
  EXPECT_EQ((SnappedEdge{0.5, 0.42}.in(15)), 7.08);
  EXPECT_EQ((SnappedEdge{0.5, -0.5}.in(15)), 8);
}

TEST(SnappedEdges, InAZeroSizedFrameEdgesCollapseToTheCornerPlusAHalfWhereTheConstantIsZero) {
  EXPECT_EQ((SnappedEdge{0.7, 0.5}.in(0)), 0);
  EXPECT_EQ((SnappedEdge{0.7, 0}.in(0)), 0.5);
  constexpr SnappedEdges onPoints{.left = {0.1, 0.5}, .right = {0.9, 0.5}, .bottom = {0.1, 0.5}, .top = {0.9, 0.5}};
  EXPECT_EQ(snappedRect({3.25, 4.75, 0, 0}, onPoints), (CGRect{3.25, 4.75, 0, 0}));
  constexpr SnappedEdges onHalves{.left = {0.1, 0}, .right = {0.9, 0}, .bottom = {0.1, 0}, .top = {0.9, 0}};
  EXPECT_EQ(snappedRect({3.25, 4.75, 0, 0}, onHalves), (CGRect{3.75, 5.25, 0, 0}));
}

TEST(SnappedEdges, TheRoundingNeverSeesTheOrigin) {
  constexpr SnappedEdges edges{.left = {0.1, 0.5}, .right = {0.9, 0.5}, .bottom = {0.2, 0.5}, .top = {0.8, 0.5}};
  const CGRect atZero = snappedRect({0, 0, 33, 47}, edges);
  EXPECT_EQ(atZero, (CGRect{3, 9, 27, 29}));
  const CGRect moved = snappedRect({0.25, 100.75, 33, 47}, edges);
  EXPECT_EQ(moved, (CGRect{3.25, 109.75, 27, 29}));
}
