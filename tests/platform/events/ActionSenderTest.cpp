#include "tessaluna/platform/events/ActionSender.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSSlider.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// A button of 40 by 20 at (10, 10) whose action counts.
class ActionSenderTest : public harness::StillWorld {
 protected:
  ActionSenderTest() {
    ActionSender::setUnansweredActionHandler([this](const std::string& line) { warnings.push_back(line); });
    button->setAction([this] { ++calls; });
    window = showWindowWith(button);
  }
  ~ActionSenderTest() override { ActionSender::setUnansweredActionHandler(nullptr); }

  template <class Control>
  Ref<Control> addControl(CGRect frame) {
    const auto control = make<Control>(frame);
    control->setAction([this] { ++calls; });
    window->contentView()->addSubview(control);
    return control;
  }

  static constexpr CGPoint inside{20, 20};
  std::vector<std::string> warnings;
  int calls = 0;
  Ref<NSButton> button = make<NSButton>(CGRect{10, 10, 40, 20});
  Ref<harness::ActionProbe> target = make<harness::ActionProbe>();
  Ref<NSWindow> window;
};

}  // namespace

// Whoever sends it.

TEST_F(ActionSenderTest, AFunctionIsCalledByTheMouse) {
  user.click(*window, inside);
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(ActionSenderTest, AFunctionIsCalledByKeys) {
  window->makeFirstResponder(button.get());
  user.pressKey(" ");
  EXPECT_EQ(calls, 1);
}

TEST_F(ActionSenderTest, AFunctionIsCalledByAnAssistiveClient) {
  button->cell()->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(calls, 1);
  const auto slider = addControl<NSSlider>({10, 50, 100, 20});
  slider->cell()->accessibilityPerformAction(NSAccessibilityIncrementAction);
  EXPECT_EQ(calls, 2);
}

TEST_F(ActionSenderTest, AFunctionIsCalledByAFieldAtReturn) {
  const auto field = addControl<NSTextField>({10, 50, 100, 24});
  field->selectText(nullptr);
  user.pressKey("\r");
  EXPECT_EQ(calls, 1);
}

TEST_F(ActionSenderTest, AFunctionIsCalledByARowOfAPopUp) {
  const auto popUp = addControl<NSPopUpButton>({10, 50, 100, 24});
  popUp->addItemsWithTitles({"one", "two"});
  desktop.settle();
  user.click(*window, {20, 60});
  desktop.chooseFromMenu(1);
  desktop.settle();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(popUp->titleOfSelectedItem(), "two");
}

TEST_F(ActionSenderTest, AnItemOfAMenuIsEnabledByItsFunctionAndCallsIt) {
  const auto menu = make<NSMenu>();
  const auto item = menu->addItemWithTitle("Play", [this] { ++calls; });
  item->setKeyEquivalent("p");
  menu->update();
  EXPECT_TRUE(item->isEnabled());
  menu->performActionForItemAtIndex(0);
  EXPECT_EQ(calls, 1);
  menu->popUpMenuPositioningItem(nullptr, {0, 0}, window->contentView().get());
  desktop.chooseFromMenu(0);
  desktop.settle();
  EXPECT_EQ(calls, 2);
}

TEST_F(ActionSenderTest, AFunctionIsCalledBesideTheApplication) {
  NSApp.reset();
  button->performClick(nullptr);
  EXPECT_EQ(calls, 1);
}

// What it may do.

TEST_F(ActionSenderTest, AFunctionMayLetItsSenderGo) {
  const WeakRef<NSButton> weak = button;
  button->setAction([this] {
    button->removeFromSuperview();
    button.reset();
    ++calls;
  });
  user.click(*window, inside);
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(ActionSenderTest, AFieldsFunctionMayLetTheFieldGo) {
  auto field = make<NSTextField>(CGRect{10, 50, 100, 24});
  window->contentView()->addSubview(field);
  const WeakRef<NSTextField> weak = field;
  field->setAction([&] {
    weak.lock()->removeFromSuperview();
    ++calls;
  });
  field->selectText(nullptr);
  field.reset();
  user.pressKey("\r");
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(ActionSenderTest, AFunctionMayReplaceItselfAndKeepsWhatItHoldsMeanwhile) {
  std::string log;
  button->setAction([this, &log, kept = std::make_shared<std::string>("first ")] {
    button->setAction([&log] { log += "second "; });
    log += *kept;
  });
  user.click(*window, inside);
  user.click(*window, inside);
  EXPECT_EQ(log, "first second ");
}

TEST_F(ActionSenderTest, WhatAFunctionThrowsLeavesTheControlAsAfterAClick) {
  button->setAction([this] {
    if (++calls == 1) throw std::runtime_error("thrown");
  });
  EXPECT_THROW(user.click(*window, inside), std::runtime_error);
  EXPECT_FALSE(button->isHighlighted());
  user.click(*window, inside);
  EXPECT_EQ(calls, 2);
}

TEST_F(ActionSenderTest, WhatAFunctionThrowsEndsTheMomentarySelectionOfASegment) {
  const auto segments = make<NSSegmentedControl>(CGRect{10, 50, 100, 24});
  segments->setSegmentCount(2);
  segments->setTrackingMode(NSSegmentSwitchTrackingMomentary);
  window->contentView()->addSubview(segments);
  segments->setAction([this] {
    if (++calls == 1) throw std::runtime_error("thrown");
  });
  desktop.settle();
  EXPECT_THROW(user.click(*window, {20, 60}), std::runtime_error);
  EXPECT_EQ(segments->selectedSegment(), std::nullopt);
  segments->performClickOnSegment(1);  // not within a release
  EXPECT_EQ(calls, 2);
}

// How long it is kept.

TEST_F(ActionSenderTest, AFunctionIsKeptUntilAnotherActionIsSetOrTheSenderGoes) {
  const auto value = std::make_shared<int>();
  const auto setAction = [&] { button->setAction([value] { ++*value; }); };
  setAction();
  EXPECT_EQ(value.use_count(), 2);
  button->setAction("act:");
  EXPECT_EQ(value.use_count(), 1);
  setAction();
  button->setAction(nullptr);
  EXPECT_EQ(value.use_count(), 1);
  setAction();
  button->removeFromSuperview();
  button.reset();
  EXPECT_EQ(value.use_count(), 1);
}

TEST_F(ActionSenderTest, ACopyOfAPopUpCellSharesTheFunctionsOfItsItems) {
  const auto cell = make<NSPopUpButtonCell>();
  cell->menu()->addItemWithTitle("Play", [this] { ++calls; });
  const auto copy = std::dynamic_pointer_cast<NSPopUpButtonCell>(cell->copy());
  cell->menu()->itemAtIndex(0)->setAction(nullptr);
  copy->menu()->performActionForItemAtIndex(0);
  EXPECT_EQ(calls, 1);
}

// Beside selectors.

TEST_F(ActionSenderTest, ASelectorThatFollowsAFunctionGoesToTheTargetThatWasSet) {
  button->setTarget(target);
  user.click(*window, inside);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(target->acts, 0);
  button->setAction("act:");
  EXPECT_EQ(button->target(), target);
  user.click(*window, inside);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(target->acts, 1);
}

TEST_F(ActionSenderTest, LiteralsAreSelectorsAndNullIsNotAnAction) {
  button->setAction("act:");
  EXPECT_EQ(button->action(), "act:");
  button->setAction(nullptr);
  EXPECT_EQ(button->action(), "");
  button->setAction(std::function<void()>());
  EXPECT_EQ(button->action(), "");
  button->setAction({});
  EXPECT_EQ(button->action(), "");
  user.click(*window, inside);
  EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(ActionSenderTest, AnInterfaceFileStillWiresBySelector) {
  NSCoder coder(R"({"frame": [1, 2, 3, 4], "action": "act:"})");
  const auto decoded = make<NSButton>(coder);
  decoded->setTarget(target);
  decoded->performClick(nullptr);
  EXPECT_EQ(target->acts, 1);
}

// Actions that go nowhere.

TEST_F(ActionSenderTest, AnActionThatNobodyPerformsIsReported) {
  button->setIdentifier("play");
  button->setTarget(target);
  button->setAction("nobodyHasThis:");
  user.click(*window, inside);
  EXPECT_THAT(warnings, ElementsAre("NSButton \"play\": nobody performs nobodyHasThis:"));
}

TEST_F(ActionSenderTest, ATargetThatHasGoneIsReported) {
  button->setTarget(target);
  button->setAction("act:");
  target.reset();
  user.click(*window, inside);
  EXPECT_THAT(warnings, ElementsAre("NSButton: the target of act: has gone"));
}

TEST_F(ActionSenderTest, AnotherActionThanTheControlsIsNotReportedForATargetThatHasGone) {
  button->setAction("act:");
  button->setTarget(make<harness::ActionProbe>());
  EXPECT_FALSE(button->sendActionTo("other:", nullptr));
  EXPECT_THAT(warnings, ElementsAre("NSButton: nobody performs other:"));
}

TEST_F(ActionSenderTest, NoActionIsNeitherPerformedNorReported) {
  EXPECT_FALSE(button->sendActionTo("", target));
  EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(ActionSenderTest, ATargetThatWasNeverSetIsTheResponderChain) {
  button->setTarget(nullptr);
  button->setAction("nobodyHasThis:");
  user.click(*window, inside);
  EXPECT_THAT(warnings, ElementsAre("NSButton: nobody performs nobodyHasThis:"));
}

TEST_F(ActionSenderTest, AnItemOfAMenuIsReportedByItsTitle) {
  const auto menu = make<NSMenu>();
  menu->setAutoenablesItems(false);
  menu->addItemWithTitle("Play", "nobodyHasThis:");
  menu->performActionForItemAtIndex(0);
  EXPECT_THAT(warnings, ElementsAre("NSMenuItem \"Play\": nobody performs nobodyHasThis:"));
}
