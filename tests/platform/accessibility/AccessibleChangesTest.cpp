#include "tessaluna/platform/accessibility/AccessibleChanges.h"

#include <gtest/gtest.h>

#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/accessibleCells.h"

namespace tessaluna::platform {
namespace {

using Lines = std::vector<std::string>;

// A list in which a test selects.
class List : public NSView {
 public:
  using NSView::NSView;
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityListRole); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == NSAccessibilitySelectedChildrenAttribute) return selected;
    return NSView::accessibilityAttributeValue(attribute);
  }
  void select(AccessibilityElements elements) {
    selected = std::move(elements);
    NSAccessibilityPostNotification(shared_from_this(), NSAccessibilitySelectedChildrenChangedNotification);
  }
  AccessibilityElements selected;
};

class AccessibleChangesTest : public harness::StillWorld {
 protected:
  AccessibleChangesTest() {
    window->setTitle("Player");
    button->setTitle("Play");
    for (const Ref<NSView>& view : std::initializer_list<Ref<NSView>>{field, button, list})
      window->contentView()->addSubview(view);
    for (const Ref<NSObject>& element : std::initializer_list<Ref<NSObject>>{window, field->cell(), button->cell(), list})
      meet(element);
  }

  static void meet(const Ref<NSObject>& element) {
    accessibilityOf(element)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(element));
  }
  Lines heard() {
    desktop.settle();
    return std::exchange(lines, {});
  }
  Ref<NSTextField> addRow(std::string_view name) {
    const auto row = NSTextField::labelWithString(name);
    list->addSubview(row);
    return row;
  }

  Ref<NSWindow> window = showWindow({100, 100, 200, 150});
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 20, 80, 24});
  Ref<NSButton> button = make<NSButton>(CGRect{0, 60, 60, 24});
  Ref<List> list = make<List>(CGRect{100, 0, 100, 150});
  Lines lines;
  bool isListening = true;
  std::function<void(const AccessibleChange&)> onChange;
  AccessibleChanges changes{{.isListening = [this] { return isListening; },
                             .changed =
                                 [this](const AccessibleChange& change) {
                                   lines.push_back(lineOf(change));
                                   if (onChange) onChange(change);
                                 }}};
};

TEST_F(AccessibleChangesTest, ACheckBoxReportsThatItIsChecked) {
  button->setButtonType(NSButtonType::Toggle);
  button->setState(NSControlStateValueOn);
  button->setState(NSControlStateValueOn);
  button->setState(NSControlStateValueMixed);
  button->setState(NSControlStateValueOff);
  EXPECT_EQ(heard(), (Lines{"check box \"Play\": checked", "check box \"Play\": not checked", "check box \"Play\": mixed",
                            "check box \"Play\": not mixed"}));
}

TEST_F(AccessibleChangesTest, ADisclosureTriangleReportsThatItIsExpanded) {
  button->setButtonType(NSButtonType::Toggle);
  button->cell()->accessibilitySetOverrideValue(NSAccessibilityDisclosureTriangleRole, NSAccessibilityRoleAttribute);
  button->setState(NSControlStateValueOn);
  EXPECT_EQ(heard(), Lines{"disclosure triangle \"Play\": expanded"});
}

TEST_F(AccessibleChangesTest, ATabReportsThatItIsSelectedOnceThoughItsGroupDoesToo) {
  const auto tab = make<NSButton>(CGRect{0, 0, 20, 20});
  tab->setTitle("Albums");
  tab->setButtonType(NSButtonType::Toggle);
  tab->cell()->accessibilitySetOverrideValue(NSAccessibilityTabButtonRole, NSAccessibilityRoleAttribute);
  list->addSubview(tab);
  meet(tab->cell());
  tab->setState(NSControlStateValueOn);
  list->select({tab->cell()});
  EXPECT_EQ(heard(), Lines{"tab button \"Albums\": selected"});
}

TEST_F(AccessibleChangesTest, AQuantityReportsItsValue) {
  const auto cell = make<harness::QuantityCell>();
  meet(cell);
  NSAccessibilityPostNotification(cell, NSAccessibilityValueChangedNotification);
  EXPECT_EQ(heard(), Lines{}) << "the same";
  cell->value = 7;
  NSAccessibilityPostNotification(cell, NSAccessibilityValueChangedNotification);
  EXPECT_EQ(heard(), Lines{"slider \"\": value 7"});
}

TEST_F(AccessibleChangesTest, NamesAndEnabledControlsReportTheirChanges) {
  const auto label = addRow("one");
  meet(label->cell());
  label->setStringValue("two");
  button->setTitle("Pause");
  button->setTitle("Pause");
  window->setTitle("Other");
  button->setEnabled(false);
  button->setEnabled(false);
  button->setEnabled(true);
  EXPECT_EQ(heard(), (Lines{"static text \"two\": named", "button \"Pause\": named", "window \"Other\": named",
                            "button \"Pause\": disabled", "button \"Pause\": not disabled"}));
}

TEST_F(AccessibleChangesTest, ANameThatAHostGivesIsReported) {
  button->cell()->accessibilitySetOverrideValue("Stop", NSAccessibilityDescriptionAttribute);
  button->cell()->accessibilitySetOverrideValue("Stop", NSAccessibilityDescriptionAttribute);
  button->cell()->accessibilitySetOverrideValue({}, NSAccessibilityDescriptionAttribute);
  EXPECT_EQ(heard(), (Lines{"button \"Stop\": named", "button \"Play\": named"}));
}

TEST_F(AccessibleChangesTest, AFieldReportsTheDifferenceOfItsTexts) {
  for (const char* text : {"query", "quüxery", "quoery", "uoery", "uoery", "uoer", ""}) field->setStringValue(text);
  EXPECT_EQ(heard(), (Lines{"text field \"\": inserted \"query\" at 0", "text field \"\": inserted \"üx\" at 2",
                            "text field \"\": removed \"üx\" inserted \"o\" at 2", "text field \"\": removed \"q\" at 0",
                            "text field \"\": removed \"y\" at 4", "text field \"\": removed \"uoer\" at 0"}));
}

TEST_F(AccessibleChangesTest, ASelectionInATextIsReportedWithItsCaret) {
  const auto cell = make<harness::SelectingCell>();
  meet(cell);
  cell->range = {4, 0};
  NSAccessibilityPostNotification(cell, NSAccessibilitySelectedTextChangedNotification);
  NSAccessibilityPostNotification(cell, NSAccessibilitySelectedTextChangedNotification);
  cell->range = {1, 3};
  cell->accessibilitySetOverrideValue(1.0, accessibilityInsertionPointAttribute);
  NSAccessibilityPostNotification(cell, NSAccessibilitySelectedTextChangedNotification);
  EXPECT_EQ(heard(), (Lines{"text field \"\": caret at 4", "text field \"\": caret at 1, selected 1 to 4"}));
}

TEST_F(AccessibleChangesTest, TheFocusIsReportedOnceALittleLater) {
  window->makeFirstResponder(button.get());
  window->makeFirstResponder(nullptr);
  window->makeFirstResponder(button.get());
  EXPECT_EQ(lines, Lines{});
  EXPECT_EQ(heard(), Lines{"button \"Play\": focused"});
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(heard(), Lines{"window \"Player\": focused"});
}

TEST_F(AccessibleChangesTest, AWindowThatGetsTheKeyboardReportsTheFocusInIt) {
  window->makeFirstResponder(button.get());
  const auto other = showWindow({400, 100, 50, 50});
  EXPECT_EQ(heard().back(), "window \"\": focused");
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_EQ(heard(), Lines{"button \"Play\": focused"});
}

TEST_F(AccessibleChangesTest, SelectedAndDeselectedRowsAreReportedLater) {
  const auto first = addRow("a"), second = addRow("b");
  for (const auto& row : {first, second}) {
    row->cell()->accessibilitySetOverrideValue(std::string(NSAccessibilityRowRole), NSAccessibilityRoleAttribute);
    row->cell()->accessibilitySetOverrideValue(row->stringValue(), NSAccessibilityDescriptionAttribute);
  }
  list->select({first->cell()});
  EXPECT_EQ(lines, Lines{});
  EXPECT_EQ(heard(), Lines{"row \"a\": selected"});
  list->select({second->cell()});
  EXPECT_EQ(heard(), (Lines{"row \"a\": not selected", "row \"b\": selected"}));
  list->select({second->cell()});
  EXPECT_EQ(heard(), Lines{}) << "as before";
  second->removeFromSuperview();
  list->select({});
  EXPECT_EQ(heard(), Lines{}) << "it was taken away";
}

TEST_F(AccessibleChangesTest, WhatWasSelectedWhenAClientMetTheListIsReportedWhenItIsNoLonger) {
  const auto first = addRow("a"), second = addRow("b");
  for (const auto& row : {first, second}) {
    row->cell()->accessibilitySetOverrideValue(std::string(NSAccessibilityRowRole), NSAccessibilityRoleAttribute);
    row->cell()->accessibilitySetOverrideValue(row->stringValue(), NSAccessibilityDescriptionAttribute);
  }
  list->selected = {first->cell()};
  meet(list);
  list->select({second->cell()});
  EXPECT_EQ(heard(), (Lines{"row \"a\": not selected", "row \"b\": selected"}));
}

TEST_F(AccessibleChangesTest, WindowsThatComeAndGoAreReported) {
  window->orderOut(nullptr);
  EXPECT_EQ(heard(), Lines{"window \"Player\": destroyed"});
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_EQ(heard(), (Lines{"window \"Player\": created", "window \"Player\": focused"}));
}

TEST_F(AccessibleChangesTest, WhatNoClientHasMetReportsNothing) {
  const auto label = addRow("one");
  label->setStringValue("two");
  EXPECT_EQ(heard(), Lines{});
  EXPECT_EQ(label->cell()->accessibilityCompanion(), nullptr);
}

TEST_F(AccessibleChangesTest, NothingIsReportedWhileNobodyListens) {
  isListening = false;
  button->setTitle("Pause");
  window->makeFirstResponder(button.get());
  field->setStringValue("abba");
  EXPECT_EQ(heard(), Lines{});
  isListening = true;
  button->setEnabled(false);
  EXPECT_EQ(heard(), (Lines{"button \"Pause\": named", "button \"Pause\": disabled"})) << "both are news";
}

TEST_F(AccessibleChangesTest, WhoeverIsNotifiedMayLetTheElementGo) {
  onChange = [this](const AccessibleChange& change) {
    accessibilityOf(change.element)->setAccessibilityCompanion(nullptr);
    if (button) button->removeFromSuperview();
    button = nullptr;
  };
  // Two changes of one look.
  button->cell()->setTitle("Pause");
  button->setEnabled(false);
  EXPECT_EQ(heard(), (Lines{"button \"Pause\": named", "button \"Pause\": disabled"}));
}

TEST_F(AccessibleChangesTest, AFieldThatIsEditedReportsWhatIsTypedWithItsCaret) {
  field->setStringValue("query");
  field->selectText(nullptr);
  heard();
  user.pressKey(NSEndFunctionKey);
  EXPECT_EQ(heard(), Lines{"text field \"\": caret at 5"}) << "the selection is given up";
  user.type("x");
  EXPECT_EQ(heard(), (Lines{"text field \"\": inserted \"x\" at 5", "text field \"\": caret at 6"}));
  user.pressKey(U'\x7F');
  EXPECT_EQ(heard(), (Lines{"text field \"\": removed \"x\" at 5", "text field \"\": caret at 5"}));
  user.pressKey(NSLeftArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(heard(), Lines{"text field \"\": caret at 4, selected 4 to 5"});
  user.type("z");
  EXPECT_EQ(heard(), (Lines{"text field \"\": removed \"y\" inserted \"z\" at 4", "text field \"\": caret at 5"}));
}

TEST_F(AccessibleChangesTest, ATextOfEqualLengthOrLessThatTheProgramPutsIntoTheEditorIsReported) {
  field->setStringValue("amber tide");
  field->selectText(nullptr);
  const Ref<NSText> editor = field->currentEditor();
  editor->setSelectedRange({10, 0});
  heard();
  editor->setString("amber dawn");
  EXPECT_EQ(heard(), Lines{"text field \"\": removed \"tide\" inserted \"dawn\" at 6"});
  editor->setString("amber");
  EXPECT_EQ(heard(), (Lines{"text field \"\": removed \" dawn\" at 5", "text field \"\": caret at 5"}));
}

TEST_F(AccessibleChangesTest, AFieldThatBeginsToBeEditedReportsItsCaret) {
  field->setStringValue("query");
  heard();
  window->makeFirstResponder(field.get());
  EXPECT_EQ(heard(), (Lines{"text field \"\": caret at 5", "text field \"\": caret at 5, selected 0 to 5",
                            "text field \"\": focused"}));
}

}  // namespace
}  // namespace tessaluna::platform
