#include "tessaluna/platform/graphics/NSBezierPath.h"

#include <gmock/gmock.h>

#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

namespace {

Ref<NSBezierPath> diagonal() {
  auto path = NSBezierPath::bezierPath();
  path->moveToPoint({0, 0});
  path->lineToPoint({8, 4});
  return path;
}

}  // namespace

TEST(NSBezierPath, StrokesWithTheDefaultAttributes) {
  EXPECT_EQ(recordingOf([] { diagonal()->stroke(); }),
            (Lines{R"({"op":"stroke","path":[["M",0,0],["L",8,4]],"lineWidth":1,"cap":"butt","join":"miter",)"
                   R"("miterLimit":10,"dash":[],"phase":0})"}));
}

TEST(NSBezierPath, StrokesWithItsOwnAttributes) {
  const auto path = diagonal();
  path->setLineWidth(2.5);
  path->setLineCapStyle(NSRoundLineCapStyle);
  path->setLineJoinStyle(NSBevelLineJoinStyle);
  path->setMiterLimit(4);
  EXPECT_EQ(recordingOf([&] { path->stroke(); }),
            (Lines{R"({"op":"stroke","path":[["M",0,0],["L",8,4]],"lineWidth":2.5,"cap":"round","join":"bevel",)"
                   R"("miterLimit":4,"dash":[],"phase":0})"}));
}

TEST(NSBezierPath, ACopyDrawsAsTheOriginalDid) {
  const auto path = diagonal();
  path->setLineWidth(2.5);
  path->setLineCapStyle(NSRoundLineCapStyle);
  path->setLineJoinStyle(NSBevelLineJoinStyle);
  path->setMiterLimit(4);
  const CGFloat dash[] = {3, 1};
  path->setLineDash(dash, 2);
  path->setWindingRule(NSEvenOddWindingRule);
  const auto draw = [](const NSBezierPath& drawn) {
    drawn.stroke();
    drawn.fill();
  };
  const Lines expected = recordingOf([&] { draw(*path); });
  const auto copy = path->copy();
  path->setLineDash({}, 0);
  path->lineToPoint({0, 8});
  EXPECT_EQ(recordingOf([&] { draw(*copy); }), expected);
}

TEST(NSBezierPath, ADashIsCopiedWhenItIsSet) {
  const auto path = diagonal();
  double pattern[] = {10, 2};
  path->setLineDash(pattern, 3);
  pattern[0] = 99;
  EXPECT_THAT(recordingOf([&] { path->stroke(); })[0], testing::HasSubstr(R"("dash":[10,2],"phase":3)"));
}

TEST(NSBezierPath, AnEmptyDashIsASolidLineAgain) {
  const auto path = diagonal();
  path->setLineDash(std::vector<double>{10, 2}, 0);
  path->setLineDash({}, 0);
  EXPECT_THAT(recordingOf([&] { path->stroke(); })[0], testing::HasSubstr(R"("dash":[],"phase":0)"));
}

TEST(NSBezierPath, FillsWithTheNonZeroRuleUnlessToldEvenOdd) {
  const auto path = diagonal();
  EXPECT_EQ(recordingOf([&] { path->fill(); }), (Lines{R"({"op":"fill","path":[["M",0,0],["L",8,4]]})"}));
  path->setWindingRule(NSEvenOddWindingRule);
  EXPECT_EQ(recordingOf([&] { path->fill(); }), (Lines{R"({"op":"fill","path":[["M",0,0],["L",8,4]],"rule":"evenOdd"})"}));
}

TEST(NSBezierPath, AddClipClipsWithItsRule) {
  const auto path = diagonal();
  path->setWindingRule(NSEvenOddWindingRule);
  EXPECT_EQ(recordingOf([&] { path->addClip(); }),
            (Lines{R"({"op":"clipPath","path":[["M",0,0],["L",8,4]],"rule":"evenOdd"})"}));
}

TEST(NSBezierPath, FiguresTellTheCallThatMadeThem) {
  EXPECT_THAT(recordingOf([] {
                NSBezierPath::bezierPathWithRect({1, 2, 3, 4})->fill();
              })[0],
              testing::HasSubstr(R"("shape":["rect",1,2,3,4])"));
  EXPECT_THAT(recordingOf([] {
                NSBezierPath::bezierPathWithOvalInRect({1, 2, 3, 4})->fill();
              })[0],
              testing::HasSubstr(R"("shape":["oval",1,2,3,4])"));
  EXPECT_THAT(recordingOf([] {
                NSBezierPath::bezierPathWithRoundedRect({1, 2, 30, 40}, 5, 6)->fill();
              })[0],
              testing::HasSubstr(R"("shape":["roundedRect",1,2,30,40,5,6])"));
}

TEST(NSBezierPath, AppendAddsTheOtherOutlineAndKeepsItsOwnAttributes) {
  const auto path = diagonal();
  const auto other = NSBezierPath::bezierPath();
  other->setLineWidth(9);
  other->moveToPoint({20, 20});
  other->lineToPoint({30, 20});
  path->appendBezierPath(*other);
  path->lineToPoint({30, 30});
  EXPECT_EQ(recordingOf([&] { path->stroke(); }),
            (Lines{R"({"op":"stroke","path":[["M",0,0],["L",8,4],["M",20,20],["L",30,20],["L",30,30]],"lineWidth":1,)"
                   R"("cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})"}));
}

TEST(NSBezierPath, BoundsLeaveTheStrokeOut) {
  const auto path = diagonal();
  path->setLineWidth(20);
  EXPECT_EQ(path->bounds(), (CGRect{0, 0, 8, 4}));
}

TEST(NSBezierPath, ACurveIsWrittenWithItsEndFirst) {
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint({0, 0});
  path->curveToPoint({9, 0}, {1, 2}, {3, 4});
  path->closePath();
  EXPECT_EQ(recordingOf([&] { path->fill(); }), (Lines{R"({"op":"fill","path":[["M",0,0],["C",9,0,1,2,3,4],["Z"]]})"}));
}

TEST(NSBezierPathDeathTest, ALineWithoutACurrentPointStopsTheProgram) {
  EXPECT_DEATH(NSBezierPath::bezierPath()->lineToPoint({1, 1}), "lineToPoint: without a current point");
}

TEST(NSBezierPathDeathTest, ACurveWithoutACurrentPointStopsTheProgram) {
  EXPECT_DEATH(NSBezierPath::bezierPath()->curveToPoint({1, 1}, {0, 0}, {1, 0}), "curveToPoint: without a current point");
}

TEST(NSBezierPath, ALineMayFollowAClose) {
  const auto path = diagonal();
  path->closePath();
  path->lineToPoint({1, 1});
  EXPECT_EQ(recordingOf([&] { path->fill(); }), (Lines{R"({"op":"fill","path":[["M",0,0],["L",8,4],["Z"],["L",1,1]]})"}));
}

TEST(NSBezierPath, SegmentsAreAddedManyAtOnce) {
  constexpr tessaluna::backend::PathVerb verbs[] = {tessaluna::backend::PathVerb::Move, tessaluna::backend::PathVerb::Line,
                                                    tessaluna::backend::PathVerb::Close};
  const auto path = diagonal();
  const std::span<CGPoint> points = path->appendSegments(verbs, 2);
  points[0] = {1, 2};
  points[1] = {3, 4};
  path->lineToPoint({5, 6});
  EXPECT_EQ(recordingOf([&] { path->fill(); }),
            (Lines{R"({"op":"fill","path":[["M",0,0],["L",8,4],["M",1,2],["L",3,4],["Z"],["L",5,6]]})"}));
}

TEST(NSBezierPathDeathTest, SegmentsWithoutACurrentPointStopTheProgram) {
  constexpr tessaluna::backend::PathVerb verbs[] = {tessaluna::backend::PathVerb::Close, tessaluna::backend::PathVerb::Line};
  EXPECT_DEATH(NSBezierPath::bezierPath()->appendSegments(verbs, 1), "appendSegments: without a current point");
}
