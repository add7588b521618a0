#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/TrackRowGlyphs.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::listingOf;
using harness::only;
using harness::operationsOf;
using harness::paintedBy;
using harness::recordingOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using Kit = TessalunaUIKit::TrackRowGlyphs;

constexpr CGRect unitFrame{0, 0, 1, 1};
constexpr const char* halfWhite = R"(,"color":[1,1,1,0.5]})";
constexpr const char* fullWhite = R"(,"color":[1,1,1,1]})";
constexpr const char* clear = R"(,"color":[0,0,0,0]})";
constexpr const char* black = R"(,"color":[0,0,0,1]})";
constexpr const char* namedBlack = R"("named":"blackColor"})";

TEST(TrackRowPlayPause, DiscLiesOnHalfPointsInTheDefaultFrame) {
  EXPECT_THAT(recordingOf([] { Kit::drawTrackRowPlayPause(); }).at(1), HasSubstr(R"("shape":["oval",0.5,0.5,14,14])"));
  // The origin takes no part in the rounding.
  EXPECT_THAT(recordingOf([] {
                Kit::drawTrackRowPlayPause({2.25, 7, 30, 20});
              }).at(1),
              HasSubstr(R"("shape":["oval",2.75,7.5,29,19])"));
}

TEST(TrackRowPlayPause, PressingMakesTheDiscOpaqueAndTheMouseOutlinesIt) {
  for (const bool isPressed : {false, true})
    for (const bool isOver : {false, true}) {
      const Lines lines = recordingOf([&] { Kit::drawTrackRowPlayPause({0, 0, 15, 15}, isPressed, isOver, false); });
      EXPECT_THAT(lines.at(0), EndsWith(isPressed ? fullWhite : halfWhite));
      EXPECT_THAT(lines.at(2), EndsWith(isOver ? black : clear));
      EXPECT_THAT(lines.at(3), HasSubstr(R"("lineWidth":1,)"));
    }
}

TEST(TrackRowPlayPause, MouseAndPressLeaveTheMarkAsItIs) {
  for (const bool isPlaying : {false, true}) {
    const auto markOf = [&](bool isPressed, bool isOver) {
      Lines lines = recordingOf([&] { Kit::drawTrackRowPlayPause({0, 0, 15, 15}, isPressed, isOver, isPlaying); });
      lines.erase(lines.begin(), lines.begin() + 4);
      return lines;
    };
    EXPECT_EQ(markOf(false, false), markOf(false, true));
    EXPECT_EQ(markOf(false, false), markOf(true, false));
  }
}

TEST(TrackRowPlayPause, TriangleHasNoInnerShadow) {
  const auto draw = [](CGRect frame) { Kit::drawTrackRowPlayPause(frame, false, true, false); };
  const Lines lines = recordingOf([&] { draw({0, 0, 15, 15}); });
  ASSERT_THAT(operationsOf(lines), ElementsAre("setFillColor", "fill", "setStrokeColor", "stroke", "setFillColor", "fill",
                                               "setStrokeColor", "stroke"));
  EXPECT_THAT(lines[4], EndsWith(namedBlack));
  EXPECT_THAT(lines[6], EndsWith(namedBlack));
  EXPECT_THAT(lines[7], HasSubstr(R"("lineWidth":1,"cap":"round","join":"bevel")"));
  EXPECT_EQ(listingOf(paintedBy([&] { draw(unitFrame); }).filled.at(1)),
            "M (0.32895, 0.72368), L (0.76316, 0.50658), L (0.32895, 0.28947), L (0.32895, 0.72368), Z");
}

TEST(TrackRowPlayPause, BarsHaveAnInnerShadowAndAHairline) {
  const Lines lines = recordingOf([] { Kit::drawTrackRowPlayPause(); });
  EXPECT_EQ(only("beginTransparencyLayer", lines).size(), 2u);
  EXPECT_EQ(only("setShadow", lines).at(1),
            R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[0.167,0.167,0.167,1]})");
  EXPECT_THAT(lines.back(), HasSubstr(R"("lineWidth":0.5,"cap":"round","join":"bevel")"));
  EXPECT_EQ(listingOf(paintedBy([] { Kit::drawTrackRowPlayPause(unitFrame); }).filled.at(1)),
            "M (0.29276, 0.29276), L (0.44408, 0.29276), L (0.44408, 0.71382), L (0.29276, 0.71382), "
            "L (0.29276, 0.29276), Z, "
            "M (0.56908, 0.29276), L (0.71382, 0.29276), L (0.71382, 0.71382), L (0.56908, 0.71382), "
            "L (0.56908, 0.29276), Z");
}

TEST(TrackRowPlayPause, MarkFollowsTheFrameAndItsLineDoesNot) {
  const auto painted = paintedBy([] { Kit::drawTrackRowPlayPause({0, 0, 150, 150}, false, true, false); });
  EXPECT_DOUBLE_EQ(painted.filled.at(1).bounds().origin.x, 150 * 0.32895);
  EXPECT_THAT(painted.lines.back(), HasSubstr(R"("lineWidth":1,)"));
}

TEST(TrackRowPlayPauseDeathTest, StopsWithoutAContextInEveryState) {
  EXPECT_DEATH(Kit::drawTrackRowPlayPause({0, 0, 15, 15}, false, false, false), "");
  EXPECT_DEATH(Kit::drawTrackRowPlayPause({0, 0, 15, 15}, false, false, true), "");
}

TEST(TrackRowPlaying, StrokesTheLoudspeakerOnceAndFillsNothing) {
  const auto painted = paintedBy([] { Kit::drawTrackRowPlaying(unitFrame); });
  ASSERT_THAT(operationsOf(painted.lines), ElementsAre("setStrokeColor", "stroke"));
  EXPECT_THAT(painted.lines[0], EndsWith(black));
  EXPECT_THAT(painted.lines[1], HasSubstr(R"("lineWidth":1,"cap":"butt","join":"miter")"));
  EXPECT_EQ(listingOf(painted.stroked.at(0)),
            "M (0.25685, 0.38162), C (0.24701, 0.41022; 0.25118, 0.38675; 0.24701, 0.39935), "
            "L (0.24701, 0.6066), C (0.25685, 0.63542; 0.24701, 0.61747; 0.25118, 0.63028), "
            "L (0.46329, 0.851), C (0.524, 0.82709; 0.48986, 0.87926; 0.524, 0.86854), L (0.524, 0.19585), "
            "C (0.46233, 0.16708; 0.524, 0.15124; 0.49311, 0.13435), L (0.25685, 0.38162), Z, "
            "M (0.26331, 0.37189), L (0.14925, 0.37189), "
            "C (0.11667, 0.40602; 0.13128, 0.37189; 0.11667, 0.38721), L (0.11667, 0.61081), "
            "C (0.14925, 0.64494; 0.11667, 0.62962; 0.13128, 0.64494), L (0.26331, 0.64494), "
            "M (0.60038, 0.60369), C (0.67064, 0.50842; 0.64077, 0.59265; 0.67064, 0.55415), "
            "C (0.60038, 0.41312; 0.67064, 0.46268; 0.64077, 0.42418), "
            "M (0.66934, 0.71078), C (0.78469, 0.50842; 0.73803, 0.67196; 0.78469, 0.59591), "
            "C (0.66991, 0.30644; 0.78469, 0.42119; 0.73826, 0.34532), "
            "M (0.72763, 0.80161), C (0.9, 0.50842; 0.82989, 0.74756; 0.9, 0.63661), "
            "C (0.72763, 0.21522; 0.9, 0.38022; 0.82989, 0.26925)");
}

TEST(TrackRowPlaying, WithoutArgumentsPaintsInASquareOfFifteenPoints) {
  EXPECT_EQ(recordingOf([] { Kit::drawTrackRowPlaying(); }), recordingOf([] {
              Kit::drawTrackRowPlayingWithFrame({0, 0, 15, 15});
            }));
}

TEST(TrackMore, PaintsEachDotBeforeTheNextWithAHairline) {
  const Lines lines = recordingOf([] { Kit::drawTrackMore(); });
  ASSERT_EQ(lines.size(), 12u);
  const char* const dots[] = {R"("shape":["oval",0.5,5.5,4,4])", R"("shape":["oval",5.5,5.5,4,4])",
                              R"("shape":["oval",10.5,5.5,4,4])"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_THAT(lines[4 * i + 1], HasSubstr(R"({"op":"fill")"));
    EXPECT_THAT(lines[4 * i + 1], HasSubstr(dots[i]));
    EXPECT_THAT(lines[4 * i + 3], HasSubstr(R"({"op":"stroke")"));
    EXPECT_THAT(lines[4 * i + 3], HasSubstr(dots[i]));
    EXPECT_THAT(lines[4 * i + 3], HasSubstr(R"("lineWidth":0.5,"cap":"butt","join":"miter")"));
  }
}

TEST(TrackMore, AtRestIsHalfTransparentAndItsOutlineLeavesNoMark) {
  const Lines rest = recordingOf([] { Kit::drawTrackMore({0, 0, 15, 15}, false, false); });
  for (const std::string& color : only("setFillColor", rest)) EXPECT_THAT(color, EndsWith(halfWhite));
  const Lines outlines = only("setStrokeColor", rest);
  ASSERT_EQ(outlines.size(), 3u);
  for (const std::string& color : outlines) EXPECT_THAT(color, EndsWith(clear));
  EXPECT_THAT(recordingOf([] { Kit::drawTrackMore({0, 0, 15, 15}, true, true); }).at(0), EndsWith(fullWhite));
}

}  // namespace
