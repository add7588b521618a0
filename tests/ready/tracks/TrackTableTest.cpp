// What a track table shows, and what the pointer does in it.
#include "tessaluna/ready/tracks/TrackTable.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/ready/tracks/TrackTableWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using namespace TessalunaUIKit;
using TrackTableTest = TrackTableWorld;
using testing::ElementsAre;
using testing::IsEmpty;

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
  table->setFrameSize({60, height});
  desktop.settle();
  EXPECT_TRUE(part<MultipleLinksTextField>(0).isHidden()) << "has no room for a letter";
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

TEST_F(TrackTableTest, WithoutActionsNothingIsCalled) {
  table = make<TrackTable>(songs, TrackActions{});
  table->setFrame({0, 0, width, height});
  window->contentView()->addSubview(table);
  desktop.settle();
  user.moveTo(*window, beside(1));
  click(middleOf(part<TrackRowPlayButton>(1)));
  click(middleOf(part<TrackRowFavoriteButton>(1)));
  const CGPoint artist = middleOf(part<MultipleLinksTextField>(1));
  click({part<MultipleLinksTextField>(1).convertPointToView({4, 9}, nullptr).x, artist.y});
  user.click(*window, beside(1));
  user.click(*window, beside(1));
  for (std::size_t control = 0; control < 4; ++control) table->tableViewPressControl(inner(), 1, control);
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_THAT(takeCalls(), testing::IsEmpty());
}

TEST_F(TrackTableTest, AnArtistThatHasGoneFromItsRowIsNotReported) {
  auto& artists = part<MultipleLinksTextField>(1);
  songs->songs[1].row.artists = {"Only"};
  artists.target()->linkClicked(1, artists);
  EXPECT_THAT(takeCalls(), testing::IsEmpty());
  artists.target()->linkClicked(0, artists);
  EXPECT_THAT(takeCalls(), ElementsAre("artist 0 of 1"));
}

TEST_F(TrackTableTest, ItsColumnsAreNotTheUsersToResizeAndItFollowsItsSuperview) {
  for (const Ref<NSTableColumn>& column : inner().tableColumns())
    EXPECT_FALSE(column->isResizable()) << column->identifier();
  EXPECT_EQ(table->autoresizingMask(), NSViewWidthSizable | NSViewHeightSizable);
  EXPECT_TRUE(table->scrollView()->hasVerticalScroller());
}

TEST_F(TrackTableTest, ARowThatComesIntoSightIsSelectedAndNotPressed) {
  select(0);
  window->makeFirstResponder(nullptr);
  desktop.settle();
  const auto before = lookOf(0);
  part<TrackRowPlayButton>(0).setIsPressed(true);
  part<TrackRowFavoriteButton>(0).setIsPressed(true);
  part<TrackRowMoreButton>(0).setIsPressed(true);
  part<MultipleLinksTextField>(0).setIsPressed(true);
  scrollTo(52 * 30);
  scrollTo(0);
  EXPECT_EQ(lookOf(0), before);
  for (std::size_t row = 0; row < 4; ++row) {
    EXPECT_FALSE(part<TrackRowPlayButton>(row).isPressed()) << row;
    EXPECT_FALSE(part<TrackRowFavoriteButton>(row).isPressed()) << row;
    EXPECT_FALSE(part<TrackRowMoreButton>(row).isPressed()) << row;
    EXPECT_FALSE(part<MultipleLinksTextField>(row).isPressed()) << row;
  }
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

}  // namespace
}  // namespace tessaluna::ready
