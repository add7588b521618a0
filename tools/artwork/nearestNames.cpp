#include "tools/artwork/nearestNames.h"

#include <algorithm>
#include <numeric>

namespace artwork {

namespace {

// Bytes outside ASCII stay as they are.
char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

// Longer words are nobody's mistyped names, and would only take time.
constexpr std::size_t longestWord = 200;

}  // namespace

int editDistance(std::string_view a, std::string_view b) {
  std::vector<int> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 0; i < a.size(); ++i) {
    int diagonal = row[0];
    row[0] = int(i) + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const int replaced = diagonal + (lowerCase(a[i]) != lowerCase(b[j]));
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j + 1] + 1, row[j] + 1, replaced});
    }
  }
  return row.back();
}

std::vector<std::string_view> nearestNames(std::string_view wrong, std::span<const std::string_view> names) {
  struct Candidate {
    int distance;
    std::string_view name;
  };
  std::vector<Candidate> candidates;
  const int farthest = std::max(2, int(wrong.size()) / 3);
  if (wrong.size() <= longestWord) {
    for (const std::string_view name : names) {
      const int distance = editDistance(wrong, name);
      if (distance <= farthest) candidates.push_back({distance, name});
    }
  }
  std::ranges::stable_sort(candidates, {}, &Candidate::distance);
  std::vector<std::string_view> nearest;
  for (const Candidate& candidate : candidates) {
    // Next to a near name, a far one only confuses.
    const bool isNear = candidate.distance <= candidates.front().distance + 1;
    if (isNear && nearest.size() < 3) nearest.push_back(candidate.name);
  }
  return nearest;
}

std::string suggestion(std::string_view wrong, std::span<const std::string_view> names) {
  const std::vector<std::string_view> nearest = nearestNames(wrong, names);
  if (nearest.empty()) return "";
  std::string text = "; did you mean " + std::string(nearest[0]);
  for (std::size_t i = 1; i < nearest.size(); ++i)
    text += (i + 1 == nearest.size() ? " or " : ", ") + std::string(nearest[i]);
  return text + "?";
}

std::string inQuotes(std::string_view word) {
  std::string text = "'";
  for (const char c : word) text += static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? '?' : c;
  return text + "'";
}

}  // namespace artwork
