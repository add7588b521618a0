#include "tessaluna/platform/cells/NSCell.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "tessaluna/platform/cells/NSButtonCell.h"
#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tests/harness/FieldWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::only;
using harness::recordingOf;

namespace {

class NSCellTest : public harness::StillWorld {
 protected:
  Ref<NSCell> cell = make<NSCell>();
};

// Holds a number from 0 to 10, as a slider's would.
class LimitedCell : public NSCell {
 public:
  using NSCell::NSCell;
  void setObjectValue(Ref<NSObject> value) override {
    NSCell::setObjectValue(make<NSNumber>(std::clamp(doubleOf(value.get()), 0.0, 10.0)));
  }
};

using NSCellCopying = harness::FieldWorld;

}  // namespace

// The value.

TEST_F(NSCellTest, StartsWithoutAValue) {
  EXPECT_EQ(cell->objectValue(), nullptr);
  EXPECT_EQ(cell->stringValue(), "");
  EXPECT_EQ(cell->doubleValue(), 0);
  EXPECT_EQ(cell->integerValue(), 0);
  EXPECT_EQ(cell->attributedStringValue()->length(), 0u);
}

TEST_F(NSCellTest, ATextReadsAsTheNumberThatItBeginsWith) {
  cell->setStringValue(" 12.75 minutes");
  EXPECT_EQ(cell->doubleValue(), 12.75);
  EXPECT_EQ(cell->floatValue(), 12.75f);
  EXPECT_EQ(cell->integerValue(), 12);
  EXPECT_TRUE(cell->objectValue()->isEqual(make<NSString>(" 12.75 minutes").get()));
}

TEST_F(NSCellTest, ANumberReadsAsItsShortestText) {
  cell->setDoubleValue(0.1);
  EXPECT_EQ(cell->stringValue(), "0.1");
  EXPECT_EQ(cell->attributedStringValue()->string(), "0.1");
  cell->setDoubleValue(-0.0);
  EXPECT_EQ(cell->stringValue(), "0");
  cell->setFloatValue(0.5f);
  EXPECT_EQ(cell->stringValue(), "0.5");
  EXPECT_EQ(cell->integerValue(), 0);
  cell->setFloatValue(0.1f);
  EXPECT_EQ(cell->stringValue(), "0.1");
  EXPECT_EQ(cell->floatValue(), 0.1f);
}

TEST_F(NSCellTest, WholeNumbersAreKeptExactly) {
  constexpr std::int64_t odd = (std::int64_t{1} << 60) + 1;
  cell->setIntegerValue(odd);
  EXPECT_EQ(cell->integerValue(), odd);
  EXPECT_EQ(cell->stringValue(), "1152921504606846977");
}

TEST_F(NSCellTest, AFloatIsReadInSinglePrecision) {
  cell->setDoubleValue(16777217);  // no float is this
  EXPECT_EQ(cell->floatValue(), 16777216.0f);
}

TEST_F(NSCellTest, AnObjectOfAnyOtherClassIsKeptAndReadsAsNothing) {
  const auto other = make<NSObject>();
  cell->setObjectValue(other);
  EXPECT_EQ(cell->objectValue(), other);
  EXPECT_EQ(cell->stringValue(), "");
  EXPECT_EQ(cell->doubleValue(), 0);
}

TEST_F(NSCellTest, AnAttributedTextKeepsItsAttributesUntilAPlainOneIsSet) {
  const auto red = make<NSAttributedString>("7 red", NSAttributes{{NSForegroundColorAttributeName, NSColor::redColor()}});
  cell->setAttributedStringValue(red);
  EXPECT_EQ(cell->attributedStringValue(), red);
  EXPECT_EQ(cell->objectValue(), red);
  EXPECT_EQ(cell->stringValue(), "7 red");
  EXPECT_EQ(cell->integerValue(), 7);
  cell->setStringValue("plain");
  EXPECT_NE(attributeObject<NSColor>(cell->attributedStringValue()->attributesAtIndex(0), NSForegroundColorAttributeName),
            NSColor::redColor());
}

TEST_F(NSCellTest, EverySetterGoesThroughTheObject) {
  const auto limited = make<LimitedCell>();
  limited->setDoubleValue(20);
  EXPECT_EQ(limited->doubleValue(), 10);
  limited->setStringValue("-3");
  EXPECT_EQ(limited->integerValue(), 0);
  limited->setIntegerValue(7);
  EXPECT_EQ(limited->stringValue(), "7");
  limited->setAttributedStringValue(make<NSAttributedString>("8"));
  EXPECT_EQ(limited->floatValue(), 8);
}

TEST_F(NSCellTest, TheTitleIsTheValuesText) {
  cell->setTitle("Album");
  EXPECT_EQ(cell->stringValue(), "Album");
  cell->setIntegerValue(3);
  EXPECT_EQ(cell->title(), "3");
}

TEST_F(NSCellTest, AButtonCellsValueIsItsStateBesideItsTitle) {
  const auto button = make<NSButtonCell>("Play");
  EXPECT_EQ(button->integerValue(), 0);
  button->setState(NSControlStateValueMixed);
  EXPECT_EQ(button->integerValue(), -1);
  button->setStringValue("1");
  EXPECT_EQ(button->state(), NSControlStateValueOn);
  button->setDoubleValue(-0.5);
  EXPECT_EQ(button->state(), NSControlStateValueMixed);
  button->setObjectValue(nullptr);
  EXPECT_EQ(button->state(), NSControlStateValueOff);
  EXPECT_EQ(button->title(), "Play");
}

// The border.

TEST_F(NSCellTest, ABorderAndABezelTakeEachOtherAway) {
  cell->setBordered(true);
  cell->setBezeled(true);
  EXPECT_TRUE(cell->isBezeled());
  EXPECT_FALSE(cell->isBordered());
  cell->setBordered(false);
  EXPECT_FALSE(cell->isBezeled());
  cell->setBordered(true);
  cell->setBezeled(false);
  EXPECT_FALSE(cell->isBordered());
}

TEST_F(NSCellTest, ABorderIsALineInsideTheFrame) {
  NSView view(CGRect{0, 0, 30, 20});
  const auto lines = [&] { return only("stroke", recordingOf([&] { cell->drawWithFrame({0, 0, 30, 20}, view); })); };
  EXPECT_TRUE(lines().empty());
  cell->setBordered(true);
  const auto line = lines();
  EXPECT_EQ(line.size(), 1u);
  cell->setBezeled(true);
  EXPECT_EQ(lines().size(), 1u);
}

TEST_F(NSCellTest, ATextFieldCellLeavesRoomForItsBorder) {
  const auto text = make<NSTextFieldCell>("x");
  const CGSize plain = text->cellSize();
  text->setBordered(true);
  EXPECT_EQ(text->cellSize(), (CGSize{plain.width + 2, plain.height + 2}));
  text->setBezeled(true);
  EXPECT_EQ(text->cellSize(), (CGSize{plain.width + 6, plain.height + 6}));
}

TEST_F(NSCellTest, AButtonCellWithoutABorderDrawsItsTitleAlone) {
  NSView view(CGRect{0, 0, 60, 20});
  const auto button = make<NSButtonCell>("x");
  const auto drawn = [&] { return recordingOf([&] { button->drawWithFrame({0, 0, 60, 20}, view); }); };
  EXPECT_FALSE(only("stroke", drawn()).empty());
  button->setBordered(false);
  EXPECT_TRUE(only("stroke", drawn()).empty());
  EXPECT_EQ(only("glyphs", drawn()).size(), 1u);
}

// When the action is sent.

TEST_F(NSCellTest, SendActionOnReturnsTheEarlierMask) {
  EXPECT_EQ(cell->sendActionOn(NSEventMaskLeftMouseDown), NSEventMaskLeftMouseUp);
  EXPECT_EQ(cell->sendActionOn(NSEventMaskAny), NSEventMaskLeftMouseDown);
  EXPECT_EQ(cell->sendActionOn(0), NSEventMaskAny);
}

TEST_F(NSCellTest, AContinuousCellIsOneThatSendsWithTheDrags) {
  EXPECT_FALSE(cell->isContinuous());
  cell->setContinuous(true);
  EXPECT_TRUE(cell->isContinuous());
  EXPECT_EQ(cell->sendActionOn(NSEventMaskLeftMouseDown | NSEventMaskLeftMouseDragged),
            NSEventMaskLeftMouseUp | NSEventMaskLeftMouseDragged);
  EXPECT_TRUE(cell->isContinuous());
  cell->setContinuous(false);
  EXPECT_EQ(cell->sendActionOn(0), NSEventMaskLeftMouseDown);
}

// Copies.

TEST_F(NSCellTest, ACopyHasTheValueAndTheLookAndIsInNoView) {
  NSView view(NSZeroRect);
  cell->setControlView(&view);
  cell->setMouseDownFlags(NSEventModifierFlagShift);
  cell->setEnabled(false);
  cell->setHighlighted(true);
  cell->setState(NSControlStateValueMixed);
  cell->setTag(7);
  cell->setStringValue("text");
  cell->setFont(NSFont::systemFontOfSize(20));
  cell->setAlignment(NSTextAlignmentRight);
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  cell->setBackgroundStyle(NSBackgroundStyleDark);
  cell->setImage(make<NSImage>(CGSize{1, 1}));
  cell->setBezeled(true);
  cell->sendActionOn(NSEventMaskLeftMouseDown);
  const Ref<NSCell> copy = cell->copy();
  EXPECT_EQ(copy->controlView(), nullptr);
  EXPECT_EQ(copy->mouseDownFlags(), 0u);
  EXPECT_FALSE(copy->isEnabled());
  EXPECT_TRUE(copy->isHighlighted());
  EXPECT_EQ(copy->state(), NSControlStateValueMixed);
  EXPECT_EQ(copy->tag(), 7);
  EXPECT_EQ(copy->objectValue(), cell->objectValue());
  EXPECT_EQ(copy->font(), cell->font());
  EXPECT_EQ(copy->alignment(), NSTextAlignmentRight);
  EXPECT_EQ(copy->lineBreakMode(), NSLineBreakByTruncatingTail);
  EXPECT_EQ(copy->backgroundStyle(), NSBackgroundStyleDark);
  EXPECT_EQ(copy->image(), cell->image());
  EXPECT_TRUE(copy->isBezeled());
  EXPECT_EQ(copy->sendActionOn(0), NSEventMaskLeftMouseDown);
}

TEST_F(NSCellTest, ACopyIsIndependent) {
  cell->setStringValue("one");
  const Ref<NSCell> copy = cell->copy();
  copy->setStringValue("two");
  copy->setEnabled(false);
  EXPECT_EQ(cell->stringValue(), "one");
  EXPECT_TRUE(cell->isEnabled());
}

TEST_F(NSCellTest, ACopyOfAButtonCellIsAButtonCell) {
  const auto button = make<NSButtonCell>("Play");
  button->setKeyEquivalent("p");
  button->setKeyEquivalentModifierMask(NSEventModifierFlagCommand);
  button->setButtonType(NSButtonType::Toggle);
  const auto copy = std::dynamic_pointer_cast<NSButtonCell>(button->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->title(), "Play");
  EXPECT_EQ(copy->keyEquivalent(), "p");
  EXPECT_EQ(copy->keyEquivalentModifierMask(), std::uint32_t{NSEventModifierFlagCommand});
  EXPECT_EQ(copy->buttonType(), NSButtonType::Toggle);
  EXPECT_TRUE(copy->isBordered());
}

TEST_F(NSCellCopying, ACopyOfATextFieldCellIsNotEdited) {
  const auto cell = std::dynamic_pointer_cast<NSTextFieldCell>(field->cell());
  cell->setTextColor(NSColor::redColor());
  cell->setPlaceholderString("Search");
  begin("abc");
  user.type("xy");
  const auto copy = std::dynamic_pointer_cast<NSTextFieldCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->textColor(), NSColor::redColor());
  EXPECT_EQ(copy->placeholderString(), "Search");
  EXPECT_TRUE(copy->isEditable());
  EXPECT_EQ(*cell->accessibilityValue().as<std::string>(), "xy");
  EXPECT_EQ(*copy->accessibilityValue().as<std::string>(), "abc");
  EXPECT_FALSE(copy->accessibilityIsAttributeSettable(NSAccessibilitySelectedTextRangeAttribute));
}
