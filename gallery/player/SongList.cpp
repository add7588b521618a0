#include "gallery/player/SongList.h"

namespace gallery {

using tessaluna::ready::TrackColumn;
using tessaluna::ready::TrackRow;

TrackRow SongList::row(std::size_t index) const {
  const std::size_t number = songs()[index];
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
  sortNumbers([&](std::size_t a, std::size_t b) {
    return precedes(library_->songs()[a].track, library_->songs()[b].track, column, ascending);
  });
}

}  // namespace gallery
