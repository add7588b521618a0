// Finds the items of a library that a query means: each of its words begins a word of the item, in any order; capitals and
// accents do not count.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gallery/search/Library.h"

namespace gallery {

class SearchIndex {
 public:
  explicit SearchIndex(std::span<const LibraryItem> items);

  // The indexes of at most so many matches, the best first: labels that begin with the query, then labels in which all its
  // words are, then the rest; among equals artists come before albums and albums before tracks. A query without a word
  // has none.
  std::vector<std::size_t> bestMatches(std::string_view query, std::size_t most) const;

 private:
  struct Entry {
    std::string label, all;  // folded; all is label and detail
    LibraryItem::Kind kind;
  };
  std::vector<Entry> entries_;
};

// Each word in small letters without accents and with a space before it, so that " be" finds the words that begin with it.
std::string folded(std::string_view text);

}  // namespace gallery
