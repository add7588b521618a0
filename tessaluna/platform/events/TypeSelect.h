// Typing that goes to an entry of a list or menu: to the one that begins with what was typed, in capital letters or small ones.
// Whoever has the list asks it for each key, and highlights what it answers.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class TypeSelect {
 public:
  // A letter that comes later than that many seconds after the one before it begins a new word.
  explicit TypeSelect(double interval) : interval_(interval) {}

  // The text that a key makes, in UTF-8, and when, in seconds; false for one that is not for the search, as a space is that
  // begins a word.
  bool takesText(std::string_view text, double now);
  // The last text that was taken was not for the search after all.
  void takeBack();
  bool beganWord() const { return before_.empty(); }  // the last text was the first of a word

  // The title of an entry; an entry without one cannot be gone to. Asked of as few as are needed.
  using TitleAt = std::function<std::string(std::size_t index)>;
  // Where to go from the highlighted entry, which is absent if none is: the index of an entry, absent to stay.
  std::optional<std::size_t> entryAmong(std::size_t count, const TitleAt& titleAt,
                                        std::optional<std::size_t> highlighted) const;

 private:
  double interval_;
  std::string typed_, before_;  // in small letters, and before the last text
  double last_ = 0;
};

}  // namespace tessaluna::platform
