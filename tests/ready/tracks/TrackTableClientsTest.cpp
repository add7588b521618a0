// What assistive clients see of a track table, and what a long one costs.
#include <gmock/gmock.h>

#include <set>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tests/harness/countingNew.h"
#include "tests/ready/tracks/TrackTableWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using namespace TessalunaUIKit;
using TrackTableTest = TrackTableWorld;
using testing::ElementsAre;
using testing::IsEmpty;

// Assistive clients.

TEST_F(TrackTableTest, ClientsMeetATableOfRowsWithNamesAndActions) {
  songs->songs[1].row.isFavorite = true;
  songs->setPlayback(1, Playback::Paused);
  const auto lines = accessibleTreeLines(refTo<NSObject>(inner()));
  EXPECT_EQ(lines[0], "table \"Tracks\" [focusable] 100 rows focus");
  EXPECT_EQ(accessibleLine(inner().accessibleItem(1)),
            "row \"B song 1, First 1, Second, 1:01, favorite, paused\" [focusable, selectable] Play, Favorite, More, focus");
  std::vector<std::string> parts;
  for (const Ref<NSObject>& part : accessibleChildrenOf(inner().accessibleItem(1))) parts.push_back(accessibleLine(part));
  EXPECT_THAT(parts,
              ElementsAre("button \"Play\" [] press", "link \"First 1\" [] press", "link \"Second\" [] press",
                          "check box \"Favorite\" [checkable, checked] press", "menu button \"More\" [has pop-up] press"));
}

TEST_F(TrackTableTest, ItsTextsAreInTheUsersLanguage) {
  songs->songs[1].row.isFavorite = true;
  songs->setPlayback(1, Playback::Paused);
  songs->setPlayback(2, Playback::Playing);
  const Ref<NSObject> row = inner().accessibleItem(1);
  std::vector<std::string> changes;
  AccessibleChanges listener({.isListening = [] { return true; },
                              .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  accessibilityOf(row)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(row));
  table->setTexts({.title = "Titel",
                   .artists = "Interpret",
                   .time = "Dauer",
                   .play = "Spielen",
                   .pause = "Anhalten",
                   .favorite = "Favorit",
                   .more = "Mehr",
                   .isFavorite = "beliebt",
                   .isPlaying = "spielt",
                   .isPaused = "angehalten"});
  std::vector<std::string> columns;
  for (const Ref<NSTableColumn>& column : inner().tableColumns()) columns.push_back(column->title());
  EXPECT_THAT(columns, ElementsAre("", "Titel", "Interpret", "", "Dauer", ""));
  const std::string name = "\"B song 1, First 1, Second, 1:01, beliebt, angehalten\"";
  EXPECT_EQ(accessibleLine(row), "row " + name + " [focusable, selectable] Spielen, Favorit, Mehr, focus");
  EXPECT_THAT(changes, testing::Contains(testing::HasSubstr(name)));
  EXPECT_EQ(accessibleLine(inner().accessibleItem(2)),
            "row \"C song 2, First 2, Second, 1:02, spielt\" [focusable, selectable] Anhalten, Favorit, Mehr, focus");
}

TEST_F(TrackTableTest, TheNameOfARowSaysWhatShowsInIt) {
  songs->songs[0].row = {.title = "Alone"};
  songs->songs[1].row.isFavorite = true;
  songs->songs[2].row.playback = Playback::Playing;
  songs->songs[3].row.playback = Playback::Paused;
  songs->songs[4].row.artists = {"", "Second"};
  const auto name = [&](std::size_t row) { return table->tableViewNameOfRow(inner(), row); };
  EXPECT_EQ(name(0), "Alone");
  EXPECT_EQ(name(1), "B song 1, First 1, Second, 1:01, favorite");
  EXPECT_EQ(name(2), "C song 2, First 2, Second, 1:02, playing");
  EXPECT_EQ(name(3), "D song 3, First 3, Second, 1:03, paused");
  EXPECT_EQ(name(4), "E song 4, Second, 1:04");
  EXPECT_TRUE(table->tableViewControlsOfRow(inner(), 100).empty());
}

TEST_F(TrackTableTest, AFavoriteIsReportedByItsCheckBox) {
  std::vector<std::string> changes;
  AccessibleChanges listener({.isListening = [] { return true; },
                              .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  const Ref<NSObject> box = accessibleChildrenOf(inner().accessibleItem(1))[3];
  accessibilityOf(box)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(box));
  performAccessibleAction(box, NSAccessibilityPressAction);
  EXPECT_THAT(changes, ElementsAre("check box \"Favorite\": checked"));
}

TEST_F(TrackTableTest, ClientsActOnRowsThatDoNotShow) {
  EXPECT_TRUE(performAccessibleAction(inner().accessibleItem(70), "Play"));
  EXPECT_TRUE(performAccessibleAction(inner().accessibleItem(70), "Pause"));
  EXPECT_TRUE(performAccessibleAction(inner().accessibleItem(71), "Favorite"));
  EXPECT_TRUE(performAccessibleAction(accessibleChildrenOf(inner().accessibleItem(72))[2], NSAccessibilityPressAction));
  EXPECT_THAT(takeCalls(), ElementsAre("play 70", "pause 70", "favorite 71", "artist 1 of 72"));
}

TEST_F(TrackTableTest, AScrollIsReportedToNoClientAndASelectionOnce) {
  std::vector<std::string> changes;
  AccessibleChanges listener({.isListening = [] { return true; },
                              .changed = [&](const AccessibleChange& change) { changes.push_back(lineOf(change)); }});
  const auto meet = [](const Ref<NSObject>& element) {
    accessibilityOf(element)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(element));
  };
  meet(refTo<NSObject>(inner()));
  for (std::size_t row = 0; row < 100; ++row) {
    meet(inner().accessibleItem(row));
    for (const Ref<NSObject>& part : accessibleChildrenOf(inner().accessibleItem(row))) meet(part);
  }
  select(0);
  desktop.advance(0.1);
  changes.clear();
  for (CGFloat y = 0; y < 3000; y += 37) scrollTo(y);
  desktop.advance(0.1);
  EXPECT_THAT(changes, IsEmpty());
  scrollTo(0);
  key(NSDownArrowFunctionKey);
  desktop.advance(0.1);
  EXPECT_THAT(changes, ElementsAre(testing::HasSubstr("\": focused"), testing::HasSubstr("\": not selected"),
                                   testing::HasSubstr("\": selected")));
}

// Cost.

TEST_F(TrackTableTest, ALongListAsksForTheRowsThatShowAlone) {
  open(10000);
  EXPECT_LE(songs->rowsAsked, 12u);
  songs->rowsAsked = 0;
  songs->insert(5000);
  songs->remove(0);
  desktop.settle();
  EXPECT_LE(songs->rowsAsked, 4u);
}

TEST_F(TrackTableTest, TwoThousandRowsThatPassLeaveNothingBehind) {
  open(2000);
  std::set<WeakRef<NSView>, std::owner_less<>> made;
  const auto visit = [&](CGFloat y) {
    scrollTo(y);
    nativeOf(*window).forgetPaints();
    for (const Ref<NSView>& view : inner().subviews()) made.insert(view);
  };
  for (CGFloat y = 0; y < 3 * height; y += 50) visit(y);
  visit(0);
  const long before = harness::allocationsAlive - static_cast<long>(made.size());
  for (CGFloat y = 0; y < inner().frame().size.height; y += height) visit(y);
  visit(0);
  EXPECT_LE(made.size(), 14u);
  EXPECT_LE(harness::allocationsAlive - static_cast<long>(made.size()) - before, 20);
}

TEST_F(TrackTableTest, AHoverChangeRepaintsTwoRowsAndNoMore) {
  user.moveTo(*window, beside(1));
  desktop.settle();
  nativeOf(*window).forgetPaints();
  user.moveTo(*window, beside(3));
  desktop.settle();
  CGFloat area = 0;
  for (const auto& paint : nativeOf(*window).paints())
    for (const CGRect& rect : paint.dirty) area += rect.size.width * rect.size.height;
  EXPECT_LE(area, 2 * trackRowHeight * width);
}

}  // namespace
}  // namespace tessaluna::ready
