// The songs that a table of the player shows, in the order in which it shows them.
#pragma once

#include "gallery/player/MusicPlayer.h"
#include "gallery/player/NumberedRows.h"

namespace gallery {

class SongList : public NumberedRows {
 public:
  enum class Order { AsGiven, Sortable };
  SongList(std::shared_ptr<MusicLibrary> library, std::shared_ptr<MusicPlayer> player, Order order)
      : library_(std::move(library)), player_(std::move(player)), order_(order) {}

  const SongNumbers& songs() const { return numbers(); }
  void setSongs(SongNumbers songs) { setNumbers(std::move(songs)); }
  using NumberedRows::updateTo;
  // Call it after the player or the library has changed what the rows show of their songs.
  void songsDidChange() { didChangeRows(0, count()); }

  tessaluna::ready::TrackRow row(std::size_t index) const override;
  // Counts from one. A list in which a song may be twice has no identities.
  std::uint64_t identityOf(std::size_t index) const override { return isSortable() ? songs()[index] + 1 : 0; }
  bool isSortable() const override { return order_ == Order::Sortable; }
  void sortBy(tessaluna::ready::TrackColumn column, bool ascending) override;

 private:
  const std::shared_ptr<MusicLibrary> library_;
  const std::shared_ptr<MusicPlayer> player_;
  const Order order_;
};

}  // namespace gallery
