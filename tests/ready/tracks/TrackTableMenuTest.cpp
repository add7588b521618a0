// The menu of a track table's rows.
#include <gmock/gmock.h>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/menuKey.h"
#include "tests/ready/tracks/TrackTableWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using namespace TessalunaUIKit;
using TrackTableTest = TrackTableWorld;
using testing::ElementsAre;

TEST_F(TrackTableTest, MoreOpensTheProgramsCommands) {
  click(middleOf(part<TrackRowMoreButton>(1)));
  ASSERT_TRUE(desktop.openMenu());
  ASSERT_EQ(desktop.openMenu()->entries.size(), 3u);
  EXPECT_EQ(desktop.openMenu()->entries[0].title, "Play next");
  EXPECT_TRUE(desktop.openMenu()->entries[1].isSeparator);
  desktop.chooseFromMenu(0);
  desktop.settle();
  EXPECT_THAT(takeCalls(), ElementsAre("more 1", "next 1"));
}

TEST_F(TrackTableTest, ACommandMayBeCheckedOrDisabled) {
  const auto other = make<TrackTable>(
      songs, TrackActions{.more = [](std::size_t) {
        return std::vector<TrackCommand>{{.title = "Queued", .isChecked = true}, {.title = "Share", .isEnabled = false}};
      }});
  other->setFrame({0, 0, width, height});
  window->contentView()->addSubview(other);
  ASSERT_TRUE(other->tableViewShowMenuForRow(*other->table(), 0, {0, 0}));
  const auto& entries = desktop.openMenu()->entries;
  EXPECT_EQ(entries[0].mark, backend::MenuMark::Check);
  EXPECT_TRUE(entries[0].isEnabled);
  EXPECT_EQ(entries[1].mark, backend::MenuMark::None);
  EXPECT_FALSE(entries[1].isEnabled);
}

TEST_F(TrackTableTest, TheMenuKeysAndARightClickOpenIt) {
  select(1);
  for (const auto& [key, modifiers] :
       {std::pair<char32_t, std::uint32_t>{NSMenuFunctionKey, 0}, {NSF1FunctionKey + 9, NSEventModifierFlagShift}}) {
    user.pressKey(key, modifiers);
    EXPECT_TRUE(desktop.openMenu());
    desktop.chooseFromMenu(std::nullopt);
    desktop.settle();
  }
  user.click(*window, beside(2), {.button = 1});
  EXPECT_TRUE(desktop.openMenu());
  EXPECT_THAT(takeCalls(), ElementsAre("more 1", "more 1", "more 2"));
}

TEST_F(TrackTableTest, ACommandIsForTheTrackWhereverItHasGoneMeanwhile) {
  click(middleOf(part<TrackRowMoreButton>(2)));
  songs->insert(0);
  songs->remove(4);
  ASSERT_TRUE(desktop.openMenu());
  desktop.chooseFromMenu(0);
  desktop.settle();
  EXPECT_THAT(takeCalls(), ElementsAre("more 2", "next 3"));
}

TEST_F(TrackTableTest, ACommandFollowsItsTrackWhereRowsAreMoved) {
  struct Move {
    std::size_t from, to, menu;
  };
  for (const Move& move :
       {Move{2, 4, 4}, Move{1, 3, 1}, Move{1, 2, 1}, Move{3, 1, 3}, Move{3, 2, 3}, Move{0, 1, 2}, Move{3, 4, 2}}) {
    ASSERT_TRUE(table->tableViewShowMenuForRow(inner(), 2, {0, 0}));
    songs->move(move.from, move.to);
    calls.clear();
    desktop.chooseFromMenu(0);
    desktop.settle();
    EXPECT_THAT(takeCalls(), ElementsAre("next " + std::to_string(move.menu))) << move.from << " to " << move.to;
  }
}

TEST_F(TrackTableTest, ACommandFollowsItsTrackWhereRowsAboveItGo) {
  ASSERT_TRUE(table->tableViewShowMenuForRow(inner(), 4, {0, 0}));
  songs->remove(0, 2);
  calls.clear();
  desktop.chooseFromMenu(0);
  desktop.settle();
  EXPECT_THAT(takeCalls(), ElementsAre("next 2"));
}

TEST_F(TrackTableTest, TheMenuOfATrackThatGoesCloses) {
  click(middleOf(part<TrackRowMoreButton>(2)));
  songs->remove(2);
  desktop.settle();
  EXPECT_FALSE(desktop.openMenu());
  click(middleOf(part<TrackRowMoreButton>(2)));
  songs->didChangeAll();
  desktop.settle();
  EXPECT_FALSE(desktop.openMenu());
}

TEST_F(TrackTableTest, ACommandMayRemoveItsRow) {
  click(middleOf(part<TrackRowMoreButton>(1)));
  desktop.chooseFromMenu(desktop.openMenu()->entries.back().number);
  desktop.settle();
  EXPECT_EQ(titles()[1], "C song 2");
}

}  // namespace
}  // namespace tessaluna::ready
