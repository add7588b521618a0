#include "gallery/player/MusicSearch.h"

namespace gallery {

using tessaluna::ready::SearchRow;

namespace {

using Kind = LibraryItem::Kind;

std::vector<LibraryItem> songItems(const MusicLibrary& library) {
  std::vector<LibraryItem> items;
  for (const Song& song : library.songs())
    items.push_back({Kind::Track, song.track.title, artistsText(song.track) + " · " + lengthText(song.track.seconds)});
  return items;
}

// Artists, then albums, then songs: MusicSearch::found relies on this order.
std::vector<LibraryItem> allItems(const MusicLibrary& library) {
  std::vector<LibraryItem> items;
  for (const std::string& artist : library.artists()) items.push_back({Kind::Artist, artist, "Artist"});
  for (const Album& album : library.albums()) items.push_back({Kind::Album, album.title, "Album by " + album.artist});
  for (LibraryItem& song : songItems(library)) items.push_back(std::move(song));
  return items;
}

}  // namespace

MusicSearch::MusicSearch(std::shared_ptr<const MusicLibrary> library)
    : library_(std::move(library)), all_(allItems(*library_)), songs_(songItems(*library_)) {}

std::vector<SearchRow> MusicSearch::rowsFor(std::string_view typed) const {
  std::vector<SearchRow> rows = all_.rowsFor(typed);
  for (SearchRow& row : rows) {
    const auto [kind, number] = found(row);
    if (kind == Kind::Artist) continue;
    const std::size_t album = kind == Kind::Album ? number : library_->songs()[number].album;
    if (const auto cover = library_->cover(album)) row.image = cover;
  }
  return rows;
}

Found MusicSearch::found(const SearchRow& row) const {
  auto number = static_cast<std::size_t>(row.id);
  if (number < library_->artists().size()) return {Kind::Artist, number};
  number -= library_->artists().size();
  if (number < library_->albums().size()) return {Kind::Album, number};
  return {Kind::Track, number - library_->albums().size()};
}

SongNumbers MusicSearch::songsFor(std::string_view typed) const {
  return songs_.bestMatches(typed, library_->songs().size());
}

}  // namespace gallery
