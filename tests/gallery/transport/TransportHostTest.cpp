#include "gallery/transport/TransportHost.h"

#include <gmock/gmock.h>

#include "tests/harness/StillWorld.h"
#include "tests/harness/transportParts.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class TransportHostTest : public harness::StillWorld {
 protected:
  TransportHostTest() {
    host.setReport([this](const std::string& what) { reports.push_back(what); });
    window->contentView()->addSubview(host.bar());
    host.start();
    desktop.advance(1);
  }

  void click(const std::string& name) {
    const auto button = harness::transportControl(*host.bar(), name);
    ASSERT_TRUE(button) << name;
    user.click(*window, button->convertPointToView({9, 9}, nullptr));
  }
  const TessalunaUIKit::PlaybackSlider& slider() { return *host.bar()->slider(); }
  std::vector<std::string> texts() { return harness::transportTexts(*host.bar()); }

  std::vector<std::string> reports;
  Ref<NSWindow> window = showWindow({100, 300, 700, 200});
  TransportHost host{{{"First", 100, 44100}, {"Second", 200, 96000}, {"Third", 10800, 192000}}};
};

}  // namespace

TEST_F(TransportHostTest, PlayingMovesTheKnobAndPausingStopsIt) {
  click("Play");
  EXPECT_TRUE(harness::transportControl(*host.bar(), "Pause"));
  desktop.advance(10);
  EXPECT_NEAR(slider().position(), 10, 0.3);
  EXPECT_THAT(texts(), ElementsAre("First", "0:09", "1:40"));
  click("Pause");
  desktop.advance(10);
  EXPECT_NEAR(slider().position(), 10, 0.3);
  EXPECT_THAT(reports, ElementsAre("play", "pause"));
}

TEST_F(TransportHostTest, ASeekIsConfirmedWhenDataComesAndTheKnobDoesNotJumpBack) {
  click("Play");
  desktop.advance(5);
  host.player().setLoadingSpeed(0);
  const CGRect bounds = slider().bounds();
  user.click(*window, slider().convertPointToView({CGRectGetMidX(bounds), CGRectGetMidY(bounds)}, nullptr));
  EXPECT_THAT(reports, Contains("seek 0:50"));
  desktop.advance(1);
  EXPECT_NEAR(slider().position(), 50, 0.01);
  EXPECT_TRUE(slider().isSeeking());
  EXPECT_THAT(texts(), Contains("First – loading")) << "a slow network shows";
  host.player().setLoadingSpeed(8);
  desktop.advance(1);
  EXPECT_FALSE(slider().isSeeking());
  EXPECT_NEAR(slider().position(), 51, 0.3);
}

TEST_F(TransportHostTest, TheNextSongBeginsWithoutAGap) {
  click("Play");
  desktop.advance(102);
  EXPECT_THAT(reports, ElementsAre("play", "song Second"));
  EXPECT_EQ(slider().song().framesPerSecond, 96000);
  EXPECT_NEAR(slider().position(), 2, 0.5);
}

TEST_F(TransportHostTest, ReportsSkippingStoppingAndModes) {
  for (const char* name : {"Next", "Next", "Next", "Previous", "Stop", "Shuffle", "Shuffle", "Repeat"}) click(name);
  EXPECT_THAT(reports, ElementsAre("song Second", "song Third", "song First", "song Third", "stop", "shuffle on",
                                   "shuffle off", "repeat on"));
}

TEST_F(TransportHostTest, StoppedTheKnobIsAtTheBeginningWithoutWaitingForData) {
  click("Play");
  desktop.advance(10);
  host.player().setLoadingSpeed(0);
  click("Stop");
  EXPECT_EQ(slider().position(), 0);
  desktop.advance(1);
  EXPECT_EQ(slider().position(), 0);
}

TEST_F(TransportHostTest, AModeStaysOnWhileTheSongPlays) {
  click("Repeat");
  desktop.advance(1);
  const auto repeat = std::dynamic_pointer_cast<NSButton>(harness::transportControl(*host.bar(), "Repeat"));
  EXPECT_EQ(repeat->state(), NSControlStateValueOn);
}

}  // namespace gallery
