#include "gallery/player/MusicLibrary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace gallery {
namespace {

const MusicLibrary& library() {
  static const MusicLibrary made(24);
  return made;
}

TEST(MusicLibrary, EverySongIsOnOneAlbum) {
  std::set<std::size_t> seen;
  for (std::size_t number = 0; number < library().albums().size(); ++number) {
    const Album& album = library().albums()[number];
    EXPECT_GE(album.songs.size(), 8u);
    for (const std::size_t song : album.songs) {
      EXPECT_EQ(library().songs()[song].album, number);
      EXPECT_EQ(library().songs()[song].track.artists.front(), album.artist);
      EXPECT_TRUE(seen.insert(song).second);
    }
    EXPECT_EQ(album.seconds, library().secondsOf(album.songs));
  }
  EXPECT_EQ(library().albums().size(), 24u);
  EXPECT_EQ(seen.size(), library().songs().size());
}

TEST(MusicLibrary, AnArtistsSongsIncludeGuestAppearances) {
  std::size_t guests = 0;
  for (const std::string& artist : library().artists()) {
    const SongNumbers songs = library().songsBy(artist);
    EXPECT_FALSE(songs.empty());
    for (const std::size_t song : songs) {
      const std::vector<std::string>& artists = library().songs()[song].track.artists;
      EXPECT_NE(std::ranges::find(artists, artist), artists.end());
      guests += artists.front() != artist;
    }
  }
  EXPECT_GT(guests, 0u);
  EXPECT_TRUE(library().songsBy("nobody").empty());
}

TEST(MusicLibrary, APlaylistHasASongOnce) {
  EXPECT_EQ(library().playlists().size(), 4u);
  for (const Playlist& playlist : library().playlists())
    EXPECT_EQ(std::set(playlist.songs.begin(), playlist.songs.end()).size(), playlist.songs.size());
}

TEST(MusicLibrary, SongsAreFavoritesWhenAllOfThemAre) {
  MusicLibrary own(2);
  const SongNumbers songs = own.albums()[1].songs;
  for (const std::size_t song : songs) own.setFavorite(song, true);
  EXPECT_TRUE(own.areFavorites(songs));
  own.setFavorite(songs.back(), false);
  EXPECT_FALSE(own.areFavorites(songs));
  const SongNumbers favorites = own.favorites();
  EXPECT_EQ(std::ranges::count(favorites, songs.front()), 1);
  EXPECT_EQ(std::ranges::count(favorites, songs.back()), 0);
}

TEST(MusicLibrary, IsTheSameAtEveryStart) {
  const MusicLibrary other(24);
  ASSERT_EQ(other.songs().size(), library().songs().size());
  for (std::size_t song = 0; song < other.songs().size(); ++song)
    EXPECT_EQ(other.songs()[song].track.title, library().songs()[song].track.title);
}

}  // namespace
}  // namespace gallery
