// Typing in an open menu, for desktops whose menus do not do that themselves: it goes to the entry that begins with what was
// typed, in capital letters or small ones. A backend asks it for each key, and highlights what it answers.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessaluna::platform {

class MenuSearch {
 public:
  // A letter that comes later than that many seconds after the one before it begins a new word.
  explicit MenuSearch(double interval) : interval_(interval) {}

  // The text that a key makes, in UTF-8, and when, in seconds; false for one that is not for the search, as a space is that
  // begins a word and so chooses the highlighted entry.
  bool takesText(std::string_view text, double now);
  // Where to go from the highlighted entry, which is absent if none is: the index of an entry, absent to stay. An entry without a
  // title cannot be gone to.
  std::optional<std::size_t> entryAmong(std::span<const std::string> titles, std::optional<std::size_t> highlighted) const;

 private:
  double interval_;
  std::string typed_;  // in small letters
  double last_ = 0;
};

}  // namespace tessaluna::platform
