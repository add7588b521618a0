// Rows, models and tables that go while they are in use.
#include <gmock/gmock.h>

#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tests/ready/tracks/TrackTableWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using namespace TessalunaUIKit;
using TrackTableTest = TrackTableWorld;
using testing::ElementsAre;
using testing::IsEmpty;

// Odd orders.

TEST_F(TrackTableTest, ARowThatItsOwnActionRemovesIsFollowedByTheNext) {
  removesAtFavorite = true;
  const CGPoint heart = middleOf(part<TrackRowFavoriteButton>(1));
  click(heart);
  EXPECT_EQ(titles()[1], "C song 2");
  desktop.advance(0.1);
  EXPECT_THAT(rowsWithControls(), ElementsAre(1)) << "the row that came under the pointer";
  user.click(*window, heart);
  EXPECT_THAT(takeCalls(), ElementsAre("favorite 1", "favorite 1"));
  EXPECT_EQ(titles()[1], "D song 3");
}

TEST_F(TrackTableTest, ATableThatItsOwnActionEndsIsGone) {
  const WeakRef<TrackTable> weak = table;
  auto lone = std::make_shared<Songs>(3);
  Ref<TrackTable> other = make<TrackTable>(lone, TrackActions{.play = [&](std::size_t) {
                                             const WeakRef<TrackTable> held = other;
                                             other->removeFromSuperview();
                                             other = nullptr;
                                             EXPECT_FALSE(held.expired()) << "the action is the table's";
                                           }});
  const WeakRef<TrackTable> weakOther = other;
  table->removeFromSuperview();
  other->setFrame({0, 0, width, height});
  window->contentView()->addSubview(other);
  desktop.settle();
  const CGPoint play = middleOf(harness::partOfRow<TrackRowPlayButton>(*other->table(), 1));
  user.moveTo(*window, play);
  user.click(*window, play);
  desktop.settle();
  EXPECT_TRUE(weakOther.expired());
  lone->remove(0);  // observed by nobody
}

TEST_F(TrackTableTest, AControlThatOutlivesItsTableDoesNothing) {
  const auto play = refTo<TrackRowPlayButton>(part<TrackRowPlayButton>(0));
  const auto favorite = refTo<TrackRowFavoriteButton>(part<TrackRowFavoriteButton>(0));
  std::exchange(table, nullptr)->removeFromSuperview();
  desktop.settle();
  play->target()->trackRowPlayButtonClicked(*play);
  favorite->target()->trackRowFavoriteButtonClicked(*favorite);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TrackTableTest, APressEndsWhereItsRowIsRemoved) {
  const CGPoint play = middleOf(part<TrackRowPlayButton>(1));
  user.moveTo(*window, play);
  user.press(*window, play);
  songs->remove(1);
  user.release();
  EXPECT_THAT(takeCalls(), IsEmpty());
  EXPECT_FALSE(part<TrackRowPlayButton>(1).isPressed());
}

TEST_F(TrackTableTest, APressGoesWithItsRowWhereRowsComeAboveIt) {
  const CGPoint play = middleOf(part<TrackRowPlayButton>(1));
  user.moveTo(*window, play);
  user.press(*window, play);
  songs->insert(0);
  EXPECT_TRUE(part<TrackRowPlayButton>(2).isPressed());
  user.dragTo(middleOf(part<TrackRowPlayButton>(2)));
  user.release();
  EXPECT_THAT(takeCalls(), ElementsAre("play 2"));
}

TEST_F(TrackTableTest, ATableThatIsHiddenUnderThePointerTakesNoClick) {
  const CGPoint play = middleOf(part<TrackRowPlayButton>(1));
  user.moveTo(*window, play);
  user.press(*window, play);
  table->setHidden(true);
  user.release();
  user.click(*window, play);
  table->setHidden(false);
  desktop.settle();
  EXPECT_THAT(takeCalls(), IsEmpty());
  user.moveTo(*window, beside(3));
  click(play);
  EXPECT_THAT(takeCalls(), ElementsAre("play 1"));
}

TEST_F(TrackTableTest, RowsThatComeAndGoDuringADragKeepItsSelection) {
  user.press(*window, beside(1));
  songs->insert(0);
  songs->remove(3);
  user.dragTo(beside(4));
  user.release();
  EXPECT_THAT(inner().selectedAccessibleItems(), ElementsAre(2, 3, 4));
}

// A program that changes its list, or takes the table away, in what the table calls.

TEST_F(TrackTableTest, KeysThatComeBeforeTheNextLayoutSelectTheirRows) {
  select(0);
  key(NSEndFunctionKey);
  key(NSHomeFunctionKey);
  key(NSEndFunctionKey);
  desktop.settle();
  EXPECT_THAT(inner().selectedAccessibleItems(), ElementsAre(99));
  EXPECT_EQ(titles().back(), "T song 99");
}

TEST_F(TrackTableTest, RowsThatAnnouncementsPushedOutOfSightAreDeselected) {
  select(2);
  songs->insert(0, 20);
  inner().deselectAll();
  desktop.settle();
  EXPECT_THAT(inner().selectedAccessibleItems(), IsEmpty());
  select(3);
  table->setFrame({0, 0, width, 80});
  inner().deselectAll();
  desktop.settle();
  EXPECT_THAT(inner().selectedAccessibleItems(), IsEmpty());
}

TEST_F(TrackTableTest, TheCallOfASelectionChangeMaySetAnotherCall) {
  const auto held = std::make_shared<int>(7);
  table->setOnSelectionChange([this, held] {
    table->setOnSelectionChange([this] { calls.push_back("second"); });
    calls.push_back("first " + std::to_string(*held));
  });
  select(1);
  select(2);
  EXPECT_THAT(calls, ElementsAre("first 7", "second"));
}

TEST_F(TrackTableTest, ATableMayGoWhenTheSelectionChanges) {
  const auto remove = [this] {
    if (const Ref<TrackTable> leaving = std::exchange(table, nullptr)) leaving->removeFromSuperview();
  };
  const std::function<void()> changes[] = {[this] { songs->remove(0); },
                                           [this] { songs->remove(0, 90); },
                                           [this] { songs->songs.clear(), songs->didChangeAll(); },
                                           [this] { songs->songs.erase(songs->songs.begin()), songs->didChangeAll(); },
                                           [this] { key(NSDownArrowFunctionKey); },
                                           [this] { click(beside(2)); },
                                           [this] { click(beside(3)); }};
  for (const auto& change : changes) {
    open(100);
    select(0);
    const WeakRef<TrackTable> weak = table;
    table->setOnSelectionChange(remove);
    change();
    desktop.settle();
    EXPECT_EQ(table, nullptr);
    EXPECT_TRUE(weak.expired());
  }
}

TEST_F(TrackTableTest, TheListMayChangeWhenTheSelectionDoes) {
  select(0);
  table->setOnSelectionChange([this] {
    if (songs->count() > 3) songs->remove(0, 2);
  });
  songs->remove(0);
  desktop.settle();
  EXPECT_EQ(inner().numberOfRows(), songs->count());
  key(NSDownArrowFunctionKey);
  key(NSEndFunctionKey);
  desktop.settle();
  click(beside(0));
  EXPECT_EQ(inner().numberOfRows(), songs->count());
}

TEST_F(TrackTableTest, TheListMayChangeWhileTheCommandsOfARowAreMade) {
  std::vector<std::size_t> chosen;
  std::function<void(std::size_t)> change;
  const auto lone = std::make_shared<Songs>(10);
  const Ref<TrackTable> other = make<TrackTable>(
      lone, TrackActions{.more = [&](std::size_t row) {
        change(row);
        return std::vector<TrackCommand>{{.title = "One", .choose = [&](std::size_t at) { chosen.push_back(at); }}};
      }});
  table->removeFromSuperview();
  other->setFrame({0, 0, width, height});
  window->contentView()->addSubview(other);
  desktop.settle();
  const auto ask = [&](std::size_t row) { return other->tableViewShowMenuForRow(*other->table(), row, {0, 0}); };
  change = [&](std::size_t) { lone->insert(0); };
  EXPECT_TRUE(ask(2));
  desktop.chooseFromMenu(desktop.openMenu()->entries.front().number);
  desktop.settle();
  EXPECT_THAT(chosen, ElementsAre(3)) << "the track is one further below";
  change = [&](std::size_t row) { lone->remove(row); };
  EXPECT_FALSE(ask(2)) << "the track has gone";
  change = [&](std::size_t) { lone->songs.clear(), lone->didChangeAll(); };
  EXPECT_FALSE(ask(2));
}

TEST_F(TrackTableTest, SortingMayTakeTheTableAway) {
  struct Sorted : Songs {
    using Songs::Songs;
    void sortBy(TrackColumn, bool) override { sort(); }
    std::function<void()> sort;
  };
  const auto lone = std::make_shared<Sorted>(10);
  Ref<TrackTable> other = make<TrackTable>(lone, TrackActions{});
  lone->sort = [&] { std::exchange(other, nullptr)->removeFromSuperview(); };
  table->removeFromSuperview();
  other->setFrame({0, 0, width, height});
  window->contentView()->addSubview(other);
  desktop.settle();
  const auto header = other->table()->headerView();
  const CGRect title = header->headerRectOfColumn(1);
  click(header->convertPointToView({CGRectGetMidX(title), CGRectGetMidY(title)}, nullptr));
  EXPECT_EQ(other, nullptr);
}

TEST_F(TrackTableTest, AnEmptyTableIgnoresKeysAndClicks) {
  open(0);
  window->makeFirstResponder(&inner());
  for (const char32_t one : {NSHomeFunctionKey, NSEndFunctionKey, NSUpArrowFunctionKey, NSDownArrowFunctionKey,
                             NSPageUpFunctionKey, NSPageDownFunctionKey, NSLeftArrowFunctionKey, NSRightArrowFunctionKey})
    key(one);
  for (const char* one : {"\r", "a", " "}) user.pressKey(one);
  click({100, 100});
  user.click(*window, {100, 100}, {.button = 1});
  songs->didChangeAll();
  EXPECT_THAT(calls, IsEmpty());
  songs->insert(0);
  desktop.settle();
  EXPECT_EQ(titles().size(), 1u);
}

TEST_F(TrackTableTest, AnnouncementsThatDoNotFitLoadEverything) {
  songs->songs.resize(5);
  songs->remove(0);  // the table has 100
  desktop.settle();
  EXPECT_EQ(inner().numberOfRows(), 4u);
  songs->didChangeAll();
  EXPECT_EQ(inner().numberOfRows(), 4u);
}

TEST_F(TrackTableTest, AMenuThatTakesThePlaceOfAnotherIsForItsOwnRow) {
  const auto menuOf = [&](std::size_t row) { return table->tableViewShowMenuForRow(inner(), row, {0, 0}); };
  EXPECT_TRUE(menuOf(1));
  EXPECT_TRUE(menuOf(3));
  desktop.settle();
  calls.clear();
  desktop.chooseFromMenu(desktop.openMenu()->entries.front().number);
  desktop.settle();
  EXPECT_THAT(calls, ElementsAre("next 3"));
}

TEST_F(TrackTableTest, WhateverTheUserDoesMayTakeTheTableAway) {
  const auto lone = std::make_shared<Songs>(10);
  Ref<TrackTable> other;
  const auto remove = [&](auto&&...) {
    if (const Ref<TrackTable> leaving = std::exchange(other, nullptr)) leaving->removeFromSuperview();
  };
  const auto removeByMenu = [&](std::size_t) {
    remove();
    return std::vector<TrackCommand>{{.title = "One"}};
  };
  table->removeFromSuperview();
  const auto at = [&](std::size_t row) {
    NSTableView& rows = *other->table();
    return rows.convertPointToView({2, CGRectGetMidY(rows.rectOfRow(row))}, nullptr);
  };
  const std::function<void()> deeds[] = {
      [&] { user.click(*window, at(1)), user.click(*window, at(1)); },  // a double click
      [&] { user.click(*window, at(1), {.button = 1}); },
      [&] { user.pressKey("\r"); },
      [&] { key(NSRightArrowFunctionKey), user.pressKey("\r"); },
      [&] { key(NSRightArrowFunctionKey), key(NSRightArrowFunctionKey), user.pressKey("\r"); },
      [&] { key(NSMenuFunctionKey); },
      [&] { accessibilityOf(other->table()->accessibleItem(0))->accessibilityPerformAction("Favorite"); },
      [&] { accessibilityOf(other->table()->accessibleItem(0))->accessibilityPerformAction("More"); },
      [&] { accessibilityOf(other->table()->accessibleItem(0))->accessibilityPerformAction("Play"); }};
  for (const auto& deed : deeds) {
    desktop.advance(10);
    other = make<TrackTable>(lone, TrackActions{.play = remove, .favorite = remove, .more = removeByMenu, .artist = remove});
    other->setFrame({0, 0, width, height});
    window->contentView()->addSubview(other);
    desktop.settle();
    window->makeFirstResponder(other->table().get());
    other->table()->selectByKey(0, false);
    const WeakRef<TrackTable> weak = other;
    deed();
    desktop.settle();
    EXPECT_EQ(other, nullptr) << &deed - deeds;
    EXPECT_TRUE(weak.expired()) << &deed - deeds;
    remove();
  }
}

}  // namespace
}  // namespace tessaluna::ready
