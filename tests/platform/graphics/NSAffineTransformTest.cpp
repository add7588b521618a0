#include "tessaluna/platform/graphics/NSAffineTransform.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;

namespace {

void expectNear(CGPoint a, CGPoint b) {
  EXPECT_NEAR(a.x, b.x, 1e-12);
  EXPECT_NEAR(a.y, b.y, 1e-12);
}

}  // namespace

TEST(NSAffineTransform, ChangesNothingAtTheStart) {
  EXPECT_EQ(NSAffineTransform::transform()->transformPoint({3, 4}), (CGPoint{3, 4}));
}

TEST(NSAffineTransform, EachStepComesBeforeThoseThatAreThere) {
  const auto transform = NSAffineTransform::transform();
  transform->translateXBy(10, 20);
  transform->scaleBy(2);
  EXPECT_EQ(transform->transformPoint({1, 1}), (CGPoint{12, 22}));
  const auto other = NSAffineTransform::transform();
  other->scaleXBy(2, 3);
  other->translateXBy(10, 20);
  EXPECT_EQ(other->transformPoint({1, 1}), (CGPoint{22, 63}));
}

TEST(NSAffineTransform, RotatesCounterclockwise) {
  const auto transform = NSAffineTransform::transform();
  transform->rotateByDegrees(90);
  expectNear(transform->transformPoint({1, 0}), {0, 1});
  expectNear(transform->transformPoint({0, 1}), {-1, 0});
}

TEST(NSAffineTransform, AnotherIsAppendedAfterOrPutBefore) {
  const auto shift = NSAffineTransform::transform(), doubling = NSAffineTransform::transform();
  shift->translateXBy(5, 0);
  doubling->scaleBy(2);
  const auto appended = NSAffineTransform::transform();
  appended->translateXBy(5, 0);
  appended->appendTransform(*doubling);
  EXPECT_EQ(appended->transformPoint({1, 0}), (CGPoint{12, 0}));
  const auto prepended = NSAffineTransform::transform();
  prepended->translateXBy(5, 0);
  prepended->prependTransform(*doubling);
  EXPECT_EQ(prepended->transformPoint({1, 0}), (CGPoint{7, 0}));
}

TEST(NSAffineTransform, ASizeIsNotMoved) {
  const auto transform = NSAffineTransform::transform();
  transform->translateXBy(100, 100);
  transform->scaleXBy(2, 3);
  EXPECT_EQ(transform->transformSize({4, 5}), (CGSize{8, 15}));
}

TEST(NSAffineTransform, TheInverseTakesBack) {
  const auto transform = NSAffineTransform::transform();
  transform->translateXBy(10, 20);
  transform->rotateByDegrees(30);
  const CGPoint moved = transform->transformPoint({3, 4});
  transform->invert();
  expectNear(transform->transformPoint(moved), {3, 4});
}

TEST(NSAffineTransformDeathTest, AFlatOneHasNoInverse) {
  const auto transform = NSAffineTransform::transform();
  transform->scaleXBy(1, 0);
  EXPECT_DEATH(transform->invert(), "no inverse");
}

TEST(NSAffineTransform, APathIsTransformedAsACopyThatKeepsItsStroke) {
  const auto transform = NSAffineTransform::transform();
  transform->translateXBy(10, 0);
  const auto path = NSBezierPath::bezierPathWithRect({0, 0, 2, 2});
  path->setLineWidth(3);
  const auto moved = transform->transformBezierPath(*path);
  EXPECT_EQ(moved->bounds(), (CGRect{10, 0, 2, 2}));
  EXPECT_EQ(moved->lineWidth(), 3);
  EXPECT_EQ(path->bounds(), (CGRect{0, 0, 2, 2}));
}

TEST(NSAffineTransform, IsPutOntoTheCurrentContext) {
  const auto transform = NSAffineTransform::transform();
  transform->translateXBy(1, 2);
  EXPECT_EQ(harness::recordingOf([&] { transform->concat(); }), Lines{R"({"op":"concat","transform":[1,0,0,1,1,2]})"});
  transform->concat();  // without a context: nothing
}

TEST(NSDivideRect, CutsASliceOffAnyEdge) {
  CGRect slice, rest;
  NSDivideRect({10, 20, 30, 40}, slice, rest, 5, NSMinXEdge);
  EXPECT_EQ(slice, (CGRect{10, 20, 5, 40}));
  EXPECT_EQ(rest, (CGRect{15, 20, 25, 40}));
  NSDivideRect({10, 20, 30, 40}, slice, rest, 5, NSMaxXEdge);
  EXPECT_EQ(slice, (CGRect{35, 20, 5, 40}));
  EXPECT_EQ(rest, (CGRect{10, 20, 25, 40}));
  NSDivideRect({10, 20, 30, 40}, slice, rest, 5, NSMinYEdge);
  EXPECT_EQ(slice, (CGRect{10, 20, 30, 5}));
  EXPECT_EQ(rest, (CGRect{10, 25, 30, 35}));
  NSDivideRect({10, 20, 30, 40}, slice, rest, 5, NSMaxYEdge);
  EXPECT_EQ(slice, (CGRect{10, 55, 30, 5}));
  EXPECT_EQ(rest, (CGRect{10, 20, 30, 35}));
}

TEST(NSDivideRect, MoreThanThereIsTakesAllAndLessThanNothingTakesNone) {
  CGRect slice, rest;
  NSDivideRect({10, 20, 30, 40}, slice, rest, 100, NSMinXEdge);
  EXPECT_EQ(slice, (CGRect{10, 20, 30, 40}));
  EXPECT_EQ(rest.size, (CGSize{0, 40}));
  NSDivideRect({10, 20, 30, 40}, slice, rest, -5, NSMinXEdge);
  EXPECT_EQ(slice.size, (CGSize{0, 40}));
  EXPECT_EQ(rest, (CGRect{10, 20, 30, 40}));
}
