#include "tessaluna/platform/views/NSTextView.h"

#include <stdexcept>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"
#include "tests/harness/FieldWorld.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Calls;

namespace {

// NSTextViewKeys and commands of the editor of a field.
class NSTextViewKeys : public harness::FieldWorld {
 protected:
  static constexpr std::uint32_t shift = NSEventModifierFlagShift, control = NSEventModifierFlagControl,
                                 option = NSEventModifierFlagOption, command = NSEventModifierFlagCommand;
  static constexpr char32_t left = NSLeftArrowFunctionKey, right = NSRightArrowFunctionKey, home = NSHomeFunctionKey,
                            end = NSEndFunctionKey, up = NSUpArrowFunctionKey, down = NSDownArrowFunctionKey,
                            forwardDelete = NSDeleteFunctionKey;
  static constexpr char32_t backspace = 0x7F;
};

using NSTextViewTest = harness::StillWorld;

// A text of 10,000 lines of 15.6 points in a scroll view that fills a window of 200 by 150, with the keys and the caret in its
// second line.
class NSTextViewLongText : public harness::StillWorld {
 protected:
  NSTextViewLongText() {
    std::string text;
    for (int i = 0; i < 10000; ++i) text += "line " + std::to_string(i) + "\n";
    view->setString(text);
    scrollView->setDocumentView(view);
    window = showWindowWith(scrollView);
    window->makeFirstResponder(view.get());
    view->setSelectedRange({8, 0});
    desktop.settle();
    nativeOf(*window).forgetPaints();
  }
  std::vector<std::string> glyphsOfLastPaint() const {
    return harness::only("glyphs", nativeOf(*window).paints().back().lines);
  }

  Ref<NSTextView> view = make<NSTextView>(CGRect{0, 0, 200, 156000});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window;
};

// A text in the scroll view of a window of 200 by 150, as high as its lines of 15.6 points.
class NSTextViewAsHighAsItsLines : public harness::StillWorld {
 protected:
  NSTextViewAsHighAsItsLines() {
    view->setVerticallyResizable(true);
    scrollView->setDocumentView(view);
    window = showWindowWith(scrollView);
    desktop.settle();
  }

  Ref<NSTextView> view = make<NSTextView>(CGRect{0, 0, 50, 20});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSTextViewKeys, AnArrowCollapsesASelectionToTheEndOnItsSideWhicheverWayItWasMade) {
  for (const bool isBackward : {false, true}) {
    for (const auto& [key, to] : {std::pair(left, std::size_t{0}), std::pair(right, std::size_t{3})}) {
      begin("abc", isBackward ? 3 : 0);
      user.pressKey(isBackward ? home : end, shift);
      ASSERT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
      user.pressKey(key);
      EXPECT_EQ(editor()->selectedRange(), (NSRange{to, 0})) << (isBackward ? "backward, to " : "forward, to ") << to;
    }
  }
}

TEST_F(NSTextViewKeys, MoveTheCaret) {
  const struct {
    const char* what;
    std::size_t from;
    char32_t key;
    std::uint32_t modifiers;
    std::size_t to;
  } cases[] = {
      {"left", 5, left, 0, 4},
      {"left at the start", 0, left, 0, 0},
      {"right", 5, right, 0, 6},
      {"right at the end", 13, right, 0, 13},
      {"word left within a word", 5, left, control, 4},
      {"word left behind a word", 4, left, control, 0},
      {"word left, the other system's", 5, left, option, 4},
      {"word right", 4, right, control, 7},
      {"word right from a blank", 7, right, control, 13},
      {"word right, the other system's", 4, right, option, 7},
      {"home", 5, home, 0, 0},
      {"end", 5, end, 0, 13},
      {"home of all", 5, home, control, 0},
      {"end of all", 5, end, control, 13},
      {"command left", 5, left, command, 0},
      {"command right", 5, right, command, 13},
      {"up, on the only line", 5, up, 0, 0},
      {"down, on the only line", 5, down, 0, 13},
  };
  for (const auto& c : cases) {
    begin("one two three", c.from);
    user.pressKey(c.key, c.modifiers);
    EXPECT_EQ(editor()->selectedRange(), (NSRange{c.to, 0})) << c.what;
    begin("one two three", c.from);
    user.pressKey(c.key, c.modifiers | shift);
    const auto [start, stop] = std::minmax(c.from, c.to);
    EXPECT_EQ(editor()->selectedRange(), (NSRange{start, stop - start})) << c.what << ", with Shift";
    EXPECT_EQ(field->stringValue(), "one two three") << c.what;
  }
}

TEST_F(NSTextViewKeys, ShiftContinuesFromWhereTheSelectionBegan) {
  begin("abcdef", 3);
  user.pressKey(right, shift);
  user.pressKey(right, shift);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 2}));
  for (int i = 0; i < 3; ++i) user.pressKey(left, shift);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 1}));
  user.pressKey(home, shift);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(NSTextViewKeys, AStepToASideGivesUpTheSelectionAtThatSide) {
  begin("abcdef");
  editor()->setSelectedRange({2, 3});
  user.pressKey(left);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 0}));
  editor()->setSelectedRange({2, 3});
  user.pressKey(right);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{5, 0}));
  editor()->setSelectedRange({0, 6});
  user.pressKey(left);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 0}));
  editor()->setSelectedRange({0, 6});
  user.pressKey(right);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{6, 0}));
}

TEST_F(NSTextViewKeys, DeleteCharactersWordsAndTheSelection) {
  const struct {
    const char* what;
    NSRange selected;
    char32_t key;
    std::uint32_t modifiers;
    const char* left;
  } cases[] = {
      {"backward", {5, 0}, backspace, 0, "one wo three"},
      {"backward at the start", {0, 0}, backspace, 0, "one two three"},
      {"forward", {5, 0}, forwardDelete, 0, "one to three"},
      {"forward at the end", {13, 0}, forwardDelete, 0, "one two three"},
      {"word backward", {7, 0}, backspace, control, "one  three"},
      {"word backward, the other system's", {7, 0}, backspace, option, "one  three"},
      {"word forward", {4, 0}, forwardDelete, control, "one  three"},
      {"to the start", {4, 0}, backspace, command, "two three"},
      {"the selection backward", {0, 4}, backspace, 0, "two three"},
      {"the selection forward", {0, 4}, forwardDelete, 0, "two three"},
      {"the selection and not the word", {0, 1}, backspace, control, "ne two three"},
  };
  for (const auto& c : cases) {
    begin("one two three");
    editor()->setSelectedRange(c.selected);
    user.pressKey(c.key, c.modifiers);
    EXPECT_EQ(field->stringValue(), c.left) << c.what;
  }
}

TEST_F(NSTextViewKeys, StepOverWholeCharactersAsTheUserSeesThem) {
  // An e with an accent of its own, a family of three, a flag.
  begin("e\u0301x\U0001F468\u200D\U0001F469\u200D\U0001F467\U0001F1EB\U0001F1F7", 0);
  std::vector<std::size_t> stops;
  for (int i = 0; i < 4; ++i) {
    user.pressKey(right);
    stops.push_back(editor()->selectedRange().location);
  }
  EXPECT_EQ(stops, (std::vector<std::size_t>{2, 3, 11, 15}));
  user.pressKey(backspace);
  user.pressKey(backspace);
  EXPECT_EQ(field->stringValue(), "e\u0301x");
  user.pressKey(home);
  user.pressKey(forwardDelete);
  EXPECT_EQ(field->stringValue(), "x");
}

TEST_F(NSTextViewKeys, TypedTextReplacesTheSelection) {
  begin("abc");
  editor()->setSelectedRange({1, 1});
  user.type("X\u00E9");
  EXPECT_EQ(field->stringValue(),
            "aX\u00E9"
            "c");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
}

TEST_F(NSTextViewKeys, ALetterWithOptionIsTypedOnlyWhereOptionMadeItAnother) {
  begin();
  const auto press = [&](const char* characters, const char* ignoring, std::uint32_t modifiers) {
    NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                   .modifiers = modifiers,
                                                   .window = window,
                                                   .characters = characters,
                                                   .charactersIgnoringModifiers = ignoring}));
  };
  press("f", "f", option);
  press("\u00DF", "s", option);
  press("@", "q", control | option);
  press("\x06", "f", control);
  press("f", "f", command);
  EXPECT_EQ(field->stringValue(), "\u00DF@");
}

TEST_F(NSTextViewKeys, AllIsSelectedByEitherSystemsKey) {
  for (const std::uint32_t modifier : {control, command}) {
    begin("abc", 1);
    user.pressKey("a", modifier);
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
  }
}

TEST_F(NSTextViewKeys, CommandsAreFoundByNameAsActionsAre) {
  begin("abc", 1);
  EXPECT_TRUE(NSApp->sendAction("moveToEndOfLine:", nullptr, window.get()));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
  EXPECT_TRUE(editor()->respondsToSelector("moveToBeginningOfLineAndModifySelection:"));
  editor()->doCommandBySelector("moveToBeginningOfLineAndModifySelection:");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
  editor()->doCommandBySelector("noSuchCommand:");
}

TEST_F(NSTextViewKeys, InATextThatIsOnlySelectableNothingIsTyped) {
  field->setEditable(false);
  field->setSelectable(true);
  begin("abc");
  ASSERT_TRUE(editor());
  user.type("x");
  user.pressKey(backspace);
  user.pressKey("x", control);
  user.pressKey("v", control);
  EXPECT_EQ(field->stringValue(), "abc");
  user.pressKey("c", control);
  EXPECT_EQ(desktop.clipboardText(), "abc");
  EXPECT_FALSE(field->canBecomeKeyView());
}

TEST_F(NSTextViewKeys, WhatCannotBeSelectedCannotBeEditedEither) {
  const auto text = make<NSTextView>(CGRect{0, 0, 100, 20});
  text->setSelectable(false);
  EXPECT_FALSE(text->isEditable());
  text->setSelectable(true);
  EXPECT_FALSE(text->isEditable());
  NSTextFieldCell cell;
  cell.setEditable(true);
  cell.setSelectable(false);
  EXPECT_FALSE(cell.isEditable() || cell.isSelectable());
}

TEST_F(NSTextViewKeys, LeftIsForwardInATextThatBeginsFromRightToLeft) {
  begin("\u05D0\u05D1 \u05D2\u05D3", 0);
  user.pressKey(left);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
  user.pressKey(left, control);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 0}));
  user.pressKey(left, command);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{5, 0}));
  user.pressKey(right, shift);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{4, 1}));
  user.pressKey(home);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 0}));
}

// A text view that is no field editor.

TEST_F(NSTextViewTest, ALongTextIsOnSeveralLinesAndTheCaretKeepsItsColumn) {
  const auto text = make<NSTextView>(CGRect{0, 0, 50, 100});  // 40 points beside the padding: six characters
  const auto window = showWindowWith(text);
  window->makeFirstResponder(text.get());
  text->setString("aaaa bbbb\ncc dddd");
  ASSERT_EQ(text->layoutManager()->layout().lines().size(), 4u);
  text->setSelectedRange({9, 0});
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text->selectedRange().location, 12u);  // behind "cc": that line is shorter
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text->selectedRange().location, 17u);
  user.pressKey(NSHomeFunctionKey);
  EXPECT_EQ(text->selectedRange().location, 13u);
  user.pressKey(NSUpArrowFunctionKey);
  user.pressKey(NSUpArrowFunctionKey);
  EXPECT_EQ(text->selectedRange().location, 5u);
  user.pressKey(NSEndFunctionKey);
  EXPECT_EQ(text->selectedRange().location, 9u);
}

TEST_F(NSTextViewTest, ReturnAndTabAreTyped) {
  const auto text = make<NSTextView>(CGRect{0, 0, 200, 100});
  const auto window = showWindowWith(text);
  window->makeFirstResponder(text.get());
  user.type("a");
  user.pressKey("\r");
  user.pressKey("\t");
  EXPECT_EQ(text->string(), "a\n\t");
}

TEST_F(NSTextViewTest, ATextThatIsNotAFieldEditorIsAnElement) {
  const auto text = make<NSTextView>(CGRect{0, 0, 200, 100});
  EXPECT_TRUE(text->isAccessibilityElement());
  EXPECT_EQ(text->accessibilityRole(), "AXTextArea");
  text->setFieldEditor(true);
  EXPECT_TRUE(text->accessibilityIsIgnored());
}

TEST_F(NSTextViewTest, PlacesCountFromTheViewsCornerWithThePadding) {
  const auto text = make<NSTextView>(CGRect{0, 0, 200, 100});
  text->setString("abcd");
  EXPECT_EQ(text->characterIndexForInsertionAtPoint({5 + 6.5 * 2 + 4, 5}), 3u);
  EXPECT_EQ(text->caretRectForIndex(2).origin, (CGPoint{18, 0}));
  CGFloat fraction = 0;
  EXPECT_EQ(text->layoutManager()->characterIndexForPoint({5 + 6.5 * 1.5, 5}, *text->textContainer(), &fraction), 1u);
  EXPECT_DOUBLE_EQ(fraction, 0.5);
  std::vector<CGRect> rects;
  const NSRange glyphs = text->layoutManager()->glyphRangeForCharacterRange({1, 2}, nullptr);
  text->layoutManager()->enumerateEnclosingRectsForGlyphRange(glyphs, glyphs, *text->textContainer(),
                                                              [&](CGRect rect, bool&) { rects.push_back(rect); });
  ASSERT_EQ(rects.size(), 1u);
  EXPECT_EQ(rects[0].origin.x, 11.5);
  EXPECT_EQ(rects[0].size.width, 13);
}

TEST_F(NSTextViewLongText, ABlinkRedrawsTheCaretsPlaceAndNoLineFarFromIt) {
  const auto set = view->layoutManager()->layout().lines()[1].shaped;
  desktop.advance(0.5);
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  const std::vector<CGRect>& dirty = nativeOf(*window).paints()[0].dirty;
  ASSERT_EQ(dirty.size(), 1u);
  EXPECT_LE(dirty[0].size.width, 2);
  EXPECT_LE(dirty[0].size.height, 17);
  // The line with the caret and those beside it, whose letters might reach there.
  EXPECT_LE(glyphsOfLastPaint().size(), 4u);
  EXPECT_EQ(view->layoutManager()->layout().lines()[1].shaped, set) << "the text was set in lines again";
}

TEST_F(NSTextViewLongText, ARedrawOfAllDrawsTheLinesInSight) {
  view->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_GE(glyphsOfLastPaint().size(), 10u);
  EXPECT_LE(glyphsOfLastPaint().size(), 12u);
}

TEST_F(NSTextViewLongText, OfASelectionTheLinesInSightAreFilled) {
  view->selectAll(nullptr);
  view->scrollPoint({0, 0});
  desktop.settle();
  EXPECT_GE(harness::only("fill", nativeOf(*window).paints().back().lines).size(), 10u);
  EXPECT_LE(harness::only("fill", nativeOf(*window).paints().back().lines).size(), 16u);
}

TEST_F(NSTextViewLongText, AnotherFontOfTheDesktopSetsTheLinesAgain) {
  const auto set = view->layoutManager()->layout().lines()[1].shaped;
  effectiveAppearanceDidChange();
  EXPECT_NE(view->layoutManager()->layout().lines()[1].shaped, set);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(NSTextViewLongText, AFontThatChangesWhileTheViewIsInNoWindowReachesItToo) {
  scrollView->removeFromSuperview();
  const auto set = view->layoutManager()->layout().lines()[1].shaped;
  effectiveAppearanceDidChange();
  EXPECT_NE(view->layoutManager()->layout().lines()[1].shaped, set);
}

// What assistive clients are shown of a text that is no field's.

class NSTextViewAccessibility : public harness::StillWorld {
 protected:
  NSTextViewAccessibility() { view->setString("one\ntwo\nthree"); }

  Ref<NSTextView> view = make<NSTextView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window = showWindowWith(view);
};

TEST_F(NSTextViewAccessibility, ItIsATextAreaWithACaret) {
  view->setSelectedRange({4, 2});
  const AccessibleTextState expected{.text = u"one\ntwo\nthree", .selection = {{4, 2}}, .caret = 6};
  EXPECT_EQ(accessibleTextOf(view), expected);
  const auto number = [&](std::string_view attribute) { return *view->accessibilityAttributeValue(attribute).as<double>(); };
  EXPECT_EQ(number(NSAccessibilityInsertionPointLineNumberAttribute), 1);
  view->setSelectedRange({13, 0});
  EXPECT_EQ(number(NSAccessibilityInsertionPointLineNumberAttribute), 2);
  view->setSelectedRange({0, 0});
  EXPECT_EQ(number(NSAccessibilityInsertionPointLineNumberAttribute), 0);
  EXPECT_EQ(number(NSAccessibilityNumberOfCharactersAttribute), 13);
  EXPECT_EQ(accessibleLine(view), "text area \"\" = \"one\\ntwo\\nthree\" [focusable, editable, multi-line] focus");
}

TEST_F(NSTextViewAccessibility, ItsTextAndSelectionCanBeSetWhileItIsEditable) {
  selectAccessibleText(view, 4, 7);
  EXPECT_EQ(view->selectedRange(), (NSRange{4, 3}));
  replaceAccessibleText(view, 4, 7, u"2");
  EXPECT_EQ(view->string(), "one\n2\nthree");
  EXPECT_EQ(view->selectedRange(), (NSRange{5, 0})) << "as after typing";
  view->setEditable(false);
  replaceAccessibleText(view, 0, 3, u"1");
  EXPECT_EQ(view->string(), "one\n2\nthree");
  EXPECT_TRUE(accessibleStatesOf(view).contains(AccessibleState::ReadOnly));
}

TEST_F(NSTextViewAccessibility, EachLineHasItsCharactersWhereTheyShow) {
  // The window is at 100, 100 and 150 high; beside the text are 5 points.
  const CGRect letter = frameOfAccessibleText(view, {5, 1});
  EXPECT_NEAR(letter.origin.x, 100 + 5 + 6.5, 1e-9);
  EXPECT_NEAR(CGRectGetMaxY(letter), 250 - 15.6, 1e-9);
  EXPECT_EQ(accessibleTextOffsetAt(view, {CGRectGetMidX(letter), CGRectGetMidY(letter)}), 5u);
  EXPECT_EQ(accessibleTextOffsetAt(view, {300 - 1, CGRectGetMidY(letter)}), std::nullopt);
  EXPECT_NEAR(frameOfAccessibleText(view, {0, 13}).size.height, 3 * 15.6, 1e-9);
}

TEST_F(NSTextViewAccessibility, ItReportsItsTextAndThenItsCaret) {
  window->makeFirstResponder(view.get());
  view->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(view));
  std::vector<std::string> lines;
  const AccessibleChanges changes({.isListening = [] { return true; },
                                   .changed = [&](const AccessibleChange& change) { lines.push_back(lineOf(change)); }});
  user.pressKey(U'\x7F', 0);
  user.type("p");
  view->textStorage()->replaceCharactersInRange({0, 4}, u"");
  EXPECT_EQ(lines, (std::vector<std::string>{"text area \"\": removed \"e\" at 12", "text area \"\": caret at 12",
                                             "text area \"\": inserted \"p\" at 12", "text area \"\": caret at 13",
                                             "text area \"\": removed \"one\n\" at 0", "text area \"\": caret at 9"}));
}

// A text of several lines between two fields.
class NSTextViewBetweenFields : public harness::FieldWorld {
 protected:
  NSTextViewBetweenFields() {
    window->contentView()->addSubview(text);
    window->contentView()->addSubview(last);
    text->setString("one");
    window->makeFirstResponder(text.get());
  }
  Ref<NSTextView> text = make<NSTextView>(CGRect{20, 10, 110, 40});
  Ref<NSTextField> last = make<NSTextField>(CGRect{140, 10, 50, 24});
};

TEST_F(NSTextViewBetweenFields, TabIsTypedAndShiftTabGoesToTheViewBefore) {
  user.pressKey("\t");
  EXPECT_EQ(text->string(), "one\t");
  EXPECT_EQ(window->firstResponder(), text.get());
  user.pressKey("\t", NSEventModifierFlagShift);
  EXPECT_EQ(text->string(), "one\t");
  EXPECT_TRUE(other->currentEditor());
}

TEST_F(NSTextViewBetweenFields, TabLeavesATextThatCanOnlyBeRead) {
  text->setEditable(false);
  user.pressKey("\t");
  EXPECT_TRUE(last->currentEditor());
  window->makeFirstResponder(text.get());
  user.pressKey("\x19", NSEventModifierFlagShift);
  EXPECT_TRUE(other->currentEditor());
  EXPECT_EQ(text->string(), "one");
}

// The end of editing.

TEST_F(NSTextViewTest, AfterADelegateThatThrowsAtTheEndOfEditingTheNextEndIsReported) {
  struct Ends : NSObject, NSTextDelegate {
    bool throws = true;
    std::vector<NSTextMovement> movements;
    void textDidEndEditing(const Ref<NSNotification>& notification) override {
      movements.push_back(dynamic_cast<NSTextView&>(*notification->object()).movement());
      if (std::exchange(throws, false)) throw std::runtime_error("refused");
    }
  };
  const auto view = make<NSTextView>(CGRect{0, 0, 100, 40});
  const auto ends = make<Ends>();
  view->setDelegate(ends);
  const auto window = showWindowWith(view);
  window->makeFirstResponder(view.get());
  EXPECT_THROW(view->insertBacktab(nullptr), std::runtime_error);
  window->makeFirstResponder(view.get());
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(ends->movements, (std::vector<NSTextMovement>{NSTextMovementBacktab, NSTextMovementOther}));
}

// Texts as high as their lines.

TEST_F(NSTextViewAsHighAsItsLines, FillsTheScrollViewSoThatAPressBelowItsLinesIsOneOnIt) {
  EXPECT_EQ(view->frame(), (CGRect{0, 0, 200, 150}));
  user.click(*window, {100, 10});
  EXPECT_EQ(window->firstResponder(), view.get());
}

TEST_F(NSTextViewAsHighAsItsLines, GrowsAsItIsTypedAndTheCaretStaysInSight) {
  window->makeFirstResponder(view.get());
  for (int i = 0; i < 19; ++i) user.pressKey("\r");
  EXPECT_DOUBLE_EQ(view->frame().size.height, 20 * 15.6);
  EXPECT_DOUBLE_EQ(scrollView->contentView()->bounds().origin.y, 20 * 15.6 - 150);
  view->setString("");
  desktop.settle();
  EXPECT_EQ(view->frame().size.height, 150);
}

TEST_F(NSTextViewAsHighAsItsLines, FollowsTheSizeOfItsScrollView) {
  scrollView->setFrame({0, 0, 120, 100});
  desktop.settle();
  EXPECT_EQ(view->frame().size, (CGSize{120, 100}));
  scrollView->setHasVerticalScroller(true);
  desktop.settle();
  EXPECT_EQ(view->frame().size, scrollView->contentView()->bounds().size);
  EXPECT_LT(view->frame().size.width, 120);
}

TEST_F(NSTextViewAsHighAsItsLines, WithoutAScrollViewKeepsItsWidth) {
  const auto alone = make<NSTextView>(CGRect{0, 0, 50, 20});
  alone->setString("a\nb\nc");
  alone->setVerticallyResizable(true);
  window->contentView()->addSubview(alone);
  desktop.settle();
  EXPECT_EQ(alone->frame().size.width, 50);
  EXPECT_DOUBLE_EQ(alone->frame().size.height, 3 * 15.6);
}
