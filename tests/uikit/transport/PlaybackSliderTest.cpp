#include "tessaluna/uikit/transport/PlaybackSlider.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/windows/NSScreen.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/LookBook.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/TextsScope.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using TessalunaUIKit::PlaybackSlider;
using testing::DoubleNear;
using testing::ElementsAre;

namespace {

// A slider of 303 by 20 at (10, 60) of a window, over a song of 300 seconds: the middle of its knob is at x 11.5 + the time.
class PlaybackSliderTest : public harness::StillWorld {
 protected:
  PlaybackSliderTest() {
    slider->beginSong({.seconds = 300, .framesPerSecond = 44100});
    slider->setTarget(target);
    slider->setAction("act:");
    target->onAct = [this] { asked.push_back(slider->requestedTime()); };
    window->contentView()->addSubview(slider);
    desktop.settle();
  }
  ~PlaybackSliderTest() override { target->onAct = nullptr; }

  std::vector<double> taken() { return std::exchange(asked, {}); }
  static CGPoint at(double seconds) { return {11.5 + seconds, 70}; }
  NSAccessibility& element() const { return *accessibilityOf(slider->cell()); }
  std::string spoken() const {
    return *element().accessibilityAttributeValue(NSAccessibilityHelpAttribute).as<std::string>();
  }
  bool hasKnob() const {
    return !harness::recordingOf([&] { slider->drawRect(slider->bounds()); }).back().empty() &&
           testing::Matches(testing::HasSubstr("0,0,0.6"))(
               harness::only("setFillColor", harness::recordingOf([&] { slider->drawRect(slider->bounds()); })).back());
  }

  Ref<NSWindow> window = showWindow({100, 100, 400, 150});
  Ref<PlaybackSlider> slider = make<PlaybackSlider>(CGRect{10, 60, 303, 20});
  Ref<harness::ActionProbe> target = make<harness::ActionProbe>();
  std::vector<double> asked;
};

const auto isAbout = [](double seconds) { return DoubleNear(seconds, 1e-9); };

}  // namespace

TEST_F(PlaybackSliderTest, ThePlayersPositionsMoveTheKnob) {
  slider->setPosition(90);
  EXPECT_EQ(slider->position(), 90);
  EXPECT_EQ(slider->doubleValue(), 90 * 44100);
  EXPECT_TRUE(taken().empty());
  EXPECT_FALSE(slider->isSeeking());
}

TEST_F(PlaybackSliderTest, NewPositionsAndNewLoadsAskForARedraw) {
  const auto paintsAfter = [&](auto change) {
    nativeOf(*window).forgetPaints();
    change();
    desktop.settle();
    return nativeOf(*window).paints().size();
  };
  EXPECT_EQ(paintsAfter([&] { slider->setPosition(90); }), 1u);
  EXPECT_EQ(paintsAfter([&] { slider->setPosition(90); }), 0u);
  EXPECT_EQ(paintsAfter([&] { slider->showLoaded({.start = 0, .frames = 44100}); }), 1u);
}

TEST_F(PlaybackSliderTest, ASliderMayBeReleasedInItsAction) {
  const std::function<void()> ways[] = {
      [&] { user.click(*window, at(100)); }, [&] { user.pressKey(NSRightArrowFunctionKey); },
      [&] {
        user.scroll(*window, at(10), {0, 48});
      },
      [&] { accessibilityOf(Ref<NSCell>(slider->cell()))->accessibilityPerformAction(NSAccessibilityIncrementAction); }};
  for (const auto& way : ways) {
    slider->removeFromSuperview();
    slider = make<PlaybackSlider>(CGRect{10, 60, 303, 20});
    slider->beginSong({.seconds = 300});
    slider->setTarget(target);
    slider->setAction("act:");
    const WeakRef<PlaybackSlider> weak = slider;
    target->onAct = [this] { std::exchange(slider, make<PlaybackSlider>(CGRect{}))->removeFromSuperview(); };
    window->contentView()->addSubview(slider);
    window->makeFirstResponder(slider.get());
    desktop.settle();
    way();
    desktop.advance(3);
    EXPECT_TRUE(weak.expired());
  }
  EXPECT_EQ(target->acts, 4);
}

TEST_F(PlaybackSliderTest, ADragAsksOnceForTheTimeWhereItEnds) {
  user.press(*window, at(100));
  user.dragTo(at(150));
  EXPECT_THAT(slider->position(), isAbout(150));
  EXPECT_TRUE(taken().empty());
  user.release();
  EXPECT_THAT(taken(), ElementsAre(isAbout(150)));
}

TEST_F(PlaybackSliderTest, WhileTheUserDragsThePlayersPositionsDoNotMoveTheKnob) {
  user.press(*window, at(100));
  slider->setPosition(20);
  EXPECT_THAT(slider->position(), isAbout(100));
  EXPECT_TRUE(slider->isSeeking());
  user.release();
}

TEST_F(PlaybackSliderTest, AfterTheActionTheKnobWaitsForThePlayersConfirmation) {
  user.click(*window, at(100));
  EXPECT_TRUE(slider->isSeeking());
  slider->setPosition(20);
  EXPECT_THAT(slider->position(), isAbout(100));
  slider->confirmSeek();
  EXPECT_FALSE(slider->isSeeking());
  EXPECT_THAT(slider->position(), isAbout(100));
  slider->setPosition(101);
  EXPECT_EQ(slider->position(), 101);
}

TEST_F(PlaybackSliderTest, WithoutAConfirmationTheLastPositionShowsAfterTheTimeout) {
  user.click(*window, at(100));
  slider->setPosition(20);
  desktop.advance(1.9);
  EXPECT_THAT(slider->position(), isAbout(100));
  slider->setPosition(22);
  desktop.advance(0.2);
  EXPECT_EQ(slider->position(), 22);
  EXPECT_FALSE(slider->isSeeking());
}

TEST_F(PlaybackSliderTest, APositionFromBeforeTheActionDoesNotShowAfterTheTimeout) {
  user.press(*window, at(100));
  slider->setPosition(20);
  user.release();
  desktop.advance(3);
  EXPECT_THAT(slider->position(), isAbout(100));
}

TEST_F(PlaybackSliderTest, TheTimeoutCanBeSetAndBeginsAgainWithEachAction) {
  slider->setSeekTimeout(10);
  user.click(*window, at(100));
  desktop.advance(6);
  user.click(*window, at(200));
  slider->setPosition(1);
  desktop.advance(6);
  EXPECT_THAT(slider->position(), isAbout(200));
  desktop.advance(5);
  EXPECT_EQ(slider->position(), 1);
}

TEST_F(PlaybackSliderTest, ATimeoutDuringAPressWaitsForItsEnd) {
  user.click(*window, at(100));
  user.press(*window, at(200));
  slider->setPosition(1);
  desktop.advance(3);
  EXPECT_THAT(slider->position(), isAbout(200));
  user.release();
  EXPECT_THAT(taken(), ElementsAre(isAbout(100), isAbout(200)));
}

TEST_F(PlaybackSliderTest, AnActionMayConfirmAtOnce) {
  target->onAct = [this] { slider->confirmSeek(); };
  user.click(*window, at(100));
  EXPECT_FALSE(slider->isSeeking());
  slider->setPosition(101);
  EXPECT_EQ(slider->position(), 101);
}

TEST_F(PlaybackSliderTest, ArrowsGo5SecondsWithShift30PageKeys60HomeAndEndAllTheWay) {
  window->makeFirstResponder(slider.get());
  slider->setPosition(100);
  user.pressKey(NSRightArrowFunctionKey);
  user.pressKey(NSUpArrowFunctionKey);
  user.pressKey(NSLeftArrowFunctionKey, NSEventModifierFlagShift);
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSPageUpFunctionKey);
  user.pressKey(NSPageDownFunctionKey);
  user.pressKey(NSEndFunctionKey);
  user.pressKey(NSHomeFunctionKey);
  EXPECT_THAT(taken(), ElementsAre(105, 110, 80, 75, 135, 75, 300, 0));
}

TEST_F(PlaybackSliderTest, TheStepsCanBeSet) {
  slider->setSteps({.arrow = 2, .shiftArrow = 10, .page = 100});
  window->makeFirstResponder(slider.get());
  user.pressKey(NSRightArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey, NSEventModifierFlagShift);
  user.pressKey(NSPageUpFunctionKey);
  EXPECT_THAT(taken(), ElementsAre(2, 12, 112));
}

TEST_F(PlaybackSliderTest, KeysContinueFromWhereTheUserIsAndNotFromThePlayer) {
  window->makeFirstResponder(slider.get());
  slider->setPosition(100);
  user.pressKey(NSRightArrowFunctionKey);
  slider->setPosition(100.1);
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_THAT(taken(), ElementsAre(105, 110));
}

TEST_F(PlaybackSliderTest, ANotchOfTheWheelIsAnArrow) {
  slider->setPosition(100);
  user.scroll(*window, at(10), {0, 48});
  user.scroll(*window, at(10), {0, -96});
  EXPECT_THAT(taken(), ElementsAre(105, 95));
}

TEST_F(PlaybackSliderTest, AssistiveClientsGoByStepsOrSetATimeInSeconds) {
  slider->setPosition(100);
  element().accessibilityPerformAction(NSAccessibilityIncrementAction);
  element().accessibilityPerformAction(NSAccessibilityDecrementAction);
  element().accessibilitySetValue(200.0, NSAccessibilityValueAttribute);
  EXPECT_THAT(taken(), ElementsAre(105, 100, 200));
  EXPECT_EQ(element().accessibilityAttributeValue(NSAccessibilityValueAttribute), AccessibilityValue(200.0));
  EXPECT_EQ(element().accessibilityAttributeValue(NSAccessibilityMaxValueAttribute), AccessibilityValue(300.0));
}

TEST_F(PlaybackSliderTest, ANewSongEndsWhatTheUserAskedForAndThePress) {
  user.press(*window, at(100));
  slider->beginSong({.seconds = 200, .framesPerSecond = 96000});
  EXPECT_FALSE(slider->isSeeking());
  EXPECT_FALSE(slider->isHighlighted());
  EXPECT_EQ(slider->position(), 0);
  EXPECT_EQ(slider->maxValue(), 200 * 96000);
  user.dragTo(at(150));
  user.release();
  EXPECT_TRUE(taken().empty());
  user.click(*window, at(100));
  slider->beginSong({.seconds = 300, .framesPerSecond = 44100});
  slider->setPosition(1);
  EXPECT_EQ(slider->position(), 1);
}

TEST_F(PlaybackSliderTest, BeforeItsFirstSongItHasNoKnobAndTakesNoSeek) {
  slider = make<PlaybackSlider>(CGRect{10, 60, 303, 20});
  EXPECT_FALSE(hasKnob());
  EXPECT_FALSE(slider->isSeekable());
  EXPECT_EQ(slider->position(), 0);
}

TEST_F(PlaybackSliderTest, EverySongBeginsAtItsStart) {
  for (const std::optional<double> seconds : {std::optional(300.0), std::optional<double>()}) {
    slider->setPosition(90);
    slider->beginSong({.seconds = seconds});
    EXPECT_EQ(slider->position(), 0);
  }
}

TEST_F(PlaybackSliderTest, ASongOfUnknownOrEndlessLengthHasNoKnobAndTakesNoSeek) {
  EXPECT_TRUE(hasKnob());
  for (const std::optional<double> seconds :
       {std::optional<double>(), std::optional(0.0), std::optional(std::numeric_limits<double>::infinity())}) {
    slider->beginSong({.seconds = seconds});
    EXPECT_FALSE(slider->isSeekable());
    EXPECT_FALSE(hasKnob());
    user.click(*window, at(100));
    user.scroll(*window, at(100), {0, 48});
    EXPECT_FALSE(window->makeFirstResponder(slider.get()));
    EXPECT_EQ(slider->timeAtPoint({50, 10}), std::nullopt);
    slider->setPosition(65);
    EXPECT_EQ(slider->position(), 65);
    EXPECT_EQ(spoken(), "1 minute 5 seconds");
  }
  EXPECT_TRUE(taken().empty());
}

TEST_F(PlaybackSliderTest, OneThatIsNotSeekableShowsThePositionAndTakesNothing) {
  slider->setSeekable(false);
  slider->setPosition(30);
  user.click(*window, at(100));
  user.scroll(*window, at(100), {0, 48});
  element().accessibilityPerformAction(NSAccessibilityIncrementAction);
  element().accessibilitySetValue(200.0, NSAccessibilityValueAttribute);
  EXPECT_EQ(slider->position(), 30);
  EXPECT_TRUE(taken().empty());
  EXPECT_TRUE(hasKnob());
  EXPECT_TRUE(element().accessibilityActionNames().empty());
  EXPECT_FALSE(element().accessibilityIsAttributeSettable(NSAccessibilityValueAttribute));
  EXPECT_FALSE(slider->acceptsFirstResponder());
}

TEST_F(PlaybackSliderTest, TakingTheSeekAwayEndsAPressWithoutAnAction) {
  user.press(*window, at(100));
  slider->setSeekable(false);
  user.dragTo(at(200));
  user.release();
  EXPECT_TRUE(taken().empty());
  slider->setPosition(3);
  EXPECT_EQ(slider->position(), 3);
}

TEST_F(PlaybackSliderTest, APressThatIsCutShortReturnsTheKnob) {
  slider->setPosition(20);
  user.press(*window, at(100));
  user.dragTo(at(200));
  slider->setEnabled(false);
  EXPECT_EQ(slider->position(), 20);
  user.release();
  EXPECT_TRUE(taken().empty());
}

TEST_F(PlaybackSliderTest, APressWhoseWindowIsHiddenAsksForNothingAndReturnsTheKnob) {
  slider->setPosition(20);
  user.press(*window, at(100));
  user.dragTo(at(200));
  window->orderOut(nullptr);
  EXPECT_EQ(slider->position(), 20);
  EXPECT_TRUE(taken().empty());
  EXPECT_FALSE(slider->isSeeking());
}

TEST_F(PlaybackSliderTest, AReleaseAfterTheCellAloneWasDisabledAsksForNothingAndReturnsTheKnob) {
  slider->setPosition(20);
  user.press(*window, at(100));
  slider->cell()->setEnabled(false);
  user.release();
  EXPECT_TRUE(taken().empty());
  EXPECT_EQ(slider->position(), 20);
}

TEST_F(PlaybackSliderTest, AContinuousSliderKeepsWhatItAskedForInAPressThatIsCutShort) {
  slider->setContinuous(true);
  slider->setPosition(20);
  user.press(*window, at(100));
  user.dragTo(at(200));
  slider->setPosition(21);
  slider->setEnabled(false);
  EXPECT_THAT(taken(), ElementsAre(isAbout(100), isAbout(200)));
  EXPECT_THAT(slider->position(), isAbout(200));
  EXPECT_TRUE(slider->isSeeking());
  slider->confirmSeek();
  EXPECT_THAT(slider->position(), isAbout(200));
}

TEST_F(PlaybackSliderTest, AfterAPressThatIsCutShortThePositionThatCameMeanwhileShows) {
  slider->setPosition(20);
  user.press(*window, at(100));
  slider->setPosition(25);
  slider->setHidden(true);
  EXPECT_EQ(slider->position(), 25);
}

TEST_F(PlaybackSliderTest, APressThatIsCutShortLeavesAnEarlierSeekWaiting) {
  user.click(*window, at(100));
  user.press(*window, at(200));
  slider->setPosition(5);
  slider->setSeekable(false);
  EXPECT_THAT(slider->position(), isAbout(100));
  EXPECT_TRUE(slider->isSeeking());
  desktop.advance(3);
  EXPECT_EQ(slider->position(), 5);
}

TEST_F(PlaybackSliderTest, APositionFromBeforeTheConfirmationDoesNotShowAfterAPressThatIsCutShort) {
  user.click(*window, at(100));
  slider->setPosition(20);
  slider->confirmSeek();
  user.press(*window, at(200));
  slider->setEnabled(false);
  EXPECT_THAT(slider->position(), isAbout(100));
}

TEST_F(PlaybackSliderTest, ARemovalInMidPressAsksForNothing) {
  slider->setPosition(20);
  user.press(*window, at(100));
  slider->removeFromSuperview();
  EXPECT_TRUE(taken().empty());
  EXPECT_EQ(slider->position(), 20);
}

TEST_F(PlaybackSliderTest, ARateThatIsNotPositiveAndFiniteMakesNoLength) {
  const double endless = std::numeric_limits<double>::infinity();
  for (const double rate : {0.0, -44100.0, std::nan(""), endless, 1e308}) {
    slider->beginSong({.seconds = 300, .framesPerSecond = rate});
    EXPECT_FALSE(slider->isSeekable()) << rate;
    EXPECT_EQ(slider->maxValue(), 0) << rate;
    slider->setPosition(65);
    EXPECT_EQ(slider->position(), 65) << rate;
    EXPECT_EQ(element().accessibilityAttributeValue(NSAccessibilityValueAttribute), AccessibilityValue(0.0)) << rate;
  }
}

TEST_F(PlaybackSliderTest, APositionThatIsNaNIsTheBeginning) {
  slider->setPosition(90);
  slider->setPosition(std::nan(""));
  EXPECT_EQ(slider->position(), 0);
  slider->beginSong({});
  slider->setPosition(std::nan(""));
  EXPECT_EQ(slider->position(), 0);
}

TEST_F(PlaybackSliderTest, KeysAndWheelThatItDoesNotTakeContinueUpTheChain) {
  const auto around = make<harness::ProbeView>(CGRect{0, 0, 400, 150});
  window->contentView()->addSubview(around);
  around->addSubview(slider);
  const auto count = [&](const char* call) { return std::count(around->calls.begin(), around->calls.end(), call); };
  window->makeFirstResponder(slider.get());
  user.pressKey(NSRightArrowFunctionKey, NSEventModifierFlagControl);
  user.pressKey(NSHomeFunctionKey, NSEventModifierFlagOption);
  user.pressKey("x");
  EXPECT_EQ(count("keyDown"), 3);
  slider->setSeekable(false);
  user.pressKey(NSRightArrowFunctionKey);
  user.scroll(*window, at(100), {0, 48});
  EXPECT_EQ(count("keyDown"), 4);
  EXPECT_EQ(count("scrollWheel"), 1);
  EXPECT_TRUE(taken().empty());
}

TEST_F(PlaybackSliderTest, APressLeavesTheKeyboardInTheListUnlessItIsToTakeIt) {
  const auto list = make<NSButton>(CGRect{320, 60, 60, 20});
  window->contentView()->addSubview(list);
  window->makeFirstResponder(list.get());
  user.click(*window, at(100));
  EXPECT_EQ(window->firstResponder(), list.get());
  window->makeFirstResponder(nullptr);
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), slider.get());
  window->makeFirstResponder(list.get());
  slider->setTakesKeyboardAtPress(true);
  user.click(*window, at(100));
  EXPECT_EQ(window->firstResponder(), slider.get());
}

TEST_F(PlaybackSliderTest, ThePointerShowsTheTimeThatAPressThereAsksFor) {
  user.moveTo(*window, at(90));
  EXPECT_EQ(slider->toolTip(), "1:30");
  user.click(*window, at(90));
  EXPECT_THAT(taken(), ElementsAre(isAbout(90)));
  user.moveTo(*window, at(-1));
  EXPECT_EQ(slider->toolTip(), "0:00");
  EXPECT_THAT(*slider->timeAtPoint({1.5 + 250, 10}), isAbout(250));
  slider->setSeekable(false);
  EXPECT_EQ(slider->toolTip(), "");
  user.moveTo(*window, at(100));
  EXPECT_EQ(slider->toolTip(), "");
  slider->setSeekable(true);
  user.moveTo(*window, at(101));
  slider->beginSong({.seconds = 300});
  EXPECT_EQ(slider->toolTip(), "");
  slider->setEnabled(false);
  user.moveTo(*window, at(100));
  EXPECT_EQ(slider->toolTip(), "");
  EXPECT_EQ(slider->timeAtPoint({50, 10}), std::nullopt);
}

TEST_F(PlaybackSliderTest, FollowsThePointerInOneAreaWhateverItsSize) {
  slider->setFrameSize({200, 20});
  slider->setFrameOrigin({20, 60});
  EXPECT_EQ(slider->trackingAreas().size(), 1u);
}

TEST_F(PlaybackSliderTest, TimeRunsFromLeftToRightInEveryLayout) {
  slider->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  user.click(*window, at(100));
  EXPECT_THAT(taken(), ElementsAre(isAbout(100)));
  window->makeFirstResponder(slider.get());
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_THAT(taken(), ElementsAre(isAbout(105)));
}

TEST_F(PlaybackSliderTest, TimesAreShownAndSpoken) {
  EXPECT_EQ(slider->shownTime(0), "0:00");
  EXPECT_EQ(slider->shownTime(59.99), "0:59");
  EXPECT_EQ(slider->shownTime(10), "0:10");
  EXPECT_EQ(slider->shownTime(3599), "59:59");
  EXPECT_EQ(slider->shownTime(3600), "1:00:00");
  EXPECT_EQ(slider->shownTime(3600 + 2 * 60 + 3), "1:02:03");
  EXPECT_EQ(slider->shownTime(-4), "0:00");
  EXPECT_EQ(slider->shownTime(std::nan("")), "0:00");
  EXPECT_EQ(slider->spokenTime(0), "0 seconds");
  EXPECT_EQ(slider->spokenTime(1), "1 second");
  EXPECT_EQ(slider->spokenTime(300), "5 minutes");
  EXPECT_EQ(slider->spokenTime(2 * 3600 + 60), "2 hours 1 minute");
  slider->setPosition(90);
  EXPECT_EQ(spoken(), "1 minute 30 seconds of 5 minutes");
}

TEST_F(PlaybackSliderTest, TimesAreSpokenInTheUsersLanguage) {
  const harness::TextsScope german({{"hours", "Stunden"},
                                    {"minute", "Minute"},
                                    {"minutes", "Minuten"},
                                    {"second", "Sekunde"},
                                    {"seconds", "Sekunden"},
                                    {"of", "von"},
                                    {"hour", "Stunde"}});
  EXPECT_EQ(slider->spokenTime(0), "0 Sekunden");
  EXPECT_EQ(slider->spokenTime(3661), "1 Stunde 1 Minute 1 Sekunde");
  EXPECT_EQ(slider->spokenTime(7320), "2 Stunden 2 Minuten");
  slider->setPosition(90);
  EXPECT_EQ(spoken(), "1 Minute 30 Sekunden von 5 Minuten");
}

TEST_F(PlaybackSliderTest, AssistiveClientsAreNotifiedAtMostTwiceASecondAndOfTheLastValue) {
  std::vector<double> heard;
  auto& center = accessibilityNotificationCenter();
  desktop.advance(1);
  const auto token = center.addObserverForName(NSAccessibilityValueChangedNotification, slider->cell(), nullptr,
                                               [&](const Ref<NSNotification>&) { heard.push_back(slider->position()); });
  for (int i = 1; i <= 100; ++i) {
    slider->setPosition(i * 0.1);
    desktop.advance(0.1);
  }
  EXPECT_LE(heard.size(), 21u);
  EXPECT_GE(heard.size(), 18u);
  desktop.advance(2);
  EXPECT_EQ(heard.back(), 10);
  const std::size_t count = heard.size();
  desktop.advance(10);
  EXPECT_EQ(heard.size(), count);
  center.removeObserver(token);
}

TEST_F(PlaybackSliderTest, AssistiveClientsAreNotifiedOfThePositionInASongOfUnknownLength) {
  slider->beginSong({});
  desktop.advance(1);
  int notified = 0;
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName(NSAccessibilityValueChangedNotification, slider->cell(), nullptr,
                                               [&](const Ref<NSNotification>&) { ++notified; });
  slider->setPosition(10);
  EXPECT_EQ(notified, 1);
  desktop.advance(1);
  slider->setPosition(10);
  EXPECT_EQ(notified, 1);
  center.removeObserver(token);
}

TEST_F(PlaybackSliderTest, AClientMaySetAnotherPositionAsItIsNotified) {
  desktop.advance(1);
  int notified = 0;
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName(NSAccessibilityValueChangedNotification, slider->cell(), nullptr,
                                               [&](const Ref<NSNotification>&) {
                                                 if (++notified < 5) slider->setPosition(slider->position() + 1);
                                               });
  slider->setPosition(10);
  EXPECT_EQ(notified, 1);
  EXPECT_EQ(slider->position(), 11);
  center.removeObserver(token);
}

TEST_F(PlaybackSliderTest, AClientMayReleaseTheSliderAsItIsNotified) {
  const auto operations = {
      +[](PlaybackSlider& one) { one.setPosition(30); }, +[](PlaybackSlider& one) { one.beginSong({}); },
      +[](PlaybackSlider& one) { one.setSeekable(false); },  // in mid-press: the knob returns
  };
  for (const auto operation : operations) {
    slider->removeFromSuperview();
    slider = make<PlaybackSlider>(CGRect{10, 60, 303, 20});
    slider->beginSong({.seconds = 300});
    slider->setPosition(20);
    window->contentView()->addSubview(slider);
    user.press(*window, at(90));
    if (operation == operations.begin()[0]) user.release();
    slider->confirmSeek();
    desktop.advance(1);
    const WeakRef<PlaybackSlider> weak = slider;
    auto& center = accessibilityNotificationCenter();
    const auto token = center.addObserverForName(NSAccessibilityValueChangedNotification, slider->cell(), nullptr,
                                                 [&](const Ref<NSNotification>&) {
                                                   if (slider) slider->removeFromSuperview();
                                                   slider.reset();
                                                 });
    operation(*slider);
    EXPECT_TRUE(weak.expired());
    center.removeObserver(token);
    if (!slider) slider = make<PlaybackSlider>(CGRect{10, 60, 303, 20});
    user.release();
  }
}

TEST_F(PlaybackSliderTest, WhatIsLoadedShowsAndIsForgottenWithTheSong) {
  const auto drawn = [&] { return harness::recordingOf([&] { slider->drawRect(slider->bounds()); }); };
  const auto before = drawn();
  slider->showLoaded({.start = 0, .frames = 44100 * 100, .isCompleted = true}, {.start = 44100 * 200, .frames = 44100});
  EXPECT_EQ(harness::only("fill", drawn()).size(), harness::only("fill", before).size() + 2);
  slider->beginSong({.seconds = 300});
  EXPECT_EQ(drawn(), before);
}

TEST_F(PlaybackSliderTest, ASongOfThreeHoursAt192KilohertzIsSoughtToTheFrame) {
  slider->beginSong({.seconds = 10800, .framesPerSecond = 192000});
  slider->setPosition(10799.5);
  EXPECT_EQ(slider->doubleValue(), 10799.5 * 192000);
  EXPECT_EQ(slider->position(), 10799.5);
  EXPECT_EQ(slider->shownTime(slider->position()), "2:59:59");
}

TEST_F(PlaybackSliderTest, ComesFromAnInterfaceFileWithItsProperties) {
  TessalunaUIKit::registerInterfaceFileClasses();
  const auto contents = make<NSNib>(R"({"objects": [{"class": "TessalunaUIKit.PlaybackSlider", "frame": [0, 0, 103, 20],
      "action": "seek:", "properties": {"seekable": false, "seekTimeout": 5, "takesKeyboardAtPress": true}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  slider = std::dynamic_pointer_cast<PlaybackSlider>(contents.topLevelObjects.at(0));
  slider->beginSong({.seconds = 10});
  EXPECT_FALSE(slider->isSeekable());
  EXPECT_EQ(slider->seekTimeout(), 5);
  EXPECT_TRUE(slider->takesKeyboardAtPress());
  EXPECT_FALSE(slider->isContinuous());
}

// The time above the knob while it is held.

namespace {

class PlaybackSliderHeld : public PlaybackSliderTest {
 protected:
  // Absent while there is none. The font's glyph of a character has its number.
  std::optional<std::string> shown() const {
    if (window->childWindows().empty()) return std::nullopt;
    const Ref<NSView> content = window->childWindows()[0]->contentView();
    const auto glyphs = harness::only("glyphs", harness::recordingOf([&] { content->drawRect(content->bounds()); }));
    std::string text;
    const std::string line = glyphs.at(0);
    for (auto at = line.find("[["); at != line.npos; at = line.find("],[", at + 1))
      text += static_cast<char>(std::stoi(line.substr(line.find_first_of("0123456789", at))));
    return text;
  }
  CGRect place() const { return window->childWindows().at(0)->frame(); }
};

}  // namespace

TEST_F(PlaybackSliderHeld, APressShowsItsTimeAndADragWhereItHasGot) {
  EXPECT_EQ(shown(), std::nullopt);
  user.press(*window, at(100));
  EXPECT_EQ(shown(), "1:40");
  user.dragTo(at(151));
  EXPECT_EQ(shown(), "2:31");
  user.release();
  EXPECT_EQ(shown(), std::nullopt);
  EXPECT_THAT(taken(), ElementsAre(isAbout(151)));
}

TEST_F(PlaybackSliderHeld, ANewTimeIsDrawnAndAtTheReleaseTheWindowGoes) {
  user.press(*window, at(100));
  desktop.settle();
  const Ref<NSWindow> bubble = window->childWindows().at(0);
  nativeOf(*bubble).forgetPaints();
  user.dragTo(at(151));
  desktop.settle();
  EXPECT_EQ(nativeOf(*bubble).paints().size(), 1u);
  EXPECT_TRUE(bubble->isVisible());
  user.release();
  EXPECT_FALSE(bubble->isVisible());
}

TEST_F(PlaybackSliderHeld, ItsTimeDrawsAsTheExpectedFileSays) {
  harness::LookBook look(desktop);
  user.press(*window, at(100));
  look.add("1:40", *window->childWindows().at(0));
  look.expectSameAsFile("uikit/transport/expected/TimeBubble.txt");
}

TEST_F(PlaybackSliderHeld, TheTimeIsAboveTheMiddleOfTheKnob) {
  user.press(*window, at(100));
  EXPECT_NEAR(CGRectGetMidX(place()), 100 + 111.5, 1);
  // The window's content begins at 100, the knob's upper edge is at 77.
  EXPECT_EQ(place().origin.y, 100 + 77 + 4);
  user.dragTo(at(200));
  EXPECT_NEAR(CGRectGetMidX(place()), 100 + 211.5, 1);
}

TEST_F(PlaybackSliderHeld, AtTheEdgesOfTheScreenTheTimeStaysOnIt) {
  const CGRect screen = window->screen()->frame();
  window->setFrameTopLeftPoint({-10, CGRectGetMaxY(screen) + 60});
  desktop.settle();
  const CGRect content = window->convertRectToScreen(slider->frame());
  user.press(*window, at(0));
  EXPECT_EQ(place().origin.x, 0);
  EXPECT_LT(CGRectGetMaxY(place()), CGRectGetMidY(content));
  user.release();
  window->setFrameTopLeftPoint({CGRectGetMaxX(screen) - 313, 500});
  user.press(*window, at(300));
  EXPECT_EQ(CGRectGetMaxX(place()), CGRectGetMaxX(screen));
  EXPECT_GT(place().origin.y, window->convertRectToScreen(slider->frame()).origin.y);
}

TEST_F(PlaybackSliderHeld, TheTimeGoesWithThePressHoweverThatEnds) {
  const auto shownAfter = [&](auto end) {
    user.press(*window, at(100));
    EXPECT_NE(shown(), std::nullopt);
    end();
    const bool isShown = shown().has_value();
    user.release();
    return isShown;
  };
  EXPECT_FALSE(shownAfter([&] { slider->setSeekable(false); }));
  slider->setSeekable(true);
  EXPECT_FALSE(shownAfter([&] { slider->setEnabled(false); }));
  slider->setEnabled(true);
  EXPECT_FALSE(shownAfter([&] { slider->beginSong({.seconds = 300}); }));
  EXPECT_FALSE(shownAfter([&] { slider->removeFromSuperview(); }));
}

TEST_F(PlaybackSliderHeld, AssistiveClientsDoNotMeetIt) {
  user.press(*window, at(100));
  const AccessibilityElements windows = accessibleChildrenOf(NSApp);
  EXPECT_EQ(windows.size(), 1u);
}

TEST_F(PlaybackSliderHeld, WhereNothingCanBeAskedForThereIsNoTime) {
  slider->setSeekable(false);
  user.press(*window, at(100));
  EXPECT_EQ(shown(), std::nullopt);
}
