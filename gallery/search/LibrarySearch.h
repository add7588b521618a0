// The source of a search field over a library: the best matches, artists first, then albums, then tracks.
#pragma once

#include <string_view>
#include <vector>

#include "gallery/search/SearchIndex.h"
#include "tessaluna/ready/search/SearchRow.h"

namespace gallery {

class LibrarySearch {
 public:
  explicit LibrarySearch(std::vector<LibraryItem> items) : items_(std::move(items)), index_(items_) {}

  // The id of a row is the index of its item.
  std::vector<tessaluna::ready::SearchRow> rowsFor(std::string_view typed) const;

 private:
  std::vector<LibraryItem> items_;
  SearchIndex index_;
};

}  // namespace gallery
