// A side bar under a virtual user: the pointer, the keyboard, an assistive client, and a model that changes meanwhile.
#include "tessaluna/ready/sidebar/SideBar.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/sidebar/SideBarRow.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Places : public SideBarModel {
 public:
  std::vector<SideSection> sections() const override { return now; }
  using SideBarModel::didChange;

  std::vector<SideSection> now{
      {.title = "Library", .items = {{.title = "Albums", .count = 12}, {.title = "Artists"}, {.title = "Songs"}}},
      {.title = "Playlists",
       .items = {{.title = "Morning", .id = "list-1"}},
       .sections = {{.title = "Old", .items = {{.title = "Autumn", .id = "list-2"}}}}},
  };
};

// Calls when the editing of its field ends.
class EndOfEditing : public NSObject, public NSTextFieldDelegate {
 public:
  explicit EndOfEditing(std::function<void()> call) : call_(std::move(call)) {}
  void controlTextDidEndEditing(const Ref<NSNotification>&) override { call_(); }

 private:
  const std::function<void()> call_;
};

// Calls when it loses the keyboard.
class Leaver : public NSView {
 public:
  explicit Leaver(std::function<void()> call) : NSView(CGRect{0, 0, 50, 20}), call_(std::move(call)) {}
  bool acceptsFirstResponder() const override { return true; }
  bool resignFirstResponder() override {
    call_();
    return true;
  }

 private:
  const std::function<void()> call_;
};

constexpr CGFloat width = 200, height = 300, row = 28;

class SideBarTest : public harness::StillWorld {
 protected:
  SideBarTest() {
    NSLayoutConstraint::setConflictHandler([this](const std::string& line) { conflicts.push_back(line); });
    bar->setOnChoose([this](const SideItem& item) { chosen.push_back(item.title); });
    bar->setFrame({0, 0, width, height});
    window->contentView()->addSubview(bar);
    desktop.settle();
  }
  ~SideBarTest() override {
    EXPECT_THAT(conflicts, IsEmpty());
    NSLayoutConstraint::setConflictHandler(nullptr);
  }

  // The element of that name, below the bar.
  Ref<NSObject> element(const std::string& name) { return elementIn(bar, name); }
  Ref<NSObject> elementIn(const Ref<NSObject>& from, const std::string& name) {
    for (const Ref<NSObject>& child : accessibleChildrenOf(from)) {
      const std::string role = accessibleRoleOf(child);
      if (accessibleNameOf(child) == name && role != NSAccessibilityListRole) return child;
      if (const Ref<NSObject> inner = elementIn(child, name)) return inner;
    }
    return nullptr;
  }
  Ref<NSView> view(const std::string& name) { return std::dynamic_pointer_cast<NSView>(element(name)); }
  // Of a place, from the top of the window.
  CGFloat topOf(const std::string& name) {
    return height - CGRectGetMaxY(view(name)->convertRectToView(view(name)->bounds(), nullptr));
  }
  void click(const std::string& name) {
    user.click(*window, view(name)->convertPointToView({60, row / 2}, nullptr));
    desktop.advance(1);
  }
  void giveKeyboardTo(const std::string& name) { window->makeFirstResponder(view(name).get()); }
  void press(char32_t key) {
    user.pressKey(key);
    desktop.advance(1);
  }
  void press(const std::string& key) {
    user.pressKey(key);
    desktop.advance(1);
  }
  std::string focused() { return accessibleNameOf(focusedElement()); }
  bool isSelected(const std::string& name) { return accessibleStatesOf(element(name)).contains(AccessibleState::Selected); }
  // As a client that has asked for all of it.
  void meetAll(const Ref<NSObject>& from) {
    accessibilityOf(from)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(from));
    for (const Ref<NSObject>& child : accessibleChildrenOf(from)) meetAll(child);
  }
  std::vector<std::string> lines() { return accessibleTreeLines(bar); }

  std::vector<std::string> chosen, conflicts;
  std::shared_ptr<Places> places = std::make_shared<Places>();
  Ref<SideBar> bar = make<SideBar>(places);
  Ref<NSWindow> window = showWindow({100, 100, width, height});
};

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

// The keyboard.

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

// Changes of the model.

TEST_F(SideBarTest, AnItemThatComesKeepsSelectionAndKeyboard) {
  click("Artists");
  giveKeyboardTo("Artists");
  auto& items = places->now[0].items;
  items.insert(items.begin(), {.title = "New"});
  places->didChange();
  EXPECT_EQ(topOf("New"), row);
  EXPECT_EQ(topOf("Artists"), 3 * row);
  EXPECT_TRUE(isSelected("Artists"));
  EXPECT_EQ(focused(), "Artists");
}

TEST_F(SideBarTest, ItemsThatChangePlacesKeepTheirElements) {
  const Ref<NSView> albums = view("Albums, 12"), songs = view("Songs");
  auto& items = places->now[0].items;
  std::swap(items[0], items[2]);
  items[1].title = "Composers";
  places->didChange();
  EXPECT_EQ(view("Albums, 12"), albums);
  EXPECT_EQ(view("Songs"), songs);
  EXPECT_EQ(topOf("Songs"), row);
  EXPECT_EQ(topOf("Composers"), 2 * row);
  EXPECT_EQ(topOf("Albums, 12"), 3 * row);
  EXPECT_EQ(element("Artists"), nullptr);
}

TEST_F(SideBarTest, ItemsOfOneTitleAreSeveral) {
  places->now[0].items = {{.title = "Twin"}, {.title = "Twin"}, {.title = "Other"}};
  places->didChange();
  places->didChange();
  EXPECT_EQ(topOf("Other"), 3 * row);
  EXPECT_EQ(topOf("Playlists"), 4 * row);
}

TEST_F(SideBarTest, AnItemThatGoesTakesItsSelectionAndLeavesTheKeyboardToTheNext) {
  click("Artists");
  giveKeyboardTo("Artists");
  places->now[0].items.erase(places->now[0].items.begin() + 1);
  places->didChange();
  EXPECT_EQ(bar->selected(), std::nullopt);
  EXPECT_EQ(focused(), "Songs");
}

TEST_F(SideBarTest, ASectionThatIsTakenAwayLeavesNoGap) {
  places->now.erase(places->now.begin());
  places->didChange();
  EXPECT_EQ(element("Library"), nullptr);
  EXPECT_EQ(topOf("Playlists"), 0);
  EXPECT_EQ(topOf("Morning"), row);
}

TEST_F(SideBarTest, ASectionThatIsTakenAwayTakesItsViewsAlong) {
  const WeakRef<NSView> heading = view("Library");
  places->now.erase(places->now.begin());
  places->didChange();
  desktop.settle();
  EXPECT_EQ(heading.lock(), nullptr);
}

TEST_F(SideBarTest, SectionsThatChangePlacesStayFolded) {
  click("Library");
  std::swap(places->now[0], places->now[1]);
  places->didChange();
  EXPECT_EQ(topOf("Playlists"), 0);
  EXPECT_EQ(topOf("Library"), 4 * row);
  EXPECT_FALSE(bar->isOpen("Library"));
  EXPECT_THAT(lines(), Not(Contains(HasSubstr("Artists"))));
}

TEST_F(SideBarTest, WhatGrowsWhileItIsFoldedOpensToItsNewHeight) {
  click("Library");
  places->now[0].items.push_back({.title = "New"});
  places->didChange();
  EXPECT_EQ(topOf("Playlists"), row);
  click("Library");
  EXPECT_EQ(topOf("Playlists"), 5 * row);
}

TEST_F(SideBarTest, AnEmptyBarTakesSectionsLater) {
  const auto sections = std::exchange(places->now, {});
  places->didChange();
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("Side bar")));
  places->now = sections;
  places->didChange();
  EXPECT_EQ(topOf("Autumn"), 7 * row);
}

TEST_F(SideBarTest, AModelMayOutliveItsBar) {
  bar->removeFromSuperview();
  bar.reset();
  places->didChange();
}

TEST_F(SideBarTest, AViewOfTheProgramIsInItsSectionAsHighAsItsContent) {
  const auto text = NSTextField::labelWithString("one line");
  places->now[0].view = text;
  places->didChange();
  desktop.settle();
  const CGFloat before = topOf("Playlists");
  EXPECT_GT(before, 4 * row);
  EXPECT_THAT(lines(), Contains(HasSubstr("one line")));
  const CGRect place = text->convertRectToView(text->bounds(), nullptr);
  EXPECT_EQ(place.origin.x, sideBarTextLeft(0));
  EXPECT_EQ(CGRectGetMaxX(place), width - 10);
  text->setStringValue("one line\nanother\nand one more");
  desktop.settle();
  EXPECT_GT(topOf("Playlists"), before + 2);
}

TEST_F(SideBarTest, AChangeWhileAnEditedFieldIsTakenAwayIsShownToo) {
  const auto field = make<NSTextField>(CGRect{0, 0, 50, 20});
  const auto end = make<EndOfEditing>([&] {
    places->now.push_back({.title = "Later", .items = {{.title = "Last"}}});
    places->didChange();
    bar->setSelected("Last");
  });
  places->now[0].view = field;
  places->didChange();
  desktop.settle();
  field->setDelegate(end);
  window->makeFirstResponder(field.get());
  places->now[0].view = nullptr;
  places->didChange();
  desktop.settle();
  EXPECT_EQ(topOf("Playlists"), 4 * row);
  EXPECT_EQ(topOf("Later"), 8 * row);
  EXPECT_EQ(topOf("Last"), 9 * row);
  EXPECT_TRUE(isSelected("Last"));
}

TEST_F(SideBarTest, TheBarMayGoWhileTheViewWithTheKeyboardIsTakenAway) {
  const auto leaver = make<Leaver>([&] {
    if (const Ref<SideBar> leaving = std::exchange(bar, nullptr)) leaving->removeFromSuperview();
  });
  places->now[0].view = leaver;
  places->didChange();
  desktop.settle();
  window->makeFirstResponder(leaver.get());
  places->now[0].view = nullptr;
  places->didChange();
  EXPECT_EQ(bar, nullptr);
}

// What assistive clients see.

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

// What it looks like.

TEST_F(SideBarTest, AnIconIsDrawnInItsTintAndInTheTitlesColorWhileItIsSelected) {
  std::vector<CGRect> frames;
  places->now[0].items[0].icon = [&](CGRect frame) {
    frames.push_back(frame);
    NSColor::blackColor()->setFill();
    NSRectFill(frame);
  };
  places->now[0].items[0].tint = NSColor::redColor();
  places->didChange();
  desktop.settle();
  const auto draw = [&] {
    const Ref<NSView> item = view("Albums, 12");
    return harness::recordingOf([&] { item->displayRectInContext(item->frame(), *NSGraphicsContext::currentContext()); });
  };
  const std::string red = R"({"op":"setFillColor","color":[1,0,0,1]})";
  EXPECT_THAT(draw(), Contains(red));
  bar->setSelected("Albums");
  EXPECT_THAT(draw(), Not(Contains(red)));
  EXPECT_THAT(frames, Each(CGRect{0, 0, 16, 16}));
}

TEST_F(SideBarTest, TitlesBesideIconsBeginAtOneLine) {
  const auto titleOf = [&](const std::string& name) {
    const Ref<NSView> item = view(name);
    const auto lines = harness::only("concat", harness::recordingOf([&] { item->drawRect(item->bounds()); }));
    return lines.back();
  };
  const std::string before = titleOf("Artists");
  EXPECT_EQ(before, titleOf("Songs"));
  places->now[0].items[2].icon = [](CGRect) {};
  places->didChange();
  EXPECT_EQ(titleOf("Artists"), titleOf("Songs"));
  EXPECT_NE(titleOf("Artists"), before);
  EXPECT_EQ(titleOf("Morning"), before) << "a section without icons";
}

TEST_F(SideBarTest, OnlyTheSelectedItemHasAGround) {
  const auto grounds = [&](const std::string& name) {
    return harness::only("fill", harness::recordingOf([&] { view(name)->drawRect(view(name)->bounds()); })).size();
  };
  EXPECT_EQ(grounds("Artists"), 0u);
  bar->setSelected("Artists");
  EXPECT_EQ(grounds("Artists"), 1u);
  EXPECT_EQ(grounds("Songs"), 0u);
}

TEST_F(SideBarTest, ALongTitleEndsBeforeItsCount) {
  places->now[0].items[0].title = "A title that has no room beside so many albums as there are";
  places->didChange();
  desktop.settle();
  const auto glyphs = [&](const std::string& name) {
    return harness::only("glyphs", harness::recordingOf([&] { view(name)->drawRect(view(name)->bounds()); }));
  };
  const std::string title = places->now[0].items[0].title;
  const harness::Lines beside = glyphs(title + ", 12");
  EXPECT_THAT(beside, Contains(HasSubstr("[[49,0,0],[50,")));
  EXPECT_THAT(beside, Contains(HasSubstr("[[8230,"))) << "cut with an ellipsis";
  places->now[0].items[0].count = std::nullopt;
  places->didChange();
  const auto longest = [](const harness::Lines& lines) {
    std::size_t length = 0;
    for (const std::string& line : lines) length = std::max(length, line.size());
    return length;
  };
  EXPECT_LT(longest(beside), longest(glyphs(title)));
}

TEST_F(SideBarTest, AnItemOfAnotherTitleIsDrawnAgain) {
  places->now[0].items[1].id = "artists";
  places->didChange();
  desktop.settle();
  nativeOf(*window).forgetPaints();
  places->now[0].items[1].title = "People";
  places->didChange();
  EXPECT_TRUE(view("People")->needsDisplay());
}

TEST_F(SideBarTest, AFoldDrawsTheChevronOfItsHeadingAgain) {
  nativeOf(*window).forgetPaints();
  const auto chevron = [&] {
    return harness::only("stroke", harness::recordingOf([&] { view("Library")->drawRect(view("Library")->bounds()); }));
  };
  const auto open = chevron();
  bar->setIsOpen("Library", false);
  EXPECT_TRUE(view("Library")->needsDisplay());
  EXPECT_NE(chevron(), open);
}

// Odd orders.

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
