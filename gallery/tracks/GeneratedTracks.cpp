#include "gallery/tracks/GeneratedTracks.h"

#include "gallery/tracks/InventedNames.h"

namespace gallery {

namespace {

constexpr std::size_t maxArtists = 4;

}  // namespace

std::vector<Track> generatedTracks(std::size_t count, std::uint32_t seed) {
  InventedNames names(seed);
  std::vector<Track> tracks;
  tracks.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    Track track;
    track.title = names.title();
    do track.artists.push_back(names.person());
    while (track.artists.size() < maxArtists && names.below(3) == 0);
    track.seconds = static_cast<int>(90 + names.below(330));
    track.isFavorite = names.below(9) == 0;
    tracks.push_back(std::move(track));
  }
  return tracks;
}

bool precedes(const Track& one, const Track& other, tessaluna::ready::TrackColumn column, bool ascending) {
  using tessaluna::ready::TrackColumn;
  const Track& first = ascending ? one : other;
  const Track& second = ascending ? other : one;
  switch (column) {
    case TrackColumn::Title: return first.title < second.title;
    case TrackColumn::Artists: return first.artists < second.artists;
    case TrackColumn::Time: return first.seconds < second.seconds;
  }
  return false;
}

std::string artistsText(const Track& track) {
  std::string text;
  for (const std::string& artist : track.artists) text += (text.empty() ? "" : ", ") + artist;
  return text;
}

std::string lengthText(int seconds) {
  const std::string rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

}  // namespace gallery
