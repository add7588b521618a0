// Where the rows of a TrackTable come from: a program's own list, in a few words. When the list changes,
// the model announces what has changed.
//
//   class Queue : public tessaluna::ready::TrackModel {
//    public:
//     std::size_t count() const override { return songs_.size(); }
//     TrackRow row(std::size_t i) const override { return {.title = songs_[i].name, .artists = songs_[i].people}; }
//     void append(Song song) { songs_.push_back(std::move(song)); didInsertRows(songs_.size() - 1); }
//   };
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/ready/parts/Observers.h"

namespace tessaluna::ready {

enum class Playback { None, Playing, Paused };

// One track as the table shows it. Texts are UTF-8.
struct TrackRow {
  std::string title = {};
  std::vector<std::string> artists = {};
  std::optional<int> seconds = {};              // absent, below 0, or 1000 hours and more: no time shows
  platform::Ref<platform::NSImage> cover = {};  // null: a placeholder
  bool isFavorite = false;
  Playback playback = Playback::None;
};

enum class TrackColumn { Title, Artists, Time };

class TrackModel {
 public:
  virtual ~TrackModel() = default;
  virtual std::size_t count() const = 0;
  virtual TrackRow row(std::size_t index) const = 0;
  // A number that stays with the track, by which the selection finds its rows again when all rows have changed. Where it is zero
  // the selection stays at its places.
  virtual std::uint64_t identityOf(std::size_t /*index*/) const { return 0; }

  // A click on a header. A sortable model sorts its list and calls didChangeAll.
  virtual bool isSortable() const { return false; }
  virtual void sortBy(TrackColumn, bool /*ascending*/) {}

  // Who is notified of changes: the tables that show the model. Not kept alive: an observer removes itself before it ends.
  class Observer {
   public:
    virtual ~Observer() = default;
    virtual void rowsWereInserted(std::size_t first, std::size_t count) = 0;
    virtual void rowsWereRemoved(std::size_t first, std::size_t count) = 0;
    virtual void rowWasMoved(std::size_t from, std::size_t to) = 0;
    virtual void rowsDidChange(std::size_t first, std::size_t count) = 0;
    virtual void allDidChange() = 0;
  };
  void addObserver(Observer& observer) { observers_.add(observer); }
  void removeObserver(Observer& observer) { observers_.remove(observer); }

 protected:
  // Call one of these after each change, when count() and row() already return the new rows.
  void didInsertRows(std::size_t first, std::size_t count = 1);  // where they are now
  void didRemoveRows(std::size_t first, std::size_t count = 1);  // where they were
  void didMoveRow(std::size_t from, std::size_t to);
  void didChangeRows(std::size_t first, std::size_t count = 1);  // what they show
  void didChangeAll();

 private:
  Observers<Observer> observers_;
};

}  // namespace tessaluna::ready
