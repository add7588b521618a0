#include "gallery/player/SongList.h"

#include <algorithm>

namespace gallery {

using tessaluna::ready::TrackColumn;
using tessaluna::ready::TrackRow;

void SongList::setSongs(SongNumbers songs) {
  songs_ = std::move(songs);
  didChangeAll();
}

void SongList::updateTo(const SongNumbers& songs) {
  for (std::size_t row = songs_.size(); row-- > 0;) {
    if (std::ranges::find(songs, songs_[row]) != songs.end()) continue;
    songs_.erase(songs_.begin() + static_cast<std::ptrdiff_t>(row));
    didRemoveRows(row);
  }
  for (const std::size_t song : songs) {
    if (std::ranges::find(songs_, song) != songs_.end()) continue;
    songs_.push_back(song);
    didInsertRows(songs_.size() - 1);
  }
  songsDidChange();
}

TrackRow SongList::row(std::size_t index) const {
  const std::size_t number = songs_[index];
  const auto& [track, album] = library_->songs()[number];
  // Where a song may be twice, only the place in the queue says which of them plays.
  const bool isCurrent = isSortable() || player_->place() == index;
  return {.title = track.title,
          .artists = track.artists,
          .seconds = track.seconds,
          .cover = library_->cover(album),
          .isFavorite = track.isFavorite,
          .playback = isCurrent ? player_->playbackOf(number) : tessaluna::ready::Playback::None};
}

void SongList::sortBy(TrackColumn column, bool ascending) {
  std::ranges::stable_sort(songs_, [&](std::size_t a, std::size_t b) {
    return precedes(library_->songs()[a].track, library_->songs()[b].track, column, ascending);
  });
  didChangeAll();
}

}  // namespace gallery
