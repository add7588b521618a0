#include "tessaluna/uikit/stylekit/TransportGlyphs.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/uikit/stylekit/Listing.h"
#include "tessaluna/uikit/stylekit/Recipes.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;
using testing::HasSubstr;
using Kit = TessalunaUIKit::TessalunaStyleKit;

namespace {

// The path of the glyph's outline, which is what it strokes last.
std::string outlineOf(const Lines& lines) {
  const std::string& line = lines.back();
  const auto start = line.find(R"("path":)") + 7;
  return line.substr(start, line.find("]]") + 2 - start);
}

}  // namespace

TEST(TransportGlyphs, PlayIsAGradientAnInnerShadowAndAHairline) {
  const std::string triangle = R"([["M",0,32],["L",32,16],["L",0,0],["L",0,32],["Z"]])";
  EXPECT_EQ(
      recordingOf([] { Kit::drawPlay(); }),
      (Lines{
          R"({"op":"gradient","path":)" + triangle +
              R"(,"stops":[[0,[0.3333333333333333,0.3333333333333333,0.3333333333333333,1]],)"
              R"([0.43,[0.41666666666666663,0.41666666666666663,0.41666666666666663,1]],[1,[0.5,0.5,0.5,1]]],"angle":90})",
          R"({"op":"save"})",
          R"({"op":"clipRect","rect":[0,0,32,32]})",
          R"({"op":"setShadow","offset":[0,0],"blur":0,"color":null})",
          R"({"op":"setAlpha","alpha":1})",
          R"({"op":"beginTransparencyLayer"})",
          R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[0.167,0.167,0.167,1]})",
          R"({"op":"setBlendMode","mode":"sourceOut"})",
          R"({"op":"beginTransparencyLayer"})",
          R"({"op":"setFillColor","color":[0.167,0.167,0.167,1]})",
          R"({"op":"fill","path":)" + triangle + "}",
          R"({"op":"endTransparencyLayer"})",
          R"({"op":"endTransparencyLayer"})",
          R"({"op":"restore"})",
          R"({"op":"setStrokeColor","color":[0.167,0.167,0.167,1]})",
          R"({"op":"stroke","path":)" + triangle +
              R"(,"lineWidth":0.5,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})",
      }));
}

TEST(TransportGlyphs, StopIsItsFrame) {
  const Lines lines = recordingOf([] { Kit::drawStop({5, 6, 20, 30}); });
  EXPECT_THAT(lines.back(), HasSubstr(R"("shape":["rect",5,6,20,30])"));
  EXPECT_EQ(lines.size(), 16u);
}

TEST(TransportGlyphs, PreviousIsABarAndATriangle) {
  EXPECT_EQ(outlineOf(recordingOf([] { Kit::drawPrevious(); })),
            R"([["M",0,0],["L",8,0],["L",8,12.49984],["L",32,0],["L",32,32],["L",8,19.50016],["L",8,32],["L",0,32],)"
            R"(["L",0,0],["Z"]])");
}

TEST(TransportGlyphs, NextIsTheMirrorOfPrevious) {
  EXPECT_EQ(outlineOf(recordingOf([] { Kit::drawNext(); })),
            R"([["M",32,0],["L",24,0],["L",24,12.49984],["L",0,0],["L",0,32],["L",24,19.50016],["L",24,32],)"
            R"(["L",32,32],["L",32,0],["Z"]])");
}

TEST(TransportGlyphs, PauseIsTwoUprightBarsInItsDefaultFrame) {
  EXPECT_EQ(outlineOf(recordingOf([] { Kit::drawPause(); })),
            R"([["M",0,0],["L",11.50016,0],["L",11.50016,32],["L",0,32],["L",0,0],["Z"],)"
            R"(["M",21,0],["L",32,0],["L",32,32],["L",21,32],["L",21,0],["Z"]])");
}

TEST(TransportGlyphs, PausesFirstPointLies32AboveTheBaseInAFrame64High) {
  EXPECT_EQ(outlineOf(recordingOf([] {
              Kit::drawPause({0, 0, 32, 64});
            })),
            R"([["M",0,32],["L",11.50016,0],["L",11.50016,64],["L",0,64],["L",0,32],["Z"],)"
            R"(["M",21,0],["L",32,32],["L",32,64],["L",21,64],["L",21,0],["Z"]])");
}

TEST(TransportGlyphs, PausesRightBarFoldsOverItselfInAFrameOf64By64) {
  EXPECT_EQ(outlineOf(recordingOf([] {
              Kit::drawPause({0, 0, 64, 64});
            })),
            R"([["M",0,32],["L",23.00032,0],["L",23.00032,64],["L",0,64],["L",0,32],["Z"],)"
            R"(["M",42,0],["L",32,32],["L",32,64],["L",42,64],["L",42,0],["Z"]])");
}

TEST(TransportGlyphs, RepeatPaintsNothingInAnyFrame) {
  EXPECT_TRUE(recordingOf([] {
                Kit::drawRepeat();
                Kit::drawRepeat({0, 0, 0, 0});
                Kit::drawRepeat({-5, 7, 1000, 3});
                Kit::drawRepeatWithButtonFrame({1, 2, 3, 4});
              }).empty());
}

TEST(TransportGlyphs, ShuffleIsBlueWhenSelectedAndGrayOtherwise) {
  const auto colorOf = [](bool isSelected, bool isPressed) {
    const Lines lines = recordingOf([&] { Kit::drawShuffle({0, 0, 32, 32}, isSelected, isPressed); });
    EXPECT_EQ(lines.size(), 17u);
    return lines[0];
  };
  EXPECT_EQ(colorOf(true, false), R"({"op":"setFillColor","color":[0,0,1,1]})");
  EXPECT_EQ(colorOf(false, false), R"({"op":"setFillColor","color":[0.333,0.333,0.333,1]})");
  EXPECT_EQ(colorOf(false, true), R"({"op":"setFillColor","color":[0.333,0.333,0.333,1]})");
}

TEST(TransportGlyphs, ShuffleRunsItsInnerShadowInBothStates) {
  const Lines pressed = recordingOf([] { Kit::drawShuffle({0, 0, 32, 32}, true, true); });
  const Lines released = recordingOf([] { Kit::drawShuffle({0, 0, 32, 32}, true, false); });
  EXPECT_EQ(harness::only("setAlpha", pressed), Lines{R"({"op":"setAlpha","alpha":1})"});
  EXPECT_EQ(harness::only("setAlpha", released), Lines{R"({"op":"setAlpha","alpha":0})"});
  EXPECT_EQ(harness::only("setShadow", released).back(), R"({"op":"setShadow","offset":[0,0],"blur":0,"color":[0,0,0,1]})");
  EXPECT_EQ(harness::only("setShadow", pressed).back(),
            R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[0.167,0.167,0.167,1]})");
}

TEST(TransportGlyphs, AReleasedShuffleShowsNoInnerEdgeAndAPressedOneDoes) {
  const auto shuffle = [](bool isPressed) {
    return harness::pixelsOf({32, 32, 4}, [=] { Kit::drawShuffle({0, 0, 32, 32}, false, isPressed); });
  };
  // A released one has no other color than its gray, premultiplied, anywhere.
  const auto released = shuffle(false), pressed = shuffle(true);
  int painted = 0, differing = 0;
  for (int y = 0; y < released.height(); ++y) {
    for (int x = 0; x < released.width(); ++x) {
      const std::uint32_t pixel = released.pixel(x, y);
      const int alpha = harness::alphaOf(pixel), red = static_cast<int>(pixel >> 16 & 0xFF);
      EXPECT_NEAR(red, alpha * 0.333, 1) << x << ", " << y;
      painted += alpha == 255;
      differing += pixel != pressed.pixel(x, y);
    }
  }
  EXPECT_GT(painted, 500);
  EXPECT_GT(differing, 100);
}

TEST(TransportGlyphs, InvertPolaritysGroupSitsOnWholePointsAtTheLowerLeft) {
  // The plus ends at the group's left and top, the minus stands at its bottom, and 0.98175 of its width is at the right.
  const Lines fills = harness::only("fill", recordingOf([] { Kit::drawInvertPolarity(); }));
  ASSERT_EQ(fills.size(), 3u);
  EXPECT_THAT(fills[0], HasSubstr(R"(["M",2,20.0296])"));
  EXPECT_THAT(fills[0], HasSubstr(R"(["L",7.0160976,27])"));
  EXPECT_THAT(fills[1], HasSubstr(R"(["L",29.99951,7])"));
}

TEST(TransportGlyphs, InvertPolarityPaintsPlusMinusAndArrowInThisOrder) {
  Lines colors;
  for (const std::string& line : recordingOf([] { Kit::drawInvertPolarity(); }))
    colors.push_back(line.substr(0, line.find(R"(,"path")")));
  EXPECT_EQ(colors, (Lines{R"({"op":"setFillColor","color":[1,0,0,1],"named":"redColor"})", R"({"op":"fill")",
                           R"({"op":"setStrokeColor","color":[1,0,0,1],"named":"redColor"})", R"({"op":"stroke")",
                           R"({"op":"setFillColor","color":[0,0,1,1],"named":"blueColor"})", R"({"op":"fill")",
                           R"({"op":"setStrokeColor","color":[0,0,1,1],"named":"blueColor"})", R"({"op":"stroke")",
                           R"({"op":"setFillColor","color":[0.5,0.5,0.5,1]})", R"({"op":"fill")"}));
}

TEST(TransportGlyphs, AFrameWithAFractionalOriginMovesSnappedEdgesByIt) {
  const Lines fills = harness::only("fill", recordingOf([] { Kit::drawInvertPolarity({0.25, 100.75, 32, 32}); }));
  EXPECT_THAT(fills[0], HasSubstr(R"(["M",2.25,120.7796])"));
}

TEST(TransportGlyphs, AFrameWithAnOriginMovesFractionsAndFixedOffsetsByIt) {
  EXPECT_EQ(outlineOf(recordingOf([] {
              Kit::drawPause({0.5, 100, 32, 32});
            })),
            R"([["M",0.5,100],["L",12.00016,100],["L",12.00016,132],["L",0.5,132],["L",0.5,100],["Z"],)"
            R"(["M",21.5,100],["L",32.5,100],["L",32.5,132],["L",21.5,132],["L",21.5,100],["Z"]])");
}

TEST(TransportGlyphs, AStrokeWithoutAnyStrengthLeavesThePixelsAsTheyWere) {
  const auto discWith = [](bool isStroked) {
    return harness::pixelsOf({20, 20}, [=] {
      const auto disc = NSBezierPath::bezierPathWithOvalInRect({2, 2, 16, 16});
      TessalunaUIKit::recipes::color(1, 1, 1, 0.5)->setFill();
      disc->fill();
      if (!isStroked) return;
      TessalunaUIKit::recipes::color(0, 0, 0, 0)->setStroke();
      disc->stroke();
    });
  };
  EXPECT_TRUE(harness::arePixelsEqual(discWith(true), discWith(false)));
}

TEST(TransportGlyphs, WithoutAContextThoseWithoutAnInnerShadowDoNothing) {
  Kit::drawRepeat();
  Kit::drawInvertPolarity();
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

class TransportGlyphsDeathTest : public testing::TestWithParam<std::pair<const char*, void (*)()>> {};

TEST_P(TransportGlyphsDeathTest, WithoutAContextTheProgramStops) {
  EXPECT_DEATH(GetParam().second(), "without a current graphics context");
}

INSTANTIATE_TEST_SUITE_P(
    InnerShadow, TransportGlyphsDeathTest,
    testing::Values(std::pair{"Play", +[] { Kit::drawPlay(); }}, std::pair{"Pause", +[] { Kit::drawPause(); }},
                    std::pair{"Stop", +[] { Kit::drawStop(); }}, std::pair{"Previous", +[] { Kit::drawPrevious(); }},
                    std::pair{"Next", +[] { Kit::drawNext(); }}, std::pair{"Shuffle", +[] { Kit::drawShuffle(); }},
                    std::pair{"PressedShuffle",
                              +[] {
                                Kit::drawShuffle({0, 0, 9, 9}, true, true);
                              }}),
    [](const auto& info) { return info.param.first; });
