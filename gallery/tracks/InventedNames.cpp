#include "gallery/tracks/InventedNames.h"

#include <array>
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
constexpr std::array endings{""sv, ""sv, ""sv, " (Live)"sv, " II"sv, " at Dawn"sv, " for Two"sv, " – Reprise"sv};
constexpr std::array firstNames{"Maren"sv, "Ilya"sv,  "Tove"sv,  "Jonas"sv, "Amélie"sv, "Rui"sv,
                                "Noor"sv,  "Søren"sv, "Lucía"sv, "Emre"sv,  "Kaja"sv,   "Otis"sv};
constexpr std::array lastNames{"Velde"sv,     "Okafor"sv, "Lindqvist"sv, "Marais"sv, "Duarte"sv,   "Hale"sv,
                               "Petrosyan"sv, "Quill"sv,  "Ashdown"sv,   "Niemi"sv,  "Calloway"sv, "Brandt"sv};
constexpr std::array companies{" Trio"sv,  " Quartet"sv,        " Quintet"sv,     " Sextet"sv,
                               " Octet"sv, " Ensemble"sv,       " & Friends"sv,   " Orchestra"sv,
                               " Band"sv,  " & the Lanterns"sv, " & the Tides"sv, " Collective"sv};

}  // namespace

std::string InventedNames::title() {
  std::string title = pick(adjectives);
  title += ' ';
  title += pick(nouns);
  return title + pick(endings);
}

std::string InventedNames::person() {
  std::string person = pick(firstNames);
  return person + " " + pick(lastNames);
}

std::string InventedNames::ensemble() {
  std::string ensemble = person();
  return ensemble + pick(companies);
}

}  // namespace gallery
