// The gallery's track list under a virtual user: what its host does with hovers, clicks and scrolling.
#include "gallery/tracks/TrackListHost.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/countingNew.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/harness/rowParts.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using tessaluna::backend::MenuMark;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr CGFloat listWidth = 900, listHeight = 240;  // ten rows, in which every text has room

class TrackListHostTest : public harness::StillWorld {
 protected:
  TrackListHostTest() { open(1000); }
  ~TrackListHostTest() override { host->close(); }

  void open(std::size_t trackCount) {
    if (host) host->close();
    if (window) window->close();
    tracks = generatedTracks(trackCount);
    host = make<TrackListHost>(tracks);
    host->setReport([this](const std::string& what) { reports.push_back(what); });
    window = showWindow({100, 100, listWidth, listHeight});
    host->view()->setFrame({0, 0, listWidth, listHeight});
    window->contentView()->addSubview(host->view());
    desktop.settle();
    nativeOf(*window).forgetPaints();
  }

  NSTableView& table() { return *host->table(); }
  void scrollTo(CGFloat y) {
    host->view()->contentView()->scrollToPoint({0, y});
    desktop.settle();
  }
  TrackRowPlayButton& playOf(std::size_t row) { return harness::partOfRow<TrackRowPlayButton>(table(), row); }
  TrackRowFavoriteButton& favoriteOf(std::size_t row) { return harness::partOfRow<TrackRowFavoriteButton>(table(), row); }
  TrackRowMoreButton& moreOf(std::size_t row) { return harness::partOfRow<TrackRowMoreButton>(table(), row); }

  MultipleLinksTextField& artistsOf(std::size_t row) { return harness::partOfRow<MultipleLinksTextField>(table(), row); }

  static CGRect inWindow(const NSView& view) { return view.convertRectToView(view.bounds(), nullptr); }
  static CGPoint middleOf(const NSView& view) {
    const CGRect rect = inWindow(view);
    return {CGRectGetMidX(rect), CGRectGetMidY(rect)};
  }
  // Of a row, beside all controls.
  CGPoint beside(std::size_t row) { return table().convertPointToView({2, CGRectGetMidY(table().rectOfRow(row))}, nullptr); }
  void click(const NSView& view) {
    desktop.advance(10);  // no double click
    user.moveTo(*window, middleOf(view));
    user.click(*window, middleOf(view));
    desktop.settle();
  }
  std::vector<std::string> textsOf(std::size_t row) {
    std::vector<std::string> texts;
    for (const Ref<NSView>& part : table().viewAtRow(row)->subviews())
      if (const auto* label = dynamic_cast<const NSTextField*>(part.get())) texts.push_back(label->stringValue());
    return texts;
  }
  std::vector<std::size_t> rowsThatShowControls() {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < table().numberOfRows(); ++row)
      if (table().viewAtRow(row) && playOf(row).hasMouseOnRow() && favoriteOf(row).hasMouseOnRow() &&
          moreOf(row).hasMouseOnRow())
        rows.push_back(row);
    return rows;
  }
  std::vector<CGRect> repainted() {
    std::vector<CGRect> rects;
    for (const auto& paint : nativeOf(*window).paints()) rects.insert(rects.end(), paint.dirty.begin(), paint.dirty.end());
    return rects;
  }

  std::vector<Track> tracks;
  Ref<TrackListHost> host;
  Ref<NSWindow> window;
  std::vector<std::string> reports;
};

TEST_F(TrackListHostTest, ARowTellsNumberTitleArtistsAndLength) {
  EXPECT_THAT(textsOf(3), ElementsAre("4", tracks[3].title, lengthText(tracks[3].seconds)));
  EXPECT_EQ(artistsOf(3).stringValues(), tracks[3].artists);
  EXPECT_EQ(artistsOf(3).accessibilityLabel(), artistsText(tracks[3]));
}

TEST_F(TrackListHostTest, AClickOnAnArtistReportsItAndSelectsNothing) {
  const auto row = static_cast<std::size_t>(
      std::ranges::find_if(tracks, [](const Track& track) { return track.artists.size() > 1; }) - tracks.begin());
  scrollTo(table().rectOfRow(row).origin.y);
  const CGRect artists = inWindow(artistsOf(row));
  // After the first name and its separator, at 7.8 points for each character of the font.
  const CGFloat second = (static_cast<CGFloat>(tracks[row].artists[0].size()) + 2.5) * NSFont::systemFontSize() * 0.5;
  for (const CGFloat x : {2.0, second}) {
    desktop.advance(10);
    user.moveTo(*window, {artists.origin.x + x, CGRectGetMidY(artists)});
    user.click(*window, {artists.origin.x + x, CGRectGetMidY(artists)});
  }
  EXPECT_THAT(reports, ElementsAre("artist " + tracks[row].artists[0], "artist " + tracks[row].artists[1]));
  EXPECT_TRUE(table().selectedRowIndexes().isEmpty());
}

TEST_F(TrackListHostTest, TheArtistsOfASelectedRowHaveTheColorOfSelections) {
  const auto color = [&](std::size_t row) {
    return attributeObject<NSColor>(artistsOf(row).truncatedString(500)->attributesAtIndex(0),
                                    NSForegroundColorAttributeName);
  };
  click(artistsOf(2));
  EXPECT_NE(color(2), NSColor::alternateSelectedControlTextColor());
  user.click(*window, beside(2));
  EXPECT_EQ(color(2), NSColor::alternateSelectedControlTextColor());
  EXPECT_EQ(color(3), NSColor::controlTextColor());
}

TEST_F(TrackListHostTest, AColumnTooNarrowForAnEllipsisShowsNoArtists) {
  for (CGFloat width = listWidth; width > 100; width -= 7) {
    host->view()->setFrameSize({width, listHeight});
    desktop.settle();
    if (artistsOf(0).isHidden()) continue;
    EXPECT_GE(artistsOf(0).bounds().size.width, 24);
  }
  EXPECT_TRUE(artistsOf(0).isHidden());
}

TEST_F(TrackListHostTest, ArtistsStandOnTheLineOfTheOtherTexts) {
  const auto& title = harness::partOfRow<NSTextField>(table(), 0);
  EXPECT_EQ(artistsOf(0).frame().origin.y, title.frame().origin.y);
  EXPECT_EQ(artistsOf(0).frame().size.height, artistsOf(0).intrinsicContentSize().height);
}

TEST_F(TrackListHostTest, PartsOfARowDoNotOverlapAndStayInsideAtAnyWidth) {
  for (const CGFloat width : {320.0, 401.0, 900.0}) {
    const TrackRowPlaces places = placesInTrackRow({width, 24});
    const CGRect inOrder[] = {places.number,  places.play, places.favorite, places.title,
                              places.artists, places.more, places.length};
    CGFloat end = 0;
    for (const CGRect& part : inOrder) {
      EXPECT_GE(part.origin.x, end);
      EXPECT_GE(part.origin.y, 0);
      EXPECT_LE(CGRectGetMaxY(part), 24);
      EXPECT_GT(part.size.width, 0);
      EXPECT_EQ(part.origin.x, std::floor(part.origin.x));
      end = CGRectGetMaxX(part);
    }
    EXPECT_LE(end, width);
  }
}

TEST_F(TrackListHostTest, TheNumberOfTheLastTrackHasRoom) {
  // Digits of the desktop's fonts are up to two thirds of the size wide; two points are free on each side.
  EXPECT_GE(placesInTrackRow({900, 24}).number.size.width, 5 * 13 * 2 / 3.0 + 4);
}

TEST_F(TrackListHostTest, OnlyTheRowUnderThePointerShowsItsControls) {
  user.moveTo(*window, beside(2));
  EXPECT_THAT(rowsThatShowControls(), ElementsAre(2));
  user.moveTo(*window, beside(5));
  EXPECT_THAT(rowsThatShowControls(), ElementsAre(5));
  user.leave(*window);
  EXPECT_THAT(rowsThatShowControls(), ElementsAre());
}

// What happens to the list while the button is down on a control, and then the button goes up.
class TrackListHostPress : public TrackListHostTest {
 protected:
  template <class Change>
  void expectNoClickAfter(Change change) {
    user.moveTo(*window, middleOf(playOf(3)));
    user.press(*window, middleOf(playOf(3)));
    ASSERT_TRUE(playOf(3).isPressed());
    change();
    const auto isAnyPressed = [&] {
      for (std::size_t row = 0; row < table().numberOfRows(); ++row)
        if (table().viewAtRow(row) && (playOf(row).isPressed() || favoriteOf(row).isPressed() || moreOf(row).isPressed()))
          return true;
      return false;
    };
    EXPECT_FALSE(isAnyPressed());
    user.release();
    EXPECT_FALSE(isAnyPressed());
    EXPECT_EQ(reports, std::vector<std::string>{});
  }
};

TEST_F(TrackListHostPress, EndsWhereItsRowScrollsAway) {
  expectNoClickAfter([&] { scrollTo(24 * 50); });
}

TEST_F(TrackListHostPress, EndsWhereItsRowScrollsAwayAndBack) {
  expectNoClickAfter([&] { scrollTo(24 * 50), scrollTo(0); });
}

TEST_F(TrackListHostPress, EndsWithAReload) {
  expectNoClickAfter([&] { table().reloadData(); });
}

TEST_F(TrackListHostPress, EndsWhereTheListIsTakenOutAndPutBack) {
  expectNoClickAfter([&] {
    host->view()->removeFromSuperview();
    window->contentView()->addSubview(host->view());
  });
}

TEST_F(TrackListHostPress, AViewThatComesToAnotherRowUnderAStillPointerIsNotClicked) {
  user.moveTo(*window, middleOf(playOf(3)));
  const CGPoint place = middleOf(playOf(3));
  for (const CGFloat y : {24.0 * 50, 24.0 * 51, 24.0 * 7, 0.0}) {
    scrollTo(y);
    user.press(*window, place);
    user.dragTo({-500, -500});
    user.release();
  }
  scrollTo(24 * 90);
  user.click(*window, place);
  EXPECT_EQ(reports, std::vector<std::string>{});
}

TEST_F(TrackListHostTest, AHoverChangeRepaintsTheControlsOfTheTwoRowsAndNoMore) {
  user.moveTo(*window, beside(2));
  desktop.settle();
  nativeOf(*window).forgetPaints();
  user.moveTo(*window, beside(5));
  desktop.settle();
  EXPECT_THAT(repainted(), UnorderedElementsAre(inWindow(playOf(2)), inWindow(favoriteOf(2)), inWindow(moreOf(2)),
                                                inWindow(playOf(5)), inWindow(favoriteOf(5)), inWindow(moreOf(5))));
}

TEST_F(TrackListHostTest, ThePointerOnAControlRepaintsThatControlOnly) {
  user.moveTo(*window, beside(2));
  desktop.settle();
  nativeOf(*window).forgetPaints();
  user.moveTo(*window, middleOf(favoriteOf(2)));
  desktop.settle();
  EXPECT_THAT(repainted(), ElementsAre(inWindow(favoriteOf(2))));
}

TEST_F(TrackListHostTest, AClickOnTheHeartRepaintsTheHeartOnly) {
  user.moveTo(*window, middleOf(favoriteOf(2)));
  desktop.settle();
  nativeOf(*window).forgetPaints();
  user.click(*window, middleOf(favoriteOf(2)));
  desktop.settle();
  EXPECT_THAT(repainted(), ElementsAre(inWindow(favoriteOf(2))));
}

TEST_F(TrackListHostTest, AClickOnPlaySwitchesThePlayingRow) {
  click(playOf(2));
  EXPECT_TRUE(playOf(2).isPlayingTrack());
  EXPECT_TRUE(playOf(2).isPlaying());
  click(playOf(4));
  EXPECT_FALSE(playOf(2).isPlayingTrack());
  EXPECT_FALSE(playOf(2).isPlaying());
  EXPECT_TRUE(playOf(4).isPlayingTrack());
  EXPECT_THAT(reports, ElementsAre("playing " + tracks[2].title, "playing " + tracks[4].title));
}

TEST_F(TrackListHostTest, AClickOnThePlayingRowPausesAndPlaysAgain) {
  click(playOf(2));
  click(playOf(2));
  EXPECT_TRUE(playOf(2).isPlayingTrack());
  EXPECT_FALSE(playOf(2).isPlaying());
  click(playOf(2));
  EXPECT_TRUE(playOf(2).isPlaying());
}

TEST_F(TrackListHostTest, AClickOnTheHeartTogglesAndTheHostRemembers) {
  const bool was = tracks[3].isFavorite;
  click(favoriteOf(3));
  EXPECT_EQ(favoriteOf(3).isFavorite(), !was);
  scrollTo(5000);
  scrollTo(0);
  EXPECT_EQ(favoriteOf(3).isFavorite(), !was);
  click(favoriteOf(3));
  EXPECT_EQ(favoriteOf(3).isFavorite(), was);
}

TEST_F(TrackListHostTest, MoreOpensAMenuWhoseChoicesDoWhatTheControlsDo) {
  click(moreOf(1));
  ASSERT_TRUE(desktop.openMenu());
  ASSERT_EQ(desktop.openMenu()->entries.size(), 2u);
  EXPECT_EQ(desktop.openMenu()->entries[0].title, "Play");
  desktop.chooseFromMenu(0);
  desktop.settle();
  EXPECT_TRUE(playOf(1).isPlaying());
  click(moreOf(1));
  EXPECT_EQ(desktop.openMenu()->entries[0].title, "Pause");
  const bool was = favoriteOf(1).isFavorite();
  EXPECT_EQ(desktop.openMenu()->entries[1].mark, was ? MenuMark::Check : MenuMark::None);
  desktop.chooseFromMenu(1);
  desktop.settle();
  EXPECT_EQ(favoriteOf(1).isFavorite(), !was);
}

TEST_F(TrackListHostTest, ADoubleClickPlaysARow) {
  user.click(*window, beside(6));
  user.click(*window, beside(6));
  EXPECT_TRUE(playOf(6).isPlaying());
}

TEST_F(TrackListHostTest, OnAScrolledListAControlActsOnTheRowThatShowsThere) {
  scrollTo(24 * 500 + 7);
  click(playOf(503));
  EXPECT_THAT(reports, ElementsAre("playing " + tracks[503].title));
}

TEST_F(TrackListHostTest, ARowThatTookOverAViewShowsItsOwnState) {
  click(playOf(0));
  user.moveTo(*window, beside(0));
  scrollTo(24 * 300);
  for (std::size_t row = 300; row < 310; ++row) {
    EXPECT_FALSE(playOf(row).isPlayingTrack()) << row;
    EXPECT_FALSE(playOf(row).hasMouseOnRow()) << row;
    EXPECT_EQ(favoriteOf(row).isFavorite(), tracks[row].isFavorite) << row;
  }
  scrollTo(0);
  EXPECT_TRUE(playOf(0).isPlaying());
}

TEST_F(TrackListHostTest, AfterTheWheelTheRowUnderThePointerHasTheControls) {
  user.moveTo(*window, middleOf(playOf(4)));
  user.scroll(*window, middleOf(playOf(4)), {0, -48});
  desktop.advance(0.01);
  EXPECT_THAT(rowsThatShowControls(), ElementsAre(6));
  const CGPoint under = middleOf(playOf(6));
  user.press(*window, under);
  user.release();
  EXPECT_THAT(reports, ElementsAre("playing " + tracks[6].title)) << "an entry has arrived: the click counts";
  // By the program, and by keys, the rows come and go without a word.
  table().scrollPoint({0, 0});
  desktop.advance(0.01);
  EXPECT_THAT(rowsThatShowControls(), ElementsAre(6));
}

TEST_F(TrackListHostTest, UntilTheFrameAfterTheWheelNoControlFollows) {
  user.moveTo(*window, middleOf(playOf(4)));
  user.scroll(*window, {50, 120}, {0, -48});
  desktop.settle();
  EXPECT_THAT(rowsThatShowControls(), ElementsAre(4));
  user.press(*window, middleOf(playOf(6)));  // under the pointer now, which has not moved
  user.release();
  EXPECT_THAT(reports, ElementsAre()) << "no entry has arrived: the click does not count";
  user.moveTo(*window, middleOf(playOf(6)));
  EXPECT_THAT(rowsThatShowControls(), ElementsAre(6));
}

TEST_F(TrackListHostTest, AClickOnAControlDoesNotSelectItsRow) {
  click(playOf(2));
  EXPECT_TRUE(table().selectedRowIndexes().isEmpty());
  user.click(*window, beside(2));
  EXPECT_TRUE(table().isRowSelected(2));
}

TEST_F(TrackListHostTest, ScrollingDrawsEachRowThatShowsOnce) {
  scrollTo(24 * 100 + 12);
  nativeOf(*window).forgetPaints();
  scrollTo(24 * 102 + 12);
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  // Eleven rows of four texts.
  EXPECT_EQ(harness::only("glyphs", nativeOf(*window).paints()[0].lines).size(), 44u);
}

// How much there is of what a list makes, when all its rows have passed.
struct Census {
  std::size_t viewsMade = 0;
  long viewsAlive = 0, allocations = 0;
};

TEST_F(TrackListHostTest, AssistiveClientsFindARowForEachTrackWithItsControlsAsActions) {
  const Ref<NSView> row = table().viewAtRow(1);
  const std::string name = "2, " + tracks[1].title + ", " + artistsText(tracks[1]) + ", " + lengthText(tracks[1].seconds);
  EXPECT_EQ(accessibleLine(row), "row \"" + name + "\" [selectable] play, favorite, show menu");
  table().selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  EXPECT_EQ(accessibleLine(row), "row \"" + name + "\" [selectable, selected] play, favorite, show menu");
  EXPECT_TRUE(performAccessibleAction(row, "play"));
  EXPECT_EQ(reports.back(), "playing " + tracks[1].title);
  EXPECT_TRUE(performAccessibleAction(row, "favorite"));
  EXPECT_EQ(reports.back(), (tracks[1].isFavorite ? "no favorite " : "favorite ") + tracks[1].title);
  EXPECT_TRUE(performAccessibleAction(row, NSAccessibilityShowMenuAction));
  EXPECT_EQ(reports.back(), "more of track 2");
}

class TrackListHostMemoryTest : public TrackListHostTest {
 protected:
  Census scrollThrough(std::size_t trackCount) {
    open(trackCount);
    std::set<WeakRef<NSView>, std::owner_less<>> made;
    const auto visit = [&](CGFloat y) {
      scrollTo(y);
      nativeOf(*window).forgetPaints();
      for (const Ref<NSView>& view : table().subviews()) made.insert(view);
    };
    // What is made once has been made after a few screens.
    for (CGFloat y = 0; y < 3 * listHeight; y += 50) visit(y);
    visit(0);
    const long before = harness::allocationsAlive - static_cast<long>(made.size());
    for (CGFloat y = 0; y < table().frame().size.height; y += listHeight) visit(y);
    visit(0);
    Census census;
    census.allocations = harness::allocationsAlive - static_cast<long>(made.size()) - before;
    census.viewsMade = made.size();
    census.viewsAlive = std::count_if(made.begin(), made.end(), [](const auto& view) { return !view.expired(); });
    return census;
  }
};

TEST_F(TrackListHostMemoryTest, TenThousandRowsThatPassLeaveNothingBehind) {
  const Census census = scrollThrough(10000);
  // Eleven rows show at most, and one comes before another goes.
  EXPECT_GE(census.viewsMade, 10u);
  EXPECT_LE(census.viewsMade, 24u);
  EXPECT_LE(census.viewsAlive, 24);
  EXPECT_LE(census.allocations, 20);
}

TEST_F(TrackListHostMemoryTest, AListTenTimesAsLongHasNoMoreViews) {
  const Census thousand = scrollThrough(1000), tenThousand = scrollThrough(10000);
  EXPECT_EQ(tenThousand.viewsMade, thousand.viewsMade);
  EXPECT_EQ(tenThousand.viewsAlive, thousand.viewsAlive);
}

}  // namespace
}  // namespace gallery
