// What there is to search: invented artists, albums and tracks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace gallery {

struct LibraryItem {
  enum class Kind { Artist, Album, Track };

  Kind kind = Kind::Track;
  std::string label;   // the name or title
  std::string detail;  // what distinguishes it from others with its label
};

// A twentieth are artists, a tenth are albums by them, and the rest are tracks of these.
std::vector<LibraryItem> inventedLibrary(std::size_t count, std::uint32_t seed = 7);

}  // namespace gallery
