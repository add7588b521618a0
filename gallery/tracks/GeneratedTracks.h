// Invented tracks: titles, artists and lengths made from a seed, the same at every start.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tessaluna/ready/tracks/TrackModel.h"

namespace gallery {

struct Track {
  std::string title;
  std::vector<std::string> artists;
  int seconds = 0;
  bool isFavorite = false;
};

std::vector<Track> generatedTracks(std::size_t count, std::uint32_t seed = 1);
// Whether one is before the other in a list that is sorted by a column.
bool precedes(const Track& one, const Track& other, tessaluna::ready::TrackColumn column, bool ascending);
std::string artistsText(const Track& track);  // "First Artist, Second Artist"
std::string lengthText(int seconds);          // "3:07"

}  // namespace gallery
