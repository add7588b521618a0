#include "tessaluna/uikit/transport/PlaybackTransportSliderCell.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSSlider.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/expectedFile.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

using namespace tessaluna::platform;
namespace backend = tessaluna::backend;
using harness::Lines;
using harness::only;
using harness::recordingOf;
using TessalunaUIKit::PlaybackTransportSliderCell;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

enum Completed : bool { No, Yes };
struct Span {
  std::uint64_t start = 0, frames = 0;
  bool isCompleted = No;
};

// What is drawn, as a reader sees it: "track 0 8 400 4", "focus 0 8 100 4".
std::string colorName(const backend::Color& color) {
  const auto is = [&](double level) { return color.red == level && color.green == level && color.blue == level; };
  if (is(0.4)) return "dark";
  if (is(0.6)) return "track";
  if (is(0.5)) return "older track";
  if (color.red == 0 && color.green == 0 && color.blue == 0.6) return "knob";
  if (color.red == 0.23) return color.alpha == 0.4 ? "faint" : "focus";
  return "other";
}

class ReadableCanvas : public backend::recording::RecordingCanvas {
 public:
  Lines drawn;

  void setFillColor(const backend::Color& color) override { fill_ = colorName(color); }
  void setStrokeColor(const backend::Color& color) override { stroke_ = colorName(color); }
  void fillPath(const backend::Path& path, backend::FillRule) override { note(fill_, path); }
  void strokePath(const backend::Path& path, const backend::StrokeStyle& style) override {
    EXPECT_EQ(style.width, 1);
    note(stroke_ + " outline", path);
  }

 private:
  void note(const std::string& color, const backend::Path& path) {
    const CGRect box = path.bounds();
    std::ostringstream line;
    line.precision(17);
    line << color << " " << box.origin.x << " " << box.origin.y << " " << box.size.width << " " << box.size.height;
    drawn.push_back(line.str());
  }
  std::string fill_, stroke_;
};

// A slider of 200 points whose bar is handed in: from 10 to 410, 4 high at y 8, so that a frame of a song of 400 is a point.
class PlaybackTransportSliderCellTest : public harness::StillWorld {
 protected:
  PlaybackTransportSliderCellTest() {
    slider->setCell(cell);
    slider->setMaxValue(400);
  }

  void load(Span first, Span second = {}) {
    cell->displayLoadStatusFrom(first.start, first.frames, first.isCompleted, second.start, second.frames,
                                second.isCompleted, 400);
  }
  Lines barDrawn(CGRect rect = {10, 8, 400, 4}) const {
    ReadableCanvas canvas;
    const CanvasScope scope(canvas);
    cell->drawBarInside(rect, true);
    return canvas.drawn;
  }
  // Without the outline and the played part, which are always there.
  Lines spansDrawn(CGRect rect = {10, 8, 400, 4}) const {
    Lines drawn = barDrawn(rect);
    EXPECT_GE(drawn.size(), 2u);
    drawn.erase(drawn.begin(), drawn.begin() + 2);
    return drawn;
  }
  // Of a song so long that positions differ by less than single precision tells: a frame is a point.
  Lines spansInLongSong(double position, Span span) {
    slider->setMaxValue(2073600000);
    slider->setDoubleValue(position);
    load(span);
    return spansDrawn({0, 0, 2073600000, 4});
  }

  Ref<PlaybackTransportSliderCell> cell = make<PlaybackTransportSliderCell>();
  Ref<NSSlider> slider = make<NSSlider>(CGRect{20, 30, 203, 21});
};

const std::string outline = "track outline 10 8 400 4";

}  // namespace

TEST_F(PlaybackTransportSliderCellTest, FromAnArchiveItHasNothingLoadedAndNoBezel) {
  NSCoder coder(R"({"maxValue": 400, "doubleValue": 100})");
  cell = make<PlaybackTransportSliderCell>(coder);
  EXPECT_EQ(cell->className(), "TessalunaUIKit.PlaybackTransportSliderCell");
  EXPECT_FALSE(cell->isBezeled());
  EXPECT_EQ(cell->doubleValue(), 100);
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "faint 10 8 100 4"));
}

TEST_F(PlaybackTransportSliderCellTest, AnInterfaceFilePutsItIntoASlider) {
  TessalunaUIKit::registerInterfaceFileClasses();
  const auto contents = make<NSNib>(R"({"objects": [{"class": "NSSlider", "frame": [0, 0, 103, 20], "action": "seek:",
      "cell": {"class": "TessalunaUIKit.PlaybackTransportSliderCell", "maxValue": 200, "doubleValue": 50}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  slider = std::dynamic_pointer_cast<NSSlider>(contents.topLevelObjects.at(0));
  EXPECT_NE(std::dynamic_pointer_cast<PlaybackTransportSliderCell>(slider->cell()), nullptr);
  EXPECT_EQ(std::dynamic_pointer_cast<NSSliderCell>(slider->cell())->knobRectFlipped(true), (CGRect{25, 3, 3, 14}));
}

TEST_F(PlaybackTransportSliderCellTest, TheKnobRunsFromZeroToThreeBeforeTheEndOfTheFrameWhereverTheBarIs) {
  EXPECT_EQ(cell->knobRectFlipped(true), (CGRect{0, 3, 3, 14}));
  slider->setDoubleValue(100);
  EXPECT_EQ(cell->knobRectFlipped(true), (CGRect{50, 3, 3, 14}));
  slider->setDoubleValue(400);
  EXPECT_EQ(cell->knobRectFlipped(true), (CGRect{200, 3, 3, 14}));
  EXPECT_EQ(cell->knobRectFlipped(false), (CGRect{200, 3, 3, 14}));
  slider->setBoundsOrigin({50, 0});
  EXPECT_EQ(cell->knobRectFlipped(true).origin.x, 200);
  slider->setMinValue(200);
  slider->setDoubleValue(250);
  EXPECT_EQ(cell->knobRectFlipped(true).origin.x, 50);
}

TEST_F(PlaybackTransportSliderCellTest, TheKnobHasItsMiddleWhereTheStockKnobHasItsOwn) {
  for (const CGFloat height : {14, 20, 21, 40}) {
    slider->setFrameSize({203, height});
    const CGRect stock = cell->NSSliderCell::knobRectFlipped(true), knob = cell->knobRectFlipped(true);
    EXPECT_EQ(knob.origin.y, stock.origin.y - 7 + std::floor(stock.size.height * 0.5)) << height;
    EXPECT_EQ(CGRectGetMidY(knob), CGRectGetMidY(cell->barRectFlipped(true))) << height;
  }
}

TEST_F(PlaybackTransportSliderCellTest, TickMarksMoveTheKnobAsTheyMoveTheStockOne) {
  slider->setFrameSize({203, 40});
  slider->setNumberOfTickMarks(3);
  for (const bool flipped : {true, false})
    EXPECT_EQ(cell->knobRectFlipped(flipped).origin.y, cell->NSSliderCell::knobRectFlipped(flipped).origin.y + 1);
  EXPECT_NE(cell->knobRectFlipped(true), cell->knobRectFlipped(false));
}

TEST_F(PlaybackTransportSliderCellTest, WithoutAViewTheWidthCountsAsZero) {
  const auto loose = make<PlaybackTransportSliderCell>();
  loose->setDoubleValue(0.5);
  EXPECT_EQ(loose->knobRectFlipped(true).origin.x, -1.5);
  EXPECT_EQ(loose->knobRectFlipped(true).size, (CGSize{3, 14}));
}

TEST_F(PlaybackTransportSliderCellTest, AVerticalSliderHasNoKnobAndAPlainBar) {
  slider->setVertical(true);
  slider->setDoubleValue(100);
  load({0, 200, Yes});
  EXPECT_EQ(cell->knobRectFlipped(true), NSZeroRect);
  EXPECT_THAT(barDrawn({10, 20, 30, 101}), ElementsAre("dark 14 68 22 4"));
}

TEST_F(PlaybackTransportSliderCellTest, WhetherThereIsAKnobIsUpToTheSliderAndWhichBarItIsUpToTheCell) {
  // One beside the slider's own.
  cell = make<PlaybackTransportSliderCell>();
  cell->setVertical(true);
  EXPECT_THAT(barDrawn(), ElementsAre("dark 14 8 392 4")) << "in no view at all";
  cell->setControlView(slider.get());
  EXPECT_EQ(cell->knobRectFlipped(true).size, (CGSize{3, 14}));
  EXPECT_THAT(barDrawn(), ElementsAre("dark 14 8 392 4"));
  cell->setVertical(false);
  slider->setVertical(true);
  EXPECT_EQ(cell->knobRectFlipped(true), NSZeroRect);
  EXPECT_EQ(barDrawn()[0], outline);
}

TEST_F(PlaybackTransportSliderCellTest, WithoutARangeTheKnobIsNotFiniteAndDrawingContinues) {
  slider->setMaxValue(0);
  EXPECT_TRUE(std::isnan(cell->knobRectFlipped(true).origin.x));
  EXPECT_THAT(barDrawn(), ElementsAre(outline));
  slider->setMinValue(5);
  slider->setMaxValue(5);
  EXPECT_TRUE(std::isnan(cell->knobRectFlipped(true).origin.x));
  const auto bitmap = harness::pixelsOf({203, 21}, [&] { slider->drawRect(slider->bounds()); });
  EXPECT_NE(bitmap.pixel(100, 10), 0u);
}

TEST_F(PlaybackTransportSliderCellTest, TheKnobIsADarkBlueRectangle) {
  ReadableCanvas canvas;
  const CanvasScope scope(canvas);
  cell->drawKnob({1, 2, 3, 14});
  EXPECT_THAT(canvas.drawn, ElementsAre("knob 1 2 3 14"));
}

TEST_F(PlaybackTransportSliderCellTest, AValueOfZeroWithNoLoadDrawsAnOutlineAndAnEmptyPlayedRectangle) {
  const Lines lines = recordingOf([&] { cell->drawBarInside({10, 8, 400, 4}, true); });
  EXPECT_EQ(harness::operationsOf(lines), (Lines{"setFillColor", "setStrokeColor", "stroke", "setFillColor", "fill"}));
  EXPECT_THAT(lines[2], HasSubstr(R"("shape":["roundedRect",10,8,400,4,2.5,2)"));
  EXPECT_THAT(lines[4], HasSubstr(R"("shape":["roundedRect",10,8,0,4)"));
}

TEST_F(PlaybackTransportSliderCellTest, TheBarLiesInTheMiddleOfAHigherRectangle) {
  EXPECT_EQ(barDrawn({10, 20, 400, 21})[0], "track outline 10 28 400 4");
  EXPECT_EQ(barDrawn({10, 20, 400, 5})[0], "track outline 10 20 400 4");
  EXPECT_EQ(barDrawn({10, 20, 400, 1})[0], "track outline 10 18 400 4");
}

TEST_F(PlaybackTransportSliderCellTest, TheTrackIsDarkerOnKitVersionsBelow1187) {
  NSAppKitVersionNumber = 1186.99;
  EXPECT_EQ(barDrawn()[0], "older track outline 10 8 400 4");
  NSAppKitVersionNumber = 1187;
  EXPECT_EQ(barDrawn()[0], outline);
}

TEST_F(PlaybackTransportSliderCellTest, ACompletedFirstBufferOfNoLengthShowsTheWholeSongAsLoaded) {
  slider->setDoubleValue(100);
  load({0, 0, Yes}, {200, 100, Yes});
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "dark 10 8 400 4", "focus 10 8 100 4"));
  // The second one alone does not.
  load({0, 0, No}, {0, 0, Yes});
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "faint 10 8 100 4"));
}

TEST_F(PlaybackTransportSliderCellTest, ASpanAheadOfThePositionIsDarkOnceItIsCompleted) {
  slider->setDoubleValue(100);
  load({200, 50, No}, {300, 100, Yes});
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "faint 10 8 100 4", "track 210 8 50 4", "dark 310 8 100 4"));
}

TEST_F(PlaybackTransportSliderCellTest, ASpanWhoseStartIsThePositionLiesAheadOfIt) {
  slider->setDoubleValue(100);
  load({100, 50, No});
  EXPECT_THAT(spansDrawn(), ElementsAre("track 110 8 50 4"));
}

TEST_F(PlaybackTransportSliderCellTest, ASpanThatEndsAtThePositionLiesBehindIt) {
  slider->setDoubleValue(100);
  load({50, 50, Yes});
  EXPECT_THAT(spansDrawn(), ElementsAre("focus 60 8 50 4"));
}

TEST_F(PlaybackTransportSliderCellTest, ASpanAcrossThePositionIsTwoPartsThatMeetThere) {
  slider->setDoubleValue(100);
  load({40, 200, Yes});
  EXPECT_THAT(spansDrawn(), ElementsAre("focus 50 8 60 4", "dark 110 8 140 4"));
  load({40, 200, No});
  EXPECT_THAT(spansDrawn(), ElementsAre("focus 50 8 60 4", "track 110 8 140 4"));
}

TEST_F(PlaybackTransportSliderCellTest, ThePositionIsItsSinglePrecisionValue) {
  slider->setDoubleValue(100.1);
  load({0, 200, No});
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "faint 10 8 100.09999847412109 4", "focus 10 8 100.09999847412109 4",
                                      "track 110.09999847412109 8 99.900001525878906 4"));
}

TEST_F(PlaybackTransportSliderCellTest, TheSecondBufferLiesOverTheFirst) {
  slider->setDoubleValue(0);
  load({100, 200, Yes}, {150, 200, No});
  EXPECT_THAT(spansDrawn(), ElementsAre("dark 110 8 200 4", "track 160 8 200 4"));
}

TEST_F(PlaybackTransportSliderCellTest, TheScaleIsTheMaximumAndNotTheSongsLength) {
  slider->setDoubleValue(100);
  cell->displayLoadStatusFrom(200, 50, true, 0, 0, false, 9999);
  EXPECT_THAT(spansDrawn(), ElementsAre("dark 210 8 50 4"));
  slider->setMaxValue(800);
  EXPECT_THAT(spansDrawn(), ElementsAre("dark 110 8 25 4"));
}

TEST_F(PlaybackTransportSliderCellTest, AMinimumMovesTheKnobAndNotTheBars) {
  slider->setMinValue(100);
  slider->setDoubleValue(200);
  load({300, 50, No});
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "faint 10 8 200 4", "track 310 8 50 4"));
}

TEST_F(PlaybackTransportSliderCellTest, OnlyAMaximumOfZeroLeavesTheTrackEmpty) {
  slider->setMinValue(-800);
  slider->setDoubleValue(-200);
  slider->setMaxValue(-400);
  // All lengths are against the maximum, also one below zero.
  EXPECT_THAT(barDrawn(), ElementsAre(outline, "faint 10 8 400 4"));
}

TEST_F(PlaybackTransportSliderCellTest, SpansHaveSquareEndsAndReplaceWhatIsBelow) {
  load({100, 50, No});
  const Lines lines = recordingOf([&] { cell->drawBarInside({10, 8, 400, 4}, true); });
  EXPECT_THAT(only("fill", lines).back(), HasSubstr(R"("shape":["rect",110,8,50,4])"));
  EXPECT_EQ(only("setBlendMode", lines), Lines{R"({"op":"setBlendMode","mode":"copy"})"});
}

// 2 to the power of 24 is the last number up to which single precision knows every frame.
TEST_F(PlaybackTransportSliderCellTest, AFrameBeforeThePositionCountsAsThePositionWhereSinglePrecisionKnowsNoBetter) {
  slider->setMaxValue(33554432);
  slider->setDoubleValue(16777217);
  load({16777216, 1000, No});
  EXPECT_THAT(spansDrawn({0, 0, 33554432, 4}), ElementsAre("track 16777216 0 1000 4"));
  // One more frame, and there is a number between the two.
  slider->setDoubleValue(16777218);
  EXPECT_THAT(spansDrawn({0, 0, 33554432, 4}), ElementsAre("focus 16777216 0 2 4", "track 16777218 0 998 4"));
}

TEST_F(PlaybackTransportSliderCellTest, AnEndAfterThePositionCountsAsThePositionWhereSinglePrecisionKnowsNoBetter) {
  slider->setMaxValue(33554432);
  slider->setDoubleValue(16777219);
  load({16777000, 220, No});
  EXPECT_THAT(spansDrawn({0, 0, 33554432, 4}), ElementsAre("focus 16777000 0 220 4"));
}

TEST_F(PlaybackTransportSliderCellTest, WhatIsAheadBeginsAtThePositionAlsoWhereThePlayedPartIsRounded) {
  slider->setMaxValue(33554432);
  slider->setDoubleValue(16777218);
  load({1, 20000000, No});
  EXPECT_THAT(spansDrawn({0, 0, 33554432, 4}), ElementsAre("focus 1 0 16777216 4", "track 16777218 0 3222784 4"));
}

TEST_F(PlaybackTransportSliderCellTest, InThreeHoursAt192KilohertzThePositionIsRightTo64Frames) {
  // Single precision has 1000000000 and 1000000064 here.
  EXPECT_THAT(spansInLongSong(1000000010, {999999990, 5000, Yes}), ElementsAre("dark 999999990 0 5000 4"));
  EXPECT_THAT(spansInLongSong(1000000010, {999999960, 5000, Yes}),
              ElementsAre("focus 999999960 0 64 4", "dark 1000000000 0 4936 4"));
  EXPECT_THAT(spansInLongSong(1000000010, {999990000, 10020, Yes}), ElementsAre("focus 999990000 0 10020 4"));
  EXPECT_THAT(spansInLongSong(1000000010, {999990000, 10040, Yes}),
              ElementsAre("focus 999990000 0 9984 4", "dark 1000000000 0 56 4"));
}

TEST_F(PlaybackTransportSliderCellTest, ASpanBeyondAllNumbersWrapsAround) {
  // Frames are counted in 64 bits, in which this end is 99.
  slider->setDoubleValue(150);
  load({100, std::uint64_t(-1), No});
  EXPECT_EQ(spansDrawn().size(), 1u);
  EXPECT_THAT(spansDrawn()[0], HasSubstr("focus 110 8 "));
}

TEST_F(PlaybackTransportSliderCellTest, TheLoadStatusAsksForNoRedraw) {
  const auto window = showWindowWith(slider);
  load({0, 100, No});
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(PlaybackTransportSliderCellTest, InAWindowItDrawsBarThenKnob) {
  slider->setDoubleValue(200);
  load({0, 300, Yes});
  ReadableCanvas canvas;
  const CanvasScope scope(canvas);
  slider->drawRect(slider->bounds());
  EXPECT_THAT(canvas.drawn, ElementsAre("track outline 2 8 199 4", "faint 2 8 99.5 4", "focus 2 8 99.5 4",
                                        "dark 101.5 8 49.75 4", "knob 100 3 3 14"));
}

TEST_F(PlaybackTransportSliderCellTest, ACopyShowsTheSameLoad) {
  slider->setDoubleValue(100);
  load({40, 200, Yes}, {300, 10, No});
  const Lines before = barDrawn();
  cell = std::dynamic_pointer_cast<PlaybackTransportSliderCell>(cell->copy());
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(barDrawn(), before);
}

TEST_F(PlaybackTransportSliderCellTest, ADragKeepsTheMiddleOfTheKnobUnderTheMouseAlsoFromRightToLeft) {
  const auto target = make<harness::ActionProbe>();
  slider->setTarget(target);
  slider->setAction("act:");
  const auto window = showWindowWith(slider);
  for (const auto direction : {NSUserInterfaceLayoutDirectionLeftToRight, NSUserInterfaceLayoutDirectionRightToLeft}) {
    slider->setUserInterfaceLayoutDirection(direction);
    user.press(*window, {20 + 51.5, 40});
    EXPECT_EQ(slider->doubleValue(), 100);
    EXPECT_EQ(cell->knobRectFlipped(true).origin.x, 50);
    user.dragTo({20 + 101.5, 100});
    EXPECT_EQ(slider->doubleValue(), 200);
    EXPECT_EQ(cell->knobRectFlipped(true).origin.x, 100);
    user.dragTo({2000, 40});
    EXPECT_EQ(slider->doubleValue(), 400);
    user.release();
    slider->setDoubleValue(0);
  }
  EXPECT_EQ(target->acts, 8);
}

TEST_F(PlaybackTransportSliderCellTest, EveryLoadDrawsAsTheExpectedFileSays) {
  struct Case {
    const char* name;
    double position;
    Span first, second;
  };
  constexpr Case cases[] = {
      {"nothing loaded", 0, {}, {}},
      {"played without a load", 123.4, {}, {}},
      {"first buffer across the position", 123.4, {0, 300}, {}},
      {"both across the position", 123.4, {100, 77}, {110, 80, Yes}},
      {"first behind, second ahead", 200, {0, 200, Yes}, {200, 133}},
      {"whole song loaded", 333, {0, 0, Yes}, {5, 6, Yes}},
      {"all of it played", 400, {0, 400, Yes}, {}},
  };
  Lines lines;
  for (const bool isVertical : {false, true}) {
    for (const Case& each : cases) {
      slider->setVertical(isVertical);
      slider->setDoubleValue(each.position);
      load(each.first, each.second);
      const Lines drawn = recordingOf([&] { slider->drawRect(slider->bounds()); });
      lines.push_back(std::string(each.name) + (isVertical ? ", vertical" : ""));
      lines.insert(lines.end(), drawn.begin(), drawn.end());
    }
  }
  harness::expectSameAsFile("uikit/transport/expected/PlaybackTransportSliderCell.txt", lines);
}
