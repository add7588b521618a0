#include "tessaluna/platform/views/TextViewEditing.h"

#include <malloc.h>

#include <random>

#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSPasteboard.h"
#include "tests/harness/FieldWorld.h"

using namespace tessaluna::platform;
using harness::Calls;

namespace {

constexpr std::uint32_t shift = NSEventModifierFlagShift, control = NSEventModifierFlagControl,
                        command = NSEventModifierFlagCommand;

using TextViewEditingUndo = harness::FieldWorld;
using TextViewEditingClipboard = harness::FieldWorld;
using TextViewEditingDeletion = harness::StillWorld;

class TextViewEditingComposition : public harness::FieldWorld {
 protected:
  bool isUnderlined(std::size_t index) const {
    return editor()->textStorage()->attributeAtIndex(NSUnderlineStyleAttributeName, index).has_value();
  }
};

}  // namespace

// TextViewEditingDeletion. Ten characters fit on a line.

TEST_F(TextViewEditingDeletion, ToTheEndOfALineDeletesTheBlankAtWhichItWrapsOnceNothingElseIsLeft) {
  const auto view = make<NSTextView>(CGRect{0, 0, 66, 150});
  const auto deletedFrom = [&](std::size_t index) {
    view->setString("one two three\nfour");
    view->setSelectedRange({index, 0});
    view->doCommandBySelector("deleteToEndOfLine:");
    EXPECT_EQ(view->selectedRange(), (NSRange{index, 0}));
    return view->string();
  };
  EXPECT_EQ(deletedFrom(4), "one  three\nfour");
  EXPECT_EQ(deletedFrom(7), "one twothree\nfour");
  EXPECT_EQ(deletedFrom(13), "one two three\nfour") << "the end of the paragraph";
  EXPECT_EQ(deletedFrom(18), "one two three\nfour");
}

// TextViewEditingUndo.

TEST_F(TextViewEditingUndo, WhatWasTypedInOneGoIsOneStep) {
  begin("abc", 3);
  user.type("def");
  user.pressKey("z", control);
  EXPECT_EQ(field->stringValue(), "abc");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
  user.pressKey("z", control | shift);
  EXPECT_EQ(field->stringValue(), "abcdef");
  user.pressKey("z", command);
  user.pressKey("y", control);
  EXPECT_EQ(field->stringValue(), "abcdef");
}

// Against a list of all texts.
TEST_F(TextViewEditingUndo, ManyStepsGoBackAndForth) {
  begin("some text", 0);
  std::mt19937 random(2);
  std::vector<std::string> texts{"some text"};
  std::size_t now = 0;
  for (int step = 0; step < 2000; ++step) {
    switch (random() % 5) {
      case 0:
      case 1:
        if (now > 0) --now;
        editor()->undo(nullptr);
        break;
      case 2:
        if (now + 1 < texts.size()) ++now;
        editor()->redo(nullptr);
        break;
      default:
        editor()->setSelectedRange({random() % 12, random() % 4});
        editor()->breakUndoCoalescing();
        editor()->insertText(std::string(random() % 3 + 1, static_cast<char>('a' + random() % 2)));
        texts.resize(++now);
        texts.push_back(editor()->string());
    }
    ASSERT_EQ(editor()->string(), texts[now]) << step;
  }
}

TEST_F(TextViewEditingUndo, ManyStepsInALongTextDoNotTakeManyTimesItsMemory) {
  const auto view = make<NSTextView>(CGRect{0, 0, 1000, 100});
  std::string text;
  for (int line = 0; line < 1000; ++line) text += std::string(49, 'a') + "\n";
  view->setString(text);
  const auto bytes = [] {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  };
  view->insertText("b");
  const std::size_t before = bytes();
  for (std::size_t step = 0; step < 20; ++step) {
    view->setSelectedRange({1000 * step, 0});
    view->insertText("b");
  }
  EXPECT_LT(bytes(), before + 10 * text.size());
  for (int step = 0; step < 21; ++step) view->undo(nullptr);
  EXPECT_EQ(view->string(), text);
}

TEST_F(TextViewEditingUndo, TypingElsewhereDeletingAndPastingAreStepsOfTheirOwn) {
  begin("abc", 3);
  user.type("de");
  user.pressKey(NSHomeFunctionKey);
  user.type("xy");
  user.pressKey("\x7F");
  user.pressKey("\x7F");
  desktop.setClipboardText("pasted");
  user.pressKey("v", control);
  Calls states;
  for (int i = 0; i < 5; ++i) {
    states.push_back(field->stringValue());
    user.pressKey("z", control);
  }
  EXPECT_EQ(states, (Calls{"pastedabcde", "abcde", "xyabcde", "abcde", "abc"}));
  EXPECT_EQ(field->stringValue(), "abc");
}

TEST_F(TextViewEditingUndo, TypingOverASelectionIsOneStepAndBringsTheSelectionBack) {
  begin("one two");
  editor()->setSelectedRange({0, 3});
  user.type("three");
  EXPECT_EQ(field->stringValue(), "three two");
  user.pressKey("z", control);
  EXPECT_EQ(field->stringValue(), "one two");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(TextViewEditingUndo, WhatWasUndoneCanNoLongerBeRedoneOnceSomethingIsTyped) {
  begin();
  user.type("a");
  user.pressKey("z", control);
  user.type("b");
  user.pressKey("y", control);
  EXPECT_EQ(field->stringValue(), "b");
}

TEST_F(TextViewEditingUndo, WhatWasUndoneCanNoLongerBeRedoneOnceTheTextIsSet) {
  begin();
  user.type("a");
  user.pressKey("z", control);
  field->setStringValue("");
  user.pressKey("y", control);
  EXPECT_EQ(field->stringValue(), "a") << "the same text changes nothing";
  user.pressKey("z", control);
  field->setStringValue("set");
  user.pressKey("y", control);
  EXPECT_EQ(field->stringValue(), "set");
}

TEST_F(TextViewEditingUndo, TypingAfterAClickOrARedoIsAStepOfItsOwn) {
  begin("");
  user.type("ab");
  user.click(*window, placeOf(2));
  user.type("c");
  editor()->undo(nullptr);
  EXPECT_EQ(editor()->string(), "ab");
  editor()->redo(nullptr);
  user.type("d");
  editor()->undo(nullptr);
  EXPECT_EQ(editor()->string(), "abc");
}

TEST_F(TextViewEditingUndo, IsReportedAsAChange) {
  begin();
  user.type("a");
  delegate->calls.clear();
  user.pressKey("z", control);
  EXPECT_EQ(delegate->calls, (Calls{"undo:", "change "}));
}

TEST_F(TextViewEditingUndo, WhatWasTypedInAnotherFieldStaysThere) {
  other->setStringValue("kept");
  begin();
  user.type("a");
  other->selectText(nullptr);
  user.pressKey("z", control);
  EXPECT_EQ(field->stringValue(), "a");
  EXPECT_EQ(other->stringValue(), "kept");
  field->selectText(nullptr);
  user.pressKey("z", control);
  EXPECT_EQ(field->stringValue(), "a");
}

// The clipboard.

TEST_F(TextViewEditingClipboard, CopyCutAndPaste) {
  begin("one two");
  editor()->setSelectedRange({0, 4});
  user.pressKey("c", control);
  EXPECT_EQ(desktop.clipboardText(), "one ");
  EXPECT_EQ(NSPasteboard::generalPasteboard()->stringForType(NSPasteboardTypeString), "one ");
  user.pressKey(NSEndFunctionKey);
  user.pressKey("v", control);
  EXPECT_EQ(field->stringValue(), "one twoone ");
  user.pressKey("a", control);
  user.pressKey("x", control);
  EXPECT_EQ(field->stringValue(), "");
  EXPECT_EQ(desktop.clipboardText(), "one twoone ");
}

TEST_F(TextViewEditingClipboard, TheOlderKeysDoTheSame) {
  begin("abc");
  user.pressKey(NSInsertFunctionKey, control);
  EXPECT_EQ(desktop.clipboardText(), "abc");
  user.pressKey(NSDeleteFunctionKey, shift);
  EXPECT_EQ(field->stringValue(), "");
  user.pressKey(NSInsertFunctionKey, shift);
  EXPECT_EQ(field->stringValue(), "abc");
}

TEST_F(TextViewEditingClipboard, CopyingNothingLeavesItAsItWas) {
  desktop.setClipboardText("kept");
  begin("abc", 1);
  user.pressKey("c", control);
  user.pressKey("x", control);
  EXPECT_EQ(desktop.clipboardText(), "kept");
  EXPECT_EQ(field->stringValue(), "abc");
}

TEST_F(TextViewEditingClipboard, NothingIsCutFromATextThatCanOnlyBeRead) {
  field->setEditable(false);
  field->setSelectable(true);
  begin("abc");
  NSPasteboard::generalPasteboard()->setString("before", NSPasteboardTypeString);
  editor()->cut(nullptr);
  EXPECT_EQ(editor()->string(), "abc");
  EXPECT_EQ(NSPasteboard::generalPasteboard()->stringForType(NSPasteboardTypeString), "before");
}

TEST_F(TextViewEditingClipboard, PastedLinesBecomeOne) {
  desktop.setClipboardText(
      "one\r\ntwo\nthree\u2028"
      "four");
  begin();
  user.pressKey("v", control);
  EXPECT_EQ(field->stringValue(), "one two three four");
}

TEST_F(TextViewEditingClipboard, PastingNothingChangesNothing) {
  begin("abc");
  user.pressKey("v", control);
  EXPECT_EQ(field->stringValue(), "abc");
  EXPECT_EQ(delegate->calls, (Calls{"paste:"}));
}

// What is being composed.

TEST_F(TextViewEditingComposition, IsUnderlinedInTheTextUntilItIsCommitted) {
  begin("ab", 1);
  user.compose("\u00B4");
  EXPECT_TRUE(editor()->hasMarkedText());
  EXPECT_EQ(editor()->markedRange(), (NSRange{1, 1}));
  EXPECT_EQ(field->stringValue(),
            "a\u00B4"
            "b");
  EXPECT_TRUE(isUnderlined(1));
  EXPECT_FALSE(isUnderlined(0));
  EXPECT_FALSE(isUnderlined(2));
  user.commit("\u00E9");
  EXPECT_FALSE(editor()->hasMarkedText());
  EXPECT_EQ(editor()->markedRange(), noRange);
  EXPECT_EQ(field->stringValue(),
            "a\u00E9"
            "b");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 0}));
  EXPECT_FALSE(isUnderlined(1));
}

TEST_F(TextViewEditingComposition, EachStateReplacesTheOneBefore) {
  begin("x", 1);
  user.compose("k");
  user.compose("ka");
  editor()->setMarkedText("\u304B", {0, 1}, noRange);
  EXPECT_EQ(field->stringValue(), "x\u304B");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 1}));
  EXPECT_EQ(delegate->calls, (Calls{"begin", "change xk", "change xka", "change x\u304B"}));
}

TEST_F(TextViewEditingComposition, GivenUpItLeavesTheTextAsItWas) {
  begin("ab", 1);
  user.compose("k");
  user.compose("");
  EXPECT_EQ(field->stringValue(), "ab");
  EXPECT_FALSE(editor()->hasMarkedText());
  EXPECT_FALSE(editor()->undoManager()->canUndo());
}

TEST_F(TextViewEditingComposition, EndsInATextThatCanNoLongerBeEdited) {
  begin("", 0);
  user.compose("k");
  field->setSelectable(true);
  const int changes = nativeOf(*window).textInputChanges();
  field->setEditable(false);
  EXPECT_FALSE(editor()->hasMarkedText());
  EXPECT_EQ(field->stringValue(), "k");
  EXPECT_GT(nativeOf(*window).textInputChanges(), changes);
}

TEST_F(TextViewEditingComposition, IsOneStepToUndo) {
  begin("ab");
  user.compose("k");
  user.compose("ka");
  user.commit("\u304B");
  EXPECT_EQ(field->stringValue(), "\u304B");
  user.pressKey("z", control);
  EXPECT_EQ(field->stringValue(), "ab");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 2}));
}

TEST_F(TextViewEditingComposition, GivenUpOverASelectionItCanBeUndone) {
  begin("abc");
  user.compose("か");
  user.compose("");
  ASSERT_EQ(editor()->string(), "");
  editor()->undo(nullptr);
  EXPECT_EQ(editor()->string(), "abc");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(TextViewEditingComposition, AnUndoOfAMenuTakesItBackAndNothingBeforeIt) {
  begin("");
  user.type("ab");
  user.compose("か");
  editor()->undo(nullptr);
  EXPECT_EQ(editor()->string(), "ab");
  EXPECT_FALSE(editor()->hasMarkedText());
}

TEST_F(TextViewEditingComposition, StaysWhenTheKeysOrThePointerGoElsewhere) {
  begin("ab", 2);
  user.compose("k");
  user.click(*window, placeOf(0));
  EXPECT_FALSE(editor()->hasMarkedText());
  EXPECT_EQ(field->stringValue(), "abk");
  EXPECT_EQ(nativeOf(*window).discardsOfMarkedText(), 1);
  user.compose("m");
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(field->stringValue(), "mabk");
  EXPECT_EQ(nativeOf(*window).discardsOfMarkedText(), 2);
}

TEST_F(TextViewEditingComposition, EndsWhenAnAssistiveClientWritesTheText) {
  begin("ab", 2);
  user.compose("k");
  editor()->accessibilitySetValue("new", NSAccessibilityValueAttribute);
  EXPECT_EQ(field->stringValue(), "new");
  EXPECT_FALSE(editor()->hasMarkedText());
  EXPECT_EQ(nativeOf(*window).discardsOfMarkedText(), 1);
}

TEST_F(TextViewEditingComposition, AKeyThatTheInputMethodLeavesComesAfterIt) {
  begin();
  user.compose("k");
  user.type("x");
  EXPECT_EQ(field->stringValue(), "kx");
  EXPECT_FALSE(editor()->hasMarkedText());
}

TEST_F(TextViewEditingComposition, AReplacementRangeIsReplaced) {
  begin("teh end", 3);
  editor()->insertText("the", {0, 3});
  EXPECT_EQ(field->stringValue(), "the end");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
}

TEST_F(TextViewEditingComposition, NotifiesTheDesktopOfTheCaretsPlace) {
  begin("abc", 2);
  const CGRect rect = editor()->firstRectForCharacterRange({2, 0});
  const CGPoint corner = window->convertPointToScreen({20 + 7 + 13, 0});
  EXPECT_EQ(rect.origin.x, corner.x);
  EXPECT_EQ(editor()->firstRectForCharacterRange({0, 2}).size.width, 13);
  EXPECT_EQ(editor()->characterIndexForPoint({CGRectGetMidX(rect), CGRectGetMidY(rect)}), 2u);
  const int before = nativeOf(*window).textInputChanges();
  user.pressKey(NSLeftArrowFunctionKey);
  EXPECT_GT(nativeOf(*window).textInputChanges(), before);
}
