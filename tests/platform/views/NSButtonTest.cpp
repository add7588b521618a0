#include "tessaluna/platform/views/NSButton.h"

#include "tessaluna/platform/foundation/NSCoder.h"

#include <gmock/gmock.h>

#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;

namespace {

class Listener : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void pressed(NSObject* sender) {
    senders.push_back(sender);
    if (onPress) onPress();
  }
  std::vector<NSObject*> senders;
  std::function<void()> onPress;
};
constexpr Selector listenerSelectors[] = {action<&Listener::pressed>("pressed:")};
const ClassInfo Listener::staticClassInfo{
    .name = "Tests.Listener", .base = &NSObject::staticClassInfo, .selectors = listenerSelectors};

class ListeningView : public harness::ProbeView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  using ProbeView::ProbeView;
  void pressed(NSObject*) { ++presses; }
  int presses = 0;
};
constexpr Selector listeningViewSelectors[] = {action<&ListeningView::pressed>("pressed:")};
const ClassInfo ListeningView::staticClassInfo{
    .name = "Tests.ListeningView", .base = &NSView::staticClassInfo, .selectors = listeningViewSelectors};

// A button of 40 by 20 at (10, 10).
class NSButtonTest : public harness::StillWorld {
 protected:
  NSButtonTest() : button(make<NSButton>(CGRect{10, 10, 40, 20})), listener(make<Listener>()) {
    button->setTarget(listener);
    button->setAction("pressed:");
    window = showWindowWith(button);
  }
  std::size_t presses() const { return listener->senders.size(); }

  static constexpr CGPoint inside{20, 20}, outside{100, 100};
  Ref<NSButton> button;
  Ref<Listener> listener;
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSButtonTest, APressHighlightsAndTheReleaseSendsTheAction) {
  user.press(*window, inside);
  EXPECT_TRUE(button->isHighlighted());
  EXPECT_EQ(presses(), 0u);
  user.release();
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_THAT(listener->senders, ElementsAre(button.get()));
}

TEST_F(NSButtonTest, TheHighlightHasGoneWhenTheActionComes) {
  bool wasHighlighted = true;
  listener->onPress = [&] { wasHighlighted = button->isHighlighted(); };
  user.click(*window, inside);
  EXPECT_FALSE(wasHighlighted);
}

TEST_F(NSButtonTest, PressAndReleaseEachRedrawTheButtonOnly) {
  user.press(*window, inside);
  desktop.settle();
  user.release();
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 2u);
  for (const auto& paint : nativeOf(*window).paints()) EXPECT_THAT(paint.dirty, ElementsAre(CGRect{10, 10, 40, 20}));
}

TEST_F(NSButtonTest, DraggedOutItIsNotHighlightedAndDraggedBackItIs) {
  user.press(*window, inside);
  user.dragTo(outside);
  EXPECT_FALSE(button->isHighlighted());
  user.dragTo(inside);
  EXPECT_TRUE(button->isHighlighted());
  user.release();
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, DragOutAndReleaseSendsNothing) {
  user.press(*window, inside);
  user.dragTo(outside);
  user.release();
  EXPECT_EQ(presses(), 0u);
  EXPECT_FALSE(button->isHighlighted());
}

TEST_F(NSButtonTest, ADragIntoTheButtonSendsNothing) {
  user.press(*window, outside);
  user.dragTo(inside);
  EXPECT_FALSE(button->isHighlighted());
  user.release();
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, ARightClickSendsNothing) {
  user.click(*window, inside, {.button = 1});
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, ADisabledButtonIsNotPressed) {
  button->setEnabled(false);
  user.press(*window, inside);
  EXPECT_FALSE(button->isHighlighted());
  user.release();
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, AButtonWithoutACellIsNotPressed) {
  button->setCell(nullptr);
  user.click(*window, inside);
  button->performClick(nullptr);
  EXPECT_EQ(presses(), 0u);
  EXPECT_EQ(button->title(), "");
  EXPECT_EQ(button->state(), NSControlStateValueOff);
}

TEST_F(NSButtonTest, ACellThatIsNotAButtonsIgnoresWhatOnlyAButtonHas) {
  for (const Ref<NSCell>& cell : {Ref<NSCell>(), make<NSCell>()}) {
    button->setCell(cell);
    button->setKeyEquivalent("x");
    button->setKeyEquivalentModifierMask(NSEventModifierFlagCommand);
    button->setButtonType(NSButtonType::Toggle);
    button->setAllowsMixedState(true);
    button->setNextState();
    user.pressKey("x", NSEventModifierFlagCommand);
    EXPECT_EQ(button->state(), NSControlStateValueOff);
    EXPECT_EQ(presses(), 0u);
  }
}

TEST_F(NSButtonTest, WithoutATargetTheActionGoesUpTheResponderChain) {
  const auto first = make<ListeningView>(CGRect{100, 100, 10, 10});
  first->acceptsFirst = true;
  window->contentView()->addSubview(first);
  button->setTarget(nullptr);
  button->setCell(button->cell());
  window->makeFirstResponder(first.get());
  button->performClick(nullptr);
  EXPECT_EQ(first->presses, 1);
}

TEST_F(NSButtonTest, TheTargetIsNotKeptAlive) {
  const WeakRef<Listener> weak = listener;
  listener.reset();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(button->target(), nullptr);
  user.click(*window, inside);
}

TEST_F(NSButtonTest, AButtonMayBeReleasedInsideItsOwnAction) {
  const WeakRef<NSButton> weak = button;
  bool livedThroughTheAction = false;
  listener->onPress = [&] {
    button->removeFromSuperview();
    button.reset();
    livedThroughTheAction = !weak.expired();
  };
  user.click(*window, inside);
  EXPECT_TRUE(livedThroughTheAction);
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSButtonTest, AButtonMayBeReleasedInsideTheActionOfItsKeyEquivalent) {
  const WeakRef<NSButton> weak = button;
  button->setKeyEquivalent("p");
  listener->onPress = [&] {
    button->removeFromSuperview();
    button.reset();
  };
  user.pressKey("p");
  desktop.advance(1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSButtonTest, ATargetMayGoInsideTheAction) {
  listener->onPress = [&] { listener.reset(); };
  const WeakRef<Listener> weak = listener;
  user.click(*window, inside);
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSButtonTest, ItsKeyEquivalentPressesIt) {
  button->setKeyEquivalent("p");
  user.pressKey("p");
  EXPECT_THAT(listener->senders, ElementsAre(button.get()));
  user.pressKey("q");
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, ItsKeyEquivalentNeedsExactlyItsModifiers) {
  button->setKeyEquivalent("p");
  button->setKeyEquivalentModifierMask(NSEventModifierFlagCommand);
  user.pressKey("p");
  user.pressKey("p", NSEventModifierFlagCommand | NSEventModifierFlagOption);
  EXPECT_EQ(presses(), 0u);
  user.pressKey("p", NSEventModifierFlagCommand | NSEventModifierFlagCapsLock);
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, ADisabledOrHiddenButtonLeavesItsKeyEquivalentToOthers) {
  const auto other = make<NSButton>(CGRect{100, 100, 10, 10});
  other->setKeyEquivalent("p");
  other->setTarget(listener);
  other->setAction("pressed:");
  window->contentView()->addSubview(other);
  button->setKeyEquivalent("p");
  button->setEnabled(false);
  user.pressKey("p");
  button->setEnabled(true);
  button->setHidden(true);
  user.pressKey("p");
  EXPECT_THAT(listener->senders, ElementsAre(other.get(), other.get()));
}

TEST_F(NSButtonTest, WithoutAKeyEquivalentNoKeyPressesIt) {
  user.pressKey("");
  user.pressKey("p");
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, SpacePressesTheFirstResponder) {
  window->makeFirstResponder(button.get());
  user.pressKey(" ");
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, AHeldSpacePressesOnce) {
  window->makeFirstResponder(button.get());
  const auto space = [&](bool isRepeat) {
    NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                   .window = window,
                                                   .characters = " ",
                                                   .charactersIgnoringModifiers = " ",
                                                   .isRepeat = isRepeat}));
  };
  space(false);
  space(true);
  space(true);
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, AHeldKeyEquivalentPressesOnceAndIsTakenEachTime) {
  button->setKeyEquivalent("p");
  const auto key = [&](bool isRepeat) {
    return button->performKeyEquivalent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                                      .window = window,
                                                                      .characters = "p",
                                                                      .charactersIgnoringModifiers = "p",
                                                                      .isRepeat = isRepeat}));
  };
  EXPECT_TRUE(key(false));
  EXPECT_TRUE(key(true));
  EXPECT_TRUE(key(true));
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, SpaceWhileTheMouseHoldsTheButtonAddsNoSecondAction) {
  button->setKeyEquivalent("p");
  user.press(*window, inside);
  user.pressKey(" ");
  user.pressKey("p");
  EXPECT_EQ(presses(), 0u);
  EXPECT_TRUE(button->isHighlighted());
  user.release();
  EXPECT_EQ(presses(), 1u);
  user.pressKey(" ");
  EXPECT_EQ(presses(), 2u);
}

TEST_F(NSButtonTest, AToggleThatSendsAtThePressStillChangesAtTheRelease) {
  button->setButtonType(NSButtonType::Toggle);
  button->sendActionOn(NSEventMaskLeftMouseDown);
  user.press(*window, inside);
  EXPECT_EQ(presses(), 1u);
  EXPECT_EQ(button->state(), NSControlStateValueOff);
  user.release();
  EXPECT_EQ(presses(), 1u);
  EXPECT_EQ(button->state(), NSControlStateValueOn);
  button->performClick(nullptr);
  EXPECT_EQ(presses(), 2u);
}

TEST_F(NSButtonTest, AButtonThatIsDisabledInMidPressLooksDisabledAndSendsNothing) {
  const auto looks = [&] {
    button->setNeedsDisplay(true);
    desktop.settle();
    return nativeOf(*window).paints().back().lines;
  };
  button->setEnabled(false);
  const auto disabled = looks();
  button->setEnabled(true);
  user.press(*window, inside);
  button->setEnabled(false);
  EXPECT_EQ(looks(), disabled);
  user.release();
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, ItsValueIsItsStateAndNotItsTitle) {
  button->setTitle("Play");
  button->setIntegerValue(1);
  EXPECT_EQ(button->state(), NSControlStateValueOn);
  button->setState(NSControlStateValueOff);
  EXPECT_EQ(button->stringValue(), "0");
  EXPECT_EQ(button->title(), "Play");
}

TEST_F(NSButtonTest, AStateOrTitleThatIsSetAsksForARedraw) {
  nativeOf(*window).forgetPaints();
  button->setState(NSControlStateValueOn);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
  button->setNextState();
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 2u);
  button->setTitle("Play");
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 3u);
}

TEST_F(NSButtonTest, TheEndOfAClickWithoutAMouseAsksForARedraw) {
  button->performClick(nullptr);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  desktop.advance(1);
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(NSButtonTest, SpaceDoesNotPressADisabledFirstResponder) {
  window->makeFirstResponder(button.get());
  button->setEnabled(false);
  user.pressKey(" ");
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, OtherKeysContinueUpTheChain) {
  const auto outer = make<harness::ProbeView>(CGRect{60, 60, 50, 50});
  window->contentView()->addSubview(outer);
  outer->addSubview(button);
  window->makeFirstResponder(button.get());
  outer->calls.clear();
  user.keyDown("a");
  user.keyDown(" ", NSEventModifierFlagCommand);
  EXPECT_EQ(std::count(outer->calls.begin(), outer->calls.end(), "keyDown"), 2);
  EXPECT_EQ(presses(), 0u);
}

TEST_F(NSButtonTest, AClickWithoutAMouseShowsForATenthOfASecond) {
  button->performClick(nullptr);
  EXPECT_EQ(presses(), 1u);
  EXPECT_TRUE(button->isHighlighted());
  desktop.advance(0.09);
  EXPECT_TRUE(button->isHighlighted());
  desktop.advance(0.01);
  EXPECT_FALSE(button->isHighlighted());
}

TEST_F(NSButtonTest, ASecondClickWithoutAMouseShowsForATenthOfASecondToo) {
  button->performClick(nullptr);
  desktop.advance(0.06);
  button->performClick(nullptr);
  desktop.advance(0.06);
  EXPECT_TRUE(button->isHighlighted());
  desktop.advance(0.04);
  EXPECT_FALSE(button->isHighlighted());
}

TEST_F(NSButtonTest, AClickWithoutAMouseLeavesTheHighlightOfALaterPress) {
  button->performClick(nullptr);
  user.press(*window, inside);
  desktop.advance(1);
  EXPECT_TRUE(button->isHighlighted());
}

TEST_F(NSButtonTest, AClickWithoutAMouseHighlightsNoCellThatComesInstead) {
  const Ref<NSCell> clicked = button->cell();
  const auto other = make<NSButtonCell>();
  button->performClick(nullptr);
  button->setCell(other);
  other->setHighlighted(true);
  desktop.advance(1);
  EXPECT_FALSE(clicked->isHighlighted());
  EXPECT_TRUE(other->isHighlighted());
}

TEST_F(NSButtonTest, APressOfACellThatComesInsteadLeavesNoHighlightToTheClickedOne) {
  const Ref<NSCell> clicked = button->cell();
  button->performClick(nullptr);
  button->setCell(make<NSButtonCell>());
  user.press(*window, inside);
  desktop.advance(1);
  EXPECT_FALSE(clicked->isHighlighted());
  EXPECT_TRUE(button->isHighlighted());
}

TEST_F(NSButtonTest, AClickWithoutAMouseOfADisabledButtonDoesNothing) {
  button->setEnabled(false);
  button->performClick(nullptr);
  EXPECT_EQ(presses(), 0u);
  EXPECT_FALSE(button->isHighlighted());
}

TEST_F(NSButtonTest, PerformClickIsASelector) {
  EXPECT_TRUE(button->performSelector("performClick:", nullptr));
  EXPECT_EQ(presses(), 1u);
}

TEST_F(NSButtonTest, APushButtonKeepsItsState) {
  user.click(*window, inside);
  EXPECT_EQ(button->state(), NSControlStateValueOff);
}

TEST_F(NSButtonTest, AToggleHasItsNewStateWhenTheActionComes) {
  button->setButtonType(NSButtonType::Toggle);
  std::vector<NSControlStateValue> states;
  listener->onPress = [&] { states.push_back(button->state()); };
  user.click(*window, inside);
  user.click(*window, inside);
  EXPECT_THAT(states, ElementsAre(NSControlStateValueOn, NSControlStateValueOff));
}

TEST_F(NSButtonTest, APressMakesAnEnabledButtonTheFirstResponder) {
  user.click(*window, inside);
  EXPECT_EQ(window->firstResponder(), button.get());
}

TEST_F(NSButtonTest, IsDecodedWithItsCell) {
  NSCoder coder(R"({"frame": [1, 2, 30, 20], "action": "pressed:", "cell": {"title": "Play", "keyEquivalent": "p",
                    "keyEquivalentModifierMask": 1048576, "buttonType": "toggle", "state": 1}})");
  const auto decoded = make<NSButton>(coder);
  EXPECT_EQ(decoded->title(), "Play");
  EXPECT_EQ(decoded->state(), NSControlStateValueOn);
  EXPECT_EQ(decoded->action(), "pressed:");
  decoded->setTarget(listener);
  window->contentView()->addSubview(decoded);
  user.pressKey("p", NSEventModifierFlagCommand);
  EXPECT_THAT(listener->senders, ElementsAre(decoded.get()));
  EXPECT_EQ(decoded->state(), NSControlStateValueOff);
}

TEST_F(NSButtonTest, ItsOwnLookDarkensWhileItIsPressed) {
  const auto looks = [&] {
    button->setNeedsDisplay(true);
    desktop.settle();
    return nativeOf(*window).paints().back().lines;
  };
  const auto released = looks();
  user.press(*window, inside);
  EXPECT_NE(looks(), released);
  user.release();
  EXPECT_EQ(looks(), released);
  button->setEnabled(false);
  EXPECT_NE(looks(), released);
}

TEST_F(NSButtonTest, OneThatTogglesGoesThroughThreeStatesWhereTheMixedOneIsAllowed) {
  button->setButtonType(NSButtonType::Toggle);
  button->setAllowsMixedState(true);
  std::vector<NSControlStateValue> states;
  for (int i = 0; i < 4; ++i) {
    user.click(*window, inside);
    states.push_back(button->state());
  }
  EXPECT_THAT(states, ElementsAre(NSControlStateValueMixed, NSControlStateValueOn, NSControlStateValueOff,
                                  NSControlStateValueMixed));
}

TEST_F(NSButtonTest, AMixedStateThatIsNotAllowedIsFollowedByOn) {
  button->setButtonType(NSButtonType::Toggle);
  button->setState(NSControlStateValueMixed);
  user.click(*window, inside);
  EXPECT_EQ(button->state(), NSControlStateValueOn);
  button->setNextState();
  EXPECT_EQ(button->state(), NSControlStateValueOff);
}

TEST_F(NSButtonTest, AnInterfaceFileAllowsTheMixedState) {
  NSCoder coder(R"({"cell": {"buttonType": "toggle", "allowsMixedState": true}})");
  button = make<NSButton>(coder);
  button->setNextState();
  EXPECT_EQ(button->state(), NSControlStateValueMixed);
}
