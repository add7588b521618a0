#include "tessaluna/uikit/stylekit/Recipes.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;
using harness::recordingOf;

TEST(Recipes, TheKitsShadowIsSoftAndLiesToTheLowerRight) {
  const auto shadow = recipes::kitShadow();
  EXPECT_TRUE(shadow->shadowColor()->isEqual(NSColor::colorWithCalibratedRed(0.167, 0.167, 0.167, 1).get()));
  EXPECT_EQ(shadow->shadowOffset(), (CGSize{1, -1}));
  EXPECT_EQ(shadow->shadowBlurRadius(), 1.5);
}

TEST(Recipes, TheTransportGradientBlendsFromDarkGrayToAMediumGray) {
  EXPECT_EQ(recordingOf([] {
              recipes::transportGradient()->drawInBezierPath(*NSBezierPath::bezierPathWithRect({0, 0, 1, 1}), 90);
            }),
            (Lines{R"({"op":"gradient","path":[["M",0,0],["L",1,0],["L",1,1],["L",0,1],["Z"]],"shape":["rect",0,0,1,1],)"
                   R"("stops":[[0,[0.3333333333333333,0.3333333333333333,0.3333333333333333,1]],)"
                   R"([0.43,[0.41666666666666663,0.41666666666666663,0.41666666666666663,1]],[1,[0.5,0.5,0.5,1]]],)"
                   R"("angle":90})"}));
}

TEST(Recipes, AnInnerShadowIsTwoLayersWithinTheBoundsOfThePath) {
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint({1, 2});
  path->lineToPoint({5, 8});
  path->lineToPoint({9, 2});
  const auto shadow = make<NSShadow>(NSColor::colorWithCalibratedRed(0.25, 0.5, 0.75, 0.5), CGSize{1, -1}, 1.5);
  const Lines lines = recordingOf([&] { recipes::drawInnerShadow(NSGraphicsContext::currentCgContext(), *path, *shadow); });
  EXPECT_EQ(lines, (Lines{
                       R"({"op":"save"})",
                       R"({"op":"clipRect","rect":[1,2,8,6]})",
                       R"({"op":"setShadow","offset":[0,0],"blur":0,"color":null})",
                       R"({"op":"setAlpha","alpha":0.5})",
                       R"({"op":"beginTransparencyLayer"})",
                       R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[0.25,0.5,0.75,1]})",
                       R"({"op":"setBlendMode","mode":"sourceOut"})",
                       R"({"op":"beginTransparencyLayer"})",
                       R"({"op":"setFillColor","color":[0.25,0.5,0.75,1]})",
                       R"({"op":"fill","path":[["M",1,2],["L",5,8],["L",9,2]]})",
                       R"({"op":"endTransparencyLayer"})",
                       R"({"op":"endTransparencyLayer"})",
                       R"({"op":"restore"})",
                   }));
}

TEST(Recipes, AnInnerShadowThatIsClearRunsInFull) {
  const auto path = NSBezierPath::bezierPathWithRect({0, 0, 4, 4});
  const auto clear = make<NSShadow>(NSColor::blackColor()->colorWithAlphaComponent(0), CGSize{0, 0}, 0.0);
  const Lines lines = recordingOf([&] { recipes::drawInnerShadow(NSGraphicsContext::currentCgContext(), *path, *clear); });
  EXPECT_EQ(lines.size(), 13u);
  EXPECT_EQ(harness::only("setAlpha", lines), (Lines{R"({"op":"setAlpha","alpha":0})"}));
}
