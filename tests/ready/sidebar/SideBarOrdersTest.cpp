// Things that happen to a side bar in odd orders: presses on what goes, moves and folds at once, no room.
#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/ready/sidebar/SideBarWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SideBarTest = SideBarWorld;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SideBarTest, AnItemThatGoesUnderAPressIsNotChosen) {
  const CGPoint place = view("Songs")->convertPointToView({60, row / 2}, nullptr);
  user.press(*window, place);
  places->now[0].items.pop_back();
  places->didChange();
  desktop.settle();
  user.release();
  EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(SideBarTest, TheLastOfAllPlacesGoesUnderAPress) {
  for (const bool isHeading : {false, true}) {
    const CGPoint place = view(isHeading ? "Library" : "Albums, 12")->convertPointToView({60, row / 2}, nullptr);
    user.press(*window, place);
    const auto before = std::exchange(places->now, {});
    places->didChange();
    desktop.settle();
    user.release();
    EXPECT_THAT(chosen, IsEmpty());
    places->now = before;
    places->didChange();
    desktop.settle();
  }
}

TEST_F(SideBarTest, AnItemThatFoldsAwayUnderAPressIsNotChosen) {
  const CGPoint place = view("Songs")->convertPointToView({60, row / 2}, nullptr);
  user.press(*window, place);
  bar->setIsOpen("Library", false);
  desktop.advance(1);
  user.release();
  EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(SideBarTest, AnItemThatMovesToAnotherSectionKeepsTheKeyboard) {
  giveKeyboardTo("Songs");
  places->now[1].items.push_back(places->now[0].items.back());
  places->now[0].items.pop_back();
  places->didChange();
  desktop.settle();
  EXPECT_EQ(focused(), "Songs");
}

TEST_F(SideBarTest, ASectionThatMovesIntoAnotherStaysFolded) {
  bar->setIsOpen("Library", false);
  desktop.advance(1);
  places->now = {{.title = "All", .sections = {places->now[0], places->now[1]}}};
  places->didChange();
  desktop.settle();
  EXPECT_FALSE(bar->isOpen("Library"));
  EXPECT_TRUE(bar->isOpen("Playlists"));
  EXPECT_EQ(topOf("Playlists"), 2 * row);
}

TEST_F(SideBarTest, WhatIsChosenMayGo) {
  bar->setOnChoose([this](const SideItem& item) {
    places->now.clear();
    places->didChange();
    bar->setOnChoose(nullptr);
    chosen.push_back(item.title);
  });
  giveKeyboardTo("Artists");
  press("\r");
  EXPECT_THAT(chosen, ElementsAre("Artists"));
  EXPECT_EQ(bar->selected(), std::nullopt);
}

TEST_F(SideBarTest, AViewThatTheProgramTookOutComesBackWithTheNextChange) {
  const auto field = make<NSTextField>(CGRect{0, 0, 50, 20});
  places->now[0].view = field;
  places->didChange();
  desktop.settle();
  field->removeFromSuperview();
  places->didChange();
  desktop.settle();
  EXPECT_EQ(field->window(), window.get());
}

TEST_F(SideBarTest, AViewMovesFromSectionToSection) {
  const auto field = make<NSTextField>(CGRect{0, 0, 50, 20});
  for (const std::size_t at : {0u, 1u, 0u}) {
    for (SideSection& section : places->now) section.view = nullptr;
    places->now[at].view = field;
    places->didChange();
    desktop.settle();
    EXPECT_EQ(field->window(), window.get());
    EXPECT_EQ(topOf(at == 0 ? "Playlists" : "Old") - topOf(at == 0 ? "Songs" : "Morning"),
              row + field->frame().size.height + 10);
  }
}

TEST_F(SideBarTest, ABarThatIsTakenOutWhileASectionFoldsIsFoldedWhenItComesBack) {
  bar->setIsOpen("Library", false);
  desktop.advance(0.1);
  bar->removeFromSuperview();
  desktop.advance(0.05);
  bar->setIsOpen("Playlists", false);
  bar->setIsOpen("Library", true);
  bar->setIsOpen("Library", false);
  desktop.advance(1);
  window->contentView()->addSubview(bar);
  desktop.advance(1);
  EXPECT_EQ(topOf("Playlists"), row);
  EXPECT_FALSE(bar->isOpen("Library"));
}

TEST_F(SideBarTest, TheButtonOfAHeadingSaysWhatItDoesInTheUsersLanguage) {
  NSBundle::mainBundle()->setStringTable({{"Hide", "Masquer"}, {"Show", "Afficher"}});
  const auto other = make<SideBar>(places);
  const auto titles = [&](const NSView& from) {
    std::vector<std::string> found;
    const std::function<void(const NSView&)> look = [&](const NSView& one) {
      if (const auto* button = dynamic_cast<const NSButton*>(&one)) found.push_back(button->title());
      for (const auto& view : one.subviews()) look(*view);
    };
    look(from);
    return found;
  };
  EXPECT_THAT(titles(*other), Each("Masquer"));
  NSBundle::mainBundle()->setStringTable({});
}

TEST_F(SideBarTest, NoRoomAtAllIsHarmless) {
  for (const CGSize size : {CGSize{0, 0}, CGSize{3, 5}, CGSize{width, 0}, CGSize{0, height}, CGSize{width, height}}) {
    bar->setFrame({0, 0, size.width, size.height});
    desktop.settle();
    bar->setIsOpen("Library", false);
    desktop.advance(1);
    bar->setIsOpen("Library", true);
    desktop.advance(1);
  }
  EXPECT_EQ(topOf("Playlists"), 4 * row);
}

// The world expects that no constraints conflict.
TEST_F(SideBarTest, ABarThatIsNarrowAgainAfterSectionsCameIsHarmless) {
  const auto makeWide = [&](CGFloat points) {
    bar->setFrame({0, 0, points, height});
    desktop.settle();
  };
  makeWide(20);
  makeWide(width);
  places->now.push_back(
      {.title = "Outer", .sections = {{.title = "Inner", .view = make<NSTextField>(CGRect{0, 0, 50, 20})}}});
  places->didChange();
  makeWide(20);
  const auto room = [&] { return bar->scrollView()->contentView()->bounds().size.width; };
  EXPECT_EQ(view("Outer")->frame().size.width, room());
  makeWide(width);
  EXPECT_EQ(view("Outer")->frame().size.width, room());
}

TEST_F(SideBarTest, SectionsWithinEachOtherMoveAtOnce) {
  bar->setIsOpen("Old", false);
  desktop.advance(0.05);
  bar->setIsOpen("Playlists", false);
  desktop.advance(0.05);
  bar->setIsOpen("Old", true);
  bar->setIsOpen("Playlists", true);
  desktop.advance(2);
  EXPECT_EQ(topOf("Old"), 6 * row);
  EXPECT_EQ(topOf("Autumn"), 7 * row);
  EXPECT_EQ(view("Autumn")->bounds().size.height, row);
  bar->setIsOpen("Playlists", false);
  desktop.advance(0.1);
  bar->setIsOpen("Old", false);
  desktop.advance(2);
  bar->setIsOpen("Playlists", true);
  desktop.advance(0.1);
  bar->setIsOpen("Old", true);
  places->now.push_back({.title = "Last"});
  places->didChange();
  desktop.advance(2);
  EXPECT_EQ(topOf("Last"), 8 * row);
}

TEST_F(SideBarTest, ABarThatGoesUnderAPressEndsItWithoutACall) {
  for (const char* name : {"Songs", "Library", "Hide"}) {
    if (!bar) {
      bar = make<SideBar>(places);
      bar->setFrame({0, 0, width, height});
      bar->setOnChoose([this](const SideItem& item) { chosen.push_back(item.title); });
      window->contentView()->addSubview(bar);
      desktop.settle();
    }
    CGPoint place = view(name == std::string("Hide") ? "Library" : name)->convertPointToView({60, row / 2}, nullptr);
    if (name == std::string("Hide")) place.x = width - 20;
    user.moveTo(*window, place);
    user.press(*window, place);
    const WeakRef<SideBar> weak = bar;
    std::exchange(bar, nullptr)->removeFromSuperview();
    desktop.settle();
    user.release();
    desktop.advance(1);
    EXPECT_THAT(chosen, IsEmpty());
    EXPECT_TRUE(weak.expired());
  }
}

TEST(SideBarDeathTest, ANullModelStopsTheProgram) { EXPECT_DEATH(SideBar(nullptr), "SideBar: made without a model"); }

}  // namespace
}  // namespace tessaluna::ready
