#include "tessaluna/uikit/links/ClickableLabel.h"

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/links/LabelWorld.h"

using namespace tessaluna::platform;
using harness::only;
using harness::recordingOf;
using TessalunaUIKit::ClickableLabel;

namespace {

using Target = harness::LabelTarget;

class ClickableLabelTest : public harness::LabelWorld {};

}  // namespace

TEST_F(ClickableLabelTest, AClickOnPlainTextIsOneOnTheLabel) {
  setOneLink();
  click(onText);
  click(besideText);
  EXPECT_EQ(target->calls, (Calls{"label", "label"}));
}

TEST_F(ClickableLabelTest, TheLabelIsReportedAtTheReleaseWhereverThatIs) {
  setOneLink();
  user.press(*window, at(onText));
  EXPECT_TRUE(target->calls.empty());
  user.dragTo({1, 1});
  user.release();
  EXPECT_EQ(target->calls, Calls{"label"});
}

TEST_F(ClickableLabelTest, APressAndReleaseOnOneLinkReportsIt) {
  setOneLink();
  click(onLink);
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, AReleaseCountsFromTheLinksFirstCharacterToItsLast) {
  setOneLink();
  for (const CGFloat x : {20.5, 39.5}) pressAndRelease(onLink, {x, middle});
  EXPECT_EQ(target->calls, (Calls{first, first}));
  for (const CGFloat x : {19.5, 40.5}) pressAndRelease(onLink, {x, middle});
  EXPECT_EQ(target->calls.size(), 2u);
}

TEST_F(ClickableLabelTest, ALinkOfTwoLooksIsOneLink) {
  const auto text = make<NSMutableAttributedString>("here now", NSAttributes{{NSFontAttributeName, label->font()}});
  text->addAttribute(NSForegroundColorAttributeName, Ref<NSObject>(NSColor::redColor()), {0, 2});
  text->addAttribute(NSLinkAttributeName, url(first), {0, 4});
  label->setAttributedStringValue(text);
  window->resetCursorRects();
  pressAndRelease({17, middle}, {7, middle});  // from the second look to the first one
  pressAndRelease({7, middle}, {22, middle});
  EXPECT_EQ(target->calls, (Calls{first, first}));
  EXPECT_EQ(label->cell()->accessibilityChildren()->size(), 1u);
}

TEST_F(ClickableLabelTest, EveryClickOnALabelThatCouldBeEditedIsReported) {
  label->setEditable(true);
  setOneLink();
  for (const CGPoint place : {onLink, onText, onLink}) click(place);
  EXPECT_EQ(target->calls, (Calls{first, "label", first}));
  EXPECT_EQ(label->currentEditor(), nullptr);
}

TEST_F(ClickableLabelTest, APressForgetsTheOneWhoseReleaseWasLost) {
  setOneLink();
  label->mouseDown(eventAt(onLink));
  label->mouseDown(eventAt(onText));
  label->mouseUp(eventAt(onText));
  EXPECT_EQ(target->calls, Calls{"label"});
}

TEST_F(ClickableLabelTest, AReleaseForgetsItsPress) {
  setOneLink();
  for (const CGPoint released : {onLink, onText}) {
    pressAndRelease(onLink, released);
    target->calls.clear();
    label->mouseUp(eventAt(onLink));
    EXPECT_EQ(target->calls, Calls{"label"});
  }
}

TEST_F(ClickableLabelTest, APressOnOneLinkAndAReleaseOnAnotherMakeNoCall) {
  setTwoLinks();
  pressAndRelease({10, middle}, {33, middle});
  EXPECT_TRUE(target->calls.empty());
  click({33, middle});
  EXPECT_EQ(target->calls, Calls{second});
}

TEST_F(ClickableLabelTest, APressOnALinkAndAReleaseElsewhereMakeNoCall) {
  setOneLink();
  for (const CGPoint released : {onText, CGPoint{42, middle}, besideText}) pressAndRelease(onLink, released);
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(ClickableLabelTest, APressOnPlainTextAndAReleaseOnALinkIsAClickOnTheLabel) {
  setOneLink();
  pressAndRelease(onText, onLink);
  EXPECT_EQ(target->calls, Calls{"label"});
}

TEST_F(ClickableLabelTest, TheTextOfAUrlIsALinkToo) {
  setOneLink(second);
  click(onLink);
  EXPECT_EQ(target->calls, Calls{second});
}

TEST_F(ClickableLabelTest, TheTextOfAUrlMayBeAnObject) {
  setOneLink(make<NSString>(second));
  click(onLink);
  EXPECT_EQ(target->calls, Calls{second});
}

TEST_F(ClickableLabelTest, ATextThatIsNotAUrlIsPlainButShowsTheHand) {
  setOneLink(std::string("not a url"));
  click(onLink);
  EXPECT_EQ(target->calls, Calls{"label"});
  EXPECT_TRUE(showsHandAt(onLink));
}

TEST_F(ClickableLabelTest, AValueOfAnotherKindIsPlainButShowsTheHand) {
  for (const NSAttributeValue& value : {NSAttributeValue(std::int64_t{7}), NSAttributeValue(Ref<NSObject>(label))}) {
    target->calls.clear();
    setOneLink(value);
    click(onLink);
    EXPECT_EQ(target->calls, Calls{"label"});
    EXPECT_TRUE(showsHandAt(onLink));
  }
  label->setAttributedStringValue(make<NSAttributedString>(""));  // it held itself
}

TEST_F(ClickableLabelTest, AtTheRightEdgeOfALinksLastCharacterAPressIsOneOnPlainText) {
  setOneLink();
  click({39, middle});
  EXPECT_EQ(target->calls, Calls{"label"});
}

TEST_F(ClickableLabelTest, JustBeforeALinkAPressIsOnItAndAReleaseIsNot) {
  setOneLink();
  click({18, middle});
  EXPECT_TRUE(target->calls.empty());
  pressAndRelease({18, middle}, onLink);
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, APressPastTheEndOfTheTextIsOnNoLink) {
  setText("abc", {{{0, 3}, url(first)}});
  click({100, middle});
  EXPECT_EQ(target->calls, Calls{"label"});
}

TEST_F(ClickableLabelTest, HandsAreOverTheLinkAlone) {
  setOneLink();
  for (int x = 0; x < 100; ++x) EXPECT_EQ(showsHandAt({x + 0.5, middle}), x >= 20 && x < 40) << x;
  EXPECT_FALSE(showsHandAt({27, 13}));
}

TEST_F(ClickableLabelTest, NewLinksHaveTheirHandsAtThePointersNextMove) {
  setOneLink();
  user.moveTo(*window, at(onText));
  const auto text = label->attributedStringValue()->mutableCopy();
  text->addAttribute(NSLinkAttributeName, url(second), {0, 2});
  label->setAttributedStringValue(text);
  EXPECT_FALSE(showsHandAt(onText));
  user.moveTo(*window, at({9, middle}));
  EXPECT_TRUE(showsHandAt(onText));
}

TEST_F(ClickableLabelTest, ASelectableTextKeepsItsCursorBesideTheLinks) {
  label->setSelectable(true);
  setOneLink();
  EXPECT_EQ(label->cursorAt(onText), NSCursor::IBeamCursor());
  EXPECT_TRUE(showsHandAt(onLink));
}

TEST_F(ClickableLabelTest, AWrappedLinkHasAHandOnEachLineOnEverySystem) {
  for (const NSOperatingSystemVersion version : {NSOperatingSystemVersion{10, 15, 0}, NSOperatingSystemVersion{10, 10, 0}}) {
    setOperatingSystemVersion(version);
    label->setFrameSize({40, 60});                     // six characters a line
    setText("ab cde fgh ij", {{{3, 7}, url(first)}});  // "ab cde", "fgh ij"
    const struct {
      CGPoint point;
      bool isLink;
    } places[] = {{{7, 6}, false}, {{22, 6}, true}, {{33, 6}, true}, {{7, 18}, true}, {{17, 18}, true}, {{32, 18}, false}};
    for (const auto& [point, isLink] : places) EXPECT_EQ(showsHandAt(point), isLink) << point.x << " " << point.y;
    target->calls.clear();
    pressAndRelease({27, 6}, {12, 18});
    EXPECT_EQ(target->calls, Calls{first});
  }
}

TEST_F(ClickableLabelTest, AResizeShowsInClicksAfterTheNextResetOfTheCursorRectangles) {
  setOneLink();
  label->setFrameSize({40, 60});  // "go", "here", "now"
  clickDirectly(onLink);
  EXPECT_EQ(target->calls, Calls{first});
  label->resetCursorRects();
  target->calls.clear();
  clickDirectly(onLink);
  clickDirectly({12, 18});
  EXPECT_EQ(target->calls, (Calls{"label", first}));
}

TEST_F(ClickableLabelTest, ClientsSeeLinksOfTheNewSizeBeforeThatAndMoveNoClick) {
  setOneLink();
  label->setFrameSize({40, 60});  // "go", "here", "now"
  const auto links = label->accessibleLinks();
  EXPECT_EQ(accessibilityOf(links.at(0))->accessibilityFrame().origin.x,
            window->convertRectToScreen({at({5, 0}), {}}).origin.x);
  clickDirectly(onLink);
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, AReleaseFindsItsCharacterInTheLinesOfTheLastReset) {
  setOneLink();
  label->mouseDown(eventAt(onLink));
  label->setAttributedStringValue(make<NSAttributedString>("aa bb cc", NSAttributes{{NSFontAttributeName, label->font()}}));
  label->setFrameSize({40, 60});  // "aa bb", "cc"
  label->resetCursorRects();
  label->mouseUp(eventAt({7, 18}));  // the seventh character, the last one of the pressed link
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, BeforeTheFirstResetLinksAreWhereTheLabelHadThemWhenItsTextWasSet) {
  label->setFrameSize({40, 60});
  const auto text = make<NSMutableAttributedString>("go here now", NSAttributes{{NSFontAttributeName, label->font()}});
  text->addAttribute(NSLinkAttributeName, url(first), {3, 4});
  label->setAttributedStringValue(text);  // "go", "here", "now"
  clickDirectly({12, 18});
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, AnEarlierTextIsNotKept) {
  const WeakRef<NSObject> weak = [this] {
    const auto value = make<NSObject>();
    setOneLink(NSAttributeValue(value));
    return WeakRef<NSObject>(value);
  }();
  EXPECT_TRUE(label->cell()->accessibilityChildren()->empty());
  EXPECT_FALSE(weak.expired());
  setTwoLinks();
  EXPECT_TRUE(weak.expired());
}

TEST_F(ClickableLabelTest, WithoutAnAttributedTextEveryClickIsOneOnTheLabel) {
  label->setStringValue("https://example.org/1");
  window->resetCursorRects();
  click(onLink);
  EXPECT_EQ(target->calls, Calls{"label"});
  EXPECT_FALSE(showsHandAt(onLink));
}

TEST_F(ClickableLabelTest, ANewTextTakesTheEarlierLinksAway) {
  setOneLink();
  setText("go here now", {});
  click(onLink);
  EXPECT_EQ(target->calls, Calls{"label"});
  EXPECT_FALSE(showsHandAt(onLink));
}

TEST_F(ClickableLabelTest, ATextThatTheProgramChangesLaterIsDrawnAndClickedAsItWasSet) {
  setOneLink();
  const auto text = label->attributedStringValue()->mutableCopy();
  label->setAttributedStringValue(text);
  const harness::Lines before = recordingOf([this] { label->drawRect(label->bounds()); });
  text->replaceCharactersInRange({0, 11}, u"else");
  EXPECT_EQ(recordingOf([this] { label->drawRect(label->bounds()); }), before);
  click(onLink);
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, AnAbsentTargetSwallowsClicks) {
  setOneLink();
  label->setActionTarget(nullptr);
  click(onLink);
  click(onText);
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(ClickableLabelTest, PressAndReleaseDoNotReachTheSuperview) {
  setOneLink();
  parent->calls.clear();
  click(onText);
  click(onLink);
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseDown"), 0);
  EXPECT_EQ(std::ranges::count(parent->calls, "mouseUp"), 0);
}

TEST_F(ClickableLabelTest, TheTargetIsKeptAliveByTheLabelAndMayLetItGo) {
  setOneLink();
  const WeakRef<ClickableLabel> weak = label;
  Target* const alive = target.get();
  const std::weak_ptr<Target> weakTarget = target;
  target.reset();
  ASSERT_FALSE(weakTarget.expired());
  alive->onCall = [this] {
    label->removeFromSuperview();
    label->setActionTarget(nullptr);
    label.reset();
  };
  const CGPoint place = at(onLink);
  user.press(*window, place);
  user.release();
  user.moveTo(*window, {1, 1});
  EXPECT_TRUE(weak.expired());
  EXPECT_TRUE(weakTarget.expired());
}

TEST_F(ClickableLabelTest, ATargetThatTheLabelLetsGoLivesUntilItsClickIsOver) {
  setOneLink();
  for (const CGPoint place : {onText, onLink}) {
    target = std::make_shared<Target>();
    label->setActionTarget(target);
    const std::weak_ptr<Target> weak = target;
    bool wasAlive = false;
    target->onCall = [&] {
      label->setActionTarget(nullptr);
      wasAlive = !weak.expired();
    };
    target.reset();
    click(place);
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(weak.expired());
  }
}

TEST_F(ClickableLabelTest, APressThatIsTakenFromTheLabelEndsWithoutAClick) {
  setOneLink();
  for (const CGPoint place : {onText, onLink}) {
    user.press(*window, at(place));
    label->removeFromSuperview();
    user.release();
    parent->addSubview(label);
    desktop.settle();
  }
  EXPECT_TRUE(target->calls.empty());
  click(onText);
  EXPECT_EQ(target->calls, Calls{"label"}) << "nothing is left of the earlier presses";
}

TEST_F(ClickableLabelTest, HidingTheLabelUnderAPressEndsItWithoutAClick) {
  setOneLink();
  for (const Ref<NSView>& hidden : {Ref<NSView>(label), Ref<NSView>(parent)})
    for (const CGPoint place : {onText, onLink}) {
      user.press(*window, at(place));
      hidden->setHidden(true);
      user.release();
      hidden->setHidden(false);
    }
  EXPECT_TRUE(target->calls.empty());
  click(onLink);
  EXPECT_EQ(target->calls, Calls{first});
}

TEST_F(ClickableLabelTest, ALabelThatIsHiddenAndShownAgainUnderAPressReportsNoClick) {
  setOneLink();
  for (const Ref<NSView>& hidden : {Ref<NSView>(label), Ref<NSView>(parent)})
    for (const CGPoint place : {onText, onLink}) {
      user.press(*window, at(place));
      hidden->setHidden(true);
      hidden->setHidden(false);
      user.release();
    }
  EXPECT_TRUE(target->calls.empty());
  click(onText);
  click(onLink);
  EXPECT_EQ(target->calls, (Calls{"label", first}));
}

TEST_F(ClickableLabelTest, AReleaseWithoutAPressIsAClickOnTheLabelWhateverWasHiddenBefore) {
  setOneLink();
  click(onText);
  for (int i = 0; i < 2; ++i) {
    label->setHidden(true);
    label->setHidden(false);
    label->mouseUp(eventAt(onLink));
  }
  EXPECT_EQ(target->calls, (Calls{"label", "label", "label"}));
}

TEST_F(ClickableLabelTest, ADragByTheLabelThatMovesTheWindowIsNotAClick) {
  window->setMovableByWindowBackground(true);
  setOneLink();
  user.press(*window, at(onText));
  user.dragTo({1, 1});
  user.dragTo({2, 40});
  user.release();
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(ClickableLabelTest, TheTextIsDrawnWhereATextViewOfTheSameBoundsDrawsIt) {
  const auto places = [](const Ref<NSView>& view) {
    const harness::Lines lines =
        recordingOf([&] { view->displayRectInContext(view->frame(), *NSGraphicsContext::currentContext()); });
    return std::pair(only("concat", lines), only("glyphs", lines));
  };
  for (const NSLineBreakMode mode : {NSLineBreakByWordWrapping, NSLineBreakByTruncatingTail}) {
    for (const CGFloat width : {160, 40, 27}) {
      label->setFrameSize({width, 60});
      setText("ab cde fgh ij\nk", {{{3, 7}, url(first)}});
      const auto text = label->attributedStringValue()->mutableCopy();
      text->addAttribute(NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentRight, mode),
                         {0, text->length()});
      label->setAttributedStringValue(text);
      const auto view = make<NSTextView>(label->frame());
      view->textStorage()->setAttributedString(*text);
      view->layoutSubtreeIfNeeded();
      EXPECT_FALSE(places(label).second.empty());
      EXPECT_EQ(places(label), places(view)) << width;
    }
  }
}

TEST_F(ClickableLabelTest, ToAssistiveClientsEachLinkIsAnElementInTheText) {
  setText("one two, no", {{{0, 3}, url(first)}, {{4, 3}, second}, {{9, 2}, std::string("not a url")}});
  const AccessibilityElements links = label->cell()->accessibilityChildren().value();
  ASSERT_EQ(links.size(), 2u) << "what is not a URL is plain text";
  const char* const names[] = {"one", "two"};
  for (std::size_t i = 0; i < 2; ++i) {
    NSAccessibility& link = *accessibilityOf(links[i]);
    EXPECT_EQ(link.accessibilityRole(), NSAccessibilityLinkRole);
    EXPECT_EQ(link.accessibilityTitle(), names[i]);
    EXPECT_EQ(link.accessibilityParent(), label->cell());
    link.accessibilityPerformAction(NSAccessibilityPressAction);
  }
  EXPECT_EQ(target->calls, (Calls{first, second}));
  // The window's content is at 100, 100 of the screen and the label's upper edge at 110 in it.
  EXPECT_EQ(accessibilityOf(links[1])->accessibilityFrame(), (CGRect{100 + 20 + 25, 100 + 110 - 12, 15, 12}));
  label->setStringValue("plain");
  EXPECT_TRUE(label->cell()->accessibilityChildren()->empty());
  accessibilityOf(links[0])->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(target->calls.size(), 2u);
}

namespace {

// A link that counts how often a search asks whether the next one is the same.
class CountingLink : public NSObject {
 public:
  explicit CountingLink(int& comparisons) : comparisons_(comparisons) {}
  bool isEqual(const NSObject* other) const override {
    ++comparisons_;
    return NSObject::isEqual(other);
  }

 private:
  int& comparisons_;
};

}  // namespace

TEST_F(ClickableLabelTest, ATextIsSearchedOnceHoweverOftenClientsAsk) {
  int comparisons = 0;
  const auto counting = [&] { return NSAttributeValue(Ref<NSObject>(make<CountingLink>(comparisons))); };
  setText("one two", {{{0, 3}, url(first)}, {{4, 1}, counting()}, {{5, 2}, counting()}});
  const auto ask = [&] {
    comparisons = 0;
    const AccessibilityElements links = label->cell()->accessibilityChildren().value();
    EXPECT_EQ(links.size(), 1u);
    for (const Ref<NSObject>& link : links) EXPECT_EQ(accessibilityOf(link)->accessibilityTitle(), "one");
    return comparisons;
  };
  EXPECT_GT(ask(), 0);
  EXPECT_EQ(ask(), 0);
  label->setAttributedStringValue(label->attributedStringValue()->mutableCopy());
  EXPECT_GT(ask(), 0) << "a new text is searched";
}

TEST_F(ClickableLabelTest, AnElementOfAnEarlierTextEndsAndPressesNothing) {
  setOneLink();
  const AccessibilityElements earlier = label->cell()->accessibilityChildren().value();
  EXPECT_EQ(label->cell()->accessibilityChildren(), earlier) << "the same until then";
  setTwoLinks();
  const AccessibilityElements now = label->cell()->accessibilityChildren().value();
  EXPECT_EQ(now.size(), 2u);
  EXPECT_EQ(std::ranges::count(now, earlier.at(0)), 0);
  accessibilityOf(earlier[0])->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(ClickableLabelTest, ALinkThatWrapsIsOneElementAroundItsLines) {
  label->setFrameSize({40, 60});
  setText("ab cde fgh ij", {{{3, 7}, url(first)}});
  const AccessibilityElements links = label->cell()->accessibilityChildren().value();
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(accessibilityOf(links[0])->accessibilityTitle(), "cde fgh");
  EXPECT_EQ(accessibilityOf(links[0])->accessibilityFrame(), (CGRect{100 + 20 + 5, 100 + 110 - 24, 30, 24}));
}

TEST_F(ClickableLabelTest, ACopyOfTheCellLaysItsTextOutInTheSameWay) {
  setText("abc", {});
  const auto copied = std::dynamic_pointer_cast<NSTextFieldCell>(label->cell()->copy());
  EXPECT_EQ(copied->className(), "TessalunaUIKit.ClickableLabelCell");
  EXPECT_EQ(copied->drawingRectForBounds({0, 0, 100, 40}), (CGRect{5, 0, 90, 40}));
  EXPECT_EQ(copied->cellSize(), (CGSize{25, 12}));
  EXPECT_EQ(copied->controlView(), nullptr);
}

TEST_F(ClickableLabelTest, AFrameTakesNoRoomFromTheText) {
  label->setBezeled(true);
  setOneLink();
  click(onLink);
  EXPECT_EQ(target->calls, Calls{first});
  EXPECT_EQ(label->intrinsicContentSize(), (CGSize{65, 12}));
}

TEST_F(ClickableLabelTest, BothInitializersMakeALabelWithoutLinksOrTarget) {
  NSCoder coder(R"({"frame": [1, 2, 30, 40], "cell": {"stringValue": "abc"}})");
  for (const auto& made : {make<ClickableLabel>(CGRect{1, 2, 30, 40}), make<ClickableLabel>(coder)}) {
    EXPECT_EQ(made->actionTarget(), nullptr);
    made->resetCursorRects();
    EXPECT_NE(made->cursorAt({7, 7}), NSCursor::pointingHandCursor());
  }
}
