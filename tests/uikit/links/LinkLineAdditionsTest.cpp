#include "tessaluna/uikit/links/LinkLineAdditions.h"

#include <gmock/gmock.h>

#include "tests/uikit/links/LinksWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// "abc, de, fgh" in 36 points: "abc, d…", whose links end at 30.
class LinkLineAdditionsTest : public harness::LinksWorld {
 protected:
  LinkLineAdditionsTest() { cut(); }
  void cut(CGFloat width = 36) {
    newField(three, width);
    draw();
  }
  void draw() {
    field->setNeedsDisplay(true);
    desktop.settle();
  }

  std::vector<std::string> menuTitles() const {
    std::vector<std::string> titles;
    if (desktop.openMenu())
      for (const auto& entry : desktop.openMenu()->entries) titles.push_back(entry.title);
    return titles;
  }
  void choose(std::size_t number) {
    desktop.chooseFromMenu(number);
    desktop.settle();
  }
  void pressEllipsis() {
    moveTo(31);
    user.click(*window, at(31));
  }

  AccessibilityElements links() const { return field->accessibilityChildren().value(); }
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const Ref<NSObject>& link : links()) names.push_back(accessibilityOf(link)->accessibilityTitle());
    return names;
  }
  // In the field's coordinates.
  CGRect boundsOf(std::size_t link) const {
    const CGRect onScreen = accessibilityOf(links().at(link))->accessibilityFrame();
    const CGRect fieldOnScreen = field->accessibilityFrame();
    return NSOffsetRect(onScreen, -fieldOnScreen.origin.x, -fieldOnScreen.origin.y);
  }
  // What a client meets in the field: a line for each element, with its role, its name and its bounds in the field.
  std::vector<std::string> tree() const {
    std::vector<std::string> lines{field->accessibilityRole() + " \"" + field->accessibilityLabel() + "\""};
    for (std::size_t i = 0; i < links().size(); ++i) {
      const NSAccessibility& link = *accessibilityOf(links()[i]);
      const CGRect bounds = boundsOf(i);
      lines.push_back("  " + link.accessibilityRole() + " \"" + link.accessibilityTitle() + "\" " +
                      std::to_string(int(bounds.origin.x)) + " to " + std::to_string(int(CGRectGetMaxX(bounds))));
    }
    return lines;
  }
  void press(const Ref<NSObject>& link) { accessibilityOf(link)->accessibilityPerformAction(NSAccessibilityPressAction); }
  std::vector<std::size_t> clicked() const {
    std::vector<std::size_t> elements;
    for (const auto& click : target->clicks) elements.push_back(click.element);
    return elements;
  }
};

}  // namespace

TEST_F(LinkLineAdditionsTest, ALinkTakesPressesOnlyFromClients) {
  accessibilityOf(links().at(0))->accessibilityPerformAction(NSAccessibilityShowMenuAction);
  EXPECT_THAT(target->clicks, IsEmpty());
}

TEST_F(LinkLineAdditionsTest, MenuAndToolTipAreOffAtTheStart) {
  EXPECT_FALSE(field->showsMenuAtEllipsis());
  EXPECT_FALSE(field->showsToolTipWhileCut());
  pressEllipsis();
  EXPECT_THAT(menuTitles(), IsEmpty());
  EXPECT_EQ(field->toolTip(), "");
}

// The menu.

TEST_F(LinkLineAdditionsTest, APressOnTheEllipsisOpensAMenuOfAllLinksThere) {
  field->setShowsMenuAtEllipsis(true);
  moveTo(31);
  user.press(*window, at(31));
  EXPECT_THAT(menuTitles(), ElementsAre("abc", "de", "fgh"));
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{100 + origin.x + 30, 100 + origin.y, 0, 0}));
  EXPECT_FALSE(field->isPressed());
  choose(2);
  EXPECT_THAT(clicked(), ElementsAre(2));
  user.release();
  EXPECT_THAT(clicked(), ElementsAre(2));
}

TEST_F(LinkLineAdditionsTest, AMenuWithoutAChoiceClicksNothing) {
  field->setShowsMenuAtEllipsis(true);
  pressEllipsis();
  desktop.chooseFromMenu(std::nullopt);
  desktop.settle();
  EXPECT_THAT(clicked(), IsEmpty());
}

TEST_F(LinkLineAdditionsTest, BesideTheEllipsisThereIsNoMenu) {
  field->setShowsMenuAtEllipsis(true);
  for (const CGFloat x : {3, 20, 29}) {
    moveTo(x);
    user.click(*window, at(x));
    EXPECT_THAT(menuTitles(), IsEmpty()) << x;
  }
  cut(100);
  field->setShowsMenuAtEllipsis(true);
  user.click(*window, at(90));
  EXPECT_THAT(menuTitles(), IsEmpty()) << "nothing is cut";
}

TEST_F(LinkLineAdditionsTest, WithLinksOffThereIsNoMenu) {
  field->setShowsMenuAtEllipsis(true);
  field->setLinksEnabled(false);
  pressEllipsis();
  EXPECT_THAT(menuTitles(), IsEmpty());
}

TEST_F(LinkLineAdditionsTest, TheMenuLeavesOutStringsWithoutCharactersAndKeepsTheIndexes) {
  newField(Strings{"abcdef", "", "gh"}, 20);
  draw();
  field->setShowsMenuAtEllipsis(true);
  moveTo(18);
  user.press(*window, at(18));
  EXPECT_THAT(menuTitles(), ElementsAre("abcdef", "gh"));
  choose(1);
  EXPECT_THAT(clicked(), ElementsAre(2));
}

TEST_F(LinkLineAdditionsTest, AChoiceFromAListThatHasChangedMeanwhileIsNotAClick) {
  field->setShowsMenuAtEllipsis(true);
  moveTo(31);
  user.press(*window, at(31));
  field->setStringValues(Strings{"x", "y", "z"});
  choose(2);
  EXPECT_THAT(clicked(), IsEmpty());
}

TEST_F(LinkLineAdditionsTest, AChoiceAfterLinksWereTurnedOffIsNotAClick) {
  field->setShowsMenuAtEllipsis(true);
  moveTo(31);
  user.press(*window, at(31));
  field->setLinksEnabled(false);
  choose(2);
  EXPECT_THAT(clicked(), IsEmpty());
}

TEST_F(LinkLineAdditionsTest, TheFieldMayGoWhileItsMenuIsOpen) {
  field->setShowsMenuAtEllipsis(true);
  moveTo(31);
  user.press(*window, at(31));
  field->removeFromSuperview();
  const WeakRef<Field> weak = field;
  field.reset();
  choose(0);
  EXPECT_TRUE(weak.expired());
  EXPECT_THAT(clicked(), IsEmpty());
}

// The tool tip.

TEST_F(LinkLineAdditionsTest, WhileCutTheWholeTextIsTheToolTip) {
  field->setShowsToolTipWhileCut(true);
  draw();
  EXPECT_EQ(field->toolTip(), "abc, de, fgh");
  field->setFrameSize({100, 20});
  draw();
  EXPECT_EQ(field->toolTip(), "");
}

TEST_F(LinkLineAdditionsTest, SwitchingTheToolTipOffTakesItAway) {
  field->setShowsToolTipWhileCut(true);
  draw();
  field->setShowsToolTipWhileCut(false);
  EXPECT_EQ(field->toolTip(), "");
}

TEST_F(LinkLineAdditionsTest, SwitchedOffAToolTipOfTheProgramStays) {
  field->setToolTip("artists");
  field->setShowsToolTipWhileCut(false);
  draw();
  EXPECT_EQ(field->toolTip(), "artists");
}

// Assistive clients.

TEST_F(LinkLineAdditionsTest, EachLinkIsAnElementCutOffOrNot) {
  EXPECT_THAT(names(), ElementsAre("abc", "de", "fgh"));
  for (const Ref<NSObject>& link : links()) {
    const NSAccessibility& element = *accessibilityOf(link);
    EXPECT_EQ(element.accessibilityRole(), NSAccessibilityLinkRole);
    EXPECT_EQ(element.accessibilityParent(), field);
    EXPECT_THAT(element.accessibilityActionNames(), ElementsAre(NSAccessibilityPressAction));
    EXPECT_FALSE(element.accessibilityIsIgnored());
    EXPECT_THAT(element.accessibilityChildren().value(), IsEmpty());
  }
}

TEST_F(LinkLineAdditionsTest, TheTreeOfALineThatIsCut) {
  EXPECT_THAT(tree(), ElementsAre("AXButton \"abc, de, fgh\"", "  AXLink \"abc\" 0 to 15", "  AXLink \"de\" 25 to 30",
                                  "  AXLink \"fgh\" 30 to 36"));
}

TEST_F(LinkLineAdditionsTest, ALinkEndsAtTheEllipsisAndOneAfterThatIsTheEllipsis) {
  EXPECT_EQ(boundsOf(0), (CGRect{0, 0, 15, 20}));
  EXPECT_EQ(boundsOf(1), (CGRect{25, 0, 5, 20}));
  EXPECT_EQ(boundsOf(2), (CGRect{30, 0, 6, 20}));
  cut(100);
  EXPECT_EQ(boundsOf(1), (CGRect{25, 0, 10, 20}));
  EXPECT_EQ(boundsOf(2), (CGRect{45, 0, 15, 20}));
}

TEST_F(LinkLineAdditionsTest, PressingAnElementClicksItsLink) {
  for (const Ref<NSObject>& link : links()) press(link);
  EXPECT_THAT(clicked(), ElementsAre(0, 1, 2));
  field->setTarget(nullptr);
  press(links()[0]);
  EXPECT_THAT(clicked(), ElementsAre(0, 1, 2));
}

TEST_F(LinkLineAdditionsTest, AnEmptyStringIsNotAnElementAndKeepsItsIndex) {
  newField(Strings{"", "a", "", "b"}, 100);
  EXPECT_THAT(names(), ElementsAre("a", "b"));
  press(links()[1]);
  EXPECT_THAT(clicked(), ElementsAre(3));
}

TEST_F(LinkLineAdditionsTest, WithLinksOffThereAreNoElements) {
  const AccessibilityElements earlier = links();
  field->setLinksEnabled(false);
  EXPECT_THAT(names(), IsEmpty());
  press(earlier[0]);
  EXPECT_THAT(clicked(), IsEmpty());
  field->setLinksEnabled(true);
  EXPECT_THAT(names(), ElementsAre("abc", "de", "fgh"));
}

TEST_F(LinkLineAdditionsTest, TheElementsStayUntilTheLinksChangeAndThenDoNothing) {
  const AccessibilityElements earlier = links();
  field->setLinksEnabled(true);
  EXPECT_EQ(links(), earlier);
  AccessibilityElements ended;
  const auto observer = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityUIElementDestroyedNotification, nullptr, nullptr,
      [&](const Ref<NSNotification>& told) { ended.push_back(told->object()); });
  field->setStringValues(Strings{"x", "y", "z"});
  accessibilityNotificationCenter().removeObserver(observer);
  EXPECT_EQ(ended, earlier);
  EXPECT_THAT(names(), ElementsAre("x", "y", "z"));
  press(earlier[1]);
  EXPECT_THAT(clicked(), IsEmpty());
  EXPECT_TRUE(accessibilityOf(earlier[1])->accessibilityIsIgnored());
}

TEST_F(LinkLineAdditionsTest, AnElementThatOutlivesTheFieldDoesNothing) {
  const AccessibilityElements kept = links();
  field->removeFromSuperview();
  field->setTarget(nullptr);
  field.reset();
  press(kept[0]);
  EXPECT_EQ(accessibilityOf(kept[0])->accessibilityParent(), nullptr);
  EXPECT_EQ(accessibilityOf(kept[0])->accessibilityFrame(), CGRect{});
  EXPECT_THAT(clicked(), IsEmpty());
}

TEST_F(LinkLineAdditionsTest, TheTargetMayLetTheFieldGoWhenAnElementIsPressed) {
  const WeakRef<Field> weak = field;
  target->onClick = [this](Field& sender) {
    sender.removeFromSuperview();
    sender.setTarget(nullptr);
    field.reset();
  };
  const AccessibilityElements kept = links();
  press(kept[2]);
  EXPECT_THAT(clicked(), ElementsAre(2));
  EXPECT_TRUE(weak.expired());
}
