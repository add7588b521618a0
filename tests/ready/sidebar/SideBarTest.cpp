// What a user does with a side bar by the pointer: choosing and folding.
#include "tessaluna/ready/sidebar/SideBar.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/views/NSButton.h"
#include "tests/ready/sidebar/SideBarWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SideBarTest = SideBarWorld;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SideBarTest, SectionsAreBelowEachOtherWithTheirItems) {
  EXPECT_EQ(topOf("Library"), 0);
  EXPECT_EQ(topOf("Albums, 12"), row);
  EXPECT_EQ(topOf("Songs"), 3 * row);
  EXPECT_EQ(topOf("Playlists"), 4 * row);
  EXPECT_EQ(topOf("Morning"), 5 * row);
  EXPECT_EQ(topOf("Old"), 6 * row);
  EXPECT_EQ(topOf("Autumn"), 7 * row);
  EXPECT_EQ(view("Autumn")->bounds().size.width, width);
}

// Choosing.

TEST_F(SideBarTest, NothingIsSelectedAtTheStart) { EXPECT_EQ(bar->selected(), std::nullopt); }

TEST_F(SideBarTest, AClickChoosesAnItem) {
  click("Artists");
  EXPECT_THAT(chosen, ElementsAre("Artists"));
  EXPECT_EQ(bar->selected(), "Artists");
}

TEST_F(SideBarTest, AnItemWithAnIdIsSelectedByIt) {
  click("Autumn");
  EXPECT_EQ(bar->selected(), "list-2");
}

TEST_F(SideBarTest, OneItemIsSelectedOverAllSections) {
  click("Artists");
  click("Autumn");
  EXPECT_FALSE(isSelected("Artists"));
  EXPECT_TRUE(isSelected("Autumn"));
}

TEST_F(SideBarTest, AReleaseBesideTheItemChoosesNothing) {
  user.press(*window, view("Artists")->convertPointToView({60, row / 2}, nullptr));
  user.dragTo({60, height - row / 2});
  user.release();
  EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(SideBarTest, TheSelectedItemCanBeChosenAgain) {
  click("Artists");
  click("Artists");
  EXPECT_THAT(chosen, ElementsAre("Artists", "Artists"));
}

TEST_F(SideBarTest, TheProgramSelectsWithoutACall) {
  bar->setSelected("list-1");
  EXPECT_TRUE(isSelected("Morning"));
  EXPECT_THAT(chosen, IsEmpty());
  bar->setSelected(std::nullopt);
  EXPECT_FALSE(isSelected("Morning"));
}

TEST_F(SideBarTest, AnUnknownIdSelectsNothing) {
  bar->setSelected("list-1");
  bar->setSelected("gone");
  EXPECT_EQ(bar->selected(), std::nullopt);
  EXPECT_FALSE(isSelected("Morning"));
}

TEST_F(SideBarTest, TheBarMayGoWhileAnItemIsChosen) {
  bar->setOnChoose([this](const SideItem& item) {
    bar->removeFromSuperview();
    bar.reset();
    chosen.push_back(item.title);
  });
  click("Artists");
  EXPECT_THAT(chosen, ElementsAre("Artists"));
}

// Folding.

TEST_F(SideBarTest, AClickOnAHeadingFoldsItsSectionAndOpensItAgain) {
  click("Library");
  EXPECT_FALSE(bar->isOpen("Library"));
  EXPECT_EQ(topOf("Playlists"), row);
  click("Library");
  EXPECT_TRUE(bar->isOpen("Library"));
  EXPECT_EQ(topOf("Playlists"), 4 * row);
  EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(SideBarTest, TheButtonOfAHeadingFoldsItToo) {
  const CGPoint place = view("Library")->convertPointToView({width - 24, row / 2}, nullptr);
  user.moveTo(*window, place);
  user.click(*window, place);
  desktop.advance(1);
  EXPECT_FALSE(bar->isOpen("Library"));
}

TEST_F(SideBarTest, AReleaseBesideTheHeadingFoldsNothing) {
  user.press(*window, view("Library")->convertPointToView({60, row / 2}, nullptr));
  user.dragTo({100, 5});
  user.release();
  desktop.advance(1);
  EXPECT_TRUE(bar->isOpen("Library"));
}

TEST_F(SideBarTest, TheButtonOfAHeadingShowsWhileThePointerIsOverIt) {
  const Ref<NSView> button = view("Library")->subviews().back();
  EXPECT_TRUE(button->isHidden());
  user.moveTo(*window, view("Library")->convertPointToView({60, row / 2}, nullptr));
  EXPECT_FALSE(button->isHidden());
  user.moveTo(*window, {100, 5});
  EXPECT_TRUE(button->isHidden());
}

TEST_F(SideBarTest, WithoutACallAnItemIsSelectedAlone) {
  bar->setOnChoose(nullptr);
  click("Artists");
  EXPECT_EQ(bar->selected(), "Artists");
  EXPECT_EQ(bar->autoresizingMask(), NSViewWidthSizable | NSViewHeightSizable);
}

TEST_F(SideBarTest, AFoldedSectionFoldsTheSectionsInIt) {
  click("Playlists");
  EXPECT_EQ(element("Old"), nullptr);
  EXPECT_EQ(element("Morning"), nullptr);
  EXPECT_TRUE(bar->isOpen("Old"));
  click("Playlists");
  EXPECT_NE(element("Autumn"), nullptr);
}

TEST_F(SideBarTest, TheProgramFoldsAndOpens) {
  bar->setIsOpen("Old", false);
  desktop.advance(1);
  EXPECT_FALSE(bar->isOpen("Old"));
  EXPECT_EQ(element("Autumn"), nullptr);
  bar->setIsOpen("no such section", false);
  bar->setIsOpen("Old", true);
  desktop.advance(1);
  EXPECT_NE(element("Autumn"), nullptr);
}

TEST_F(SideBarTest, WithoutAWindowASectionFoldsAtOnce) {
  const auto other = make<SideBar>(places);
  other->setIsOpen("Library", false);
  EXPECT_FALSE(other->isOpen("Library"));
  EXPECT_EQ(elementIn(other, "Artists"), nullptr);
}

TEST_F(SideBarTest, SectionsOfOneTitleFoldByThemselves) {
  places->now[1].sections.push_back({.title = "Library", .items = {{.title = "Inner"}}});
  places->didChange();
  desktop.settle();
  EXPECT_EQ(topOf("Inner"), 9 * row);
  user.click(*window, {60, height - 8.5 * row});
  desktop.advance(1);
  EXPECT_EQ(element("Inner"), nullptr);
  EXPECT_NE(element("Artists"), nullptr);
}

TEST_F(SideBarTest, ASectionThatIsAskedToOpenWhileItFoldsOpensAfterwards) {
  bar->setIsOpen("Library", false);
  bar->setIsOpen("Library", true);
  EXPECT_TRUE(bar->isOpen("Library"));
  desktop.advance(1);
  EXPECT_TRUE(bar->isOpen("Library"));
  EXPECT_EQ(topOf("Playlists"), 4 * row);
  EXPECT_NE(element("Artists"), nullptr);
}

TEST_F(SideBarTest, OfManyWishesWhileASectionMovesTheLastCounts) {
  for (const bool isOpen : {false, true, false}) bar->setIsOpen("Library", isOpen);
  desktop.advance(2);
  EXPECT_FALSE(bar->isOpen("Library"));
  EXPECT_EQ(topOf("Playlists"), row);
}

TEST_F(SideBarTest, LeftAndRightQuicklyLeaveTheSectionOpen) {
  giveKeyboardTo("Library");
  user.pressKey(NSLeftArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  desktop.advance(1);
  EXPECT_TRUE(bar->isOpen("Library"));
  EXPECT_EQ(topOf("Playlists"), 4 * row);
  EXPECT_EQ(focused(), "Library");
}

TEST_F(SideBarTest, TheButtonUnderThePointerStaysWhenItsSectionHasMoved) {
  const auto isButtonHidden = [&] {
    for (const Ref<NSView>& one : view("Library")->subviews())
      if (dynamic_cast<NSButton*>(one.get())) return one->isHidden();
    return true;
  };
  EXPECT_TRUE(isButtonHidden());
  user.moveTo(*window, view("Library")->convertPointToView({60, row / 2}, nullptr));
  EXPECT_FALSE(isButtonHidden());
  for (int i = 0; i < 2; ++i) {
    click("Library");
    EXPECT_FALSE(isButtonHidden()) << i;
  }
  bar->setIsOpen("Library", false);
  user.moveTo(*window, {60, 10});
  desktop.advance(1);
  EXPECT_TRUE(isButtonHidden());
}

TEST_F(SideBarTest, FoldingTakesTheKeyboardToTheHeading) {
  giveKeyboardTo("Autumn");
  bar->setIsOpen("Playlists", false);
  EXPECT_EQ(focused(), "Playlists");
}

}  // namespace
}  // namespace tessaluna::ready
