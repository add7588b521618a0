#include "tessaluna/platform/views/TextViewSelection.h"

#include <cmath>
#include <cstdio>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tests/harness/FieldWorld.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;

namespace {

using TextViewSelectionMouse = harness::FieldWorld;

class TextViewSelectionCaret : public harness::FieldWorld {
 protected:
  // What was filled while the clock went on by the time.
  harness::Lines fills(double seconds) {
    desktop.settle();
    nativeOf(*window).forgetPaints();
    desktop.advance(seconds);
    harness::Lines all;
    for (const auto& paint : nativeOf(*window).paints())
      for (const std::string& line : paint.lines)
        if (line.starts_with(R"({"op":"fill",)")) all.push_back(line);
    return all;
  }
  CGRect clip() const { return editor()->superview()->bounds(); }
};

}  // namespace

TEST_F(TextViewSelectionMouse, TheFirstClickPlacesTheCaret) {
  field->setStringValue("one two");
  user.click(*window, placeOf(3));
  ASSERT_TRUE(editor());
  EXPECT_EQ(window->firstResponder(), editor().get());
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
  desktop.advance(1);
  user.click(*window, placeOf(5));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{5, 0}));
}

TEST_F(TextViewSelectionMouse, AClickBesideTheTextGoesToItsNearerEnd) {
  field->setStringValue("abc");
  user.click(*window, {125, 112});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
  desktop.advance(1);
  user.click(*window, {21, 101});  // on the frame
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 0}));
  EXPECT_TRUE(delegate->calls.empty());
}

TEST_F(TextViewSelectionMouse, ADragSelectsFromWhereItBegan) {
  field->setStringValue("one two");
  user.press(*window, placeOf(3));
  user.dragTo(placeOf(6));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 3}));
  user.dragTo(placeOf(1));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 2}));
  user.dragTo({500, 10});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 4}));
  user.release();
  user.dragTo(placeOf(1));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 4}));
}

TEST_F(TextViewSelectionMouse, ADoubleClickSelectsAWordAndItsDragContinuesByWords) {
  field->setStringValue("one two thr");
  user.click(*window, placeOf(5));
  user.press(*window, placeOf(5));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{4, 3}));
  user.dragTo(placeOf(9));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{4, 7}));
  user.dragTo(placeOf(1));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 7}));
  user.release();
}

TEST_F(TextViewSelectionMouse, ADoubleClickBetweenWordsSelectsTheBlanks) {
  field->setStringValue("a   b");
  user.click(*window, placeOf(2));
  user.click(*window, placeOf(2));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 3}));
}

TEST_F(TextViewSelectionMouse, AThirdClickSelectsAllAndAFourthKeepsIt) {
  field->setStringValue("one two");
  for (int i = 0; i < 3; ++i) user.click(*window, placeOf(2));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 7}));
  user.click(*window, placeOf(2));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 7}));
}

TEST_F(TextViewSelectionMouse, AShiftClickContinuesFromTheAnchor) {
  field->setStringValue("one two");
  user.click(*window, placeOf(2));
  desktop.advance(1);
  user.press(*window, placeOf(6), {.modifiers = NSEventModifierFlagShift});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 4}));
  user.dragTo(placeOf(0));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 2}));
}

TEST_F(TextViewSelectionMouse, ThePointerOverATextIsAnIBeam) {
  user.moveTo(*window, {60, 110});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::IBeam);
  user.moveTo(*window, {190, 10});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::Arrow);
  begin("abc");
  user.moveTo(*window, {60, 110});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::IBeam);
}

// The caret and what is selected, as they are drawn.

TEST_F(TextViewSelectionMouse, ADragThatRestsBeyondTheEdgeScrollsOn) {
  begin("abcdefghijklmnopqrstuvwxyz0123456789", 0);
  desktop.settle();
  const CGRect shown = editor()->visibleRect();
  user.press(*window, placeOf(2));
  user.dragTo({field->frame().origin.x + field->frame().size.width + 3, 112});
  const std::size_t before = editor()->selectedRange().length;
  desktop.advance(0.2);
  const std::size_t later = editor()->selectedRange().length;
  EXPECT_GT(later, before);
  EXPECT_GT(editor()->visibleRect().origin.x, shown.origin.x);
  desktop.advance(5);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 34})) << "up to the end";
  // And back beyond the other edge.
  user.dragTo({field->frame().origin.x - 3, 112});
  desktop.advance(5);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 2}));
  user.release();
}

TEST_F(TextViewSelectionMouse, AReleaseOrAWayBackEndsTheScrolling) {
  begin("abcdefghijklmnopqrstuvwxyz0123456789", 0);
  desktop.settle();
  const CGPoint beyond{field->frame().origin.x + field->frame().size.width + 3, 112};
  user.press(*window, placeOf(2));
  user.dragTo(beyond);
  user.dragTo(placeOf(4));
  NSRange selected = editor()->selectedRange();
  desktop.advance(2);
  EXPECT_EQ(editor()->selectedRange(), selected);
  user.dragTo(beyond);
  user.release();
  selected = editor()->selectedRange();
  desktop.advance(2);
  EXPECT_EQ(editor()->selectedRange(), selected);
}

TEST_F(TextViewSelectionMouse, AnEditingThatEndsEndsTheScrolling) {
  begin("abcdefghijklmnopqrstuvwxyz0123456789", 0);
  desktop.settle();
  const auto former = editor();
  user.press(*window, placeOf(2));
  user.dragTo({field->frame().origin.x + field->frame().size.width + 3, 112});
  window->makeFirstResponder(nullptr);
  const NSRange selected = former->selectedRange();
  desktop.advance(2);
  EXPECT_EQ(former->selectedRange(), selected);
  user.release();
}

TEST_F(TextViewSelectionMouse, ADragThatTheEditorDidNotSeeBeginSelectsNothing) {
  field->setEnabled(false);
  user.press(*window, placeOf(1));
  field->setEnabled(true);
  begin("abcdef");
  user.dragTo(placeOf(4));
  user.release();
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 6}));
}

TEST_F(TextViewSelectionMouse, AnEditorThatCannotBeSelectedTakesNoPress) {
  begin("abcdef");
  editor()->setEditable(false);
  editor()->setSelectable(false);
  for (const int button : {0, 1, 2}) {
    user.press(*window, placeOf(1), {.button = button});
    user.dragTo(placeOf(4));
    user.release();
    EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 6})) << button;
    EXPECT_EQ(desktop.openMenu(), nullptr);
  }
}

TEST_F(TextViewSelectionCaret, IsOnWholeDevicePixels) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
    SCOPED_TRACE(scale);
    desktop.setScale(scale);
    for (const std::size_t index : {1u, 2u, 3u}) {
      begin("abc", index);
      const harness::Lines lines = fills(1.0);
      ASSERT_FALSE(lines.empty());
      const std::string& line = lines.back();
      CGRect caret;
      ASSERT_EQ(std::sscanf(line.c_str() + line.find("[\"rect\""), "[\"rect\",%lf,%lf,%lf,%lf]", &caret.origin.x,
                            &caret.origin.y, &caret.size.width, &caret.size.height),
                4);
      caret = editor()->convertRectToView(caret, nullptr);
      const auto expectWhole = [&](CGFloat edge) { EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-6) << line; };
      expectWhole(caret.origin.x);
      expectWhole(caret.origin.y);
      expectWhole(caret.size.height);
      EXPECT_NEAR(caret.size.width * scale, std::floor(scale), 1e-6) << line;
    }
  }
}

TEST_F(TextViewSelectionCaret, BlinksOnTheBackendsClock) {
  begin("abc", 1);
  EXPECT_TRUE(editor()->isCaretShown());
  desktop.advance(0.5);
  EXPECT_FALSE(editor()->isCaretShown());
  desktop.advance(0.5);
  EXPECT_TRUE(editor()->isCaretShown());
}

TEST_F(TextViewSelectionCaret, ABlinkRedrawsItsPlaceAndNoMore) {
  begin("abc", 1);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  desktop.advance(0.5);
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  const auto& dirty = nativeOf(*window).paints()[0].dirty;
  ASSERT_EQ(dirty.size(), 1u);
  EXPECT_LE(dirty[0].size.width, 2);
  EXPECT_LE(dirty[0].size.height, 17);
}

TEST_F(TextViewSelectionCaret, ShowsAgainWithEveryKey) {
  begin("abc", 1);
  desktop.advance(0.5);
  user.type("x");
  EXPECT_TRUE(editor()->isCaretShown());
  desktop.advance(0.4);
  user.type("y");
  desktop.advance(0.4);
  EXPECT_TRUE(editor()->isCaretShown());
}

TEST_F(TextViewSelectionCaret, RestsWhileTheWindowIsNotTheKeyWindow) {
  begin("abc", 1);
  const auto second = showWindow({400, 100, 100, 100});
  EXPECT_FALSE(editor()->isCaretShown());
  desktop.settle();
  nativeOf(*window).forgetPaints();
  desktop.advance(3);
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_TRUE(editor()->isCaretShown());
}

TEST_F(TextViewSelectionCaret, IsShownOnlyAsLongAsTheTextCanBeEdited) {
  begin("abc", 1);
  field->setSelectable(true);
  field->setEditable(false);
  EXPECT_FALSE(editor()->isCaretShown());
  desktop.settle();
  nativeOf(*window).forgetPaints();
  desktop.advance(3);
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  field->setEditable(true);
  EXPECT_TRUE(editor()->isCaretShown());
}

TEST_F(TextViewSelectionCaret, IsNotShownBesideASelectionNorAfterTheEditing) {
  begin("abc");
  EXPECT_FALSE(editor()->isCaretShown());
  editor()->setSelectedRange({1, 0});
  const auto former = editor();
  EXPECT_TRUE(former->isCaretShown());
  window->makeFirstResponder(nullptr);
  EXPECT_FALSE(former->isCaretShown());
}

TEST_F(TextViewSelectionCaret, IsThereAsSoonAsAnEmptyFieldHasTheKeys) {
  begin("");
  EXPECT_TRUE(editor()->isCaretShown());
}

TEST_F(TextViewSelectionCaret, ASelectionsColorShowsWhetherTheKeysGoThere) {
  begin("abc");
  const auto colors = [&] {
    nativeOf(*window).forgetPaints();
    field->setNeedsDisplay(true);
    desktop.settle();
    harness::Lines all;
    for (const std::string& line : nativeOf(*window).paints().at(0).lines)
      if (line.find("electedTextBackgroundColor") != std::string::npos) all.push_back(line);
    return all;
  };
  const harness::Lines key = colors();
  ASSERT_EQ(key.size(), 1u);
  EXPECT_NE(key[0].find("\"selectedTextBackgroundColor"), std::string::npos);
  showWindow({400, 100, 100, 100});
  const harness::Lines resting = colors();
  ASSERT_EQ(resting.size(), 1u);
  EXPECT_NE(resting[0].find("unemphasizedSelectedTextBackgroundColor"), std::string::npos);
}

TEST_F(TextViewSelectionCaret, IsAlwaysInSight) {
  begin();
  const auto isInSight = [&] {
    return NSContainsRect(clip(), editor()->caretRectForIndex(editor()->selectedRange().location));
  };
  for (int i = 0; i < 40; ++i) {
    user.type("x");
    ASSERT_TRUE(isInSight()) << i;
  }
  EXPECT_GT(clip().origin.x, 100);
  user.pressKey(NSHomeFunctionKey);
  EXPECT_TRUE(isInSight());
  EXPECT_EQ(clip().origin.x, 0);
  user.pressKey(NSEndFunctionKey);
  EXPECT_TRUE(isInSight());
  for (int i = 0; i < 40; ++i) {
    user.pressKey("\x7F");
    ASSERT_TRUE(isInSight()) << i;
  }
  EXPECT_EQ(clip().origin.x, 0);
}

TEST_F(TextViewSelectionCaret, UpAndDownContinueFromTheEndOfASelectionOnTheirSide) {
  const auto view = make<NSTextView>(CGRect{0, 0, 200, 150});
  view->setString("ab\ncd\nef\ngh");
  const auto after = [&](TextMotion motion) {
    view->setSelectedRange({4, 3});
    view->move(motion);
    return view->selectedRange();
  };
  EXPECT_EQ(after(TextMotion::Up), (NSRange{1, 0}));
  EXPECT_EQ(after(TextMotion::Down), (NSRange{10, 0}));
}

// Ten characters fit on a line.
TEST_F(TextViewSelectionCaret, EndStaysOnALineThatWrapsAtABlank) {
  const auto view = make<NSTextView>(CGRect{0, 0, 66, 150});
  view->setString("one two three\nfour");
  const auto endFrom = [&](std::size_t index) {
    view->setSelectedRange({index, 0});
    view->move(TextMotion::LineEnd);
    return view->selectedRange().location;
  };
  EXPECT_EQ(endFrom(1), 7u);
  EXPECT_EQ(endFrom(7), 7u);
  EXPECT_EQ(view->caretRectForIndex(7).origin.y, view->caretRectForIndex(0).origin.y);
  EXPECT_EQ(endFrom(8), 13u) << "a paragraph's last line";
  EXPECT_EQ(endFrom(14), 18u);
  view->setSelectedRange({1, 0});
  view->moveAndModifySelection(TextMotion::LineEnd);
  view->moveAndModifySelection(TextMotion::LineEnd);
  EXPECT_EQ(view->selectedRange(), (NSRange{1, 6}));
}

TEST_F(TextViewSelectionCaret, EndShowsAtTheEndOfALineThatWrapsWithinAWord) {
  const auto view = make<NSTextView>(CGRect{0, 0, 66, 150});
  view->setString("abcdefghijklmnopqrstuvwxyz");
  view->setSelectedRange({0, 0});
  const CGRect atStart = view->caretRect();
  view->move(TextMotion::LineEnd);
  const std::size_t end = view->selectedRange().location;
  const CGRect atEnd = view->caretRect();
  EXPECT_EQ(atEnd.origin.y, atStart.origin.y);
  EXPECT_GT(atEnd.origin.x, atStart.origin.x);
  EXPECT_EQ(view->caretRectForIndex(end).origin.x, atStart.origin.x) << "the start of the next line";
  view->move(TextMotion::LineEnd);
  EXPECT_EQ(view->caretRect(), atEnd);
  view->move(TextMotion::Down);
  EXPECT_EQ(view->selectedRange(), (NSRange{2 * end, 0}));
  EXPECT_EQ(view->caretRect().origin, (CGPoint{atEnd.origin.x, atEnd.origin.y + atEnd.size.height}));
  view->move(TextMotion::Up);
  EXPECT_EQ(view->caretRect(), atEnd);
  view->doCommandBySelector("deleteToEndOfLine:");
  EXPECT_EQ(view->length(), 26u) << "nothing of the line is left";
  view->move(TextMotion::LineStart);
  EXPECT_EQ(view->selectedRange(), (NSRange{0, 0}));
  view->moveAndModifySelection(TextMotion::LineEnd);
  view->moveAndModifySelection(TextMotion::Down);
  EXPECT_EQ(view->selectedRange(), (NSRange{0, 2 * end}));
  view->move(TextMotion::Right);
  EXPECT_EQ(view->caretRect().origin.x, atStart.origin.x) << "between two lines a step leads to the lower one";
}

TEST_F(TextViewSelectionCaret, AClickAfterALineThatWrapsWithinAWordStaysOnTheLine) {
  const auto view = make<NSTextView>(CGRect{0, 0, 66, 150});
  view->setString("abcdefghijklmnopqrstuvwxyz");
  const auto shown = showWindowWith(view);
  const CGRect first = view->caretRectForIndex(0);
  user.click(*shown, view->convertPointToView({64, first.origin.y + 3}, nullptr));
  EXPECT_EQ(view->caretRect().origin.y, first.origin.y);
  EXPECT_EQ(view->selectionAffinity(), NSSelectionAffinityUpstream);
  view->setSelectedRange(view->selectedRange());
  EXPECT_EQ(view->caretRect().origin.y, first.origin.y + first.size.height);
}

TEST_F(TextViewSelectionCaret, StaysInSightWhenTheFieldIsResized) {
  begin("a text that is longer than its field is wide");
  user.pressKey(NSEndFunctionKey);
  field->setFrame({20, 100, 60, 24});
  EXPECT_EQ(clip().size.width, 46);
  user.type("x");
  EXPECT_TRUE(NSContainsRect(clip(), editor()->caretRectForIndex(editor()->length())));
  field->setFrame({20, 100, 160, 24});
  EXPECT_EQ(clip().size.width, 146);
  EXPECT_GE(editor()->frame().size.width, 146);
}

TEST_F(TextViewSelectionCaret, IsWhereTheTextsAlignmentPutsIt) {
  field->setAlignment(NSTextAlignmentRight);
  begin("ab");
  user.pressKey(NSEndFunctionKey);
  const CGFloat width = editor()->frame().size.width;
  EXPECT_EQ(width, clip().size.width);
  EXPECT_EQ(editor()->caretRectForIndex(0).origin.x, width - 13);
  EXPECT_EQ(editor()->caretRectForIndex(2).origin.x, width - 1);  // not behind the edge
  field->setAlignment(NSTextAlignmentCenter);
  begin("ab");
  field->abortEditing();
  field->selectText(nullptr);
  EXPECT_EQ(editor()->caretRectForIndex(0).origin.x, (width - 13) / 2);
}

// The delegate and the observers of the selection.

class TextViewSelectionNotification : public harness::FieldWorld {
 protected:
  TextViewSelectionNotification() { begin("one two"); }
  ~TextViewSelectionNotification() override { NSNotificationCenter::defaultCenter().removeObserver(token); }
  // The selections that were observed since this was asked last.
  std::vector<NSRange> observed() { return std::exchange(selections, {}); }

  std::vector<NSRange> selections;
  Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSTextViewDidChangeSelectionNotification, nullptr, nullptr, [this](const Ref<NSNotification>& notification) {
        selections.push_back(std::dynamic_pointer_cast<NSText>(notification->object())->selectedRange());
      });
};

TEST_F(TextViewSelectionNotification, IsPostedWhenTheTextBeforeTheCaretGetsShorter) {
  editor()->setSelectedRange({7, 0});
  observed();
  user.pressKey(U'\x7F', 0);
  EXPECT_EQ(observed(), std::vector{NSRange({6, 0})});
  user.pressKey("z", NSEventModifierFlagControl);
  EXPECT_EQ(observed(), std::vector{NSRange({7, 0})});
  field->setStringValue("on");
  EXPECT_EQ(observed(), std::vector{NSRange({2, 0})});
  field->setStringValue("");
  EXPECT_EQ(observed(), std::vector{NSRange({0, 0})});
}

TEST_F(TextViewSelectionNotification, IsPostedOnceForWhatIsTypedOverASelection) {
  editor()->setSelectedRange({4, 3});
  observed();
  user.type("x");
  EXPECT_EQ(observed(), std::vector{NSRange({5, 0})});
}

TEST_F(TextViewSelectionNotification, IsNotPostedWhereTheCaretStays) {
  editor()->setSelectedRange({7, 0});
  observed();
  field->setStringValue("two one");
  EXPECT_EQ(observed(), std::vector<NSRange>{});
}

TEST_F(TextViewSelectionNotification, IsPostedWhenSomebodyElseEditsBeforeTheCaret) {
  editor()->setSelectedRange({5, 2});
  observed();
  editor()->textStorage()->replaceCharactersInRange({0, 3}, u"a");
  EXPECT_EQ(observed(), std::vector{NSRange({3, 2})});
  editor()->textStorage()->replaceCharactersInRange({0, 0}, u"seven, ");
  EXPECT_EQ(observed(), std::vector{NSRange({10, 2})});
  editor()->textStorage()->replaceCharactersInRange({12, 0}, u", three");
  EXPECT_EQ(observed(), std::vector{NSRange({10, 9})}) << "at the end of the selection";
  editor()->textStorage()->replaceCharactersInRange({5, 14}, u"!");
  EXPECT_EQ(observed(), std::vector{NSRange({6, 0})});
}
