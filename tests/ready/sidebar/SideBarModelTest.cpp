// A side bar whose model changes while it shows.
#include <gmock/gmock.h>

#include <stdexcept>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/sidebar/SideBarRow.h"
#include "tests/ready/sidebar/SideBarWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SideBarTest = SideBarWorld;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

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

TEST_F(SideBarTest, AfterAModelThatThrowsTheNextChangeShows) {
  class Throwing : public Places {
   public:
    mutable bool throwsNext = false;
    std::vector<SideSection> sections() const override {
      if (std::exchange(throwsNext, false)) throw std::runtime_error("refused");
      return Places::sections();
    }
  };
  const auto model = std::make_shared<Throwing>();
  const auto other = make<SideBar>(model);
  model->throwsNext = true;
  EXPECT_THROW(model->didChange(), std::runtime_error);
  model->now[0].title = "Music";
  model->didChange();
  EXPECT_THAT(accessibleTreeLines(other), Contains(HasSubstr("Music")));
}

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

}  // namespace
}  // namespace tessaluna::ready
