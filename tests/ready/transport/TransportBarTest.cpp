#include "tessaluna/ready/transport/TransportBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSSlider.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/LookBook.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/transportParts.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TransportBarTest : public harness::StillWorld {
 protected:
  TransportBarTest() {
    bar->setActions(all());
    bar->showSong({.title = "Slow orbit", .artists = "Amber Quartet", .seconds = 200});
    window->contentView()->addSubview(bar);
    desktop.settle();
  }

  TransportActions all() {
    const auto say = [this](const char* what) { return [this, what] { calls.push_back(what); }; };
    const auto sayOn = [this](std::string what) {
      return [this, what](bool isOn) { calls.push_back(what + (isOn ? " on" : " off")); };
    };
    return {.previous = say("previous"),
            .playOrPause = say("play or pause"),
            .stop = say("stop"),
            .next = say("next"),
            .shuffle = sayOn("shuffle"),
            .repeat = sayOn("repeat"),
            .seek =
                [this](double seconds) {
                  calls.push_back("seek");
                  sought = seconds;
                },
            .setVolume =
                [this](double volume) {
                  calls.push_back("volume");
                  this->volume = volume;
                }};
  }
  // What assistive clients find, by name.
  std::string elements() {
    std::string lines;
    for (const std::string& line : accessibleTreeLines(bar)) lines += line + "\n";
    return lines;
  }
  Ref<NSControl> control(const std::string& name) { return harness::transportControl(*bar, name); }
  void click(const std::string& name) {
    const auto one = control(name);
    ASSERT_TRUE(one) << name;
    user.click(*window, one->convertPointToView({one->bounds().size.width / 2, one->bounds().size.height / 2}, nullptr));
  }
  std::vector<std::string> texts() { return harness::transportTexts(*bar); }

  std::vector<std::string> calls;
  double sought = -1, volume = -1;
  Ref<TransportBar> bar = make<TransportBar>(CGRect{10, 10, 700, 52});
  Ref<NSWindow> window = showWindow({100, 100, 720, 100});
};

TEST_F(TransportBarTest, EachButtonAsksForItsAction) {
  for (const char* name : {"Previous", "Play", "Stop", "Next", "Shuffle", "Shuffle", "Repeat"}) click(name);
  EXPECT_THAT(calls, ElementsAre("previous", "play or pause", "stop", "next", "shuffle on", "shuffle off", "repeat on"));
}

TEST_F(TransportBarTest, WithoutAnActionThereIsNoControl) {
  bar->setActions({.playOrPause = [] {}});
  EXPECT_TRUE(control("Play"));
  for (const char* name : {"Previous", "Stop", "Next", "Shuffle", "Repeat", "Volume"}) EXPECT_FALSE(control(name)) << name;
  EXPECT_FALSE(bar->slider()->isSeekable());
}

TEST_F(TransportBarTest, ShowsWhatPlaysAndHowFarItIs) {
  bar->showState({.isPlaying = true, .position = 65, .note = "loading"});
  EXPECT_THAT(texts(), ElementsAre("Slow orbit – Amber Quartet – loading", "1:05", "3:20"));
  EXPECT_FALSE(control("Play"));
  EXPECT_TRUE(control("Pause"));
  bar->showState({.position = 66});
  EXPECT_TRUE(control("Play"));
  EXPECT_THAT(texts(), ElementsAre("Slow orbit – Amber Quartet", "1:06", "3:20"));
}

TEST_F(TransportBarTest, ASongOfUnknownLengthHasNoLength) {
  bar->showSong({.title = "Radio"});
  EXPECT_THAT(texts(), ElementsAre("Radio", "0:00", ""));
}

TEST_F(TransportBarTest, ALengthThatTheSliderRefusesIsNotShown) {
  for (const double length : {std::numeric_limits<double>::infinity(), std::nan(""), -5.0, 1e300, 3'600'000.0}) {
    bar->showSong({.title = "Radio", .seconds = length});
    EXPECT_THAT(texts(), ElementsAre("Radio", "0:00", "")) << length;
  }
}

TEST_F(TransportBarTest, LongTimesGetTheRoomThatTheyNeedUntilTheNextSong) {
  const CGRect usual = bar->slider()->frame();
  for (const double length : {3700.0, 36'000.0, 3'599'999.0}) {
    bar->showSong({.title = "Mix", .seconds = length});
    bar->showState({.position = length});
    for (const Ref<NSView>& view : bar->subviews()) {
      const auto label = std::dynamic_pointer_cast<NSTextField>(view);
      if (!label) continue;
      EXPECT_GE(label->frame().size.width, label->intrinsicContentSize().width) << label->stringValue();
      EXPECT_FALSE(NSIntersectsRect(label->frame(), bar->slider()->frame())) << label->stringValue();
    }
    const CGRect slider = bar->slider()->frame();
    bar->showState({.position = 1});
    EXPECT_EQ(bar->slider()->frame(), slider) << "the slider does not move with the digits";
  }
  bar->showSong({.title = "Slow orbit", .seconds = 200});
  EXPECT_EQ(bar->slider()->frame(), usual);
}

TEST_F(TransportBarTest, TheSameLongSongAgainKeepsItsRoom) {
  bar->showSong({.title = "Mix", .seconds = 36'000});
  const CGRect slider = bar->slider()->frame();
  bar->showSong({.title = "Mix", .seconds = 36'000});
  EXPECT_EQ(bar->slider()->frame(), slider);
}

TEST_F(TransportBarTest, APositionBeyondAllSongsIsNotShown) {
  bar->showSong({.title = "Radio"});
  bar->showState({.position = 3'599'999});
  EXPECT_THAT(texts(), ElementsAre("Radio", "999:59:59", ""));
  for (const double position : {3'600'000.0, 1e300, std::numeric_limits<double>::infinity()}) {
    bar->showState({.position = position});
    EXPECT_THAT(texts(), ElementsAre("Radio", "", "")) << position;
  }
}

TEST_F(TransportBarTest, APressOnTheTrackSeeksAndTheKnobWaitsForThePlayer) {
  const CGRect slider = bar->slider()->frame();
  user.click(*window, bar->convertPointToView({CGRectGetMidX(slider), CGRectGetMidY(slider)}, nullptr));
  EXPECT_THAT(calls, ElementsAre("seek"));
  EXPECT_NEAR(sought, 100, 2);
  bar->showState({.isPlaying = true, .position = 3, .isSeeking = true});
  EXPECT_NEAR(bar->slider()->position(), 100, 2);
  bar->showState({.isPlaying = true, .position = 101});
  EXPECT_EQ(bar->slider()->position(), 101);
}

TEST_F(TransportBarTest, ASeekInAPausedSongShowsItsTimeAtOnce) {
  bar->showState({.position = 3});
  const CGRect slider = bar->slider()->frame();
  user.click(*window, bar->convertPointToView({CGRectGetMidX(slider), CGRectGetMidY(slider)}, nullptr));
  EXPECT_THAT(texts(), ElementsAre("Slow orbit – Amber Quartet", bar->slider()->shownTime(sought), "3:20"));
  EXPECT_GT(sought, 60);
}

TEST_F(TransportBarTest, APressThatIsCutShortLeavesThePlayersTime) {
  const CGRect slider = bar->slider()->frame();
  bar->showState({.position = 3});
  user.press(*window, bar->convertPointToView({CGRectGetMidX(slider), CGRectGetMidY(slider)}, nullptr));
  bar->showState({.position = 4});
  ASSERT_GT(bar->slider()->position(), 60);
  bar->slider()->setSeekable(false);
  EXPECT_EQ(bar->slider()->position(), 4);
  EXPECT_THAT(texts(), ElementsAre("Slow orbit – Amber Quartet", "0:04", "3:20"));
  user.release();
}

TEST_F(TransportBarTest, AnotherPressThatIsCutShortLeavesTheTimeOfTheFirst) {
  const CGRect slider = bar->slider()->frame();
  const auto at = [&](CGFloat share) {
    return bar->convertPointToView({slider.origin.x + slider.size.width * share, CGRectGetMidY(slider)}, nullptr);
  };
  user.click(*window, at(0.5));
  user.press(*window, at(0.8));
  bar->showState({.position = 4, .isSeeking = true});
  ASSERT_GT(bar->slider()->position(), 140);
  bar->slider()->setSeekable(false);
  EXPECT_EQ(bar->slider()->position(), sought);
  EXPECT_EQ(texts()[1], bar->slider()->shownTime(sought));
  user.release();
}

TEST_F(TransportBarTest, AReportWhileTheVolumeIsHeldDoesNotMoveIt) {
  const auto slider = control("Volume");
  ASSERT_TRUE(slider);
  const CGPoint middle = slider->convertPointToView({slider->bounds().size.width / 2, 10}, nullptr);
  user.press(*window, middle);
  EXPECT_NEAR(volume, 0.5, 0.05);
  bar->showState({.volume = 0.1});
  EXPECT_NEAR(slider->doubleValue(), 0.5, 0.05);
  user.release();
  bar->showState({.volume = 0.1});
  EXPECT_EQ(slider->doubleValue(), 0.1);
}

TEST_F(TransportBarTest, ShuffleAndRepeatShowThePlayersState) {
  bar->showState({.isShuffled = true});
  const auto isOn = [&](const char* name) {
    return std::dynamic_pointer_cast<NSButton>(control(name))->state() == NSControlStateValueOn;
  };
  EXPECT_TRUE(isOn("Shuffle"));
  EXPECT_FALSE(isOn("Repeat"));
  bar->showState({.isRepeated = true});
  EXPECT_FALSE(isOn("Shuffle"));
  EXPECT_TRUE(isOn("Repeat"));
}

TEST_F(TransportBarTest, WhatIsLoadedIsCountedInTheSongsFrames) {
  const auto picture = [&](double framesPerSecond, std::uint64_t frames) {
    bar->showSong({.title = "Slow orbit", .seconds = 100, .framesPerSecond = framesPerSecond});
    bar->showState({.first = {.start = 0, .frames = frames}});
    return harness::recordingOf([&] { bar->slider()->drawRect(bar->slider()->bounds()); });
  };
  const harness::Lines half = picture(10, 500);
  EXPECT_EQ(picture(20, 1000), half);
  EXPECT_NE(picture(20, 500), half);
  EXPECT_NE(picture(10, 0), half);
}

TEST_F(TransportBarTest, NewActionsKeepSongAndState) {
  bar->showState({.isPlaying = true, .position = 10, .volume = 0.25});
  bar->setActions(all());
  EXPECT_TRUE(control("Pause"));
  EXPECT_EQ(control("Volume")->doubleValue(), 0.25);
  EXPECT_THAT(texts(), ElementsAre("Slow orbit – Amber Quartet", "0:10", "3:20"));
}

TEST_F(TransportBarTest, ANarrowBarLeavesOutTheVolumeAndThenTheModes) {
  const auto shown = [&](CGFloat width) {
    bar->setFrame({10, 10, width, 52});
    std::string names;
    for (const char* name : {"Next", "Shuffle", "Volume"})
      if (!control(name)->isHidden()) names += std::string(name) + " ";
    return names;
  };
  EXPECT_EQ(shown(700), "Next Shuffle Volume ");
  EXPECT_EQ(shown(420), "Next Shuffle ");
  EXPECT_EQ(shown(360), "Next ");
  EXPECT_EQ(shown(0), "Next ");
  EXPECT_EQ(shown(700), "Next Shuffle Volume ");
}

TEST_F(TransportBarTest, EveryStateDrawsAsTheExpectedFileSays) {
  harness::LookBook look(desktop);
  look.add("paused", *window);
  bar->showState(
      {.isPlaying = true, .position = 65, .isShuffled = true, .isRepeated = true, .volume = 0.5, .note = "loading"});
  look.add("playing", *window);
  bar->setFrameSize({420, 60});
  look.add("narrower", *window);
  bar->showSong({.title = "Mix", .seconds = 36'000});
  bar->setFrameSize({360, 52});
  look.add("narrow, with long times", *window);
  bar->setActions({.next = [] {}});
  look.add("one action", *window);
  look.expectSameAsFile("ready/transport/expected/TransportBar.txt");
}

TEST_F(TransportBarTest, NothingOverlapsAtAnyWidth) {
  for (CGFloat width = 240; width < 1000; width += 7) {
    bar->setFrame({10, 10, width, 52});
    std::vector<CGRect> frames;
    for (const Ref<NSView>& view : bar->subviews())
      if (!view->isHidden()) frames.push_back(view->frame());
    for (std::size_t i = 0; i < frames.size(); ++i) {
      EXPECT_TRUE(NSContainsRect(bar->bounds(), frames[i])) << width << " " << i;
      for (std::size_t j = 0; j < i; ++j)
        EXPECT_FALSE(NSIntersectsRect(frames[i], frames[j])) << width << " " << i << " " << j;
    }
  }
}

TEST_F(TransportBarTest, ABarMayBeRemovedInItsAction) {
  bar->setActions({.playOrPause = [this] {
    bar->removeFromSuperview();
    bar.reset();
  }});
  click("Play");
  EXPECT_FALSE(bar);
  desktop.settle();
}

TEST_F(TransportBarTest, ActionsThatAreReplacedInAnActionHoldFromThenOn) {
  bar->setActions({.next = [this] {
    calls.push_back("old");
    bar->setActions(all());
  }});
  click("Next");
  click("Next");
  EXPECT_THAT(calls, ElementsAre("old", "next"));
}

TEST_F(TransportBarTest, EverythingHasANameInTheUsersLanguage) {
  bar->setTexts({.play = "Los", .position = "Stelle", .volume = "Laut"});
  for (const char* name : {"Los", "Stelle", "Laut", "Previous"}) EXPECT_THAT(elements(), HasSubstr(name));
  bar->showState({.isPlaying = true});
  EXPECT_TRUE(control("Pause"));
  bar->setTexts({.play = "Los", .pause = "Halt"});
  EXPECT_TRUE(control("Halt"));
}

TEST_F(TransportBarTest, AnyActionMayReplaceTheActions) {
  const auto replaced = [this](auto&&...) { bar->setActions(all()); };
  const TransportActions replacing{.previous = replaced,
                                   .playOrPause = replaced,
                                   .stop = replaced,
                                   .next = replaced,
                                   .shuffle = replaced,
                                   .repeat = replaced,
                                   .seek = replaced,
                                   .setVolume = replaced};
  for (const char* name : {"Previous", "Play", "Stop", "Next", "Shuffle", "Repeat", "Volume"}) {
    bar->setActions(replacing);
    desktop.settle();
    click(name);
    desktop.settle();
    calls.clear();
    click("Next");
    EXPECT_THAT(calls, ElementsAre("next")) << name;
  }
  bar->setActions(replacing);
  desktop.settle();
  const CGRect slider = bar->slider()->frame();
  user.press(*window, bar->convertPointToView({CGRectGetMidX(slider), CGRectGetMidY(slider)}, nullptr));
  user.dragTo({10, 10});
  user.release();
  click("Next");
  EXPECT_THAT(calls, ElementsAre("next", "next"));
}

TEST_F(TransportBarTest, AnyActionMayRemoveTheBar) {
  const auto removed = [this](auto&&...) {
    if (const auto leaving = std::exchange(bar, nullptr)) leaving->removeFromSuperview();
    calls.push_back("removed");
  };
  for (const char* name : {"Play", "Shuffle", "Volume", "slider"}) {
    bar = make<TransportBar>(CGRect{10, 10, 700, 52});
    bar->setActions({.playOrPause = removed, .shuffle = removed, .seek = removed, .setVolume = removed});
    bar->showSong({.title = "Slow orbit", .seconds = 200});
    window->contentView()->addSubview(bar);
    desktop.settle();
    const WeakRef<TransportBar> weak = bar;
    const Ref<NSView> one = name == std::string("slider") ? Ref<NSView>(bar->slider()) : control(name);
    const CGPoint middle = one->convertPointToView({one->bounds().size.width / 2, one->bounds().size.height / 2}, nullptr);
    user.press(*window, middle);
    user.dragTo({middle.x + 5, middle.y});
    user.release();
    desktop.advance(5);
    EXPECT_EQ(bar, nullptr);
  }
}

TEST_F(TransportBarTest, AbsurdNumbersStayWithinSongAndVolume) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const double one : {std::nan(""), infinity, -infinity, -1e300, 1e300}) {
    bar->showSong({.title = "Odd", .seconds = one});
    bar->showState({.isPlaying = true, .position = one, .volume = one});
    desktop.settle();
    bar->showSong({.title = "Odd", .seconds = 100, .framesPerSecond = one});
    bar->showState({.isPlaying = true, .position = one, .volume = one});
    desktop.settle();
    bar->showSong({.title = "Odd", .seconds = 100});
    bar->showState({.isPlaying = true, .position = one, .volume = one});
    desktop.settle();
    const double position = bar->slider()->position(), level = dynamic_cast<NSSlider&>(*control("Volume")).doubleValue();
    EXPECT_TRUE(position >= 0 && position <= 100) << one << " " << position;
    EXPECT_TRUE(level >= 0 && level <= 1) << one << " " << level;
  }
}

TEST_F(TransportBarTest, ABarThatGoesUnderAPressEndsItWithoutAnAction) {
  for (const char* name : {"Play", "Shuffle", "Volume", "slider"}) {
    bar = make<TransportBar>(CGRect{10, 10, 700, 52});
    bar->setActions(all());
    bar->showSong({.title = "Slow orbit", .seconds = 200});
    window->contentView()->addSubview(bar);
    desktop.settle();
    const Ref<NSView> one = name == std::string("slider") ? Ref<NSView>(bar->slider()) : control(name);
    const CGPoint middle = one->convertPointToView({one->bounds().size.width / 2, one->bounds().size.height / 2}, nullptr);
    user.press(*window, middle);
    calls.clear();
    const WeakRef<TransportBar> weak = bar;
    std::exchange(bar, nullptr)->removeFromSuperview();
    desktop.settle();
    user.dragTo({middle.x + 5, middle.y});
    user.release();
    desktop.advance(5);
    EXPECT_THAT(calls, IsEmpty()) << name;
    EXPECT_TRUE(weak.expired()) << name;
  }
}

}  // namespace
}  // namespace tessaluna::ready
