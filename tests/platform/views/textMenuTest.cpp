#include "tessaluna/platform/views/textMenu.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/windows/NSPasteboard.h"
#include "tests/harness/FieldWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;

namespace {

class textMenuTest : public harness::FieldWorld {
 protected:
  static constexpr int right = 1;
  void rightClick(CGPoint point) {
    user.click(*window, point, {.button = right});
    desktop.settle();
  }
  // The titles of what can be chosen now.
  std::vector<std::string> choices() const {
    std::vector<std::string> titles;
    if (const auto* menu = desktop.openMenu())
      for (const auto& entry : menu->entries)
        if (entry.isEnabled && !entry.isSeparator) titles.push_back(entry.title);
    return titles;
  }
  void choose(std::string_view title) {
    ASSERT_TRUE(desktop.openMenu());
    for (const auto& entry : desktop.openMenu()->entries)
      if (entry.title == title) {
        desktop.chooseFromMenu(entry.number);
        return desktop.settle();
      }
    FAIL() << "no " << title;
  }
};

}  // namespace

TEST_F(textMenuTest, ARightClickOpensItWithWhatCanBeDone) {
  NSPasteboard::generalPasteboard()->clearContents();
  begin("one two", 3);
  rightClick(placeOf(3));
  EXPECT_THAT(choices(), ElementsAre("Select All"));
  EXPECT_EQ(desktop.openMenu()->entries.size(), 8u);
  desktop.chooseFromMenu(std::nullopt);
  NSPasteboard::generalPasteboard()->setString("x", NSPasteboardTypeString);
  editor()->setSelectedRange({0, 3});
  user.type("a");
  editor()->setSelectedRange({0, 1});
  rightClick(placeOf(3));
  EXPECT_THAT(choices(), ElementsAre("Undo", "Cut", "Copy", "Paste", "Select All"));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 1})) << "a right click leaves the selection";
}

TEST_F(textMenuTest, WhatIsChosenIsDone) {
  begin("one two");
  editor()->setSelectedRange({0, 4});
  rightClick(placeOf(1));
  choose("Cut");
  EXPECT_EQ(field->stringValue(), "two");
  rightClick(placeOf(1));
  choose("Paste");
  EXPECT_EQ(field->stringValue(), "one two");
  rightClick(placeOf(1));
  choose("Select All");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 7}));
  rightClick(placeOf(1));
  choose("Undo");
  EXPECT_EQ(field->stringValue(), "two");
  rightClick(placeOf(1));
  choose("Redo");
  EXPECT_EQ(field->stringValue(), "one two");
  EXPECT_TRUE(editor()) << "the field is still edited";
}

TEST_F(textMenuTest, TheMenuKeyAndShiftF10OpenItBelowTheCaret) {
  for (const auto& [key, modifiers] : {std::pair(NSMenuFunctionKey, 0u), {char32_t(0xF70D), NSEventModifierFlagShift}}) {
    begin("one two", 3);
    user.pressKey(key, modifiers);
    desktop.settle();
    ASSERT_TRUE(desktop.openMenu());
    const CGPoint caret = window->convertRectToScreen({placeOf(3), CGSize{0, 0}}).origin;
    EXPECT_NEAR(desktop.openMenu()->place.over.origin.x, caret.x, 1);
    EXPECT_LT(desktop.openMenu()->place.over.origin.y, caret.y);
    desktop.chooseFromMenu(std::nullopt);
    desktop.settle();
  }
  EXPECT_EQ(field->stringValue(), "one two");
}

TEST_F(textMenuTest, ARightClickIntoAFieldBeginsItsEditing) {
  field->setStringValue("one");
  rightClick(placeOf(1));
  ASSERT_TRUE(editor());
  EXPECT_THAT(choices(), testing::Contains("Copy"));
}

TEST_F(textMenuTest, ALabelAndADisabledFieldHaveNone) {
  field->setStringValue("one");
  field->setEnabled(false);
  rightClick(placeOf(1));
  EXPECT_FALSE(desktop.openMenu());
  field->setEnabled(true);
  field->setEditable(false);
  rightClick(placeOf(1));
  EXPECT_FALSE(desktop.openMenu());
}

TEST_F(textMenuTest, ATextThatCanOnlyBeSelectedCannotBeChanged) {
  field->setEditable(false);
  field->setSelectable(true);
  begin("one");
  rightClick(placeOf(1));
  EXPECT_THAT(choices(), ElementsAre("Copy"));
}
