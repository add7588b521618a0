#include "tessaluna/uikit/containers/ViewWithBackground.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/unicode.h"
#include "tests/harness/FieldWorld.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;

constexpr std::uint32_t command = NSEventModifierFlagCommand,
                        setByArrows = NSEventModifierFlagNumericPad | NSEventModifierFlagFunction;
const std::string left = utf8FromScalar(NSLeftArrowFunctionKey), right = utf8FromScalar(NSRightArrowFunctionKey);

Ref<NSEvent> keyDown(std::string characters, std::uint32_t modifiers) {
  return make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                       .modifiers = modifiers,
                                       .characters = characters,
                                       .charactersIgnoringModifiers = characters});
}

// The base class's answer shows in a subview that writes down what it is asked.
struct ViewWithBackgroundTest : harness::FieldWorld {
  Ref<ViewWithBackground> view = make<ViewWithBackground>(CGRect{0, 0, 200, 50});
  Ref<harness::ProbeView> inside = make<harness::ProbeView>(CGRect{0, 0, 10, 10});

  ViewWithBackgroundTest() {
    view->addSubview(inside);
    window->contentView()->addSubview(view);
    desktop.settle();
    inside->calls.clear();
  }

  bool reachesBaseClass(const Ref<NSEvent>& event) {
    inside->calls.clear();
    EXPECT_FALSE(view->performKeyEquivalent(event));
    return inside->calls == std::vector<std::string>{"keyEquivalent"};
  }
};

TEST_F(ViewWithBackgroundTest, StartsLightGray) {
  EXPECT_EQ(view->backgroundColor(), NSColor::lightGrayColor());
  NSCoder coder(R"({"backgroundColor": "redColor", "frame": [1, 2, 3, 4]})");
  const auto archived = make<ViewWithBackground>(coder);
  EXPECT_EQ(archived->backgroundColor(), NSColor::lightGrayColor()) << "an archive does not hold the color";
  EXPECT_EQ(archived->frame(), (CGRect{1, 2, 3, 4}));
}

TEST_F(ViewWithBackgroundTest, FillsTheDirtyRectangleAndNotTheBounds) {
  view->setBackgroundColor(NSColor::colorWithSRGBRed(1, 0, 0, 1));
  const Lines lines = harness::recordingOf([&] { view->drawRect({5, 6, 7, 8}); });
  EXPECT_EQ(
      lines,
      (Lines{R"({"op":"setFillColor","color":[1,0,0,1]})", R"({"op":"save"})", R"({"op":"setBlendMode","mode":"copy"})",
             R"({"op":"fill","path":[["M",5,6],["L",12,6],["L",12,14],["L",5,14],["Z"]],"shape":["rect",5,6,7,8]})",
             R"({"op":"restore"})"}));
}

TEST_F(ViewWithBackgroundTest, WhatTheBaseClassDrawsIsOnTheFillAndGetsTheSameRectangle) {
  struct Drawing : NSView {
    using NSView::NSView;
    void drawRect(CGRect rect) override {
      NSColor::blackColor()->setFill();
      NSRectFill(rect);
    }
  };
  const auto filled = make<FilledView<Drawing>>(CGRect{0, 0, 10, 10});
  const auto expected = [] {
    for (const auto& color : {NSColor::lightGrayColor(), NSColor::blackColor()}) {
      color->setFill();
      NSRectFill({1, 2, 3, 4});
    }
  };
  EXPECT_EQ(harness::recordingOf([&] { filled->drawRect({1, 2, 3, 4}); }), harness::recordingOf(expected));
}

TEST_F(ViewWithBackgroundTest, AHalfTransparentColorLeavesItOpaque) {
  view->setBackgroundColor(NSColor::colorWithSRGBRed(1, 0, 0, 0.5));
  EXPECT_TRUE(view->isOpaque());
}

TEST_F(ViewWithBackgroundTest, AnotherColorShowsAtTheNextRedrawOnly) {
  desktop.settle();
  view->setBackgroundColor(NSColor::redColor());
  EXPECT_FALSE(view->needsDisplay());
  EXPECT_EQ(view->backgroundColor(), NSColor::redColor());
}

TEST_F(ViewWithBackgroundTest, CommandWithAnArrowGoesToAnEndOfTheLineWhileAFieldIsEdited) {
  begin("one two", 4);
  user.pressKey(NSRightArrowFunctionKey, command | setByArrows);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{7, 0}));
  user.pressKey(NSLeftArrowFunctionKey, command | setByArrows);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 0}));
  EXPECT_TRUE(inside->calls.empty()) << "the base class is not called";
  EXPECT_EQ(delegate->calls, harness::Calls{}) << "the commands go to the editor itself and not through its keys";
}

TEST_F(ViewWithBackgroundTest, TakesTheKeyAheadOfAnEquivalentOfTheHostInside) {
  begin("one two", 4);
  inside->takesKeyEquivalents = true;
  EXPECT_TRUE(view->performKeyEquivalent(keyDown(left, command)));
  EXPECT_TRUE(inside->calls.empty());
  EXPECT_TRUE(view->performKeyEquivalent(keyDown("x", command)));
  EXPECT_EQ(inside->calls.size(), 1u) << "what the base class takes is taken";
}

TEST_F(ViewWithBackgroundTest, OnlyCommandAloneCounts) {
  begin("one two", 4);
  const std::uint32_t others[] = {0,
                                  NSEventModifierFlagControl,
                                  NSEventModifierFlagOption,
                                  command | NSEventModifierFlagShift,
                                  command | NSEventModifierFlagCapsLock,
                                  command | NSEventModifierFlagControl,
                                  command | NSEventModifierFlagOption};
  for (const std::uint32_t modifiers : others)
    EXPECT_TRUE(reachesBaseClass(keyDown(left, modifiers | setByArrows))) << modifiers;
  EXPECT_TRUE(reachesBaseClass(keyDown(utf8FromScalar(NSUpArrowFunctionKey), command)));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{4, 0}));
}

TEST_F(ViewWithBackgroundTest, AKeyWithoutCharactersGoesToTheBaseClass) {
  begin("one two", 4);
  EXPECT_TRUE(reachesBaseClass(keyDown("", command)));
}

TEST_F(ViewWithBackgroundTest, TheFirstScalarDecides) {
  begin("one two", 4);
  EXPECT_TRUE(view->performKeyEquivalent(keyDown(left + "x" + right, command)));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 0}));
  EXPECT_TRUE(reachesBaseClass(keyDown("x" + right, command)));
}

TEST_F(ViewWithBackgroundTest, TheCharactersThatTheKeyTypesWithItsModifiersDecide) {
  begin("one two", 4);
  const auto event = [](const std::string& typed, const std::string& without) {
    return make<NSEvent>(NSEvent::Fields{
        .type = NSEventType::KeyDown, .modifiers = command, .characters = typed, .charactersIgnoringModifiers = without});
  };
  EXPECT_TRUE(reachesBaseClass(event("x", left)));
  EXPECT_TRUE(view->performKeyEquivalent(event(left, "x")));
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 0}));
}

TEST_F(ViewWithBackgroundTest, ATextThatIsNotAFieldEditorKeepsItsKeys) {
  const auto text = make<NSTextView>(CGRect{0, 60, 100, 40});
  window->contentView()->addSubview(text);
  text->setString("one two");
  window->makeFirstResponder(text.get());
  ASSERT_EQ(window->firstResponder(), text.get());
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command)));
  text->setFieldEditor(true);
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command))) << "a field editor without a delegate";
  text->setDelegate(field);
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command))) << "one whose field is not edited";
}

TEST_F(ViewWithBackgroundTest, AnEditorThatIsNoLongerAFieldEditorKeepsItsKeys) {
  begin("one two", 4);
  editor()->setFieldEditor(false);
  ASSERT_EQ(field->currentEditor(), editor());
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command)));
}

TEST_F(ViewWithBackgroundTest, AnEditorWithAnotherDelegateThanATextFieldKeepsItsKeys) {
  struct Delegate : NSObject, NSTextDelegate {};
  const auto other = make<Delegate>();
  begin("one two", 4);
  editor()->setDelegate(other);
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command)));
}

TEST_F(ViewWithBackgroundTest, ASubclassOfATextFieldQualifies) {
  struct SearchField : NSTextField {
    using NSTextField::NSTextField;
  };
  const auto search = make<SearchField>(CGRect{20, 120, 110, 24});
  window->contentView()->addSubview(search);
  search->setStringValue("one two");
  search->selectText(nullptr);
  EXPECT_TRUE(view->performKeyEquivalent(keyDown(right, command)));
  EXPECT_EQ(search->currentEditor()->selectedRange(), (NSRange{7, 0}));
}

TEST_F(ViewWithBackgroundTest, WithoutAWindowOrAResponderInItEveryKeyGoesToTheBaseClass) {
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command))) << "nothing is edited";
  begin("one two", 4);
  view->removeFromSuperview();
  EXPECT_TRUE(reachesBaseClass(keyDown(left, command)));
}

// An editor whose one command writes down who sent it.
class SenderProbe : public NSTextView {
 public:
  using NSTextView::NSTextView;
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void notice(NSObject* sender) { senders.push_back(sender); }
  std::vector<NSObject*> senders;
};
constexpr Selector senderProbeSelectors[] = {action<&SenderProbe::notice>("moveToEndOfLine:")};
const ClassInfo SenderProbe::staticClassInfo{
    .name = "SenderProbe", .base = &NSTextView::staticClassInfo, .selectors = senderProbeSelectors};

class SenderProbeWindow : public NSWindow {
 public:
  using NSWindow::NSWindow;
  Ref<NSText> fieldEditor(bool, NSObject*) override { return editor; }
  Ref<SenderProbe> editor = make<SenderProbe>(CGRect{});
};

TEST_F(ViewWithBackgroundTest, IsTheSenderOfTheCommand) {
  const auto probed = make<SenderProbeWindow>(CGRect{0, 0, 200, 150}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  probed->editor->setFieldEditor(true);
  field->removeFromSuperview();
  probed->contentView()->addSubview(field);
  probed->contentView()->addSubview(view);
  probed->makeKeyAndOrderFront(nullptr);
  field->selectText(nullptr);
  ASSERT_EQ(field->currentEditor(), probed->editor);
  EXPECT_TRUE(view->performKeyEquivalent(keyDown(right, command)));
  EXPECT_EQ(probed->editor->senders, std::vector<NSObject*>{view.get()});
  probed->close();
}

TEST_F(ViewWithBackgroundTest, AnAbsentColorStopsTheProgramWhenItIsDrawn) {
  view->setBackgroundColor(nullptr);
  EXPECT_DEATH(view->drawRect({0, 0, 1, 1}), "used while absent: backgroundColor");
}

}  // namespace
}  // namespace TessalunaUIKit
