#include "gallery/search/Library.h"

#include <set>

#include "gallery/tracks/GeneratedTracks.h"
#include "gallery/tracks/InventedNames.h"

namespace gallery {

std::vector<LibraryItem> inventedLibrary(std::size_t count, std::uint32_t seed) {
  using Kind = LibraryItem::Kind;
  InventedNames names(seed);
  const std::size_t artistCount = (count + 19) / 20, albumCount = count / 10;
  std::vector<LibraryItem> items;
  items.reserve(count);
  const auto any = [&](std::size_t first, std::size_t number) -> const LibraryItem& {
    return items[first + names.below(number)];
  };

  // When all names are taken, a number distinguishes an artist.
  std::set<std::string> taken;
  while (items.size() < artistCount && items.size() < count) {
    std::string name;
    int tries = 0;
    do name = names.below(6) == 0 ? names.person() : names.ensemble();
    while (taken.contains(name) && ++tries < 20);
    while (!taken.insert(name).second) name += ' ' + std::to_string(2 + names.below(8));
    items.push_back({Kind::Artist, std::move(name), "Artist"});
  }
  for (std::size_t i = 0; i < albumCount; ++i) {
    const std::string& artist = any(0, artistCount).label;
    items.push_back({Kind::Album, names.title(), "Album by " + artist});
  }
  while (items.size() < count) {
    const std::string& artist = any(0, artistCount).label;
    const std::string length = lengthText(static_cast<int>(90 + names.below(330)));
    items.push_back({Kind::Track, names.title(), artist + " · " + length});
  }
  return items;
}

}  // namespace gallery
