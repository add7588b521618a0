// The rows of a table of the player, each of which shows the song or the album of a number.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "tessaluna/ready/tracks/TrackModel.h"

namespace gallery {

class NumberedRows : public tessaluna::ready::TrackModel {
 public:
  std::size_t count() const override { return numbers_.size(); }

 protected:
  const std::vector<std::size_t>& numbers() const { return numbers_; }

  void setNumbers(std::vector<std::size_t> numbers) {
    numbers_ = std::move(numbers);
    didChangeAll();
  }
  // Removes rows that are not among these, adds missing ones at the end, and leaves the others in their order.
  void updateTo(const std::vector<std::size_t>& numbers) {
    for (std::size_t row = numbers_.size(); row-- > 0;) {
      if (std::ranges::find(numbers, numbers_[row]) != numbers.end()) continue;
      numbers_.erase(numbers_.begin() + static_cast<std::ptrdiff_t>(row));
      didRemoveRows(row);
    }
    for (const std::size_t number : numbers) {
      if (std::ranges::find(numbers_, number) != numbers_.end()) continue;
      numbers_.push_back(number);
      didInsertRows(numbers_.size() - 1);
    }
    didChangeRows(0, numbers_.size());
  }
  // Precedes takes two numbers.
  template <class Precedes>
  void sortNumbers(Precedes precedes) {
    std::ranges::stable_sort(numbers_, precedes);
    didChangeAll();
  }

 private:
  std::vector<std::size_t> numbers_;
};

}  // namespace gallery
