// The tracks of the track list's page, as a player would have them: a list that a TrackTable shows, the track that plays, and
// how the user's actions change both.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "gallery/tracks/GeneratedTracks.h"
#include "tessaluna/ready/tracks/TrackTable.h"

namespace gallery {

class TrackLibrary : public tessaluna::ready::TrackModel {
 public:
  // Covers need a Qt program: only there can pictures be made.
  enum class Covers { Absent, Shown };
  TrackLibrary(std::vector<Track> tracks, Covers covers);

  std::size_t count() const override { return entries_.size(); }
  tessaluna::ready::TrackRow row(std::size_t index) const override;
  std::uint64_t identityOf(std::size_t index) const override { return entries_[index].number; }
  bool isSortable() const override { return true; }
  void sortBy(tessaluna::ready::TrackColumn column, bool ascending) override;

  void play(std::size_t row);
  void pause(std::size_t row);
  void toggleFavorite(std::size_t row);
  void remove(std::size_t row);
  const Track& track(std::size_t row) const { return entries_[row].track; }

 private:
  struct Entry {
    std::uint64_t number = 0;  // from one; stays with the track
    Track track;
  };
  void showPlayback(std::optional<std::uint64_t> number);

  std::vector<Entry> entries_;
  std::vector<tessaluna::platform::Ref<tessaluna::platform::NSImage>> covers_;  // many tracks share each
  std::optional<std::uint64_t> current_;
  bool isPlaying_ = false;
};

// A table over the library that says in a few words what the user did.
tessaluna::platform::Ref<tessaluna::ready::TrackTable> makeTrackTable(const std::shared_ptr<TrackLibrary>& library,
                                                                      std::function<void(const std::string&)> report);

}  // namespace gallery
