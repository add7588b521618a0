#include "tessaluna/uikit/transport/PlaybackTransportButton.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/expectedFile.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;
using TessalunaUIKit::PlaybackTransportButton;
using testing::HasSubstr;

namespace {

enum Style : std::uint64_t { Play = 1, Pause, Stop, Previous, Next, Shuffle, Repeat };
constexpr Style everyStyle[] = {Play, Pause, Stop, Previous, Next, Shuffle, Repeat};

// A button of 32 by 32 at (10, 10), and a target for it.
class PlaybackTransportButtonTest : public harness::StillWorld {
 protected:
  PlaybackTransportButtonTest() {
    button->setTarget(target);
    button->setAction("act:");
  }

  Ref<PlaybackTransportButton> button = make<PlaybackTransportButton>(CGRect{10, 10, 32, 32});
  Ref<harness::ActionProbe> target = make<harness::ActionProbe>();

  Lines drawn() const {
    return recordingOf([this] { button->drawRect(button->bounds()); });
  }
  Lines drawnInStyle(std::uint64_t style) const {
    button->setTransportButtonStyle(style);
    return drawn();
  }
  // In bounds of one point, so that coordinates are fractions.
  static tessaluna::backend::Path unitOutline(Style style) {
    const auto unit = make<PlaybackTransportButton>(CGRect{0, 0, 1, 1});
    unit->setTransportButtonStyle(style);
    const harness::Painted painted = harness::paintedBy([&] { unit->drawRect(unit->bounds()); });
    EXPECT_EQ(painted.stroked.size(), 1u);
    return painted.stroked.empty() ? tessaluna::backend::Path() : painted.stroked[0];
  }
  // The points that lie on the outline, and none that only pull at it.
  static std::vector<CGPoint> nodesOf(const tessaluna::backend::Path& path) {
    std::vector<CGPoint> nodes;
    std::size_t next = 0;
    for (const tessaluna::backend::PathVerb verb : path.verbs()) {
      next += static_cast<std::size_t>(tessaluna::backend::pointCount(verb));
      if (verb != tessaluna::backend::PathVerb::Close) nodes.push_back(path.points()[next - 1]);
    }
    return nodes;
  }
  static double areaOf(Style style) {
    double area = 0;
    for (const harness::Subpath& shape : harness::subpathsOf(unitOutline(style))) area += std::abs(shape.area);
    return area;
  }
  template <class Visit>
  static void eachPointOfAGrid(Visit visit) {
    constexpr int side = 37;  // no point of it lies on an edge of a glyph
    for (int row = 0; row < side; ++row)
      for (int column = 0; column < side; ++column) visit({(column + 0.5) / side, (row + 0.41) / side});
  }
  std::string outline() const {
    const Lines strokes = harness::only("stroke", drawn());
    if (strokes.empty()) return "";
    const auto start = strokes[0].find(R"("path":)") + 7;
    return strokes[0].substr(start, strokes[0].find("]]") + 2 - start);
  }
  std::string lineWidth() const {
    const Lines strokes = harness::only("stroke", drawn());
    return strokes.empty() ? "" : strokes[0].substr(strokes[0].find("\"lineWidth\""), 15);
  }
  static constexpr CGPoint inside{20, 20}, outside{100, 100};
};

const std::string triangle = R"([["M",0,32],["L",32,16],["L",0,0],["L",0,32],["Z"]])";
const std::string grayOutline = R"({"op":"setStrokeColor","color":[0.167,0.167,0.167,1]})";

// The end of a path's stroke line.
std::string strokeOf(const std::string& shape, const std::string& width) {
  return R"({"op":"stroke",)" + shape + R"(,"lineWidth":)" + width +
         R"(,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})";
}
std::string gradientIn(const std::string& shape) {
  return R"({"op":"gradient",)" + shape +
         R"(,"stops":[[0,[0.3333333333333333,0.3333333333333333,0.3333333333333333,1]],)"
         R"([0.43,[0.417,0.417,0.417,1]],[1,[0.667,0.667,0.667,1]]],"angle":90})";
}

}  // namespace

TEST_F(PlaybackTransportButtonTest, MadeInCodeItShowsPlay) {
  EXPECT_EQ(button->transportButtonStyle(), 1u);
  EXPECT_EQ(drawn(), (Lines{gradientIn(R"("path":)" + triangle), grayOutline, strokeOf(R"("path":)" + triangle, "0.5")}));
}

TEST_F(PlaybackTransportButtonTest, FromAnInterfaceFileItShowsNothingUntilItsStyleIsSet) {
  NSCoder coder(R"({"frame": [1, 2, 32, 32], "action": "act:", "cell": {"state": "on"}})");
  button = make<PlaybackTransportButton>(coder);
  EXPECT_EQ(button->className(), "TessalunaUIKit.PlaybackTransportButton");
  EXPECT_EQ(button->frame(), (CGRect{1, 2, 32, 32}));
  EXPECT_EQ(button->transportButtonStyle(), 0u);
  EXPECT_TRUE(drawn().empty());
  EXPECT_FALSE(drawnInStyle(Play).empty());
}

TEST_F(PlaybackTransportButtonTest, AnInterfaceFileSetsTheStyleAsAProperty) {
  TessalunaUIKit::registerInterfaceFileClasses();
  const auto contents =
      make<NSNib>(R"({"objects": [{"class": "TessalunaUIKit.PlaybackTransportButton", "frame": [0, 0, 32, 32],
          "properties": {"transportButtonStyle": 6, "buttonType": "toggle"}}]})")
          ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  button = std::dynamic_pointer_cast<PlaybackTransportButton>(contents.topLevelObjects.at(0));
  EXPECT_EQ(button->transportButtonStyle(), 6u);
  EXPECT_EQ(drawn().size(), 4u);
}

TEST_F(PlaybackTransportButtonTest, AnUnknownStyleDrawsNothing) {
  for (const std::uint64_t style :
       {std::uint64_t{0}, std::uint64_t{8}, (std::uint64_t{1} << 32) + 1, std::numeric_limits<std::uint64_t>::max()}) {
    EXPECT_TRUE(drawnInStyle(style).empty());
    EXPECT_EQ(button->transportButtonStyle(), style);
  }
}

// What the outlines are, seen from outside: where they leave paint, how large they are, and what they are mirror images of.

TEST_F(PlaybackTransportButtonTest, EachGlyphLeavesPaintWhereOneExpectsIt) {
  struct Case {
    Style style;
    std::vector<CGPoint> painted, empty;  // fractions of the bounds
  };
  const Case cases[] = {
      {Play, {{0.01, 0.5}, {0.01, 0.03}, {0.01, 0.97}, {0.97, 0.5}, {0.5, 0.7}}, {{0.5, 0.2}, {0.5, 0.8}, {0.97, 0.45}}},
      // The bar at the left, and the tip that touches it.
      {Previous, {{0.12, 0.02}, {0.12, 0.98}, {0.3, 0.5}, {0.99, 0.02}, {0.99, 0.98}}, {{0.3, 0.3}, {0.3, 0.7}, {0.6, 0.1}}},
      {Next, {{0.88, 0.02}, {0.88, 0.98}, {0.7, 0.5}, {0.01, 0.02}, {0.01, 0.98}}, {{0.7, 0.3}, {0.7, 0.7}, {0.4, 0.1}}},
      // Two tails at the left, two heads at the right, and what crosses between them. The broken band has a gap on either side.
      {Shuffle,
       {{0.05, 0.27}, {0.05, 0.7}, {0.9, 0.66}, {0.9, 0.3}, {0.7, 0.66}, {0.7, 0.3}, {0.36, 0.45}},
       {{0.05, 0.5}, {0.5, 0.5}, {0.9, 0.48}, {0.5, 0.1}, {0.5, 0.9}, {0.2, 0.5}}},
      // A head at the upper left and one at the lower right, and bands around an empty middle.
      {Repeat,
       {{0.25, 0.25}, {0.75, 0.76}, {0.5, 0.26}, {0.5, 0.75}, {0.93, 0.5}, {0.07, 0.5}},
       {{0.5, 0.5}, {0.05, 0.05}, {0.95, 0.95}, {0.5, 0.1}, {0.5, 0.95}, {0.3, 0.5}, {0.7, 0.5}}},
  };
  for (const Case& each : cases) {
    const auto outline = unitOutline(each.style);
    for (const CGPoint& point : each.painted)
      EXPECT_NE(harness::windingAt(outline, point), 0) << each.style << testing::PrintToString(point);
    for (const CGPoint& point : each.empty)
      EXPECT_EQ(harness::windingAt(outline, point), 0) << each.style << testing::PrintToString(point);
  }
}

TEST_F(PlaybackTransportButtonTest, GlyphsOfStraightLinesCoverTheAreaThatIsWorkedOutByHand) {
  // Half of the bounds; a bar of a quarter and a trapezoid of 0.75 by (1 + 0.60938 - 0.39062) / 2; all of them.
  EXPECT_NEAR(areaOf(Play), 0.5, 1e-9);
  EXPECT_NEAR(areaOf(Previous), 0.707035, 1e-9);
  EXPECT_NEAR(areaOf(Next), 0.707035, 1e-9);
  EXPECT_NEAR(areaOf(Stop), 1, 1e-9);
}

TEST_F(PlaybackTransportButtonTest, NextIsPreviousInAMirror) {
  const auto previous = unitOutline(Previous), next = unitOutline(Next);
  eachPointOfAGrid([&](CGPoint point) {
    EXPECT_EQ(harness::windingAt(next, point) != 0, harness::windingAt(previous, {1 - point.x, point.y}) != 0)
        << testing::PrintToString(point);
  });
}

TEST_F(PlaybackTransportButtonTest, PlayPreviousAndNextLookTheSameUpsideDown) {
  for (const Style style : {Play, Previous, Next}) {
    const auto outline = unitOutline(style);
    eachPointOfAGrid([&](CGPoint point) {
      const CGPoint turned{point.x, 1 - point.y};
      EXPECT_EQ(harness::windingAt(outline, point) != 0, harness::windingAt(outline, turned) != 0)
          << style << testing::PrintToString(point);
    });
  }
}

TEST_F(PlaybackTransportButtonTest, TheTwoArrowsOfRepeatAreOneTurnedHalfRound) {
  const auto arrows = harness::subpathsOf(unitOutline(Repeat));
  ASSERT_EQ(arrows.size(), 2u);
  const auto first = nodesOf(arrows[0].path), second = nodesOf(arrows[1].path);
  ASSERT_EQ(first.size(), second.size());
  // Around a point that lies a little beside the middle: half of what the heights of the two heads' tips add up to.
  const CGFloat middle = (0.25284 + 0.75994) / 2;
  for (std::size_t i = 0; i < first.size(); ++i) {
    EXPECT_NEAR(first[i].x, 1 - second[i].x, 2e-5) << i;
    EXPECT_NEAR(first[i].y, 2 * middle - second[i].y, 2e-5) << i;
  }
  EXPECT_NEAR(arrows[0].area, arrows[1].area, 2e-4);
}

TEST_F(PlaybackTransportButtonTest, ShuffleIsThreeClosedShapesWhoseHeadsReachTheEdgeAtTheRight) {
  const auto shapes = harness::subpathsOf(unitOutline(Shuffle));
  ASSERT_EQ(shapes.size(), 3u);
  const auto rightmost = [](const harness::Subpath& shape) {
    const auto points = shape.path.points();
    return *std::max_element(points.begin(), points.end(), [](CGPoint a, CGPoint b) { return a.x < b.x; });
  };
  for (const harness::Subpath& shape : shapes) EXPECT_TRUE(shape.isClosed);
  EXPECT_EQ(rightmost(shapes[0]).x, 1);
  EXPECT_EQ(rightmost(shapes[1]).x, 1);
  EXPECT_LT(rightmost(shapes[2]).x, 0.5);
  EXPECT_GT(rightmost(shapes[0]).y, 0.5);
  EXPECT_LT(rightmost(shapes[1]).y, 0.5);
}

TEST_F(PlaybackTransportButtonTest, TheOutlinesOfAllStylesButPauseFollowTheBounds) {
  button->setFrame({0, 0, 50, 20});
  button->setBoundsOrigin({7, 9});
  for (const Style style : {Play, Stop, Previous, Next, Shuffle, Repeat}) {
    button->setTransportButtonStyle(style);
    const harness::Painted painted = harness::paintedBy([&] { button->drawRect(button->bounds()); });
    EXPECT_EQ(harness::listingIn({7, 9, 50, 20}, painted.stroked.at(0)),
              harness::listingIn({0, 0, 1, 1}, unitOutline(style)));
  }
}

TEST_F(PlaybackTransportButtonTest, StopIsItsWholeBounds) {
  button->setFrame({3, 4, 20, 30});
  const std::string whole = R"("path":[["M",0,0],["L",20,0],["L",20,30],["L",0,30],["Z"]],"shape":["rect",0,0,20,30])";
  EXPECT_EQ(drawnInStyle(Stop), (Lines{gradientIn(whole), grayOutline, strokeOf(whole, "0.5")}));
}

TEST_F(PlaybackTransportButtonTest, PauseIsTwoUprightBarsAt32By32) {
  button->setTransportButtonStyle(Pause);
  EXPECT_EQ(outline(), R"([["M",0,0],["L",11.50016,0],["L",11.50016,32],["L",0,32],["L",0,0],["Z"],)"
                       R"(["M",21,0],["L",32,0],["L",32,32],["L",21,32],["L",21,0],["Z"]])");
}

TEST_F(PlaybackTransportButtonTest, PauseOfAnotherSizeKeepsThreeCornersFixedFromTheLeftAndTheMaximumYEdge) {
  button->setTransportButtonStyle(Pause);
  button->setFrame({0, 0, 64, 48});
  button->setBoundsOrigin({100, 200});
  // The corners at (x, y + h - 32), (x + 32, y + h - 32) and (x + 32, y + h) stay; all others scale.
  EXPECT_EQ(outline(), R"([["M",100,216],["L",123.00032,200],["L",123.00032,248],["L",100,248],["L",100,216],["Z"],)"
                       R"(["M",142,200],["L",132,216],["L",132,248],["L",142,248],["L",142,200],["Z"]])");
}

TEST_F(PlaybackTransportButtonTest, AHighlightedPlayHasItsShadowBetweenFillAndOutline) {
  button->setHighlighted(true);
  EXPECT_EQ(drawn(),
            (Lines{
                gradientIn(R"("path":)" + triangle),
                R"({"op":"save"})",
                R"({"op":"setShadow","offset":[38.2,-1.2000000000000002],"blur":1.5,"color":[0.167,0.167,0.167,1]})",
                R"({"op":"setFillColor","color":[0.5,0.5,0.5,1],"named":"grayColor"})",
                R"({"op":"clipPath","path":)" + triangle + "}",
                R"({"op":"fill","path":[["M",-40.6,-1.4],["L",-3.6000000000000014,-1.4],["L",-3.6000000000000014,35.6],)"
                R"(["L",-40.6,35.6],["Z"],["M",-37,32],["L",-5,16],["L",-37,0],["L",-37,32],["Z"]],"rule":"evenOdd"})",
                R"({"op":"restore"})",
                grayOutline,
                strokeOf(R"("path":)" + triangle, "0.5"),
            }));
}

TEST_F(PlaybackTransportButtonTest, TheShadowOfStopPreviousAndNextLiesOverTheOutlineAndThatOfTheOthersUnderIt) {
  button->setHighlighted(true);
  const Lines inside{"save", "setShadow", "setFillColor", "clipPath", "fill", "restore"};
  for (const Style style : everyStyle) {
    const bool isOver = style == Stop || style == Previous || style == Next;
    Lines expected = style >= Shuffle ? Lines{"setFillColor", "fill"} : Lines{"gradient"};
    if (!isOver) expected.insert(expected.end(), inside.begin(), inside.end());
    expected.insert(expected.end(), {"setStrokeColor", "stroke"});
    if (isOver) expected.insert(expected.end(), inside.begin(), inside.end());
    EXPECT_EQ(harness::operationsOf(drawnInStyle(style)), expected) << style;
  }
}

TEST_F(PlaybackTransportButtonTest, TheShadowIsMeasuredFromTheGlyphAndNotFromTheBounds) {
  button->setTransportButtonStyle(Previous);
  button->setFrame({0, 0, 20.25, 16});
  button->setHighlighted(true);
  // 20.25 wide, 3 more for the blur and 2 for the margin: 25.25, which is rounded to 25.
  EXPECT_THAT(harness::only("setShadow", drawn())[0], HasSubstr(R"("offset":[26.200000000000003,-1.2000000000000002])"));
  // Pause ends at 42 of 64.
  button->setTransportButtonStyle(Pause);
  button->setFrame({0, 0, 64, 48});
  EXPECT_THAT(harness::only("setShadow", drawn())[0], HasSubstr(R"("offset":[48.2,-1.2000000000000002])"));
}

TEST_F(PlaybackTransportButtonTest, PressingAnyStyleShowsTheInnerShadowAlsoThoseThatAreOn) {
  const auto window = showWindowWith(button);
  for (const NSControlStateValue state : {NSControlStateValueOff, NSControlStateValueOn}) {
    button->setState(state);
    for (const Style style : everyStyle) {
      button->setTransportButtonStyle(style);
      EXPECT_TRUE(harness::only("setShadow", drawn()).empty()) << style;
      user.press(*window, inside);
      EXPECT_EQ(harness::only("setShadow", drawn()).size(), 1u) << style;
      user.dragTo(outside);
      EXPECT_TRUE(harness::only("setShadow", drawn()).empty()) << style;
      user.dragTo(inside);
      EXPECT_EQ(harness::only("setShadow", drawn()).size(), 1u) << style;
      user.release();
      EXPECT_TRUE(harness::only("setShadow", drawn()).empty()) << style;
    }
  }
}

TEST_F(PlaybackTransportButtonTest, ShuffleAndRepeatAreBlueWhileOnWithAWiderOutline) {
  for (const Style style : {Shuffle, Repeat}) {
    button->setState(NSControlStateValueOff);
    EXPECT_EQ(drawnInStyle(style)[0],
              R"({"op":"setFillColor","color":[0.3333333333333333,0.3333333333333333,0.3333333333333333,1],)"
              R"("named":"darkGrayColor"})");
    EXPECT_EQ(drawn()[2], R"({"op":"setStrokeColor","color":[0.3333333333333333,0.3333333333333333,0.3333333333333333,1],)"
                          R"("named":"darkGrayColor"})");
    EXPECT_EQ(lineWidth(), R"("lineWidth":0.5)");
    button->setState(NSControlStateValueOn);
    EXPECT_EQ(drawn()[0], R"({"op":"setFillColor","color":[0,0,1,1],"named":"blueColor"})");
    EXPECT_EQ(drawn()[2], R"({"op":"setStrokeColor","color":[0,0,1,1],"named":"blueColor"})");
    EXPECT_EQ(lineWidth(), R"("lineWidth":0.8)");
  }
}

TEST_F(PlaybackTransportButtonTest, AMixedStateDrawsTheColorsOfOff) {
  for (const Style style : {Shuffle, Repeat}) {
    button->setState(NSControlStateValueOff);
    const Lines off = drawnInStyle(style);
    button->setState(NSControlStateValueMixed);
    EXPECT_EQ(drawn(), off);
  }
}

TEST_F(PlaybackTransportButtonTest, TheStateChangesNothingInTheOtherStyles) {
  for (const Style style : {Play, Pause, Stop, Previous, Next}) {
    button->setState(NSControlStateValueOff);
    const Lines off = drawnInStyle(style);
    button->setState(NSControlStateValueOn);
    EXPECT_EQ(drawn(), off);
  }
}

TEST_F(PlaybackTransportButtonTest, TitleBezelAndEnablementShowNowhere) {
  const Lines plain = drawn();
  button->setTitle("Play");
  button->setEnabled(false);
  EXPECT_EQ(drawn(), plain);
}

TEST_F(PlaybackTransportButtonTest, WithoutACellItIsNeitherHighlightedNorOn) {
  const Lines plain = drawnInStyle(Shuffle);
  button->setState(NSControlStateValueOn);
  button->setHighlighted(true);
  button->setCell(nullptr);
  EXPECT_EQ(drawn(), plain);
}

TEST_F(PlaybackTransportButtonTest, SettingTheStyleRedrawsTheButtonAsAWhole) {
  const auto window = showWindowWith(button);
  button->setTransportButtonStyle(Play);
  EXPECT_TRUE(button->needsDisplay());
  button->setTransportButtonStyle(Next);
  desktop.settle();
  EXPECT_EQ(harness::only("stroke", nativeOf(*window).paints().back().lines), harness::only("stroke", drawn()));
}

TEST_F(PlaybackTransportButtonTest, AnUnknownStyleRemovesTheGlyph) {
  const auto window = showWindowWith(button);
  button->setTransportButtonStyle(0);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_TRUE(harness::only("stroke", nativeOf(*window).paints().back().lines).empty());
}

TEST_F(PlaybackTransportButtonTest, APartialRedrawDrawsTheWholeGlyph) {
  EXPECT_EQ(recordingOf([&] { button->drawRect({5, 6, 7, 8}); }), drawn());
}

TEST_F(PlaybackTransportButtonTest, AClickSendsItsActionAndTogglesOneThatToggles) {
  const auto window = showWindowWith(button);
  user.click(*window, inside);
  EXPECT_EQ(target->acts, 1);
  EXPECT_EQ(target->lastSender, button.get());
  EXPECT_EQ(button->state(), NSControlStateValueOff);
  button->setTransportButtonStyle(Repeat);
  button->setButtonType(NSButtonType::Toggle);
  user.click(*window, inside);
  EXPECT_EQ(button->state(), NSControlStateValueOn);
  window->makeFirstResponder(button.get());
  user.pressKey(" ");
  EXPECT_EQ(button->state(), NSControlStateValueOff);
  EXPECT_EQ(target->acts, 3);
}

TEST_F(PlaybackTransportButtonTest, TheShadowDarkensTheLeftAndUpperInsideOfItsEdgeAndNothingOutside) {
  const auto stopButton = [&](bool isHighlighted) {
    button->setTransportButtonStyle(Stop);
    button->setHighlighted(isHighlighted);
    return harness::pixelsOf({40, 40}, [&] {
      NSGraphicsContext::currentCgContext().concat({1, 0, 0, 1, 4, 4});
      button->drawRect(button->bounds());
    });
  };
  const auto plain = stopButton(false), pressed = stopButton(true);
  const auto isDarker = [&](int x, int y) { return (pressed.pixel(x, y) & 0xFF) + 10 < (plain.pixel(x, y) & 0xFF); };
  // Rows of a bitmap are counted from the top.
  EXPECT_TRUE(isDarker(4, 20));
  EXPECT_TRUE(isDarker(20, 4));
  EXPECT_FALSE(isDarker(20, 20));
  EXPECT_FALSE(isDarker(35, 20));
  EXPECT_FALSE(isDarker(20, 35));
  for (int i = 0; i < 40; ++i)
    for (const int edge : {0, 2, 37, 39}) {
      EXPECT_EQ(pressed.pixel(i, edge), plain.pixel(i, edge));
      EXPECT_EQ(pressed.pixel(edge, i), plain.pixel(edge, i));
    }
}

TEST_F(PlaybackTransportButtonTest, EveryStyleAndStateDrawsAsTheExpectedFileSays) {
  Lines lines;
  for (const CGSize size : {CGSize{32, 32}, CGSize{21, 15}})
    for (const Style style : everyStyle)
      for (const NSControlStateValue state : {NSControlStateValueOff, NSControlStateValueOn})
        for (const bool isHighlighted : {false, true}) {
          button->setFrameSize(size);
          button->setState(state);
          button->setHighlighted(isHighlighted);
          const Lines operations = drawnInStyle(style);
          lines.push_back("style " + std::to_string(style) + (size.width == 32 ? "" : ", 21 by 15") +
                          (state == NSControlStateValueOn ? ", on" : "") + (isHighlighted ? ", highlighted" : ""));
          lines.insert(lines.end(), operations.begin(), operations.end());
        }
  harness::expectSameAsFile("uikit/transport/expected/PlaybackTransportButton.txt", lines);
}
