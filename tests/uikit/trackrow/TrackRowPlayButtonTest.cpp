#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"

#include <functional>
#include <stdexcept>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/trackrow/TrackRowWorld.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using harness::Lines;
using harness::recordingOf;

namespace {

class TrackRowPlayButtonTest : public harness::TrackRowWorld<TrackRowPlayButton> {
 protected:
  // The play face in the button's bounds.
  static Lines face(bool isPressed, bool isOver, bool isPlaying = false) {
    return recordingOf([&] { TessalunaStyleKit::drawTrackRowPlayPause(bounds, isPressed, isOver, isPlaying); });
  }
};

struct Event {
  const char* name;
  void (TrackRowPlayButton::*handler)(const Ref<NSEvent>&);
  CGPoint location;  // in the window
};
constexpr CGPoint inside{57, 67}, outside{10, 10};
constexpr Event entered{"mouseEntered", &TrackRowPlayButton::mouseEntered, inside};
constexpr Event exited{"mouseExited", &TrackRowPlayButton::mouseExited, outside};
constexpr Event down{"mouseDown", &TrackRowPlayButton::mouseDown, inside};
constexpr Event draggedIn{"mouseDragged inside", &TrackRowPlayButton::mouseDragged, inside};
constexpr Event draggedOut{"mouseDragged outside", &TrackRowPlayButton::mouseDragged, outside};
constexpr Event up{"mouseUp", &TrackRowPlayButton::mouseUp, inside};

enum State { Idle, Hover, Pressed, PressedAway };
constexpr const char* stateNames[] = {"idle", "hover", "pressed", "pressed away"};

struct Face {
  bool isPressed, isOver;
};
// Half-transparent without outline; with outline; opaque with outline; half-transparent without outline.
constexpr Face faces[] = {{false, false}, {false, true}, {true, true}, {false, false}};

struct Transition {
  State from;
  Event event;
  State to;
  bool redraws;
  int calls;
};
constexpr Transition transitions[] = {
    {Idle, entered, Hover, true, 0},
    {Idle, exited, Idle, true, 0},
    {Idle, down, PressedAway, true, 0},
    {Idle, draggedIn, Hover, true, 0},
    {Idle, draggedOut, Idle, false, 0},
    {Idle, up, Idle, true, 0},
    {Hover, entered, Hover, true, 0},
    {Hover, exited, Idle, true, 0},
    {Hover, down, Pressed, true, 0},
    {Hover, draggedIn, Hover, false, 0},
    {Hover, draggedOut, Idle, true, 0},
    {Hover, up, Hover, true, 0},
    {Pressed, entered, Pressed, true, 0},
    {Pressed, exited, PressedAway, true, 0},
    {Pressed, down, Pressed, true, 0},
    {Pressed, draggedIn, Pressed, false, 0},
    {Pressed, draggedOut, PressedAway, true, 0},
    {Pressed, up, Hover, true, 1},
    {PressedAway, entered, Pressed, true, 0},
    {PressedAway, exited, PressedAway, true, 0},
    {PressedAway, down, PressedAway, true, 0},
    {PressedAway, draggedIn, Pressed, true, 0},
    {PressedAway, draggedOut, PressedAway, false, 0},
    {PressedAway, up, Idle, true, 0},
};

}  // namespace

TEST_F(TrackRowPlayButtonTest, StartsIdleWithEveryFieldAtItsDefault) {
  const auto fresh = make<TrackRowPlayButton>(bounds);
  EXPECT_FALSE(fresh->hasMouseOnRow());
  EXPECT_FALSE(fresh->isPlayingTrack());
  EXPECT_FALSE(fresh->isPlaying());
  EXPECT_FALSE(fresh->isPressed());
  EXPECT_EQ(fresh->target(), nullptr);
  EXPECT_TRUE(fresh->trackingAreas().empty());
  EXPECT_EQ(fresh->className(), "TessalunaUIKit.TrackRowPlayButton");
}

TEST_F(TrackRowPlayButtonTest, IsDecodedFromAnInterfaceFileWithDefaults) {
  NSCoder coder(R"({"frame": [1, 2, 15, 15], "isPlaying": true})");
  const auto decoded = make<TrackRowPlayButton>(coder);
  ASSERT_NE(decoded, nullptr);
  EXPECT_EQ(decoded->frame(), (CGRect{1, 2, 15, 15}));
  EXPECT_FALSE(decoded->isPlaying());
  EXPECT_FALSE(decoded->hasMouseOnRow());
}

// The table of states and events: fields, redraw, target call and the face that is drawn after each.
TEST_F(TrackRowPlayButtonTest, EveryEventInEveryState) {
  for (const Transition& transition : transitions) {
    SCOPED_TRACE(std::string(stateNames[transition.from]) + ", " + transition.event.name);
    newButton();
    button->setHasMouseOnRow(true);
    const State from = transition.from;
    if (from == Hover || from == Pressed) send(&TrackRowPlayButton::mouseEntered, inside);
    if (from == Pressed || from == PressedAway) send(&TrackRowPlayButton::mouseDown, inside);
    target->clicks.clear();
    settleAll();
    EXPECT_EQ(drawn(), face(faces[from].isPressed, faces[from].isOver));

    send(transition.event.handler, transition.event.location);

    EXPECT_EQ(button->isPressed(), transition.to == Pressed || transition.to == PressedAway);
    EXPECT_EQ(button->needsDisplay(), transition.redraws);
    EXPECT_EQ(target->clicks.size(), std::size_t(transition.calls));
    EXPECT_EQ(drawn(), face(faces[transition.to].isPressed, faces[transition.to].isOver));
  }
}

TEST_F(TrackRowPlayButtonTest, ARedrawRepaintsTheButtonsRectangleOnly) {
  send(&TrackRowPlayButton::mouseEntered, inside);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_EQ(nativeOf(*window).paints()[0].dirty, std::vector<CGRect>{frame});
}

// Drawing.

TEST_F(TrackRowPlayButtonTest, TheFaceDistinguishesPlayFromPause) {
  button->setHasMouseOnRow(true);
  EXPECT_EQ(drawn(), face(false, false, false));
  button->setIsPlaying(true);
  EXPECT_EQ(drawn(), face(false, false, true));
}

TEST_F(TrackRowPlayButtonTest, WithoutTheMouseOnTheRowTheCurrentTracksButtonIsALoudspeaker) {
  button->setIsPlayingTrack(true);
  const Lines loudspeaker = recordingOf([] { TessalunaStyleKit::drawTrackRowPlaying(bounds); });
  EXPECT_EQ(drawn(), loudspeaker);
  button->setIsPlaying(true);  // has no effect while the mouse is not on the row
  EXPECT_EQ(drawn(), loudspeaker);
}

TEST_F(TrackRowPlayButtonTest, IsPlayingTrackHasNoEffectWhileTheMouseIsOnTheRow) {
  button->setHasMouseOnRow(true);
  const Lines before = drawn();
  button->setIsPlayingTrack(true);
  EXPECT_EQ(drawn(), before);
}

TEST_F(TrackRowPlayButtonTest, APressedStateIsNotShownWhileTheRowIsNotHovered) {
  press();
  EXPECT_TRUE(button->isPressed());
  EXPECT_TRUE(drawn().empty());
  button->setIsPlayingTrack(true);
  EXPECT_EQ(drawn(), recordingOf([] { TessalunaStyleKit::drawTrackRowPlaying(bounds); }));
}

TEST_F(TrackRowPlayButtonTest, IsInvisibleAndClickableOnARowThatIsNeitherHoveredNorCurrent) {
  EXPECT_TRUE(drawn().empty());
  user.moveTo(*window, inside);
  user.click(*window, inside);
  EXPECT_EQ(target->clicks, std::vector<std::string>{"play"});
  EXPECT_TRUE(drawn().empty());
}

TEST_F(TrackRowPlayButtonTest, TheFrameIsTheBoundsWhateverRectangleIsToBeRedrawn) {
  button->setHasMouseOnRow(true);
  EXPECT_EQ(recordingOf([&] { button->drawRect({3, 3, 2, 2}); }), face(false, false));
}

TEST_F(TrackRowPlayButtonTest, TheFaceFollowsBoundsThatStartElsewhere) {
  constexpr CGRect moved{7, -3, 15, 15};
  button->setBoundsOrigin(moved.origin);
  button->setIsPlayingTrack(true);
  EXPECT_EQ(drawn(), recordingOf([&] { TessalunaStyleKit::drawTrackRowPlaying(moved); }));
  button->setHasMouseOnRow(true);
  EXPECT_EQ(drawn(), recordingOf([&] { TessalunaStyleKit::drawTrackRowPlayPause(moved, false, false, false); }));
}

// Setters.

TEST_F(TrackRowPlayButtonTest, SettersOnlyStore) {
  settleAll();
  button->setHasMouseOnRow(true);
  button->setIsPlayingTrack(true);
  button->setIsPlaying(true);
  button->setIsPressed(true);
  button->setTarget(nullptr);
  EXPECT_FALSE(button->needsDisplay());
  EXPECT_FALSE(nativeOf(*window).isDisplayScheduled());
}

TEST_F(TrackRowPlayButtonTest, SettingHasMouseOnRowWithoutARedrawLeavesTheOldFaceOnScreen) {
  settleAll();
  button->setHasMouseOnRow(true);
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  button->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

// Target.

TEST_F(TrackRowPlayButtonTest, TheTargetSeesThePressBeforeItEndsAndTheRedrawComesAfter) {
  std::vector<std::string> seen;
  target->onClick = [&] {
    seen.push_back(button->isPressed() ? "pressed" : "released");
    seen.push_back(button->needsDisplay() ? "dirty" : "clean");
  };
  user.moveTo(*window, inside);
  user.press(*window, inside);
  settleAll();
  user.release();
  EXPECT_EQ(seen, (std::vector<std::string>{"pressed", "clean"}));
  EXPECT_FALSE(button->isPressed());
  EXPECT_TRUE(button->needsDisplay());
}

TEST_F(TrackRowPlayButtonTest, TheTargetIsGivenTheButton) {
  user.moveTo(*window, inside);
  user.click(*window, inside);
  ASSERT_EQ(target->senders.size(), 1u);
  EXPECT_EQ(target->senders[0], button.get());
}

TEST_F(TrackRowPlayButtonTest, WithoutATargetTheClickIsSwallowedAndThePressEnds) {
  button->setTarget(nullptr);
  user.moveTo(*window, inside);
  user.press(*window, inside);
  settleAll();
  user.release();
  EXPECT_FALSE(button->isPressed());
  EXPECT_TRUE(button->needsDisplay());
}

TEST_F(TrackRowPlayButtonTest, KeepsItsTargetAliveUntilItIsReplaced) {
  const WeakRef<harness::RecordingTarget> weak = target;
  target.reset();
  EXPECT_FALSE(weak.expired());
  button->setTarget(nullptr);
  EXPECT_TRUE(weak.expired());
}

TEST_F(TrackRowPlayButtonTest, ATargetMayLetTheButtonGoInsideItsClick) {
  const WeakRef<TrackRowPlayButton> weak = button;
  target->onClick = [&] {
    button->removeFromSuperview();
    button.reset();
  };
  user.moveTo(*window, inside);
  user.click(*window, inside);
  EXPECT_EQ(target->clicks.size(), 1u);
  EXPECT_TRUE(weak.expired());
}

TEST_F(TrackRowPlayButtonTest, AButtonThatItsTargetReleasesLivesUntilTheClickIsOver) {
  const WeakRef<TrackRowPlayButton> weak = button;
  bool wasAlive = false;
  target->onClick = [&] {
    const TrackRowPlayButton& clicked = *button;
    button.reset();
    row->subviews().front()->removeFromSuperview();
    wasAlive = !weak.expired() && clicked.isPressed();
  };
  send(&TrackRowPlayButton::mouseEntered, inside);
  press();
  send(&TrackRowPlayButton::mouseUp, inside);
  EXPECT_TRUE(wasAlive);
  EXPECT_TRUE(weak.expired());
}

TEST_F(TrackRowPlayButtonTest, ATargetMayReplaceItselfInsideItsClick) {
  target->onClick = [&] { button->setTarget(nullptr); };
  const WeakRef<harness::RecordingTarget> weak = target;
  target.reset();
  user.moveTo(*window, inside);
  user.click(*window, inside);
  EXPECT_TRUE(weak.expired());
  EXPECT_FALSE(button->isPressed());
}

// With a pointer.

TEST_F(TrackRowPlayButtonTest, AnErrorInTheTargetEndsThePressAllTheSame) {
  target->onClick = [] { throw std::runtime_error("refused"); };
  send(&TrackRowPlayButton::mouseEntered, inside);
  press();
  settleAll();
  EXPECT_THROW(send(&TrackRowPlayButton::mouseUp, inside), std::runtime_error);
  EXPECT_FALSE(button->isPressed());
  EXPECT_TRUE(button->needsDisplay());
}

TEST_F(TrackRowPlayButtonTest, DragOutAndReleaseMakesNoCall) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  user.dragTo(outside);
  EXPECT_TRUE(button->isPressed());
  user.release();
  EXPECT_TRUE(target->clicks.empty());
  EXPECT_FALSE(button->isPressed());
}

TEST_F(TrackRowPlayButtonTest, DragOutAndBackAndReleaseMakesACall) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  user.dragTo(outside);
  user.dragTo(inside);
  user.release();
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowPlayButtonTest, ThePressedLookGoesWithThePointerAndComesBackWithIt) {
  button->setHasMouseOnRow(true);
  user.moveTo(*window, inside);
  user.press(*window, inside);
  EXPECT_EQ(drawn(), face(true, true));
  user.dragTo(outside);
  EXPECT_EQ(drawn(), face(false, false));
  user.dragTo(inside);
  EXPECT_EQ(drawn(), face(true, true));
}

TEST_F(TrackRowPlayButtonTest, APressWithoutAnEntryMakesNoCall) {
  user.click(*window, inside);  // the row scrolled under a still pointer
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(TrackRowPlayButtonTest, APressWithoutAnEntryCountsIfADragHasSeenThePointerInside) {
  user.press(*window, inside);
  user.dragTo({inside.x + 1, inside.y});
  user.release();
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowPlayButtonTest, AReleaseWithoutAPressMakesNoCallAndStillRedraws) {
  send(&TrackRowPlayButton::mouseEntered, inside);
  settleAll();
  send(&TrackRowPlayButton::mouseUp, inside);
  EXPECT_TRUE(target->clicks.empty());
  EXPECT_TRUE(button->needsDisplay());
}

TEST_F(TrackRowPlayButtonTest, ADragThatStaysInsideAsksForNoRedraw) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  settleAll();
  user.dragTo({inside.x + 2, inside.y + 2});
  user.dragTo({inside.x - 2, inside.y});
  EXPECT_FALSE(button->needsDisplay());
  EXPECT_FALSE(nativeOf(*window).isDisplayScheduled());
}

TEST_F(TrackRowPlayButtonTest, TheMaximumEdgesAreOutsideForADrag) {
  for (const CGPoint edge : {CGPoint{frame.origin.x + 15, 67}, CGPoint{57, frame.origin.y + 15}}) {
    newButton();
    press();
    send(&TrackRowPlayButton::mouseDragged, edge);
    send(&TrackRowPlayButton::mouseUp, edge);
    EXPECT_TRUE(target->clicks.empty()) << edge.x << ", " << edge.y;
  }
  newButton();
  press();
  send(&TrackRowPlayButton::mouseDragged, frame.origin);
  send(&TrackRowPlayButton::mouseUp, frame.origin);
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowPlayButtonTest, ADragIsHitTestedInBoundsThatStartElsewhere) {
  button->setBoundsOrigin({30, 40});
  // Each corner that is inside, and the points just past them.
  constexpr CGFloat x = frame.origin.x, y = frame.origin.y;
  for (const CGPoint point : {CGPoint{x, y}, CGPoint{x + 14, y + 14}}) {
    press();
    send(&TrackRowPlayButton::mouseDragged, point);
    send(&TrackRowPlayButton::mouseUp, point);
  }
  EXPECT_EQ(target->clicks.size(), 2u);
  for (const CGPoint point : {CGPoint{x - 1, y}, CGPoint{x, y - 1}, CGPoint{x + 15, y}, CGPoint{x, y + 15}}) {
    press();
    send(&TrackRowPlayButton::mouseDragged, point);
    send(&TrackRowPlayButton::mouseUp, point);
  }
  EXPECT_EQ(target->clicks.size(), 2u);
}

TEST_F(TrackRowPlayButtonTest, TheEventsOfAClickDoNotReachTheRow) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  user.dragTo({inside.x + 1, inside.y});
  user.release();
  for (const std::string& call : row->calls) EXPECT_EQ(call, "updateTrackingAreas");
}

TEST_F(TrackRowPlayButtonTest, HoversInAWindowThatIsNotKey) {
  const auto other = showWindow({500, 500, 100, 100});
  ASSERT_FALSE(window->isKeyWindow());
  settleAll();
  user.moveTo(*window, inside);
  EXPECT_TRUE(button->needsDisplay());
}

// Tracking area.

TEST_F(TrackRowPlayButtonTest, OneAreaThatFollowsTheVisibleRectangleServesForLife) {
  ASSERT_EQ(button->trackingAreas().size(), 1u);
  const auto area = button->trackingAreas()[0];
  EXPECT_EQ(area->rect(), NSZeroRect);
  EXPECT_EQ(area->options(), 512u | 128u | 1u);
  EXPECT_EQ(area->owner(), button);
  EXPECT_TRUE(area->userInfo().empty());
  button->updateTrackingAreas();
  button->removeFromSuperview();
  row->addSubview(button);
  ASSERT_EQ(button->trackingAreas().size(), 1u);
  EXPECT_EQ(button->trackingAreas()[0], area);
}

TEST_F(TrackRowPlayButtonTest, AnAreaThatSomebodyTookAwayIsAddedAgain) {
  const auto area = button->trackingAreas()[0];
  button->removeTrackingArea(area);
  button->updateTrackingAreas();
  EXPECT_EQ(button->trackingAreas(), std::vector<Ref<NSTrackingArea>>{area});
}

TEST_F(TrackRowPlayButtonTest, OfARowThatComesIntoAWindowAsAWholeHasItsArea) {
  const auto wholeRow = make<NSView>(CGRect{0, 0, 100, 20});
  const auto inRow = make<TrackRowPlayButton>(CGRect{2, 2, 15, 15});
  wholeRow->addSubview(inRow);
  EXPECT_TRUE(inRow->trackingAreas().empty());
  window->contentView()->addSubview(wholeRow);
  EXPECT_EQ(inRow->trackingAreas().size(), 1u);
}

TEST_F(TrackRowPlayButtonTest, HidingTheRowUnderAPressEndsItWithoutACall) {
  user.moveTo(*window, {57, 67});
  user.press(*window, {57, 67});
  EXPECT_TRUE(button->isPressed());
  row->setHidden(true);
  EXPECT_FALSE(button->isPressed());
  user.release();
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(TrackRowPlayButtonTest, AReleaseThatTheDesktopKeepsIsNotAClick) {
  user.moveTo(*window, inside);
  user.press(*window, inside);
  user.loseRelease();
  user.moveTo(*window, inside);
  EXPECT_FALSE(button->isPressed());
  EXPECT_TRUE(target->clicks.empty());
  user.click(*window, inside);
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowPlayButtonTest, WhatDisablesItFromAboveEndsAPressWithoutACallAndLetsNoneBegin) {
  user.moveTo(*window, {57, 67});
  user.press(*window, {57, 67});
  row->setEnablesControls(false);
  EXPECT_FALSE(button->isPressed());
  user.release();
  user.press(*window, {57, 67});
  EXPECT_FALSE(button->isPressed());
  row->setEnablesControls(true);
  user.release();
  EXPECT_TRUE(target->clicks.empty());
  user.click(*window, {57, 67});
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(TrackRowPlayButtonTest, NamedByItsHostItIsAButtonToAssistiveClientsWhosePressIsAClick) {
  EXPECT_FALSE(button->isAccessibilityElement());
  button->accessibilitySetOverrideValue(std::string("Play"), NSAccessibilityDescriptionAttribute);
  EXPECT_TRUE(button->isAccessibilityElement());
  EXPECT_EQ(button->accessibilityRole(), NSAccessibilityButtonRole);
  button->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(target->clicks, std::vector<std::string>{"play"});
}

TEST_F(TrackRowPlayButtonTest, ItIsPressedWhileAClientsPressIsReported) {
  button->accessibilitySetOverrideValue(std::string("Play"), NSAccessibilityDescriptionAttribute);
  bool wasPressed = false;
  target->onClick = [&] { wasPressed = button->isPressed(); };
  button->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_TRUE(wasPressed);
  EXPECT_FALSE(button->isPressed());
}

TEST_F(TrackRowPlayButtonTest, OfClientsItTakesPressesOnlyAndNoneWhileControlsAreDisabled) {
  button->accessibilitySetOverrideValue(std::string("Play"), NSAccessibilityDescriptionAttribute);
  EXPECT_EQ(button->accessibilityActionNames(), std::vector<std::string>{std::string(NSAccessibilityPressAction)});
  button->accessibilityPerformAction(NSAccessibilityShowMenuAction);
  row->setEnablesControls(false);
  button->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(target->clicks, std::vector<std::string>{});
}

TEST_F(TrackRowPlayButtonTest, AssistiveClientsObserveThatItIsDisabledFromAboveIfItIsNamed) {
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityEnabledChangedNotification, button, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  row->setEnablesControls(false);
  EXPECT_EQ(changes, 0);
  button->accessibilitySetOverrideValue(std::string("Play"), NSAccessibilityDescriptionAttribute);
  row->setEnablesControls(true);
  EXPECT_EQ(changes, 1);
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(TrackRowPlayButtonTest, WithoutANameItHasNoRoleAndNoActionOfAButton) {
  EXPECT_EQ(button->accessibilityRole(), row->accessibilityRole());
  EXPECT_TRUE(button->accessibilityActionNames().empty());
  button->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(target->clicks, std::vector<std::string>{});
}
