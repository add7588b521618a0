#include "gallery/tracks/TrackLibrary.h"

#include <algorithm>
#include <utility>

#include "gallery/tracks/coverPictures.h"

namespace gallery {

using namespace tessaluna::platform;
using tessaluna::ready::Playback;
using tessaluna::ready::TrackActions;
using tessaluna::ready::TrackColumn;
using tessaluna::ready::TrackCommand;
using tessaluna::ready::TrackRow;
using tessaluna::ready::TrackTable;

TrackLibrary::TrackLibrary(std::vector<Track> tracks, Covers covers) {
  entries_.reserve(tracks.size());
  for (Track& track : tracks) entries_.push_back({.number = entries_.size() + 1, .track = std::move(track)});
  if (covers == Covers::Shown) covers_ = coverPictures();
}

TrackRow TrackLibrary::row(std::size_t index) const {
  const auto& [number, track] = entries_[index];
  const bool isCurrent = current_ == number;
  return {.title = track.title,
          .artists = track.artists,
          .seconds = track.seconds,
          .cover = covers_.empty() ? nullptr : covers_[number % covers_.size()],
          .isFavorite = track.isFavorite,
          .playback = !isCurrent   ? Playback::None
                      : isPlaying_ ? Playback::Playing
                                   : Playback::Paused};
}

void TrackLibrary::sortBy(TrackColumn column, bool ascending) {
  std::ranges::stable_sort(entries_,
                           [&](const Entry& a, const Entry& b) { return precedes(a.track, b.track, column, ascending); });
  didChangeAll();
}

void TrackLibrary::showPlayback(std::optional<std::uint64_t> number) {
  for (std::size_t row = 0; number && row < entries_.size(); ++row)
    if (entries_[row].number == number) return didChangeRows(row);
}

void TrackLibrary::play(std::size_t row) {
  const std::optional<std::uint64_t> earlier = std::exchange(current_, entries_[row].number);
  isPlaying_ = true;
  if (earlier != current_) showPlayback(earlier);
  didChangeRows(row);
}

void TrackLibrary::pause(std::size_t row) {
  if (current_ != entries_[row].number) return;
  isPlaying_ = false;
  didChangeRows(row);
}

void TrackLibrary::toggleFavorite(std::size_t row) {
  entries_[row].track.isFavorite = !entries_[row].track.isFavorite;
  didChangeRows(row);
}

void TrackLibrary::remove(std::size_t row) {
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(row));
  didRemoveRows(row);
}

Ref<TrackTable> makeTrackTable(const std::shared_ptr<TrackLibrary>& library,
                               std::function<void(const std::string&)> report) {
  const auto act = [report, &model = *library](const std::string& what, void (TrackLibrary::*does)(std::size_t)) {
    return [=, &model](std::size_t row) {
      const std::string title = model.track(row).title;
      (model.*does)(row);
      if (report) report(what + " " + title);
    };
  };
  const auto play = act("playing", &TrackLibrary::play), favorite = act("favorite changed:", &TrackLibrary::toggleFavorite);
  const auto remove = act("removed", &TrackLibrary::remove);
  const auto commands = [=, &model = *library](std::size_t row) -> std::vector<TrackCommand> {
    return {{.title = "Play", .choose = play},
            {.title = "Favorite", .choose = favorite, .isChecked = model.track(row).isFavorite},
            {},
            {.title = "Remove", .choose = remove}};
  };
  const auto artist = [report, &model = *library](std::size_t row, std::size_t index) {
    if (report) report("artist " + model.track(row).artists[index]);
  };
  // The table keeps the library alive.
  return make<TrackTable>(library, TrackActions{.play = play,
                                                .pause = act("paused", &TrackLibrary::pause),
                                                .favorite = favorite,
                                                .more = commands,
                                                .artist = artist});
}

}  // namespace gallery
