#include "gallery/sections/SectionsHost.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;

constexpr CGFloat headingHeight = 28;

struct SectionsHostTest : harness::StillWorld {
  SectionsHostTest() {
    NSLayoutConstraint::setConflictHandler([](const std::string& line) { ADD_FAILURE() << line; });
    host.sideBar()->setFrame({0, 0, 300, 520});
    window->contentView()->addSubview(host.sideBar());
    desktop.settle();
  }
  ~SectionsHostTest() override { NSLayoutConstraint::setConflictHandler(nullptr); }
  // The height of all sections.
  CGFloat height() {
    window->layoutIfNeeded();
    return host.sideBar()->scrollView()->documentView()->frame().size.height;
  }

  using Lines = std::vector<std::string>;
  // The role and name of each element, indented.
  Lines tree() const {
    Lines lines = accessibleTreeLines(host.sideBar());
    for (std::string& line : lines) line.erase(line.find('"', line.find('"') + 1) + 1);
    return lines;
  }
  // Where the Tab key stops, one time around.
  Lines tabStops() {
    Lines names;
    window->makeFirstResponder(nullptr);
    for (int i = 0; i < 10; ++i) {
      user.pressKey("\t");
      desktop.settle();
      const Ref<NSObject> focused = focusedElementWithin({host.sideBar()});
      const std::string name = focused ? accessibleLine(focused) : "nothing";
      const std::string shortName = name.substr(0, name.find('"', name.find('"') + 1) + 1);
      if (!names.empty() && shortName == names.front()) break;
      names.push_back(shortName);
    }
    return names;
  }

  SectionsHost host;
  Ref<NSWindow> window = showWindow({100, 100, 300, 520});
};

TEST_F(SectionsHostTest, ATextThatGrowsMovesWhatIsBelow) {
  const CGFloat before = height();
  host.addLine();
  EXPECT_GT(height(), before + 10);
  host.removeLine();
  EXPECT_EQ(height(), before);
}

TEST_F(SectionsHostTest, FoldedItHasFourHeadings) {
  host.setDisclosed(false);
  desktop.advance(1);
  EXPECT_EQ(height(), 4 * headingHeight);
  host.addLine();
  EXPECT_EQ(height(), 4 * headingHeight);
}

TEST_F(SectionsHostTest, ASectionThatGrewWhileFoldedOpensToItsNewHeight) {
  const CGFloat before = height();
  host.setDisclosed(false);
  desktop.advance(1);
  host.addLine();
  host.setDisclosed(true);
  desktop.advance(1);
  EXPECT_GT(height(), before + 10);
}

TEST_F(SectionsHostTest, OpenTheTreeHasEverythingAndTheTabKeyStopsAtTheBarAndInTheNotes) {
  EXPECT_EQ(tree(),
            (Lines{R"(group "Side bar")", R"(  disclosure triangle "Library")", R"(  list "Library")",
                   R"(    row "Songs, 1204")", R"(    row "Playlists, 7")", R"(  disclosure triangle "Up next")",
                   R"(  static text "Morning tide\nGlass harbor\nSeven lanterns")", R"(  disclosure triangle "Later")",
                   R"(  static text "Two albums and a radio hour")", R"(  disclosure triangle "About the album")",
                   R"(  static text "Recorded in four nights,\nin a hall by the sea.")", R"(  disclosure triangle "Notes")",
                   R"(  text field "Note")"}));
  EXPECT_EQ(tabStops(), (Lines{R"(row "Songs, 1204")", R"(text field "Note")"}));
}

TEST_F(SectionsHostTest, FoldedTheTreeHasOnlyTheHeadingsOfTheOuterSections) {
  host.setDisclosed(false);
  desktop.advance(1);
  EXPECT_EQ(tree(), (Lines{R"(group "Side bar")", R"(  disclosure triangle "Library")", R"(  disclosure triangle "Up next")",
                           R"(  disclosure triangle "About the album")", R"(  disclosure triangle "Notes")"}));
  EXPECT_EQ(tabStops(), Lines{R"(disclosure triangle "Library")"});
}

TEST_F(SectionsHostTest, AFoldedSectionWithinAnOpenOneKeepsItsHeading) {
  host.sideBar()->setIsOpen("Later", false);
  desktop.advance(1);
  const Lines lines = tree();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), R"(  disclosure triangle "Later")"), 1);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), R"(  static text "Two albums and a radio hour")"), 0);
}

TEST_F(SectionsHostTest, ASectionThatWasRemovedReturnsToItsPlace) {
  const Lines before = tree();
  const CGFloat whole = height();
  host.setHasAbout(false);
  EXPECT_LT(height(), whole - headingHeight);
  const Lines without = tree();
  EXPECT_EQ(without.size(), before.size() - 2);
  host.setHasAbout(true);
  EXPECT_EQ(tree(), before);
  EXPECT_EQ(height(), whole);
}

TEST_F(SectionsHostTest, ElementsOfAFoldingSectionStayUntilTheyAreCutOff) {
  host.setDisclosed(false);
  const Lines open = tree();
  desktop.advance(0.02);
  EXPECT_EQ(tree(), open);
}

}  // namespace
}  // namespace gallery
