#include "gallery/search/SearchIndex.h"

#include <algorithm>
#include <tuple>

#include "tessaluna/platform/text/searchWords.h"

namespace gallery {

namespace {

std::vector<std::string> wordsOf(const std::string& folded) {
  std::vector<std::string> words;
  for (std::size_t start = 0; start < folded.size();) {
    const std::size_t end = std::min(folded.find(' ', start + 1), folded.size());
    words.push_back(folded.substr(start, end - start));
    start = end;
  }
  return words;
}

bool hasAll(const std::string& text, const std::vector<std::string>& words) {
  return std::ranges::all_of(words, [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

}  // namespace

std::string folded(std::string_view text) {
  std::string result;
  for (const tessaluna::platform::SearchWord& word : tessaluna::platform::searchWords(text)) result += " " + word.letters;
  return result;
}

SearchIndex::SearchIndex(std::span<const LibraryItem> items) {
  entries_.reserve(items.size());
  for (const LibraryItem& item : items) {
    std::string label = folded(item.label);
    std::string all = label + folded(item.detail);
    entries_.push_back({std::move(label), std::move(all), item.kind});
  }
}

std::vector<std::size_t> SearchIndex::bestMatches(std::string_view query, std::size_t maxCount) const {
  const std::string wanted = folded(query);
  const std::vector<std::string> words = wordsOf(wanted);
  if (words.empty()) return {};

  using Rank = std::tuple<int, LibraryItem::Kind, std::size_t>;
  std::vector<Rank> found;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const Entry& entry = entries_[i];
    if (!hasAll(entry.all, words)) continue;
    const int rank = entry.label.starts_with(wanted) ? 0 : hasAll(entry.label, words) ? 1 : 2;
    found.emplace_back(rank, entry.kind, i);
  }
  const std::size_t count = std::min(maxCount, found.size());
  std::partial_sort(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(count), found.end());
  std::vector<std::size_t> best(count);
  std::ranges::transform(std::span(found).first(count), best.begin(), [](const Rank& rank) { return std::get<2>(rank); });
  return best;
}

}  // namespace gallery
