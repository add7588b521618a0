#include "gallery/player/Collections.h"

#include <gtest/gtest.h>

namespace gallery {
namespace {

class CollectionsTest : public testing::Test {
 protected:
  const std::shared_ptr<MusicLibrary> library = std::make_shared<MusicLibrary>(4);
  const Collections collections{library};
};

TEST_F(CollectionsTest, ThereAreAllMusicFavoritesAndThePlaylists) {
  EXPECT_EQ(collections.allMusic().songs(), library->allSongs());
  ASSERT_EQ(collections.sections().size(), 2u);
  const std::vector<Collection>& playlists = collections.sections()[1].collections;
  ASSERT_EQ(playlists.size(), library->playlists().size());
  for (std::size_t i = 0; i < playlists.size(); ++i) EXPECT_EQ(playlists[i].songs(), library->playlists()[i].songs);
  EXPECT_EQ(collections.find("nothing"), nullptr);
}

TEST_F(CollectionsTest, FavoritesAreTheCurrentOnes) {
  const Collection& favorites = *collections.find("Favorites");
  for (const std::size_t song : library->allSongs()) library->setFavorite(song, false);
  EXPECT_TRUE(favorites.songs().empty());
  library->setFavorite(3, true);
  EXPECT_EQ(favorites.songs(), SongNumbers{3});
}

TEST_F(CollectionsTest, AnArtistAndAnAlbumAreCollectionsToo) {
  const Album& album = library->albums()[1];
  EXPECT_EQ(collections.ofAlbum(1).title, album.title);
  EXPECT_EQ(collections.ofAlbum(1).songs(), album.songs);
  EXPECT_EQ(collections.ofArtist(album.artist).title, album.artist);
  EXPECT_EQ(collections.ofArtist(album.artist).songs(), library->songsBy(album.artist));
}

TEST_F(CollectionsTest, ANoteSaysHowMuchThereIs) {
  const auto noteOn = [&](const SongNumbers& songs) { return collections.noteOn({"Some", [=] { return songs; }}); };
  EXPECT_EQ(noteOn({}), "No tracks");
  int minutes = (library->songs()[2].track.seconds + 30) / 60;
  EXPECT_EQ(noteOn({2}), "1 track, " + std::to_string(minutes) + " min");
  SongNumbers many(100, 2);
  minutes = (100 * library->songs()[2].track.seconds + 30) / 60;
  EXPECT_EQ(noteOn(many), "100 tracks, " + std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min");
  EXPECT_TRUE(collections.noteOn(collections.ofAlbum(1)).starts_with("Album by " + library->albums()[1].artist + " · "));
}

}  // namespace
}  // namespace gallery
