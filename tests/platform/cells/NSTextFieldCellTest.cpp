#include "tessaluna/platform/cells/NSTextFieldCell.h"

#include "tessaluna/platform/accessibility/AccessibleText.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tests/harness/FieldWorld.h"

using namespace tessaluna::platform;
using harness::Calls;

namespace {

// What assistive clients are told of a field's cell.
class NSTextFieldCellAccessibility : public harness::FieldWorld {
 protected:
  AccessibilityValue asked(std::string_view attribute) const {
    return accessibilityOf(field->cell())->accessibilityAttributeValue(attribute);
  }
  std::string value() const { return *asked(NSAccessibilityValueAttribute).as<std::string>(); }
};

// Edits a bit further to the right than a stock one draws.
class ShiftedCell : public NSTextFieldCell {
 public:
  using NSTextFieldCell::NSTextFieldCell;
  CGRect titleRectForBounds(CGRect bounds) const override { return NSInsetRect(bounds, 10, 0); }
  void selectWithFrame(CGRect frame, NSView& view, const Ref<NSText>& editor, const Ref<NSTextDelegate>& delegate,
                       std::size_t start, std::size_t length) override {
    NSTextFieldCell::selectWithFrame(titleRectForBounds(frame), view, editor, delegate, start, length);
  }
};

using NSTextFieldCellEditing = harness::FieldWorld;

}  // namespace

TEST_F(NSTextFieldCellEditing, ACellThatMovesItsFrameMovesTheEditor) {
  const auto cell = make<ShiftedCell>(std::string("abc"));
  cell->setEditable(true);
  field->setCell(cell);
  field->selectText(nullptr);
  // Ten points of the class's own and four of margin; a line of 15.6 points in the middle of 24.
  EXPECT_EQ(editor()->superview()->frame(), (CGRect{14, 4, 82, 16}));
}

TEST_F(NSTextFieldCellEditing, APressThatBeginsTheEditingIsTheEditors) {
  const auto cell = std::dynamic_pointer_cast<NSTextFieldCell>(field->cell());
  field->setStringValue("abc");
  const auto press = make<NSEvent>(
      NSEvent::Fields{.type = NSEventType::LeftMouseDown, .location = placeOf(2), .window = window, .clickCount = 1});
  cell->editWithFrame(field->bounds(), *field, window->fieldEditor(true, field.get()), field, press);
  ASSERT_TRUE(editor());
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 0}));
  EXPECT_EQ(window->firstResponder(), editor().get());
}

TEST_F(NSTextFieldCellEditing, TheEditorLooksLikeTheCell) {
  field->setFont(NSFont::systemFontOfSize(20));
  field->setAlignment(NSTextAlignmentRight);
  begin("");
  EXPECT_EQ(editor()->font()->pointSize(), 20);
  EXPECT_EQ(editor()->caretRectForIndex(0).size.height, 24);  // also without a character
  user.type("a");
  EXPECT_EQ(editor()->caretRectForIndex(0).origin.x, editor()->frame().size.width - 10);
  other->selectText(nullptr);
  EXPECT_EQ(std::dynamic_pointer_cast<NSTextView>(other->currentEditor())->font()->pointSize(), 13);
}

TEST_F(NSTextFieldCellAccessibility, TheValueIsWhatIsInTheEditor) {
  begin("abc");
  user.type("xy");
  EXPECT_EQ(value(), "xy");
  EXPECT_EQ(*asked(NSAccessibilityNumberOfCharactersAttribute).as<double>(), 2);
  EXPECT_EQ(*asked(NSAccessibilityRoleAttribute).as<std::string>(), "AXTextField");
  EXPECT_EQ(*asked(NSAccessibilityFocusedAttribute).as<bool>(), true);
}

TEST_F(NSTextFieldCellAccessibility, TheSelectionIsThereOnlyWhileTheFieldIsEdited) {
  EXPECT_TRUE(asked(NSAccessibilitySelectedTextRangeAttribute).isAbsent());
  const auto& cell = *accessibilityOf(field->cell());
  EXPECT_FALSE(cell.accessibilityIsAttributeSettable(NSAccessibilitySelectedTextRangeAttribute));
  begin("one two");
  editor()->setSelectedRange({4, 3});
  EXPECT_EQ(*asked(NSAccessibilitySelectedTextRangeAttribute).as<NSRange>(), (NSRange{4, 3}));
  EXPECT_EQ(*asked(NSAccessibilitySelectedTextAttribute).as<std::string>(), "two");
  EXPECT_EQ(*asked(NSAccessibilityInsertionPointLineNumberAttribute).as<double>(), 0);
  EXPECT_TRUE(cell.accessibilityIsAttributeSettable(NSAccessibilitySelectedTextRangeAttribute));
  accessibilityOf(field->cell())->accessibilitySetValue(NSRange{1, 2}, NSAccessibilitySelectedTextRangeAttribute);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 2}));
  accessibilityOf(field->cell())->accessibilitySetValue(NSRange{90, 2}, NSAccessibilitySelectedTextRangeAttribute);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{7, 0}));
}

TEST_F(NSTextFieldCellAccessibility, AValueThatIsSetMeanwhileIsInTheEditor) {
  begin("abc");
  accessibilityOf(field->cell())->accessibilitySetValue("set", NSAccessibilityValueAttribute);
  EXPECT_EQ(editor()->string(), "set");
  EXPECT_EQ(value(), "set");
}

TEST_F(NSTextFieldCellAccessibility, ThePlaceholderIsAnAttributeOfItsOwn) {
  EXPECT_TRUE(asked(NSAccessibilityPlaceholderValueAttribute).isAbsent());
  field->setPlaceholderString("Search");
  EXPECT_EQ(*asked(NSAccessibilityPlaceholderValueAttribute).as<std::string>(), "Search");
  EXPECT_EQ(value(), "");
}

TEST_F(NSTextFieldCellAccessibility, ClientsObserveTheTextFirstAndThenTheCaret) {
  begin("ab", 2);
  Calls heard;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      "", field->cell(), nullptr, [&](const Ref<NSNotification>& notification) { heard.push_back(notification->name()); });
  user.type("c");
  EXPECT_EQ(heard, (Calls{"AXValueChanged", "AXSelectedTextChanged"}));
  heard.clear();
  user.pressKey(NSLeftArrowFunctionKey);
  EXPECT_EQ(heard, (Calls{"AXSelectedTextChanged"}));
  heard.clear();
  user.pressKey(NSDeleteFunctionKey);  // the caret stays
  EXPECT_EQ(heard, (Calls{"AXValueChanged"}));
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(NSTextFieldCellAccessibility, TheEditorItselfIsNotSeen) {
  begin("abc");
  const AccessibilityElements expected{field->cell(), other->cell()};
  EXPECT_EQ(*asked(NSAccessibilityChildrenAttribute).as<AccessibilityElements>(), AccessibilityElements());
  EXPECT_EQ(*window->accessibilityChildren(), expected);
}

TEST_F(NSTextFieldCellAccessibility, TheCaretOfABackwardSelectionIsAtItsStart) {
  begin("one two", 7);
  for (int i = 0; i < 3; ++i) user.pressKey(NSLeftArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(*asked(NSAccessibilitySelectedTextRangeAttribute).as<NSRange>(), (NSRange{4, 3}));
  EXPECT_EQ(*asked(accessibilityInsertionPointAttribute).as<double>(), 4);
  editor()->setSelectedRange({4, 3});
  EXPECT_EQ(*asked(accessibilityInsertionPointAttribute).as<double>(), 7);
}

TEST_F(NSTextFieldCellAccessibility, CharactersHaveTheSameFramesWhetherTheTextIsEditedOrNot) {
  field->setStringValue("abc");
  for (const bool isEdited : {false, true}) {
    if (isEdited) field->selectText(nullptr);
    // The window is at 100, 100, and a line 15.6 points high.
    const CGRect second = frameOfAccessibleText(field->cell(), {1, 1});
    EXPECT_NEAR(second.origin.x, 100 + 20 + 7 + 6.5, 1e-9) << isEdited;
    EXPECT_NEAR(CGRectGetMidY(second), 100 + 100 + 12, 0.5) << isEdited;
    EXPECT_NEAR(second.size.width, 6.5, 1e-9) << isEdited;
    EXPECT_NEAR(second.size.height, 15.6, 1e-9) << isEdited;
    EXPECT_NEAR(frameOfAccessibleText(field->cell(), {1, 100}).size.width, 13, 1e-9) << isEdited;
    const CGRect caret = frameOfAccessibleText(field->cell(), {3, 1});
    EXPECT_NEAR(caret.origin.x, 100 + 20 + 7 + 3 * 6.5, 1e-9) << isEdited << ": after the last one";
    EXPECT_EQ(caret.size.width, 1) << isEdited;
    EXPECT_EQ(frameOfAccessibleText(field->cell(), {100, 1}), caret) << isEdited;
  }
}

TEST_F(NSTextFieldCellAccessibility, TheCharacterAtAPointIsTheOneWhoseBoxHoldsIt) {
  field->setStringValue("abc");
  const auto at = [&](CGFloat x, CGFloat y) { return accessibleTextOffsetAt(field->cell(), {100 + x, 100 + y}); };
  for (const bool isEdited : {false, true}) {
    if (isEdited) field->selectText(nullptr);
    EXPECT_EQ(at(20 + 7 + 6.4, 112), 0u) << isEdited;
    EXPECT_EQ(at(20 + 7 + 6.6, 112), 1u) << isEdited;
    EXPECT_EQ(at(20 + 7 + 19.4, 112), 2u) << isEdited;
    EXPECT_EQ(at(20 + 7 + 19.6, 112), std::nullopt) << isEdited << ": after the last one";
    EXPECT_EQ(at(20 + 3, 112), std::nullopt) << isEdited;
    EXPECT_EQ(at(20 + 9, 100 + 30), std::nullopt) << isEdited << ": above the field";
  }
  field->setStringValue("");
  EXPECT_EQ(at(28, 112), std::nullopt);
}

TEST_F(NSTextFieldCellAccessibility, ATextThatIsScrolledHasItsCharactersWhereTheyShow) {
  begin("abcdefghijklmnopqrstuvwxyz", 26);
  desktop.settle();
  // 96 points are between the margins, and the caret takes one of them.
  EXPECT_NEAR(CGRectGetMaxX(frameOfAccessibleText(field->cell(), {25, 1})), 100 + 20 + 7 + 95, 1);
  EXPECT_LT(frameOfAccessibleText(field->cell(), {0, 1}).origin.x, 100 + 20);
  EXPECT_EQ(accessibleTextOffsetAt(field->cell(), {100 + 20 + 7 + 93, 212}), 25u);
}

TEST_F(NSTextFieldCellAccessibility, ATextThatAClientWritesIsTypedIntoTheField) {
  field->setStringValue("abc");
  accessibilityOf(field->cell())->accessibilitySetValue("new words", NSAccessibilityValueAttribute);
  EXPECT_EQ(delegate->calls, (Calls{"begin", "change new words"}));
  EXPECT_EQ(field->stringValue(), "new words");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{9, 0}));
  user.pressKey("z", NSEventModifierFlagControl);
  EXPECT_EQ(field->stringValue(), "abc");
}

TEST_F(NSTextFieldCellAccessibility, ATextThatTheDelegateRefusesIsNotWritten) {
  field->setStringValue("abc");
  delegate->refusesToBegin = true;
  accessibilityOf(field->cell())->accessibilitySetValue("new words", NSAccessibilityValueAttribute);
  EXPECT_EQ(field->stringValue(), "abc");
}

TEST_F(NSTextFieldCellAccessibility, AFieldInNoWindowTakesTheTextAsItIs) {
  field->removeFromSuperview();
  accessibilityOf(field->cell())->accessibilitySetValue("new words", NSAccessibilityValueAttribute);
  EXPECT_EQ(field->stringValue(), "new words");
}
