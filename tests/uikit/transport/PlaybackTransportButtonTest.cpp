#include "tessaluna/uikit/transport/PlaybackTransportButton.h"

#include <gmock/gmock.h>

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
  // Of the outline, as fractions: in bounds of one point they are the coordinates.
  static std::string listingOfStyle(Style style) {
    const auto unit = make<PlaybackTransportButton>(CGRect{0, 0, 1, 1});
    unit->setTransportButtonStyle(style);
    const harness::Painted painted = harness::paintedBy([&] { unit->drawRect(unit->bounds()); });
    EXPECT_EQ(painted.stroked.size(), 1u);
    return painted.stroked.empty() ? "" : harness::listingOf(painted.stroked[0]);
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

TEST_F(PlaybackTransportButtonTest, AStyleThatIsNoneDrawsNothing) {
  for (const std::uint64_t style : {std::uint64_t{0}, std::uint64_t{8}, std::numeric_limits<std::uint64_t>::max()}) {
    EXPECT_TRUE(drawnInStyle(style).empty());
    EXPECT_EQ(button->transportButtonStyle(), style);
  }
}

TEST_F(PlaybackTransportButtonTest, TheOutlinesOfAllStylesButPauseFollowTheBounds) {
  EXPECT_EQ(listingOfStyle(Play), "M (0, 1), L (1, 0.5), L (0, 0), L (0, 1), Z");
  EXPECT_EQ(listingOfStyle(Previous),
            "M (0, 0), L (0.25, 0), L (0.25, 0.39062), L (1, 0), L (1, 1), L (0.25, 0.60938), L (0.25, 1), L (0, 1), "
            "L (0, 0), Z");
  EXPECT_EQ(listingOfStyle(Next),
            "M (1, 0), L (0.75, 0), L (0.75, 0.39062), L (0, 0), L (0, 1), L (0.75, 0.60938), L (0.75, 1), L (1, 1), "
            "L (1, 0), Z");
  EXPECT_EQ(listingOfStyle(Shuffle),
            "M (0, 0.22902), C (0.16, 0.22902; 0.00307, 0.22902; 0.02558, 0.22902), "
            "C (0.50862, 0.58441; 0.34135, 0.23292; 0.37223, 0.48696), "
            "C (0.63, 0.62187; 0.54167, 0.60802; 0.58091, 0.62244), "
            "C (0.77, 0.62187; 0.76455, 0.62221; 0.77, 0.62187), L (0.77, 0.51384), L (1, 0.65625), L (0.77, 0.82812), "
            "L (0.77, 0.71027), C (0.63, 0.71027; 0.77, 0.71027; 0.7246, 0.71082), "
            "C (0.20299, 0.31248; 0.40032, 0.71121; 0.31084, 0.35832), "
            "C (0.18, 0.30759; 0.19544, 0.30926; 0.18779, 0.30756), C (0, 0.30759; 0.03496, 0.30815; 0, 0.30759), "
            "L (0, 0.22902), Z, "
            "M (0.47, 0.42054), C (0.63, 0.34687; 0.51188, 0.38638; 0.51482, 0.35752), "
            "C (0.77, 0.34687; 0.76455, 0.34654; 0.77, 0.34687), L (0.77, 0.45491), L (1, 0.30268), L (0.77, 0.14062), "
            "L (0.77, 0.25848), C (0.63, 0.25848; 0.77, 0.25848; 0.7246, 0.25793), "
            "C (0.43, 0.36161; 0.51202, 0.26682; 0.4952, 0.29754), "
            "C (0.47, 0.42054; 0.47003, 0.42054; 0.42876, 0.36175), Z, "
            "M (0, 0.73973), C (0.15817, 0.73975; 0, 0.73973; 0.00887, 0.74108), "
            "C (0.35, 0.60223; 0.24133, 0.74079; 0.29613, 0.69696), "
            "C (0.3, 0.5433; 0.29984, 0.54617; 0.35201, 0.60529), "
            "C (0.18, 0.66116; 0.27111, 0.58199; 0.23724, 0.66082), C (0, 0.66116; 0.00493, 0.66221; 0, 0.66116), "
            "L (0, 0.73973), Z");
  EXPECT_EQ(listingOfStyle(Repeat),
            "M (0.88143, 0.6108), C (0.66107, 0.31676; 0.97157, 0.51523; 0.85995, 0.31501), "
            "C (0.34998, 0.31676; 0.4622, 0.31851; 0.34998, 0.31676), L (0.34998, 0.39347), L (0.15555, 0.25284), "
            "L (0.34998, 0.125), L (0.34998, 0.21449), C (0.66107, 0.21449; 0.34998, 0.21449; 0.35183, 0.21448), "
            "C (0.92031, 0.70028; 0.97032, 0.2145; 1.09526, 0.56309), "
            "C (0.88143, 0.6108; 0.88143, 0.61083; 0.92031, 0.70028), Z, "
            "M (0.11857, 0.40199), C (0.33893, 0.69602; 0.02843, 0.49755; 0.14005, 0.69777), "
            "C (0.65002, 0.69602; 0.62489, 0.69548; 0.65002, 0.69602), L (0.65002, 0.61932), L (0.84445, 0.75994), "
            "L (0.65002, 0.88778), L (0.65002, 0.7983), C (0.33893, 0.7983; 0.65002, 0.7983; 0.64817, 0.79831), "
            "C (0.07969, 0.3125; 0.02968, 0.79828; -0.09526, 0.4497), "
            "C (0.11857, 0.40199; 0.11857, 0.40196; 0.07969, 0.3125), Z");
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
