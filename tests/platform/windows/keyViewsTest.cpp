#include "tessaluna/platform/windows/keyViews.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tests/harness/FieldWorld.h"
#include "tests/harness/ProbeView.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// A window with a group of two views between two others; all of them take the keyboard.
class KeyViewsTest : public harness::StillWorld {
 protected:
  KeyViewsTest() {
    for (const auto& each : {before, group, after}) window->contentView()->addSubview(each);
    for (const auto& each : {first, second}) group->addSubview(each);
    for (const auto& each : {before, first, second, after}) each->acceptsFirst = true;
  }
  NSResponder* keyboardAfterHiding(const Ref<harness::ProbeView>& responder, NSView& hidden) {
    window->makeFirstResponder(responder.get());
    hidden.setHidden(true);
    return window->firstResponder();
  }

  Ref<harness::ProbeView> before = make<harness::ProbeView>(CGRect{0, 0, 20, 20});
  Ref<harness::ProbeView> group = make<harness::ProbeView>(CGRect{0, 30, 100, 50});
  Ref<harness::ProbeView> first = make<harness::ProbeView>(CGRect{0, 0, 20, 20});
  Ref<harness::ProbeView> second = make<harness::ProbeView>(CGRect{30, 0, 20, 20});
  Ref<harness::ProbeView> after = make<harness::ProbeView>(CGRect{0, 100, 20, 20});
  Ref<NSWindow> window = showWindow();
};

TEST_F(KeyViewsTest, AreTheViewItselfAndThoseBelowItInTheOrderOfTheTree) {
  EXPECT_THAT(keyViewsWithin(*window->contentView()), ElementsAre(before, first, second, after));
  EXPECT_THAT(keyViewsWithin(*first), ElementsAre(first));
  group->setHidden(true);
  EXPECT_THAT(keyViewsWithin(*window->contentView()), ElementsAre(before, after));
}

TEST_F(KeyViewsTest, AfterAViewGoRoundTheEndAndLeaveOutWhatIsInIt) {
  EXPECT_THAT(keyViewsAfter(*first), ElementsAre(second, after, before));
  EXPECT_THAT(keyViewsAfter(*group), ElementsAre(after, before));
  EXPECT_THAT(keyViewsAfter(*window->contentView()), IsEmpty());
  EXPECT_THAT(keyViewsAfter(*make<NSView>(CGRect{})), IsEmpty());
}

TEST_F(KeyViewsTest, AHiddenViewGivesTheKeyboardToTheNextOne) {
  EXPECT_EQ(keyboardAfterHiding(first, *first), second.get());
  EXPECT_THAT(first->calls, testing::Contains("resign"));
  EXPECT_EQ(keyboardAfterHiding(after, *after), before.get()) << "round the end";
}

TEST_F(KeyViewsTest, AViewThatIsHiddenWithTheOneAroundItGivesTheKeyboardOn) {
  EXPECT_EQ(keyboardAfterHiding(first, *group), after.get());
}

TEST_F(KeyViewsTest, AHiddenViewKeepsNoKeyboardWhereNobodyElseTakesIt) {
  for (const auto& each : {before, second, after}) each->acceptsFirst = false;
  EXPECT_EQ(keyboardAfterHiding(first, *first), window.get());
}

TEST_F(KeyViewsTest, AViewThatRefusesTheKeyboardIsPassedOver) {
  second->refusesToBecome = true;
  EXPECT_EQ(keyboardAfterHiding(first, *first), after.get());
}

TEST_F(KeyViewsTest, HidingAnotherViewMovesNoKeyboard) { EXPECT_EQ(keyboardAfterHiding(first, *second), first.get()); }

TEST_F(KeyViewsTest, AViewThatIsHiddenAlreadyWithTheOneAroundItMovesNoKeyboard) {
  group->setHidden(true);
  EXPECT_EQ(keyboardAfterHiding(before, *first), before.get());
}

TEST_F(KeyViewsTest, ThePlaceOfAViewIsAlsoThatOfOneThatIsHiddenOrTakesNoKeyboard) {
  NSView& all = *window->contentView();
  EXPECT_EQ(placeAmongKeyViewsWithin(all, *first), 1u);
  EXPECT_EQ(placeAmongKeyViewsWithin(all, *group), 1u);
  EXPECT_EQ(placeAmongKeyViewsWithin(all, *after), 3u);
  EXPECT_EQ(placeAmongKeyViewsWithin(*group, *second), 1u);
  EXPECT_EQ(placeAmongKeyViewsWithin(*group, *after), std::nullopt);
  group->setHidden(true);
  EXPECT_EQ(placeAmongKeyViewsWithin(all, *second), 1u);
  EXPECT_EQ(placeAmongKeyViewsWithin(all, *after), 1u);
}

TEST_F(KeyViewsTest, FromAHiddenViewTheTabKeyContinuesWithThoseAroundIt) {
  using enum tessaluna::backend::FocusStep;
  const auto afterTabFrom = [&](const Ref<harness::ProbeView>& view, tessaluna::backend::FocusStep step) {
    window->makeFirstResponder(view.get());
    window->moveKeyView(step);
    return window->firstResponder();
  };
  second->setHidden(true);
  EXPECT_EQ(afterTabFrom(second, Next), after.get());
  EXPECT_EQ(afterTabFrom(second, Previous), first.get());
  group->setHidden(true);
  EXPECT_EQ(afterTabFrom(first, Next), after.get());
  EXPECT_EQ(afterTabFrom(first, Previous), before.get());
  after->setHidden(true);
  EXPECT_EQ(afterTabFrom(after, Next), before.get()) << "round the end";
}

TEST_F(KeyViewsTest, FromAHiddenViewInOneThatTakesTheKeyboardItContinuesInThatOne) {
  group->acceptsFirst = true;
  second->setHidden(true);
  window->makeFirstResponder(second.get());
  window->moveKeyView(tessaluna::backend::FocusStep::Previous);
  EXPECT_EQ(window->firstResponder(), first.get());
}

TEST_F(KeyViewsTest, WhatIsOnlyOutOfSightKeepsTheKeyboard) {
  struct Clip : NSView, KeyboardWhileHidden {
    using NSView::NSView;
    bool keepsKeyboardWhileHidden(const NSView& hidden) const override { return &hidden == this; }
  };
  const auto clip = make<Clip>(CGRect{0, 90, 50, 20});
  window->contentView()->addSubview(clip);
  clip->addSubview(after);
  EXPECT_EQ(keyboardAfterHiding(after, *clip), after.get());
}

class KeyViewsOfFields : public harness::FieldWorld {};

TEST_F(KeyViewsOfFields, AHiddenFieldEndsItsEditingAndTheNextOneIsEdited) {
  begin("abc");
  user.type("x");
  field->setHidden(true);
  EXPECT_EQ(field->stringValue(), "x");
  EXPECT_EQ(delegate->calls.back(), "end");
  EXPECT_TRUE(other->currentEditor());
}

TEST_F(KeyViewsOfFields, WhoIsNotifiedOfTheEndDecidesWhereTheKeyboardGoes) {
  const auto third = make<harness::ProbeView>(CGRect{150, 0, 20, 20});
  third->acceptsFirst = true;
  window->contentView()->addSubview(third);
  begin("abc");
  delegate->onEnd = [&] { window->makeFirstResponder(third.get()); };
  field->setHidden(true);
  EXPECT_EQ(window->firstResponder(), third.get());
}

}  // namespace
