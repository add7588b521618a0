#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/uikit/trackrow/TrackRowWorld.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;
using harness::only;
using harness::recordingOf;

namespace {

constexpr CGPoint inside{57, 67}, outside{10, 10};

class TrackRowFavoriteButtonTest : public harness::TrackRowWorld<TrackRowFavoriteButton> {
 protected:
  TrackRowFavoriteButtonTest() { button->setHasMouseOnRow(true); }

  static Lines heart(bool isSelected, bool isPressed, bool isOver) {
    return recordingOf([&] { TessalunaStyleKit::drawFavoriteAlbumOverlay(bounds, isSelected, isPressed, isOver); });
  }
};

}  // namespace

TEST_F(TrackRowFavoriteButtonTest, StartsWithEveryFieldAtItsDefault) {
  const auto fresh = make<TrackRowFavoriteButton>(bounds);
  EXPECT_FALSE(fresh->hasMouseOnRow());
  EXPECT_FALSE(fresh->isPressed());
  EXPECT_FALSE(fresh->isFavorite());
  EXPECT_EQ(fresh->target(), nullptr);
  EXPECT_EQ(fresh->className(), "TessalunaUIKit.TrackRowFavoriteButton");
}

TEST_F(TrackRowFavoriteButtonTest, TheHeartFollowsFavoritePressAndPointer) {
  for (const bool isFavorite : {false, true}) {
    for (const bool isPressed : {false, true}) {
      for (const bool isOver : {false, true}) {
        button->setIsFavorite(isFavorite);
        button->setIsPressed(isPressed);
        send(isOver ? &TrackRowFavoriteButton::mouseEntered : &TrackRowFavoriteButton::mouseExited, inside);
        EXPECT_EQ(drawn(), heart(isFavorite, isPressed, isOver)) << isFavorite << isPressed << isOver;
      }
    }
  }
}

TEST_F(TrackRowFavoriteButtonTest, TheHeartFollowsBoundsThatStartElsewhere) {
  button->setBoundsOrigin({7, -3});
  EXPECT_EQ(drawn(), recordingOf([] { TessalunaStyleKit::drawFavoriteAlbumOverlay({7, -3, 15, 15}, false, false, false); }));
}

TEST_F(TrackRowFavoriteButtonTest, AClickNotifiesTheTargetAndLeavesTheFavoriteToTheHost) {
  user.moveTo(*window, inside);
  user.click(*window, inside);
  EXPECT_EQ(target->clicks, std::vector<std::string>{"favorite"});
  EXPECT_EQ(target->senders, std::vector<NSView*>{button.get()});
  EXPECT_FALSE(button->isFavorite());
  EXPECT_EQ(drawn(), heart(false, false, true));
}

TEST_F(TrackRowFavoriteButtonTest, APressedFavoriteIsPaleRedAndRedAgainAfterTheRelease) {
  button->setIsFavorite(true);
  user.moveTo(*window, inside);
  user.press(*window, inside);
  EXPECT_EQ(only("setFillColor", drawn()), Lines{R"({"op":"setFillColor","color":[1,0.421,0.421,1]})"});
  user.release();
  EXPECT_EQ(only("setFillColor", drawn()), Lines{R"({"op":"setFillColor","color":[1,0,0,1]})"});
}

TEST_F(TrackRowFavoriteButtonTest, DraggedOutItKeepsThePressedFaceAndLosesItsOutline) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  EXPECT_EQ(drawn(), heart(false, true, true));
  user.dragTo(outside);
  EXPECT_EQ(drawn(), heart(false, true, false));
  user.dragTo(inside);
  EXPECT_EQ(drawn(), heart(false, true, true));
}

TEST_F(TrackRowFavoriteButtonTest, WithoutTheMouseOnTheRowAFavoritePaintsNothingAndHandlesTheMouse) {
  button->setHasMouseOnRow(false);
  button->setIsFavorite(true);
  EXPECT_TRUE(drawn().empty());
  user.moveTo(*window, inside);
  user.press(*window, inside);
  EXPECT_TRUE(button->isPressed());
  EXPECT_TRUE(drawn().empty());
  user.release();
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowFavoriteButtonTest, SettersOnlyStore) {
  settleAll();
  button->setIsFavorite(true);
  button->setHasMouseOnRow(false);
  EXPECT_FALSE(button->needsDisplay());
  EXPECT_FALSE(nativeOf(*window).isDisplayScheduled());
}

TEST_F(TrackRowFavoriteButtonTest, AssistiveClientsFindAControlThatItsHostHasNamed) {
  EXPECT_TRUE(button->accessibilityIsIgnored());
  button->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_TRUE(target->clicks.empty());
  button->accessibilitySetOverrideValue(std::string("Favorite"), NSAccessibilityDescriptionAttribute);
  button->setIsFavorite(true);
  const AccessibleDescription found = describe(button);
  EXPECT_EQ(found.name, "Favorite");
  EXPECT_EQ(found.role, NSAccessibilityCheckBoxRole);
  EXPECT_TRUE(found.states.contains(AccessibleState::Checked));
  EXPECT_EQ(found.actions, std::vector<std::string>{std::string(NSAccessibilityPressAction)});
  EXPECT_TRUE(performAccessibleAction(button, NSAccessibilityPressAction));
  EXPECT_EQ(target->clicks, std::vector<std::string>{"favorite"});
  EXPECT_FALSE(button->isPressed());
  button->setIsFavorite(false);
  EXPECT_FALSE(describe(button).states.contains(AccessibleState::Checked));
  window->contentView()->setEnablesControls(false);
  EXPECT_FALSE(performAccessibleAction(button, NSAccessibilityPressAction));
}
