#include "gallery/player/Collections.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace gallery {

using tessaluna::platform::CGRect;
using TessalunaUIKit::TessalunaStyleKit;

namespace {

void drawAllMusic(CGRect frame) { TessalunaStyleKit::drawTidalMusicIcon(frame); }
void drawFavorites(CGRect frame) { TessalunaStyleKit::drawMoodLove(frame, /*isWhite=*/false); }

// The icons of the playlists, in the order of the playlists.
constexpr void (*drawMoods[])(CGRect) = {[](CGRect frame) { TessalunaStyleKit::drawMoodRelax(frame, /*isWhite=*/false); },
                                         [](CGRect frame) { TessalunaStyleKit::drawMoodDinner(frame, /*isWhite=*/false); },
                                         [](CGRect frame) { TessalunaStyleKit::drawMoodWorkout(frame, /*isWhite=*/false); },
                                         [](CGRect frame) { TessalunaStyleKit::drawMoodFocus(frame, /*isWhite=*/false); }};

}  // namespace

Collections::Collections(std::shared_ptr<const MusicLibrary> library) : library_(std::move(library)) {
  CollectionSection music{.title = "Library"}, playlists{.title = "Playlists"};
  music.collections.push_back({"All music", [library = library_] { return library->allSongs(); }, {}, drawAllMusic});
  music.collections.push_back({"Favorites", [library = library_] { return library->favorites(); }, {}, drawFavorites});
  std::size_t number = 0;
  for (const Playlist& playlist : library_->playlists())
    playlists.collections.push_back(
        {playlist.title, [songs = playlist.songs] { return songs; }, {}, drawMoods[number++ % std::size(drawMoods)]});
  sections_ = {std::move(music), std::move(playlists)};
}

const Collection* Collections::find(std::string_view title) const {
  for (const CollectionSection& section : sections_)
    for (const Collection& collection : section.collections)
      if (collection.title == title) return &collection;
  return nullptr;
}

Collection Collections::ofArtist(const std::string& artist) const {
  return {artist, [library = library_, artist] { return library->songsBy(artist); }, "Artist"};
}

Collection Collections::ofAlbum(std::size_t album) const {
  const Album& shown = library_->albums()[album];
  return {shown.title, [library = library_, album] { return library->albums()[album].songs; }, "Album by " + shown.artist};
}

std::string Collections::noteOn(const Collection& collection) const {
  const SongNumbers songs = collection.songs();
  if (songs.empty()) return "No tracks";
  const int minutes = (library_->secondsOf(songs) + 30) / 60;
  std::string note = collection.kind + (collection.kind.empty() ? "" : " · ") + std::to_string(songs.size()) +
                     (songs.size() == 1 ? " track, " : " tracks, ");
  if (minutes >= 60) note += std::to_string(minutes / 60) + " h ";
  return note + std::to_string(minutes % 60) + " min";
}

}  // namespace gallery
