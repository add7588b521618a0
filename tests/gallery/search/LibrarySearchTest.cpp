#include "gallery/search/LibrarySearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gallery {
namespace {

using testing::ElementsAre;
using Kind = LibraryItem::Kind;

TEST(LibrarySearchTest, RowsComeInSectionsAndCarryTheIndexOfTheirItem) {
  const LibrarySearch search({{Kind::Track, "Amber Tide", "Noor Hale"},
                              {Kind::Album, "Amber Signal", "Album by Noor Hale"},
                              {Kind::Artist, "Quartet in Amber", "Artist"}});
  std::vector<std::string> rows;
  for (const auto& row : search.rowsFor("amber"))
    rows.push_back(row.section + ": " + row.title + ", " + row.detail + " " + std::to_string(row.id));
  EXPECT_THAT(rows, ElementsAre("Artists: Quartet in Amber, Artist 2", "Albums: Amber Signal, Album by Noor Hale 1",
                                "Tracks: Amber Tide, Noor Hale 0"));
}

TEST(LibrarySearchTest, ThereAreAtMostFiftyRows) {
  const LibrarySearch search(inventedLibrary(2000));
  EXPECT_EQ(search.rowsFor("s").size(), 50u);
}

}  // namespace
}  // namespace gallery
