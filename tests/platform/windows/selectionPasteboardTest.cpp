#include <gtest/gtest.h>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/backends/headless/VirtualUser.h"
#include "tessaluna/platform/backend/PrimarySelection.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSPasteboard.h"
#include "tessaluna/platform/windows/NSWindow.h"

using namespace tessaluna::platform;
using tessaluna::backend::headless::HeadlessBackend;

namespace {

class DesktopWithSelection : public HeadlessBackend, public tessaluna::backend::PrimarySelection {
 public:
  std::string selected;
  bool hasOne = true;
  bool hasPrimarySelection() const override { return hasOne; }
  std::string primarySelectionText() const override { return selected; }
  void setPrimarySelectionText(const std::string& text) override { selected = text; }
};

// A field of which each character is 6.5 points wide, from 7 points behind its left edge on.
class selectionPasteboardTest : public testing::Test {
 protected:
  selectionPasteboardTest() {
    window->contentView()->addSubview(field);
    window->makeKeyAndOrderFront(nullptr);
    desktop.settle();
  }
  ~selectionPasteboardTest() override {
    window->setContentView(nullptr);
    NSApp.reset();
  }
  static CGPoint placeOf(std::size_t index) { return {27 + 6.5 * static_cast<double>(index), 112}; }
  void middleClick(std::size_t index) {
    user.click(*window, placeOf(index), {.button = 2});
    desktop.settle();
  }

  DesktopWithSelection desktop;
  tessaluna::backend::headless::VirtualUser user{desktop};
  Ref<NSApplication> application = NSApplication::sharedApplication();
  Ref<NSWindow> window = make<NSWindow>(CGRect{100, 100, 200, 150}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  Ref<NSTextField> field = make<NSTextField>(CGRect{20, 100, 110, 24});
};

}  // namespace

TEST_F(selectionPasteboardTest, WhatTheMouseSelectsIsInIt) {
  field->setStringValue("one two");
  user.click(*window, placeOf(0));
  desktop.advance(1);
  user.press(*window, placeOf(0));
  user.dragTo(placeOf(3));
  EXPECT_EQ(desktop.selected, "") << "not before the release";
  user.release();
  EXPECT_EQ(desktop.selected, "one");
  desktop.advance(1);
  user.click(*window, placeOf(5));
  EXPECT_EQ(desktop.selected, "one") << "a caret is no selection";
  user.click(*window, placeOf(5));
  EXPECT_EQ(desktop.selected, "two") << "a double click selects";
}

TEST_F(selectionPasteboardTest, WhatTheKeyboardSelectsIsNot) {
  field->setStringValue("one two");
  field->selectText(nullptr);
  user.pressKey(NSLeftArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(desktop.selected, "");
}

TEST_F(selectionPasteboardTest, TheMiddleButtonInsertsItAtThePoint) {
  field->setStringValue("one two");
  desktop.selected = "and\n";
  middleClick(4);
  EXPECT_EQ(field->stringValue(), "one and two");
  ASSERT_TRUE(field->currentEditor());
  EXPECT_EQ(field->currentEditor()->selectedRange().location, 8u);
  // Of a selection nothing is replaced.
  field->currentEditor()->setSelectedRange({0, 3});
  desktop.selected = "!";
  middleClick(11);
  EXPECT_EQ(field->stringValue(), "one and two!");
}

TEST_F(selectionPasteboardTest, TheMiddleButtonInsertsNothingWhereNothingCanBeInserted) {
  field->setStringValue("one");
  middleClick(1);
  EXPECT_EQ(field->stringValue(), "one") << "nothing was selected";
  desktop.selected = "x";
  window->makeFirstResponder(nullptr);
  field->setEditable(false);
  field->setSelectable(true);
  middleClick(1);
  EXPECT_EQ(field->stringValue(), "one") << "the text cannot be changed";
  window->makeFirstResponder(nullptr);
  field->setEditable(true);
  desktop.hasOne = false;
  middleClick(1);
  EXPECT_EQ(field->stringValue(), "one") << "the desktop has no such pasteboard";
}

TEST_F(selectionPasteboardTest, ItHoldsTextsBesideTheGeneralOne) {
  EXPECT_TRUE(NSPasteboard::generalPasteboard()->setString("copied", NSPasteboardTypeString));
  EXPECT_TRUE(NSPasteboard::selectionPasteboard()->setString("selected", NSPasteboardTypeString));
  EXPECT_EQ(NSPasteboard::generalPasteboard()->stringForType(NSPasteboardTypeString), "copied");
  EXPECT_EQ(NSPasteboard::selectionPasteboard()->stringForType(NSPasteboardTypeString), "selected");
  EXPECT_FALSE(NSPasteboard::selectionPasteboard()->setString("x", "public.png"));
  desktop.hasOne = false;
  EXPECT_FALSE(NSPasteboard::selectionPasteboard()->setString("x", NSPasteboardTypeString));
  EXPECT_EQ(NSPasteboard::selectionPasteboard()->stringForType(NSPasteboardTypeString), std::nullopt);
}

TEST_F(selectionPasteboardTest, APasteboardHoldsTextsOnlyAndMayBeCleared) {
  const auto general = NSPasteboard::generalPasteboard();
  general->setString("copied", NSPasteboardTypeString);
  EXPECT_EQ(general->stringForType("public.png"), std::nullopt);
  general->clearContents();
  EXPECT_EQ(general->stringForType(NSPasteboardTypeString), std::nullopt);
}

TEST(NSPasteboard, WithoutADesktopItHoldsNothing) {
  EXPECT_FALSE(NSPasteboard::generalPasteboard()->setString("copied", NSPasteboardTypeString));
  EXPECT_EQ(NSPasteboard::generalPasteboard()->stringForType(NSPasteboardTypeString), std::nullopt);
}
