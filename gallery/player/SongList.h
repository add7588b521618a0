// The songs that a table of the player shows, in the order in which it shows them.
#pragma once

#include "gallery/player/MusicPlayer.h"

namespace gallery {

class SongList : public tessaluna::ready::TrackModel {
 public:
  enum class Order { AsGiven, Sortable };
  SongList(std::shared_ptr<MusicLibrary> library, std::shared_ptr<MusicPlayer> player, Order order)
      : library_(std::move(library)), player_(std::move(player)), order_(order) {}

  const SongNumbers& songs() const { return songs_; }
  void setSongs(SongNumbers songs);
  // Removes rows that are not among these songs, adds missing songs at the end, and leaves the others in their order.
  void updateTo(const SongNumbers& songs);
  // Call it after the player or the library has changed what the rows show of their songs.
  void songsDidChange() { didChangeRows(0, songs_.size()); }

  std::size_t count() const override { return songs_.size(); }
  tessaluna::ready::TrackRow row(std::size_t index) const override;
  // Counts from one. A list in which a song may be twice has no identities.
  std::uint64_t identityOf(std::size_t index) const override { return isSortable() ? songs_[index] + 1 : 0; }
  bool isSortable() const override { return order_ == Order::Sortable; }
  void sortBy(tessaluna::ready::TrackColumn column, bool ascending) override;

 private:
  const std::shared_ptr<MusicLibrary> library_;
  const std::shared_ptr<MusicPlayer> player_;
  const Order order_;
  SongNumbers songs_;
};

}  // namespace gallery
