#include "gallery/player/MusicLibrary.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "gallery/tracks/InventedNames.h"
#include "gallery/tracks/coverPictures.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr std::uint32_t seed = 11;
constexpr std::size_t minSongs = 8, maxSongs = 13, songsOfPlaylist = 24;
constexpr const char* playlistTitles[] = {"Late evening", "Dinner", "Morning run", "Deep work"};

}  // namespace

MusicLibrary::MusicLibrary(std::size_t albumCount) : covers_(coverPictures()) {
  InventedNames names(seed);
  std::vector<Track> tracks = generatedTracks(albumCount * maxSongs, seed);
  std::set<std::string> artists;
  for (std::size_t number = 0; number < albumCount; ++number) {
    Album album{.title = names.title(), .artist = tracks[songs_.size()].artists.front()};
    const std::size_t count = minSongs + names.below(maxSongs - minSongs + 1);
    for (std::size_t i = 0; i < count; ++i) {
      Track& track = tracks[songs_.size()];
      // The album's artist, and now and then a guest.
      track.artists.front() = album.artist;
      track.artists.resize(std::min<std::size_t>(track.artists.size(), 2));
      if (track.artists.back() == album.artist) track.artists.resize(1);
      artists.insert(track.artists.begin(), track.artists.end());
      album.songs.push_back(songs_.size());
      album.seconds += track.seconds;
      songs_.push_back({.track = std::move(track), .album = number});
    }
    albums_.push_back(std::move(album));
  }
  artists_.assign(artists.begin(), artists.end());
  for (const char* title : playlistTitles) {
    Playlist playlist{.title = title};
    while (playlist.songs.size() < std::min(songsOfPlaylist, songs_.size() / 2)) {
      const std::size_t song = names.below(songs_.size());
      if (std::ranges::find(playlist.songs, song) == playlist.songs.end()) playlist.songs.push_back(song);
    }
    playlists_.push_back(std::move(playlist));
  }
}

SongNumbers MusicLibrary::allSongs() const {
  SongNumbers all(songs_.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  return all;
}

SongNumbers MusicLibrary::favorites() const {
  SongNumbers found = allSongs();
  std::erase_if(found, [this](std::size_t song) { return !songs_[song].track.isFavorite; });
  return found;
}

SongNumbers MusicLibrary::songsBy(std::string_view artist) const {
  SongNumbers found = allSongs();
  std::erase_if(found, [&](std::size_t song) {
    const std::vector<std::string>& artists = songs_[song].track.artists;
    return std::ranges::find(artists, artist) == artists.end();
  });
  return found;
}

int MusicLibrary::secondsOf(const SongNumbers& songs) const {
  int seconds = 0;
  for (const std::size_t song : songs) seconds += songs_[song].track.seconds;
  return seconds;
}

bool MusicLibrary::areFavorites(const SongNumbers& songs) const {
  return std::ranges::all_of(songs, [this](std::size_t song) { return songs_[song].track.isFavorite; });
}

Ref<NSImage> MusicLibrary::cover(std::size_t album) const {
  return covers_.empty() ? nullptr : covers_[album % covers_.size()];
}

Ref<NSImage> MusicLibrary::largeCover(std::size_t album) const {
  if (covers_.empty()) return nullptr;
  Ref<NSImage>& picture = largeCovers_[album % covers_.size()];
  if (!picture) picture = largeCoverPicture(album % covers_.size());
  return picture;
}

}  // namespace gallery
