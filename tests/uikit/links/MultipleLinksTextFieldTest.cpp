#include "tessaluna/uikit/links/MultipleLinksTextField.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tests/uikit/links/LinksWorld.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using TessalunaUIKit::MultipleLinksTextField;

namespace {

using MultipleLinksTextFieldTest = harness::LinksWorld;
using MultipleLinksTextFieldDeathTest = MultipleLinksTextFieldTest;

// What a width of so many points shows, and where its links end.
struct Cut {
  CGFloat width;
  const char* text;
  std::optional<CGFloat> linksEnd;
};

// Where a text is drawn in a rectangle.
Lines placesOf(std::string_view text, CGRect rect) {
  const NSAttributes attributes{{NSFontAttributeName, NSFont::systemFontOfSize(10)}};
  return only("concat", harness::recordingOf([&] { drawInRect(text, rect, attributes); }));
}

}  // namespace

TEST_F(MultipleLinksTextFieldTest, DrawingLeavesTheClipAsItWas) {
  const harness::Lines lines = drawn();
  EXPECT_EQ(harness::only("save", lines).size(), harness::only("restore", lines).size());
}

TEST_F(MultipleLinksTextFieldTest, BothInitializersSetTheSameStartValues) {
  NSCoder coder(R"({"frame": [1, 2, 30, 40]})");
  for (const auto& made : {make<MultipleLinksTextField>(CGRect{1, 2, 30, 40}), make<MultipleLinksTextField>(coder)}) {
    EXPECT_EQ(made->frame(), (CGRect{1, 2, 30, 40}));
    EXPECT_FALSE(made->linksEnabled());
    EXPECT_FALSE(made->isPressed());
    EXPECT_FALSE(made->stringValues());
    EXPECT_EQ(made->font(), nullptr);
    EXPECT_EQ(made->textColor(), nullptr);
    EXPECT_EQ(made->target(), nullptr);
    EXPECT_EQ(made->lineBreakMode(), NSLineBreakByClipping);
    EXPECT_FALSE(made->isFlipped());
    EXPECT_TRUE(made->trackingAreas().empty());
  }
}

TEST_F(MultipleLinksTextFieldTest, TheStringsAreJoinedByCommaAndBlank) { EXPECT_EQ(shown(), "abc, de, fgh"); }

TEST_F(MultipleLinksTextFieldTest, AnEmptyAndAnAbsentListShowNothingAndHaveNoLinks) {
  for (const std::optional<Strings>& none : {std::optional<Strings>(), std::optional<Strings>(Strings{})}) {
    newField(none, 100);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(field->intrinsicContentSize().width, 0);
    EXPECT_TRUE(only("glyphs", drawn()).empty());
    user.click(*window, at(5));
    EXPECT_TRUE(target->clicks.empty());
  }
}

TEST_F(MultipleLinksTextFieldTest, AListThatBecomesEmptyKeepsNoLinkOfTheEarlierOne) {
  field->setStringValues(std::nullopt);
  user.click(*window, at(5));
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, AHoverAndTheUnderlineOfAnEarlierListDoNoHarmToAnEmptyOne) {
  moveTo(3);
  field->setStringValues(Strings{});
  EXPECT_EQ(shown(), "");
  EXPECT_TRUE(only("glyphs", drawn()).empty());
}

TEST_F(MultipleLinksTextFieldTest, AnEmptyStringTakesItsSeparatorsAndCannotBeHit) {
  newField(Strings{"a", "", "b"}, 100);
  EXPECT_EQ(shown(), "a, , b");
  for (int x = 0; x < 30; ++x) {
    moveTo(x);
    user.click(*window, at(x));
  }
  // "a" at 0 to 5, "b" at 25 to 30.
  ASSERT_EQ(target->clicks.size(), 10u);
  EXPECT_EQ(target->clicks.front().element, 0u);
  EXPECT_EQ(target->clicks.back().element, 2u);
}

TEST_F(MultipleLinksTextFieldTest, AnEmptyFirstStringHasASeparatorAfterItself) {
  // The separator before the second string depends on x, which the first one's separator has moved.
  newField(Strings{"", "a", "b"}, 100);
  EXPECT_EQ(shown(), ", a, b");
}

TEST_F(MultipleLinksTextFieldTest, InvalidUtf8IsShownAsReplacementCharacters) {
  newField(Strings{"a\xFF", "b"}, 100);
  EXPECT_EQ(shown(), "a\xEF\xBF\xBD, b");
}

TEST_F(MultipleLinksTextFieldTest, TheIntrinsicSizeIsThatOfTheWholeTextWhateverTheWidth) {
  newField(three, 10);
  EXPECT_EQ(field->intrinsicContentSize(), (CGSize{60, 12}));
}

// Each row worked out by hand from the steps of the search.
TEST_F(MultipleLinksTextFieldTest, ShorteningTable) {
  const Cut cuts[] = {
      {60, "abc, de, fgh", {}},
      {59, "abc, de, fgh", {}},  // up to a point too wide
      {58.9, "abc, de, f…", 50},
      {58, "abc, de, f…", 50},
      {54, "abc, de, f…", 50},   // a point too wide, strictly not more
      {53.9, "abc, de, …", 45},  // one step back
      {50, "abc, de, …", 40},    // an exact hit: one character fewer is a link
      {44, "abc, de,…", 40},     // cut within the separator
      {42, "abc, de…", 35},
      {40, "abc, de…", 30},  // an exact hit
      {35, "abc, d…", 25},   // an exact hit
      {33, "abc, …", 25},
      {12, "a…", 5},
      {10, "a…", 5},
      {9, "a…", 5},
      {8, "…", 0},
      {6, "…", 0},
  };
  for (const Cut& cut : cuts) {
    SCOPED_TRACE(cut.width);
    newField(three, cut.width);
    EXPECT_EQ(shown(), cut.text);
    for (CGFloat x = 0.5; x < cut.width; ++x) {
      const bool isIn = (x < 15) || (x >= 25 && x < 35) || (x >= 45 && x < 60);
      EXPECT_EQ(isLinkAt(x), isIn && (!cut.linksEnd || x < *cut.linksEnd)) << x;
    }
  }
}

TEST_F(MultipleLinksTextFieldTest, ACutWithinASeparatorLeavesItsCommaBeforeTheEllipsis) {
  EXPECT_EQ(shownIn(44), "abc, de,…");
}

TEST_F(MultipleLinksTextFieldTest, TwoCharactersInAWidthBelowThatOfTheEllipsisShowItAlone) {
  newField(Strings{"ab"}, 4);
  EXPECT_EQ(shown(), "…");
}

TEST_F(MultipleLinksTextFieldTest, ATextExactlyAPointTooWideIsNotShortenedAndIsClipped) {
  newField(three, 59);
  EXPECT_EQ(shown(), "abc, de, fgh");
  EXPECT_EQ(only("clipRect", drawn()).front(), R"({"op":"clipRect","rect":[0,0,59,20]})");
}

TEST_F(MultipleLinksTextFieldTest, OneStringThatIsTooLongIsShortenedAndUnderlinedUpToTheEllipsis) {
  newField(Strings{"abcdefghij"}, 30);
  moveTo(3);
  EXPECT_EQ(shown(), "_abcde_…");
}

TEST_F(MultipleLinksTextFieldTest, TheCutDoesNotDependOnTheLineBreakMode) {
  for (const NSLineBreakMode mode :
       {NSLineBreakByWordWrapping, NSLineBreakByTruncatingHead, NSLineBreakByTruncatingMiddle}) {
    field->setLineBreakMode(mode);
    EXPECT_EQ(shownIn(33), "abc, …");
  }
}

TEST_F(MultipleLinksTextFieldTest, NoUserPerceivedCharacterIsCut) {
  // Each letter with a combining accent, which is drawn over it.
  newField(Strings{"e\xCC\x81"
                   "e\xCC\x81"
                   "e\xCC\x81"},
           10);
  EXPECT_EQ(shown(),
            "e\xCC\x81"
            "…");
}

TEST_F(MultipleLinksTextFieldTest, TheUnderlineDriftsAfterCombinedCharacters) {
  // Kept as it is: the second string begins after four characters, which are six units.
  newField(Strings{"e\xCC\x81"
                   "e\xCC\x81",
                   "xy"},
           100);
  moveTo(22);
  EXPECT_EQ(shown(),
            "e\xCC\x81"
            "e\xCC\x81"
            "_, _xy");
}

TEST_F(MultipleLinksTextFieldDeathTest, AWidthThatHoldsNoEllipsisStopsTheProgram) {
  EXPECT_DEATH(field->truncatedString(4), "MultipleLinksTextField");
  EXPECT_DEATH(field->truncatedString(5), "MultipleLinksTextField");  // an exact hit before the first character
}

TEST_F(MultipleLinksTextFieldDeathTest, AWidthOfTextThatNoIntegerHoldsStopsTheProgram) {
  field->setFont(NSFont::systemFontOfSize(1e300));
  EXPECT_DEATH(field->setStringValues(three), "MultipleLinksTextField");
}

// The underline.

TEST_F(MultipleLinksTextFieldTest, TheHoveredLinkAloneIsUnderlined) {
  EXPECT_EQ(shown(), "abc, de, fgh");
  moveTo(3);
  EXPECT_EQ(shown(), "_abc_, de, fgh");
  moveTo(27);
  EXPECT_EQ(shown(), "abc, _de_, fgh");
  moveTo(20);
  EXPECT_EQ(shown(), "abc, de, fgh");
}

TEST_F(MultipleLinksTextFieldTest, WhilePressedTheLineIsThick) {
  moveTo(27);
  user.press(*window, at(27));
  EXPECT_EQ(shown(), "abc, =de=, fgh");
  user.release();
  EXPECT_EQ(shown(), "abc, _de_, fgh");
}

TEST_F(MultipleLinksTextFieldTest, TheSecondStringCutIsUnderlinedUpToTheEllipsis) {
  moveTo(27);
  EXPECT_EQ(shownIn(36), "abc, _d_…");
}

TEST_F(MultipleLinksTextFieldTest, AStringWhollyAfterTheCutIsNotUnderlined) {
  moveTo(50);
  EXPECT_EQ(shownIn(33), "abc, …");
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffNothingIsUnderlined) {
  moveTo(3);
  field->setLinksEnabled(false);
  EXPECT_EQ(shown(), "abc, de, fgh");
}

TEST_F(MultipleLinksTextFieldTest, AHoverThatOutlivesItsListUnderlinesNothingOutsideOfTheNewOne) {
  moveTo(50);
  field->setStringValues(Strings{"ab"});
  EXPECT_EQ(shown(), "ab");
  field->setStringValues(Strings{"a", "b", "cd"});
  EXPECT_EQ(shown(), "a, b, _cd_");
}

// Drawing.

TEST_F(MultipleLinksTextFieldTest, TheTextIsCenteredInTheHeightAndClippedToTheBounds) {
  const Lines lines = drawn();
  EXPECT_EQ(lines.front(), R"({"op":"save"})");
  EXPECT_EQ(lines[1], R"({"op":"clipRect","rect":[0,0,100,20]})");
  EXPECT_EQ(lines.back(), R"({"op":"restore"})");
  EXPECT_EQ(only("glyphs", lines).size(), 1u);
  EXPECT_EQ(only("concat", lines), placesOf("abc, de, fgh", {0, 4, 100, 12}));
}

TEST_F(MultipleLinksTextFieldTest, TheTextIsCenteredToAFractionOfAPoint) {
  field->setFrameSize({100, 20.5});
  EXPECT_EQ(only("concat", drawn()), placesOf("abc, de, fgh", {0, 4.25, 100, 12}));
}

TEST_F(MultipleLinksTextFieldTest, TheTextIsCenteredInBoundsThatStartElsewhere) {
  field->setBoundsOrigin({7, 3});
  EXPECT_EQ(only("clipRect", drawn()).front(), R"({"op":"clipRect","rect":[7,3,100,20]})");
  EXPECT_EQ(only("concat", drawn()), placesOf("abc, de, fgh", {7, 7, 100, 12}));
}

TEST_F(MultipleLinksTextFieldTest, TheHeightOfTheWholeTextIsCenteredAlsoWhereItIsCut) {
  // Wrapped at words the whole text takes two lines of 36 points, of which the cut one shows the first.
  newField(three, 36);
  field->setLineBreakMode(NSLineBreakByWordWrapping);
  EXPECT_EQ(only("concat", drawn()), placesOf("abc, d…", {0, -2, 36, 24}));
}

TEST_F(MultipleLinksTextFieldTest, NewStringsGiveTheLineAnotherSizeWhereConstraintsFollowIt) {
  field->setTranslatesAutoresizingMaskIntoConstraints(false);
  for (const NSLayoutAttribute edge : {NSLayoutAttributeLeft, NSLayoutAttributeTop})
    NSLayoutConstraint::constraintWithItem(field, edge, NSLayoutRelationEqual, parent, edge, 1, 0)->setActive(true);
  window->layoutIfNeeded();
  EXPECT_EQ(field->frame().size, (CGSize{60, 12}));
  field->setStringValues(Strings{"ab"});
  window->layoutIfNeeded();
  EXPECT_EQ(field->frame().size, (CGSize{10, 12}));
}

TEST_F(MultipleLinksTextFieldTest, TheTextHasAFontAColorAndAParagraphStyleFromTheLeftAndNothingElse) {
  field->setFont(nullptr);
  field->setLineBreakMode(NSLineBreakByTruncatingMiddle);
  const NSAttributes attributes = field->truncatedString(1000)->attributesAtIndex(0);
  EXPECT_EQ(attributes.size(), 3u);
  EXPECT_TRUE(attributeObject<NSFont>(attributes, NSFontAttributeName)
                  ->isEqual(NSFont::systemFontOfSize(NSFont::systemFontSize()).get()));
  EXPECT_EQ(attributeObject<NSColor>(attributes, NSForegroundColorAttributeName), NSColor::controlTextColor());
  const auto style = attributeObject<NSParagraphStyle>(attributes, NSParagraphStyleAttributeName);
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(style->alignment(), NSTextAlignmentLeft);
  EXPECT_EQ(style->lineBreakMode(), NSLineBreakByTruncatingMiddle);
}

TEST_F(MultipleLinksTextFieldTest, AFontThatIsSetAloneIsDrawnButTheLinksStayUntilTheStringsAreSetAgain) {
  nativeOf(*window).forgetPaints();
  field->setFont(NSFont::systemFontOfSize(20));
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  EXPECT_EQ(field->truncatedString(1000)->size(), (CGSize{120, 24}));

  moveTo(27);  // in "de" of the earlier font, in "abc" of the new one
  user.press(*window, at(27));
  user.release();
  ASSERT_EQ(target->clicks.size(), 1u);
  EXPECT_EQ(target->clicks[0].element, 1u);

  field->setStringValues(three);
  moveTo(28);
  user.click(*window, at(28));
  EXPECT_EQ(target->clicks.back().element, 0u);
}

TEST_F(MultipleLinksTextFieldTest, OnlyTheStringsRequestARedraw) {
  nativeOf(*window).forgetPaints();
  field->setTextColor(NSColor::redColor());
  field->setLineBreakMode(NSLineBreakByTruncatingTail);
  field->setIsPressed(true);
  field->setTarget(nullptr);
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  field->setStringValues(three);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

// Assistive clients.

TEST_F(MultipleLinksTextFieldTest, ToAssistiveClientsItIsAButtonWithTheWholeText) {
  newField(three, 33);
  EXPECT_EQ(field->accessibilityLabel(), "abc, de, fgh");
  EXPECT_TRUE(field->isAccessibilityElement());
  EXPECT_EQ(field->accessibilityRole(), NSAccessibilityButtonRole);
  EXPECT_EQ(field->accessibilityAttributeValue(NSAccessibilityDescriptionAttribute), "abc, de, fgh");
}

TEST_F(MultipleLinksTextFieldTest, APressByAnAssistiveClientIsOneOnTheFirstElementWhicheverIsHovered) {
  moveTo(27);
  EXPECT_TRUE(field->accessibilityPerformPress());
  EXPECT_EQ(target->clicks, (std::vector<harness::LinkTarget::Click>{{0, false}}));
  field->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(target->clicks.size(), 2u);
}

TEST_F(MultipleLinksTextFieldTest, APressByAnAssistiveClientSaysWhetherThereIsALink) {
  field->setTarget(nullptr);
  EXPECT_TRUE(field->accessibilityPerformPress()) << "without a target it counts as done";
  field->setStringValues(Strings{});
  EXPECT_FALSE(field->accessibilityPerformPress());
  field->setStringValues(std::nullopt);
  EXPECT_FALSE(field->accessibilityPerformPress());
  field->setStringValues(three);
  field->setLinksEnabled(false);
  field->setTarget(target);
  EXPECT_FALSE(field->accessibilityPerformPress());
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, APressIsOfferedToAssistiveClientsOnlyWhileThereIsALink) {
  const std::vector<std::string> press{std::string(NSAccessibilityPressAction)};
  EXPECT_EQ(field->accessibilityActionNames(), press);
  field->setLinksEnabled(false);
  EXPECT_TRUE(field->accessibilityActionNames().empty());
  field->setLinksEnabled(true);
  for (const std::optional<Strings>& none : {std::optional<Strings>(), std::optional<Strings>(Strings{})}) {
    field->setStringValues(none);
    EXPECT_TRUE(field->accessibilityActionNames().empty());
  }
  field->setStringValues(Strings{""});
  EXPECT_EQ(field->accessibilityActionNames(), press) << "an empty string is an element, too";
  EXPECT_EQ(field->accessibilityRole(), NSAccessibilityButtonRole);
}
