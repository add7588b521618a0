// The songs of the player and the one that plays, as the track table shows them.
#pragma once

#include <string>
#include <vector>

#include "tessaluna/ready/tracks/TrackModel.h"

struct Song {
  std::string title, artist;
  int seconds = 0;
  bool isFavorite = false;
};

// region: track table
class Queue : public tessaluna::ready::TrackModel {
 public:
  std::size_t count() const override { return songs.size(); }
  tessaluna::ready::TrackRow row(std::size_t i) const override {
    const auto shown = i == current ? playback : tessaluna::ready::Playback::None;
    return {songs[i].title, {songs[i].artist}, songs[i].seconds, nullptr, songs[i].isFavorite, shown};
  }
  void show(std::size_t i) { didChangeRows(i); }
  // end

  std::vector<Song> songs;
  std::size_t current = 0;
  tessaluna::ready::Playback playback = tessaluna::ready::Playback::Paused;
};
