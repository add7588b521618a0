// The keyboard in a clickable label whose links take it.
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/text/unicode.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/links/LabelWorld.h"

using namespace tessaluna::platform;
using harness::only;
using harness::recordingOf;

namespace {

class ClickableLabelKeyboardTest : public harness::LabelWorld {
 protected:
  ClickableLabelKeyboardTest() {
    // Not in the parent, which takes all keys.
    window = showWindow();
    window->contentView()->addSubview(label);
    window->contentView()->addSubview(other);
    label->setTakesKeyboard(true);
  }
  void press(std::string_view key) {
    user.pressKey(std::string(key));
    desktop.settle();
  }
  void press(char32_t key) { press(utf8FromScalar(key)); }
  // Where the ring is, in the label; absent if the keyboard is elsewhere.
  std::optional<CGRect> ring() const {
    const auto* keyboard = dynamic_cast<const TessalunaUIKit::LinkKeyboard*>(window->firstResponder());
    return keyboard ? std::optional(label->convertRectFromView(keyboard->focusRingMaskBounds(), keyboard)) : std::nullopt;
  }

  const Ref<NSTextField> other = make<NSTextField>(CGRect{20, 10, 100, 24});
};

}  // namespace

TEST_F(ClickableLabelKeyboardTest, IsOffAtTheStart) {
  EXPECT_FALSE(make<ClickableLabel>(CGRect{})->takesKeyboard());
  setTwoLinks();
  label->setTakesKeyboard(false);
  press(NSTabCharacter);
  EXPECT_FALSE(ring());
  EXPECT_NE(other->currentEditor(), nullptr);
}

TEST_F(ClickableLabelKeyboardTest, SettingItAgainChangesNothing) {
  const std::size_t count = label->subviews().size();
  label->setTakesKeyboard(true);
  EXPECT_EQ(label->subviews().size(), count);
  label->setTakesKeyboard(false);
  label->setTakesKeyboard(false);
  EXPECT_FALSE(label->takesKeyboard());
  EXPECT_EQ(label->subviews().size(), count - 1);
}

TEST_F(ClickableLabelKeyboardTest, ItIsAsLargeAsItsLabelAtAnySize) {
  label->setFrameSize({150, 30});
  EXPECT_EQ(label->subviews().back()->frame(), label->bounds());
}

TEST_F(ClickableLabelKeyboardTest, TabEntersTheLinksAndLeavesThem) {
  setTwoLinks();
  press(NSTabCharacter);
  EXPECT_EQ(ring(), (CGRect{5, 0, 15, 12}));
  press(NSTabCharacter);
  EXPECT_FALSE(ring());
  EXPECT_NE(other->currentEditor(), nullptr);
}

TEST_F(ClickableLabelKeyboardTest, ArrowsGoFromLinkToLinkAndReturnPressesOne) {
  setTwoLinks();
  press(NSTabCharacter);
  press("\r");
  press(NSRightArrowFunctionKey);
  EXPECT_EQ(ring(), (CGRect{25, 0, 15, 12}));
  press("\r");
  EXPECT_EQ(target->calls, (Calls{first, second}));
}

TEST_F(ClickableLabelKeyboardTest, WithoutALinkThatLeadsSomewhereTabPassesBy) {
  setText("one two", {{{0, 3}, std::int64_t{7}}});
  press(NSTabCharacter);
  EXPECT_FALSE(ring());
  EXPECT_NE(other->currentEditor(), nullptr);
}

TEST_F(ClickableLabelKeyboardTest, TheRingIsAroundTheFirstLineOfALinkThatWraps) {
  label->setFrameSize({60, 60});
  setText("one of two links", {{{4, 12}, url(first)}});
  press(NSTabCharacter);
  EXPECT_EQ(ring(), (CGRect{25, 0, 30, 12}));
}

TEST_F(ClickableLabelKeyboardTest, RingAndLinksAreWhereTheyShowBeforeTheNextResetOfTheCursorRectangles) {
  setText("one of two links", {{{11, 5}, url(first)}});
  label->setFrameSize({65, 60});
  press(NSTabCharacter);
  EXPECT_EQ(ring(), (CGRect{5, 12, 25, 12}));
  const CGRect frame = accessibleFrameOf(label->accessibleLinks()[0]);
  EXPECT_EQ(frame, window->convertRectToScreen(label->convertRectToView({5, 12, 25, 12}, nullptr)));
  setText("of two links", {{{7, 5}, url(first)}});
  label->setFrameSize({200, 60});
  EXPECT_EQ(ring(), (CGRect{40, 0, 25, 12}));
}

TEST_F(ClickableLabelKeyboardTest, TheLinkThatTheKeysAreOnHasTheFocusToAssistiveClients) {
  setTwoLinks();
  press(NSTabCharacter);
  const AccessibilityElements links = label->accessibleLinks();
  EXPECT_EQ(focusedElement(), links[0]);
  std::size_t heard = 0;
  const auto token =
      accessibilityNotificationCenter().addObserverForName(NSAccessibilityFocusedUIElementChangedNotification, label->cell(),
                                                           nullptr, [&](const Ref<NSNotification>&) { ++heard; });
  press(NSRightArrowFunctionKey);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(heard, 1u);
  EXPECT_EQ(focusedElement(), links[1]);
}

TEST_F(ClickableLabelKeyboardTest, ATextWithoutLinksGivesTheKeyboardBack) {
  setTwoLinks();
  press(NSTabCharacter);
  setText("no links", {});
  EXPECT_FALSE(ring());
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(ClickableLabelKeyboardTest, APressWithTheMouseTakesTheKeyboardFromNobody) {
  setTwoLinks();
  window->makeFirstResponder(other.get());
  click({12, middle});
  EXPECT_EQ(target->calls, Calls{first});
  EXPECT_NE(other->currentEditor(), nullptr);
}

TEST_F(ClickableLabelKeyboardTest, TheRingIsPaintedOnTheLabelsGround) {
  const auto groundOf = [this] {
    return dynamic_cast<const FocusRingSurroundings&>(*window->firstResponder()).focusRingGround();
  };
  setTwoLinks();
  press(NSTabCharacter);
  EXPECT_EQ(groundOf(), nullptr);
  label->setDrawsBackground(true);
  label->setBackgroundColor(NSColor::redColor());
  EXPECT_EQ(groundOf(), NSColor::redColor());
}
