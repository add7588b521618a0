#include "tessaluna/uikit/containers/DisclosureHeaderView.h"

#include <gmock/gmock.h>

#include <utility>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/printing.h"
#include "tests/uikit/containers/sections.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// The header is the upper 24 points of a window of 600; what it hands on arrives at the outer view.
struct DisclosureHeaderViewTest : harness::SectionsWorld {
  static constexpr CGPoint onHeader{100, 590}, offHeader{100, 300};
  Ref<NSEvent> eventOf(NSEventType type, const Ref<NSTrackingArea>& area) {
    return make<NSEvent>(NSEvent::Fields{.type = type, .trackingArea = area});
  }
  std::vector<std::string> hovers() const {
    std::vector<std::string> result;
    for (const std::string& call : outer->calls)
      if (call == "mouseEntered" || call == "mouseExited") result.push_back(call);
    return result;
  }
  const Ref<DisclosureHeaderView> header = section->headerView();
};

TEST_F(DisclosureHeaderViewTest, StartsLightGrayAndUnwired) {
  const auto view = make<DisclosureHeaderView>(CGRect{0, 0, 10, 10});
  NSCoder coder;
  for (const auto& one : {view, make<DisclosureHeaderView>(coder)}) {
    EXPECT_EQ(one->backgroundColor(), NSColor::lightGrayColor());
    EXPECT_EQ(one->disclosureButton(), nullptr);
    EXPECT_EQ(one->parentDisclosure(), nullptr);
    EXPECT_TRUE(one->trackingAreas().empty());
  }
}

TEST_F(DisclosureHeaderViewTest, TheButtonShowsWhileTheMouseIsOverTheHeader) {
  user.moveTo(*window, offHeader);
  EXPECT_TRUE(button()->isHidden());
  user.moveTo(*window, onHeader);
  EXPECT_FALSE(button()->isHidden());
  user.moveTo(*window, offHeader);
  EXPECT_TRUE(button()->isHidden());
  EXPECT_THAT(hovers(), IsEmpty());
}

TEST_F(DisclosureHeaderViewTest, APointerThatLeavesTheHeaderTakesTheKeyboardFromNobody) {
  const auto field = make<NSTextField>(CGRect{10, 10, 100, 22});
  outer->addSubview(field);
  user.moveTo(*window, onHeader);
  user.click(*window, button()->convertPointToView({5, 5}, nullptr));
  ASSERT_EQ(window->firstResponder(), button().get());
  finish();
  user.moveTo(*window, offHeader);
  user.moveTo(*window, onHeader);
  user.moveTo(*window, offHeader);
  EXPECT_TRUE(button()->isHidden());
  EXPECT_EQ(window->firstResponder(), button().get());
  EXPECT_EQ(field->currentEditor(), nullptr);
  user.pressKey(" ");
  finish();
  EXPECT_TRUE(section->isDisclosed());
}

TEST_F(DisclosureHeaderViewTest, AHeaderThatIsHiddenPassesTheKeyboardOnWithItsButton) {
  const auto field = make<NSTextField>(CGRect{10, 10, 100, 22});
  outer->addSubview(field);
  user.moveTo(*window, onHeader);
  window->makeFirstResponder(button().get());
  ASSERT_EQ(window->firstResponder(), button().get());
  header->setHidden(true);
  EXPECT_NE(window->firstResponder(), button().get());
}

TEST_F(DisclosureHeaderViewTest, DuringAnAnimationTheButtonStaysAndTheBaseClassGetsTheEvents) {
  user.moveTo(*window, offHeader);
  section->toggleDisclosure(nullptr);
  user.moveTo(*window, onHeader);
  EXPECT_TRUE(button()->isHidden());
  user.moveTo(*window, offHeader);
  EXPECT_THAT(hovers(), ElementsAre("mouseEntered", "mouseExited"));
}

TEST_F(DisclosureHeaderViewTest, AnEventOfAnotherAreaGoesToTheBaseClass) {
  const auto other =
      make<NSTrackingArea>(CGRect{0, 0, 5, 5}, NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited, header);
  header->mouseEntered(eventOf(NSEventType::MouseEntered, other));
  EXPECT_TRUE(button()->isHidden());
  EXPECT_THAT(hovers(), ElementsAre("mouseEntered"));
  button()->setHidden(false);
  header->mouseExited(eventOf(NSEventType::MouseExited, other));
  EXPECT_FALSE(button()->isHidden());
}

TEST_F(DisclosureHeaderViewTest, AnEventOfNoAreaGoesToTheBaseClass) {
  header->mouseEntered(eventOf(NSEventType::MouseEntered, nullptr));
  EXPECT_TRUE(button()->isHidden());
  EXPECT_THAT(hovers(), ElementsAre("mouseEntered"));
}

TEST_F(DisclosureHeaderViewTest, AnEventOfAnAreaThatIsEqualIsTaken) {
  struct Equal : NSTrackingArea {
    using NSTrackingArea::NSTrackingArea;
    bool isEqual(const NSObject*) const override { return true; }
  };
  const auto equal =
      make<Equal>(CGRect{0, 0, 5, 5}, NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited, Ref<NSResponder>(header));
  header->mouseEntered(eventOf(NSEventType::MouseEntered, equal));
  EXPECT_FALSE(button()->isHidden());
  EXPECT_THAT(hovers(), IsEmpty());
}

TEST_F(DisclosureHeaderViewTest, AbsentOnBothSidesIsTheSameArea) {
  const auto fresh = make<DisclosureHeaderView>(CGRect{0, 0, 10, 10});
  fresh->setParentDisclosure(section);
  fresh->setDisclosureButton(make<NSButton>(CGRect{}));
  fresh->mouseExited(eventOf(NSEventType::MouseExited, nullptr));
  EXPECT_TRUE(fresh->disclosureButton()->isHidden());
}

TEST_F(DisclosureHeaderViewTest, WithoutASectionHoverNeverShowsTheButton) {
  header->setParentDisclosure(nullptr);
  user.moveTo(*window, offHeader);
  user.moveTo(*window, onHeader);
  EXPECT_TRUE(button()->isHidden());
  EXPECT_THAT(hovers(), Contains("mouseEntered"));
}

TEST_F(DisclosureHeaderViewTest, WithoutAButtonHoverDoesNothing) {
  header->setDisclosureButton(nullptr);
  user.moveTo(*window, offHeader);
  user.moveTo(*window, onHeader);
  EXPECT_THAT(hovers(), IsEmpty());
}

TEST_F(DisclosureHeaderViewTest, TheAreaIsThatOfTheFirstBoundsAndAlwaysActive) {
  ASSERT_EQ(header->trackingAreas().size(), 1u);
  const Ref<NSTrackingArea> area = header->trackingAreas()[0];
  EXPECT_EQ(area->options(), 0x81u);
  EXPECT_EQ(area->owner(), header);
  EXPECT_TRUE(area->userInfo().empty());
}

TEST_F(DisclosureHeaderViewTest, AResizedHeaderReactsToItsFirstRectangleOnly) {
  const auto fresh = make<DisclosureHeaderView>(CGRect{0, 300, 50, 24});
  fresh->setParentDisclosure(section);
  fresh->setDisclosureButton(make<NSButton>(CGRect{}));
  outer->addSubview(fresh);
  desktop.settle();
  fresh->setFrameSize({150, 24});
  desktop.settle();
  ASSERT_EQ(fresh->trackingAreas().size(), 1u);
  EXPECT_EQ(fresh->trackingAreas()[0]->rect(), (CGRect{0, 0, 50, 24}));
  user.moveTo(*window, {100, 310});
  fresh->disclosureButton()->setHidden(true);
  user.moveTo(*window, {101, 310});
  EXPECT_TRUE(fresh->disclosureButton()->isHidden());
  user.moveTo(*window, {40, 310});
  EXPECT_FALSE(fresh->disclosureButton()->isHidden());
}

TEST_F(DisclosureHeaderViewTest, AnAreaThatIsThereIsNotAddedAgain) {
  header->updateTrackingAreas();
  header->updateTrackingAreas();
  EXPECT_EQ(header->trackingAreas().size(), 1u);
  const Ref<NSTrackingArea> area = header->trackingAreas()[0];
  header->removeTrackingArea(area);
  header->updateTrackingAreas();
  EXPECT_EQ(Ref<NSTrackingArea>(header->trackingAreas()[0]), area);
}

// An addition.

TEST_F(DisclosureHeaderViewTest, TakesNoKeysAndIsNotAnElementUnlessItIsOperable) {
  EXPECT_FALSE(header->acceptsFirstResponder());
  EXPECT_FALSE(header->isAccessibilityElement());
  window->makeFirstResponder(header.get());
  user.pressKey(" ");
  EXPECT_FALSE(section->isChanging());
  header->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureHeaderViewTest, SpaceAndReturnPressTheButton) {
  header->setIsOperable(true);
  ASSERT_TRUE(window->makeFirstResponder(header.get()));
  user.pressKey(" ");
  finish();
  EXPECT_FALSE(section->isDisclosed());
  user.pressKey("\r");
  finish();
  EXPECT_TRUE(section->isDisclosed());
  user.pressKey("x");
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureHeaderViewTest, APressIsThatOfTheButtonWhateverItsAction) {
  header->setIsOperable(true);
  int presses = 0;
  button()->setAction([&] { ++presses; });
  header->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(presses, 1);
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureHeaderViewTest, AKeyThatIsHeldPressesOnceAndShortcutsAreTheProgramsOwn) {
  header->setIsOperable(true);
  ASSERT_TRUE(window->makeFirstResponder(header.get()));
  user.pressKey(" ", NSEventModifierFlagCommand);
  EXPECT_FALSE(section->isChanging());
  for (const bool isRepeat : {false, true}) {
    header->keyDown(make<NSEvent>(NSEvent::Fields{
        .type = NSEventType::KeyDown, .characters = " ", .charactersIgnoringModifiers = " ", .isRepeat = isRepeat}));
    finish();
    EXPECT_FALSE(section->isDisclosed());
  }
}

TEST_F(DisclosureHeaderViewTest, TheTabKeyStopsAtAnOperableHeader) {
  header->setIsOperable(true);
  below->headerView()->setIsOperable(true);
  window->makeFirstResponder(nullptr);
  window->selectNextKeyView();
  EXPECT_EQ(window->firstResponder(), header.get());
  window->selectNextKeyView();
  EXPECT_EQ(window->firstResponder(), below->headerView().get());
}

TEST_F(DisclosureHeaderViewTest, ToAssistiveClientsItIsADisclosureTriangle) {
  header->setIsOperable(true);
  header->addSubview(NSTextField::labelWithString("Queue"));
  EXPECT_EQ(header->accessibilityRole(), NSAccessibilityDisclosureTriangleRole);
  EXPECT_EQ(header->accessibilityTitle(), "Queue");
  EXPECT_THAT(*header->accessibilityChildren(), IsEmpty());
  const auto isExpanded = [&] { return *header->accessibilityAttributeValue(NSAccessibilityExpandedAttribute).as<bool>(); };
  EXPECT_TRUE(isExpanded());
  EXPECT_THAT(header->accessibilityActionNames(), ElementsAre(NSAccessibilityPressAction));
  header->accessibilityPerformAction(NSAccessibilityPressAction);
  finish();
  EXPECT_FALSE(isExpanded());
  EXPECT_FALSE(section->isDisclosed());
}

TEST_F(DisclosureHeaderViewTest, ClientsAreNotifiedOfEveryChange) {
  header->setIsOperable(true);
  std::vector<std::string> changes;
  const AccessibleChanges reports({.isListening = [] { return true; },
                                   .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  header->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(header));
  const auto take = [&] {
    desktop.advance(1);
    return std::exchange(changes, {}).size();
  };
  section->setDisclosureTo(false, false);
  EXPECT_EQ(take(), 1u);
  section->setDisclosureTo(true, false);
  EXPECT_EQ(take(), 1u);
  section->toggleDisclosure(nullptr);
  EXPECT_EQ(take(), 1u);
  section->toggleDisclosure(nullptr);
  EXPECT_EQ(take(), 1u);
  header->setIsOperable(false);
  section->setDisclosureTo(false, false);
  EXPECT_EQ(take(), 0u);
}

TEST_F(DisclosureHeaderViewTest, ItIsNamedByItsTextsThatShow) {
  header->setIsOperable(true);
  const auto hidden = NSTextField::labelWithString("Old");
  hidden->setHidden(true);
  for (const auto& one : {NSTextField::labelWithString("Queue"), hidden, NSTextField::labelWithString("12")})
    header->addSubview(one);
  EXPECT_EQ(header->accessibilityTitle(), "Queue 12");
}

TEST_F(DisclosureHeaderViewTest, WithoutAButtonAndASectionAPressDoesNothing) {
  const auto alone = make<DisclosureHeaderView>(CGRect{0, 0, 10, 10});
  alone->setIsOperable(true);
  alone->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_TRUE(alone->accessibilityAttributeValue(NSAccessibilityExpandedAttribute).isAbsent());
}

TEST_F(DisclosureHeaderViewTest, UnlessItIsOperableClientsMeetItsTextsAndButton) {
  header->addSubview(NSTextField::labelWithString("Queue"));
  user.moveTo(*window, onHeader);
  EXPECT_EQ(header->accessibilityTitle(), "");
  EXPECT_TRUE(header->accessibilityAttributeValue(NSAccessibilityExpandedAttribute).isAbsent());
  EXPECT_THAT(header->accessibilityActionNames(), IsEmpty());
  EXPECT_THAT(*header->accessibilityChildren(), testing::SizeIs(2));
  header->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureHeaderViewTest, AnotherActionThanAPressDoesNothing) {
  header->setIsOperable(true);
  header->accessibilityPerformAction(NSAccessibilityShowMenuAction);
  EXPECT_FALSE(section->isChanging());
}

TEST_F(DisclosureHeaderViewTest, WithoutAButtonAPressTogglesTheSection) {
  header->setIsOperable(true);
  header->setDisclosureButton(nullptr);
  header->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_TRUE(section->isChanging());
}

}  // namespace
}  // namespace TessalunaUIKit
