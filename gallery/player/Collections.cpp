#include "gallery/player/Collections.h"

namespace gallery {

Collections::Collections(std::shared_ptr<const MusicLibrary> library) : library_(std::move(library)) {
  CollectionSection music{.title = "Library"}, playlists{.title = "Playlists"};
  music.collections.push_back({"All music", [library = library_] { return library->allSongs(); }});
  music.collections.push_back({"Favorites", [library = library_] { return library->favorites(); }});
  for (const Playlist& playlist : library_->playlists())
    playlists.collections.push_back({playlist.title, [songs = playlist.songs] { return songs; }});
  sections_ = {std::move(music), std::move(playlists)};
}

const Collection* Collections::find(std::string_view title) const {
  for (const CollectionSection& section : sections_)
    for (const Collection& collection : section.collections)
      if (collection.title == title) return &collection;
  return nullptr;
}

Collection Collections::ofArtist(const std::string& artist) const {
  return {artist, [library = library_, artist] { return library->songsBy(artist); }};
}

Collection Collections::ofAlbum(std::size_t album) const {
  return {library_->albums()[album].title, [library = library_, album] { return library->albums()[album].songs; }};
}

std::string Collections::noteOn(const SongNumbers& songs) const {
  if (songs.empty()) return "No tracks";
  const int minutes = (library_->secondsOf(songs) + 30) / 60;
  std::string note = std::to_string(songs.size()) + (songs.size() == 1 ? " track, " : " tracks, ");
  if (minutes >= 60) note += std::to_string(minutes / 60) + " h ";
  return note + std::to_string(minutes % 60) + " min";
}

}  // namespace gallery
