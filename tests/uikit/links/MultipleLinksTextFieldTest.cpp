#include "tessaluna/uikit/links/MultipleLinksTextField.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/uikit/links/LinkKeyboard.h"
#include "tests/uikit/links/LinksWorld.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using TessalunaUIKit::MultipleLinksTextField;

namespace {

// Building, shortening, drawing.
class MultipleLinksTextFieldTest : public harness::LinksWorld {
 protected:
  // Nothing is drawn meanwhile, so that the cut stays that of the last truncatedString.
  bool isLinkAt(CGFloat x) {
    target->clicks.clear();
    const auto event = make<NSEvent>(NSEvent::Fields{.location = at(x), .window = window});
    field->mouseMoved(event);
    field->mouseDown(event);
    field->mouseUp(event);
    return !target->clicks.empty();
  }
  // Where a text is drawn in a rectangle.
  static Lines placesOf(std::string_view text, CGRect rect) {
    const NSAttributes attributes{{NSFontAttributeName, NSFont::systemFontOfSize(10)}};
    return only("concat", harness::recordingOf([&] { drawInRect(text, rect, attributes); }));
  }
};
using MultipleLinksTextFieldDeathTest = MultipleLinksTextFieldTest;

// What a width of so many points shows, and where its links end.
struct Cut {
  CGFloat width;
  const char* text;
  std::optional<CGFloat> linksEnd;
};

// A table of two rows, in the first of which a line of links stands, some views deep.
class TableHost : public NSTableViewDataSource, public NSTableViewDelegate {
 public:
  explicit TableHost(Ref<NSView> first) : first_(std::move(first)) {}
  std::size_t numberOfRowsInTableView(NSTableView&) override { return 2; }
  Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t row) override {
    return row == 0 ? first_ : make<NSView>(CGRect{0, 0, 200, 24});
  }

 private:
  Ref<NSView> first_;
};

// The links of the field in a row of a table, which stands in the field's window.
class MultipleLinksTextFieldInTableTest : public harness::LinksWorld {
 protected:
  MultipleLinksTextFieldInTableTest() {
    row->addSubview(box);
    box->addSubview(field);
    table->setDataSource(host);
    table->setDelegate(host);
    parent->addSubview(table);
    table->reloadData();
    desktop.settle();
  }
  void select(std::size_t index) { table->selectRowIndexes(NSIndexSet(index), NSTableView::Selecting::Replaces); }
  Ref<NSColor> color() const {
    return attributeObject<NSColor>(field->truncatedString(100)->attributesAtIndex(0), NSForegroundColorAttributeName);
  }

  const Ref<NSView> row = make<NSView>(CGRect{0, 0, 200, 24});
  const Ref<NSView> box = make<NSView>(CGRect{0, 0, 200, 24});
  const Ref<NSTableView> table = make<NSTableView>(CGRect{0, 0, 200, 48});
  const std::shared_ptr<TableHost> host = std::make_shared<TableHost>(row);
};

}  // namespace

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

TEST_F(MultipleLinksTextFieldTest, AnEmptyFirstStringHasNoSeparatorAfterItself) {
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

// The pointer.

TEST_F(MultipleLinksTextFieldTest, EveryEventOfThePointerRequestsARedraw) {
  using Handler = void (MultipleLinksTextField::*)(const Ref<NSEvent>&);
  for (const Handler handler :
       {&MultipleLinksTextField::mouseEntered, &MultipleLinksTextField::mouseMoved, &MultipleLinksTextField::mouseDown,
        &MultipleLinksTextField::mouseDragged, &MultipleLinksTextField::mouseUp, &MultipleLinksTextField::mouseExited}) {
    desktop.settle();
    ASSERT_FALSE(field->needsDisplay());
    (field.get()->*handler)(make<NSEvent>(NSEvent::Fields{.location = at(3), .window = window}));
    EXPECT_TRUE(field->needsDisplay());
  }
}

TEST_F(MultipleLinksTextFieldTest, AClickReportsTheElementWhileTheFieldIsStillPressed) {
  moveTo(27);
  user.click(*window, at(27));
  EXPECT_EQ(target->clicks, (std::vector<harness::LinkTarget::Click>{{1, true}}));
  EXPECT_FALSE(field->isPressed());
}

TEST_F(MultipleLinksTextFieldTest, BetweenLinksAndAfterThemAClickMakesNoCall) {
  for (const CGFloat x : {15, 20, 24, 35, 44, 60, 80}) {
    moveTo(x);
    user.click(*window, at(x));
  }
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, AFractionBeforeTheUpperBoundBelongsToTheElementAndTheBoundDoesNot) {
  moveTo(14.9);
  user.click(*window, at(14.9));
  EXPECT_EQ(target->clicks.size(), 1u);
  moveTo(15);
  user.click(*window, at(15));
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(MultipleLinksTextFieldTest, TheElementAtTheReleaseCountsWhereverThePressBegan) {
  moveTo(3);
  user.press(*window, at(3));
  user.dragTo(at(50));
  user.release();
  moveTo(20);
  user.press(*window, at(20));
  user.dragTo(at(27));
  user.release();
  ASSERT_EQ(target->clicks.size(), 2u);
  EXPECT_EQ(target->clicks[0].element, 2u);
  EXPECT_EQ(target->clicks[1].element, 1u);
}

TEST_F(MultipleLinksTextFieldTest, LeavingCancelsTheClickAndComingBackRevivesIt) {
  moveTo(3);
  user.press(*window, at(3));
  user.dragTo({150, 120});
  user.release();
  EXPECT_TRUE(target->clicks.empty());
  moveTo(3);
  user.press(*window, at(3));
  user.dragTo({150, 120});
  user.dragTo(at(4));
  user.release();
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(MultipleLinksTextFieldTest, AReleaseAboveALinkOrBelowItMakesNoCall) {
  for (const CGFloat y : {-1, 20, 60}) {
    moveTo(3);
    user.press(*window, at(3));
    user.dragTo({origin.x + 3, origin.y + y});
    user.release();
  }
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, HidingTheLineUnderAPressEndsItWithoutAClick) {
  for (const Ref<NSView>& hidden : {Ref<NSView>(field), Ref<NSView>(parent)}) {
    moveTo(3);
    user.press(*window, at(3));
    hidden->setHidden(true);
    EXPECT_FALSE(field->isPressed());
    user.release();
    hidden->setHidden(false);
  }
  EXPECT_TRUE(target->clicks.empty());
}

TEST_F(MultipleLinksTextFieldTest, FromTheEllipsisOnNothingIsALink) {
  newField(three, 36);  // "abc, d…", links end at 30
  desktop.settle();
  field->truncatedString(36);
  moveTo(29.9);
  user.click(*window, at(29.9));
  EXPECT_EQ(target->clicks.size(), 1u);
  moveTo(30);  // "de" would reach to 35
  user.click(*window, at(30));
  EXPECT_EQ(target->clicks.size(), 1u);
}

TEST_F(MultipleLinksTextFieldTest, WithoutATargetAClickIsSwallowedAndTheThickLineGoes) {
  field->setTarget(nullptr);
  moveTo(3);
  user.press(*window, at(3));
  EXPECT_EQ(shown(), "=abc=, de, fgh");
  user.release();
  EXPECT_EQ(shown(), "_abc_, de, fgh");
  EXPECT_FALSE(field->isPressed());
  EXPECT_TRUE(parent->calls.empty() || std::ranges::count(parent->calls, "mouseDown") == 0);
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffPressAndReleaseReachTheSuperview) {
  moveTo(3);
  field->setLinksEnabled(false);
  parent->calls.clear();
  nativeOf(*window).forgetPaints();
  user.press(*window, at(3));
  EXPECT_TRUE(field->isPressed());
  user.release();
  EXPECT_FALSE(field->isPressed());
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseDown"), 1);
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseUp"), 1);
  EXPECT_TRUE(target->clicks.empty());
  desktop.settle();
  EXPECT_FALSE(nativeOf(*window).paints().empty());
}

TEST_F(MultipleLinksTextFieldTest, WithLinksOffMovesAreOverlookedButEntriesAndExitsAreNot) {
  field->setLinksEnabled(false);
  moveTo(3);   // an entry: the area stays when links are turned off
  moveTo(27);  // a move
  field->setLinksEnabled(true);
  EXPECT_EQ(shown(), "_abc_, de, fgh");
  field->setLinksEnabled(false);
  user.moveTo(*window, {150, 120});
  field->setLinksEnabled(true);
  EXPECT_EQ(shown(), "abc, de, fgh");
}

TEST_F(MultipleLinksTextFieldTest, ATargetMayReleaseTheField) {
  const WeakRef<MultipleLinksTextField> weak = field;
  target->onClick = [this](MultipleLinksTextField& sender) {
    sender.removeFromSuperview();
    sender.setTarget(nullptr);
    field.reset();
  };
  moveTo(3);
  user.click(*window, at(3));
  EXPECT_EQ(target->clicks.size(), 1u);
  user.moveTo(*window, {150, 120});
  EXPECT_TRUE(weak.expired());
}

TEST_F(MultipleLinksTextFieldTest, ATargetThatTheFieldLetsGoLivesUntilItsClickIsOver) {
  const auto link = field->accessibilityChildren().value().at(0);
  const std::function<void()> clicks[] = {
      [this] {
        moveTo(3);
        user.click(*window, at(3));
      },
      [this] { field->accessibilityPerformPress(); },
      [link] { accessibilityOf(link)->accessibilityPerformAction(NSAccessibilityPressAction); }};
  for (const auto& click : clicks) {
    target = std::make_shared<harness::LinkTarget>();
    field->setTarget(target);
    const std::weak_ptr<harness::LinkTarget> weak = target;
    bool wasAlive = false;
    target->onClick = [&](MultipleLinksTextField& sender) {
      sender.setTarget(nullptr);
      wasAlive = !weak.expired();
    };
    target.reset();
    click();
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(weak.expired());
  }
}

TEST_F(MultipleLinksTextFieldTest, AReleaseAfterTheListChangedReportsTheIndexIntoTheNewList) {
  moveTo(50);
  user.press(*window, at(50));
  field->setStringValues(Strings{"x"});
  user.release();
  ASSERT_EQ(target->clicks.size(), 1u);
  EXPECT_EQ(target->clicks[0].element, 2u);
}

TEST_F(MultipleLinksTextFieldTest, OnlyALabelWithoutLinksCanMoveTheWindow) {
  EXPECT_FALSE(field->mouseDownCanMoveWindow());
  field->setLinksEnabled(false);
  EXPECT_TRUE(field->mouseDownCanMoveWindow());
}

// Tracking area and cursor rectangles.

TEST_F(MultipleLinksTextFieldTest, TheTrackingAreaIsMadeOnceWithTheFirstLinksAndStays) {
  ASSERT_EQ(field->trackingAreas().size(), 1u);
  const Ref<NSTrackingArea> area = field->trackingAreas()[0];
  EXPECT_EQ(area->options(), 0x200u | 0x80u | 0x1u | 0x2u);
  EXPECT_EQ(area->rect(), NSZeroRect);
  EXPECT_EQ(area->owner(), field);
  EXPECT_TRUE(area->userInfo().empty());
  field->setLinksEnabled(false);
  field->setLinksEnabled(true);
  field->updateTrackingAreas();
  ASSERT_EQ(field->trackingAreas().size(), 1u);
  EXPECT_EQ(field->trackingAreas()[0], area);
  field->removeTrackingArea(area);
  field->updateTrackingAreas();
  EXPECT_EQ(field->trackingAreas()[0], area);
}

TEST_F(MultipleLinksTextFieldTest, HandsAreOverTheLinksAndNotOverSeparators) {
  window->resetCursorRects();
  for (int x = 0; x < 70; ++x) EXPECT_EQ(showsHandAt(x), (x < 15) || (x >= 25 && x < 35) || (x >= 45 && x < 60)) << x;
}

TEST_F(MultipleLinksTextFieldTest, HandsDisregardTheCut) {
  newField(three, 33);  // "abc, …", links end at 25
  field->truncatedString(33);
  window->resetCursorRects();
  EXPECT_TRUE(showsHandAt(30));
}

TEST_F(MultipleLinksTextFieldTest, LinksTurnedOnLaterHaveAreaAndHandsAtOnceAfterTheFirstReset) {
  newField(three, 100);
  const auto late = make<MultipleLinksTextField>(CGRect{20, 80, 100, 20});
  late->setFont(NSFont::systemFontOfSize(10));
  late->setStringValues(three);
  late->setLinksEnabled(true);
  EXPECT_EQ(late->cursorAt({3, 10}), nullptr) << "nothing before the window's first reset";
  late->setLinksEnabled(false);

  late->resetCursorRects();
  EXPECT_EQ(late->cursorAt({3, 10}), nullptr);
  late->setLinksEnabled(true);
  EXPECT_EQ(late->cursorAt({3, 10}), NSCursor::pointingHandCursor());
  late->setLinksEnabled(false);
  EXPECT_EQ(late->cursorAt({3, 10}), NSCursor::pointingHandCursor()) << "turning links off removes nothing";
}

TEST_F(MultipleLinksTextFieldTest, HandsAreAsHighAsTheBoundsInWholePoints) {
  field->setFrameSize({100, 20.75});
  window->resetCursorRects();
  EXPECT_EQ(field->cursorAt({3, 19.9}), NSCursor::pointingHandCursor());
  EXPECT_EQ(field->cursorAt({3, 20.25}), nullptr);
}

TEST_F(MultipleLinksTextFieldTest, TurningLinksOnAgainBringsBackTheAreaAndTheHandsThatSomebodyTookAway) {
  window->resetCursorRects();
  field->discardCursorRects();
  field->removeTrackingArea(Ref<NSTrackingArea>(field->trackingAreas()[0]));
  field->setLinksEnabled(true);
  EXPECT_EQ(field->trackingAreas().size(), 1u);
  EXPECT_TRUE(showsHandAt(3));
}

TEST_F(MultipleLinksTextFieldTest, NewStringsOnlyAddHandsUntilTheWindowResetsThem) {
  window->resetCursorRects();
  EXPECT_FALSE(showsHandAt(20));
  field->setStringValues(Strings{"abcdefgh"});
  EXPECT_TRUE(showsHandAt(20)) << "at once";
  field->setStringValues(Strings{"a"});
  EXPECT_TRUE(showsHandAt(50));
  window->invalidateCursorRectsForView(*field);
  window->resetCursorRects();
  EXPECT_FALSE(showsHandAt(50));
  EXPECT_TRUE(showsHandAt(3));
}

// The color in a table.

TEST_F(MultipleLinksTextFieldInTableTest, InARowThatIsNotSelectedTheTextHasItsOwnColor) {
  EXPECT_EQ(color(), NSColor::controlTextColor());
  select(1);
  EXPECT_EQ(color(), NSColor::controlTextColor());
  field->setTextColor(NSColor::redColor());
  EXPECT_EQ(color(), NSColor::redColor());
}

TEST_F(MultipleLinksTextFieldInTableTest, InASelectedRowTheTextHasTheColorOfSelections) {
  select(0);
  EXPECT_EQ(color(), NSColor::alternateSelectedControlTextColor());
  field->setTextColor(NSColor::redColor());
  EXPECT_EQ(color(), NSColor::alternateSelectedControlTextColor());
}

TEST_F(MultipleLinksTextFieldInTableTest, InASelectedRowTheDisabledColorIsALightGray) {
  field->setTextColor(NSColor::disabledControlTextColor());
  EXPECT_EQ(color(), NSColor::disabledControlTextColor());
  select(0);
  EXPECT_TRUE(color()->isEqual(NSColor::colorWithDeviceWhite(0.81, 1).get()));
}

TEST_F(MultipleLinksTextFieldInTableTest, TheFocusRingCanBeToldFromASelectedRow) {
  using tessaluna::backend::SystemColor;
  desktop.setSystemColor(SystemColor::AlternateSelectedControl, {0, 0, 0.8});
  desktop.setSystemColor(SystemColor::KeyboardFocusIndicator, {0, 0, 1});
  desktop.setSystemColor(SystemColor::AlternateSelectedControlText, {1, 1, 1});
  field->setFrameOrigin({20, 2});
  field->setTakesKeyboard(true);
  window->selectKeyViewWithin(*field, tessaluna::backend::FocusStep::Next);
  ASSERT_NE(dynamic_cast<TessalunaUIKit::LinkKeyboard*>(window->firstResponder()), nullptr);
  // The ring is the last that a window draws.
  const auto ringColor = [this] {
    window->invalidateRect({{0, 0}, window->frame().size});
    desktop.settle();
    return only("setFillColor", nativeOf(*window).paints().back().lines).back();
  };
  EXPECT_THAT(ringColor(), testing::HasSubstr("keyboardFocusIndicatorColor"));
  select(0);
  EXPECT_THAT(ringColor(), testing::HasSubstr("alternateSelectedControlTextColor"));
}

TEST_F(MultipleLinksTextFieldInTableTest, OnlyTheNearestTableCounts) {
  select(0);
  const auto inner = make<NSTableView>(CGRect{0, 0, 200, 24});
  box->addSubview(inner);
  inner->addSubview(field);
  EXPECT_EQ(color(), NSColor::controlTextColor());
}

TEST_F(MultipleLinksTextFieldInTableTest, ASelectionIsDrawnAtOnce) {
  const Lines before = drawn();
  nativeOf(*window).forgetPaints();
  select(0);
  desktop.settle();
  EXPECT_FALSE(nativeOf(*window).paints().empty());
  EXPECT_NE(drawn(), before);
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
