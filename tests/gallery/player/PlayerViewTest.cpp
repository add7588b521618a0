// A player's window under a virtual user: whole gestures, and their effects on all hosts.
#include "gallery/player/PlayerView.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/rowParts.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using namespace tessaluna::ready;
using namespace TessalunaUIKit;
using Tab = PlayerView::Tab;

class PlayerViewTest : public harness::StillWorld {
 protected:
  PlayerViewTest() {
    player->setReport([this](const std::string& what) { reports.push_back(what); });
    window->setContentView(player);
    desktop.settle();
  }

  NSTableView& rows(Tab tab = Tab::Songs) { return *player->table(tab)->table(); }
  TrackModel& model(Tab tab = Tab::Songs) { return *player->table(tab)->model(); }
  // Clicks a place in the view, from its upper left corner.
  void click(NSView& view, CGPoint place) {
    const CGPoint inWindow = view.convertPointToView(place, nullptr);
    desktop.advance(1);  // no double click
    user.moveTo(*window, inWindow);
    user.click(*window, inWindow);
  }
  void click(NSView& view) { click(view, {CGRectGetMidX(view.bounds()), CGRectGetMidY(view.bounds())}); }
  void clickRow(std::size_t row, CGFloat x = 200) { click(rows(), {x, CGRectGetMidY(rows().rectOfRow(row))}); }
  void clickTab(Tab tab) {
    const CGRect frame = player->tabs()->bounds();
    click(*player->tabs(), {frame.size.width * (static_cast<double>(tab) * 2 + 1) / 6, 10});
  }
  void playRow(std::size_t row) {
    clickRow(row);
    user.pressKey("\r");
  }
  void typeSearch(std::string_view text) {
    click(*player->search()->field(), {60, 13});
    user.type(text);
    desktop.advance(1);
  }
  std::string titleOf(std::size_t song) { return library->songs()[song].track.title; }
  std::string playing() { return player->player().song() ? titleOf(*player->player().song()) : std::string(); }
  // The first view that has this name for assistive clients.
  static Ref<NSView> viewNamed(const Ref<NSObject>& from, const std::string& name) {
    for (const Ref<NSObject>& child : accessibleChildrenOf(from)) {
      const auto view = std::dynamic_pointer_cast<NSView>(child);
      if (view && accessibleNameOf(child) == name && accessibleRoleOf(child) != NSAccessibilityListRole) return view;
      if (const Ref<NSView> inner = viewNamed(child, name)) return inner;
    }
    return nullptr;
  }
  std::string elements(const Ref<NSObject>& of) {
    std::string lines;
    for (const std::string& line : accessibleTreeLines(of)) lines += line + "\n";
    return lines;
  }

  std::vector<std::string> reports;
  const std::shared_ptr<MusicLibrary> library = std::make_shared<MusicLibrary>(24);
  const Ref<PlayerView> player = make<PlayerView>(CGRect{0, 0, 900, 600}, library);
  const Ref<NSWindow> window = showWindow({100, 100, 900, 600});
};

TEST_F(PlayerViewTest, ReturnPlaysARowAndItsListFollows) {
  playRow(3);
  EXPECT_EQ(playing(), titleOf(3));
  EXPECT_EQ(model().row(3).playback, Playback::Playing);
  EXPECT_THAT(elements(player->transport()), testing::HasSubstr(titleOf(3) + " – "));
  player->advance(library->songs()[3].track.seconds + 1);
  EXPECT_EQ(playing(), titleOf(4));
  EXPECT_EQ(model().row(3).playback, Playback::None);
  EXPECT_EQ(model().row(4).playback, Playback::Playing);
}

TEST_F(PlayerViewTest, TheSpaceBarPausesAndContinues) {
  playRow(3);
  ASSERT_TRUE(player->player().isPlaying());
  user.pressKey(" ");
  EXPECT_FALSE(player->player().isPlaying());
  EXPECT_EQ(model().row(3).playback, Playback::Paused);
  user.pressKey(" ");
  EXPECT_TRUE(player->player().isPlaying());
  EXPECT_EQ(playing(), titleOf(3));
}

TEST_F(PlayerViewTest, AHeldSpaceBarPausesOnce) {
  playRow(3);
  user.pressKey(" ");
  player->keyDown(make<NSEvent>(NSEvent::Fields{
      .type = NSEventType::KeyDown, .characters = " ", .charactersIgnoringModifiers = " ", .isRepeat = true}));
  EXPECT_FALSE(player->player().isPlaying());
}

TEST_F(PlayerViewTest, TheSpaceBarWithAModifierDoesNotPause) {
  playRow(3);
  user.pressKey(" ", NSEventModifierFlagControl);
  EXPECT_TRUE(player->player().isPlaying());
}

TEST_F(PlayerViewTest, AClickOnARowsControlPlaysAndPausesIt) {
  click(harness::partOfRow<TrackRowPlayButton>(rows(), 2));
  EXPECT_EQ(playing(), titleOf(2));
  click(harness::partOfRow<TrackRowPlayButton>(rows(), 2));
  EXPECT_EQ(model().row(2).playback, Playback::Paused);
  click(harness::partOfRow<TrackRowPlayButton>(rows(), 2));
  EXPECT_EQ(model().row(2).playback, Playback::Playing) << "it continues";
}

TEST_F(PlayerViewTest, SpaceEnlargesTheCoverThatHasTheKeyboard) {
  const auto picture = make<NSImage>(CGSize{40, 40});
  picture->addRepresentation(make<NSImageRep>(CGSize{40, 40}, 40, 40));
  player->cover()->setImage(picture);
  const auto panel = []() -> Ref<NSWindow> {
    for (const Ref<NSWindow>& each : NSApp->windows())
      if (dynamic_cast<CoverArtPanel*>(each.get()) && each->isVisible()) return each;
    return nullptr;
  };
  window->makeFirstResponder(player->cover().get());
  user.pressKey(" ");
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(dynamic_cast<NSImageView&>(*panel()->contentView()).image(), picture);
  desktop.settle();
  user.pressKey("\x1b");
  EXPECT_EQ(panel(), nullptr);
}

TEST_F(PlayerViewTest, AClickOnAnArtistShowsTheArtistsSongs) {
  const std::string artist = library->songs()[0].track.artists.front();
  MultipleLinksTextField& artists = harness::partOfRow<MultipleLinksTextField>(rows(), 0);
  click(artists, {8, CGRectGetMidY(artists.bounds())});
  EXPECT_EQ(player->shownTitle(), artist);
  EXPECT_EQ(model().count(), library->songsBy(artist).size());
}

TEST_F(PlayerViewTest, AnItemOfTheSideBarShowsItsSongs) {
  const auto& playlist = library->playlists()[1];
  click(*viewNamed(player->sideBar(), playlist.title + ", 24"), {60, 14});
  EXPECT_EQ(player->shownTitle(), playlist.title);
  EXPECT_EQ(player->sideBar()->selected(), playlist.title);
  EXPECT_EQ(model().count(), playlist.songs.size());
  player->show(player->collections().ofAlbum(1));
  for (const Collection& collection : player->collections().sections().back().collections)
    EXPECT_NE(player->sideBar()->selected(), collection.title) << "an album is not one of its items";
}

TEST_F(PlayerViewTest, ASectionOfTheSideBarFolds) {
  const Ref<NSView> heading = viewNamed(player->sideBar(), "Playlists");
  ASSERT_TRUE(heading);
  click(*heading, {60, CGRectGetMidY(heading->bounds())});
  EXPECT_FALSE(player->sideBar()->isOpen("Playlists"));
  EXPECT_TRUE(player->sideBar()->isOpen("Library"));
  click(*heading, {60, CGRectGetMidY(heading->bounds())});
  EXPECT_TRUE(player->sideBar()->isOpen("Playlists"));
}

TEST_F(PlayerViewTest, ANarrowWindowGoesToItsPlacesByAPopUp) {
  player->setFrameSize({480, 600});
  desktop.settle();
  EXPECT_TRUE(player->sideBar()->isHidden());
  const auto& views = player->subviews();
  const auto button = std::ranges::find_if(views, [](const auto& view) { return dynamic_cast<NSPopUpButton*>(view.get()); });
  ASSERT_NE(button, views.end());
  EXPECT_FALSE((*button)->isHidden());
  click(**button);
  ASSERT_NE(desktop.openMenu(), nullptr);
  const std::string title = library->playlists()[1].title;
  const auto& entries = desktop.openMenu()->entries;
  const auto entry = std::ranges::find(entries, title, &tessaluna::backend::MenuEntry::title);
  ASSERT_NE(entry, entries.end());
  desktop.chooseFromMenu(entry->number);
  desktop.settle();
  EXPECT_EQ(player->shownTitle(), title);
}

TEST_F(PlayerViewTest, BackAndForwardGoThroughWhatWasShown) {
  player->show(player->collections().ofAlbum(1));
  player->show(player->collections().ofAlbum(2));
  const auto arrows = [&](bool isNext) -> PrevNextButton& {
    for (const Ref<NSView>& view : player->subviews())
      if (auto* arrow = dynamic_cast<PrevNextButton*>(view.get()); arrow && arrow->next() == isNext) return *arrow;
    throw std::logic_error("no arrow");
  };
  EXPECT_FALSE(arrows(true).isEnabled());
  click(arrows(false));
  EXPECT_EQ(player->shownTitle(), library->albums()[1].title);
  click(arrows(false));
  EXPECT_EQ(player->shownTitle(), "All music");
  EXPECT_FALSE(arrows(false).isEnabled());
  click(arrows(true));
  EXPECT_EQ(player->shownTitle(), library->albums()[1].title);
  player->show(player->collections().ofAlbum(3));
  EXPECT_FALSE(arrows(true).isEnabled()) << "what was ahead is forgotten";
  click(arrows(false));
  EXPECT_EQ(player->shownTitle(), library->albums()[1].title);
}

TEST_F(PlayerViewTest, AnAlbumThatIsFoundAndChosenIsShown) {
  const Album& album = library->albums()[7];
  typeSearch(album.title);
  ASSERT_TRUE(player->search()->popUp()->isOpen());
  const auto& found = player->search()->popUp()->content().rows;
  const auto isAlbum = [&](const SearchRow& row) { return row.section == "Albums" && row.title == album.title; };
  const auto place = std::ranges::find_if(found, isAlbum) - found.begin();
  ASSERT_LT(place, std::ssize(found));
  for (std::ptrdiff_t i = 0; i <= place; ++i) user.pressKey(NSDownArrowFunctionKey);
  user.pressKey("\r");
  EXPECT_EQ(player->shownTitle(), album.title);
  EXPECT_EQ(model().count(), album.songs.size());
  EXPECT_FALSE(player->player().isPlaying());
  EXPECT_FALSE(player->search()->popUp()->isOpen());
}

TEST_F(PlayerViewTest, ASongThatIsFoundAndChosenPlaysOnItsAlbum) {
  const Song& song = library->songs()[50];
  typeSearch(song.track.title + " " + song.track.artists.front());
  const auto& found = player->search()->popUp()->content().rows;
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found.front().section, "Tracks");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey("\r");
  EXPECT_EQ(playing(), song.track.title);
  EXPECT_EQ(player->shownTitle(), library->albums()[song.album].title);
}

TEST_F(PlayerViewTest, ReturnWithoutAChoiceShowsAllSongsThatMatch) {
  typeSearch("winter");
  user.pressKey("\r");
  EXPECT_EQ(player->shownTitle(), "“winter”");
  EXPECT_GT(model().count(), 1u);
  EXPECT_EQ(reports.back(), "search for “winter”");
}

TEST_F(PlayerViewTest, ControlFGoesToTheSearchField) {
  clickRow(1);
  user.pressKey("f", NSEventModifierFlagControl);
  user.type("otis");
  EXPECT_EQ(player->search()->text(), "otis");
}

TEST_F(PlayerViewTest, TabsShowSongsAlbumsAndTheQueue) {
  const auto shown = [&](Tab tab) { return !player->table(tab)->isHidden(); };
  clickTab(Tab::Albums);
  EXPECT_TRUE(shown(Tab::Albums));
  EXPECT_FALSE(shown(Tab::Songs));
  EXPECT_EQ(model(Tab::Albums).count(), 24u);
  click(rows(Tab::Albums), {200, CGRectGetMidY(rows(Tab::Albums).rectOfRow(2))});
  user.pressKey("\r");
  EXPECT_EQ(playing(), titleOf(library->albums()[2].songs.front()));
  clickTab(Tab::UpNext);
  EXPECT_TRUE(shown(Tab::UpNext));
  EXPECT_EQ(model(Tab::UpNext).count(), library->albums()[2].songs.size());
  player->show(*player->collections().find("Favorites"));
  EXPECT_TRUE(shown(Tab::Songs)) << "another collection is not what is up next";
}

TEST_F(PlayerViewTest, UpNextBeginsWhereTheQueueIs) {
  player->player().play(library->allSongs(), 100);
  clickTab(Tab::UpNext);
  EXPECT_NE(rows(Tab::UpNext).viewAtRow(100), nullptr);
  EXPECT_EQ(rows(Tab::UpNext).viewAtRow(0), nullptr);
}

TEST_F(PlayerViewTest, AClickOnAHeaderSortsAndAnotherCollectionIsInItsOwnOrder) {
  const Ref<NSTableHeaderView> header = rows().headerView();
  click(*header, {150, 12});
  for (std::size_t row = 1; row < model().count(); ++row) ASSERT_LE(model().row(row - 1).title, model().row(row).title);
  player->show(player->collections().ofAlbum(1));
  EXPECT_TRUE(rows().sortDescriptors().empty());
  EXPECT_EQ(model().row(0).title, titleOf(library->albums()[1].songs[0]));
}

TEST_F(PlayerViewTest, TheHeartIsTheSameInAllLists) {
  player->player().play({0, 1}, 0);
  const bool was = library->songs()[0].track.isFavorite;
  accessibilityOf(rows().accessibleItem(0))->accessibilityPerformAction("Favorite");
  EXPECT_NE(model().row(0).isFavorite, was);
  EXPECT_NE(model(Tab::UpNext).row(0).isFavorite, was);
}

TEST_F(PlayerViewTest, ASongThatIsNoLongerAFavoriteLeavesTheFavorites) {
  player->show(*player->collections().find("Favorites"));
  const std::size_t count = model().count();
  const std::string second = model().row(1).title;
  accessibilityOf(rows().accessibleItem(0))->accessibilityPerformAction("Favorite");
  EXPECT_EQ(model().count(), count - 1);
  EXPECT_EQ(rows().numberOfRows(), count - 1);
  EXPECT_EQ(model().row(0).title, second);
}

TEST_F(PlayerViewTest, AnAlbumWithoutFavoritesLeavesTheFavorites) {
  player->show(*player->collections().find("Favorites"));
  clickTab(Tab::Albums);
  const std::size_t count = model(Tab::Albums).count();
  const std::string second = model(Tab::Albums).row(1).title;
  const auto toggleFirst = [&] {
    accessibilityOf(rows(Tab::Albums).accessibleItem(0))->accessibilityPerformAction("Favorite");
  };
  if (!model(Tab::Albums).row(0).isFavorite) toggleFirst();  // all of its songs become favorites
  toggleFirst();
  EXPECT_EQ(model(Tab::Albums).count(), count - 1);
  EXPECT_EQ(rows(Tab::Albums).numberOfRows(), count - 1);
  EXPECT_EQ(model(Tab::Albums).row(0).title, second);
}

TEST_F(PlayerViewTest, AnAlbumWithANewFavoriteJoinsTheFavorites) {
  player->player().play(library->allSongs(), 0);
  const SongNumbers& songs = library->albums()[5].songs;
  for (const std::size_t song : songs) library->setFavorite(song, false);
  player->show(*player->collections().find("Favorites"));
  const std::size_t count = model(Tab::Albums).count();
  clickTab(Tab::UpNext);
  rows(Tab::UpNext).scrollRowToVisible(songs.front());
  desktop.settle();
  accessibilityOf(rows(Tab::UpNext).accessibleItem(songs.front()))->accessibilityPerformAction("Favorite");
  ASSERT_EQ(model(Tab::Albums).count(), count + 1);
  EXPECT_EQ(model(Tab::Albums).row(count).title, library->albums()[5].title);
}

TEST_F(PlayerViewTest, WithoutAQueueThePlayButtonPlaysWhatShows) {
  player->show(player->collections().ofAlbum(2));
  ASSERT_EQ(player->player().song(), std::nullopt);
  click(*player->transport()->subviews()[1]);
  EXPECT_EQ(playing(), titleOf(library->albums()[2].songs.front()));
  EXPECT_EQ(player->player().queue(), library->albums()[2].songs);
}

TEST_F(PlayerViewTest, ATaskBeginsFromARowsMenuAndEndsWithItsCross) {
  player->setFrameSize({480, 600});
  desktop.settle();
  const CGRect before = player->transport()->frame(), list = player->table(Tab::Songs)->frame();
  player->tasks().begin("Downloading", 60);
  player->setNeedsLayout(true);
  desktop.settle();
  EXPECT_FALSE(player->taskBar()->isHidden());
  EXPECT_LT(player->table(Tab::Songs)->frame().size.height, list.size.height) << "a line of its own";
  EXPECT_EQ(player->transport()->frame(), before);
  click(*player->taskBar()->subviews().back());
  player->advance(0.1);
  desktop.settle();
  EXPECT_TRUE(player->taskBar()->isHidden());
  EXPECT_EQ(player->table(Tab::Songs)->frame(), list);
  EXPECT_EQ(reports.back(), "Downloading: stopped");
}

TEST_F(PlayerViewTest, TheTransportSeeksAndPlayingContinues) {
  player->player().play({3, 4, 5}, 0);
  player->advance(10);
  const Ref<PlaybackSlider>& slider = player->transport()->slider();
  click(*slider, {CGRectGetMidX(slider->bounds()), CGRectGetMidY(slider->bounds())});
  player->advance(0.5);
  const double half = library->songs()[3].track.seconds / 2.0;
  EXPECT_NEAR(player->player().state().position, half, 8);
}

TEST_F(PlayerViewTest, PassingTimeRedrawsOnlyTheTransport) {
  player->player().play({3, 4, 5}, 0);
  player->advance(10);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  const CGRect foot = player->convertRectToView(player->transport()->frame(), nullptr);
  for (int second = 0; second < 5; ++second) {
    player->advance(1);
    desktop.settle();
  }
  EXPECT_FALSE(nativeOf(*window).paints().empty());
  for (const auto& paint : nativeOf(*window).paints())
    for (const CGRect& dirty : paint.dirty) EXPECT_EQ(NSIntersectionRect(dirty, foot), dirty);
}

TEST_F(PlayerViewTest, ClosingTheWindowUnderAnOpenPopUpLeavesNothing) {
  const WeakRef<PlayerView> weak = player;
  typeSearch("winter");
  ASSERT_TRUE(player->search()->popUp()->isOpen());
  player->start();
  window->close();
  desktop.advance(1);
  EXPECT_FALSE(player->search()->popUp()->isOpen());
}

}  // namespace
}  // namespace gallery
