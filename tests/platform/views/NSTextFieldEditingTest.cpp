#include <algorithm>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSPasteboard.h"
#include "tests/harness/FieldWorld.h"
#include "tests/harness/ProbeView.h"

using namespace tessaluna::platform;
using harness::Calls;

namespace {

using NSTextFieldEditingTest = harness::FieldWorld;

constexpr const char* returnKey = "\r";
constexpr const char* escape = "\x1B";
constexpr const char* backspace = "\x7F";

}  // namespace

// Coming and going of the editor.

TEST_F(NSTextFieldEditingTest, ALabelTakesNoKeys) {
  const auto label = NSTextField::labelWithString("x");
  window->contentView()->addSubview(label);
  EXPECT_FALSE(label->acceptsFirstResponder());
  EXPECT_FALSE(window->makeFirstResponder(label.get()));
  EXPECT_EQ(label->currentEditor(), nullptr);
}

TEST_F(NSTextFieldEditingTest, TheFirstResponderIsTheWindowsFieldEditorWithAllOfTheTextSelected) {
  field->setStringValue("abc");
  EXPECT_EQ(field->currentEditor(), nullptr);
  ASSERT_TRUE(window->makeFirstResponder(field.get()));
  ASSERT_TRUE(editor());
  EXPECT_EQ(window->firstResponder(), editor().get());
  EXPECT_EQ(window->fieldEditor(false, nullptr), editor());
  EXPECT_TRUE(editor()->isFieldEditor());
  EXPECT_EQ(editor()->delegate().get(), field.get());
  EXPECT_EQ(editor()->string(), "abc");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(NSTextFieldEditingTest, TheFieldsOfAWindowShareTheEditor) {
  begin("abc");
  const auto shared = editor();
  window->makeFirstResponder(other.get());
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(other->currentEditor(), shared);
  EXPECT_TRUE(shared->isDescendantOf(other.get()));
}

TEST_F(NSTextFieldEditingTest, WhatWasTypedIsTakenOverWhenTheKeysGoElsewhere) {
  begin("abc");
  user.type("xy");
  EXPECT_EQ(field->stringValue(), "xy");
  EXPECT_EQ(field->cell()->stringValue(), "abc");
  EXPECT_TRUE(window->makeFirstResponder(nullptr));
  EXPECT_EQ(field->cell()->stringValue(), "xy");
  EXPECT_TRUE(field->subviews().empty());
  EXPECT_EQ(delegate->calls, (Calls{"begin", "change x", "change xy", "end"}));
}

TEST_F(NSTextFieldEditingTest, NobodyIsNotifiedOfABeginBeforeTheFirstChange) {
  begin("abc");
  user.pressKey(NSLeftArrowFunctionKey);
  EXPECT_EQ(delegate->calls, (Calls{"moveLeft:"}));
}

TEST_F(NSTextFieldEditingTest, ObserversHearTheSameAsTheDelegate) {
  Calls heard;
  std::vector<Ref<NSObject>> tokens;
  for (const auto name : {NSControlTextDidBeginEditingNotification, NSControlTextDidChangeNotification,
                          NSControlTextDidEndEditingNotification})
    tokens.push_back(NSNotificationCenter::defaultCenter().addObserverForName(
        name, field, nullptr, [&](const Ref<NSNotification>& notification) { heard.push_back(notification->name()); }));
  begin();
  user.type("a");
  window->makeFirstResponder(nullptr);
  for (const auto& token : tokens) NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(heard, (Calls{"NSControlTextDidBeginEditingNotification", "NSControlTextDidChangeNotification",
                          "NSControlTextDidEndEditingNotification"}));
}

TEST_F(NSTextFieldEditingTest, TheEndOfEditingMayRemoveTheViewAroundAFieldThatIsBeingRemoved) {
  const auto group = make<NSView>(CGRect{0, 0, 200, 100});
  window->contentView()->addSubview(group);
  group->addSubview(field);
  Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSControlTextDidEndEditingNotification, field, nullptr,
      [&](const Ref<NSNotification>&) { group->removeFromSuperview(); });
  begin();
  user.type("a");
  const Ref<NSView> held = field;
  field->removeFromSuperview();
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(field->superview(), nullptr);
  EXPECT_EQ(group->superview(), nullptr);
  EXPECT_EQ(field->window(), nullptr);
}

TEST_F(NSTextFieldEditingTest, ADelegateMayRefuseTheBeginOrTheEnd) {
  begin("abc");
  delegate->refusesToBegin = true;
  user.type("x");
  EXPECT_EQ(field->stringValue(), "abc");
  delegate->refusesToBegin = false;
  delegate->refusesToEnd = true;
  user.type("x");
  EXPECT_FALSE(window->makeFirstResponder(other.get()));
  EXPECT_EQ(window->firstResponder(), editor().get());
  EXPECT_EQ(other->currentEditor(), nullptr);
}

TEST_F(NSTextFieldEditingTest, ValidateTakesOverTheTextAndContinues) {
  begin("abc");
  user.type("x");
  field->validateEditing();
  EXPECT_EQ(field->cell()->stringValue(), "x");
  EXPECT_TRUE(field->currentEditor());
}

TEST_F(NSTextFieldEditingTest, AbortThrowsTheTextAwayWithoutAWord) {
  EXPECT_FALSE(field->abortEditing());
  begin("abc");
  user.type("x");
  delegate->calls.clear();
  EXPECT_TRUE(field->abortEditing());
  EXPECT_EQ(field->stringValue(), "abc");
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_TRUE(delegate->calls.empty());
}

TEST_F(NSTextFieldEditingTest, ATextThatIsSetMeanwhileIsTheEditors) {
  begin("abc");
  user.type("x");
  field->setStringValue("set");
  EXPECT_EQ(editor()->string(), "set");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{3, 0}));
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(field->stringValue(), "set");
}

TEST_F(NSTextFieldEditingTest, ANumberIsReadFromTheEditorAndSetInIt) {
  begin("abc");
  user.type("12.5");
  EXPECT_EQ(field->doubleValue(), 12.5);
  EXPECT_EQ(field->cell()->doubleValue(), 0);
  field->setIntegerValue(7);
  EXPECT_EQ(editor()->string(), "7");
  EXPECT_EQ(field->cell()->integerValue(), 7);
}

TEST_F(NSTextFieldEditingTest, AnAttributedTextThatIsSetMeanwhileIsTheEditors) {
  begin("abc");
  field->setAttributedStringValue(make<NSAttributedString>("set"));
  EXPECT_EQ(editor()->string(), "set");
  EXPECT_EQ(field->stringValue(), "set");
}

TEST_F(NSTextFieldEditingTest, AnAttributedTextThatIsNotChangedKeepsItsAttributes) {
  const auto text = make<NSAttributedString>("ab", NSAttributes{{NSUnderlineStyleAttributeName, std::int64_t{1}}});
  field->setAttributedStringValue(text);
  field->selectText(nullptr);
  window->makeFirstResponder(nullptr);
  EXPECT_TRUE(field->attributedStringValue()->isEqual(text.get()));
}

TEST_F(NSTextFieldEditingTest, AFieldThatIsDisabledHiddenOrTakenAwayEndsItsEditing) {
  other->removeFromSuperview();  // which would get the keys of a hidden one
  const auto endsWhen = [&](auto change) {
    begin("abc");
    user.type("x");
    change();
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(window->firstResponder(), window.get());
    EXPECT_EQ(delegate->calls.back(), "end");
    return field->cell()->stringValue();
  };
  EXPECT_EQ(endsWhen([&] { field->setEnabled(false); }), "x");
  EXPECT_FALSE(window->makeFirstResponder(field.get()));
  field->setEnabled(true);
  EXPECT_EQ(endsWhen([&] { field->setHidden(true); }), "x");
  field->setHidden(false);
  EXPECT_EQ(endsWhen([&] { field->removeFromSuperview(); }), "x");
}

TEST_F(NSTextFieldEditingTest, AHiddenFieldIsNotEdited) {
  window->makeFirstResponder(other.get());
  for (NSView* hidden : {static_cast<NSView*>(field.get()), field->superview()}) {
    const NSResponder* before = window->firstResponder();
    hidden->setHidden(true);
    field->selectText(nullptr);
    EXPECT_EQ(field->currentEditor(), nullptr);
    if (hidden == field.get()) {
      EXPECT_EQ(window->firstResponder(), before) << "the keys stay where they are";
    }
    EXPECT_FALSE(window->makeFirstResponder(field.get()));
    hidden->setHidden(false);
  }
  field->selectText(nullptr);
  EXPECT_NE(field->currentEditor(), nullptr);
}

TEST_F(NSTextFieldEditingTest, AnotherFontOrColorMeanwhileShowsInTheEditor) {
  begin("abc");
  const auto large = NSFont::systemFontOfSize(20);
  field->setFont(large);
  EXPECT_EQ(editor()->font(), large);
  other->setFont(NSFont::systemFontOfSize(30));
  EXPECT_EQ(editor()->font(), large);
  field->setTextColor(NSColor::redColor());
  const NSAttributes shown = editor()->textStorage()->attributesAtIndex(0);
  EXPECT_TRUE(attributeObject<NSColor>(shown, NSForegroundColorAttributeName)->isEqual(NSColor::redColor().get()));
}

TEST_F(NSTextFieldEditingTest, ASelectionDividesNoCharacterOfTwoUnits) {
  begin("a😀b");
  editor()->setSelectedRange({2, 0});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
  editor()->setSelectedRange({2, 2});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 3}));
  editor()->setSelectedRange({0, 2});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
  editor()->insertText("x", {2, 0});
  EXPECT_EQ(field->stringValue(), "ax😀b");
}

TEST_F(NSTextFieldEditingTest, AnEditByTheProgramMovesTheCompositionAlong) {
  const struct {
    const char* what;
    NSRange replaced;
    const char16_t* with;
    const char* afterwards;
  } cases[] = {{"removed before", {0, 1}, u"", "XbC"},
               {"inserted before", {0, 0}, u"12", "12aXbC"},
               {"inserted at its start", {1, 0}, u"12", "a12XbC"},
               {"inserted at its end", {3, 0}, u"12", "aX12bC"},
               {"removed after", {3, 1}, u"", "aXC"},
               {"a part of it removed", {2, 2}, u"", "aXC"},
               {"all of it removed", {0, 5}, u"", "X"}};
  for (const auto& each : cases) {
    begin("abC", 1);
    user.compose("かな");
    editor()->textStorage()->replaceCharactersInRange(each.replaced, each.with);
    user.commit("X");
    EXPECT_EQ(field->stringValue(), each.afterwards) << each.what;
    EXPECT_FALSE(editor()->hasMarkedText()) << each.what;
  }
}

TEST_F(NSTextFieldEditingTest, ATextOfTheProgramInPlaceOfTheCompositionIsNotComposed) {
  for (const char16_t* const with : {u"1", u"12", u"123"}) {
    begin("abC", 1);
    user.compose("かな");
    editor()->textStorage()->replaceCharactersInRange({1, 2}, with);
    EXPECT_FALSE(editor()->hasMarkedText());
    EXPECT_EQ(editor()->text(), u"a" + std::u16string(with) + u"bC");
  }
}

TEST_F(NSTextFieldEditingTest, OtherAttributesOfTheCompositionLeaveItMarked) {
  begin("abC", 1);
  user.compose("かな");
  editor()->textStorage()->addAttribute(NSForegroundColorAttributeName, NSColor::redColor(), {1, 2});
  editor()->textStorage()->addAttribute(NSForegroundColorAttributeName, NSColor::redColor(), {0, 5});
  EXPECT_EQ(editor()->markedRange(), (NSRange{1, 2}));
  user.commit("X");
  EXPECT_EQ(field->stringValue(), "aXbC");
}

TEST_F(NSTextFieldEditingTest, ACommandOfAMenuEndsTheCompositionFirst) {
  begin("abc", 1);
  NSPasteboard::generalPasteboard()->setString("123", NSPasteboardTypeString);
  user.compose("か");
  editor()->paste(nullptr);
  EXPECT_EQ(field->stringValue(), "aか123bc");
  EXPECT_FALSE(editor()->hasMarkedText());
  user.compose("な");
  editor()->deleteTo(TextMotion::Backward);
  EXPECT_EQ(field->stringValue(), "aか123bc");
  EXPECT_FALSE(editor()->hasMarkedText());
}

TEST_F(NSTextFieldEditingTest, AFieldThatIsMadeReadOnlyMeanwhileEndsItsEditing) {
  begin("abc");
  user.type("x");
  field->setEditable(false);
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(field->stringValue(), "x");
  EXPECT_EQ(delegate->calls.back(), "end");
}

TEST_F(NSTextFieldEditingTest, AFieldThatCanStillBeSelectedMeanwhileKeepsItsEditorAndTakesNoText) {
  field->setSelectable(true);
  begin("abc");
  field->setEditable(false);
  ASSERT_NE(field->currentEditor(), nullptr);
  user.type("x");
  EXPECT_EQ(field->stringValue(), "abc");
  field->setEditable(true);
  user.type("x");
  EXPECT_EQ(field->stringValue(), "x");
}

TEST_F(NSTextFieldEditingTest, AFieldThatCanNoLongerBeSelectedCannotBeEditedAndEndsItsEditing) {
  begin("abc");
  field->setSelectable(false);
  EXPECT_FALSE(field->isEditable());
  EXPECT_EQ(field->currentEditor(), nullptr);
  field->setSelectable(true);
  EXPECT_FALSE(field->isEditable());
}

TEST_F(NSTextFieldEditingTest, AWindowThatClosesEndsTheEditing) {
  begin("abc");
  user.type("x");
  window->close();
  EXPECT_EQ(field->stringValue(), "x");
  EXPECT_EQ(delegate->calls.back(), "end");
}

TEST_F(NSTextFieldEditingTest, AWindowThatGoesLeavesAFieldThatCanBeEditedElsewhere) {
  const auto lonely = make<NSTextField>(CGRect{0, 0, 50, 22});
  auto passing = showWindow({300, 100, 100, 50});
  passing->contentView()->addSubview(lonely);
  lonely->selectText(nullptr);
  user.type("x");
  passing->contentView()->removeTrackingArea(nullptr);
  NSApp.reset();
  passing = nullptr;
  NSApplication::sharedApplication();
  EXPECT_EQ(lonely->currentEditor(), nullptr);
  EXPECT_TRUE(lonely->subviews().empty());
  window->contentView()->addSubview(lonely);
  lonely->selectText(nullptr);
  EXPECT_TRUE(lonely->currentEditor());
}

TEST_F(NSTextFieldEditingTest, OneThatEndsMayGiveTheKeysToAThird) {
  const auto third = make<NSTextField>(CGRect{20, 20, 110, 24});
  window->contentView()->addSubview(third);
  begin("abc");
  user.type("x");
  delegate->onEnd = [&] { third->selectText(nullptr); };
  EXPECT_TRUE(window->makeFirstResponder(other.get()));
  EXPECT_EQ(third->currentEditor(), nullptr);
  EXPECT_TRUE(other->currentEditor());
  EXPECT_EQ(window->firstResponder(), other->currentEditor().get());
}

TEST_F(NSTextFieldEditingTest, AViewThatGotTheKeysInBetweenIsAskedToGiveThemUp) {
  const auto third = make<harness::ProbeView>(CGRect{20, 20, 10, 10});
  third->acceptsFirst = true;
  window->contentView()->addSubview(third);
  begin("abc");
  delegate->onEnd = [&] { window->makeFirstResponder(third.get()); };
  third->calls.clear();
  EXPECT_TRUE(window->makeFirstResponder(other.get()));
  EXPECT_EQ(third->calls, (Calls{"become", "resign"}));
  EXPECT_EQ(window->firstResponder(), other->currentEditor().get());
}

// Commands.

TEST_F(NSTextFieldEditingTest, EveryCommandIsOfferedToTheDelegateFirst) {
  begin("abc");
  delegate->onCommand = [](std::string_view selector) { return selector == "moveDown:" || selector == "moveLeft:"; };
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSUpArrowFunctionKey);
  user.pressKey(NSLeftArrowFunctionKey);
  user.pressKey(escape);
  user.pressKey(returnKey);
  EXPECT_EQ(delegate->calls, (Calls{"moveDown:", "moveUp:", "moveLeft:", "cancelOperation:", "insertNewline:", "end"}));
}

TEST_F(NSTextFieldEditingTest, ACommandThatTheDelegateTookHasNoOtherEffect) {
  begin("abc", 1);
  delegate->onCommand = [](std::string_view) { return true; };
  for (const char32_t key : {NSDownArrowFunctionKey, NSRightArrowFunctionKey, NSEndFunctionKey}) user.pressKey(key);
  user.pressKey(returnKey);
  user.pressKey("\t");
  user.pressKey(backspace);
  EXPECT_EQ(field->stringValue(), "abc");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
  EXPECT_TRUE(target->values.empty());
}

TEST_F(NSTextFieldEditingTest, ReturnTakesTheTextOverSendsTheActionAndSelectsTheText) {
  begin("abc");
  user.type("xy");
  user.pressKey(returnKey);
  EXPECT_EQ(target->values, (Calls{"xy"}));
  EXPECT_EQ(field->cell()->stringValue(), "xy");
  ASSERT_TRUE(editor());
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 2}));
  user.type("z");
  EXPECT_EQ(field->stringValue(), "z");
  EXPECT_EQ(delegate->calls, (Calls{"begin", "change x", "change xy", "insertNewline:", "end", "begin", "change z"}));
}

TEST_F(NSTextFieldEditingTest, ReturnPressesTheButtonThatHasItOnlyAfterTheFieldAndNotInPlaceOfItsAction) {
  const auto button = make<NSButton>(CGRect{20, 20, 80, 24});
  button->setKeyEquivalent("\r");
  button->setAction([&] { delegate->calls.push_back("button " + field->cell()->stringValue()); });
  window->contentView()->addSubview(button);
  begin("abc");
  user.pressKey(returnKey);
  EXPECT_EQ(delegate->calls, (Calls{"insertNewline:", "end"}));
  EXPECT_EQ(target->values, (Calls{"abc"}));

  field->setAction("");
  begin("abc");
  user.type("x");
  user.pressKey(returnKey);
  EXPECT_EQ(delegate->calls, (Calls{"begin", "change x", "insertNewline:", "end", "button x"}));

  delegate->onCommand = [](std::string_view command) { return command == "insertNewline:"; };
  begin("abc");
  user.pressKey(returnKey);
  EXPECT_EQ(delegate->calls, (Calls{"insertNewline:"}));
}

TEST_F(NSTextFieldEditingTest, AHeldReturnPressesTheButtonThatHasItOnce) {
  const auto button = make<NSButton>(CGRect{20, 20, 80, 24});
  int presses = 0;
  button->setKeyEquivalent("\r");
  button->setAction([&] { ++presses; });
  window->contentView()->addSubview(button);
  field->setAction("");
  begin("abc");
  for (const bool isRepeat : {false, true, true})
    NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                   .window = window,
                                                   .characters = "\r",
                                                   .charactersIgnoringModifiers = "\r",
                                                   .isRepeat = isRepeat}));
  EXPECT_EQ(presses, 1);
}

TEST_F(NSTextFieldEditingTest, AnActionMayTakeTheKeysElsewhereOrTheFieldAway) {
  begin("abc");
  target->onAction = [&] { other->selectText(nullptr); };
  user.pressKey(returnKey);
  EXPECT_TRUE(other->currentEditor());
  begin("abc");
  target->onAction = [&] {
    field->removeFromSuperview();
    field = nullptr;
  };
  user.pressKey(returnKey);
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSTextFieldEditingTest, TabAndBacktabGoToTheNextAndThePreviousKeyView) {
  begin("abc");
  user.type("x");
  user.pressKey("\t");
  EXPECT_EQ(field->stringValue(), "x");
  EXPECT_TRUE(other->currentEditor());
  user.pressKey("\x19", NSEventModifierFlagShift);
  EXPECT_TRUE(field->currentEditor());
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 1}));
  user.pressKey("\x19", NSEventModifierFlagShift);
  EXPECT_TRUE(other->currentEditor());  // round
}

TEST_F(NSTextFieldEditingTest, SeveralFieldsInARowAreEditedOneAfterTheOther) {
  const auto third = make<NSTextField>(CGRect{20, 20, 110, 24});
  const auto label = NSTextField::labelWithString("between");
  const auto disabled = make<NSTextField>(CGRect{20, 0, 110, 20});
  disabled->setEnabled(false);
  for (const Ref<NSTextField>& each : {label, disabled, third}) window->contentView()->addSubview(each);
  const std::vector<Ref<NSTextField>> fields{field, other, third};
  const auto edited = [&] {
    std::vector<bool> result;
    for (const Ref<NSTextField>& each : {field, other, third, label, disabled})
      result.push_back(each->currentEditor() != nullptr);
    return result;
  };
  for (const Ref<NSTextField>& each : fields) each->setStringValue("old");
  begin("old");
  user.type("1");
  user.pressKey("\t");
  EXPECT_EQ(edited(), (std::vector<bool>{false, true, false, false, false}));
  user.type("2");
  user.pressKey("\t");
  EXPECT_EQ(edited(), (std::vector<bool>{false, false, true, false, false}));
  user.type("3");
  user.pressKey("\x19", NSEventModifierFlagShift);
  EXPECT_EQ(edited(), (std::vector<bool>{false, true, false, false, false}));
  user.pressKey("\t");
  user.pressKey("\t");  // round
  EXPECT_EQ(edited(), (std::vector<bool>{true, false, false, false, false}));
  for (std::size_t i = 0; i < fields.size(); ++i) EXPECT_EQ(fields[i]->stringValue(), std::to_string(i + 1));
  EXPECT_EQ(delegate->calls, (harness::Calls{"begin", "change 1", "insertTab:", "end"}));
}

TEST_F(NSTextFieldEditingTest, TabInTheOnlyFieldSelectsItsText) {
  other->removeFromSuperview();
  begin("abc", 1);
  user.pressKey("\t");
  ASSERT_TRUE(editor());
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(NSTextFieldEditingTest, AKeyThatIsNotACommandOfTheTextContinues) {
  begin("abc");
  const int before = nativeOf(*window).eventsNotTaken();
  user.pressKey(escape);
  user.pressKey(NSF1FunctionKey);
  user.pressKey("g", NSEventModifierFlagControl);
  user.pressKey("f", NSEventModifierFlagOption);
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), before + 4);
  EXPECT_EQ(field->stringValue(), "abc");
}

TEST_F(NSTextFieldEditingTest, AThousandKeysAllArrive) {
  begin();
  std::string all;
  for (int i = 0; i < 1000; ++i) {
    const std::string key(1, static_cast<char>('a' + i % 26));
    user.pressKey(key);
    desktop.advance(0.005);
    all += key;
  }
  EXPECT_EQ(field->stringValue(), all);
}

// The look.

TEST_F(NSTextFieldEditingTest, TheTextIsDrawnOnceAndWhereItWasBefore) {
  desktop.setPictures(tessaluna::backend::headless::Pictures::Painted);
  const auto pictured = showWindow({300, 100, 200, 150});
  pictured->contentView()->addSubview(field);
  field->setStringValue("abc");
  other->selectText(nullptr);
  // What of the text is black, in device pixels of the window's picture.
  const auto dark = [&] {
    desktop.settle();
    std::vector<std::pair<int, int>> pixels;
    const auto& picture = *nativeOf(*pictured).picture();
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 25; x < 60; ++x)
        if (y > 28 && y < 48 && (picture.pixel(x, y) & 0xFF) < 0x40) pixels.push_back({x, y});
    return pixels;
  };
  const auto before = dark();
  EXPECT_FALSE(before.empty());
  field->selectText(nullptr);
  editor()->setSelectedRange({3, 0});
  desktop.advance(0.6);  // the caret is off
  EXPECT_EQ(dark(), before);
}

TEST_F(NSTextFieldEditingTest, OfAPlaceholderBesideTheEditorNothingStaysWhenTextIsTyped) {
  field->setFrame({20, 100, 16, 24});  // room for 2 points of the ellipsis
  field->setPlaceholderString("Title");
  begin();
  desktop.settle();
  nativeOf(*window).forgetPaints();
  user.type("a");
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().back().dirty, std::vector{field->frame()});
}

TEST_F(NSTextFieldEditingTest, ALongTextStaysOnOneLineAfterTheEditing) {
  begin("a long text that is wider than its field");
  window->makeFirstResponder(nullptr);
  nativeOf(*window).forgetPaints();
  field->setNeedsDisplay(true);
  desktop.settle();
  std::size_t lines = 0;
  for (const std::string& line : nativeOf(*window).paints().at(0).lines)
    if (line.starts_with(R"({"op":"glyphs")")) {
      ++lines;
      EXPECT_EQ(std::count(line.begin(), line.end(), '['), 41);  // one for each character, and one around them
    }
  EXPECT_EQ(lines, 1u);
}

TEST_F(NSTextFieldEditingTest, ARingShowsWhereTheKeysGo) {
  const auto rings = [&] {
    std::size_t count = 0;
    for (const auto& paint : nativeOf(*window).paints())
      for (const std::string& line : paint.lines)
        if (line.find("keyboardFocusIndicatorColor") != std::string::npos) ++count;
    nativeOf(*window).forgetPaints();
    return count;
  };
  desktop.settle();
  EXPECT_EQ(rings(), 0u);
  begin("abc");
  desktop.settle();
  EXPECT_EQ(rings(), 1u);
  const auto isWholeFieldDrawn = [&] {
    for (const auto& paint : nativeOf(*window).paints())
      for (const CGRect& rect : paint.dirty)
        if (NSContainsRect(rect, field->frame())) return true;
    return false;
  };
  const auto second = showWindow({400, 100, 100, 100});
  desktop.settle();
  EXPECT_TRUE(isWholeFieldDrawn());
  EXPECT_EQ(rings(), 0u);
  window->makeKeyAndOrderFront(nullptr);
  desktop.settle();
  EXPECT_TRUE(isWholeFieldDrawn());
  EXPECT_EQ(rings(), 1u);
}

TEST_F(NSTextFieldEditingTest, AFieldThatIsDisabledFromAboveIsEditedNoLonger) {
  begin("ab");
  window->contentView()->setEnablesControls(false);
  EXPECT_EQ(editor(), nullptr);
  field->selectText(nullptr);
  EXPECT_EQ(editor(), nullptr);
  window->contentView()->setEnablesControls(true);
  field->selectText(nullptr);
  EXPECT_NE(editor(), nullptr);
}

TEST_F(NSTextFieldEditingTest, AssistiveClientsObserveAFieldThatIsDisabledFromAbove) {
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityEnabledChangedNotification, field->cell(), nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  window->contentView()->setEnablesControls(false);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(changes, 1);
}

TEST_F(NSTextFieldEditingTest, EnablingAFieldThatIsEditedLeavesItsEditor) {
  begin("abc");
  field->setEnabled(true);
  EXPECT_EQ(window->firstResponder(), editor().get());
  EXPECT_EQ(field->currentEditor(), editor());
  ASSERT_TRUE(editor());
}

TEST_F(NSTextFieldEditingTest, SelectTextSelectsAllOfATextThatIsBeingEdited) {
  begin("abc");
  editor()->setSelectedRange({1, 0});
  field->selectText(nullptr);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(NSTextFieldEditingTest, ThePlaceholderShowsAsLongAsNothingIsTyped) {
  field->setPlaceholderString("Q");
  begin();
  const auto shows = [&](const char* glyph) {
    nativeOf(*window).forgetPaints();
    field->setNeedsDisplay(true);
    desktop.settle();
    for (const std::string& line : nativeOf(*window).paints().at(0).lines)
      if (line.find("\"glyphs\":[[" + std::string(glyph) + ",") != std::string::npos) return true;
    return false;
  };
  EXPECT_TRUE(shows("81"));
  user.type("z");
  EXPECT_FALSE(shows("81"));
  EXPECT_TRUE(shows("122"));
}

// Delegates that interfere.

TEST_F(NSTextFieldEditingTest, ADelegateThatBeginsTheNextFieldWhenTheWindowEndsTheEditingKeepsTheKeyboardThere) {
  begin("abc");
  delegate->onEnd = [&] { other->selectText(nullptr); };
  window->endEditingFor(nullptr);
  ASSERT_NE(other->currentEditor(), nullptr);
  EXPECT_EQ(window->firstResponder(), other->currentEditor().get());
}

TEST_F(NSTextFieldEditingTest, ADelegateThatReplacesTheTextWhenEditingBeginsIsTypedInto) {
  begin("abc", 3);
  delegate->onBegin = [&] { field->setStringValue("x"); };
  user.type("y");
  EXPECT_EQ(field->stringValue(), "xy");
}

TEST_F(NSTextFieldEditingTest, ADelegateThatClearsTheTextWhenACompositionBeginsLosesNothing) {
  begin("abc", 3);
  delegate->onBegin = [&] { field->setStringValue(""); };
  editor()->setMarkedText("k", {1, 0}, {NSNotFound, 0});
  editor()->insertText("か");
  EXPECT_EQ(field->stringValue(), "か");
}

TEST_F(NSTextFieldEditingTest, ADelegateThatAlwaysTakesTheKeysBackKeepsThem) {
  begin("abc");
  delegate->onEnd = [&] { field->selectText(nullptr); };
  EXPECT_FALSE(window->makeFirstResponder(other.get()));
  EXPECT_NE(field->currentEditor(), nullptr);
  user.type("z");
  EXPECT_EQ(field->stringValue(), "z");
  delegate->onEnd = nullptr;
}

TEST_F(NSTextFieldEditingTest, AFieldThatIsEditedAgainWithinItsActionAndThenHiddenLetsGoOfTheEditor) {
  begin("abc");
  target->onAction = [&] {
    field->selectText(nullptr);
    field->setHidden(true);
  };
  user.type("q");
  user.pressKey(returnKey);
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(field->stringValue(), "q");
  EXPECT_TRUE(field->subviews().empty());
}

TEST_F(NSTextFieldEditingTest, HidingAViewAboveTheFieldEndsItsEditing) {
  begin("abc");
  user.type("q");
  window->contentView()->setHidden(true);
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(field->stringValue(), "q");
}
