#include "tessaluna/ready/search/matchedLetters.h"

#include <algorithm>

#include "tessaluna/platform/text/searchWords.h"

namespace tessaluna::ready {

using namespace platform;

std::vector<NSRange> matchedLetters(std::string_view text, std::string_view typed) {
  const std::vector<SearchWord> typedWords = searchWords(typed);
  std::vector<NSRange> matched;
  for (const SearchWord& word : searchWords(text)) {
    std::size_t count = 0;
    for (const SearchWord& start : typedWords)
      if (word.letters.starts_with(start.letters)) count = std::max(count, start.letters.size());
    if (!count) continue;
    // A character that became two letters is matched by the first of them.
    const auto end = std::ranges::find_if(word.places.begin() + static_cast<std::ptrdiff_t>(count), word.places.end(),
                                          [&](std::size_t place) { return place > word.places[count - 1]; });
    matched.push_back({word.places.front(), *end - word.places.front()});
  }
  return matched;
}

}  // namespace tessaluna::ready
