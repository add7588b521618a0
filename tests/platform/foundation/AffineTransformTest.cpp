#include "tessaluna/platform/foundation/AffineTransform.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;

TEST(AffineTransform, TheFreshOneChangesNothing) { EXPECT_EQ(CGAffineTransform{}.apply({3, 4}), (CGPoint{3, 4})); }

TEST(AffineTransform, ThenDoesItsOwnWorkFirst) {
  const auto scaledThenMoved = CGAffineTransform::scale(2, 3).then(CGAffineTransform::translation(10, 20));
  EXPECT_EQ(scaledThenMoved.apply({1, 1}), (CGPoint{12, 23}));
  const auto movedThenScaled = CGAffineTransform::translation(10, 20).then(CGAffineTransform::scale(2, 3));
  EXPECT_EQ(movedThenScaled.apply({1, 1}), (CGPoint{22, 63}));
}

TEST(AffineTransform, AQuarterTurnTurnsCounterclockwise) {
  constexpr CGAffineTransform quarterTurn{0, 1, -1, 0, 0, 0};
  EXPECT_EQ(quarterTurn.apply({1, 0}), (CGPoint{0, 1}));
  EXPECT_EQ(quarterTurn.apply({0, 1}), (CGPoint{-1, 0}));
}

TEST(AffineTransform, TheInverseBringsAPointBack) {
  constexpr CGAffineTransform skewed{2, 0.5, -1, 4, 10, -20};
  const CGPoint back = skewed.inverted()->apply(skewed.apply({3, 7}));
  EXPECT_NEAR(back.x, 3, 1e-12);
  EXPECT_NEAR(back.y, 7, 1e-12);
}

TEST(AffineTransform, AFlattenedPlaneHasNoInverse) {
  EXPECT_FALSE(CGAffineTransform::scale(0, 1).inverted());
  EXPECT_FALSE((CGAffineTransform{1, 2, 2, 4, 0, 0}).inverted());
}

TEST(AffineTransform, ARectangleBecomesTheUprightOneAroundIt) {
  constexpr CGAffineTransform quarterTurn{0, 1, -1, 0, 0, 0};
  EXPECT_EQ(quarterTurn.applyToRect({1, 2, 10, 20}), (CGRect{-22, 1, 20, 10}));
}
