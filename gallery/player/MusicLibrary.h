// The music of the player's page: invented albums, and playlists of their songs. Songs and albums are identified by numbers,
// which are their places in songs() and albums().
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "gallery/tracks/GeneratedTracks.h"
#include "tessaluna/platform/graphics/NSImage.h"

namespace gallery {

using SongNumbers = std::vector<std::size_t>;

struct Song {
  Track track;
  std::size_t album = 0;
};

struct Album {
  std::string title, artist;
  SongNumbers songs{};
  int seconds = 0;  // of all of them
};

struct Playlist {
  std::string title;
  SongNumbers songs{};
};

class MusicLibrary {
 public:
  // The same at every start.
  explicit MusicLibrary(std::size_t albumCount);

  const std::vector<Song>& songs() const { return songs_; }
  const std::vector<Album>& albums() const { return albums_; }
  const std::vector<Playlist>& playlists() const { return playlists_; }
  const std::vector<std::string>& artists() const { return artists_; }  // each once, in alphabetical order

  SongNumbers allSongs() const;
  SongNumbers favorites() const;
  SongNumbers songsBy(std::string_view artist) const;
  int secondsOf(const SongNumbers& songs) const;

  void setFavorite(std::size_t song, bool isFavorite) { songs_[song].track.isFavorite = isFavorite; }
  bool areFavorites(const SongNumbers& songs) const;  // all of them

  // Null without a Qt program. The large one is made when it is first asked for.
  tessaluna::platform::Ref<tessaluna::platform::NSImage> cover(std::size_t album) const;
  tessaluna::platform::Ref<tessaluna::platform::NSImage> largeCover(std::size_t album) const;

 private:
  using Pictures = std::vector<tessaluna::platform::Ref<tessaluna::platform::NSImage>>;
  std::vector<Song> songs_;
  std::vector<Album> albums_;
  std::vector<Playlist> playlists_;
  std::vector<std::string> artists_;
  Pictures covers_;  // several albums share each
  mutable std::map<std::size_t, tessaluna::platform::Ref<tessaluna::platform::NSImage>> largeCovers_;
};

}  // namespace gallery
