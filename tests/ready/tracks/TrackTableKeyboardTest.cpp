// A track table under the keyboard, and its sorting.
#include <gmock/gmock.h>

#include "tests/ready/tracks/TrackTableWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using namespace TessalunaUIKit;
using TrackTableTest = TrackTableWorld;
using testing::ElementsAre;
using testing::IsEmpty;

// The keyboard.

TEST_F(TrackTableTest, TheRowThatHasTheKeyboardShowsItsControls) {
  select(3);
  EXPECT_THAT(rowsWithControls(), ElementsAre(3));
  key(NSDownArrowFunctionKey);
  EXPECT_THAT(rowsWithControls(), ElementsAre(4));
  window->makeFirstResponder(nullptr);
  EXPECT_THAT(rowsWithControls(), IsEmpty());
}

TEST_F(TrackTableTest, ReturnPlaysALetterFindsATitleAndSpaceIsNotTaken) {
  select(0);
  user.pressKey("\r");
  desktop.advance(2);
  user.type("d");
  EXPECT_EQ(inner().keyboardRow(), 3u);
  desktop.advance(2);
  const int before = nativeOf(*window).eventsNotTaken();
  user.pressKey(" ");
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), before + 1);
  EXPECT_THAT(takeCalls(), ElementsAre("play 0"));
}

TEST_F(TrackTableTest, WithoutAnActionToPlayReturnIsTheProgramsOwn) {
  const auto other = make<TrackTable>(songs, TrackActions{});
  EXPECT_FALSE(other->tableViewRowWasEntered(*other->table(), 0));
  EXPECT_FALSE(other->tableViewShowMenuForRow(*other->table(), 0, {0, 0}));
  for (std::size_t control = 0; control < 4; ++control) other->tableViewPressControl(*other->table(), 0, control);
  EXPECT_TRUE(table->tableViewRowWasEntered(inner(), 0));
}

TEST_F(TrackTableTest, WithoutAnActionToPauseWhatPlaysIsPlayedAgain) {
  const auto other = make<TrackTable>(
      songs, TrackActions{.play = [this](std::size_t row) { calls.push_back("again " + std::to_string(row)); }});
  songs->setPlayback(1, Playback::Playing);
  other->tableViewPressControl(*other->table(), 1, 0);
  EXPECT_THAT(calls, ElementsAre("again 1"));
}

TEST_F(TrackTableTest, LeftAndRightReachPlayArtistsFavoriteAndMore) {
  select(1);
  for (int i = 0; i < 5; ++i) {
    key(NSRightArrowFunctionKey);
    EXPECT_FALSE(NSIsEmptyRect(inner().focusRingMaskBounds())) << i;
    user.pressKey("\r");
    if (desktop.openMenu()) desktop.chooseFromMenu(std::nullopt);
    desktop.settle();
  }
  EXPECT_THAT(takeCalls(), ElementsAre("play 1", "artist 0 of 1", "artist 1 of 1", "favorite 1", "more 1"));
}

TEST_F(TrackTableTest, AnArtistWithoutANameIsNoControl) {
  songs->songs[1].row.artists = {"", "First", "", "Second"};
  songs->didChangeRows(1);
  desktop.settle();
  const auto controls = table->tableViewControlsOfRow(inner(), 1);
  std::vector<std::string> names;
  for (const TableRowControl& control : controls) names.push_back(control.name);
  EXPECT_THAT(names, ElementsAre("Play", "First", "Second", "Favorite", "More"));
  EXPECT_FALSE(NSIsEmptyRect(controls[1].frame));
  EXPECT_GT(controls[2].frame.origin.x, CGRectGetMaxX(controls[1].frame));
  for (std::size_t control = 1; control <= 3; ++control) table->tableViewPressControl(inner(), 1, control);
  EXPECT_THAT(takeCalls(), ElementsAre("artist 1 of 1", "artist 3 of 1", "favorite 1"));
}

TEST_F(TrackTableTest, AfterADeletionWithKeysTheNextRowIsSelected) {
  select(2);
  songs->remove(2);
  EXPECT_EQ(inner().keyboardRow(), 2u);
  select(98);
  songs->remove(98);
  EXPECT_EQ(inner().keyboardRow(), 97u);
  window->makeFirstResponder(nullptr);
  songs->remove(97);
  EXPECT_TRUE(inner().selectedRowIndexes().isEmpty());
}

// Sorting.

TEST_F(TrackTableTest, AHeaderHasTheModelSortAndTheSelectionGoesAlong) {
  int changes = 0;
  table->setOnSelectionChange([&] { ++changes; });
  select(3);
  const auto header = inner().headerView();
  const CGRect title = header->headerRectOfColumn(1);
  const CGPoint inHeader = header->convertPointToView({CGRectGetMidX(title), CGRectGetMidY(title)}, nullptr);
  click(inHeader);
  click(inHeader);
  EXPECT_THAT(songs->sorts, ElementsAre("0 up", "0 down"));
  ASSERT_EQ(inner().selectedRowIndexes().count(), 1u);
  EXPECT_EQ(songs->songs[*inner().selectedRow()].row.title, "D song 3");
  EXPECT_GT(changes, 0);
}

TEST_F(TrackTableTest, WhatWasSelectedEarlierIsNotAfterASort) {
  select(3);
  select(5);
  songs->sortBy(TrackColumn::Title, false);
  ASSERT_EQ(inner().selectedRowIndexes().count(), 1u);
  EXPECT_EQ(songs->songs[*inner().selectedRow()].row.title, "F song 5");
}

TEST_F(TrackTableTest, AHeaderOfAModelThatDoesNotSortDoesNothing) {
  struct Unsorted : Songs {
    using Songs::Songs;
    bool isSortable() const override { return false; }
  };
  const auto unsorted = std::make_shared<Unsorted>(3);
  const auto other = make<TrackTable>(unsorted, TrackActions{});
  for (std::size_t column = 0; column < other->table()->tableColumns().size(); ++column)
    EXPECT_FALSE(other->table()->sortByColumn(column));
  EXPECT_THAT(unsorted->sorts, IsEmpty());
}

TEST_F(TrackTableTest, WithoutIdentitiesTheSelectionStaysAtItsPlace) {
  songs->hasIdentities = false;
  select(3);
  songs->didChangeAll();
  EXPECT_THAT(inner().selectedAccessibleItems(), ElementsAre(3));
}

}  // namespace
}  // namespace tessaluna::ready
