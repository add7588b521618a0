#include "gallery/tracks/GeneratedTracks.h"

#include <array>
#include <random>
#include <string_view>

namespace gallery {

namespace {

using namespace std::string_view_literals;

constexpr std::array adjectives{"Quiet"sv,    "Amber"sv,  "Distant"sv, "Paper"sv,  "Northern"sv, "Slow"sv,
                                "Hollow"sv,   "Silver"sv, "Second"sv,  "Winter"sv, "Open"sv,     "Broken"sv,
                                "Electric"sv, "Lost"sv,   "Golden"sv,  "Salt"sv};
constexpr std::array nouns{"Harbour"sv,  "Letters"sv, "Morning"sv, "Tide"sv,     "Orchard"sv, "Signal"sv,
                           "River"sv,    "Garden"sv,  "Window"sv,  "Engine"sv,   "Lantern"sv, "Mountain"sv,
                           "Carousel"sv, "Horizon"sv, "Étude"sv,   "Nachtlied"sv};
constexpr std::array endings{""sv,    ""sv,         ""sv,         " (Live)"sv,
                             " II"sv, " at Dawn"sv, " for Two"sv, " – Reprise"sv};
constexpr std::array firstNames{"Maren"sv, "Ilya"sv,  "Tove"sv,  "Jonas"sv, "Amélie"sv, "Rui"sv,
                                "Noor"sv,  "Søren"sv, "Lucía"sv, "Emre"sv,  "Kaja"sv,   "Otis"sv};
constexpr std::array lastNames{"Velde"sv,   "Okafor"sv, "Lindqvist"sv, "Marais"sv,
                               "Duarte"sv,  "Hale"sv,   "Petrosyan"sv, "Quill"sv,
                               "Ashdown"sv, "Niemi"sv,  "Calloway"sv,  "Brandt"sv};

class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  // The engine's numbers are the same everywhere; those of a standard distribution are not.
  std::size_t below(std::size_t count) { return engine_() % count; }
  template <class Array>
  std::string pick(const Array& words) {
    return std::string(words[below(words.size())]);
  }

 private:
  std::mt19937 engine_;
};

}  // namespace

std::vector<Track> generatedTracks(std::size_t count, std::uint32_t seed) {
  Dice dice(seed);
  const auto artist = [&] { return dice.pick(firstNames) + " " + dice.pick(lastNames); };
  std::vector<Track> tracks;
  tracks.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    Track track;
    track.title = dice.pick(adjectives) + " " + dice.pick(nouns) + dice.pick(endings);
    track.artists = artist();
    if (dice.below(4) == 0) track.artists += ", " + artist();
    track.seconds = static_cast<int>(90 + dice.below(330));
    track.isFavorite = dice.below(9) == 0;
    tracks.push_back(std::move(track));
  }
  return tracks;
}

std::string lengthText(int seconds) {
  const std::string rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

}  // namespace gallery
