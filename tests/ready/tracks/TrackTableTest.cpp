// A track table under a virtual user: the pointer, the keyboard, an assistive client, and a model that changes meanwhile.
#include "tessaluna/ready/tracks/TrackTable.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <set>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/countingNew.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/harness/rowParts.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using namespace TessalunaUIKit;
using testing::ElementsAre;
using testing::IsEmpty;

// A queue in a player's words.
class Songs : public TrackModel {
 public:
  struct Song {
    std::uint64_t number = 0;
    TrackRow row;
  };
  explicit Songs(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) add(i);
  }

  std::size_t count() const override { return songs.size(); }
  TrackRow row(std::size_t index) const override {
    ++rowsAsked;
    return songs.at(index).row;
  }
  std::uint64_t identityOf(std::size_t index) const override { return hasIdentities ? songs.at(index).number + 1 : 0; }
  bool isSortable() const override { return true; }
  void sortBy(TrackColumn column, bool ascending) override {
    sorts.push_back(std::to_string(static_cast<int>(column)) + (ascending ? " up" : " down"));
    std::stable_sort(songs.begin(), songs.end(), [&](const Song& a, const Song& b) {
      const std::string &one = a.row.title, &other = b.row.title;
      return ascending ? one < other : other < one;
    });
    didChangeAll();
  }

  void add(std::size_t i) {
    const std::string letter(1, static_cast<char>('A' + i % 20));
    songs.push_back({.number = i,
                     .row = {.title = letter + " song " + std::to_string(i),
                             .artists = {"First " + std::to_string(i), "Second"},
                             .seconds = static_cast<int>(60 + i)}});
  }
  void insert(std::size_t at, std::size_t count = 1) {
    songs.insert(songs.begin() + static_cast<std::ptrdiff_t>(at), count, {.number = 9999, .row = {.title = "New"}});
    didInsertRows(at, count);
  }
  void remove(std::size_t first, std::size_t count = 1) {
    const auto from = songs.begin() + static_cast<std::ptrdiff_t>(first);
    songs.erase(from, from + static_cast<std::ptrdiff_t>(count));
    didRemoveRows(first, count);
  }
  void move(std::size_t from, std::size_t to) {
    const Song song = songs[from];
    songs.erase(songs.begin() + static_cast<std::ptrdiff_t>(from));
    songs.insert(songs.begin() + static_cast<std::ptrdiff_t>(to), song);
    didMoveRow(from, to);
  }
  void setPlayback(std::size_t row, Playback playback) {
    songs[row].row.playback = playback;
    didChangeRows(row);
  }
  void toggleFavorite(std::size_t row) {
    songs[row].row.isFavorite = !songs[row].row.isFavorite;
    didChangeRows(row);
  }
  using TrackModel::didChangeAll;
  using TrackModel::didChangeRows;

  std::vector<Song> songs;
  std::vector<std::string> sorts;
  bool hasIdentities = true;
  mutable std::size_t rowsAsked = 0;
};

constexpr CGFloat width = 800, height = 286;  // five rows of 52 points below a header of 26

class TrackTableTest : public harness::StillWorld {
 protected:
  TrackTableTest() { open(100); }

  void open(std::size_t count) {
    if (window) window->close();
    songs = std::make_shared<Songs>(count);
    table = make<TrackTable>(songs, actions());
    window = showWindow({100, 100, width, height});
    table->setFrame({0, 0, width, height});
    window->contentView()->addSubview(table);
    desktop.settle();
    nativeOf(*window).forgetPaints();
  }
  TrackActions actions() {
    const auto note = [this](const char* what) {
      return [this, what](std::size_t row) { calls.push_back(what + std::to_string(row)); };
    };
    return {.play =
                [this](std::size_t row) {
                  calls.push_back("play " + std::to_string(row));
                  songs->setPlayback(row, Playback::Playing);
                },
            .pause =
                [this](std::size_t row) {
                  calls.push_back("pause " + std::to_string(row));
                  songs->setPlayback(row, Playback::Paused);
                },
            .favorite =
                [this](std::size_t row) {
                  calls.push_back("favorite " + std::to_string(row));
                  songs->toggleFavorite(row);
                  if (removesAtFavorite) songs->remove(row);
                },
            .more =
                [this, note](std::size_t row) {
                  calls.push_back("more " + std::to_string(row));
                  return std::vector<TrackCommand>{
                      {.title = "Play next", .choose = note("next ")},
                      {},
                      {.title = "Remove", .choose = [this](std::size_t at) { songs->remove(at); }}};
                },
            .artist =
                [this](std::size_t row, std::size_t artist) {
                  calls.push_back("artist " + std::to_string(artist) + " of " + std::to_string(row));
                }};
  }

  NSTableView& inner() { return *table->table(); }
  TrackTableRow& rowView(std::size_t row) { return dynamic_cast<TrackTableRow&>(*inner().viewAtRow(row)); }
  template <class Part>
  Part& part(std::size_t row) {
    return harness::partOfRow<Part>(inner(), row);
  }
  static CGPoint middleOf(const NSView& view) {
    const CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    return {CGRectGetMidX(rect), CGRectGetMidY(rect)};
  }
  CGPoint beside(std::size_t row) { return inner().convertPointToView({2, CGRectGetMidY(inner().rectOfRow(row))}, nullptr); }
  void click(CGPoint point) {
    desktop.advance(10);  // no double click
    user.moveTo(*window, point);
    user.click(*window, point);
    desktop.settle();
  }
  void key(char32_t key, std::uint32_t modifiers = 0) { user.pressKey(utf8FromScalar(key), modifiers); }
  void select(std::size_t row) {
    window->makeFirstResponder(&inner());
    inner().selectByKey(row, false);
    desktop.settle();
  }
  void scrollTo(CGFloat y) {
    table->scrollView()->contentView()->scrollToPoint({0, y});
    desktop.settle();
  }
  std::vector<std::string> titles() {
    std::vector<std::string> shown;
    for (std::size_t row = 0; row < inner().numberOfRows(); ++row)
      if (inner().viewAtRow(row)) shown.push_back(part<NSTextField>(row).stringValue());
    return shown;
  }
  std::vector<std::size_t> rowsWithControls() {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < inner().numberOfRows(); ++row)
      if (inner().viewAtRow(row) && part<TrackRowPlayButton>(row).hasMouseOnRow() &&
          part<TrackRowFavoriteButton>(row).hasMouseOnRow() && part<TrackRowMoreButton>(row).hasMouseOnRow())
        rows.push_back(row);
    return rows;
  }
  harness::Lines lookOf(std::size_t row) {
    desktop.settle();
    rowView(row).setNeedsDisplay(true);
    desktop.settle();
    return nativeOf(*window).paints().back().lines;
  }
  std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

  std::shared_ptr<Songs> songs;
  Ref<TrackTable> table;
  Ref<NSWindow> window;
  std::vector<std::string> calls;
  bool removesAtFavorite = false;
};

// Rows.

TEST_F(TrackTableTest, ARowShowsTitleArtistsAndLength) {
  EXPECT_THAT(titles(), ElementsAre("A song 0", "B song 1", "C song 2", "D song 3", "E song 4"));
  EXPECT_THAT(*part<MultipleLinksTextField>(3).stringValues(), ElementsAre("First 3", "Second"));
  EXPECT_EQ(trackLengthText(187), "3:07");
  EXPECT_EQ(trackLengthText(3750), "1:02:30");
  EXPECT_EQ(trackLengthText(0), "0:00");
  EXPECT_EQ(trackLengthText(std::nullopt), "");
  EXPECT_EQ(trackLengthText(-1), "");
  EXPECT_EQ(trackLengthText(3'599'999), "999:59:59");
  EXPECT_EQ(trackLengthText(3'600'000), "");
  EXPECT_EQ(trackLengthText(std::numeric_limits<int>::max()), "");
}

TEST_F(TrackTableTest, LengthsOfHoursFit) {
  songs->songs[3].row.seconds = 36'150;
  songs->didChangeRows(3);
  desktop.settle();
  const auto isTime = [](const Ref<NSView>& view) {
    const auto label = std::dynamic_pointer_cast<NSTextField>(view);
    return label && label->stringValue() == "10:02:30";
  };
  const auto& views = part<MultipleLinksTextField>(3).superview()->subviews();
  const auto time = std::ranges::find_if(views, isTime);
  ASSERT_NE(time, views.end());
  EXPECT_GE((*time)->frame().size.width, (*time)->intrinsicContentSize().width);
}

TEST(TrackTableDeathTest, ANullModelStopsTheProgram) {
  EXPECT_DEATH(TrackTable(nullptr, {}), "TrackTable: made without a model");
}

TEST_F(TrackTableTest, RowsThatComeIntoSightShowTheirOwnTracks) {
  scrollTo(52 * 40);
  EXPECT_THAT(titles(), ElementsAre("A song 40", "B song 41", "C song 42", "D song 43", "E song 44"));
}

TEST_F(TrackTableTest, WithoutItsHeaderAnotherRowShows) {
  table->setShowsHeader(false);
  desktop.settle();
  EXPECT_EQ(titles().size(), 6u);
  table->setShowsHeader(true);
  desktop.settle();
  EXPECT_EQ(titles().size(), 5u);
}

TEST_F(TrackTableTest, ACoverIsShownAndAPlaceholderWithoutOne) {
  const Ref<NSImage> placeholder = part<NSImageView>(0).image();
  ASSERT_TRUE(placeholder);
  const Ref<NSImage> cover = NSImage::imageWithSize({40, 40}, false, [](CGRect) { return true; });
  songs->songs[0].row.cover = cover;
  songs->setPlayback(0, Playback::None);
  EXPECT_EQ(part<NSImageView>(0).image(), cover);
  EXPECT_EQ(part<NSImageView>(0).frame().size, (CGSize{40, 40}));
}

TEST_F(TrackTableTest, PartsDoNotOverlapAndStayInsideAtAnyWidth) {
  for (CGFloat at = 0; at < 2600; at += 13) {
    const TrackColumns columns = trackColumnsForWidth(at);
    CGFloat sum = 0;
    for (const CGFloat column : columns.all()) {
      EXPECT_GE(column, 0);
      sum += column;
    }
    EXPECT_EQ(sum, at) << at;
    if (at < 60) continue;
    const TrackRowPlaces places = trackRowPlaces(at);
    const CGRect parts[] = {places.play,     places.cover, places.title, places.artists,
                            places.favorite, places.more,  places.time};
    for (const CGRect& one : parts) {
      if (one.size.width <= 0) continue;
      EXPECT_GE(one.origin.x, 0);
      EXPECT_LE(CGRectGetMaxX(one), at) << at;
      EXPECT_GE(one.origin.y, 0);
      EXPECT_LE(CGRectGetMaxY(one), trackRowHeight);
      for (const CGRect& other : parts)
        EXPECT_TRUE(&other == &one || other.size.width <= 0 || !NSIntersectsRect(one, other)) << at;
    }
  }
}

TEST_F(TrackTableTest, InAWideTableWhatBelongsTogetherStaysTogether) {
  const TrackRowPlaces wide = trackRowPlaces(2560), wider = trackRowPlaces(5000);
  EXPECT_LT(CGRectGetMaxX(wide.time), 1400);
  EXPECT_EQ(wide.time, wider.time);
}

TEST_F(TrackTableTest, NarrowTablesHaveArtistsBelowTheTitleAndHideTheTime) {
  EXPECT_EQ(inner().tableColumns().size(), 6u);
  const auto hidden = [&] {
    std::vector<std::string> names;
    for (const auto& column : inner().tableColumns())
      if (column->isHidden()) names.push_back(column->identifier());
    return names;
  };
  EXPECT_THAT(hidden(), IsEmpty());
  table->setFrameSize({500, height});
  desktop.settle();
  EXPECT_THAT(hidden(), ElementsAre("artists"));
  EXPECT_GT(part<MultipleLinksTextField>(0).frame().origin.y, part<NSTextField>(0).frame().origin.y);
  EXPECT_FALSE(part<MultipleLinksTextField>(0).isHidden());
  table->setFrameSize({300, height});
  desktop.settle();
  EXPECT_THAT(hidden(), ElementsAre("artists", "time", "rest"));
  table->setFrameSize({0, 0});
  desktop.settle();
  table->setFrameSize({width, height});
  desktop.settle();
  EXPECT_THAT(hidden(), IsEmpty());
  EXPECT_THAT(titles(), ElementsAre("A song 0", "B song 1", "C song 2", "D song 3", "E song 4"));
}

TEST_F(TrackTableTest, ArtistsHaveASecondToneAndTheColorOfSelectionsInASelectedRow) {
  const auto color = [&](std::size_t row) {
    return attributeObject<NSColor>(part<MultipleLinksTextField>(row).truncatedString(500)->attributesAtIndex(0),
                                    NSForegroundColorAttributeName);
  };
  EXPECT_LT(color(1)->alphaComponent(), 1);
  select(1);
  EXPECT_EQ(color(1), NSColor::alternateSelectedControlTextColor());
}

// The pointer.

TEST_F(TrackTableTest, TheRowUnderThePointerShowsItsControlsOnAGround) {
  user.moveTo(*window, beside(2));
  EXPECT_THAT(rowsWithControls(), ElementsAre(2));
  const auto hovered = lookOf(2), resting = lookOf(3);
  EXPECT_GE(harness::only("fill", hovered).size(), harness::only("fill", resting).size() + 3) << "one for each control";
  user.leave(*window);
  EXPECT_THAT(rowsWithControls(), IsEmpty());
}

TEST_F(TrackTableTest, AClickOnPlayPlaysAndTheNextPausesAndPlaysAgain) {
  const CGPoint play = middleOf(part<TrackRowPlayButton>(2));
  click(play);
  EXPECT_TRUE(part<TrackRowPlayButton>(2).isPlaying());
  for (int i = 0; i < 2; ++i) user.click(*window, play);  // the pointer does not move
  EXPECT_THAT(takeCalls(), ElementsAre("play 2", "pause 2", "play 2"));
}

TEST_F(TrackTableTest, PlayingAndPausedLookDifferent) {
  const auto look = [&](Playback playback) {
    songs->setPlayback(1, playback);
    return lookOf(1);
  };
  const auto none = look(Playback::None), playing = look(Playback::Playing), paused = look(Playback::Paused);
  EXPECT_NE(none, playing);
  EXPECT_NE(none, paused);
  EXPECT_NE(playing, paused);
}

TEST_F(TrackTableTest, AFavoriteHasAMarkAtRest) {
  const auto before = lookOf(1);
  songs->songs[1].row.isFavorite = true;
  songs->setPlayback(1, Playback::None);
  EXPECT_NE(lookOf(1), before);
  EXPECT_THAT(rowsWithControls(), IsEmpty());
}

TEST_F(TrackTableTest, TheHeartAndAnArtistAreReportedWithTheirRow) {
  scrollTo(52 * 30);
  click(middleOf(part<TrackRowFavoriteButton>(32)));
  const CGRect artists =
      part<MultipleLinksTextField>(32).convertRectToView(part<MultipleLinksTextField>(32).bounds(), nullptr);
  click({artists.origin.x + 3, CGRectGetMidY(artists)});
  EXPECT_THAT(takeCalls(), ElementsAre("favorite 32", "artist 0 of 32"));
  EXPECT_TRUE(inner().selectedRowIndexes().isEmpty()) << "a click on a control does not select";
}

TEST_F(TrackTableTest, ADoubleClickPlays) {
  user.click(*window, beside(3));
  user.click(*window, beside(3));
  EXPECT_THAT(takeCalls(), ElementsAre("play 3"));
}

TEST_F(TrackTableTest, AfterTheWheelAPressIsForTheRowThatCame) {
  const CGPoint place = middleOf(part<TrackRowPlayButton>(1));
  user.moveTo(*window, place);
  user.scroll(*window, place, {0, -104});
  desktop.advance(0.1);
  EXPECT_THAT(rowsWithControls(), ElementsAre(3));
  user.click(*window, place);
  EXPECT_THAT(takeCalls(), ElementsAre("play 3"));
}

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

// The menu.

TEST_F(TrackTableTest, MoreOpensTheProgramsCommands) {
  click(middleOf(part<TrackRowMoreButton>(1)));
  ASSERT_TRUE(desktop.openMenu());
  ASSERT_EQ(desktop.openMenu()->entries.size(), 3u);
  EXPECT_EQ(desktop.openMenu()->entries[0].title, "Play next");
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

TEST_F(TrackTableTest, WhoDeletesWithKeysContinuesWithTheNextRow) {
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

TEST_F(TrackTableTest, WhoIsNotifiedOfTheSelectionMayBeAnotherAfterwards) {
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

TEST_F(TrackTableTest, AnEmptyTableTakesKeysAndClicksInPeace) {
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
