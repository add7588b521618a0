#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/uikit/trackrow/TrackRowWorld.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;
using harness::recordingOf;

namespace {

constexpr CGPoint inside{57, 67}, outside{10, 10};

class TrackRowMoreButtonTest : public harness::TrackRowWorld<TrackRowMoreButton> {
 protected:
  TrackRowMoreButtonTest() { button->setHasMouseOnRow(true); }

  static Lines dots(bool isPressed, bool isOver) {
    return recordingOf([&] { TessalunaStyleKit::drawTrackMore(bounds, isPressed, isOver); });
  }
};

}  // namespace

TEST_F(TrackRowMoreButtonTest, StartsWithEveryFieldAtItsDefault) {
  const auto fresh = make<TrackRowMoreButton>(bounds);
  EXPECT_FALSE(fresh->hasMouseOnRow());
  EXPECT_FALSE(fresh->isPressed());
  EXPECT_EQ(fresh->target(), nullptr);
  EXPECT_EQ(fresh->className(), "TessalunaUIKit.TrackRowMoreButton");
}

TEST_F(TrackRowMoreButtonTest, TheDotsFollowPressAndPointer) {
  EXPECT_EQ(drawn(), dots(false, false));
  user.moveTo(*window, inside);
  EXPECT_EQ(drawn(), dots(false, true));
  user.press(*window, inside);
  EXPECT_EQ(drawn(), dots(true, true));
  user.release();
  EXPECT_EQ(drawn(), dots(false, true));
}

TEST_F(TrackRowMoreButtonTest, DraggedOutItKeepsOpaqueDotsWithoutOutlineAndAReleaseThereMakesNoCall) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  user.dragTo(outside);
  EXPECT_EQ(drawn(), dots(true, false));
  user.release();
  EXPECT_TRUE(target->clicks.empty());
  EXPECT_EQ(drawn(), dots(false, false));
}

TEST_F(TrackRowMoreButtonTest, TheDotsFollowBoundsThatStartElsewhere) {
  button->setHasMouseOnRow(true);
  button->setBoundsOrigin({7, -3});
  EXPECT_EQ(drawn(), recordingOf([] { TessalunaStyleKit::drawTrackMore({7, -3, 15, 15}, false, false); }));
}

TEST_F(TrackRowMoreButtonTest, APressEndsWithoutACallWhereTheRowIsTakenOutAndPutBack) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  row->removeFromSuperview();
  EXPECT_FALSE(button->isPressed());
  EXPECT_EQ(drawn(), dots(false, false));
  window->contentView()->addSubview(row);
  user.release();
  EXPECT_TRUE(target->clicks.empty());
  EXPECT_EQ(drawn(), dots(false, true)) << "the pointer is on it";
  user.click(*window, inside);
  EXPECT_EQ(target->clicks, std::vector<std::string>{"more"});
}

TEST_F(TrackRowMoreButtonTest, AWindowThatIsHiddenUnderThePointerLeavesNoHoverBehind) {
  user.moveTo(*window, inside);
  window->orderOut(nullptr);
  desktop.setMouseLocation({1000, 800});
  window->orderFront(nullptr);
  EXPECT_EQ(drawn(), dots(false, false));
}

TEST_F(TrackRowMoreButtonTest, AClickNotifiesTheTarget) {
  user.moveTo(*window, inside);
  user.click(*window, inside);
  EXPECT_EQ(target->clicks, std::vector<std::string>{"more"});
  EXPECT_EQ(target->senders, std::vector<NSView*>{button.get()});
}

TEST_F(TrackRowMoreButtonTest, WithoutTheMouseOnTheRowPaintsNothingAndHandlesTheMouse) {
  button->setHasMouseOnRow(false);
  user.moveTo(*window, inside);
  user.press(*window, inside);
  EXPECT_TRUE(drawn().empty());
  user.release();
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowMoreButtonTest, HasTheTrackingAreaOfTheOthers) { ASSERT_EQ(button->trackingAreas().size(), 1u); }
