#include "gallery/player/AlbumList.h"

namespace gallery {

using tessaluna::ready::Playback;
using tessaluna::ready::TrackColumn;
using tessaluna::ready::TrackRow;

std::vector<std::size_t> AlbumList::albumsOf(const SongNumbers& songs) const {
  std::vector<std::size_t> albums;
  std::vector<bool> isThere(library_->albums().size());
  for (const std::size_t song : songs) {
    const std::size_t album = library_->songs()[song].album;
    if (!isThere[album]) albums.push_back(album);
    isThere[album] = true;
  }
  return albums;
}

Track AlbumList::asTrack(std::size_t album) const {
  const Album& shown = library_->albums()[album];
  return {.title = shown.title,
          .artists = {shown.artist},
          .seconds = shown.seconds,
          .isFavorite = library_->areFavorites(shown.songs)};
}

TrackRow AlbumList::row(std::size_t index) const {
  const Track track = asTrack(albumAt(index));
  const std::optional<std::size_t> song = player_->song();
  const bool isCurrent = song && library_->songs()[*song].album == albumAt(index);
  return {.title = track.title,
          .artists = track.artists,
          .seconds = track.seconds,
          .cover = library_->cover(albumAt(index)),
          .isFavorite = track.isFavorite,
          .playback = isCurrent ? player_->playbackOf(*song) : Playback::None};
}

void AlbumList::sortBy(TrackColumn column, bool ascending) {
  sortNumbers([&](std::size_t a, std::size_t b) { return precedes(asTrack(a), asTrack(b), column, ascending); });
}

}  // namespace gallery
