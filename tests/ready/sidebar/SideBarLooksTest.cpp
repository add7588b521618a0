// What a side bar looks like.
#include <gmock/gmock.h>

#include <algorithm>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/LookBook.h"
#include "tests/ready/sidebar/SideBarWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SideBarTest = SideBarWorld;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

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

TEST_F(SideBarTest, AnItemIsDrawnAgainWhenItsSelectionChanges) {
  const auto isDrawnAgain = [&](const std::string& name, auto change) {
    desktop.settle();
    change();
    return view(name)->needsDisplay();
  };
  EXPECT_TRUE(isDrawnAgain("Artists", [&] { bar->setSelected("Artists"); }));
  EXPECT_TRUE(isDrawnAgain("Artists", [&] { bar->setSelected("Songs"); }));
  EXPECT_FALSE(isDrawnAgain("Artists", [&] { bar->setSelected("Songs"); }));
}

TEST_F(SideBarTest, TheIconOfASelectedItemIsMadeForItsGround) {
  places->now[0].items[1].icon = [](CGRect) {};
  places->didChange();
  const Ref<NSView> icon = view("Artists")->subviews().front();
  EXPECT_EQ(icon->tintGroundColor(), nullptr);
  bar->setSelected("Artists");
  EXPECT_EQ(icon->tintGroundColor(), NSColor::alternateSelectedControlColor());
  bar->setSelected("Songs");
  EXPECT_EQ(icon->tintGroundColor(), nullptr);
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

TEST_F(SideBarTest, EveryStateDrawsAsTheExpectedFileSays) {
  const auto square = [](CGRect frame) {
    NSColor::blackColor()->setFill();
    NSRectFill(frame);
  };
  places->now[0].items[0].icon = square;
  places->now[0].items[1].icon = square;
  places->now[0].items[1].tint = NSColor::redColor();
  places->now[1].view = make<NSTextField>(CGRect{0, 0, 100, 22});
  places->didChange();
  harness::LookBook look(desktop);
  look.add("sections with icons, a count and a view", *window);
  bar->setSelected("Albums");
  bar->setIsOpen("Playlists", false);
  desktop.advance(1);
  look.add("an item selected, a section folded", *window);
  giveKeyboardTo("Albums, 12");
  look.add("the keyboard on the selected item", *window);
  user.moveTo(*window, view("Library")->convertPointToView({60, row / 2}, nullptr));
  giveKeyboardTo("Library");
  look.add("the keyboard and the pointer on a heading", *window);
  look.expectSameAsFile("ready/sidebar/expected/SideBar.txt");
}

}  // namespace
}  // namespace tessaluna::ready
