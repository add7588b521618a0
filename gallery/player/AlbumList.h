// The albums of some songs, as rows of a table: a row plays while one of the album's songs does, and is a favorite when all of
// them are.
#pragma once

#include "gallery/player/MusicPlayer.h"
#include "gallery/player/NumberedRows.h"

namespace gallery {

class AlbumList : public NumberedRows {
 public:
  AlbumList(std::shared_ptr<MusicLibrary> library, std::shared_ptr<MusicPlayer> player)
      : library_(std::move(library)), player_(std::move(player)) {}

  std::size_t albumAt(std::size_t index) const { return numbers()[index]; }
  // Each album once, in the order of its first song.
  void showAlbumsOf(const SongNumbers& songs) { setNumbers(albumsOf(songs)); }
  // Removes rows of other albums, adds missing albums at the end, and leaves the others in their order.
  void updateToAlbumsOf(const SongNumbers& songs) { updateTo(albumsOf(songs)); }
  void albumsDidChange() { didChangeRows(0, count()); }

  tessaluna::ready::TrackRow row(std::size_t index) const override;
  std::uint64_t identityOf(std::size_t index) const override { return albumAt(index) + 1; }
  bool isSortable() const override { return true; }
  void sortBy(tessaluna::ready::TrackColumn column, bool ascending) override;

 private:
  std::vector<std::size_t> albumsOf(const SongNumbers& songs) const;
  Track asTrack(std::size_t album) const;

  const std::shared_ptr<MusicLibrary> library_;
  const std::shared_ptr<MusicPlayer> player_;
};

}  // namespace gallery
