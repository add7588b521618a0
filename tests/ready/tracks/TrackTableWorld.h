// A track table over a hundred songs in a window of its own size, with actions that remember their calls.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/ready/tracks/TrackTable.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/harness/rowParts.h"

namespace tessaluna::ready {

// A queue in a player's words.
class Songs : public TrackModel {
 public:
  struct Song {
    std::uint64_t number = 0;
    TrackRow row;
  };
  explicit Songs(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) add(i);
  }

  std::size_t count() const override { return songs.size(); }
  TrackRow row(std::size_t index) const override {
    ++rowsAsked;
    return songs.at(index).row;
  }
  std::uint64_t identityOf(std::size_t index) const override { return hasIdentities ? songs.at(index).number + 1 : 0; }
  bool isSortable() const override { return true; }
  void sortBy(TrackColumn column, bool ascending) override {
    sorts.push_back(std::to_string(static_cast<int>(column)) + (ascending ? " up" : " down"));
    std::stable_sort(songs.begin(), songs.end(), [&](const Song& a, const Song& b) {
      const std::string &one = a.row.title, &other = b.row.title;
      return ascending ? one < other : other < one;
    });
    didChangeAll();
  }

  void add(std::size_t i) {
    const std::string letter(1, static_cast<char>('A' + i % 20));
    songs.push_back({.number = i,
                     .row = {.title = letter + " song " + std::to_string(i),
                             .artists = {"First " + std::to_string(i), "Second"},
                             .seconds = static_cast<int>(60 + i)}});
  }
  void insert(std::size_t at, std::size_t count = 1) {
    songs.insert(songs.begin() + static_cast<std::ptrdiff_t>(at), count, {.number = 9999, .row = {.title = "New"}});
    didInsertRows(at, count);
  }
  void remove(std::size_t first, std::size_t count = 1) {
    const auto from = songs.begin() + static_cast<std::ptrdiff_t>(first);
    songs.erase(from, from + static_cast<std::ptrdiff_t>(count));
    didRemoveRows(first, count);
  }
  void move(std::size_t from, std::size_t to) {
    const Song song = songs[from];
    songs.erase(songs.begin() + static_cast<std::ptrdiff_t>(from));
    songs.insert(songs.begin() + static_cast<std::ptrdiff_t>(to), song);
    didMoveRow(from, to);
  }
  void setPlayback(std::size_t row, Playback playback) {
    songs[row].row.playback = playback;
    didChangeRows(row);
  }
  void toggleFavorite(std::size_t row) {
    songs[row].row.isFavorite = !songs[row].row.isFavorite;
    didChangeRows(row);
  }
  using TrackModel::didChangeAll;
  using TrackModel::didChangeRows;

  std::vector<Song> songs;
  std::vector<std::string> sorts;
  bool hasIdentities = true;
  mutable std::size_t rowsAsked = 0;
};

class TrackTableWorld : public harness::StillWorld {
 protected:
  static constexpr platform::CGFloat width = 800, height = 286;  // five rows of 52 points below a header of 26

  TrackTableWorld() { open(100); }

  void open(std::size_t count) {
    if (window) window->close();
    songs = std::make_shared<Songs>(count);
    table = platform::make<TrackTable>(songs, actions());
    window = showWindow({100, 100, width, height});
    table->setFrame({0, 0, width, height});
    window->contentView()->addSubview(table);
    desktop.settle();
    nativeOf(*window).forgetPaints();
  }
  TrackActions actions() {
    const auto note = [this](const char* what) {
      return [this, what](std::size_t row) { calls.push_back(what + std::to_string(row)); };
    };
    return {.play =
                [this](std::size_t row) {
                  calls.push_back("play " + std::to_string(row));
                  songs->setPlayback(row, Playback::Playing);
                },
            .pause =
                [this](std::size_t row) {
                  calls.push_back("pause " + std::to_string(row));
                  songs->setPlayback(row, Playback::Paused);
                },
            .favorite =
                [this](std::size_t row) {
                  calls.push_back("favorite " + std::to_string(row));
                  songs->toggleFavorite(row);
                  if (removesAtFavorite) songs->remove(row);
                },
            .more =
                [this, note](std::size_t row) {
                  calls.push_back("more " + std::to_string(row));
                  return std::vector<TrackCommand>{
                      {.title = "Play next", .choose = note("next ")},
                      {},
                      {.title = "Remove", .choose = [this](std::size_t at) { songs->remove(at); }}};
                },
            .artist =
                [this](std::size_t row, std::size_t artist) {
                  calls.push_back("artist " + std::to_string(artist) + " of " + std::to_string(row));
                }};
  }

  platform::NSTableView& inner() { return *table->table(); }
  TrackTableRow& rowView(std::size_t row) { return dynamic_cast<TrackTableRow&>(*inner().viewAtRow(row)); }
  template <class Part>
  Part& part(std::size_t row) {
    return harness::partOfRow<Part>(inner(), row);
  }
  static platform::CGPoint middleOf(const platform::NSView& view) {
    const platform::CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    return {CGRectGetMidX(rect), CGRectGetMidY(rect)};
  }
  platform::CGPoint beside(std::size_t row) {
    return inner().convertPointToView({2, CGRectGetMidY(inner().rectOfRow(row))}, nullptr);
  }
  void click(platform::CGPoint point) {
    desktop.advance(10);  // no double click
    user.moveTo(*window, point);
    user.click(*window, point);
    desktop.settle();
  }
  void key(char32_t key, std::uint32_t modifiers = 0) { user.pressKey(platform::utf8FromScalar(key), modifiers); }
  void select(std::size_t row) {
    window->makeFirstResponder(&inner());
    inner().selectByKey(row, false);
    desktop.settle();
  }
  void scrollTo(platform::CGFloat y) {
    table->scrollView()->contentView()->scrollToPoint({0, y});
    desktop.settle();
  }
  std::vector<std::string> titles() {
    std::vector<std::string> shown;
    for (std::size_t row = 0; row < inner().numberOfRows(); ++row)
      if (inner().viewAtRow(row)) shown.push_back(part<platform::NSTextField>(row).stringValue());
    return shown;
  }
  std::vector<std::size_t> rowsWithControls() {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < inner().numberOfRows(); ++row)
      if (inner().viewAtRow(row) && part<TessalunaUIKit::TrackRowPlayButton>(row).hasMouseOnRow() &&
          part<TessalunaUIKit::TrackRowFavoriteButton>(row).hasMouseOnRow() &&
          part<TessalunaUIKit::TrackRowMoreButton>(row).hasMouseOnRow())
        rows.push_back(row);
    return rows;
  }
  harness::Lines lookOf(std::size_t row) {
    desktop.settle();
    rowView(row).setNeedsDisplay(true);
    desktop.settle();
    return nativeOf(*window).paints().back().lines;
  }
  std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

  std::shared_ptr<Songs> songs;
  platform::Ref<TrackTable> table;
  platform::Ref<platform::NSWindow> window;
  std::vector<std::string> calls;
  bool removesAtFavorite = false;
};

}  // namespace tessaluna::ready
