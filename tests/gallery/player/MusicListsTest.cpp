// The two lists that the player's tables show.
#include <gmock/gmock.h>

#include "gallery/player/AlbumList.h"
#include "gallery/player/SongList.h"

namespace gallery {
namespace {

using tessaluna::ready::Playback;
using tessaluna::ready::TrackColumn;
using testing::ElementsAre;

class MusicLists : public testing::Test {
 protected:
  const std::shared_ptr<MusicLibrary> library = std::make_shared<MusicLibrary>(3);
  const std::shared_ptr<MusicPlayer> player = std::make_shared<MusicPlayer>(library);
  SongList songs{library, player, SongList::Order::Sortable};
  SongList queue{library, player, SongList::Order::AsGiven};
  AlbumList albums{library, player};
};

TEST_F(MusicLists, ASongListShowsItsSongsAndWhichOfThemPlays) {
  songs.setSongs({3, 1});
  player->play({1, 3}, 0);
  EXPECT_EQ(songs.count(), 2u);
  EXPECT_EQ(songs.row(0).title, library->songs()[3].track.title);
  EXPECT_EQ(songs.row(0).playback, Playback::None);
  EXPECT_EQ(songs.row(1).playback, Playback::Playing);
  EXPECT_EQ(songs.identityOf(0), 4u);
}

TEST_F(MusicLists, AnUpdateKeepsTheOrderOfWhatStays) {
  const auto numbersOfRows = [&] {
    SongNumbers numbers;
    for (std::size_t row = 0; row < songs.count(); ++row) numbers.push_back(songs.identityOf(row) - 1);
    return numbers;
  };
  songs.setSongs({5, 3, 9, 1});
  songs.updateTo({1, 2, 3, 4, 5});
  EXPECT_THAT(numbersOfRows(), ElementsAre(5, 3, 1, 2, 4));
  songs.updateTo({});
  EXPECT_THAT(numbersOfRows(), ElementsAre());
}

TEST_F(MusicLists, OfASongThatIsTwiceInTheQueueOnlyOneRowPlays) {
  player->play({1, 2, 1}, 2);
  queue.setSongs(player->queue());
  EXPECT_EQ(queue.row(0).playback, Playback::None);
  EXPECT_EQ(queue.row(2).playback, Playback::Playing);
}

TEST_F(MusicLists, SongsAreSorted) {
  songs.setSongs(library->allSongs());
  songs.sortBy(TrackColumn::Time, false);
  for (std::size_t row = 1; row < songs.count(); ++row) EXPECT_GE(songs.row(row - 1).seconds, songs.row(row).seconds);
  songs.sortBy(TrackColumn::Title, true);
  for (std::size_t row = 1; row < songs.count(); ++row) EXPECT_LE(songs.row(row - 1).title, songs.row(row).title);
}

TEST_F(MusicLists, AlbumsAreThoseOfTheSongsAndPlayWhileOneOfThemPlays) {
  const SongNumbers& first = library->albums()[0].songs;
  const SongNumbers& third = library->albums()[2].songs;
  albums.showAlbumsOf({third[1], first[0], third[0]});
  ASSERT_EQ(albums.count(), 2u);
  EXPECT_THAT((std::vector{albums.albumAt(0), albums.albumAt(1)}), ElementsAre(2, 0));
  player->play(third, 4);
  EXPECT_EQ(albums.row(0).playback, Playback::Playing);
  EXPECT_EQ(albums.row(1).playback, Playback::None);
  EXPECT_EQ(albums.row(0).title, library->albums()[2].title);
  EXPECT_THAT(albums.row(0).artists, ElementsAre(library->albums()[2].artist));
  EXPECT_EQ(albums.row(0).seconds, library->albums()[2].seconds);
  EXPECT_FALSE(albums.row(0).isFavorite);
  for (const std::size_t song : third) library->setFavorite(song, true);
  EXPECT_TRUE(albums.row(0).isFavorite);
  albums.sortBy(TrackColumn::Artists, false);
  EXPECT_GE(albums.row(0).artists, albums.row(1).artists);
}

}  // namespace
}  // namespace gallery
