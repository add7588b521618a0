// What a search in the player finds: artists, albums and songs of its library, with covers for albums and songs.
#pragma once

#include "gallery/player/MusicLibrary.h"
#include "gallery/search/LibrarySearch.h"

namespace gallery {

// What a row of the search field refers to: an index of artists(), albums() or songs().
struct Found {
  LibraryItem::Kind kind = LibraryItem::Kind::Track;
  std::size_t number = 0;
};

class MusicSearch {
 public:
  explicit MusicSearch(std::shared_ptr<const MusicLibrary> library);

  std::vector<tessaluna::ready::SearchRow> rowsFor(std::string_view typed) const;
  Found found(const tessaluna::ready::SearchRow& row) const;
  // All songs that match, the best first.
  SongNumbers songsFor(std::string_view typed) const;

 private:
  const std::shared_ptr<const MusicLibrary> library_;
  const LibrarySearch all_;
  const SearchIndex songs_;
};

}  // namespace gallery
