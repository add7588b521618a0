#include "tessaluna/uikit/links/LinkKeyboard.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/uikit/links/LinksWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class LinkKeyboardTest : public harness::LinksWorld {
 protected:
  // "abc, de, fgh", beside a view that takes keys as well.
  void show(CGFloat width = 100, bool hasMenu = true) {
    newField(three, width);
    field->setShowsMenuAtEllipsis(hasMenu);
    field->setTakesKeyboard(true);
    other = make<NSTextField>(CGRect{20, 90, 100, 24});
    // Not in the parent, which takes all keys.
    window->contentView()->addSubview(field);
    window->contentView()->addSubview(other);
    desktop.settle();
  }
  void press(std::string_view key, std::uint32_t modifiers = 0) {
    user.pressKey(std::string(key), modifiers);
    desktop.settle();
  }
  void press(char32_t key) {
    user.pressKey(key);
    desktop.settle();
  }
  void tab() { press(NSTabCharacter); }
  void left() { press(NSLeftArrowFunctionKey); }
  void right() { press(NSRightArrowFunctionKey); }
  void enter() { press("\r"); }

  // Where the ring is, in the field; absent if the keyboard is elsewhere.
  std::optional<CGRect> ring() const {
    const auto* keyboard = dynamic_cast<const LinkKeyboard*>(window->firstResponder());
    return keyboard ? std::optional(keyboard->focusRingMaskBounds()) : std::nullopt;
  }
  bool hasKeyboard() const { return ring().has_value(); }
  std::vector<std::size_t> clicked() const {
    std::vector<std::size_t> elements;
    for (const auto& click : target->clicks) elements.push_back(click.element);
    return elements;
  }
  std::vector<std::string> focusedLinks() const {
    std::vector<std::string> names;
    const AccessibilityElements links = field->accessibilityChildren().value();
    for (const Ref<NSObject>& link : links)
      if (accessibilityOf(link)->isAccessibilityFocused()) names.push_back(accessibilityOf(link)->accessibilityTitle());
    return names;
  }

  using LinkKeyboard = TessalunaUIKit::LinkKeyboard;
  Ref<NSTextField> other;
};

}  // namespace

TEST_F(LinkKeyboardTest, IsOffAtTheStart) {
  newField(three, 100);
  EXPECT_FALSE(field->takesKeyboard());
  tab();
  EXPECT_FALSE(hasKeyboard());
}

TEST_F(LinkKeyboardTest, SettingItAgainChangesNothing) {
  show();
  const std::size_t count = field->subviews().size();
  field->setTakesKeyboard(true);
  EXPECT_EQ(field->subviews().size(), count);
  field->setTakesKeyboard(false);
  field->setTakesKeyboard(false);
  EXPECT_FALSE(field->takesKeyboard());
  EXPECT_EQ(field->subviews().size(), count - 1);
}

TEST_F(LinkKeyboardTest, ItIsAsLargeAsItsLineAtAnySize) {
  show();
  field->setFrameSize({150, 30});
  EXPECT_EQ(field->subviews().back()->frame(), field->bounds());
}

TEST_F(LinkKeyboardTest, NoLinkIsFocusedWhereTheKeyboardHasLeft) {
  show();
  tab();
  EXPECT_THAT(focusedLinks(), ElementsAre("abc"));
  window->makeFirstResponder(nullptr);
  EXPECT_THAT(focusedLinks(), IsEmpty());
}

TEST_F(LinkKeyboardTest, TabEntersTheLineAtItsFirstLinkAndLeavesIt) {
  show();
  tab();
  EXPECT_EQ(ring(), (CGRect{0, 0, 15, 20}));
  right();
  tab();
  EXPECT_FALSE(hasKeyboard());
  EXPECT_NE(other->currentEditor(), nullptr);
  press(NSTabCharacter, NSEventModifierFlagShift);
  EXPECT_EQ(ring(), (CGRect{0, 0, 15, 20})) << "whichever link was left";
}

TEST_F(LinkKeyboardTest, LeftAndRightGoFromLinkToLinkAndStopAtTheEnds) {
  show();
  tab();
  right();
  EXPECT_EQ(ring(), (CGRect{25, 0, 10, 20}));
  right();
  right();
  EXPECT_EQ(ring(), (CGRect{45, 0, 15, 20}));
  left();
  EXPECT_EQ(ring(), (CGRect{25, 0, 10, 20}));
  left();
  left();
  EXPECT_EQ(ring(), (CGRect{0, 0, 15, 20}));
  press(NSEndFunctionKey);
  EXPECT_EQ(ring(), (CGRect{45, 0, 15, 20}));
  press(NSHomeFunctionKey);
  EXPECT_EQ(ring(), (CGRect{0, 0, 15, 20}));
}

TEST_F(LinkKeyboardTest, ReturnPressesTheLinkOnceForEachPressOfTheKey) {
  show();
  tab();
  enter();
  right();
  user.keyDown("\r");
  EXPECT_THAT(clicked(), ElementsAre(0, 1));
  for (const bool isRepeat : {true, false})
    window->firstResponder()->keyDown(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                                    .window = window,
                                                                    .characters = "\r",
                                                                    .charactersIgnoringModifiers = "\r",
                                                                    .isRepeat = isRepeat}));
  EXPECT_THAT(clicked(), ElementsAre(0, 1, 1)) << "a key that is held presses once";
}

TEST_F(LinkKeyboardTest, OtherKeysPassOn) {
  show();
  parent->addSubview(field);
  tab();
  press("x");
  EXPECT_EQ(std::ranges::count(parent->calls, "keyDown"), 1);
}

TEST_F(LinkKeyboardTest, TheLastStopOfALineThatIsCutIsTheMenu) {
  show(36);  // "abc, d…", whose links end at 30
  tab();
  right();
  EXPECT_EQ(ring(), (CGRect{25, 0, 5, 20}));
  right();
  right();
  EXPECT_EQ(ring(), (CGRect{30, 0, 6, 20}));
  enter();
  ASSERT_TRUE(desktop.openMenu());
  EXPECT_EQ(desktop.openMenu()->entries.size(), 3u);
  desktop.chooseFromMenu(2);
  desktop.settle();
  EXPECT_THAT(clicked(), ElementsAre(2));
}

TEST_F(LinkKeyboardTest, WithTheMenuLinksThatAreCutOffAreNotStops) {
  show(33);  // "abc, …", whose links end at 25, where "de" would begin
  tab();
  right();
  EXPECT_EQ(ring(), (CGRect{25, 0, 8, 20}));
  enter();
  EXPECT_TRUE(desktop.openMenu());
  EXPECT_THAT(clicked(), IsEmpty());
}

TEST_F(LinkKeyboardTest, WithoutTheMenuLinksThatAreCutOffAreStopsAtTheEllipsis) {
  show(33, /*hasMenu=*/false);  // "abc, …", whose links end at 25
  tab();
  right();
  EXPECT_EQ(ring(), (CGRect{25, 0, 8, 20}));
  enter();
  right();
  EXPECT_EQ(ring(), (CGRect{25, 0, 8, 20}));
  enter();
  EXPECT_THAT(clicked(), ElementsAre(1, 2));
}

TEST_F(LinkKeyboardTest, StringsWithoutCharactersAreNotStops) {
  show();
  field->setStringValues(Strings{"", "a", "", "b"});
  tab();
  enter();
  right();
  enter();
  EXPECT_THAT(clicked(), ElementsAre(1, 3));
}

TEST_F(LinkKeyboardTest, APressWithTheMouseDoesNotTakeTheKeyboard) {
  show();
  other->selectText(nullptr);
  user.type("que");
  moveTo(3);
  user.click(*window, at(3));
  EXPECT_THAT(clicked(), ElementsAre(0));
  ASSERT_NE(other->currentEditor(), nullptr);
  user.type("ry");
  EXPECT_EQ(other->stringValue(), "query");
}

TEST_F(LinkKeyboardTest, TheLineShowsHandsAndToolTipsBelowTheKeyboard) {
  show();
  window->resetCursorRects();
  EXPECT_EQ(window->contentView()->hitTest(at(3)), field.get());
  EXPECT_TRUE(showsHandAt(3));
}

TEST_F(LinkKeyboardTest, WhereLinksAreOffTheKeyboardPassesBy) {
  show();
  field->setLinksEnabled(false);
  tab();
  EXPECT_FALSE(hasKeyboard());
  field->setLinksEnabled(true);
  field->setStringValues(Strings{});
  press(NSTabCharacter);
  press(NSTabCharacter);
  EXPECT_FALSE(hasKeyboard());
}

TEST_F(LinkKeyboardTest, LinksThatAreTurnedOffOrGoLoseTheKeyboard) {
  show();
  tab();
  field->setLinksEnabled(false);
  EXPECT_FALSE(hasKeyboard());
  field->setLinksEnabled(true);
  tab();
  ASSERT_TRUE(hasKeyboard());
  field->setStringValues(std::nullopt);
  EXPECT_FALSE(hasKeyboard());
  field->setStringValues(three);
  tab();
  ASSERT_TRUE(hasKeyboard());
  field->setTakesKeyboard(false);
  EXPECT_FALSE(hasKeyboard());
}

TEST_F(LinkKeyboardTest, AShorterListMovesTheKeyboardToItsLastLink) {
  show();
  tab();
  right();
  right();
  field->setStringValues(Strings{"xy"});
  EXPECT_EQ(ring(), (CGRect{0, 0, 10, 20}));
  enter();
  EXPECT_THAT(clicked(), ElementsAre(0));
}

TEST_F(LinkKeyboardTest, TheRingIsAroundOneLinkAndMovesWithTheKeyboard) {
  show();
  tab();
  right();
  nativeOf(*window).forgetPaints();
  right();
  EXPECT_FALSE(nativeOf(*window).paints().empty());
}

TEST_F(LinkKeyboardTest, TheRingComesWithTheKeyThatMovesOnWhereTheProgramGaveTheKeyboard) {
  show();
  tab();
  NSResponder* keyboard = window->firstResponder();
  window->makeFirstResponder(nullptr);
  window->makeFirstResponder(keyboard);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  right();
  // "de" is at 45 to 55 and 30 to 50.
  ASSERT_FALSE(nativeOf(*window).paints().empty());
  EXPECT_THAT(nativeOf(*window).paints().back().dirty, testing::Contains(CGRect{43, 28, 14, 2}));
}

TEST_F(LinkKeyboardTest, TheRingFollowsItsLinkWhereAnotherWidthCutsIt) {
  show(100, /*hasMenu=*/false);
  tab();
  press(NSEndFunctionKey);  // "fgh", at 45 to 60
  nativeOf(*window).forgetPaints();
  field->setFrameSize({33, 20});
  desktop.settle();  // "abc, …", whose links end at 25
  desktop.settle();  // the ring, now that the cut is known
  // The ring's sides are two points wide; the ellipsis is at 45 to 53.
  EXPECT_THAT(nativeOf(*window).paints().back().dirty,
              testing::IsSupersetOf({CGRect{43, 28, 12, 2}, CGRect{43, 50, 12, 2}}));
}

TEST_F(LinkKeyboardTest, TheRingLiesBesideTheLettersAndNotOnThem) {
  show();
  nativeOf(*window).forgetPaints();
  tab();
  // "abc" is at 20 to 35 and 30 to 50; the ring's sides are two points wide.
  EXPECT_THAT(nativeOf(*window).paints().back().dirty, UnorderedElementsAre(CGRect{18, 28, 19, 2}, CGRect{18, 50, 19, 2},
                                                                            CGRect{18, 30, 2, 20}, CGRect{35, 30, 2, 20}));
}

TEST_F(LinkKeyboardTest, ClientsSeeTheFocusOnTheLinkAndAreNotifiedAsItMoves) {
  show();
  EXPECT_THAT(focusedLinks(), IsEmpty());
  int told = 0;
  const auto observer = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityFocusedUIElementChangedNotification, nullptr, nullptr, [&](const Ref<NSNotification>&) { ++told; });
  tab();
  EXPECT_THAT(focusedLinks(), ElementsAre("abc"));
  EXPECT_EQ(told, 1);
  right();
  EXPECT_THAT(focusedLinks(), ElementsAre("de"));
  EXPECT_EQ(told, 2);
  accessibilityNotificationCenter().removeObserver(observer);
}

TEST_F(LinkKeyboardTest, TheTargetMayLetTheFieldGoWhenReturnIsPressed) {
  show();
  const WeakRef<Field> weak = field;
  target->onClick = [this](Field& sender) {
    sender.removeFromSuperview();
    sender.setTarget(nullptr);
    field.reset();
  };
  tab();
  enter();
  EXPECT_THAT(clicked(), ElementsAre(0));
  EXPECT_TRUE(weak.expired());
}
