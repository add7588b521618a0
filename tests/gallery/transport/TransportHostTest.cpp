#include "gallery/transport/TransportHost.h"

#include <gmock/gmock.h>

#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::Contains;
using testing::ElementsAre;

class TransportHostTest : public harness::StillWorld {
 protected:
  TransportHostTest() {
    host->setReport([this](const std::string& what) { reports.push_back(what); });
    window->contentView()->addSubview(host->view());
    host->start();
    desktop.advance(1);
  }

  // Of the button at that place in the bar, from the left.
  void click(CGFloat x) { user.click(*window, {x + 9, 66}); }

  std::vector<std::string> reports;
  Ref<NSWindow> window = showWindow({100, 300, 700, 200});
  Ref<TransportHost> host = make<TransportHost>(
      std::vector<SimulatedPlayer::Song>{{"First", 100, 44100}, {"Second", 200, 96000}, {"Third", 10800, 192000}});
};

}  // namespace

TEST_F(TransportHostTest, PlayingMovesTheKnobAndPausingHoldsIt) {
  EXPECT_EQ(host->playButton()->transportButtonStyle(), 1u);
  click(32);
  EXPECT_EQ(host->playButton()->transportButtonStyle(), 2u);
  desktop.advance(10);
  EXPECT_NEAR(host->slider()->position(), 10, 0.3);
  EXPECT_EQ(host->shownTime(), "0:09 of 1:40");
  click(32);
  desktop.advance(10);
  EXPECT_NEAR(host->slider()->position(), 10, 0.3);
  EXPECT_THAT(reports, ElementsAre("play", "pause"));
}

TEST_F(TransportHostTest, ASeekIsConfirmedWhenDataComesAndTheKnobDoesNotJumpBack) {
  click(32);
  desktop.advance(5);
  host->player().setLoadingSpeed(0);
  user.click(*window, {1.5 + 637 * 0.5, 12});
  EXPECT_THAT(reports, Contains("seek 0:50"));
  desktop.advance(1);
  EXPECT_NEAR(host->slider()->position(), 50, 0.01);
  EXPECT_TRUE(host->slider()->isSeeking());
  host->player().setLoadingSpeed(8);
  desktop.advance(1);
  EXPECT_FALSE(host->slider()->isSeeking());
  EXPECT_NEAR(host->slider()->position(), 51, 0.3);
}

TEST_F(TransportHostTest, TheNextSongBeginsWithoutAGap) {
  click(32);
  desktop.advance(102);
  EXPECT_THAT(reports, ElementsAre("play", "song Second"));
  EXPECT_EQ(host->slider()->song().framesPerSecond, 96000);
  EXPECT_NEAR(host->slider()->position(), 2, 0.5);
}

TEST_F(TransportHostTest, SkippingStoppingAndModes) {
  click(96);
  click(96);
  click(96);
  click(0);
  click(64);
  click(142);
  click(142);
  click(174);
  EXPECT_THAT(reports, ElementsAre("song Second", "song Third", "song First", "song Third", "stop", "shuffle on",
                                   "shuffle off", "repeat on"));
}

}  // namespace gallery
