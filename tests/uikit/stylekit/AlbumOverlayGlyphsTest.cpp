#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/AlbumOverlayGlyphs.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::listingIn;
using harness::listingOf;
using harness::only;
using harness::operationsOf;
using harness::paintedBy;
using harness::recordingOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using Kit = TessalunaUIKit::AlbumOverlayGlyphs;

constexpr CGRect unitFrame{0, 0, 1, 1};
constexpr const char* halfWhite = R"(,"color":[1,1,1,0.5]})";
constexpr const char* fullWhite = R"(,"color":[1,1,1,1]})";
constexpr const char* clear = R"(,"color":[0,0,0,0]})";
constexpr const char* black = R"(,"color":[0,0,0,1]})";
constexpr const char* namedBlack = R"("named":"blackColor"})";

// Each glyph with its two common flags; the first fill and stroke are those of its ground.
struct Overlay {
  const char* name;
  void (*draw)(CGRect, bool isPressed, bool isOver);
};
const Overlay overlays[] = {
    {"play or pause", [](CGRect f, bool p, bool o) { Kit::drawPlayPauseAlbumOverlay(f, p, o, false); }},
    {"playing", [](CGRect f, bool p, bool o) { Kit::drawPlayingAlbumOverlay(f, p, o); }},
    {"favorite, not selected", [](CGRect f, bool p, bool o) { Kit::drawFavoriteAlbumOverlay(f, false, p, o); }},
    {"more", [](CGRect f, bool p, bool o) { Kit::drawMoreAlbumOverlay(f, p, o); }},
};

TEST(AlbumOverlays, PressingMakesTheGroundOpaqueAndTheMouseOutlinesIt) {
  for (const Overlay& overlay : overlays)
    for (const bool isPressed : {false, true})
      for (const bool isOver : {false, true}) {
        SCOPED_TRACE(overlay.name);
        const Lines lines = recordingOf([&] { overlay.draw({0, 0, 40, 40}, isPressed, isOver); });
        EXPECT_THAT(lines.at(0), EndsWith(isPressed ? fullWhite : halfWhite));
        EXPECT_THAT(lines.at(1), HasSubstr(R"({"op":"fill",)"));
        EXPECT_THAT(lines.at(2), EndsWith(isOver ? black : clear));
        EXPECT_THAT(lines.at(3), HasSubstr(R"({"op":"stroke",)"));
        EXPECT_THAT(lines.at(3), HasSubstr(R"("lineWidth":1,)"));
      }
}

TEST(AlbumOverlays, WithoutFlagsShowTheBlackOutline) {
  void (*const byDefault[])() = {[] { Kit::drawPlayPauseAlbumOverlay(); }, [] { Kit::drawPlayingAlbumOverlay(); },
                                 [] { Kit::drawFavoriteAlbumOverlay(); }, [] { Kit::drawMoreAlbumOverlay(); }};
  for (const auto draw : byDefault) EXPECT_THAT(recordingOf(draw).at(2), EndsWith(black));
}

TEST(AlbumOverlays, DiscsAreSnappedToWholePointsInTheirDefaultFrame) {
  const char* const disc = R"("shape":["oval",1,1,74,74])";
  EXPECT_THAT(recordingOf([] { Kit::drawPlayPauseAlbumOverlay(); }).at(1), HasSubstr(disc));
  EXPECT_THAT(recordingOf([] { Kit::drawPlayingAlbumOverlay(); }).at(1), HasSubstr(disc));
  // The origin takes no part in the rounding.
  EXPECT_THAT(recordingOf([] {
                Kit::drawPlayingAlbumOverlay({0.4, -3.7, 76, 38});
              }).at(1),
              HasSubstr(R"("shape":["oval",1.4,-2.7,74,36])"));
}

TEST(PlayPauseAlbumOverlay, ShowsATriangleWithoutAnInnerShadowWhenNotPlaying) {
  const auto draw = [](CGRect frame) { Kit::drawPlayPauseAlbumOverlay(frame, false, true, false); };
  const Lines lines = recordingOf([&] { draw({0, 0, 76, 76}); });
  ASSERT_THAT(operationsOf(lines), ElementsAre("setFillColor", "fill", "setStrokeColor", "stroke", "setFillColor", "fill",
                                               "setStrokeColor", "stroke"));
  EXPECT_THAT(lines[4], EndsWith(namedBlack));
  EXPECT_THAT(lines[6], EndsWith(namedBlack));
  EXPECT_THAT(lines[7], HasSubstr(R"("lineWidth":2,"cap":"round","join":"bevel")"));
  EXPECT_EQ(listingOf(paintedBy([&] { draw(unitFrame); }).filled.at(1)),
            "M (0.32895, 0.72368), L (0.76316, 0.50658), L (0.32895, 0.28947), L (0.32895, 0.72368), Z");
}

TEST(PlayPauseAlbumOverlay, ShowsTwoBarsWithAnInnerShadowWhenPlaying) {
  const Lines lines = recordingOf([] { Kit::drawPlayPauseAlbumOverlay(); });
  ASSERT_THAT(operationsOf(lines),
              ElementsAre("setFillColor", "fill", "setStrokeColor", "stroke", "setFillColor", "fill", "save", "clipRect",
                          "setShadow", "setAlpha", "beginTransparencyLayer", "setShadow", "setBlendMode",
                          "beginTransparencyLayer", "setFillColor", "fill", "endTransparencyLayer", "endTransparencyLayer",
                          "restore", "setStrokeColor", "stroke"));
  EXPECT_EQ(lines[8], R"({"op":"setShadow","offset":[0,0],"blur":0,"color":null})");
  EXPECT_EQ(lines[11], R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[0.167,0.167,0.167,1]})");
  EXPECT_THAT(lines[20], HasSubstr(R"("lineWidth":1,"cap":"round","join":"bevel")"));
  EXPECT_EQ(listingOf(paintedBy([] { Kit::drawPlayPauseAlbumOverlay(unitFrame); }).filled.at(1)),
            "M (0.29276, 0.29276), L (0.44408, 0.29276), L (0.44408, 0.71382), L (0.29276, 0.71382), "
            "L (0.29276, 0.29276), Z, "
            "M (0.56908, 0.29276), L (0.71382, 0.29276), L (0.71382, 0.71382), L (0.56908, 0.71382), "
            "L (0.56908, 0.29276), Z");
}

TEST(PlayPauseAlbumOverlay, FlagsOfTheGroundLeaveTheMarkAsItIs) {
  for (const bool isPlaying : {false, true}) {
    const auto markOf = [&](bool isPressed, bool isOver) {
      Lines lines = recordingOf([&] { Kit::drawPlayPauseAlbumOverlay({0, 0, 76, 76}, isPressed, isOver, isPlaying); });
      lines.erase(lines.begin(), lines.begin() + 4);
      return lines;
    };
    EXPECT_EQ(markOf(false, false), markOf(false, true));
    EXPECT_EQ(markOf(false, false), markOf(true, false));
  }
}

TEST(PlayPauseAlbumOverlayDeathTest, StopsWithoutAContextInEveryState) {
  EXPECT_DEATH(Kit::drawPlayPauseAlbumOverlay({0, 0, 76, 76}, false, false, false), "");
  EXPECT_DEATH(Kit::drawPlayPauseAlbumOverlay({0, 0, 76, 76}, false, false, true), "");
}

TEST(PlayingAlbumOverlay, StrokesTheLoudspeakerInItsSnappedGroup) {
  const Lines lines = recordingOf([] { Kit::drawPlayingAlbumOverlay(); });
  const Lines strokes = only("stroke", lines);
  ASSERT_EQ(strokes.size(), 6u);
  EXPECT_EQ(only("fill", lines).size(), 1u);
  for (int part = 1; part <= 5; ++part) {
    const char* const style =
        part <= 2 ? R"("lineWidth":1.5,"cap":"butt","join":"round")" : R"("lineWidth":1.5,"cap":"round","join":"round")";
    EXPECT_THAT(strokes[part], HasSubstr(style));
  }
  for (const std::string& color : only("setStrokeColor", lines)) EXPECT_THAT(color, EndsWith(black));
}

TEST(PlayingAlbumOverlay, GroupIsOffTheGridAtItsRightEdge) {
  const auto parts = paintedBy([] { Kit::drawPlayingAlbumOverlay(); }).stroked;
  // The speaker's back begins at the group's left edge, and the outermost wave ends at its right one.
  EXPECT_DOUBLE_EQ(CGRectGetMinX(parts.at(1).bounds()), 16);
  EXPECT_DOUBLE_EQ(CGRectGetMaxX(parts.at(5).bounds()), 16 + 43.08);
  EXPECT_DOUBLE_EQ(parts.at(2).points()[0].y, 21 + 35 * 0.32313);
}

TEST(PlayingAlbumOverlay, PartsAreThoseOfTheDesign) {
  const auto parts = paintedBy([] { Kit::drawPlayingAlbumOverlay(); }).stroked;
  const CGRect group{16, 21, 43.08, 35};
  EXPECT_EQ(listingIn(group, parts.at(1)),
            "M (0.1872, 0.30956), L (0.0416, 0.30956), C (0, 0.35718; 0.01866, 0.30956; 0, 0.33094), "
            "L (0, 0.64289), C (0.0416, 0.69051; 0, 0.66913; 0.01866, 0.69051), L (0.1872, 0.69051)");
  EXPECT_EQ(listingIn(group, parts.at(2)),
            "M (0.17896, 0.32313), C (0.1664, 0.36304; 0.17172, 0.3303; 0.1664, 0.34787), "
            "L (0.1664, 0.63701), C (0.17896, 0.67722; 0.1664, 0.65217; 0.17172, 0.67005), "
            "L (0.4425, 0.97798), C (0.52, 0.94462; 0.47642, 1.01741; 0.52, 1.00245), L (0.52, 0.06397), "
            "C (0.44127, 0.02383; 0.52, 0.00173; 0.48056, -0.02184), L (0.17896, 0.32313), Z");
  EXPECT_EQ(listingIn(group, parts.at(3)),
            "M (0.61751, 0.63296), C (0.7072, 0.50003; 0.66907, 0.61756; 0.7072, 0.56384), "
            "C (0.61751, 0.36708; 0.7072, 0.43622; 0.66907, 0.38251)");
  EXPECT_EQ(listingIn(group, parts.at(4)),
            "M (0.70553, 0.78236), C (0.8528, 0.50003; 0.79323, 0.7282; 0.8528, 0.6221), "
            "C (0.70626, 0.21825; 0.8528, 0.37834; 0.79352, 0.27249)");
  EXPECT_EQ(listingIn(group, parts.at(5)),
            "M (0.77996, 0.90907), C (1, 0.50003; 0.9105, 0.83367; 1, 0.67889), "
            "C (0.77996, 0.09099; 1, 0.32118; 0.9105, 0.16637)");
}

TEST(FavoriteAlbumOverlay, IsRedWhenSelectedAndPaleRedWhenPressedToo) {
  const auto fillOf = [](bool isSelected, bool isPressed) {
    return recordingOf([&] { Kit::drawFavoriteAlbumOverlay({0, 0, 38, 38}, isSelected, isPressed, true); }).at(0);
  };
  EXPECT_THAT(fillOf(false, false), EndsWith(halfWhite));
  EXPECT_THAT(fillOf(false, true), EndsWith(fullWhite));
  EXPECT_THAT(fillOf(true, false), EndsWith(R"(,"color":[1,0,0,1]})"));
  EXPECT_THAT(fillOf(true, true), EndsWith(R"(,"color":[1,0.421,0.421,1]})"));
}

TEST(FavoriteAlbumOverlay, IsOneHeartWithARoundCap) {
  const auto painted = paintedBy([] { Kit::drawFavoriteAlbumOverlay(unitFrame); });
  ASSERT_EQ(painted.lines.size(), 4u);
  EXPECT_EQ(listingOf(painted.filled.at(0)),
            "M (0.70335, 0.89474), C (0.5, 0.77567; 0.61843, 0.89474; 0.5437, 0.8474), "
            "C (0.29665, 0.89474; 0.4563, 0.8474; 0.38157, 0.89474), "
            "C (0.05263, 0.62881; 0.16189, 0.89474; 0.05263, 0.77567), "
            "C (0.5, 0.05263; 0.05263, 0.31856; 0.37799, 0.16343), "
            "C (0.94737, 0.62881; 0.62201, 0.16343; 0.94737, 0.31856), "
            "C (0.70335, 0.89474; 0.94737, 0.77567; 0.83811, 0.89474), Z");
  EXPECT_THAT(painted.lines[3], HasSubstr(R"("lineWidth":1,"cap":"round","join":"miter")"));
}

TEST(MoreAlbumOverlay, PaintsEachDotBeforeTheNext) {
  const Lines lines = recordingOf([] { Kit::drawMoreAlbumOverlay(); });
  ASSERT_EQ(lines.size(), 12u);
  const char* const dots[] = {R"("shape":["oval",3,6,10,10])", R"("shape":["oval",17,6,10,10])",
                              R"("shape":["oval",31,6,10,10])"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_THAT(lines[4 * i + 1], HasSubstr(R"({"op":"fill")"));
    EXPECT_THAT(lines[4 * i + 1], HasSubstr(dots[i]));
    EXPECT_THAT(lines[4 * i + 3], HasSubstr(R"({"op":"stroke")"));
    EXPECT_THAT(lines[4 * i + 3], HasSubstr(dots[i]));
  }
}

}  // namespace
