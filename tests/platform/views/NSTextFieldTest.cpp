#include "tessaluna/platform/views/NSTextField.h"

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using harness::recordingOf;

namespace {

class NSTextFieldTest : public harness::StillWorld {
 protected:
  static Lines drawn(NSControl& control) {
    return recordingOf([&] {
      NSGraphicsContext::currentContext()->setFlipped(true);
      control.drawRect(control.bounds());
    });
  }
};

}  // namespace

TEST_F(NSTextFieldTest, ALabelIsAsLargeAsItsTextWithAMarginBeside) {
  const auto label = NSTextField::labelWithString("abcd");
  EXPECT_EQ(label->frame().size.width, 4 * 6.5 + 4);
  EXPECT_DOUBLE_EQ(label->frame().size.height, 13 * 1.2);
  EXPECT_FALSE(label->isEditable());
  EXPECT_FALSE(label->isSelectable());
}

TEST_F(NSTextFieldTest, ALabelDrawsItsTextAndNothingElse) {
  const auto label = NSTextField::labelWithString("ab");
  const Lines lines = drawn(*label);
  EXPECT_TRUE(only("fill", lines).empty());
  EXPECT_EQ(only("glyphs", lines), Lines{R"({"op":"glyphs","glyphs":[[97,0,0],[98,6.5,0]]})"});
  EXPECT_EQ(only("concat", lines), Lines{R"({"op":"concat","transform":[1,0,0,-1,2,11.700000000000001]})"});
}

TEST_F(NSTextFieldTest, ALabelAtItsOwnSizeNeverWrapsOrTruncatesWhateverItsFont) {
  for (const CGFloat size : {9.1, 10.7, 11.3, 12.9, 17.77}) {
    const auto label = NSTextField::labelWithString("Seventeen letters");
    label->setFont(NSFont::systemFontOfSize(size));
    label->setFrame({{0.1, 0.7}, label->intrinsicContentSize()});
    const Lines glyphs = only("glyphs", drawn(*label));
    ASSERT_EQ(glyphs.size(), 1u) << size;
    EXPECT_EQ(std::count(glyphs[0].begin(), glyphs[0].end(), '['), 18) << size;
  }
}

TEST_F(NSTextFieldTest, AFieldHasAFrameAndABackground) {
  const auto field = make<NSTextField>(CGRect{0, 0, 100, 22});
  EXPECT_TRUE(field->isEditable());
  const Lines lines = drawn(*field);
  EXPECT_EQ(only("fill", lines).size(), 1u);
  EXPECT_EQ(only("stroke", lines).size(), 1u);
  field->setBezeled(false);
  field->setDrawsBackground(false);
  EXPECT_TRUE(drawn(*field).empty());
}

TEST_F(NSTextFieldTest, AnEmptyFieldShowsItsPlaceholderInTheColorOfPlaceholders) {
  const auto field = make<NSTextField>(CGRect{0, 0, 100, 22});
  field->setPlaceholderString("x");
  desktop.setSystemColor(tessaluna::backend::SystemColor::PlaceholderText, {0.25, 0.5, 0.75, 1});
  EXPECT_EQ(only("glyphs", drawn(*field)), Lines{R"({"op":"glyphs","glyphs":[[120,0,0]]})"});
  EXPECT_EQ(only("setFillColor", drawn(*field)).back(),
            R"({"op":"setFillColor","color":[0.25,0.5,0.75,1],"named":"placeholderTextColor"})");
  field->setStringValue("y");
  EXPECT_EQ(only("glyphs", drawn(*field)), Lines{R"({"op":"glyphs","glyphs":[[121,0,0]]})"});
}

TEST_F(NSTextFieldTest, APlaceholderTooLongForAFieldThatClipsIsShortened) {
  const auto field = make<NSTextField>(CGRect{0, 0, 40, 22});
  field->cell()->setLineBreakMode(NSLineBreakByClipping);
  field->setPlaceholderString("wwwwwwww");
  constexpr std::string_view ellipsis = "[8230,";
  EXPECT_NE(only("glyphs", drawn(*field)).back().find(ellipsis), std::string::npos);
  field->setStringValue("wwwwwwww");
  EXPECT_EQ(only("glyphs", drawn(*field)).back().find(ellipsis), std::string::npos);
}

TEST_F(NSTextFieldTest, AFieldNarrowerThanItsMarginsShowsNoPlaceholder) {
  const auto field = make<NSTextField>(CGRect{0, 0, 9, 22});
  field->setPlaceholderString("x");
  EXPECT_EQ(only("glyphs", drawn(*field)), Lines{});
}

TEST_F(NSTextFieldTest, OneToWriteInHasAHeightButNoWidthOfItsOwn) {
  const auto field = make<NSTextField>(CGRect{0, 0, 120, 50});
  field->setStringValue("x");
  EXPECT_EQ(field->intrinsicContentSize(), (CGSize{NSView::noIntrinsicMetric, field->cell()->cellSize().height}));
  field->setEditable(false);
  EXPECT_EQ(field->intrinsicContentSize(), field->cell()->cellSize());
}

TEST_F(NSTextFieldTest, TheTextsColorFollowsEnabledAndTheGroundUnlessItHasItsOwn) {
  const auto label = NSTextField::labelWithString("x");
  const auto colorOf = [&] {
    const auto text = label->attributedStringValue();
    return attributeObject<NSColor>(text->attributesAtIndex(0), NSForegroundColorAttributeName);
  };
  EXPECT_EQ(colorOf(), NSColor::controlTextColor());
  label->cell()->setBackgroundStyle(NSBackgroundStyleDark);
  EXPECT_EQ(colorOf(), NSColor::alternateSelectedControlTextColor());
  label->setTextColor(NSColor::redColor());
  EXPECT_EQ(colorOf(), NSColor::redColor());
  label->setEnabled(false);
  EXPECT_TRUE(colorOf()->isEqual(NSColor::alternateSelectedControlTextColor()->colorWithAlphaComponent(0.6).get()));
  label->cell()->setBackgroundStyle(NSBackgroundStyleLight);
  EXPECT_EQ(colorOf(), NSColor::disabledControlTextColor());
}

TEST_F(NSTextFieldTest, AnAttributedTextKeepsItsAttributesUntilAPlainOneIsSet) {
  const auto label = NSTextField::labelWithString("x");
  label->setAttributedStringValue(
      make<NSAttributedString>("ab", NSAttributes{{NSFontAttributeName, NSFont::systemFontOfSize(20)}}));
  EXPECT_EQ(label->stringValue(), "ab");
  EXPECT_EQ(label->intrinsicContentSize(), (CGSize{24, 24}));
  label->setStringValue("abc");
  EXPECT_EQ(label->intrinsicContentSize().width, 3 * 6.5 + 4);
}

TEST_F(NSTextFieldTest, EveryChangeAsksForARedraw) {
  const auto label = NSTextField::labelWithString("x");
  const auto window = showWindowWith(label);
  const auto changes = [&](auto change) {
    desktop.settle();
    EXPECT_FALSE(label->needsDisplay());
    change();
    return label->needsDisplay();
  };
  EXPECT_TRUE(changes([&] { label->setStringValue("y"); }));
  EXPECT_TRUE(changes([&] { label->setTextColor(NSColor::redColor()); }));
  EXPECT_TRUE(changes([&] { label->setAlignment(NSTextAlignmentRight); }));
  EXPECT_TRUE(changes([&] { label->setLineBreakMode(NSLineBreakByTruncatingTail); }));
  EXPECT_TRUE(changes([&] { label->setFont(NSFont::systemFontOfSize(9)); }));
  EXPECT_TRUE(changes([&] { label->setBezeled(true); }));
}

TEST_F(NSTextFieldTest, ALabelPassesThePressOnAndASelectableOneKeepsIt) {
  const auto behind = make<harness::ProbeView>(CGRect{0, 0, 100, 100});
  const auto label = NSTextField::labelWithString("label");
  label->setFrameOrigin({10, 10});
  behind->addSubview(label);
  const auto window = showWindowWith(behind);
  behind->calls.clear();
  user.press(*window, {15, 15});
  user.dragTo({16, 15});
  user.release();
  EXPECT_EQ(behind->calls, (std::vector<std::string>{"mouseDown", "mouseDragged", "mouseUp"}));
  label->setSelectable(true);
  behind->calls.clear();
  user.click(*window, {15, 15});
  EXPECT_TRUE(behind->calls.empty());
}

TEST_F(NSTextFieldTest, AnEmptyLabelIsAsHighAsALineOfItsFont) {
  for (const CGFloat size : {10, 20}) {
    const auto label = make<NSTextField>(CGRect{0, 0, 100, 30});
    label->setFont(NSFont::systemFontOfSize(size));
    label->setStringValue("x");
    const CGFloat full = label->intrinsicContentSize().height;
    const CGFloat first = label->firstBaselineOffsetFromTop(), last = label->lastBaselineOffsetFromBottom();
    label->setStringValue("");
    EXPECT_EQ(label->intrinsicContentSize().height, full) << size;
    EXPECT_EQ(label->firstBaselineOffsetFromTop(), first) << size;
    EXPECT_EQ(label->lastBaselineOffsetFromBottom(), last) << size;
  }
}

TEST_F(NSTextFieldTest, AButtonIsAsLargeAsItsTitleWithAMarginAround) {
  const auto button = make<NSButton>(CGRect{0, 0, 100, 30});
  button->setTitle("Play");
  EXPECT_EQ(button->intrinsicContentSize().width, 4 * 6.5 + 20);
  EXPECT_DOUBLE_EQ(button->intrinsicContentSize().height, 13 * 1.2 + 8);
}

TEST_F(NSTextFieldTest, AButtonsTitleIsCentered) {
  const auto button = make<NSButton>(CGRect{0, 0, 100, 30});
  button->setFont(NSFont::systemFontOfSize(10));
  button->setTitle("Play");
  // 20 wide in 100; 12 high in 30, its baseline 9 below its top.
  EXPECT_EQ(only("concat", drawn(*button)), Lines{R"({"op":"concat","transform":[1,0,0,-1,40,18]})"});
}

TEST_F(NSTextFieldTest, AButtonsTitleIsOneLineHoweverNarrowTheButton) {
  const auto button = make<NSButton>(CGRect{0, 0, 30, 30});
  button->setTitle("two words");
  EXPECT_EQ(only("glyphs", drawn(*button)).size(), 1u);
}

TEST_F(NSTextFieldTest, ADisabledButtonsTitleIsInTheColorOfDisabledText) {
  const auto button = make<NSButton>(CGRect{0, 0, 100, 30});
  button->setTitle("x");
  button->setEnabled(false);
  const auto title = std::dynamic_pointer_cast<NSButtonCell>(button->cell())->attributedTitle();
  const auto color = attributeObject<NSColor>(title->attributesAtIndex(0), NSForegroundColorAttributeName);
  EXPECT_EQ(color, NSColor::disabledControlTextColor());
}
