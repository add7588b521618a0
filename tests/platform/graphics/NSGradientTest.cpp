#include "tessaluna/platform/graphics/NSGradient.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

namespace {

Ref<NSGradient> blackToWhite() {
  const Ref<NSColor> colors[] = {NSColor::blackColor(), NSColor::whiteColor()};
  const double locations[] = {0, 1};
  return make<NSGradient>(colors, locations, NSColorSpace::genericRGBColorSpace());
}

struct Axis {
  CGPoint start, end;
};

// The recording tells the angle; what a canvas makes of it are these two points.
class AxisCanvas : public tessaluna::backend::recording::RecordingCanvas {
 public:
  void fillGradient(const tessaluna::backend::Path&, tessaluna::backend::FillRule,
                    const tessaluna::backend::LinearGradient& gradient) override {
    axis = {gradient.start, gradient.end};
  }
  Axis axis;
};

Axis axisAt(double angle, CGRect rect) {
  AxisCanvas canvas;
  const CanvasScope scope(canvas);
  blackToWhite()->drawInBezierPath(*NSBezierPath::bezierPathWithRect(rect), angle);
  return canvas.axis;
}

void expectNear(CGPoint point, CGPoint expected) {
  EXPECT_NEAR(point.x, expected.x, 1e-9);
  EXPECT_NEAR(point.y, expected.y, 1e-9);
}

}  // namespace

TEST(NSGradient, IsRecordedWithStopsAndAngle) {
  EXPECT_EQ(recordingOf([] {
              blackToWhite()->drawInBezierPath(*NSBezierPath::bezierPathWithRect({0, 0, 4, 2}), 90);
            }),
            (Lines{R"({"op":"gradient","path":[["M",0,0],["L",4,0],["L",4,2],["L",0,2],["Z"]],)"
                   R"("shape":["rect",0,0,4,2],"stops":[[0,[0,0,0,1]],[1,[1,1,1,1]]],"angle":90})"}));
}

TEST(NSGradient, At0TheAxisRunsFromLeftToRight) {
  const Axis axis = axisAt(0, {10, 20, 40, 10});
  EXPECT_EQ(axis.start, (CGPoint{10, 25}));
  EXPECT_EQ(axis.end, (CGPoint{50, 25}));
}

TEST(NSGradient, At90TheAxisRunsFromBottomToTop) {
  const Axis axis = axisAt(90, {10, 20, 40, 10});
  EXPECT_EQ(axis.start, (CGPoint{30, 20}));
  EXPECT_EQ(axis.end, (CGPoint{30, 30}));
}

TEST(NSGradient, AtMinus90TheAxisRunsFromTopToBottom) {
  const Axis axis = axisAt(-90, {10, 20, 40, 10});
  EXPECT_EQ(axis.start, (CGPoint{30, 30}));
  EXPECT_EQ(axis.end, (CGPoint{30, 20}));
}

TEST(NSGradient, At180TheAxisRunsFromRightToLeft) {
  const Axis axis = axisAt(180, {10, 20, 40, 10});
  EXPECT_EQ(axis.start, (CGPoint{50, 25}));
  EXPECT_EQ(axis.end, (CGPoint{10, 25}));
}

TEST(NSGradient, AWholeTurnMoreChangesNothing) {
  const Axis axis = axisAt(450, {10, 20, 40, 10});
  EXPECT_EQ(axis.start, (CGPoint{30, 20}));
  EXPECT_EQ(axis.end, (CGPoint{30, 30}));
}

TEST(NSGradient, At45TheAxisReachesFromCornerToCornerOfASquare) {
  const Axis axis = axisAt(45, {0, 0, 10, 10});
  expectNear(axis.start, {0, 0});
  expectNear(axis.end, {10, 10});
}

TEST(NSGradient, AtMinus45TheAxisReachesFromTheUpperLeftToTheLowerRight) {
  const Axis axis = axisAt(-45, {0, 0, 10, 10});
  expectNear(axis.start, {0, 10});
  expectNear(axis.end, {10, 0});
}

TEST(NSGradient, AtASlantTheEndsAreLevelWithTheCorners) {
  // Across the axis through its ends lie the lower left and the upper right corner.
  const CGRect rect{0, 0, 40, 10};
  const Axis axis = axisAt(30, rect);
  const CGPoint along{axis.end.x - axis.start.x, axis.end.y - axis.start.y};
  EXPECT_NEAR(along.x * (axis.start.x - 0) + along.y * (axis.start.y - 0), 0, 1e-9);
  EXPECT_NEAR(along.x * (axis.end.x - 40) + along.y * (axis.end.y - 10), 0, 1e-9);
  EXPECT_NEAR(along.y / along.x, 0.57735026918962573, 1e-12);
}

TEST(NSGradient, LeavesOutColorsWithoutALocation) {
  const Ref<NSColor> colors[] = {NSColor::blackColor(), NSColor::redColor(), NSColor::whiteColor()};
  const double locations[] = {0, 1};
  const auto gradient = make<NSGradient>(colors, locations, NSColorSpace::genericRGBColorSpace());
  const Lines lines = recordingOf([&] { gradient->drawInBezierPath(*NSBezierPath::bezierPathWithRect({0, 0, 1, 1}), 0); });
  EXPECT_NE(lines[0].find(R"("stops":[[0,[0,0,0,1]],[1,[1,0,0,1]]])"), std::string::npos);
}

TEST(NSGradient, IsMadeOfPairsAsWell) {
  const NSGradient::Stop stops[] = {{NSColor::redColor(), 0.25}, {NSColor::blueColor(), 0.75}};
  const Lines lines = recordingOf([&] {
    NSGradient::initWithColorsAndLocations(stops)->drawInBezierPath(*NSBezierPath::bezierPathWithRect({0, 0, 1, 1}), 0);
  });
  EXPECT_NE(lines[0].find(R"("stops":[[0.25,[1,0,0,1]],[0.75,[0,0,1,1]]])"), std::string::npos);
}

TEST(NSGradient, PaintsNothingInAnEmptyPath) {
  EXPECT_TRUE(recordingOf([] { blackToWhite()->drawInBezierPath(*NSBezierPath::bezierPath(), 90); }).empty());
}
