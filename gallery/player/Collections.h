// The places of the player's library: all music, favorites and playlists. The result of a search, an artist and an album are
// collections too.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gallery/player/MusicLibrary.h"

namespace gallery {

struct Collection {
  std::string title;
  std::function<SongNumbers()> songs;                         // at the moment of the call
  std::string kind{};                                         // shown before its note; empty for one in a section
  void (*icon)(tessaluna::platform::CGRect frame) = nullptr;  // null for one that is in no section
};

struct CollectionSection {
  std::string title;
  std::vector<Collection> collections{};
};

class Collections {
 public:
  explicit Collections(std::shared_ptr<const MusicLibrary> library);

  const std::vector<CollectionSection>& sections() const { return sections_; }
  const Collection& allMusic() const { return sections_.front().collections.front(); }
  // Null for an unknown title.
  const Collection* find(std::string_view title) const;

  // These are in no section.
  Collection ofArtist(const std::string& artist) const;
  Collection ofAlbum(std::size_t album) const;

  // "24 tracks, 1 h 32 min", with the collection's kind before it.
  std::string noteOn(const Collection& collection) const;

 private:
  std::shared_ptr<const MusicLibrary> library_;
  std::vector<CollectionSection> sections_;
};

}  // namespace gallery
