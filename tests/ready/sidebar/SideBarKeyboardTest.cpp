// A side bar under the keyboard, also where it is higher than its room.
#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/sidebar/SideBarRow.h"
#include "tests/harness/recordingOf.h"
#include "tests/ready/sidebar/SideBarWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SideBarTest = SideBarWorld;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SideBarTest, ArrowKeysMoveOverHeadingsAndItems) {
  giveKeyboardTo("Library");
  std::vector<std::string> stops;
  for (int i = 0; i < 8; ++i) {
    press(NSDownArrowFunctionKey);
    stops.push_back(focused());
  }
  EXPECT_THAT(stops, ElementsAre("Albums, 12", "Artists", "Songs", "Playlists", "Morning", "Old", "Autumn", "Autumn"));
  press(NSUpArrowFunctionKey);
  EXPECT_EQ(focused(), "Old");
  press(NSHomeFunctionKey);
  EXPECT_EQ(focused(), "Library");
  press(NSUpArrowFunctionKey);
  EXPECT_EQ(focused(), "Library");
  press(NSEndFunctionKey);
  EXPECT_EQ(focused(), "Autumn");
  EXPECT_THAT(chosen, IsEmpty()) << "the keyboard only moves";
}

TEST_F(SideBarTest, APressAnywhereOnAPlaceGivesItTheKeyboard) {
  places->now[0].items[1].icon = [](CGRect) {};
  places->didChange();
  desktop.settle();
  for (const std::string name : {"Artists", "Playlists"})
    for (const CGFloat x : {28.0, 120.0}) {
      window->makeFirstResponder(nullptr);
      user.click(*window, view(name)->convertPointToView({x, row / 2}, nullptr));
      EXPECT_EQ(focused(), name) << x;
      desktop.advance(1);
    }
}

TEST_F(SideBarTest, ArrowKeysPassOverWhatIsFolded) {
  click("Library");
  giveKeyboardTo("Library");
  press(NSDownArrowFunctionKey);
  EXPECT_EQ(focused(), "Playlists");
}

TEST_F(SideBarTest, ReturnAndSpaceChooseAnItem) {
  giveKeyboardTo("Artists");
  press("\r");
  press(NSDownArrowFunctionKey);
  press(" ");
  EXPECT_THAT(chosen, ElementsAre("Artists", "Songs"));
}

TEST_F(SideBarTest, AKeyThatIsHeldChoosesOnce) {
  giveKeyboardTo("Artists");
  for (const bool isRepeat : {false, true})
    view("Artists")->keyDown(make<NSEvent>(NSEvent::Fields{
        .type = NSEventType::KeyDown, .characters = "\r", .charactersIgnoringModifiers = "\r", .isRepeat = isRepeat}));
  EXPECT_THAT(chosen, ElementsAre("Artists"));
}

TEST_F(SideBarTest, ReturnAndSpaceFoldAndOpenASection) {
  giveKeyboardTo("Library");
  press("\r");
  EXPECT_FALSE(bar->isOpen("Library"));
  press(" ");
  EXPECT_TRUE(bar->isOpen("Library"));
}

TEST_F(SideBarTest, LeftFoldsAndRightOpens) {
  giveKeyboardTo("Library");
  press(NSLeftArrowFunctionKey);
  EXPECT_FALSE(bar->isOpen("Library"));
  press(NSLeftArrowFunctionKey);
  EXPECT_EQ(focused(), "Library");
  press(NSRightArrowFunctionKey);
  EXPECT_TRUE(bar->isOpen("Library"));
  press(NSRightArrowFunctionKey);
  EXPECT_EQ(focused(), "Albums, 12");
  press(NSRightArrowFunctionKey);
  EXPECT_EQ(focused(), "Albums, 12");
}

TEST_F(SideBarTest, LeftGoesFromAnItemToItsHeadingAndFromAFoldedOneToTheSectionAround) {
  giveKeyboardTo("Autumn");
  press(NSLeftArrowFunctionKey);
  EXPECT_EQ(focused(), "Old");
  press(NSLeftArrowFunctionKey);
  EXPECT_FALSE(bar->isOpen("Old"));
  press(NSLeftArrowFunctionKey);
  EXPECT_EQ(focused(), "Playlists");
}

TEST_F(SideBarTest, PageKeysMoveByWhatShows) {
  bar->setFrame({0, 0, width, 4 * row});
  desktop.settle();
  giveKeyboardTo("Library");
  press(NSPageDownFunctionKey);
  EXPECT_EQ(focused(), "Songs");
  press(NSPageDownFunctionKey);
  press(NSPageDownFunctionKey);
  EXPECT_EQ(focused(), "Autumn");
  press(NSPageUpFunctionKey);
  EXPECT_EQ(focused(), "Playlists");
  press(NSPageUpFunctionKey);
  press(NSPageUpFunctionKey);
  EXPECT_EQ(focused(), "Library");
}

TEST_F(SideBarTest, LettersGoToTheTitleThatBeginsWithThem) {
  giveKeyboardTo("Library");
  user.type("ar");
  EXPECT_EQ(focused(), "Artists");
  desktop.advance(2);
  user.type("p");
  EXPECT_EQ(focused(), "Playlists");
}

TEST_F(SideBarTest, ALetterThatBeginsNoTitleIsForgotten) {
  giveKeyboardTo("Library");
  user.type("xs");
  EXPECT_EQ(focused(), "Songs");
}

TEST_F(SideBarTest, TakesTheKeysThatItActsOn) {
  const auto takes = [&](const std::string& characters, bool isRepeat = false) {
    return bar->handleKey(*view("Albums, 12"), *make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                                              .characters = characters,
                                                                              .charactersIgnoringModifiers = characters,
                                                                              .isRepeat = isRepeat}));
  };
  for (const char32_t key : {NSUpArrowFunctionKey, NSDownArrowFunctionKey, NSPageUpFunctionKey, NSPageDownFunctionKey,
                             NSHomeFunctionKey, NSEndFunctionKey, NSLeftArrowFunctionKey, NSRightArrowFunctionKey})
    EXPECT_TRUE(takes(utf8FromScalar(key))) << static_cast<int>(key);
  for (const char* key : {" ", "\r"}) {
    EXPECT_TRUE(takes(key)) << key;
    EXPECT_TRUE(takes(key, true)) << key;
  }
  EXPECT_FALSE(takes("\x1b"));
  EXPECT_FALSE(takes("z")) << "no title begins with it";
  EXPECT_TRUE(takes("a"));
  EXPECT_TRUE(takes("z")) << "the word continues";
  EXPECT_FALSE(bar->handleKey(*bar, *make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown, .characters = " "})));
}

TEST_F(SideBarTest, ShortcutsAreTheProgramsOwn) {
  giveKeyboardTo("Library");
  user.pressKey(NSDownArrowFunctionKey, NSEventModifierFlagCommand);
  EXPECT_EQ(focused(), "Library");
}

TEST_F(SideBarTest, TabStopsAtTheBarOnceWhereTheKeyboardWas) {
  const auto before = make<NSTextField>(CGRect{0, 0, 50, 20}), after = make<NSTextField>(CGRect{60, 0, 50, 20});
  bar->removeFromSuperview();
  for (const Ref<NSView>& one : std::initializer_list<Ref<NSView>>{before, bar, after})
    window->contentView()->addSubview(one);
  const auto isIn = [&](const Ref<NSTextField>& field) {
    return accessibleRoleOf(focusedElement()) == "AXTextField" && field->currentEditor();
  };
  window->makeFirstResponder(before.get());
  press("\t");
  EXPECT_EQ(focused(), "Library");
  press(NSDownArrowFunctionKey);
  press("\t");
  EXPECT_TRUE(isIn(after));
  user.pressKey("\x19", NSEventModifierFlagShift);
  EXPECT_EQ(focused(), "Albums, 12");
  user.pressKey("\x19", NSEventModifierFlagShift);
  EXPECT_TRUE(isIn(before));
}

TEST_F(SideBarTest, TabGoesToTheSelectedItemFirst) {
  const auto before = make<NSTextField>(CGRect{0, 0, 50, 20});
  bar->removeFromSuperview();
  window->contentView()->addSubview(before);
  window->contentView()->addSubview(bar);
  window->makeFirstResponder(before.get());
  bar->setSelected("list-2");
  press("\t");
  EXPECT_EQ(focused(), "Autumn");
}

TEST_F(SideBarTest, WhatTheProgramSelectsLeavesTheKeyboardWhereItIs) {
  giveKeyboardTo("Songs");
  bar->setSelected("Artists");
  EXPECT_TRUE(view("Songs")->canBecomeKeyView());
  EXPECT_FALSE(view("Artists")->canBecomeKeyView());
  window->makeFirstResponder(nullptr);
  bar->setSelected("Albums");
  EXPECT_TRUE(view("Albums, 12")->canBecomeKeyView());
}

TEST_F(SideBarTest, WhereTabWouldStopIsFoldedAwayAndItStopsAtWhatShows) {
  const auto before = make<NSTextField>(CGRect{0, 0, 50, 20});
  bar->removeFromSuperview();
  window->contentView()->addSubview(before);
  window->contentView()->addSubview(bar);
  giveKeyboardTo("Artists");
  window->makeFirstResponder(before.get());
  bar->setIsOpen("Library", false);
  desktop.advance(1);
  press("\t");
  EXPECT_EQ(focused(), "Library");
}

TEST_F(SideBarTest, TheFocusRingIsAroundThePlaceWithinTheBar) {
  giveKeyboardTo("Artists");
  const CGRect ring = view("Artists")->focusRingMaskBounds();
  EXPECT_TRUE(NSContainsRect(view("Artists")->bounds(), ring));
  EXPECT_GT(ring.size.width, width / 2);
}

TEST_F(SideBarTest, TheFocusRingOfTheSelectedItemIsWithinItsGround) {
  const auto item = std::dynamic_pointer_cast<SideBarRow>(view("Artists"));
  const CGRect ground = item->focusRingMaskBounds();
  EXPECT_EQ(item->focusRingGround(), nullptr);
  bar->setSelected("Artists");
  // The ring is outside its mask, and the corners of the ground are round.
  EXPECT_EQ(item->focusRingMaskBounds(), NSInsetRect(ground, 3, 3));
  ASSERT_NE(item->focusRingGround(), nullptr);
  EXPECT_TRUE(item->focusRingGround()->isEqual(NSColor::alternateSelectedControlColor().get()));
}

// A bar that is higher than its room.

TEST_F(SideBarTest, ThePlaceOfTheKeyboardIsScrolledIntoSight) {
  bar->setFrame({0, 0, width, 3 * row});
  desktop.settle();
  giveKeyboardTo("Library");
  press(NSEndFunctionKey);
  EXPECT_EQ(view("Autumn")->visibleRect().size.height, row);
  EXPECT_EQ(bar->scrollView()->contentView()->bounds().origin.y, 5 * row);
  press(NSHomeFunctionKey);
  EXPECT_EQ(bar->scrollView()->contentView()->bounds().origin.y, 0);
}

TEST_F(SideBarTest, TheScrollBarShowsOnlyWhileItIsNeeded) {
  EXPECT_TRUE(bar->scrollView()->verticalScroller()->isHidden());
  bar->setFrame({0, 0, width, 3 * row});
  desktop.settle();
  EXPECT_FALSE(bar->scrollView()->verticalScroller()->isHidden());
  EXPECT_LT(view("Library")->bounds().size.width, width);
}

TEST_F(SideBarTest, PlacesAreAsWideAsTheRoomBesideTheScrollBar) {
  const std::vector<SideItem> few = places->now[0].items;
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 10; ++i) places->now[0].items.push_back({.title = "More " + std::to_string(i)});
    places->didChange();
    desktop.settle();
    EXPECT_FALSE(bar->scrollView()->verticalScroller()->isHidden());
    EXPECT_EQ(view("Library")->bounds().size.width, width - NSScroller::scrollerWidth());
    EXPECT_EQ(view("Artists")->bounds().size.width, width - NSScroller::scrollerWidth());
    places->now[0].items = few;
    places->didChange();
    desktop.settle();
    EXPECT_TRUE(bar->scrollView()->verticalScroller()->isHidden());
    EXPECT_EQ(view("Library")->bounds().size.width, width);
    EXPECT_EQ(view("Artists")->bounds().size.width, width);
  }
}

TEST_F(SideBarTest, WhatIsScrolledAwayComesBackWhenSectionsFold) {
  bar->setFrame({0, 0, width, 5 * row});
  giveKeyboardTo("Library");
  press(NSEndFunctionKey);
  bar->setIsOpen("Library", false);
  desktop.advance(1);
  EXPECT_EQ(bar->scrollView()->contentView()->bounds().origin.y, 0);
}

}  // namespace
}  // namespace tessaluna::ready
