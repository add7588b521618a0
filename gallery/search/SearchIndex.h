// Finds the items of a library that a query means: each of its words begins a word of the item, in any order. It ignores case
// and accents.
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

  // The indexes of at most `maxCount` matches, the best first: labels that begin with the query, then labels that have all its
  // words, then the rest; among equals artists come before albums and albums before tracks. A query without a word has
  // no matches.
  std::vector<std::size_t> bestMatches(std::string_view query, std::size_t maxCount) const;

 private:
  struct Entry {
    std::string label, all;  // folded; all is label and detail
    LibraryItem::Kind kind;
  };
  std::vector<Entry> entries_;
};

// Each word in lower case without accents and with a space before it, so that " be" finds the words that begin with it.
std::string folded(std::string_view text);

}  // namespace gallery
