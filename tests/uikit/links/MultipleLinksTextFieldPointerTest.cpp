// A line of links under the pointer: clicks, the tracking area and the rectangles of its hands.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/uikit/links/LinksWorld.h"

using namespace tessaluna::platform;
using TessalunaUIKit::MultipleLinksTextField;

namespace {

using MultipleLinksTextFieldTest = harness::LinksWorld;
using MultipleLinksTextFieldDeathTest = MultipleLinksTextFieldTest;

}  // namespace

TEST_F(MultipleLinksTextFieldTest, EveryEventOfThePointerRequestsARedraw) {
  using Handler = void (MultipleLinksTextField::*)(const Ref<NSEvent>&);
  for (const Handler handler :
       {&MultipleLinksTextField::mouseEntered, &MultipleLinksTextField::mouseMoved, &MultipleLinksTextField::mouseDown,
        &MultipleLinksTextField::mouseDragged, &MultipleLinksTextField::mouseUp, &MultipleLinksTextField::mouseExited}) {
    desktop.settle();
    ASSERT_FALSE(field->needsDisplay());
    (field.get()->*handler)(make<NSEvent>(NSEvent::Fields{.location = at(3), .window = window}));
    EXPECT_TRUE(field->needsDisplay());
  }
}

TEST_F(MultipleLinksTextFieldTest, AClickReportsTheElementWhileTheFieldIsStillPressed) {
  moveTo(27);
  user.click(*window, at(27));
  EXPECT_EQ(target->clicks, (std::vector<harness::LinkTarget::Click>{{1, true}}));
  EXPECT_FALSE(field->isPressed());
}

TEST_F(MultipleLinksTextFieldTest, BetweenLinksAndAfterThemAClickMakesNoCall) {
  for (const CGFloat x : {15, 20, 24, 35, 44, 60, 80}) {
    moveTo(x);
    user.click(*window, at(x));
  }
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, AFractionBeforeTheUpperBoundBelongsToTheElementAndTheBoundDoesNot) {
  moveTo(14.9);
  user.click(*window, at(14.9));
  EXPECT_EQ(target->clicks.size(), 1u);
  moveTo(15);
  user.click(*window, at(15));
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(MultipleLinksTextFieldTest, TheElementAtTheReleaseCountsWhereverThePressBegan) {
  moveTo(3);
  user.press(*window, at(3));
  user.dragTo(at(50));
  user.release();
  moveTo(20);
  user.press(*window, at(20));
  user.dragTo(at(27));
  user.release();
  ASSERT_EQ(target->clicks.size(), 2u);
  EXPECT_EQ(target->clicks[0].element, 2u);
  EXPECT_EQ(target->clicks[1].element, 1u);
}

TEST_F(MultipleLinksTextFieldTest, PressAndReleaseCountForTheLinkThatTheLastMoveFound) {
  moveTo(3);
  const auto elsewhere = make<NSEvent>(NSEvent::Fields{.location = at(50), .window = window});
  field->mouseDown(elsewhere);
  EXPECT_EQ(shown(), "=abc=, de, fgh");
  field->mouseUp(elsewhere);
  EXPECT_EQ(target->clicks, (std::vector<harness::LinkTarget::Click>{{0, true}}));
}

TEST_F(MultipleLinksTextFieldTest, LeavingCancelsTheClickAndComingBackRevivesIt) {
  moveTo(3);
  user.press(*window, at(3));
  user.dragTo({150, 120});
  user.release();
  EXPECT_TRUE(target->clicks.empty());
  moveTo(3);
  user.press(*window, at(3));
  user.dragTo({150, 120});
  user.dragTo(at(4));
  user.release();
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(MultipleLinksTextFieldTest, AReleaseAboveALinkOrBelowItMakesNoCall) {
  for (const CGFloat y : {-1, 20, 60}) {
    moveTo(3);
    user.press(*window, at(3));
    user.dragTo({origin.x + 3, origin.y + y});
    user.release();
  }
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, HidingTheLineUnderAPressEndsItWithoutAClick) {
  for (const Ref<NSView>& hidden : {Ref<NSView>(field), Ref<NSView>(parent)}) {
    moveTo(3);
    user.press(*window, at(3));
    hidden->setHidden(true);
    EXPECT_FALSE(field->isPressed());
    user.release();
    hidden->setHidden(false);
  }
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, FromTheEllipsisOnNothingIsALink) {
  newField(three, 36);  // "abc, d…", links end at 30
  desktop.settle();
  field->truncatedString(36);
  moveTo(29.9);
  user.click(*window, at(29.9));
  EXPECT_EQ(target->clicks.size(), 1u);
  moveTo(30);  // "de" would reach to 35
  user.click(*window, at(30));
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(MultipleLinksTextFieldTest, OfThreeLinksAClickReachesTheFirstAndTheSecondUpToItsCutAndNeverTheThird) {
  field->truncatedString(36);
  std::string reached;  // every 5 points
  for (CGFloat x = 2; x < 65; x += 5) reached += isLinkAt(x) ? std::to_string(target->clicks.front().element) : "-";
  EXPECT_EQ(reached, "000--1-------");
}

TEST_F(MultipleLinksTextFieldTest, WithoutATargetAClickIsSwallowedAndTheThickLineGoes) {
  field->setTarget(nullptr);
  moveTo(3);
  user.press(*window, at(3));
  EXPECT_EQ(shown(), "=abc=, de, fgh");
  desktop.settle();
  user.release();
  EXPECT_TRUE(field->needsDisplay());
  EXPECT_EQ(shown(), "_abc_, de, fgh");
  EXPECT_FALSE(field->isPressed());
  for (const char* call : {"mouseDown", "mouseUp"}) EXPECT_EQ(std::ranges::count(parent->calls, call), 0) << call;
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffPressAndReleaseReachTheSuperview) {
  moveTo(3);
  field->setLinksEnabled(false);
  parent->calls.clear();
  user.press(*window, at(3));
  EXPECT_TRUE(field->isPressed());
  user.release();
  EXPECT_FALSE(field->isPressed());
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseDown"), 1);
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseUp"), 1);
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffPressAndReleaseEachRequestARedraw) {
  field->setLinksEnabled(false);
  for (const auto handler : {&MultipleLinksTextField::mouseDown, &MultipleLinksTextField::mouseUp}) {
    field->setNeedsDisplay(false);
    (field.get()->*handler)(make<NSEvent>(NSEvent::Fields{.location = at(3), .window = window}));
    EXPECT_TRUE(field->needsDisplay());
  }
}

TEST_F(MultipleLinksTextFieldTest, ATargetThatTurnsLinksOffKeepsItsReleaseFromTheSuperview) {
  target->onClick = [](MultipleLinksTextField& sender) { sender.setLinksEnabled(false); };
  moveTo(3);
  user.click(*window, at(3));
  EXPECT_EQ(target->clicks.size(), 1u);
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseUp"), 0);
  EXPECT_FALSE(field->isPressed());
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffMovesAreOverlookedButEntriesAndExitsAreNot) {
  field->setLinksEnabled(false);
  moveTo(3);   // an entry: the area stays when links are turned off
  moveTo(27);  // a move
  field->setLinksEnabled(true);
  EXPECT_EQ(shown(), "_abc_, de, fgh");
  field->setLinksEnabled(false);
  user.moveTo(*window, {150, 120});
  field->setLinksEnabled(true);
  EXPECT_EQ(shown(), "abc, de, fgh");
}

TEST_F(MultipleLinksTextFieldTest, ATargetMayReleaseTheField) {
  const WeakRef<MultipleLinksTextField> weak = field;
  target->onClick = [this](MultipleLinksTextField& sender) {
    sender.removeFromSuperview();
    sender.setTarget(nullptr);
    field.reset();
  };
  moveTo(3);
  user.click(*window, at(3));
  EXPECT_EQ(target->clicks.size(), 1u);
  user.moveTo(*window, {150, 120});
  EXPECT_TRUE(weak.expired());
}

TEST_F(MultipleLinksTextFieldTest, AFieldThatItsTargetReleasesLivesUntilTheClickIsOver) {
  const WeakRef<MultipleLinksTextField> weak = field;
  bool wasAlive = false;
  target->onClick = [&](MultipleLinksTextField& sender) {
    field.reset();
    sender.removeFromSuperview();
    wasAlive = !weak.expired();
  };
  const auto event = make<NSEvent>(NSEvent::Fields{.location = at(3), .window = window});
  field->mouseMoved(event);
  field->mouseDown(event);
  field->mouseUp(event);
  EXPECT_TRUE(wasAlive);
  EXPECT_TRUE(weak.expired());
}

TEST_F(MultipleLinksTextFieldTest, ATargetThatTheFieldLetsGoLivesUntilItsClickIsOver) {
  const auto link = field->accessibilityChildren().value().at(0);
  const std::function<void()> clicks[] = {
      [this] {
        moveTo(3);
        user.click(*window, at(3));
      },
      [this] { field->accessibilityPerformPress(); },
      [link] { accessibilityOf(link)->accessibilityPerformAction(NSAccessibilityPressAction); }};
  for (const auto& click : clicks) {
    target = std::make_shared<harness::LinkTarget>();
    field->setTarget(target);
    const std::weak_ptr<harness::LinkTarget> weak = target;
    bool wasAlive = false;
    target->onClick = [&](MultipleLinksTextField& sender) {
      sender.setTarget(nullptr);
      wasAlive = !weak.expired();
    };
    target.reset();
    click();
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(weak.expired());
  }
}

TEST_F(MultipleLinksTextFieldTest, AReleaseAfterTheListChangedReportsTheIndexIntoTheNewList) {
  moveTo(50);
  user.press(*window, at(50));
  field->setStringValues(Strings{"x"});
  user.release();
  ASSERT_EQ(target->clicks.size(), 1u);
  EXPECT_EQ(target->clicks[0].element, 2u);
}

TEST_F(MultipleLinksTextFieldTest, OnlyALabelWithoutLinksCanMoveTheWindow) {
  EXPECT_FALSE(field->mouseDownCanMoveWindow());
  field->setLinksEnabled(false);
  EXPECT_TRUE(field->mouseDownCanMoveWindow());
}

// Tracking area and cursor rectangles.

TEST_F(MultipleLinksTextFieldTest, TheTrackingAreaIsMadeOnceWithTheFirstLinksAndStays) {
  ASSERT_EQ(field->trackingAreas().size(), 1u);
  const Ref<NSTrackingArea> area = field->trackingAreas()[0];
  EXPECT_EQ(area->options(), 0x200u | 0x80u | 0x1u | 0x2u);
  EXPECT_EQ(area->rect(), NSZeroRect);
  EXPECT_EQ(area->owner(), field);
  EXPECT_TRUE(area->userInfo().empty());
  field->setLinksEnabled(false);
  field->setLinksEnabled(true);
  field->updateTrackingAreas();
  ASSERT_EQ(field->trackingAreas().size(), 1u);
  EXPECT_EQ(field->trackingAreas()[0], area);
  field->removeTrackingArea(area);
  field->updateTrackingAreas();
  EXPECT_EQ(field->trackingAreas()[0], area);
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffAnAreaIsNeitherMadeNorAddedAgain) {
  const auto plain = make<MultipleLinksTextField>(CGRect{0, 0, 50, 20});
  parent->addSubview(plain);
  plain->updateTrackingAreas();
  EXPECT_TRUE(plain->trackingAreas().empty());
  field->setLinksEnabled(false);
  field->removeTrackingArea(Ref<NSTrackingArea>(field->trackingAreas()[0]));
  field->updateTrackingAreas();
  EXPECT_TRUE(field->trackingAreas().empty());
}

TEST_F(MultipleLinksTextFieldTest, InBoundsThatStartElsewhereHandsStayAtTheOrigin) {
  field->setBoundsOrigin({-4, 5});
  window->resetCursorRects();
  EXPECT_EQ(field->cursorAt({3, 0}), NSCursor::pointingHandCursor());
  EXPECT_EQ(field->cursorAt({3, 20.5}), nullptr);
}

TEST_F(MultipleLinksTextFieldTest, NewStringsKeepTheEndOfLinksUntilTheNextCut) {
  field->truncatedString(30);  // "abc, …", whose "…" begins at 25
  field->setStringValues(Strings{"abcdefgh"});
  EXPECT_TRUE(isLinkAt(24.5));
  EXPECT_FALSE(isLinkAt(25));
  field->truncatedString(100);
  EXPECT_TRUE(isLinkAt(25));
}

TEST_F(MultipleLinksTextFieldDeathTest, APointerThatNoIntegerHoldsStopsTheProgram) {
  constexpr CGFloat limit = 0x1p63;
  field->setFrame({-4 * limit, 0, 8 * limit, 20});
  const auto moveAt = [this](CGFloat x) {
    field->mouseMoved(make<NSEvent>(NSEvent::Fields{.location = {x, 5}, .window = window}));
  };
  moveAt(limit / 2 - 4 * limit);
  EXPECT_DEATH(moveAt(limit - 4 * limit), "MultipleLinksTextField");
  field->setBoundsOrigin({-4 * limit, 0});
  moveAt(-limit);
  EXPECT_DEATH(moveAt(-1.5 * limit), "MultipleLinksTextField");
}

TEST_F(MultipleLinksTextFieldTest, HandsAreOverTheLinksAndNotOverSeparators) {
  window->resetCursorRects();
  for (int x = 0; x < 70; ++x) EXPECT_EQ(showsHandAt(x), (x < 15) || (x >= 25 && x < 35) || (x >= 45 && x < 60)) << x;
}

TEST_F(MultipleLinksTextFieldTest, HandsDisregardTheCut) {
  newField(three, 33);  // "abc, …", links end at 25
  field->truncatedString(33);
  window->resetCursorRects();
  EXPECT_TRUE(showsHandAt(30));
}

TEST_F(MultipleLinksTextFieldTest, LinksTurnedOnLaterHaveAreaAndHandsAtOnceAfterTheFirstReset) {
  newField(three, 100);
  const auto late = make<MultipleLinksTextField>(CGRect{20, 80, 100, 20});
  late->setFont(NSFont::systemFontOfSize(10));
  late->setStringValues(three);
  late->setLinksEnabled(true);
  EXPECT_EQ(late->cursorAt({3, 10}), nullptr) << "nothing before the window's first reset";
  late->setLinksEnabled(false);

  late->resetCursorRects();
  EXPECT_EQ(late->cursorAt({3, 10}), nullptr);
  late->setLinksEnabled(true);
  EXPECT_EQ(late->cursorAt({3, 10}), NSCursor::pointingHandCursor());
  late->setLinksEnabled(false);
  EXPECT_EQ(late->cursorAt({3, 10}), NSCursor::pointingHandCursor()) << "turning links off removes nothing";
}

TEST_F(MultipleLinksTextFieldTest, HandsAreAsHighAsTheBoundsInWholePoints) {
  field->setFrameSize({100, 20.75});
  window->resetCursorRects();
  EXPECT_EQ(field->cursorAt({3, 19.9}), NSCursor::pointingHandCursor());
  EXPECT_EQ(field->cursorAt({3, 20.25}), nullptr);
}

TEST_F(MultipleLinksTextFieldTest, TurningLinksOnAgainBringsBackTheAreaAndTheHandsThatSomebodyTookAway) {
  window->resetCursorRects();
  field->discardCursorRects();
  field->removeTrackingArea(Ref<NSTrackingArea>(field->trackingAreas()[0]));
  field->setLinksEnabled(true);
  EXPECT_EQ(field->trackingAreas().size(), 1u);
  EXPECT_TRUE(showsHandAt(3));
}

TEST_F(MultipleLinksTextFieldTest, NewStringsOnlyAddHandsUntilTheWindowResetsThem) {
  window->resetCursorRects();
  EXPECT_FALSE(showsHandAt(20));
  field->setStringValues(Strings{"abcdefgh"});
  EXPECT_TRUE(showsHandAt(20)) << "at once";
  field->setStringValues(Strings{"a"});
  EXPECT_TRUE(showsHandAt(50));
  moveTo(50);
  EXPECT_TRUE(showsHandAt(50)) << "the pointer's moves reset nothing";
  window->resetCursorRects();
  EXPECT_FALSE(showsHandAt(50));
  EXPECT_TRUE(showsHandAt(3));
}

TEST_F(MultipleLinksTextFieldTest, HandsOfLinksThatAreTurnedOffStayUntilTheWindowResetsThem) {
  window->resetCursorRects();
  field->setLinksEnabled(false);
  EXPECT_TRUE(showsHandAt(3));
  window->resetCursorRects();
  EXPECT_FALSE(showsHandAt(3));
}
