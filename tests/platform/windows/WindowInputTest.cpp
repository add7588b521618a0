#include "tessaluna/platform/windows/WindowInput.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

using backend::CompositionInput;
using backend::KeyAnswer;
using backend::KeyInput;
using backend::PointerInput;
using backend::Taken;
using What = PointerInput::What;
using Log = std::vector<std::string>;
constexpr std::uint32_t left = 1, right = 2;

// A window of 200 by 150 points with a view all over it, and what a backend says, straight.
class WindowInputTest : public harness::StillWorld {
 protected:
  WindowInputTest() {
    window->contentView()->addSubview(view);
    desktop.settle();
    view->calls.clear();
  }

  WindowInput& input() { return window->windowClient().input(); }
  void pointer(PointerInput values) { input().pointer(values); }
  void click(CGPoint place, double time) {
    pointer({.what = What::Pressed, .place = place, .heldButtons = left, .time = time});
    pointer({.what = What::Released, .place = place, .time = time});
  }
  // The click counts of the presses so far.
  std::vector<int> counts() {
    std::vector<int> result;
    for (const Ref<NSEvent>& event : std::exchange(view->events, {}))
      if (event->type() == NSEventType::LeftMouseDown || event->type() == NSEventType::RightMouseDown)
        result.push_back(event->clickCount());
    return result;
  }
  Log taken() { return std::exchange(view->calls, {}); }

  Ref<NSWindow> window = showWindow();
  const Ref<harness::ProbeView> view = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
};

using Counts = std::vector<int>;

TEST_F(WindowInputTest, PlacesAreTurnedOver) {
  pointer({.what = What::Pressed, .place = {10, 20}, .heldButtons = left});
  ASSERT_EQ(view->events.size(), 1u);
  EXPECT_EQ(view->events[0]->locationInWindow(), (CGPoint{10, 130}));
  EXPECT_EQ(view->events[0]->window(), window);
}

TEST_F(WindowInputTest, PressesThatFollowSoonAndNearAreCounted) {
  click({50, 50}, 1);
  click({52, 50}, 1.3);
  click({52, 53}, 1.7);
  EXPECT_EQ(counts(), (Counts{1, 2, 3}));
  click({52, 53}, 2.3);
  EXPECT_EQ(counts(), (Counts{1})) << "too late";
  click({60, 53}, 2.4);
  EXPECT_EQ(counts(), (Counts{1})) << "too far";
  pointer({.what = What::Pressed, .place = {60, 53}, .button = 1, .heldButtons = right, .time = 2.5});
  EXPECT_EQ(counts(), (Counts{1})) << "another button";
}

TEST_F(WindowInputTest, AsFarAsTheLimitIsNear) {
  click({50, 50}, 1);
  click({54, 46}, 1.5);
  EXPECT_EQ(counts(), (Counts{1, 2}));
}

TEST_F(WindowInputTest, AClockOfInputsThatWentBackBeginsToCountAgain) {
  click({50, 50}, 5);
  click({50, 50}, 1);
  EXPECT_EQ(counts(), (Counts{1, 1}));
}

TEST_F(WindowInputTest, APressThatIsSaidTwiceIsOne) {
  const PointerInput press{.what = What::Pressed, .place = {50, 50}, .heldButtons = left, .time = 1};
  pointer(press);
  pointer(press);
  EXPECT_EQ(taken(), Log{"mouseDown"});
  pointer({.what = What::Released, .place = {50, 50}, .time = 1.1});
  EXPECT_EQ(taken(), Log{"mouseUp"});
}

TEST_F(WindowInputTest, WithoutATimeAPressIsNeverTheSameAsTheLastOne) {
  const PointerInput press{.what = What::Pressed, .place = {50, 50}, .heldButtons = left};
  pointer(press);
  pointer(press);
  EXPECT_EQ(taken(), (Log{"mouseDown", "mouseUp", "mouseDown"}));
}

TEST_F(WindowInputTest, AReleaseWithoutAPressIsNone) {
  pointer({.what = What::Released, .place = {50, 50}});
  EXPECT_EQ(taken(), Log{});
}

TEST_F(WindowInputTest, ALostReleaseComesWithTheNextMoveOutsideOfEverything) {
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left});
  pointer({.what = What::Moved, .place = {60, 50}});
  EXPECT_EQ(taken(), (Log{"mouseDown", "mouseUp"}));
  EXPECT_FALSE(NSPointInRect(view->events[1]->locationInWindow(), {-1000, -1000, 2000, 2000}));
  pointer({.what = What::Released, .place = {60, 50}});
  EXPECT_EQ(taken(), Log{}) << "it has ended already";
}

TEST_F(WindowInputTest, BeforeALostReleaseTheViewIsExited) {
  view->addTrackingArea(make<NSTrackingArea>(
      NSZeroRect, NSTrackingInVisibleRect | NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited, view));
  pointer({.what = What::Moved, .place = {40, 50}});
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left});
  pointer({.what = What::Moved, .place = {60, 50}});
  EXPECT_EQ(taken(), (Log{"mouseEntered", "mouseDown", "mouseExited", "mouseUp", "mouseEntered"}));
}

TEST_F(WindowInputTest, ALostReleaseComesBeforeTheNextPress) {
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left, .time = 1});
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left, .time = 9});
  EXPECT_EQ(taken(), (Log{"mouseDown", "mouseUp", "mouseDown"}));
}

TEST_F(WindowInputTest, ALostReleaseComesWhenThePointerLeavesOrEnters) {
  for (const What what : {What::Left, What::Entered}) {
    pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left, .time = 1});
    pointer({.what = what, .place = {50, 50}});
    EXPECT_EQ(taken(), (Log{"mouseDown", "mouseUp"}));
  }
}

TEST_F(WindowInputTest, ALostReleaseComesBeforeTheReleaseOfAnotherButton) {
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left});
  pointer({.what = What::Pressed, .place = {50, 50}, .button = 1, .heldButtons = left | right});
  taken();
  pointer({.what = What::Released, .place = {50, 50}, .button = 1, .heldButtons = 0});
  EXPECT_EQ(taken(), (Log{"mouseUp", "rightMouseUp"}));
}

TEST_F(WindowInputTest, AButtonThatThereIsNotDoesNothing) {
  for (const int button : {-1, 32, 1000}) {
    pointer({.what = What::Pressed, .place = {50, 50}, .button = button});
    pointer({.what = What::Released, .place = {50, 50}, .button = button});
  }
  EXPECT_EQ(taken(), Log{});
}

TEST_F(WindowInputTest, AButtonThatIsStillDownKeepsItsPress) {
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left});
  pointer({.what = What::Pressed, .place = {50, 50}, .button = 1, .heldButtons = left | right});
  EXPECT_EQ(taken(), (Log{"mouseDown", "rightMouseDown"}));
  pointer({.what = What::Moved, .place = {60, 50}, .heldButtons = right});
  EXPECT_EQ(taken(), (Log{"mouseUp"})) << "the right one drags on";
}

TEST_F(WindowInputTest, AButtonThatWentDownElsewhereDragsNothing) {
  view->addTrackingArea(make<NSTrackingArea>(
      NSZeroRect, NSTrackingInVisibleRect | NSTrackingActiveAlways | NSTrackingMouseMoved, refTo<NSResponder>(*view)));
  pointer({.what = What::Moved, .place = {60, 50}, .heldButtons = left});
  EXPECT_EQ(taken(), Log{"mouseMoved"});
}

TEST_F(WindowInputTest, EndedPressesAreReleasedOutsideOfEverything) {
  pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left});
  input().endPresses();
  EXPECT_EQ(taken(), (Log{"mouseDown", "mouseUp"}));
  input().endPresses();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(WindowInputTest, APointerThatRestsWhereTheWindowAppearsEntersNothing) {
  view->addTrackingArea(
      make<NSTrackingArea>(NSZeroRect, NSTrackingInVisibleRect | NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited,
                           refTo<NSResponder>(*view)));
  window->orderOut(nullptr);
  desktop.setMouseLocation({150, 150});
  window->orderFront(nullptr);
  pointer({.what = What::Entered, .place = {50, 100}});
  pointer({.what = What::Moved, .place = {50, 100}});
  pointer({.what = What::Moved, .place = {50.5, 100.25}});
  EXPECT_EQ(taken(), Log{}) << "less than a point is no way";
  pointer({.what = What::Moved, .place = {51, 100}});
  EXPECT_EQ(taken(), Log{"mouseEntered"});
}

TEST_F(WindowInputTest, APressUnderAPointerAtRestIsAPress) {
  window->setFrame({100, 100, 210, 150}, false);
  taken();
  desktop.setMouseLocation({150, 150});
  pointer({.what = What::Pressed, .place = {50, 100}, .heldButtons = left});
  EXPECT_EQ(taken(), Log{"mouseDown"});
}

TEST_F(WindowInputTest, TheWheelCountsPointsOrLines) {
  EXPECT_EQ(input().wheel({.place = {50, 50}, .points = {1, -2}, .lines = {10, 10}}), Taken::Yes);
  EXPECT_EQ(input().wheel({.place = {50, 50}, .points = {}, .lines = {0, -3}}), Taken::Yes);
  ASSERT_EQ(view->events.size(), 2u);
  EXPECT_EQ(view->events[0]->scrollingDeltaX(), 1);
  EXPECT_EQ(view->events[0]->scrollingDeltaY(), -2);
  EXPECT_EQ(view->events[1]->scrollingDeltaY(), -48);
}

TEST_F(WindowInputTest, AWheelThatNobodyWantsIsNotTaken) {
  view->setHidden(true);
  EXPECT_EQ(input().wheel({.place = {50, 50}, .points = {}, .lines = {0, -3}}), Taken::No);
}

TEST_F(WindowInputTest, AnAnnouncedKeyIsClaimedAndGivenBackIfNobodyTakesItsPress) {
  KeyInput key{.what = KeyInput::What::Announced, .text = "k", .letter = "K", .code = 75};
  EXPECT_EQ(input().key(key).taken, Taken::Yes);
  EXPECT_EQ(taken(), Log{}) << "nobody acts at an announcement";
  key.what = KeyInput::What::Pressed;
  const KeyAnswer unwanted = input().key(key);
  EXPECT_EQ(unwanted.taken, Taken::No);
  EXPECT_TRUE(unwanted.isGivenBack);

  window->makeFirstResponder(nullptr);
  view->acceptsFirst = true;
  window->makeFirstResponder(view.get());
  taken();
  key.what = KeyInput::What::Announced;
  input().key(key);
  key.what = KeyInput::What::Pressed;
  const KeyAnswer wanted = input().key(key);
  EXPECT_EQ(taken(), (Log{"keyEquivalent", "keyDown"}));
  EXPECT_EQ(wanted.taken, Taken::Yes);
  EXPECT_FALSE(wanted.isGivenBack);
}

TEST_F(WindowInputTest, AKeyThatWasNotAnnouncedIsNotGivenBack) {
  const KeyAnswer answer = input().key({.text = "k", .letter = "K", .code = 75});
  EXPECT_EQ(answer.taken, Taken::No);
  EXPECT_FALSE(answer.isGivenBack);
}

TEST_F(WindowInputTest, AnAnnouncementWhosePressNeverCameEndsWithALaterPress) {
  const auto announce = [this](std::int64_t code) {
    input().key({.what = KeyInput::What::Announced, .text = "x", .letter = "X", .code = code});
  };
  const auto press = [this](std::int64_t code) { return input().key({.text = "x", .letter = "X", .code = code}); };
  announce(1);
  announce(2);
  EXPECT_TRUE(press(2).isGivenBack);
  EXPECT_FALSE(press(1).isGivenBack) << "its announcement was before the other's";
}

TEST_F(WindowInputTest, AnnouncementsWithoutPressesAreForgottenOneDay) {
  window->setContentView(nullptr);
  for (std::int64_t code = 1; code <= 65; ++code)
    input().key({.what = KeyInput::What::Announced, .text = "x", .letter = "x", .code = code});
  EXPECT_FALSE(input().key({.text = "x", .letter = "x", .code = 1}).isGivenBack) << "the oldest of them";
  EXPECT_TRUE(input().key({.text = "x", .letter = "x", .code = 2}).isGivenBack);
}

TEST_F(WindowInputTest, AModifierKeyIsNotClaimed) {
  EXPECT_EQ(input().key({.what = KeyInput::What::Announced, .name = backend::KeyName::Shift, .code = 7}).taken, Taken::No);
}

TEST_F(WindowInputTest, AnEventMayEndItsWindow) {
  const WeakRef<NSWindow> weak = window;
  view->onCall = [this](const std::string& call) {
    if (call != "mouseDown") return;
    view->removeFromSuperview();
    window->close();
    window.reset();
    view->events.clear();
  };
  input().pointer({.what = What::Pressed, .place = {50, 50}, .heldButtons = left});
  EXPECT_TRUE(weak.expired());
}

// What stands in a field after the steps of several input methods: what is in brackets is being composed.
class WindowInputCompositionTest : public harness::StillWorld {
 protected:
  WindowInputCompositionTest() {
    window->contentView()->addSubview(field);
    field->setStringValue("ab");
    field->selectText(nullptr);
    editor().setSelectedRange({1, 0});
  }
  NSTextView& editor() { return dynamic_cast<NSTextView&>(*field->currentEditor()); }
  void step(const CompositionInput& values) { window->windowClient().input().composition(values); }
  std::string state() {
    std::u16string text = editor().text();
    if (const NSRange marked = editor().markedRange(); editor().hasMarkedText()) {
      text.insert(marked.location + marked.length, u"]");
      text.insert(marked.location, u"[");
    }
    return utf8FromUtf16(text);
  }
  std::size_t caret() { return editor().selectedRange().location; }

  const Ref<NSWindow> window = showWindow();
  const Ref<NSTextField> field = make<NSTextField>(CGRect{10, 10, 150, 24});
};

// Steps of a syllable; the last one is decided in the same step in which the next begins.
TEST_F(WindowInputCompositionTest, WhatIsDecidedComesBeforeWhatIsComposedInTheSameStep) {
  step({.composed = "ㅎ"});
  EXPECT_EQ(state(), "a[ㅎ]b");
  step({.composed = "하"});
  EXPECT_EQ(state(), "a[하]b");
  step({.committed = "한", .composed = "ㄱ"});
  EXPECT_EQ(state(), "a한[ㄱ]b");
  step({.committed = "ㄱ"});
  EXPECT_EQ(state(), "a한ㄱb");
}

// First the empty composition, then what was decided, as two steps.
TEST_F(WindowInputCompositionTest, ACompositionMayBeClearedBeforeItsTextIsDecided) {
  step({.composed = "nihao"});
  step({});
  EXPECT_EQ(state(), "ab");
  step({.committed = "你好"});
  EXPECT_EQ(state(), "a你好b");
  EXPECT_EQ(caret(), 3u);
}

// First what was decided, then an empty composition as a step of its own.
TEST_F(WindowInputCompositionTest, ACompositionMayBeClearedAfterItsTextIsDecided) {
  step({.composed = "nihao", .caret = 2});
  EXPECT_EQ(caret(), 3u);
  step({.committed = "你好"});
  EXPECT_EQ(state(), "a你好b");
  step({});
  EXPECT_EQ(state(), "a你好b");
  EXPECT_EQ(caret(), 3u);
}

// A compose key shows nothing or the keys so far, and then decides without ever clearing them.
TEST_F(WindowInputCompositionTest, AComposeKeyDecidesWithOrWithoutHavingShownAnything) {
  step({.committed = "é"});
  EXPECT_EQ(state(), "aéb");
  step({.composed = "·"});
  step({.composed = "·'"});
  EXPECT_EQ(state(), "aé[·']b");
  step({.committed = "è"});
  EXPECT_EQ(state(), "aéèb");
}

TEST_F(WindowInputCompositionTest, ACompositionThatIsGivenUpLeavesTheTextAsItWas) {
  step({.composed = "·"});
  step({});
  EXPECT_EQ(state(), "ab");
  step({});
  EXPECT_EQ(state(), "ab");
  EXPECT_EQ(caret(), 1u);
}

TEST_F(WindowInputCompositionTest, ADecisionMayReplaceTextAroundTheCaret) {
  field->setStringValue("teh end");
  editor().setSelectedRange({3, 0});
  step({.composed = "x"});
  step({.committed = "the", .replaced = CompositionInput::Range{-3, 3}});
  EXPECT_EQ(state(), "the end") << "what is composed goes first";
  step({.committed = "A", .replaced = CompositionInput::Range{-10, 1}});
  EXPECT_EQ(state(), "Ahe end") << "no place before the text";
}

TEST_F(WindowInputCompositionTest, ACaretAfterTheComposedTextIsAtItsEnd) {
  step({.composed = "xy", .caret = 99});
  EXPECT_EQ(caret(), 3u);
}

TEST_F(WindowInputCompositionTest, NothingIsComposedInATextThatHasLostTheKeysOverWhatWasDecided) {
  class Leaver : public NSObject, public NSTextFieldDelegate {
   public:
    void controlTextDidChange(const Ref<NSNotification>& notification) override {
      dynamic_cast<NSTextField&>(*notification->object()).window()->makeFirstResponder(nullptr);
    }
  };
  const auto leaver = make<Leaver>();
  field->setDelegate(leaver);
  const Ref<NSText> editor = field->currentEditor();
  step({.committed = "한", .composed = "ㄱ"});
  EXPECT_EQ(field->stringValue(), "a한b");
  EXPECT_FALSE(dynamic_cast<NSTextView&>(*editor).hasMarkedText());
}

TEST_F(WindowInputCompositionTest, IsOneStepToUndo) {
  step({.composed = "n"});
  step({.composed = "ni"});
  step({.committed = "你"});
  user.pressKey("z", NSEventModifierFlagControl);
  EXPECT_EQ(state(), "ab");
}

TEST_F(WindowInputCompositionTest, TextIsReportedWithoutWhatIsComposed) {
  step({.composed = "xyz"});
  const std::optional<backend::EditedText> text = window->windowClient().input().editedText();
  ASSERT_TRUE(text);
  EXPECT_EQ(text->text, u"ab");
  EXPECT_EQ(text->anchor, 1u);
  EXPECT_EQ(text->caret, 1u);
  // The field's upper edge is 116 points below that of the content.
  EXPECT_GE(text->caretPlace.origin.y, 116);
  EXPECT_LE(CGRectGetMaxY(text->caretPlace), 140);
}

TEST_F(WindowInputCompositionTest, WithoutATextNothingHappens) {
  window->makeFirstResponder(nullptr);
  step({.committed = "x", .composed = "y"});
  EXPECT_EQ(field->stringValue(), "ab");
  EXPECT_FALSE(window->windowClient().input().editedText());
}

}  // namespace
}  // namespace tessaluna::platform
