// What assistive clients see of a side bar.
#include <gmock/gmock.h>

#include <set>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tests/ready/sidebar/SideBarWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SideBarTest = SideBarWorld;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(SideBarTest, AClientFindsHeadingsAndListsOfItems) {
  click("Artists");
  click("Old");
  window->makeFirstResponder(nullptr);
  EXPECT_THAT(lines(), ElementsAre("group \"Side bar\" []",  //
                                   "  disclosure triangle \"Library\" [focusable, expandable, expanded] press, focus",
                                   "  list \"Library\" []", "    row \"Albums, 12\" [focusable, selectable] press, focus",
                                   "    row \"Artists\" [focusable, selectable, selected] press, focus",
                                   "    row \"Songs\" [focusable, selectable] press, focus",
                                   "  disclosure triangle \"Playlists\" [focusable, expandable, expanded] press, focus",
                                   "  list \"Playlists\" []",  //
                                   "    row \"Morning\" [focusable, selectable] press, focus",
                                   "  disclosure triangle \"Old\" [focusable, expandable] press, focus"));
}

TEST_F(SideBarTest, AClientPressesItemsAndHeadings) {
  EXPECT_TRUE(performAccessibleAction(element("Songs"), NSAccessibilityPressAction));
  EXPECT_THAT(chosen, ElementsAre("Songs"));
  EXPECT_TRUE(performAccessibleAction(element("Library"), NSAccessibilityPressAction));
  desktop.advance(1);
  EXPECT_FALSE(bar->isOpen("Library"));
}

TEST_F(SideBarTest, AnItemTakesNothingButPressesFromAClient) {
  accessibilityOf(element("Artists"))->accessibilityPerformAction(NSAccessibilityShowMenuAction);
  EXPECT_THAT(chosen, testing::IsEmpty());
}

TEST_F(SideBarTest, AClientGivesAnItemTheKeyboard) {
  EXPECT_TRUE(performAccessibleAction(element("Songs"), accessibleFocusAction));
  EXPECT_EQ(focused(), "Songs");
}

TEST_F(SideBarTest, AClientIsNotifiedOfSelectionFocusAndFolding) {
  std::vector<std::string> changes;
  const AccessibleChanges reports({.isListening = [] { return true; },
                                   .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  meetAll(bar);
  bar->setSelected("Artists");
  desktop.advance(1);
  bar->setSelected("list-2");
  desktop.advance(1);
  EXPECT_THAT(changes,
              ElementsAre("row \"Artists\": selected", "row \"Artists\": not selected", "row \"Autumn\": selected"));
  changes.clear();
  giveKeyboardTo("Library");
  press(NSLeftArrowFunctionKey);
  EXPECT_THAT(changes,
              ElementsAre("disclosure triangle \"Library\": focused", "disclosure triangle \"Library\": not expanded"));
}

TEST_F(SideBarTest, AClientIsNotifiedOfACountThatChanges) {
  std::vector<std::string> changes;
  const AccessibleChanges reports({.isListening = [] { return true; },
                                   .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  meetAll(bar);
  places->now[0].items[0].count = 13;
  places->didChange();
  desktop.advance(1);
  EXPECT_THAT(changes, ElementsAre(HasSubstr("Albums, 13")));
}

TEST_F(SideBarTest, AClientIsNotifiedOfATitleThatChanges) {
  places->now[0].id = "library";
  places->didChange();
  desktop.settle();
  std::vector<std::string> changes;
  const AccessibleChanges reports({.isListening = [] { return true; },
                                   .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  meetAll(bar);
  places->now[0].title = "Music";
  places->didChange();
  desktop.advance(1);
  EXPECT_THAT(changes, Contains(HasSubstr("disclosure triangle \"Music\"")));
}

TEST_F(SideBarTest, AListRunsDownwardAndTheButtonsOfHeadingsAreLeftToTheMouse) {
  std::vector<std::string> found;
  const std::function<void(const Ref<NSView>&)> look = [&](const Ref<NSView>& one) {
    if (dynamic_cast<const NSButton*>(one.get())) found.push_back(one->acceptsFirstResponder() ? "stop" : "button");
    if (accessibleRoleOf(one) == NSAccessibilityListRole)
      found.push_back(
          *accessibilityOf(one)->accessibilityAttributeValue(NSAccessibilityOrientationAttribute).as<std::string>());
    for (const Ref<NSView>& view : one->subviews()) look(view);
  };
  look(bar);
  const std::string down(NSAccessibilityVerticalOrientationValue);
  EXPECT_THAT(std::set<std::string>(found.begin(), found.end()), ElementsAre(down, "button"));
}

}  // namespace
}  // namespace tessaluna::ready
