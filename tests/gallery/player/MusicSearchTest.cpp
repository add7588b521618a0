#include "gallery/player/MusicSearch.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace gallery {
namespace {

using Kind = LibraryItem::Kind;
using tessaluna::ready::SearchRow;

class MusicSearchTest : public testing::Test {
 protected:
  const std::shared_ptr<MusicLibrary> library = std::make_shared<MusicLibrary>(24);
  const MusicSearch search{library};
};

TEST_F(MusicSearchTest, FindsArtistsAlbumsAndSongsAndIdentifiesThem) {
  const std::string artist = library->albums()[5].artist, album = library->albums()[5].title;
  bool seen[3] = {};
  for (const std::string& typed : {artist, album, library->songs()[40].track.title}) {
    const std::vector<SearchRow> rows = search.rowsFor(typed);
    ASSERT_FALSE(rows.empty());
    for (const SearchRow& row : rows) {
      const auto [kind, number] = search.found(row);
      seen[static_cast<int>(kind)] = true;
      switch (kind) {
        case Kind::Artist: EXPECT_EQ(row.title, library->artists().at(number)); break;
        case Kind::Album: EXPECT_EQ(row.title, library->albums().at(number).title); break;
        case Kind::Track: EXPECT_EQ(row.title, library->songs().at(number).track.title); break;
      }
    }
  }
  for (const bool each : seen) EXPECT_TRUE(each);
}

TEST_F(MusicSearchTest, AllSongsOfASearchMatchTheQuery) {
  const std::string artist = library->albums()[5].artist;
  const SongNumbers songs = search.songsFor(artist);
  for (const std::size_t song : library->songsBy(artist)) EXPECT_EQ(std::ranges::count(songs, song), 1);
  for (const std::size_t song : songs)
    for (const std::string& word : {artist.substr(0, artist.find(' ')), artist.substr(artist.find(' ') + 1)})
      EXPECT_NE(artistsText(library->songs()[song].track).find(word), std::string::npos);
  EXPECT_TRUE(search.songsFor("zzzz").empty());
}

}  // namespace
}  // namespace gallery
